// The scheme section: round trips, its lists, and broken or embedded documents.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "schematics/BlkSchemeData.h"
#include "schematics/BlkSchemeFileIO.h"

#include <QtTest>

namespace {

BlkSchemeData *FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return BlkSchemeFileIO::ReadSchemeData(&reader);
}

QByteArray ToXml(const BlkSchemeData *record)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    BlkSchemeFileIO::WriteSchemeData(&writer, record);
    return bytes;
}

} // namespace

class tst_SchemeFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip();
    void writerFormat();
    void lists_data();
    void lists();
    void broken_data();
    void broken();
    void sectionInsideLargerDocument();
};

void tst_SchemeFile::roundTrip()
{
    BlkSchemeData record;
    record.root_file = "wsp/main <1> & \"top\".wsp";
    record.plots = QStringList{"p&1.wsp", "sub/p2.wsp"};
    record.controls = QStringList{"c<1>.wsp"};
    record.gp_blks = QStringList{"g.wsp", "h.wsp", "i.wsp"};

    QTemporaryDir dir;
    const QString path = dir.filePath("blk_scheme.cfg");
    ErrorList errors;
    BlkSchemeFileIO io(dir.path(), &errors, 1);
    QVERIFY(io.SaveScheme(path, &record, "ZEMA"));
    BlkSchemeData *back = io.LoadScheme(path, "ZEMA");
    QVERIFY(back);
    QVERIFY(errors.IsEmpty());
    QCOMPARE(back->root_file, record.root_file);
    QCOMPARE(back->plots, record.plots);
    QCOMPARE(back->controls, record.controls);
    QCOMPARE(back->hw_ios, QStringList());
    QCOMPARE(back->gp_blks, record.gp_blks);
    FreeBlkSchemeData(back);
}

void tst_SchemeFile::writerFormat()
{
    BlkSchemeData record;
    record.root_file = "a.wsp";
    record.hw_ios = QStringList{"x.wsp", "y.wsp"};
    QCOMPARE(ToXml(&record), QByteArray("\n<blk_scheme_data>\n"
                                        "    <root_file>a.wsp</root_file>\n"
                                        "    <plots></plots>\n"
                                        "    <controls></controls>\n"
                                        "    <hw_ios>x.wsp|y.wsp</hw_ios>\n"
                                        "    <gp_blks></gp_blks>\n"
                                        "</blk_scheme_data>"));
    QVERIFY(ToXml(nullptr).isEmpty());
}

void tst_SchemeFile::lists_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("root_file");
    QTest::addColumn<QStringList>("plots");
    QTest::addColumn<QStringList>("controls");

    QTest::newRow("empty parts skipped") << QByteArray("<plots>|a||b|</plots><controls>|</controls>")
                                         << "" << QStringList{"a", "b"} << QStringList{};
    QTest::newRow("any order, unknown passed over")
        << QByteArray("<controls>c</controls><x><y/></x><root_file>r.wsp</root_file>"
                      "<plots>p</plots>")
        << "r.wsp" << QStringList{"p"} << QStringList{"c"};
    QTest::newRow("later element wins") << QByteArray("<plots>a</plots><plots>b|c</plots>")
                                        << "" << QStringList{"b", "c"} << QStringList{};
}

void tst_SchemeFile::lists()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, root_file);
    QFETCH(QStringList, plots);
    QFETCH(QStringList, controls);
    BlkSchemeData *record = FromXml("<blk_scheme_data>" + body + "</blk_scheme_data>");
    QVERIFY(record);
    QCOMPARE(record->root_file, root_file);
    QCOMPARE(record->plots, plots);
    QCOMPARE(record->controls, controls);
    FreeBlkSchemeData(record);

    // An empty entry in memory is written and lost on the way back.
    BlkSchemeData holed;
    holed.gp_blks = QStringList{"a", "", "b"};
    record = FromXml(ToXml(&holed));
    QCOMPARE(record->gp_blks, (QStringList{"a", "b"}));
    FreeBlkSchemeData(record);
}

void tst_SchemeFile::broken_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("messages");
    QTest::newRow("inside a list") << QByteArray("<blk_scheme_data><plots>a|b") << 1;
    QTest::newRow("unclosed root") << QByteArray("<blk_scheme_data><plots/>") << 1;
    QTest::newRow("no section") << QByteArray("<blk_pres_data/>") << 0;
}

void tst_SchemeFile::broken()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, messages);
    QTemporaryDir dir;
    const QString path = dir.filePath("blk_scheme.cfg");
    QVERIFY(WriteBytes(path, XmlDocument(xml)));
    ErrorList errors;
    BlkSchemeFileIO io(dir.path(), &errors, 1);
    QCOMPARE(io.LoadScheme(path, "ZEMA"), nullptr);
    QCOMPARE(errors.errors.size(), messages);
}

void tst_SchemeFile::sectionInsideLargerDocument()
{
    const QByteArray xml = "<blk_def_data><blk_pres_data><plots>no</plots></blk_pres_data>"
                           "<blk_scheme_data><plots>yes</plots></blk_scheme_data>"
                           "<blk_code_data/></blk_def_data>";
    QXmlStreamReader reader(xml);
    BlkSchemeData *record = BlkSchemeFileIO::ReadSchemeData(&reader);
    QVERIFY(record);
    QCOMPARE(record->plots, QStringList{"yes"});
    reader.readNext();
    QVERIFY(reader.isStartElement() && reader.name() == QLatin1String("blk_code_data"));
    FreeBlkSchemeData(record);
}

ZEMA_TEST(tst_SchemeFile)
#include "tst_SchemeFile.moc"
