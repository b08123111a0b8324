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
#include <functional>

namespace {

using SectionReader = std::function<void(QXmlStreamReader *)>;

// Each reader alone from the start of the document, so each meets the damage in its own section,
// then all of them on one stream, as the block file runs them.
void ReadEachSection(const QByteArray &bytes)
{
    static const QList<SectionReader> readers = {
        [](QXmlStreamReader *r) { FreeBlkParaData(BlkParaFileIO::ReadBlkPara(r, true)); },
        [](QXmlStreamReader *r) { FreeBlkPresData(BlkPresFileIO::ReadPresData(r)); },
        [](QXmlStreamReader *r) { FreeBlkSchemeData(BlkSchemeFileIO::ReadSchemeData(r)); },
        [](QXmlStreamReader *r) { FreeBlkCodeData(BlkCodeFileIO::ReadCodeData(r)); },
        [](QXmlStreamReader *r) { FreeBlkMiscData(BlkMiscFileIO::ReadMiscData(r)); },
        [](QXmlStreamReader *r) { FreeBlkHelpData(BlkHelpFileIO::ReadHelpData(r)); },
        [](QXmlStreamReader *r) { FreeImgDataRec(ImgEditFileIO::ReadImgData(r)); },
    };
    QXmlStreamReader all(bytes);
    for (const SectionReader &read : readers) {
        QXmlStreamReader alone(bytes);
        read(&alone);
        read(&all);
    }
}

const QByteArray workspace =
    "<?xml version=\"1.0\"?><wsp_data><enabled>1</enabled>"
    "<bitem><id>5</id><ref_id>77</ref_id><ref_name>/x/y.bdef</ref_name><pos>1,2</pos><rt>0,0,40,40</rt>"
    "<blk_para><title>p</title><para_grp><header>G</header><para_entity><label>E</label></para_entity>"
    "</para_grp></blk_para><blk_para><title>ic</title></blk_para></bitem>"
    "<citem><id>6</id><cl>16711680</cl><pts>1,2;3,4</pts><pos>0,0</pos></citem>"
    "<titem><id>7</id><text>note</text><pos>5,5</pos></titem>"
    "<node><blks>5,6</blks><ports>a,b</ports></node></wsp_data>";

QByteArray Flipped(QByteArray bytes, QRandomGenerator &random, int flips)
{
    for (int i = 0; i < flips && !bytes.isEmpty(); ++i)
        bytes[random.bounded(bytes.size())] = char(random.bounded(256));
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

    // Cut at every 37th byte, up to four bytes changed, and plain noise.
    void damagedDocuments()
    {
        QRandomGenerator random(20261121);
        for (int cut = 0; cut < definition.size(); cut += 37)
            ReadEachSection(definition.left(cut));
        for (int i = 0; i < 300; ++i)
            ReadEachSection(Flipped(definition, random, 1 + i % 4));
        for (int i = 0; i < 100; ++i)
            ReadEachSection(Flipped(QByteArray(random.bounded(2000), 'x'), random, 2000));
    }

    void damagedBlockFiles()
    {
        QRandomGenerator random(99);
        const QString path = dir.filePath("broken");
        int loaded = 0;
        for (int i = 0; i < 120; ++i) {
            // Damage under the encoding, so that decoding works and the readers meet it.
            QByteArray bytes = Flipped(definition, random, 3);
            if (i % 2)
                bytes.truncate(random.bounded(bytes.size()));
            EncodeBuffer(bytes, true, 0);
            QVERIFY(WriteBytes(path + "/broken.bdef", bytes));
            ErrorList errors;
            auto *block = new BlockData;
            block->path = path;
            const bool ok = LoadBlockData(block, QString(), &errors, "ZEMA", true);
            loaded += ok;
            QVERIFY(ok || !errors.IsEmpty() || !block->def_data);
            FreeBlockData(block);
            QCOMPARE(ReadBytes(path + "/broken.bdef"), bytes);
        }
        QVERIFY(loaded < 120);
    }

    void damagedWorkspaces()
    {
        QRandomGenerator random(3);
        const QString path = dir.filePath("w.wsp");
        for (int i = 0; i < 200; ++i) {
            QByteArray bytes = i % 2 ? workspace.left(random.bounded(workspace.size()))
                                     : Flipped(workspace, random, 2);
            EncodeBuffer(bytes, true, 0);
            QVERIFY(WriteBytes(path, bytes));
            WSPFileIO io(dir.path(), nullptr, 1);
            FreeWsp(io.LoadWsp(dir.path(), path, QStringList{dir.path()}, "ZEMA"));
        }
    }
};

ZEMA_TEST(tst_Garbage)
#include "tst_Garbage.moc"
