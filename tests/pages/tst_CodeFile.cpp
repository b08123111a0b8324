// The code section: round trips, the deliberate differences between reader and writer, and
// broken or embedded documents.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"

#include <QtTest>

namespace {

BlkCodeData *FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return BlkCodeFileIO::ReadCodeData(&reader);
}

QByteArray ToXml(const BlkCodeData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    BlkCodeFileIO::WriteCodeData(&writer, data);
    return bytes;
}

BlkCodePort *NewPort(const QString &name)
{
    auto *port = new BlkCodePort;
    port->port_name = name;
    port->data_name = name + "_data";
    return port;
}

} // namespace

class tst_CodeFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip();
    void writerFormat();
    void writerDropsIncompleteRows();
    void readPort_data();
    void readPort();
    void createInst_data();
    void createInst();
    void contentBlanksAttributes();
    void truncated_data();
    void truncated();
    void sectionInsideLargerDocument();
    void nullAndMissing();
};

void tst_CodeFile::roundTrip()
{
    std::unique_ptr<BlkCodeData, void (*)(BlkCodeData *)> data(new BlkCodeData, FreeBlkCodeData);
    data->create_inst = 1;
    BlkCodePort *in = NewPort("in<1>");
    in->data_type = "Real";
    in->mem_type = "Non-Cacheable";
    in->mem_alloc = "2";
    in->domain = "Electrical";
    in->units = "A & \"V\"";
    in->dim_dependency = "Connected Port";
    in->mem_extra = "[G#E]*2";
    in->mem_offset = "'4'";
    in->dims = {new BlkPortDim{"3", 3}, new BlkPortDim{"[Grp#N < 2]", 0}};
    BlkCodePort *out = NewPort("out");
    out->units = "$in<1>";
    data->ports = {in, out};
    data->funcs.append(new BlkCodeFunc{"Run&Go", "G", "E", "<v>", "in<1>", "=2", ">3"});
    data->elements.append(new BlkPhyElement{"in<1>", "gone", "e\"1\"", 3, "-3", "G", "E",
                                            "Ga", "Ea", "Yes", nullptr, nullptr});

    QTemporaryDir dir;
    const QString path = dir.filePath("blk_code.cfg");
    ErrorList errors;
    BlkCodeFileIO io(dir.path(), &errors, 1);
    QVERIFY(io.SaveFile(path, data.get(), "ZEMA"));
    std::unique_ptr<BlkCodeData, void (*)(BlkCodeData *)> back(io.LoadFile(path, "ZEMA"),
                                                               FreeBlkCodeData);
    QVERIFY(back);
    QVERIFY(errors.IsEmpty());
    QCOMPARE(ToXml(back.get()), ToXml(data.get()));
    QCOMPARE(back->ports.size(), 2);
    const BlkCodePort *p = back->ports[0];
    QCOMPARE(p->port_name, QString("in<1>"));
    QCOMPARE(p->units, QString("A & \"V\""));
    QCOMPARE(p->mem_offset, QString("'4'"));
    QCOMPARE(p->dims.size(), 2);
    QCOMPARE(p->dims[1]->para1, QString("[Grp#N < 2]"));
    QCOMPARE(p->dims[0]->array_size, 3);
    QCOMPARE(back->funcs[0]->para_en_val, QString("<v>"));
    const BlkPhyElement *el = back->elements[0];
    QCOMPARE(el->el_type, 3);
    QCOMPARE(el->elen_para_en_val, QString("Yes"));
    // The port links are resolved on reading; a name no port has stays null.
    QCOMPARE(el->cport1, back->ports[0]);
    QCOMPARE(el->cport2, nullptr);
}

