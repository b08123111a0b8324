// The scheme section: a round trip, the writer's order, and broken or embedded documents.
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
        BlkSchemeData record;
        record.root_file = "wsp/main <1> & \"top\".wsp";
        record.plots = QStringList{"p&1", "", "sub/p2"}; // the empty entry is lost
        QString xml;
        QXmlStreamWriter writer(&xml);
        BlkSchemeFileIO::WriteSchemeData(&writer, nullptr);
        QVERIFY(xml.isEmpty()); // a null record writes nothing
        BlkSchemeFileIO::WriteSchemeData(&writer, &record);
        QVERIFY(xml.contains(QRegularExpression("root_file.*plots.*controls.*hw_ios.*gp_blks")));
        QXmlStreamReader written(xml);
        BlkSchemeData *back = BlkSchemeFileIO::ReadSchemeData(&written);
        QVERIFY(back);
        QCOMPARE(back->root_file + " " + back->plots.join(','), record.root_file + " p&1,sub/p2");
        FreeBlkSchemeData(back);

        // Children in any order, unknown ones passed over; reading stops at the section's end.
        QXmlStreamReader reader("<d><blk_pres_data><plots>no</plots></blk_pres_data>"
                                "<blk_scheme_data><x><y/></x><plots>|a||b|</plots>"
                                "<root_file>r</root_file></blk_scheme_data><next/></d>");
        back = BlkSchemeFileIO::ReadSchemeData(&reader);
        QVERIFY(back);
        QCOMPARE(QStringList(back->root_file) + back->plots, (QStringList{"r", "a", "b"}));
        FreeBlkSchemeData(back);
        reader.readNext();
        QVERIFY(reader.isStartElement() && reader.name() == QLatin1String("next"));
        // Broken XML gives nothing.
        QXmlStreamReader broken("<blk_scheme_data><plots>a|b");
        QVERIFY(!BlkSchemeFileIO::ReadSchemeData(&broken));
    }
};

ZEMA_TEST(tst_SchemeFile)
#include "tst_SchemeFile.moc"
