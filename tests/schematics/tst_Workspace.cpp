// Workspace files: the reader's tolerance, the parameter merge, attaching instances to their
// blocks, and the working port list of an instance.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
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

QByteArray Bitem(const QByteArray &fields) { return "<bitem>" + fields + "<blk_para><title>P</title></blk_para></bitem>"; }

ParaEntity *Entity(const QString &label, const QString &value, const QStringList &values = {}, int index = -1)
{
    auto *entity = new ParaEntity(label);
    entity->sel_val = value;
    entity->values = values;
    entity->sel_idx = index;
    return entity;
}

// One group "G" holding `entities`.
BlkParaData *ParaList(const QList<ParaEntity *> &entities) { return new BlkParaData{QString(), {new ParaGroup{"G", QString(), entities}}, {}}; }

// Each entity as "label=sel_val@sel_idx", with a leading "-" when the user hid it.
QStringList Summary(const BlkParaData *data)
{
    QStringList lines;
    for (const ParaGroup *group : data->para_grp)
        for (const ParaEntity *e : group->para_entity)
            lines << QString("%1%2=%3@%4").arg(e->usr_visible ? "" : "-", e->label, e->sel_val).arg(e->sel_idx);
    return lines;
}

// A port of the presentation: a multiple one is counted by "Count" of group "G", and one of
// vport_para 2 is shown when "Show" of that group is "On".
BlkPort *Port(const QString &name, const QString &placement, int vport_para = 0, bool multiple = false,
              const QString &dis_text = QString(), float at = 0)
{
    return new BlkPort{nullptr, nullptr, nullptr, name, dis_text, QString(), placement, at, 0, 0, 0,
                       multiple, vport_para, "G", "Show", "On", "G", "Count", {}, {}, 0, {}, {}};
}

// The working ports of an instance of a block with `ports`, each as "name:dis_text@per_distance"
// with a leading "-" when hidden, then the instance's size.
QString WorkingPorts(const QList<BlkPort *> &ports, const QList<ParaEntity *> &values, QSizeF size = {40, 40},
                     float an = 0, int type = 0)
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
        list << QString("%1%2:%3@%4").arg(port->vport_para ? "-" : "", port->name, port->dis_text).arg(port->per_distance, 0, 'g', 4);
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
        errors.ClearMessages();
        const bool written = WriteBytes(path, bytes);
        return WspPtr(written ? WSPFileIO(QString(), &errors, 1).LoadWsp(tmp.filePath("ws"), path, search_dirs, "ZEMA") : nullptr, FreeWsp);
    }

