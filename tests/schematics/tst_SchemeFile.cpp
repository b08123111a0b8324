// The scheme section: a round trip, the writer's order, and broken or embedded documents.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "schematics/BlkSchemeData.h"
#include "schematics/BlkSchemeFileIO.h"

#include <QRegularExpression>
#include <QtTest>

class tst_SchemeFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        QTemporaryDir dir;
        ErrorList errors;
        BlkSchemeData record;
        record.root_file = "wsp/main <1> & \"top\".wsp";
        record.plots = QStringList{"p&1.wsp", "", "sub/p2.wsp"}; // the empty entry is lost
        const QString path = dir.filePath("blk_scheme.cfg");
        BlkSchemeFileIO io(dir.path(), &errors, 1);
        QVERIFY(io.SaveScheme(path, &record, "ZEMA"));
        BlkSchemeData *back = io.LoadScheme(path, "ZEMA");
        QVERIFY(back && errors.IsEmpty());
        QCOMPARE(back->root_file, record.root_file);
        QCOMPARE(back->plots, (QStringList{"p&1.wsp", "sub/p2.wsp"}));
        QVERIFY(back->hw_ios.isEmpty());
        FreeBlkSchemeData(back);

        // The writer's order, its join and escaping; a null record writes nothing.
        const QString xml = QString::fromUtf8(ReadBytes(path));
        QVERIFY(xml.contains("<plots>p&amp;1.wsp||sub/p2.wsp</plots>"));
        QVERIFY(QRegularExpression("root_file.*plots.*controls.*hw_ios.*gp_blks",
                                   QRegularExpression::DotMatchesEverythingOption)
                    .match(xml).hasMatch());
        QByteArray nothing;
        QXmlStreamWriter writer(&nothing);
        BlkSchemeFileIO::WriteSchemeData(&writer, nullptr);
        QVERIFY(nothing.isEmpty());
    }

    void reader()
    {
        // Children in any order, unknown ones passed over; reading stops at the section's end.
        QXmlStreamReader reader(
            "<blk_def_data><blk_pres_data><plots>no</plots></blk_pres_data><blk_scheme_data>"
            "<controls>c</controls><x><y/></x><root_file>r.wsp</root_file><plots>|a||b|</plots>"
            "</blk_scheme_data><blk_code_data/></blk_def_data>");
        BlkSchemeData *record = BlkSchemeFileIO::ReadSchemeData(&reader);
        QVERIFY(record);
        QCOMPARE(record->root_file, QString("r.wsp"));
        QCOMPARE(record->plots, (QStringList{"a", "b"}));
        FreeBlkSchemeData(record);
        reader.readNext();
        QVERIFY(reader.isStartElement() && reader.name() == QLatin1String("blk_code_data"));

        for (const char *broken : {"<blk_scheme_data><plots>a|b", "<blk_pres_data/>"}) {
            QXmlStreamReader bad{QByteArray(broken)};
            QVERIFY2(!BlkSchemeFileIO::ReadSchemeData(&bad), broken);
        }
    }
};

ZEMA_TEST(tst_SchemeFile)
#include "tst_SchemeFile.moc"
