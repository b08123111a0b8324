// Workspace files: the reader's tolerance, attaching instances to their blocks with the
// parameter merge, and the working port list of an instance.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"
#include "schematics/BlockRef.h"
#include "schematics/WSPFileIO.h"
#include "schematics/WspBlockIterator.h"
#include "schematics/WspData.h"

#include <QDir>
#include <QtTest>
#include <memory>

namespace {

using WspPtr = std::unique_ptr<WspData, void (*)(WspData *)>;
using ItemPtr = std::unique_ptr<WSP_BLK_ITEM_STRUCT, void (*)(WSP_BLK_ITEM_STRUCT *)>;
using Groups = QList<QPair<QString, QList<ParaEntity *>>>;

bool WriteWsp(const QString &path, const QByteArray &xml)
{
    QByteArray bytes = XmlDocument(xml);
    EncodeBuffer(bytes, true, 0);
    return WriteBytes(path, bytes);
}

QByteArray Bitem(const QByteArray &fields)
{
    return "<bitem>" + fields + "<blk_para><title>P</title></blk_para></bitem>";
}

ParaEntity *Entity(const QString &label, const QString &value, const QStringList &values = {},
                   int index = -1)
{
    auto *entity = new ParaEntity(label);
    entity->sel_val = value;
    entity->values = values;
    entity->sel_idx = index;
    return entity;
}

BlkParaData *ParaList(const Groups &groups)
{
    auto *data = new BlkParaData;
    for (const auto &group : groups)
        data->para_grp.append(new ParaGroup{group.first, QString(), group.second});
    return data;
}

// Each entity as "label=sel_val@sel_idx", group by group.
QStringList Summary(const BlkParaData *data)
{
    QStringList lines;
    for (const ParaGroup *group : data->para_grp)
        for (const ParaEntity *entity : group->para_entity)
            lines << QString("%1=%2@%3").arg(entity->label, entity->sel_val).arg(entity->sel_idx);
    return lines;
}

// The sample block with id 1001, type 7 and a parameter group "G" of every kind of entity.
bool WriteMergeBlock(const QString &dir)
{
    QDir().mkpath(dir);
    BlockData *block = MakeSampleBlock(dir);
    FindEntity(block->config, "Basic", "Block ID")->sel_val = "1001";
    FindEntity(block->config, "Vendor Specific", "Custom Block Type")->sel_val = "7";
    block->params->para_grp.first()->header = "G";
    block->params->para_grp.first()->para_entity
        << Entity("Sel", "", {"<SELECT>"}) << Entity("Short", "x", {"x", "y"}, 0)
        << Entity("New", "5");
    const bool saved = SaveBlockData(block, nullptr, "ZEMA", true);
    FreeBlockData(block);
    return saved;
}

// A record attached to an in-memory block, for the working port list.
struct Instance {
    BlockData *block = new BlockData;
    WSP_BLK_ITEM_STRUCT *record = new WSP_BLK_ITEM_STRUCT;

    explicit Instance(const QList<ParaEntity *> &values = {})
    {
        block->pres = new BlkPresData;
        record->blockdef = block;
        record->para = ParaList({{"P", values}});
    }
    ~Instance()
    {
        FreeBlkItem(record);
        FreeBlockData(block);
    }
    BlkPort *AddPort(const QString &name, const QString &placement, int vport_para = 0)
    {
        auto *port = new BlkPort;
        port->name = name;
        port->placement = placement;
        port->vport_para = vport_para;
        port->vport_grp = port->mport_grp = "P";
        port->vport_entity = "Show";
        port->vport_value = "On";
        port->mport_entity = "Count";
        block->pres->ports.append(port);
        return port;
    }
    // Each working port as "name:dis_text@per_distance", with a leading "-" when hidden.
    QStringList Ports()
    {
        RebuildWorkingPorts(record);
        QStringList ports;
        for (const BlkPort *port : record->ports)
            ports << QString("%1%2:%3@%4").arg(port->vport_para ? "-" : "", port->name,
                                                port->dis_text).arg(port->per_distance, 0, 'g', 4);
        return ports;
    }
};

} // namespace