private slots:
    void reader()
    {
        QVERIFY(QDir().mkpath(tmp.filePath("lib2/Sum")));
        // A third blk_para is ignored, even its `enable`; a bitem without blk_para, a citem
        // without points and a titem without text are dropped; unknown wrappers are read through.
        WspPtr data = Load("<wsp_data>" + Bitem("<ref_name>/blocks/Gain/Gain.bdef</ref_name>") +
                               "<bitem/><bitem><ref_name>Sum.bdef</ref_name><ref_path>Sum</ref_path><blk_para><title>a"
                               "</title></blk_para><blk_para><title>b</title></blk_para><blk_para><enable>0</enable>"
                               "</blk_para></bitem><titem/><group><titem><text>t</text></titem></group><citem><cl>"
                               "16711680</cl><pts>1,2;3;;4,,5,6;</pts></citem><citem/><citem><cl>33488896</cl><pts>0,0"
                               "</pts></citem></wsp_data>", {tmp.filePath("lib1"), tmp.filePath("lib2")});
        QVERIFY(data && errors.IsEmpty() && data->bitems.size() == 2 && data->bitems[1]->enable &&
                data->citems.size() == 2 && data->titems.size() == 1);
        // A path shorter than the name is taken for the old manner of a full path in ref_name.
        QCOMPARE(data->bitems[0]->ref_name + data->bitems[0]->ref_path, QString("Gain.bdef/blocks/Gain/Gain.bdef"));
        const WSP_BLK_ITEM_STRUCT *item = data->bitems[1];
        QCOMPARE(item->ref_path + " " + item->para->title + item->ic->title + " " + item->wsp_path,
                 tmp.filePath("lib2/Sum") + " ab sub/test.wsp");
        // Alpha 200 for a colour without one.
        QCOMPARE(QList<quint32>({data->citems[0]->cl, data->citems[1]->cl}), QList<quint32>({0xc8ff0000u, 0x01ff0000u}));
        QCOMPARE(data->citems[0]->pts, (QList<QPointF>{{1, 2}, {4, 5}}));

        data = Load("<blk_para>" + Bitem("<id>1</id>") + "</blk_para>");
        QVERIFY(data && data->bitems.isEmpty() && errors.IsEmpty());
        // An XML error inside an item frees the whole result.
        QVERIFY(!Load("<wsp_data>" + Bitem("<id>1</id>") + "<bitem><blk_para><title>x</blk_para>"));
        QVERIFY(errors.errors.size() == 1 && errors.errors[0].contains("test.wsp: File Loading"));
    }

    // New entities keep their defaults, removed ones vanish, the user's choices stay; a stored
    // index takes the fresh list's entry only when it fits, a "<select>" list takes index and value.
    void mergingParameters()
    {
        BlkParaData *fresh = ParaList({Entity("Gain", "1"), Entity("Mode", "Slow", {"Slow", "Fast"}, 0),
                                       Entity("Sel", "", {"<SELECT>"}), Entity("Short", "x", {"x", "y"}, 0),
                                       Entity("New", "5")});
        BlkParaData *stored = ParaList({Entity("Gain", "7"), Entity("Mode", "zzz", {}, 1), Entity("Sel", "picked", {}, 3),
                                        Entity("Short", "q", {}, 5), Entity("Gone", "9")});
        stored->para_grp[0]->para_entity[0]->usr_visible = 0;
        BlkParaData *merged = MergeParaData(stored, fresh, false);
        QCOMPARE(Summary(merged), (QStringList{"-Gain=7@-1", "Mode=Fast@1", "Sel=picked@3", "Short=x@0", "New=5@-1"}));
        FreeBlkParaData(merged);
        FreeBlkParaData(fresh);
    }

    // The iterator attaches each instance and passes over blocks that do not load. The instance
    // takes the block's file name, version and ports, and without stored initial conditions a
    // copy of the block's own.
    void attachingToBlocks()
    {
        InitRegistry(nullptr);
        QVERIFY(WriteSampleBlock(tmp.filePath("blocks/Merge")));
        QVERIFY(Load("<wsp_data>" + Bitem("<id>1</id><ref_path>Missing</ref_path>") +
                     Bitem("<id>2</id><ref_path>Merge</ref_path>") + "</wsp_data>"));
        WspBlockIterator blocks("ws/sub/test.wsp", tmp.path(), &errors);
        WSP_BLK_ITEM_STRUCT *item = blocks.NextBlock();
        QVERIFY(item && item->id == 2 && !blocks.NextBlock());
        QCOMPARE(QString("%1 %2 %3").arg(item->ref_name, item->ver).arg(item->ports.size()), QString("Merge.bdef 1.0 2"));
        QCOMPARE(Summary(item->ic), (QStringList{"Gain=1.5,\"2\"@-1", "Mode=Slow@0"}));
    }

    void workingPorts()
    {
        // Unplaced shown ports spread per side, "Any" counting as "Right"; hidden ones take no
        // slot, and a port of vport_para 2 hides unless its entity holds its value. A multiple
        // port without its count entity is left out altogether.
        QCOMPARE(WorkingPorts({Port("l1", "Left"), Port("l2", "Left", 1), Port("l3", "Left", 2),
                               Port("t1", "Top", 0, false, "", 30), Port("r1", "Any"), Port("r2", "Right"),
                               Port("b1", "Bottom"), Port("m", "Left", 0, true)},
                              {Entity("Show", "On")}),
                 QString("l1:@33.33 -l2:@0 l3:@66.67 t1:@30 r1:@33.33 r2:@66.67 b1:@50 40x40"));
        // Three a side at 25, 50 and 75 percent, a star on the first copy only; the top needs a
        // width of (count + 1) * 12, and the block never shrinks.
        QCOMPARE(WorkingPorts({Port("in", "Left", 0, true), Port("s", "Top", 0, true, "*"), Port("p", "Left", 2)},
                              {Entity("Count", "3")}, {40, 100}),
                 QString("in$0:0@25 in$1:1@50 in$2:2@75 s$0:*@25 s$1:@50 s$2:@75 -p:@0 48x100"));
        // Turned by -270, a multiple port on the top raises the height; hidden copies stand at
        // zero and need no room, so the turned left side keeps its width.
        QCOMPARE(WorkingPorts({Port("in", "Top", 0, true), Port("h", "Left", 1, true)},
                              {Entity("Count", "1")}, {9, 9}, -270),
                 QString("in$0:0@50 -h$0:0@0 9x24"));
        // A flow tap ignores count and visibility: ports ten units apart up to 97 percent, so no
        // fifth one at 98 on a width of 51.
        QCOMPARE(WorkingPorts({Port("in", "Top", 1, true, "T")}, {Entity("Count", "3")}, {51, 40}, 0, 301),
                 QString("in$1:T1@19.61 in$2:T2@39.22 in$3:T3@58.82 in$4:T4@78.43 51x40"));
    }
};

ZEMA_TEST(tst_Workspace)
#include "tst_Workspace.moc"
