// The presentation section: a round trip, image names, reader defaults, broken documents and the
// link of presentation ports to their code records. Its place inside a block definition file is
// tested with that file.
#include "SampleBlock.h"
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"

#include <QtTest>
#include <memory>

namespace {

using PresPtr = std::unique_ptr<BlkPresData, void (*)(BlkPresData *)>;

PresPtr FromXml(const QByteArray &xml)
{
    QXmlStreamReader reader("<blk_pres_data>" + xml + "</blk_pres_data>");
    return PresPtr(BlkPresFileIO::ReadPresData(&reader), FreeBlkPresData);
}

QByteArray ToXml(const BlkPresData *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    BlkPresFileIO::WritePresData(&writer, data);
    return bytes;
}

} // namespace

class tst_PresFile : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip()
    {
        QTemporaryDir dir;
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(MakeSampleBlock(""), FreeBlockData);
        BlkPresData *data = block->pres;
        // Not alphabetical: the order of the ports is the order of the code records.
        data->ports.append(new BlkPort);
        data->ports[2]->name = "a";
        data->ports[2]->per_distance = 33.33333f;
        ErrorList errors;
        BlkPresFileIO io(dir.path(), &errors, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_pres.cfg"), data, "ZEMA"));
        PresPtr back(io.LoadFile(dir.filePath("blk_pres.cfg"), "ZEMA"), FreeBlkPresData);
        QVERIFY(back && errors.IsEmpty());
        const QByteArray saved = ToXml(back.get());
        QCOMPARE(saved, ToXml(data));
        QVERIFY(saved.indexOf("name=\"out\"") < saved.indexOf("name=\"a\""));
        // Six significant digits on the way out, in a fixed attribute order.
        QVERIFY(saved.contains("per_distance=\"33.3333\" text_dx=\"0\" text_dy=\"0\" conn_req=\"0\""));
        QCOMPARE(back->ports[2]->stub_len, 4.0f);
        QVERIFY(ToXml(nullptr).isEmpty());
    }

    void imageExtension()
    {
        // Every ".vimg" is removed from image names, with exact case, and from no other field.
        PresPtr data = FromXml("<blk_img name=\"gain.vimg\"/><blk_img name=\"gain.VIMG\"/>"
                               "<blk_img name=\"a.vimgb.vimg\"/><blk_img_text img_name=\"x.vimg\" text=\"t.vimg\"/>");
        QVERIFY(data && data->images.size() == 3);
        QCOMPARE(data->images[0]->name, QString("gain"));
        QCOMPARE(data->images[1]->name, QString("gain.VIMG"));
        QCOMPARE(data->images[2]->name, QString("ab"));
        QCOMPARE(data->texts[0]->img_name, QString("x"));
        QCOMPARE(data->texts[0]->text, QString("t.vimg"));
    }

    void readerDefaults()
    {
        // The reader starts from zeros, not from the record of a new block; unknown elements are
        // passed over, but what they hold is still read.
        PresPtr read = FromXml("<aspect>5</aspect><x><blk_port/></x><blk_port mport_para=\"3\"/>");
        PresPtr fresh(NewDefaultPresData(), FreeBlkPresData);
        QVERIFY(read);
        QCOMPARE(QList<int>({read->hsize, read->vsize, read->border, read->aspect, fresh->hsize,
                             fresh->vsize, fresh->border, fresh->aspect}),
                 QList<int>({0, 0, 0, 1, 40, 40, 1, 0}));
        QCOMPARE(read->ports.size(), 2);
        QCOMPARE(read->ports[0]->mport_para, quint8(0));
        QCOMPARE(read->ports[1]->mport_para, quint8(1));
    }

    void broken()
    {
        // Broken input gives null, and the record made so far is freed.
        for (const char *xml : {"<blk_port name=\"a\" type=", "<blk_port/><title>T", "<title>a &amp b</title>"})
            QVERIFY2(!FromXml(xml), xml);
    }

    void linkPortsToCode()
    {
        BlkPresData pres;
        BlkPort a, unnamed;
        a.name = "a";
        pres.ports = {&a, &unnamed};
        BlkCodeData code;
        BlkCodePort cempty, ca;
        ca.port_name = "a";
        code.ports = {&cempty, &ca};
        LinkPortsToCode(&pres, &code);
        QCOMPARE(a.code_port, &ca);
        QCOMPARE(unnamed.code_port, nullptr);
        // A link whose code record is gone is cleared.
        code.ports.removeAll(&ca);
        LinkPortsToCode(&pres, &code);
        QCOMPARE(a.code_port, nullptr);
        LinkPortsToCode(&pres, nullptr);
    }
};

ZEMA_TEST(tst_PresFile)
#include "tst_PresFile.moc"
