// The miscellaneous and help sections, and the test of a path against the installed directory.
// Their place inside a block definition file is tested with that file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"

#include <QtTest>
#include <memory>

static std::unique_ptr<BlkMiscData, void (*)(BlkMiscData *)> MiscFromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return {BlkMiscFileIO::ReadMiscData(&reader), FreeBlkMiscData};
}

static QByteArray MiscToXml(const BlkMiscData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkMiscFileIO::WriteMiscData(&writer, data);
    return bytes;
}

class tst_MiscHelpFiles : public QObject
{
    Q_OBJECT
private slots:
    void miscSection()
    {
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        // A condition without error text keeps its "$", so the page sees an empty second part.
        block->misc->para_cond.append("[G#F] != 1$");
        QCOMPARE(MiscFromXml(MiscToXml(block->misc))->para_cond, block->misc->para_cond);
        QVERIFY(MiscToXml(nullptr).isEmpty());
        // Empty parts are skipped and a ";" inside a condition's text cuts it in two; elements come in
        // any order and unknown ones are passed over; a nameless variable is read but not written.
        auto misc = MiscFromXml("<blk_misc_data><blk_depends>|x||y|</blk_depends><note>n</note>"
                                "<blk_char_var char_var_name=\"\" para_grp=\"G\"/>"
                                "<para_cond>;a$b;;p &gt; 0$e; f;c$</para_cond></blk_misc_data>");
        QCOMPARE(misc->para_cond + misc->blk_depends, (QStringList{"a$b", "p > 0$e", " f", "c$", "x", "y"}));
        const QByteArray out = MiscToXml(misc.get());
        QVERIFY2(out.contains("<blk_depends>x|y</blk_depends>") && !out.contains("blk_char_var"), out.data());
        // Broken input gives null, and the record made so far is freed.
        QVERIFY(!MiscFromXml("<blk_misc_data><blk_char_var char_var_name=\"v\"/><blk_depends>a|b"));
    }

    void helpSection()
    {
        // Empty help files are dropped, the order of the rest is kept.
        QXmlStreamReader xml("<blk_help_data><file_name>b.htm</file_name><file_name/><other><file_name>c.htm"
                             "</file_name></other><h_inst>i</h_inst><file_name></file_name></blk_help_data>");
        std::unique_ptr<BlkHelpData, void (*)(BlkHelpData *)> help(BlkHelpFileIO::ReadHelpData(&xml), FreeBlkHelpData);
        QCOMPARE(help->file_name, (QStringList{"b.htm", "c.htm"}));
    }

    void relativeToRoot()
    {
        // Every occurrence counts, anywhere, and then one leading "/" goes.
        QCOMPARE(RelativeToRoot("/r", "//x/r/a/r"), QString("/x/a"));
        // Outside it (case matters) the path comes back as it is; the root itself gives nothing.
        QCOMPARE(RelativeToRoot("/r", "/R/a"), QString("/R/a"));
        QCOMPARE(RelativeToRoot("/r", "/r"), QString());
    }
};

ZEMA_TEST(tst_MiscHelpFiles)
#include "tst_MiscHelpFiles.moc"
