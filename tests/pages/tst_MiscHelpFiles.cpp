// The miscellaneous and help sections, and the test of a path against the installed directory.
// Their place inside a block definition file is tested with that file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"

#include <QtTest>
#include <memory>

namespace {

using MiscPtr = std::unique_ptr<BlkMiscData, void (*)(BlkMiscData *)>;
using HelpPtr = std::unique_ptr<BlkHelpData, void (*)(BlkHelpData *)>;

MiscPtr MiscFromXml(const QByteArray &body)
{
    QXmlStreamReader reader("<blk_misc_data>" + body + "</blk_misc_data>");
    return MiscPtr(BlkMiscFileIO::ReadMiscData(&reader), FreeBlkMiscData);
}

HelpPtr HelpFromXml(const QByteArray &body)
{
    QXmlStreamReader reader("<blk_help_data>" + body + "</blk_help_data>");
    return HelpPtr(BlkHelpFileIO::ReadHelpData(&reader), FreeBlkHelpData);
}

QByteArray MiscToXml(const BlkMiscData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkMiscFileIO::WriteMiscData(&writer, data);
    return bytes;
}

} // namespace

class tst_MiscHelpFiles : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        QTemporaryDir dir;
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        BlkMiscData *misc = block->misc;
        // A condition without error text keeps its "$", so the page sees an empty second part.
        misc->para_cond.append("[G#F] != 1$");
        misc->cpp_depends = QStringList{"src/a&b.cpp", "src/c"};
        ErrorList errors;
        BlkMiscFileIO io(dir.path(), &errors, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_misc.cfg"), misc, "ZEMA"));
        MiscPtr back(io.LoadFile(dir.filePath("blk_misc.cfg"), "ZEMA"), FreeBlkMiscData);
        QVERIFY(back && errors.IsEmpty());
        QCOMPARE(MiscToXml(back.get()), MiscToXml(misc));
        QCOMPARE(back->para_cond, misc->para_cond);
        QCOMPARE(back->cpp_depends, misc->cpp_depends);
        QVERIFY(MiscToXml(nullptr).isEmpty());
    }

    void readerAndWriterDiffer()
    {
        // Empty parts are skipped and a ";" inside a condition's text cuts it in two; elements
        // come in any order and unknown ones are passed over; a nameless variable is not written.
        MiscPtr misc = MiscFromXml("<blk_depends>|x||y|</blk_depends><note>n</note>"
                                   "<blk_char_var char_var_name=\"\" para_grp=\"G\"/>"
                                   "<para_cond>;a$b;;[G#E] &gt; 0$use a; or b;c$</para_cond>");
        QVERIFY(misc);
        QCOMPARE(misc->para_cond, (QStringList{"a$b", "[G#E] > 0$use a", " or b", "c$"}));
        QCOMPARE(misc->blk_depends, (QStringList{"x", "y"}));
        QCOMPARE(misc->char_vars.size(), 1);
        const QByteArray saved = MiscToXml(misc.get());
        QVERIFY(saved.contains("<blk_depends>x|y</blk_depends>"));
        QVERIFY(!saved.contains("blk_char_var"));
        // Empty help files are dropped, the order of the rest is kept.
        HelpPtr help = HelpFromXml("<file_name>b.htm</file_name><file_name/><other><file_name>c.htm"
                                   "</file_name></other><h_inst>i</h_inst><file_name></file_name>");
        QVERIFY(help);
        QCOMPARE(help->file_name, (QStringList{"b.htm", "c.htm"}));
    }

    void broken()
    {
        // Broken input gives null, and the record made so far is freed.
        QVERIFY(!MiscFromXml("<cpu_ops>1</cpu_ops><blk_char_var a=\""));
        QVERIFY(!MiscFromXml("<blk_char_var char_var_name=\"v\"/><blk_depends>a|b"));
        QVERIFY(!HelpFromXml("<file_name>a</file_name><file_name>"));
    }

    void relativeToRoot()
    {
        const QString root = "/opt/zema";
        QCOMPARE(RelativeToRoot(root, "/opt/zema/blocks/gain"), QString("blocks/gain"));
        // Outside it (case matters) the path comes back as it is; the root itself gives nothing.
        QCOMPARE(RelativeToRoot(root, "/OPT/zema/a"), QString("/OPT/zema/a"));
        QCOMPARE(RelativeToRoot(root, root), QString());
        // Every occurrence counts, anywhere, and then one leading "/" goes.
        QCOMPARE(RelativeToRoot(root, "/x/opt/zema/y"), QString("x/y"));
        QCOMPARE(RelativeToRoot("/r", "/r//a/r/b"), QString("/a/b"));
    }
};

ZEMA_TEST(tst_MiscHelpFiles)
#include "tst_MiscHelpFiles.moc"
