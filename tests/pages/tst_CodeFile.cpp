// The code section: a round trip, the deliberate differences between reader and writer, and
// broken documents. Its place inside a block definition file is tested with that file.
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
        QTemporaryDir dir;
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        block->code->elements[0]->port2 = "gone";
        BlkCodeFileIO io(dir.path(), nullptr, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_code.cfg"), block->code, "ZEMA"));
        CodePtr back(io.LoadFile(dir.filePath("blk_code.cfg"), "ZEMA"), FreeBlkCodeData);
        const QByteArray saved = ToXml(back.get());
        QCOMPARE(saved, ToXml(block->code));
        // Empty text fields are written too, and the dimensions after them.
        QVERIFY(saved.indexOf("<mem_offset></mem_offset>") < saved.indexOf("<blk_dim array_size=\"0\" para1="));
        // The port links are resolved on reading; a name no port has stays null.
        QCOMPARE(back->elements[0]->cport1, back->ports[0]);
        QCOMPARE(back->elements[0]->cport2, nullptr);
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
        // What the writer made reads back to the same.
        QCOMPARE(ToXml(FromXml(saved).get()), saved);
    }

    void broken()
    {
        // Broken input gives null, and the record made so far is freed.
        for (const char *xml : {"<blk_code_data><blk_cport><port_name>p</port_name><blk_dim para1=\"1\"/>",
                                "<blk_code_data><blk_phy_el port1=\"a\">", "<blk_code_data><blk_cport></blk_func>",
                                "<blk_pres_data/>"})
            QVERIFY2(!FromXml(xml), xml);
    }
};

ZEMA_TEST(tst_CodeFile)
#include "tst_CodeFile.moc"
