// The miscellaneous and help sections, and the test of a path against the installed directory.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "app/AppSettings.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"

#include <QtTest>

namespace {

BlkMiscData *MiscFromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return BlkMiscFileIO::ReadMiscData(&reader);
}

QByteArray MiscToXml(const BlkMiscData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkMiscFileIO::WriteMiscData(&writer, data);
    return bytes;
}

BlkHelpData *HelpFromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return BlkHelpFileIO::ReadHelpData(&reader);
}

QByteArray HelpToXml(const BlkHelpData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkHelpFileIO::WriteHelpData(&writer, data);
    return bytes;
}

} // namespace

class tst_MiscHelpFiles : public QObject
{
    Q_OBJECT
private slots:
    void miscRoundTrip();
    void miscListsAndRows_data();
    void miscListsAndRows();
    void relativeToRoot_data();
    void relativeToRoot();
    void helpRoundTrip();
    void helpReading();
    void brokenDocuments_data();
    void brokenDocuments();
    void sectionsInsideLargerDocument();
};

void tst_MiscHelpFiles::miscRoundTrip()
{
    BlkMiscData data;
    data.cpu_ops = "[_SimStepSize]*2 < 3 && \"x\"";
    data.dev_rem = "line one <b>\n  line & two\n\ttabbed ";
    BlkCharVar step{"_SimStepSize", "Basic", "Step <s>"};
    BlkCharVar cross{"_ZeroCrossing", "", ""};
    data.char_vars = {&step, &cross};
    data.para_cond = QStringList{"[G#E] > 0$E must be > 0", "[G#F] != 1$"};
    data.blk_depends = QStringList{"blocks/a&b", "blocks/c"};
    data.cpp_depends = QStringList{"src/x.cpp"};

    QTemporaryDir dir;
    const QString path = dir.filePath("blk_misc.cfg");
    ErrorList errors;
    BlkMiscFileIO io(dir.path(), &errors, 1);
    QVERIFY(io.SaveFile(path, &data, "ZEMA"));
    BlkMiscData *back = io.LoadFile(path, "ZEMA");
    QVERIFY(back);
    QVERIFY(errors.IsEmpty());
    QCOMPARE(back->cpu_ops, data.cpu_ops);
    QCOMPARE(back->dev_rem, data.dev_rem);
    QCOMPARE(back->char_vars.size(), 2);
    QCOMPARE(back->char_vars[0]->para_entity, QString("Step <s>"));
    QCOMPARE(back->char_vars[1]->char_var_name, QString("_ZeroCrossing"));
    // A condition without error text keeps its "$", so the page sees an empty second part.
    QCOMPARE(back->para_cond, data.para_cond);
    QCOMPARE(back->blk_depends, data.blk_depends);
    QCOMPARE(back->cpp_depends, data.cpp_depends);
    FreeBlkMiscData(back);
}

void tst_MiscHelpFiles::miscListsAndRows_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QStringList>("para_cond");
    QTest::addColumn<QStringList>("blk_depends");
    QTest::addColumn<QStringList>("char_vars");

    QTest::newRow("empty parts skipped")
        << QByteArray("<para_cond>;a$b;;c$;</para_cond><blk_depends>|x||y|</blk_depends>")
        << QStringList{"a$b", "c$"} << QStringList{"x", "y"} << QStringList{};
    QTest::newRow("semicolon in text splits the entry")
        << QByteArray("<para_cond>[G#E] &gt; 0$use a; or b</para_cond>")
        << QStringList{"[G#E] > 0$use a", " or b"} << QStringList{} << QStringList{};
    QTest::newRow("any order, unknown passed over")
        << QByteArray("<blk_depends>b</blk_depends><note>n</note>"
                      "<blk_char_var char_var_name=\"_SimStepSize\"/><para_cond>c$e</para_cond>")
        << QStringList{"c$e"} << QStringList{"b"} << QStringList{"_SimStepSize"};
    QTest::newRow("nameless variable read, not written")
        << QByteArray("<blk_char_var char_var_name=\"\" para_grp=\"G\"/>")
        << QStringList{} << QStringList{} << QStringList{""};
}

void tst_MiscHelpFiles::miscListsAndRows()
{
    QFETCH(QByteArray, body);
    QFETCH(QStringList, para_cond);
    QFETCH(QStringList, blk_depends);
    QFETCH(QStringList, char_vars);

    BlkMiscData *data = MiscFromXml("<blk_misc_data>" + body + "</blk_misc_data>");
    QVERIFY(data);
    QCOMPARE(data->para_cond, para_cond);
    QCOMPARE(data->blk_depends, blk_depends);
    QStringList names;
    for (const BlkCharVar *var : data->char_vars)
        names.append(var->char_var_name);
    QCOMPARE(names, char_vars);
    BlkMiscData *again = MiscFromXml(MiscToXml(data));
    QCOMPARE(again->para_cond, para_cond);
    QCOMPARE(again->blk_depends, blk_depends);
    names.removeAll(QString());
    QCOMPARE(again->char_vars.size(), names.size());
    FreeBlkMiscData(data);
    FreeBlkMiscData(again);
}

