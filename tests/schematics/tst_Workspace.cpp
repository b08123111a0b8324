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

// One group "G" holding `entities`.
BlkParaData *ParaList(const QList<ParaEntity *> &entities)
{
    return new BlkParaData{QString(), {new ParaGroup{"G", QString(), entities}}, {}};
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

// A port of the presentation: a multiple one is counted by "Count" of group
// "G", and one of vport_para 2 is shown when "Show" of that group is "On".
BlkPort *Port(const QString &name, const QString &placement, int vport_para = 0,
              bool multiple = false, const QString &dis_text = QString())
{
    auto *port = new BlkPort;
    port->name = name;
    port->placement = placement;
    port->vport_para = vport_para;
    port->mport_para = multiple;
    port->dis_text = dis_text;
    port->vport_grp = port->mport_grp = "G";
    port->vport_entity = "Show";
    port->vport_value = "On";
    port->mport_entity = "Count";
    return port;
}

// The working ports of an instance of a block with `ports`, each as "name:dis_text@per_distance"
// with a leading "-" when hidden, then the instance's size.
QString WorkingPorts(const QList<BlkPort *> &ports, const QList<ParaEntity *> &values,
                     QSizeF size = {40, 40}, float an = 0, int type = 0)
{
    auto *block = new BlockData;
    block->pres = new BlkPresData;
    block->pres->ports = ports;
    ItemPtr record(new WSP_BLK_ITEM_STRUCT, FreeBlkItem);
    record->blockdef = block;
    record->para = ParaList(values);
    record->rt = QRectF(QPointF(), size);
    record->an = an;
    record->custom_type = type;
    RebuildWorkingPorts(record.get());
    RebuildWorkingPorts(record.get()); // building again replaces the list
    FreeBlockData(block);
    QStringList list;
    for (const BlkPort *port : record->ports)
        list << QString("%1%2:%3@%4").arg(port->vport_para ? "-" : "", port->name, port->dis_text)
                    .arg(port->per_distance, 0, 'g', 4);
    return (list << QString("%1x%2").arg(record->rt.width()).arg(record->rt.height())).join(' ');
}

} // namespace

class tst_Workspace : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;
    ErrorList errors;

    WspPtr Load(const QByteArray &xml, const QStringList &search_dirs = {})
    {
        const QString path = tmp.filePath("ws/sub/test.wsp");
        QByteArray bytes = XmlDocument(xml);
        EncodeBuffer(bytes, true, 0);
        WSPFileIO io(QString(), &errors, 1);
        errors.ClearMessages();
        return WspPtr(WriteBytes(path, bytes) ? io.LoadWsp(tmp.filePath("ws"), path, search_dirs,
                                                           "ZEMA") : nullptr, FreeWsp);
    }

