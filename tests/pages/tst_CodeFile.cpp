// The code section: a round trip and the deliberate differences between reader and writer. Its
// place inside a block definition file is tested with that file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"

#include <QtTest>
#include <memory>

using CodePtr = std::unique_ptr<BlkCodeData, void (*)(BlkCodeData *)>;

static CodePtr FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return CodePtr(BlkCodeFileIO::ReadCodeData(&reader), FreeBlkCodeData);
}

static QByteArray ToXml(const BlkCodeData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkCodeFileIO::WriteCodeData(&writer, data);
    return bytes;
}

class tst_CodeFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        block->code->elements[0]->port2 = "gone";
        CodePtr back = FromXml(ToXml(block->code));
        const QByteArray saved = ToXml(back.get());
        QCOMPARE(saved, ToXml(block->code));
        // Empty text fields are written too, and the dimensions after them.
        QVERIFY(saved.indexOf("<mem_offset></mem_offset>") < saved.indexOf("<blk_dim array_size=\"0\" para1="));
        // The port links are resolved on reading; a name no port has stays null.
        QVERIFY(back->elements[0]->cport1 == back->ports[0] && !back->elements[0]->cport2);
        QVERIFY(ToXml(nullptr).isEmpty());
    }

    void readerWriterDiffer()
    {
        // The reader takes any order, passes over unknown elements, fills in defaults and folds the old
        // para2 into para1; the writer drops a dim outside a port, a nameless func and a half element.
        CodePtr data = FromXml(
            "<blk_code_data><create_inst>7</create_inst><blk_cport><x><mem_type>Depends</mem_type></x>"
            "<port_name>p</port_name><blk_dim para1=\"G\" para2=\"E\"/><blk_dim para1=\"H\" para2=\"\"/></blk_cport>"
            "<blk_cport/><blk_dim para1=\"gone\"/><blk_func func_name=\"\" port=\"gone\"/><blk_func func_name=\"Go\"/>"
            "<blk_phy_el port1=\"gone\" port2=\"\"/><blk_phy_el port1=\"\" port2=\"gone\"/>"
            "<blk_phy_el port1=\"x\" port2=\"y\"/></blk_code_data>");
        const QByteArray saved = ToXml(data.get());
        for (const char *part : {"<create_inst>1<", "<mem_type>Depends<", "<mem_type>Cacheable<", "func_name=\"Go\"",
                                 "para1=\"[G#E]\"/><blk_dim array_size=\"0\" para1=\"H\"/>", "port1=\"x\""})
            QVERIFY2(saved.contains(part), saved.constData());
        QVERIFY2(!saved.contains("para2") && !saved.contains("gone"), saved.constData());
        // What the writer made reads back to the same; broken input gives null, the record made so far freed.
        QCOMPARE(ToXml(FromXml(saved).get()), saved);
        QVERIFY(!FromXml("<blk_code_data><blk_cport><port_name>p</port_name><blk_dim para1=\"1\"/>"));
    }
};

ZEMA_TEST(tst_CodeFile)
#include "tst_CodeFile.moc"
