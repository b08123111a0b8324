// The presentation section: round trips, image names, float precision, port defaults and the
// link of presentation ports to their code records.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "app/XmlText.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"

#include <QtTest>

namespace {

BlkPresData *FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return BlkPresFileIO::ReadPresData(&reader);
}

QByteArray ToXml(const BlkPresData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    BlkPresFileIO::WritePresData(&writer, data);
    return bytes;
}

BlkPort *NewPort(const QString &name, float per_distance)
{
    auto *port = new BlkPort;
    port->name = name;
    port->per_distance = per_distance;
    return port;
}

} // namespace

class tst_PresFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip();
    void writerFormat();
    void imageExtension_data();
    void imageExtension();
    void portAttributes_data();
    void portAttributes();
    void headDefaults();
    void linkPortsToCode();
    void brokenDocuments_data();
    void brokenDocuments();
    void sectionInsideLargerDocument();
};

void tst_PresFile::roundTrip()
{
    BlkPresData *data = NewDefaultPresData();
    data->title = "Gain <k> & \"offset\"";
    data->hsize = 60;
    data->aspect = 1;
    data->border = 0;
    data->images = {new BlkImage{"default", "", "", ""},
                    new BlkImage{"big&bold", "Basic", "Size", "'Large'"}};
    data->texts.append(new BlkImageText{"big&bold", "txt<1>", "Basic", "Gain"});
    // Not alphabetical: the order of the ports is the order of the code records.
    data->ports = {NewPort("z", 33.33333f), NewPort("a<in>", 0.0f), NewPort("m", 100.0f)};
    BlkPort *p = data->ports[1];
    p->dis_text = "x & y";
    p->type = "Phy.Ref.";
    p->placement = "Left";
    p->text_dx = -1.5f;
    p->text_dy = 1e-7f;
    p->conn_req = 2;
    p->vport_para = 2;
    p->vport_grp = "G";
    p->vport_entity = "E";
    p->vport_value = "\"on\"";
    p->mport_para = 1;
    p->mport_grp = "G2";
    p->mport_entity = "E2";

    QTemporaryDir dir;
    const QString path = dir.filePath("blk_pres.cfg");
    ErrorList errors;
    BlkPresFileIO io(dir.path(), &errors, 1);
    QVERIFY(io.SaveFile(path, data, "ZEMA"));
    BlkPresData *back = io.LoadFile(path, "ZEMA");
    QVERIFY(back);
    QVERIFY(errors.IsEmpty());
    QCOMPARE(ToXml(back), ToXml(data));
    QCOMPARE(back->title, data->title);
    QCOMPARE(back->hsize, 60);
    QCOMPARE(back->vsize, 40);
    QCOMPARE(back->aspect, quint8(1));
    QCOMPARE(back->border, quint8(0));
    QCOMPARE(back->images[1]->para_value, QString("'Large'"));
    QCOMPARE(back->texts[0]->text, QString("txt<1>"));
    QStringList names;
    for (const BlkPort *port : back->ports)
        names.append(port->name);
    QCOMPARE(names, (QStringList{"z", "a<in>", "m"}));
    // Six significant digits on the way out.
    QVERIFY(back->ports[0]->per_distance == 33.3333f);
    const BlkPort *q = back->ports[1];
    QCOMPARE(q->text_dx, -1.5f);
    QCOMPARE(q->text_dy, 1e-7f);
    QCOMPARE(q->vport_value, QString("\"on\""));
    QCOMPARE(q->conn_req, 2);
    QCOMPARE(q->mport_entity, QString("E2"));
    QCOMPARE(q->stub_len, 4.0f);
    FreeBlkPresData(data);
    FreeBlkPresData(back);
}

void tst_PresFile::writerFormat()
{
    BlkPresData data;
    data.title = "T";
    data.hsize = 40;
    data.vsize = 30;
    data.border = 1;
    BlkImage image{"img", "g", "e", "v"};
    BlkImageText text{"img", "t", "g", "e"};
    BlkPort port;
    port.name = "in";
    port.per_distance = 33.33333f;
    port.text_dx = 2.0f;
    port.mport_para = 1;
    data.images.append(&image);
    data.texts.append(&text);
    data.ports.append(&port);
    const QByteArray expected =
        "\n<blk_pres_data>\n"
        "    <title>T</title>\n"
        "    <hsize>40</hsize>\n"
        "    <vsize>30</vsize>\n"
        "    <aspect>0</aspect>\n"
        "    <border>1</border>\n"
        "    <blk_img name=\"img\" para_grp=\"g\" para_entity=\"e\" para_value=\"v\"/>\n"
        "    <blk_img_text img_name=\"img\" text=\"t\" para_grp=\"g\" para_entity=\"e\"/>\n"
        "    <blk_port name=\"in\" dis_text=\"\" type=\"\" placement=\"\" per_distance=\"33.3333\""
        " text_dx=\"2\" text_dy=\"0\" conn_req=\"0\" vport_para=\"0\" vport_grp=\"\""
        " vport_entity=\"\" vport_value=\"\" mport_para=\"1\" mport_grp=\"\" mport_entity=\"\"/>\n"
        "</blk_pres_data>";
    QCOMPARE(ToXml(&data), expected);
}

void tst_PresFile::imageExtension_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("loaded");
    QTest::newRow("extension removed") << "gain.vimg" << "gain";
    QTest::newRow("no extension") << "gain" << "gain";
    QTest::newRow("other case kept") << "gain.VIMG" << "gain.VIMG";
    QTest::newRow("every occurrence") << "a.vimgb.vimg" << "ab";
}