private slots:
    void reader()
    {
        QVERIFY(QDir().mkpath(tmp.filePath("lib2/Sum")));
        // A third blk_para is ignored, even its `enable`; a bitem without blk_para, a citem
        // without points and a titem without text are dropped; unknown wrappers are read through.
        WspPtr data = Load(
            "<wsp_data>" + Bitem("<ref_name>/blocks/Gain/Gain.bdef</ref_name>") +
                "<bitem/><bitem><ref_name>Sum.bdef</ref_name><ref_path>Sum</ref_path>"
                "<blk_para><title>a</title></blk_para><blk_para><title>b</title></blk_para>"
                "<blk_para><enable>0</enable></blk_para></bitem><titem/><group><titem>"
                "<text>t</text></titem></group><citem><cl>16711680</cl><pts>1,2;3;;4,,5,6;</pts>"
                "</citem><citem/><citem><cl>33488896</cl><pts>0,0</pts></citem></wsp_data>",
            {tmp.filePath("lib1"), tmp.filePath("lib2")});
        QVERIFY(data && errors.IsEmpty() && data->bitems.size() == 2 && data->bitems[1]->enable &&
                data->citems.size() == 2 && data->titems.size() == 1);
        // A path shorter than the name is taken for the old manner of a full path in ref_name.
        QCOMPARE(data->bitems[0]->ref_name + data->bitems[0]->ref_path,
                 QString("Gain.bdef/blocks/Gain/Gain.bdef"));
        const WSP_BLK_ITEM_STRUCT *item = data->bitems[1];
        QCOMPARE(item->ref_path + " " + item->para->title + item->ic->title + " " + item->wsp_path,
                 tmp.filePath("lib2/Sum") + " ab sub/test.wsp");
        // Alpha 200 for a colour without one.
        QCOMPARE(QList<quint32>({data->citems[0]->cl, data->citems[1]->cl}),
                 QList<quint32>({0xc8ff0000u, 0x01ff0000u}));
        QCOMPARE(data->citems[0]->pts, (QList<QPointF>{{1, 2}, {4, 5}}));

        data = Load("<blk_para>" + Bitem("<id>1</id>") + "</blk_para>");
        QVERIFY(data && data->bitems.isEmpty() && errors.IsEmpty());
        // An XML error inside an item frees the whole result.
        QVERIFY(!Load("<wsp_data>" + Bitem("<id>1</id>") + "<bitem><blk_para><title>x</blk_para>"));
        QVERIFY(errors.errors.size() == 1 && errors.errors[0].contains("test.wsp: File Loading"));
    }

    void attachingToBlocks()
    {
        InitRegistry(nullptr);
        const QString dir = tmp.filePath("blocks/Merge");
        QDir().mkpath(dir);
        BlockData *block = MakeSampleBlock(dir);
        FindEntity(block->config, "Basic", "Block ID")->sel_val = "1001";
        FindEntity(block->config, "Vendor Specific", "Custom Block Type")->sel_val = "7";
        block->params->para_grp.first()->header = "G";
        block->params->para_grp.first()->para_entity << Entity("Sel", "", {"<SELECT>"})
            << Entity("Short", "x", {"x", "y"}, 0) << Entity("New", "5");
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        ItemPtr record(new WSP_BLK_ITEM_STRUCT, FreeBlkItem);
        record->ref_path = dir;
        ParaEntity *gain = Entity("Gain", "7");
        gain->usr_visible = 0;
        record->para = ParaList({gain, Entity("Mode", "zzz", {}, 1), Entity("Sel", "picked", {}, 3),
                                 Entity("Short", "q", {}, 5), Entity("Gone", "9")});
        QVERIFY(LoadBlockRef(record.get(), &errors, "ZEMA", true, false));
        // New entities keep their defaults, removed ones vanish; a stored index takes the fresh
        // list's entry only when it fits, a "<select>" list takes index and value.
        QCOMPARE(Summary(record->para), (QStringList{"Gain=7@-1", "Mode=Fast@1", "Sel=picked@3",
                                                     "Short=x@0", "New=5@-1"}));
        QCOMPARE(int(FindEntity(record->para, "G", "Gain")->usr_visible), 0);
        QCOMPARE(QString("%1 %2 %3 %4").arg(record->ref_id).arg(record->custom_type)
                     .arg(record->ref_name, record->ver), QString("1001 7 Merge.bdef 1.0"));
        // Without stored initial conditions the instance takes a copy of the block's own.
        QCOMPARE(Summary(record->ic), (QStringList{"Gain=1.5,\"2\"@-1", "Mode=Slow@0"}));

        // The iterator passes over blocks that do not load.
        QVERIFY(Load("<wsp_data>" + Bitem("<id>1</id><ref_path>Missing</ref_path>") +
                     Bitem("<id>2</id><ref_path>Merge</ref_path>") + "</wsp_data>"));
        WspBlockIterator blocks("ws/sub/test.wsp", tmp.path(), &errors);
        WSP_BLK_ITEM_STRUCT *item = blocks.NextBlock();
        QVERIFY(item && item->id == 2 && item->blockdef && !blocks.NextBlock());
    }

    void workingPorts()
    {
        BlkPort *top = Port("t1", "Top");
        top->per_distance = 30;
        // Unplaced shown ports spread per side, "Any" counting as "Right"; hidden ones take no
        // slot, and a port of vport_para 2 hides unless its entity holds its value. A multiple
        // port without its count entity is left out altogether.
        QCOMPARE(WorkingPorts({Port("l1", "Left"), Port("l2", "Left", 1), Port("l3", "Left", 2),
                               top, Port("r1", "Any"), Port("r2", "Right"), Port("b1", "Bottom")},
                              {Entity("Show", "On")}),
                 QString("l1:@33.33 -l2:@0 l3:@66.67 t1:@30 r1:@33.33 r2:@66.67 b1:@50 40x40"));
        QCOMPARE(WorkingPorts({Port("p", "Left", 2), Port("m", "Left", 0, true)}, {}),
                 QString("-p:@0 40x40"));

        // Three a side at 25, 50 and 75 percent, a star on the first copy only; the top needs a
        // width of (count + 1) * 12, and the block never shrinks.
        QCOMPARE(WorkingPorts({Port("in", "Left", 0, true), Port("s", "Top", 0, true, "*")},
                              {Entity("Count", "3")}, {40, 100}),
                 QString("in$0:0@25 in$1:1@50 in$2:2@75 s$0:*@25 s$1:@50 s$2:@75 48x100"));
        // Turned by -270, a multiple port on the top raises the height; hidden copies stand at
        // zero and need no room, so the turned left side keeps its width.
        QCOMPARE(WorkingPorts({Port("in", "Top", 0, true), Port("h", "Left", 1, true)},
                              {Entity("Count", "1")}, {9, 9}, -270),
                 QString("in$0:0@50 -h$0:0@0 9x24"));
        // A count of zero adds no port but still needs 12.
        QCOMPARE(WorkingPorts({Port("in", "Left", 0, true)}, {Entity("Count", "0")}, {40, 10}),
                 QString("40x12"));
        // A flow tap ignores count and visibility: ports ten units apart up to 97 percent, so no
        // fifth one at 98 on a width of 51.
        QCOMPARE(WorkingPorts({Port("in", "Top", 1, true, "T")}, {Entity("Count", "3")}, {51, 40},
                              0, 301),
                 QString("in$1:T1@19.61 in$2:T2@39.22 in$3:T3@58.82 in$4:T4@78.43 51x40"));
    }
};

ZEMA_TEST(tst_Workspace)
#include "tst_Workspace.moc"
