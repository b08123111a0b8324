// Arbitrary, truncated and damaged bytes through every reader: a clear null or false, never a
// crash, a leak or a hang (the sanitizer build runs this too).
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "drawing/ImgDataRec.h"
#include "drawing/ImgEditFileIO.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "schematics/BlkSchemeData.h"
#include "schematics/BlkSchemeFileIO.h"
#include "schematics/WSPFileIO.h"
#include "schematics/WspData.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

// Each reader alone from the start of the document, so each meets the damage in its own section
// (the block file loader below runs them all on one stream).
void ReadEachSection(const QByteArray &bytes)
{
    static void (*const readers[])(QXmlStreamReader *) = {
        [](QXmlStreamReader *r) { FreeBlkParaData(BlkParaFileIO::ReadBlkPara(r, true)); },
        [](QXmlStreamReader *r) { FreeBlkPresData(BlkPresFileIO::ReadPresData(r)); },
        [](QXmlStreamReader *r) { FreeBlkSchemeData(BlkSchemeFileIO::ReadSchemeData(r)); },
        [](QXmlStreamReader *r) { FreeBlkCodeData(BlkCodeFileIO::ReadCodeData(r)); },
        [](QXmlStreamReader *r) { FreeBlkMiscData(BlkMiscFileIO::ReadMiscData(r)); },
        [](QXmlStreamReader *r) { FreeBlkHelpData(BlkHelpFileIO::ReadHelpData(r)); },
        [](QXmlStreamReader *r) { FreeImgDataRec(ImgEditFileIO::ReadImgData(r)); },
    };
    for (auto *read : readers) {
        QXmlStreamReader reader(bytes);
        read(&reader);
    }
}

const QByteArray workspace = XmlDocument(
    "<wsp_data><enabled>1</enabled><bitem><id>5</id><ref_name>/x/y.bdef</ref_name><rt>0,0,40,40</rt><blk_para><title>p"
    "</title><para_grp><header>G</header><para_entity><label>E</label></para_entity></para_grp></blk_para><blk_para/>"
    "</bitem><citem><cl>1</cl><pts>1,2;3,4</pts></citem><titem><text>n</text></titem><node><blks>5</blks></node></wsp_data>");

// `flips` bytes changed at random, then cut short at a random length when `cut`.
QByteArray Damaged(QByteArray bytes, QRandomGenerator &random, int flips, bool cut = false)
{
    for (int i = 0; i < flips && !bytes.isEmpty(); ++i)
        bytes[random.bounded(bytes.size())] = char(random.bounded(256));
    if (cut)
        bytes.truncate(random.bounded(bytes.size()));
    return bytes;
}

} // namespace

class tst_Garbage : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    QByteArray definition; // plain XML of a full block

private slots:
    void initTestCase()
    {
        QVERIFY(WriteSampleBlock(dir.filePath("sample")));
        definition = DecodedDefinition(dir.filePath("sample/sample.bdef"));
        QVERIFY(definition.size() > 1000);
        CreateAppSettings(nullptr)->root_dir = dir.path();
    }

    // Cut at every 37th byte, and up to four bytes changed.
    void damagedDocuments()
    {
        QRandomGenerator random(20261121);
        for (int cut = 0; cut < definition.size(); cut += 37)
            ReadEachSection(definition.left(cut));
        for (int i = 0; i < 300; ++i)
            ReadEachSection(Damaged(definition, random, 1 + i % 4));
    }

    // Damage under the encoding, so that decoding works and the readers meet it. A block that
    // fails reports it or holds no definition, and its file is left as it was.
    void damagedFiles()
    {
        QRandomGenerator random(99);
        const QString block_file = dir.filePath("broken/broken.bdef"), wsp_file = dir.filePath("w.wsp");
        int loaded = 0;
        for (int i = 0; i < 160; ++i) {
            QByteArray bytes = Damaged(definition, random, 3, i % 2), wsp = Damaged(workspace, random, 2, i % 2);
            EncodeBuffer(bytes, true, 0);
            EncodeBuffer(wsp, true, 0);
            QVERIFY(WriteBytes(block_file, bytes) && WriteBytes(wsp_file, wsp));
            ErrorList errors;
            auto *block = new BlockData;
            block->path = dir.filePath("broken");
            const bool ok = LoadBlockData(block, QString(), &errors, "ZEMA", true);
            loaded += ok;
            QVERIFY(ok || !errors.IsEmpty() || !block->def_data);
            FreeBlockData(block);
            QCOMPARE(ReadBytes(block_file), bytes);
            FreeWsp(WSPFileIO(dir.path(), nullptr, 1).LoadWsp(dir.path(), wsp_file, {dir.path()}, "ZEMA"));
        }
        QVERIFY(loaded < 160);
    }
};

ZEMA_TEST(tst_Garbage)
#include "tst_Garbage.moc"
