// The scheme section: the writer's order, and broken or embedded documents. The block file
// suite round-trips a full section.
#include "TestRegistry.h"

#include "schematics/BlkSchemeData.h"
#include "schematics/BlkSchemeFileIO.h"

#include <QRegularExpression>
#include <QtTest>

class tst_SchemeFile : public QObject
{
    Q_OBJECT
private slots:
    void schemeSection()
    {
        const BlkSchemeData record{"main.wsp", {"p1", "p2"}, {}, {"io"}, {}};
        QString xml;
        QXmlStreamWriter writer(&xml);
        BlkSchemeFileIO::WriteSchemeData(&writer, nullptr);
        QVERIFY(xml.isEmpty()); // a null record writes nothing
        BlkSchemeFileIO::WriteSchemeData(&writer, &record);
        QVERIFY(xml.contains(QRegularExpression("root_file.*plots.*controls.*hw_ios.*gp_blks")));

        // Children in any order, unknown ones passed over, empty list entries lost; reading stops
        // at the section's end.
        QXmlStreamReader reader("<d><blk_pres_data><plots>no</plots></blk_pres_data>"
                                "<blk_scheme_data><x><y/></x><plots>|a||b|</plots>"
                                "<root_file>r</root_file></blk_scheme_data><next/></d>");
        BlkSchemeData *back = BlkSchemeFileIO::ReadSchemeData(&reader);
        QVERIFY(back);
        QCOMPARE(QStringList(back->root_file) + back->plots, (QStringList{"r", "a", "b"}));
        FreeBlkSchemeData(back);
        QVERIFY(reader.readNext() == QXmlStreamReader::StartElement &&
                reader.name() == QLatin1String("next"));
        QXmlStreamReader broken("<blk_scheme_data><plots>a|b");
        QVERIFY(!BlkSchemeFileIO::ReadSchemeData(&broken)); // broken XML gives nothing
    }
};

ZEMA_TEST(tst_SchemeFile)
#include "tst_SchemeFile.moc"
