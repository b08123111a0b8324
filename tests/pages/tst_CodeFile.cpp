// The code section: a round trip, the deliberate differences between reader and writer, and
// broken documents. Its place inside a block definition file is tested with that file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"

#include <QtTest>
#include <memory>

namespace {

using CodePtr = std::unique_ptr<BlkCodeData, void (*)(BlkCodeData *)>;

CodePtr FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return CodePtr(BlkCodeFileIO::ReadCodeData(&reader), FreeBlkCodeData);
}

QByteArray ToXml(const BlkCodeData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkCodeFileIO::WriteCodeData(&writer, data);
    return bytes;
}

} // namespace

class tst_CodeFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        QTemporaryDir dir;
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        BlkCodeData *data = block->code;
        data->elements[0]->port2 = "gone";
        ErrorList errors;
        BlkCodeFileIO io(dir.path(), &errors, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_code.cfg"), data, "ZEMA"));
        CodePtr back(io.LoadFile(dir.filePath("blk_code.cfg"), "ZEMA"), FreeBlkCodeData);
        QVERIFY(back && errors.IsEmpty());
        const QByteArray saved = ToXml(back.get());
        QCOMPARE(saved, ToXml(data));
        // Empty text fields are written too, in a fixed order, and the dimensions after them.
        QVERIFY(saved.indexOf("<domain>") < saved.indexOf("<units></units>"));
        QVERIFY(saved.indexOf("<mem_offset></mem_offset>") < saved.indexOf("<blk_dim array_size=\"0\" para1="));
        // The port links are resolved on reading; a name no port has stays null.
        QCOMPARE(back->elements[0]->cport1, back->ports[0]);
        QCOMPARE(back->elements[0]->cport2, nullptr);
        QVERIFY(ToXml(nullptr).isEmpty());
    }

    void readerWriterDiffer_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("present");
        QTest::addColumn<QByteArray>("absent");
        QTest::newRow("para2 folded") << QByteArray("<blk_cport><blk_dim para1=\"G\" para2=\"E\"/></blk_cport>")
                                      << QByteArray("para1=\"[G#E]\"") << QByteArray("para2");
        QTest::newRow("empty para2") << QByteArray("<blk_cport><blk_dim para1=\"G\" para2=\"\"/></blk_cport>")
                                     << QByteArray("para1=\"G\"") << QByteArray("[");
        QTest::newRow("mem_type missing") << QByteArray("<blk_cport><port_name>p</port_name></blk_cport>")
                                          << QByteArray("<mem_type>Cacheable<") << QByteArray();
        QTest::newRow("any order, unknown passed over, dim outside a port ignored")
            << QByteArray("<blk_cport><x><mem_type>Depends</mem_type></x><port_name>p</port_name>"
                          "</blk_cport><blk_dim para1=\"stray\"/>")
            << QByteArray("<mem_type>Depends<") << QByteArray("stray");
        QTest::newRow("create_inst any non-zero")
            << QByteArray("<create_inst>7</create_inst>") << QByteArray("<create_inst>1<") << QByteArray();
        QTest::newRow("func without name dropped")
            << QByteArray("<blk_func func_name=\"\" port=\"p\"/><blk_func func_name=\"Go\"/>")
            << QByteArray("func_name=\"Go\"") << QByteArray("port=\"p\"");
        QTest::newRow("element with an empty port dropped")
            << QByteArray("<blk_phy_el port1=\"a\" port2=\"\"/><blk_phy_el port1=\"\" port2=\"a\"/>"
                          "<blk_phy_el port1=\"x\" port2=\"y\"/>")
            << QByteArray("port1=\"x\"") << QByteArray("a\"");
    }
    void readerWriterDiffer()
    {
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, present);
        QFETCH(QByteArray, absent);
        CodePtr data = FromXml("<blk_code_data>" + body + "</blk_code_data>");
        QVERIFY(data);
        const QByteArray saved = ToXml(data.get());
        QVERIFY2(saved.contains(present), saved.constData());
        QVERIFY2(absent.isEmpty() || !saved.contains(absent), saved.constData());
        // What the writer made reads back to the same.
        QCOMPARE(ToXml(FromXml(saved).get()), saved);
    }

    void broken()
    {
        // Broken input gives null, and the record made so far is freed.
        for (const char *xml : {"<blk_code_data><blk_cport><port_name>p</port_name><blk_dim para1=\"1\"/>",
                                "<blk_code_data><blk_phy_el port1=\"a\">",
                                "<blk_code_data><blk_cport></blk_func>", "<blk_pres_data/>"})
            QVERIFY2(!FromXml(xml), xml);
    }
};

ZEMA_TEST(tst_CodeFile)
#include "tst_CodeFile.moc"
