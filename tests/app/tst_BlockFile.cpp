// The block definition file: every section through one reader and one writer.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "schematics/BlkSchemeData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>

static BlockData *Loaded(const QString &path, ErrorList *errors = nullptr, const QString &hint = QString())
{
    auto *block = new BlockData;
    block->path = path;
    if (LoadBlockData(block, hint, errors, "ZEMA", true))
        return block;
    FreeBlockData(block);
    return nullptr;
}

static bool SavedAndFreed(BlockData *block)
{
    const bool saved = SaveBlockData(block, nullptr, "ZEMA", true);
    FreeBlockData(block);
    return saved;
}

class tst_BlockFile : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void saveLoadSaveIsByteForByteWithSectionsInOrder()
    {
        const QString path = dir.filePath("sample");
        QVERIFY(WriteSampleBlock(path));
        const QByteArray first = DecodedDefinition(path + "/sample.bdef");
        int at = 0;
        for (const char *tag : {"<blk_def_data>", "<param_changed>1<", "<wsp_mod_files>", "<title>Configuration<",
                 "<title>Parameters<", "<title>Initial Conditions<", "<blk_pres_data>", "<blk_scheme_data>",
                 "<blk_code_data>", "<blk_misc_data>", "<blk_help_data>", "<img_name>default<", "<img_name>fast<", "</blk_def_data>"})
            QVERIFY2((at = first.indexOf(tag, at)) >= 0, tag);
        QVERIFY(!first.contains("author &amp; key")); // stored form, never as typed

        BlockData *block = Loaded(path);
        QVERIFY(block && block->block_id != 0 && block->block_id == BlockIdOf(block->config));
        QCOMPARE(block->pres->ports[1]->code_port, block->code->ports[1]);
        AuthValuesToWorking(block->config);
        QCOMPARE(FindEntity(block->config, AuthGroupHeader(), AuthEntityLabels().value(0))->sel_val,
                 QString("author & key"));
        QVERIFY(SavedAndFreed(block));
        QCOMPARE(DecodedDefinition(path + "/sample.bdef"), first);
    }

    void missingSectionsSwallowNothingBehindThem()
    {
        const QString path = dir.filePath("sparse");
        QVERIFY(WriteSampleBlock(path));
        BlockData *block = Loaded(path);
        QVERIFY(block);
        FreeBlkSchemeData(block->scheme);
        block->scheme = nullptr;
        FreeBlkPresData(block->pres);
        block->pres = nullptr;
        AuthValuesToWorking(block->config);
        QVERIFY(SavedAndFreed(block));
        block = Loaded(path);
        QVERIFY(block && !block->scheme && !block->pres);
        QVERIFY(block->code && !block->code->ports.isEmpty());
        QVERIFY(block->misc && block->help && block->images);
        FreeBlockData(block);
    }

    void whichDefinitionFileIsRead()
    {
        // Of two definition files the first by name is read and written.
        const QString path = dir.filePath("b");
        QVERIFY(WriteSampleBlock(path) && QFile::rename(path + "/b.bdef", path + "/b_second.bdef"));
        QVERIFY(QFile::copy(path + "/b_second.bdef", path + "/a_first.bdef"));
        BlockData *block = Loaded(path);
        QVERIFY(block);
        FindEntity(block->config, "Basic", "Block Version")->sel_val = "2.0";
        QVERIFY(SavedAndFreed(block));
        QVERIFY(DecodedDefinition(path + "/a_first.bdef").contains("<sel_val>2.0</sel_val>"));
        QVERIFY(!DecodedDefinition(path + "/b_second.bdef").contains("<sel_val>2.0</sel_val>"));
        // A name hint searches the directories below.
        QVERIFY(WriteSampleBlock(dir.filePath("top/one")) && WriteSampleBlock(dir.filePath("top/two")));
        block = Loaded(dir.filePath("top"), nullptr, "two.bdef");
        QVERIFY(block && BlockNameOf(block->config) == "two");
        FreeBlockData(block);
        QVERIFY(!Loaded(dir.filePath("top")));
    }

    void failedLoadsTellWhyAndLeaveTheFile()
    {
        const QString fresh = dir.filePath("fresh_block"), path = dir.filePath("c");
        QVERIFY(QDir().mkpath(fresh) && WriteSampleBlock(path));
        QByteArray disk = ReadBytes(path + "/c.bdef");
        disk[disk.size() / 3] = char(disk[disk.size() / 3] + 1);
        QVERIFY(WriteBytes(path + "/c.bdef", disk));
        ErrorList errors;
        QVERIFY(!Loaded(fresh, &errors) && !Loaded(path, &errors));
        // The open is still tried, so the reason is told.
        QCOMPARE(errors.errors.value(0), "Error: Cannot open file: " + fresh + "/fresh_block.bdef No such file or directory");
        QVERIFY(errors.errors.size() == 2 && errors.errors[1].startsWith("Error: c.bdef: File Loading Error: "));
        QCOMPARE(ReadBytes(path + "/c.bdef"), disk);
        QVERIFY(SavedAndFreed(MakeSampleBlock(fresh)) && QFileInfo::exists(fresh + "/fresh_block.bdef"));
        QVERIFY(!SavedAndFreed(MakeSampleBlock("no_slash_here")));
    }

    // Deleted workspace files drop out of the list; without drawings in the file the block's
    // image files stand in.
    void directoryContentOnLoad()
    {
        const QString path = dir.filePath("d");
        BlockData *block = MakeSampleBlock(path);
        FreeImageList(block->images);
        block->images = nullptr;
        block->def_data->wsp_mod_files = QStringList{"top.wsp", "gone.wsp", "sub/inner.wsp", "gone2.wsp"};
        QVERIFY(WriteBytes(path + "/top.wsp", "x") && WriteBytes(path + "/sub/inner.wsp", "x"));
        QVERIFY(SavedAndFreed(block));
        QVERIFY(WriteBytes(path + "/arrow.vimg", XmlDocument("<imgdata><img_name>arrow.vimg</img_name></imgdata>")));
        block = Loaded(path);
        QVERIFY(block && block->images && block->images->size() == 1);
        QCOMPARE(block->def_data->wsp_mod_files, QStringList({"top.wsp", "sub/inner.wsp"}));
        QCOMPARE(block->images->at(0)->img_name, QString("arrow"));
        FreeBlockData(block);
    }
};

ZEMA_TEST(tst_BlockFile)
#include "tst_BlockFile.moc"