void tst_PresFile::imageExtension()
{
    QFETCH(QString, stored);
    QFETCH(QString, loaded);
    BlkPresData *data = FromXml("<blk_pres_data><blk_img name=\"" + stored.toUtf8() +
                                "\"/><blk_img_text img_name=\"" + stored.toUtf8() +
                                "\" text=\"a.vimg\"/></blk_pres_data>");
    QCOMPARE(data->images[0]->name, loaded);
    QCOMPARE(data->texts[0]->img_name, loaded);
    QCOMPARE(data->texts[0]->text, QString("a.vimg"));
    FreeBlkPresData(data);
}

void tst_PresFile::portAttributes_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<int>("mport_para");
    QTest::addColumn<int>("vport_para");
    QTest::addColumn<float>("per_distance");
    QTest::addColumn<QString>("type");

    QTest::newRow("no attributes") << QByteArray() << 0 << 0 << 0.0f << "";
    QTest::newRow("mport_para missing") << QByteArray("vport_para=\"2\" per_distance=\"12.5\"")
                                        << 0 << 2 << 12.5f << "";
    QTest::newRow("mport_para non-zero") << QByteArray("mport_para=\"3\" type=\"Any\"")
                                         << 1 << 0 << 0.0f << "Any";
    QTest::newRow("not numbers") << QByteArray("vport_para=\"x\" per_distance=\"half\"")
                                 << 0 << 0 << 0.0f << "";
}

void tst_PresFile::portAttributes()
{
    QFETCH(QByteArray, attributes);
    QFETCH(int, mport_para);
    QFETCH(int, vport_para);
    QFETCH(float, per_distance);
    QFETCH(QString, type);
    BlkPresData *data = FromXml("<blk_pres_data><blk_port " + attributes + "/></blk_pres_data>");
    QCOMPARE(data->ports.size(), 1);
    const BlkPort *port = data->ports[0];
    QCOMPARE(int(port->mport_para), mport_para);
    QCOMPARE(port->vport_para, vport_para);
    QCOMPARE(port->per_distance, per_distance);
    QCOMPARE(port->type, type);
    QCOMPARE(port->stub_len, 4.0f);
    QCOMPARE(port->code_port, nullptr);
    FreeBlkPresData(data);
}

void tst_PresFile::headDefaults()
{
    // The reader starts from zeros, not from the default record of a new block.
    BlkPresData *read = FromXml("<blk_pres_data><aspect>5</aspect></blk_pres_data>");
    QCOMPARE(read->hsize, 0);
    QCOMPARE(read->vsize, 0);
    QCOMPARE(read->border, quint8(0));
    QCOMPARE(read->aspect, quint8(1));
    BlkPresData *fresh = NewDefaultPresData();
    QCOMPARE(fresh->hsize, 40);
    QCOMPARE(fresh->vsize, 40);
    QCOMPARE(fresh->border, quint8(1));
    QCOMPARE(fresh->aspect, quint8(0));
    FreeBlkPresData(read);
    FreeBlkPresData(fresh);
}

void tst_PresFile::linkPortsToCode()
{
    BlkPresData pres;
    BlkPort a, b, unnamed;
    a.name = "a";
    b.name = "b";
    pres.ports = {&a, &b, &unnamed};
    BlkCodeData code;
    BlkCodePort cb, ca, cempty;
    cb.port_name = "b";
    ca.port_name = "a";
    code.ports = {&cb, &cempty, &ca};
    LinkPortsToCode(&pres, &code);
    QCOMPARE(a.code_port, &ca);
    QCOMPARE(b.code_port, &cb);
    QCOMPARE(unnamed.code_port, nullptr);
    code.ports.removeAll(&ca);
    LinkPortsToCode(&pres, &code);
    QCOMPARE(a.code_port, nullptr);
    LinkPortsToCode(&pres, nullptr);
    QCOMPARE(b.code_port, nullptr);
}

void tst_PresFile::brokenDocuments_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("inside blk_port") << QByteArray("<blk_pres_data><blk_port name=\"a\" type=");
    QTest::newRow("after a port") << QByteArray("<blk_pres_data><blk_port name=\"a\"/><blk_img/>");
    QTest::newRow("inside title") << QByteArray("<blk_pres_data><title>T");
    QTest::newRow("bad entity") << QByteArray("<blk_pres_data><title>a &amp b</title></blk_pres_data>");
}

void tst_PresFile::brokenDocuments()
{
    QFETCH(QByteArray, xml);
    QTemporaryDir dir;
    const QString path = dir.filePath("blk_pres.cfg");
    QVERIFY(WriteBytes(path, XmlDocument(xml)));
    ErrorList errors;
    BlkPresFileIO io(dir.path(), &errors, 1);
    QCOMPARE(io.LoadFile(path, "ZEMA"), nullptr);
    QCOMPARE(errors.errors.size(), 1);
}

void tst_PresFile::sectionInsideLargerDocument()
{
    const QByteArray xml = "<blk_def_data><blk_para><title>not this</title></blk_para>"
                           "<blk_pres_data><title>mine</title><extra><blk_port name=\"deep\"/>"
                           "</extra></blk_pres_data><blk_scheme_data/></blk_def_data>";
    QXmlStreamReader reader(xml);
    BlkPresData *data = BlkPresFileIO::ReadPresData(&reader);
    QVERIFY(data);
    QCOMPARE(data->title, QString("mine"));
    // Unknown elements are passed over, but what they hold is still read.
    QCOMPARE(data->ports.size(), 1);
    QVERIFY(IsEnd(&reader, "blk_pres_data"));
    QVERIFY(ToXml(nullptr).isEmpty());
    FreeBlkPresData(data);
}

ZEMA_TEST(tst_PresFile)
#include "tst_PresFile.moc"