class tst_Workspace : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;
    ErrorList errors;

    WspPtr Load(const QByteArray &xml, const QStringList &search_dirs = {})
    {
        const QString path = tmp.filePath("ws/sub/test.wsp");
        WSPFileIO io(QString(), &errors, 1);
        return WspPtr(WriteWsp(path, xml) ? io.LoadWsp(tmp.filePath("ws"), path, search_dirs,
                                                       "ZEMA") : nullptr, FreeWsp);
    }

private slots:
    void initTestCase()
    {
        InitRegistry(nullptr);
    }
    void init()
    {
        errors.ClearMessages();
    }

    void itemReaders()
    {
        // pos needs exactly two parts and rt four, empty parts skipped; a third blk_para is
        // ignored; a bitem without blk_para is dropped.
        WspPtr data = Load("<wsp_data><enabled>0</enabled><bitem><hf>1</hf><pos>1,2,3</pos>"
                           "<rt>5,,6,7,8</rt><blk_para><title>first</title></blk_para>"
                           "<blk_para><title>second</title></blk_para><blk_para><para_grp>"
                           "<para_entity><enable>0</enable></para_entity></para_grp></blk_para>"
                           "</bitem><bitem><id>12</id></bitem></wsp_data>");
        QVERIFY(data && !data->enabled);
        QCOMPARE(data->bitems.size(), 1);
        const WSP_BLK_ITEM_STRUCT *item = data->bitems.first();
        QCOMPARE(item->wsp_path, QString("sub/test.wsp"));
        QCOMPARE(item->pos, QPointF());
        QCOMPARE(item->rt, QRectF(5, 6, 7, 8));
        QVERIFY(item->hf && !item->vf && item->enable);
        QCOMPARE(item->para->title + "/" + item->ic->title, QString("first/second"));

        // Alpha 200 for a colour without one; points need two numbers each; a citem without
        // points and a titem without text are dropped; unknown wrappers are read through.
        data = Load("<wsp_data><citem><cl>16711680</cl><pts>1,2;3;4,5,6</pts></citem>"
                    "<citem><cl>33488896</cl><pts>;;1.5,,-2;;</pts></citem>"
                    "<citem><pts>3;4</pts></citem><citem><id>1</id></citem>"
                    "<titem><pos>1,2</pos></titem><group><titem><text>a &lt; b</text>"
                    "</titem></group></wsp_data>");
        QVERIFY(data && errors.IsEmpty());
        QCOMPARE(data->citems.size(), 2);
        QCOMPARE(data->citems[0]->cl, 0xc8ff0000u);
        QCOMPARE(data->citems[0]->pts, (QList<QPointF>{{1, 2}, {4, 5}}));
        QCOMPARE(data->citems[1]->cl, 0x01ff0000u);
        QCOMPARE(data->citems[1]->pts, (QList<QPointF>{{1.5, -2}}));
        QCOMPARE(data->titems.size(), 1);
        QCOMPARE(data->titems.first()->text, QString("a < b"));
    }

    void referencePaths()
    {
        QVERIFY(QDir().mkpath(tmp.filePath("lib1")) && QDir().mkpath(tmp.filePath("lib2/Sum")));
        QByteArray xml = "<wsp_data>";
        for (const char *ref : {"/blocks/Gain/Gain.bdef|", "Sum.bdef|Sum", "Nope.bdef|Nope",
                                "x.bdef|C:/lib/Sum"}) {
            const QList<QByteArray> parts = QByteArray(ref).split('|');
            xml += Bitem("<ref_name>" + parts[0] + "</ref_name><ref_path>" + parts[1] +
                         "</ref_path>");
        }
        WspPtr data = Load(xml + "</wsp_data>", {tmp.filePath("lib1"), tmp.filePath("lib2")});
        QVERIFY(data);
        QStringList refs;
        for (const WSP_BLK_ITEM_STRUCT *item : data->bitems)
            refs << item->ref_name + "|" + item->ref_path;
        // A path shorter than the name is taken for the old manner of a full path in ref_name.
        QCOMPARE(refs, (QStringList{"Gain.bdef|/blocks/Gain/Gain.bdef",
                                    "Sum.bdef|" + tmp.filePath("lib2/Sum"), "Nope.bdef|Nope.bdef",
                                    "x.bdef|C:/lib/Sum"}));
    }

    void brokenFiles()
    {
        WspPtr other = Load("<blk_para>" + Bitem("<id>1</id>") + "</blk_para>");
        QVERIFY(other && other->bitems.isEmpty() && errors.IsEmpty());
        // An XML error inside an item frees the whole result.
        QVERIFY(!Load("<wsp_data>" + Bitem("<id>1</id>") + "<bitem><blk_para><title>x</blk_para>"));
        QCOMPARE(errors.errors.size(), 1);
        QVERIFY(errors.errors.first().contains("test.wsp: File Loading Error: "));
    }

    void attachMergesStoredParameters()
    {
        const QString dir = tmp.filePath("blocks/Merge");
        QVERIFY(WriteMergeBlock(dir));
        for (const bool merge_values : {false, true}) {
            ItemPtr record(new WSP_BLK_ITEM_STRUCT, FreeBlkItem);
            record->ref_path = dir;
            record->ver = merge_values ? "0.9" : "";
            ParaEntity *gain = Entity("Gain", "7");
            gain->usr_visible = 0;
            record->para = ParaList({{"G", {gain, Entity("Mode", "zzz", {}, 1),
                                            Entity("Sel", "picked", {}, 3),
                                            Entity("Short", "q", {}, 5), Entity("Gone", "9")}},
                                     {"Old", {Entity("E", "o")}}});
            QVERIFY(LoadBlockRef(record.get(), &errors, "ZEMA", true, merge_values));
            // New entities keep their defaults, removed ones vanish; a stored index takes the
            // fresh list's entry only when it fits, a "<select>" list takes index and value.
            QCOMPARE(Summary(record->para),
                     (QStringList{"Gain=7@-1", merge_values ? "Mode=zzz@1" : "Mode=Fast@1",
                                  "Sel=picked@3", merge_values ? "Short=q@0" : "Short=x@0",
                                  "New=5@-1"}));
            QCOMPARE(int(FindEntity(record->para, "G", "Gain")->usr_visible), 0);
            QCOMPARE(QString("%1 %2 %3 %4").arg(record->ref_id).arg(record->custom_type)
                         .arg(record->ref_name, record->ver),
                     QString("1001 7 Merge.bdef ") + (merge_values ? "0.9" : "1.0"));
            // Without stored initial conditions the instance takes a copy of the block's own.
            QCOMPARE(Summary(record->ic), (QStringList{"Gain=1.5,\"2\"@-1", "Mode=Slow@0"}));
        }
    }

    void iteratorSkipsUnloadableBlocks()
    {
        const QString root = tmp.filePath("composite");
        QVERIFY(WriteMergeBlock(root + "/blocks/Good"));
        QVERIFY(WriteWsp(root + "/ws/a.wsp",
                         "<wsp_data>" + Bitem("<id>1</id><ref_path>Missing</ref_path>") +
                             Bitem("<id>2</id><ref_path>Good</ref_path>") +
                             "<bitem><id>3</id></bitem>" +
                             Bitem("<id>4</id><ref_path>Good</ref_path>") + "</wsp_data>"));
        WspBlockIterator blocks("ws/a.wsp", root, &errors);
        QList<quint32> ids;
        while (WSP_BLK_ITEM_STRUCT *item = blocks.NextBlock())
            ids << (item->blockdef ? item->id : 0);
        QCOMPARE(ids, (QList<quint32>{2, 4}));
        QVERIFY(!WspBlockIterator("ws/absent.wsp", root, &errors).NextBlock());
    }

    void visibilityAndSpreading()
    {
        Instance instance({Entity("Show", "On")});
        instance.AddPort("l1", "Left");
        instance.AddPort("l2", "Left", 1);
        instance.AddPort("l3", "Left", 2); // "Show" is "On"
        instance.AddPort("t1", "Top")->per_distance = 30;
        instance.AddPort("l4", "Left", 2)->vport_value = "on";
        instance.AddPort("l5", "Left", 2)->vport_entity = "Absent";
        instance.AddPort("l6", "Left");
        instance.AddPort("r1", "Any");
        instance.AddPort("r2", "Right");
        instance.AddPort("b1", "Bottom");
        instance.Ports(); // building again replaces the list
        QCOMPARE(instance.Ports(), (QStringList{"l1:@25", "-l2:@0", "l3:@50", "t1:@30", "-l4:@0",
                                                "-l5:@0", "l6:@75", "r1:@33.33", "r2:@66.67",
                                                "b1:@50"}));
        // A copy owns its parameters and working ports.
        ItemPtr copy(CopyBlkItem(instance.record), FreeBlkItem);
        QCOMPARE(copy->ports.size(), 10);
        QCOMPARE(copy->ports.first()->owner, copy.get());
        FindEntity(copy->para, "P", "Show")->sel_val = "Off";
        QCOMPARE(FindEntity(instance.record->para, "P", "Show")->sel_val, QString("On"));
    }

    void workingPorts_data()
    {
        // "count" empty: a single port; "missing": a multiple port without its count entity.
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("placement");
        QTest::addColumn<float>("an");
        QTest::addColumn<QString>("dis_text");
        QTest::addColumn<int>("vport_para");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<QStringList>("ports"); // ends with the resulting size
        QTest::newRow("three on the left, never shrinks")
            << 0 << "Left" << 0.0f << "" << 0 << "3" << QSizeF(40, 100)
            << QStringList{"in$0:0@25", "in$1:1@50", "in$2:2@75", "40x100"};
        QTest::newRow("star on the first only, top raises the width")
            << 0 << "Top" << 0.0f << "*" << 0 << "4" << QSizeF(40, 40)
            << QStringList{"in$0:*@20", "in$1:@40", "in$2:@60", "in$3:@80", "60x40"};
        QTest::newRow("turned backwards, bottom raises the height")
            << 0 << "Bottom" << -270.0f << "u" << 0 << "1" << QSizeF(10, 10)
            << QStringList{"in$0:u@50", "10x24"};
        QTest::newRow("hidden copies at zero take no room")
            << 0 << "Left" << 0.0f << "" << 1 << "2" << QSizeF(40, 10)
            << QStringList{"-in$0:0@0", "-in$1:1@0", "40x10"};
        QTest::newRow("count zero still needs 12")
            << 0 << "Left" << 0.0f << "" << 0 << "0" << QSizeF(40, 10) << QStringList{"40x12"};
        QTest::newRow("count entity missing")
            << 0 << "Left" << 0.0f << "" << 0 << "missing" << QSizeF(40, 10)
            << QStringList{"40x10"};
        // Flow taps: ten units apart up to 97 percent, so no fifth port at 98 on a width of 51.
        QTest::newRow("flow tap along the width") << 301 << "Top" << 0.0f << "T" << 1 << ""
            << QSizeF(51, 40) << QStringList{"in$1:T1@19.61", "in$2:T2@39.22", "in$3:T3@58.82",
                                             "in$4:T4@78.43", "51x40"};
        QTest::newRow("negative type has none") << -1 << "Top" << 0.0f << "T" << 0 << ""
                                                << QSizeF(51, 40) << QStringList{"51x40"};
    }
    void workingPorts()
    {
        QFETCH(QString, placement);
        QFETCH(int, vport_para);
        QFETCH(QString, count);
        QFETCH(QString, dis_text);
        QFETCH(QSizeF, size);
        Instance instance({Entity(count == "missing" ? "Other" : "Count", count)});
        BlkPort *port = instance.AddPort("in", placement, vport_para);
        port->mport_para = !count.isEmpty();
        port->dis_text = dis_text;
        QFETCH(int, type);
        QFETCH(float, an);
        instance.record->custom_type = type;
        instance.record->an = an;
        instance.record->rt = QRectF(QPointF(), size);
        QStringList ports = instance.Ports();
        const QRectF &rt = instance.record->rt;
        ports << QString("%1x%2").arg(rt.width()).arg(rt.height());
        QTEST(ports, "ports");
    }
};

ZEMA_TEST(tst_Workspace)
#include "tst_Workspace.moc"
