// The block definition file: every section through one reader and one writer.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>

namespace {

BlockData *Loaded(const QString &path, ErrorList *errors = nullptr, const QString &hint = QString())
{
    auto *block = new BlockData;
    block->path = path;
    if (LoadBlockData(block, hint, errors, "ZEMA", true))
        return block;
    FreeBlockData(block);
    return nullptr;
}

} // namespace

class tst_BlockFile : public QObject
{
    Q_OBJECT

private slots:
    void saveLoadSaveIsByteForByteWithSectionsInOrder()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("sample");
        QVERIFY(WriteSampleBlock(path));
        const QByteArray first = DecodedDefinition(path + "/sample.bdef");
        const QList<QByteArray> order{"<blk_def_data>", "<param_changed>1<", "<wsp_mod_files>",
                                      "<title>Configuration<", "<title>Parameters<", "<title>Initial Conditions<",
                                      "<blk_pres_data>", "<blk_scheme_data>", "<blk_code_data>", "<blk_misc_data>",
                                      "<blk_help_data>", "<img_name>default<", "<img_name>fast<", "</blk_def_data>"};
        int at = 0;
        for (const QByteArray &tag : order) {
            at = first.indexOf(tag, at);
            QVERIFY2(at >= 0, tag.constData());
        }
        QVERIFY(!first.contains("author &amp; key")); // stored form, never as typed

        BlockData *block = Loaded(path);
        QVERIFY(block);
        QVERIFY(block->block_id != 0 && block->block_id == BlockIdOf(block->config));
        QCOMPARE(block->version + " " + block->tool_version, QString("1.0 3.1"));
        QCOMPARE(block->pres->ports[1]->code_port, block->code->ports[1]);
        AuthValuesToWorking(block->config);
        QCOMPARE(FindEntity(block->config, AuthGroupHeader(), AuthEntityLabels().value(0))->sel_val,
                 QString("author & key"));
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        QCOMPARE(DecodedDefinition(path + "/sample.bdef"), first);
    }

    void firstOfTwoDefinitionFiles()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("b");
        QVERIFY(WriteSampleBlock(path));
        QVERIFY(QFile::rename(path + "/b.bdef", path + "/b_second.bdef"));
        QVERIFY(QFile::copy(path + "/b_second.bdef", path + "/a_first.bdef"));
        BlockData *block = Loaded(path);
        QVERIFY(block);
        FindEntity(block->config, "Basic", "Block Version")->sel_val = "2.0";
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        QVERIFY(DecodedDefinition(path + "/a_first.bdef").contains("<sel_val>2.0</sel_val>"));
        QVERIFY(!DecodedDefinition(path + "/b_second.bdef").contains("<sel_val>2.0</sel_val>"));
    }

    void directoryWithoutDefinitionFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("fresh_block");
        QDir().mkpath(path);
        ErrorList errors;
        QVERIFY(!Loaded(path, &errors));
        // The open is still tried, so the reason is told.
        QCOMPARE(errors.errors, QStringList{"Error: Cannot open file: " + path + "/fresh_block.bdef No such file or directory"});
        BlockData *block = MakeSampleBlock(path);
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        QVERIFY(QFileInfo::exists(path + "/fresh_block.bdef"));
        block->path = "no_slash_here";
        QVERIFY(!SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
    }

    void nameHintSearchesBelow()
    {
        QTemporaryDir dir;
        QVERIFY(WriteSampleBlock(dir.filePath("top/one")));
        QVERIFY(WriteSampleBlock(dir.filePath("top/two")));
        BlockData *block = Loaded(dir.filePath("top"), nullptr, "two.bdef");
        QVERIFY(block);
        QCOMPARE(BlockNameOf(block->config), QString("two"));
        FreeBlockData(block);
        QVERIFY(!Loaded(dir.filePath("top")));
    }

    void changedByteFailsAndLeavesTheFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("b");
        QVERIFY(WriteSampleBlock(path));
        QByteArray disk = ReadBytes(path + "/b.bdef");
        disk[disk.size() / 3] = char(disk[disk.size() / 3] + 1);
        QVERIFY(WriteBytes(path + "/b.bdef", disk));
        ErrorList errors;
        QVERIFY(!Loaded(path, &errors));
        QCOMPARE(errors.errors.size(), 1);
        QVERIFY(errors.errors[0].startsWith("Error: b.bdef: File Loading Error: "));
        QCOMPARE(ReadBytes(path + "/b.bdef"), disk);
    }

    // Deleted workspace files drop out of the list; without drawings in the file the block's
    // image files stand in.
    void directoryContentOnLoad()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("b");
        BlockData *block = MakeSampleBlock(path);
        FreeImageList(block->images);
        block->images = nullptr;
        block->def_data->wsp_mod_files = QStringList{"top.wsp", "gone.wsp", "sub/inner.wsp", "gone2.wsp"};
        QVERIFY(WriteBytes(path + "/top.wsp", "x") && WriteBytes(path + "/sub/inner.wsp", "x"));
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        block = Loaded(path);
        QVERIFY(block && !block->images);
        QCOMPARE(block->def_data->wsp_mod_files, QStringList({"top.wsp", "sub/inner.wsp"}));
        FreeBlockData(block);

        QVERIFY(WriteBytes(path + "/arrow.vimg", XmlDocument(
            "<imgdata><img_name>arrow.vimg</img_name><item><type>1</type><points>"
            "<point>0,0</point><point>10,5</point></points></item></imgdata>")));
        block = Loaded(path);
        QVERIFY(block && block->images);
        QCOMPARE(block->images->size(), 1);
        QCOMPARE(block->images->at(0)->img_name, QString("arrow"));
        FreeBlockData(block);
    }
};

ZEMA_TEST(tst_BlockFile)
#include "tst_BlockFile.moc"