void tst_CodeFile::writerFormat()
{
    BlkCodeData data;
    BlkCodePort port;
    port.port_name = "p";
    BlkPortDim dim{"N", 0};
    port.dims.append(&dim);
    BlkCodeFunc func{"f", "g", "n", "v", "p", "=1", "<2"};
    BlkPhyElement el{"a", "b", "a_b", 4, "0", "g1", "e1", "g2", "e2", "v2", nullptr, nullptr};
    data.ports.append(&port);
    data.funcs.append(&func);
    data.elements.append(&el);
    const QByteArray expected =
        "\n<blk_code_data>\n"
        "    <create_inst>0</create_inst>\n"
        "    <blk_cport>\n"
        "        <port_name>p</port_name>\n"
        "        <data_name></data_name>\n"
        "        <data_type></data_type>\n"
        "        <mem_type></mem_type>\n"
        "        <mem_alloc></mem_alloc>\n"
        "        <domain></domain>\n"
        "        <units></units>\n"
        "        <dim_dependency></dim_dependency>\n"
        "        <mem_extra></mem_extra>\n"
        "        <mem_offset></mem_offset>\n"
        "        <blk_dim array_size=\"0\" para1=\"N\"/>\n"
        "    </blk_cport>\n"
        "    <blk_func func_name=\"f\" para_grp=\"g\" para_en_name=\"n\" para_en_val=\"v\" port=\"p\""
        " dim=\"=1\" size=\"&lt;2\"/>\n"
        "    <blk_phy_el port1=\"a\" port2=\"b\" el_name=\"a_b\" el_type=\"4\" el_mf=\"0\""
        " elval_para_grp=\"g1\" elval_para_en=\"e1\" elen_para_grp=\"g2\" elen_para_en=\"e2\""
        " elen_para_en_val=\"v2\"/>\n"
        "</blk_code_data>";
    QCOMPARE(ToXml(&data), expected);
}

void tst_CodeFile::writerDropsIncompleteRows()
{
    const QByteArray xml = "<blk_code_data>"
                           "<blk_func func_name=\"\" port=\"p\"/><blk_func func_name=\"Run\"/>"
                           "<blk_phy_el port1=\"a\" port2=\"\"/><blk_phy_el port1=\"\" port2=\"b\"/>"
                           "<blk_phy_el port1=\"a\" port2=\"b\"/>"
                           "</blk_code_data>";
    BlkCodeData *read = FromXml(xml);
    QVERIFY(read);
    // Accepted on reading...
    QCOMPARE(read->funcs.size(), 2);
    QCOMPARE(read->elements.size(), 3);
    BlkCodeData *again = FromXml(ToXml(read));
    // ...and lost on the next save.
    QCOMPARE(again->funcs.size(), 1);
    QCOMPARE(again->funcs[0]->func_name, QString("Run"));
    QCOMPARE(again->elements.size(), 1);
    QCOMPARE(again->elements[0]->port2, QString("b"));
    FreeBlkCodeData(read);
    FreeBlkCodeData(again);
}

void tst_CodeFile::readPort_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("mem_type");
    QTest::addColumn<QStringList>("para1");

    QTest::newRow("mem_type missing") << QByteArray("<port_name>p</port_name>")
                                      << "Cacheable" << QStringList{};
    QTest::newRow("mem_type empty") << QByteArray("<mem_type/>") << "" << QStringList{};
    QTest::newRow("any order") << QByteArray("<blk_dim array_size=\"2\" para1=\"2\"/>"
                                             "<mem_type>Depends</mem_type><port_name>p</port_name>")
                               << "Depends" << QStringList{"2"};
    QTest::newRow("unknown passed over")
        << QByteArray("<extra><mem_type>Non-Cacheable</mem_type></extra>") << "Non-Cacheable"
        << QStringList{};
    QTest::newRow("para2 folded") << QByteArray("<blk_dim array_size=\"0\" para1=\"Grp\" para2=\"En\"/>")
                                  << "Cacheable" << QStringList{"[Grp#En]"};
    QTest::newRow("para2 empty") << QByteArray("<blk_dim para1=\"Grp\" para2=\"\"/>")
                                 << "Cacheable" << QStringList{"Grp"};
}

void tst_CodeFile::readPort()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, mem_type);
    QFETCH(QStringList, para1);

    BlkCodeData *data = FromXml("<blk_code_data><blk_cport>" + body + "</blk_cport>"
                                  "<blk_dim para1=\"outside a port\"/></blk_code_data>");
    QVERIFY(data);
    QCOMPARE(data->ports.size(), 1);
    QCOMPARE(data->ports[0]->mem_type, mem_type);
    QStringList dims;
    for (const BlkPortDim *dim : data->ports[0]->dims)
        dims.append(dim->para1);
    QCOMPARE(dims, para1);
    // A folded pair is saved as one field and comes back unchanged.
    const QByteArray saved = ToXml(data);
    QVERIFY(!saved.contains("para2"));
    BlkCodeData *again = FromXml(saved);
    QCOMPARE(again->ports[0]->dims.size(), dims.size());
    if (!dims.isEmpty())
        QCOMPARE(again->ports[0]->dims[0]->para1, dims[0]);
    FreeBlkCodeData(data);
    FreeBlkCodeData(again);
}