void tst_MiscHelpFiles::relativeToRoot_data()
{
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("result");
    QTest::newRow("inside") << "/opt/zema" << "/opt/zema/blocks/gain" << "blocks/gain";
    QTest::newRow("outside is returned as it is") << "/opt/zema" << "/home/u/gain" << "/home/u/gain";
    QTest::newRow("the root itself") << "/opt/zema" << "/opt/zema" << "";
    QTest::newRow("root text in the middle") << "/opt/zema" << "/x/opt/zema/y" << "x/y";
    QTest::newRow("every occurrence") << "/r" << "/r/a/r/b" << "a/b";
    QTest::newRow("only one slash") << "/r" << "/r//a" << "/a";
    QTest::newRow("case matters") << "/opt/zema" << "/OPT/zema/a" << "/OPT/zema/a";
}

void tst_MiscHelpFiles::relativeToRoot()
{
    QFETCH(QString, root);
    QFETCH(QString, path);
    QFETCH(QString, result);
    QCOMPARE(RelativeToRoot(root, path), result);
}

void tst_MiscHelpFiles::helpRoundTrip()
{
    BlkHelpData data;
    data.h_inst = "Copy <doc> & run \"setup\"\nthen restart";
    data.file_name = QStringList{"index.htm", "sub/a&b.html"};
    QTemporaryDir dir;
    const QString path = dir.filePath("blk_help.cfg");
    ErrorList errors;
    BlkHelpFileIO io(dir.path(), &errors, 1);
    QVERIFY(io.SaveFile(path, &data, "ZEMA"));
    BlkHelpData *back = io.LoadFile(path, "ZEMA");
    QVERIFY(back);
    QCOMPARE(back->h_inst, data.h_inst);
    QCOMPARE(back->file_name, data.file_name);
    FreeBlkHelpData(back);
}

void tst_MiscHelpFiles::helpReading()
{
    BlkHelpData *data = HelpFromXml("<blk_help_data><file_name>b.htm</file_name><file_name/>"
                                    "<other><file_name>c.htm</file_name></other>"
                                    "<h_inst>i</h_inst><file_name></file_name></blk_help_data>");
    QVERIFY(data);
    // Empty entries are dropped; the order of the rest is kept.
    QCOMPARE(data->file_name, (QStringList{"b.htm", "c.htm"}));
    QCOMPARE(data->h_inst, QString("i"));
    FreeBlkHelpData(data);
    QVERIFY(HelpToXml(nullptr).isEmpty());
    QVERIFY(MiscToXml(nullptr).isEmpty());
}

void tst_MiscHelpFiles::brokenDocuments_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("misc inside blk_char_var")
        << "blk_misc.cfg" << QByteArray("<blk_misc_data><cpu_ops>1</cpu_ops><blk_char_var a=\"");
    QTest::newRow("misc inside a list") << "blk_misc.cfg"
                                        << QByteArray("<blk_misc_data><blk_depends>a|b");
    QTest::newRow("help inside file_name")
        << "blk_help.cfg" << QByteArray("<blk_help_data><file_name>a</file_name><file_name>");
    QTest::newRow("help unclosed root") << "blk_help.cfg" << QByteArray("<blk_help_data>");
}

void tst_MiscHelpFiles::brokenDocuments()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, xml);
    QTemporaryDir dir;
    const QString path = dir.filePath(file);
    QVERIFY(WriteBytes(path, XmlDocument(xml)));
    ErrorList errors;
    if (file == "blk_misc.cfg") {
        BlkMiscFileIO io(dir.path(), &errors, 1);
        QCOMPARE(io.LoadFile(path, "ZEMA"), nullptr);
    } else {
        BlkHelpFileIO io(dir.path(), &errors, 1);
        QCOMPARE(io.LoadFile(path, "ZEMA"), nullptr);
    }
    QCOMPARE(errors.errors.size(), 1);
}

void tst_MiscHelpFiles::sectionsInsideLargerDocument()
{
    // In the writer's order of a block definition file: miscellaneous, then help.
    const QByteArray xml = "<blk_def_data><blk_code_data><cpu_ops>no</cpu_ops></blk_code_data>"
                           "<blk_misc_data><cpu_ops>12</cpu_ops></blk_misc_data>"
                           "<blk_help_data><file_name>index.htm</file_name></blk_help_data>"
                           "</blk_def_data>";
    QXmlStreamReader reader(xml);
    BlkMiscData *misc = BlkMiscFileIO::ReadMiscData(&reader);
    BlkHelpData *help = BlkHelpFileIO::ReadHelpData(&reader);
    QVERIFY(misc && help);
    QCOMPARE(misc->cpu_ops, QString("12"));
    QCOMPARE(help->file_name, QStringList{"index.htm"});
    QVERIFY(!reader.hasError());
    FreeBlkMiscData(misc);
    FreeBlkHelpData(help);
}

ZEMA_TEST(tst_MiscHelpFiles)
#include "tst_MiscHelpFiles.moc"
