// The presentation section: the writer's form, the link of presentation ports to their code records,
// what the reader makes of what it finds, and broken documents. Its round trip is tested with the
// block definition file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"

#include <QtTest>
#include <memory>

using PresPtr = std::unique_ptr<BlkPresData, void (*)(BlkPresData *)>;
using BlockPtr = std::unique_ptr<BlockData, void (*)(BlockData *)>;

static PresPtr FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader("<blk_pres_data>" + xml + "</blk_pres_data>");
    return PresPtr(BlkPresFileIO::ReadPresData(&reader), FreeBlkPresData);
}

static QByteArray ToXml(const BlkPresData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkPresFileIO::WritePresData(&writer, data);
    return bytes;
}

class tst_PresFile : public QObject
{
    Q_OBJECT
private slots:
    void writerAndLinks()
    {
        BlockPtr block(MakeSampleBlock(""), FreeBlockData);
        block->pres->ports[0]->name = "z";
        const QByteArray saved = ToXml(block->pres);
        // Ports keep their order, that of the code records; floats keep six significant digits.
        QVERIFY(saved.indexOf("name=\"z\"") < saved.indexOf("name=\"out\""));
        QVERIFY(saved.contains("per_distance=\"33.3333\" text_dx=\"-1.5\" text_dy=\"0\""));
        QVERIFY(ToXml(nullptr).isEmpty());
        // Ports link to the code record of their name, never by position or by an empty name; a link
        // whose code record is gone is cleared.
        block->pres->ports[0]->name.clear();
        block->code->ports[0]->port_name.clear();
        LinkPortsToCode(block->pres, block->code);
        block->code->ports[1]->port_name = "renamed";
        LinkPortsToCode(block->pres, block->code);
        QVERIFY(!block->pres->ports[0]->code_port && !block->pres->ports[1]->code_port);
        LinkPortsToCode(block->pres, nullptr);
    }

    void reader()
    {
        // Every ".vimg" leaves image names, with exact case, and no other field. The reader starts from
        // zeros, not from a new block's record; unknown elements are passed over, their content is read.
        PresPtr read = FromXml("<blk_img name=\"gain.vimg\"/><blk_img name=\"gain.VIMG\"/>"
                               "<blk_img name=\"a.vimgb.vimg\"/><blk_img_text img_name=\"x.vimg\" text=\"t.vimg\"/>"
                               "<aspect>5</aspect><x><blk_port/></x><blk_port mport_para=\"3\"/>");
        QStringList got = {QString("%1 %2 %3 %4").arg(read->hsize).arg(read->vsize).arg(read->border).arg(read->aspect),
                           read->texts[0]->img_name, read->texts[0]->text};
        for (const BlkImage *image : read->images)
            got << image->name;
        for (const BlkPort *port : read->ports)
            got << QString::number(port->mport_para);
        QCOMPARE(got, (QStringList{"0 0 0 1", "x", "t.vimg", "gain", "gain.VIMG", "ab", "0", "1"}));
        // Broken input gives null, and the record made so far is freed.
        QVERIFY(!FromXml("<blk_port/><title>T"));
    }
};

ZEMA_TEST(tst_PresFile)
#include "tst_PresFile.moc"