void tst_CodeFile::createInst_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("flag");
    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("one") << QByteArray("1") << 1;
    QTest::newRow("any non-zero") << QByteArray("7") << 1;
    QTest::newRow("not a number") << QByteArray("yes") << 0;
}

void tst_CodeFile::createInst()
{
    QFETCH(QByteArray, text);
    QFETCH(int, flag);
    BlkCodeData *data = FromXml("<blk_code_data><create_inst>" + text +
                                  "</create_inst></blk_code_data>");
    QCOMPARE(int(data->create_inst), flag);
    QVERIFY(ToXml(data).contains("<create_inst>" + QByteArray::number(flag) + "<"));
    FreeBlkCodeData(data);
}

void tst_CodeFile::contentBlanksAttributes()
{
    // Attributes are taken again on every token inside the element.
    BlkCodeData *data = FromXml("<blk_code_data><blk_func func_name=\"Run\">x</blk_func>"
                                  "<blk_func func_name=\"Go\"></blk_func></blk_code_data>");
    QCOMPARE(data->funcs.size(), 2);
    QCOMPARE(data->funcs[0]->func_name, QString());
    QCOMPARE(data->funcs[1]->func_name, QString("Go"));
    FreeBlkCodeData(data);
}

void tst_CodeFile::truncated_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("inside blk_cport")
        << QByteArray("<blk_code_data><blk_cport><port_name>p</port_name><blk_dim para1=\"1\"/>");
    QTest::newRow("inside a text element")
        << QByteArray("<blk_code_data><blk_cport><port_name>p</port");
    QTest::newRow("inside blk_dim") << QByteArray("<blk_code_data><blk_cport><blk_dim para1=\"1");
    QTest::newRow("inside blk_phy_el")
        << QByteArray("<blk_code_data><blk_func func_name=\"f\"/><blk_phy_el port1=\"a\">");
    QTest::newRow("mismatched tag")
        << QByteArray("<blk_code_data><blk_cport></blk_func></blk_code_data>");
}

void tst_CodeFile::truncated()
{
    QFETCH(QByteArray, xml);
    QTemporaryDir dir;
    const QString path = dir.filePath("blk_code.cfg");
    QVERIFY(WriteBytes(path, XmlDocument(xml)));
    ErrorList errors;
    BlkCodeFileIO io(dir.path(), &errors, 1);
    QCOMPARE(io.LoadFile(path, "ZEMA"), nullptr);
    QCOMPARE(errors.errors.size(), 1);
    QVERIFY(errors.errors[0].contains("blk_code.cfg: File Loading Error: "));
}

void tst_CodeFile::sectionInsideLargerDocument()
{
    const QByteArray xml = "<blk_def_data><blk_para><title>t</title><blk_cport/></blk_para>"
                           "<blk_code_data><blk_cport><port_name>a</port_name></blk_cport>"
                           "</blk_code_data>"
                           "<blk_code_data><create_inst>1</create_inst></blk_code_data>"
                           "</blk_def_data>";
    QXmlStreamReader reader(xml);
    BlkCodeData *first = BlkCodeFileIO::ReadCodeData(&reader);
    QVERIFY(first);
    QCOMPARE(first->ports.size(), 1);
    QCOMPARE(first->create_inst, quint8(0));
    // The reader stops at the section's end, ready for what follows.
    BlkCodeData *second = BlkCodeFileIO::ReadCodeData(&reader);
    QVERIFY(second);
    QCOMPARE(second->ports.size(), 0);
    QCOMPARE(second->create_inst, quint8(1));
    QCOMPARE(BlkCodeFileIO::ReadCodeData(&reader), nullptr);
    QVERIFY(!reader.hasError());
    FreeBlkCodeData(first);
    FreeBlkCodeData(second);
}

void tst_CodeFile::nullAndMissing()
{
    QVERIFY(ToXml(nullptr).isEmpty());
    QTemporaryDir dir;
    ErrorList errors;
    BlkCodeFileIO io(dir.path(), &errors, 1);
    // A document without the section is no error; it just holds no record.
    QVERIFY(WriteBytes(dir.filePath("other.cfg"), XmlDocument("<blk_pres_data/>")));
    QCOMPARE(io.LoadFile(dir.filePath("other.cfg"), "ZEMA"), nullptr);
    QVERIFY(errors.IsEmpty());
    QCOMPARE(io.LoadFile(dir.filePath("absent.cfg"), "ZEMA"), nullptr);
    QCOMPARE(errors.errors.size(), 1);
}

ZEMA_TEST(tst_CodeFile)
#include "tst_CodeFile.moc"
