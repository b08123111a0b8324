// Workspace files: the reader's tolerance, attaching instances to their blocks with the
// parameter merge, and the working port list of an instance.
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

struct WspDeleter {
    void operator()(WspData *data) const { FreeWsp(data); }
};
using WspPtr = std::unique_ptr<WspData, WspDeleter>;

const QByteArray kPara = "<blk_para><title>P</title></blk_para>";

QByteArray Bitem(const QByteArray &fields)
{
    return "<bitem>" + fields + kPara + "</bitem>";
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

ParaGroup *Group(const QString &header, const QList<ParaEntity *> &entities)
{
    auto *group = new ParaGroup;
    group->header = header;
    group->para_entity = entities;
    return group;
}

BlkParaData *ParaList(const QList<ParaGroup *> &groups)
{
    auto *data = new BlkParaData;
    data->para_grp = groups;
    return data;
}

// The block behind the merge tests: id 1001, version "3.0", type 7.
bool WriteMergeBlock(const QString &dir)
{
    QDir().mkpath(dir);
    auto *block = new BlockData;
    block->path = dir;
    block->config = ParaList(
        {Group("Basic", {Entity("Block ID", "1001"), Entity("Block Version", "3.0")}),
         Group("Vendor Specific", {Entity("Custom Block Type", "7")})});
    block->params = ParaList(
        {Group("G", {Entity("Line", "1"), Entity("Combo", "a", {"a", "b", "c"}, 0),
                     Entity("Sel", "", {"<SELECT>"}), Entity("Short", "x", {"x", "y"}, 0),
                     Entity("New", "5")}),
         Group("H", {Entity("E", "h")})});
    block->initconds = ParaList({Group("IC", {Entity("x0", "0")})});
    const bool saved = SaveBlockData(block, nullptr, "ZEMA", true);
    FreeBlockData(block);
    return saved;
}

// A record of what a workspace stores for the merge block.
WSP_BLK_ITEM_STRUCT *StoredInstance(const QString &dir)
{
    auto *record = new WSP_BLK_ITEM_STRUCT;
    record->ref_path = dir;
    ParaEntity *line = Entity("Line", "7");
    line->usr_visible = 0;
    record->para = ParaList(
        {Group("G", {line, Entity("Combo", "zzz", {}, 2), Entity("Sel", "picked", {}, 3),
                     Entity("Short", "q", {}, 5), Entity("Gone", "9")}),
         Group("Old", {Entity("E", "o")})});
    return record;
}

// A record attached to an in-memory block, for the working port list.
struct Instance {
    BlockData *block = new BlockData;
    WSP_BLK_ITEM_STRUCT *record = new WSP_BLK_ITEM_STRUCT;

    Instance()
    {
        block->pres = new BlkPresData;
        record->blockdef = block;
        record->para = ParaList({Group("P", {})});
    }
    ~Instance()
    {
        FreeBlkItem(record);
        FreeBlockData(block);
    }
    BlkPort *AddPort(const QString &name, const QString &placement, float distance = 0)
    {
        auto *port = new BlkPort;
        port->name = name;
        port->placement = placement;
        port->per_distance = distance;
        port->stub_len = 1.0f;
        block->pres->ports.append(port);
        return port;
    }
    void SetValue(const QString &label, const QString &value)
    {
        record->para->para_grp.first()->para_entity.append(Entity(label, value));
    }
    QStringList Names() const
    {
        QStringList names;
        for (const BlkPort *port : record->ports)
            names << port->name;
        return names;
    }
    QStringList Texts() const
    {
        QStringList texts;
        for (const BlkPort *port : record->ports)
            texts << port->dis_text;
        return texts;
    }
    QList<double> Distances() const
    {
        QList<double> distances;
        for (const BlkPort *port : record->ports)
            distances << qRound(port->per_distance * 100) / 100.0;
        return distances;
    }
};

} // namespace

class tst_Workspace : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;
    ErrorList errors;

    WspData *Load(const QByteArray &xml, const QStringList &search_dirs = {})
    {
        QByteArray bytes = XmlDocument(xml);
        EncodeBuffer(bytes, true, 0);
        const QString path = tmp.filePath("ws/sub/test.wsp");
        if (!WriteBytes(path, bytes))
            return nullptr;
        WSPFileIO io(QString(), &errors, 1);
        return io.LoadWsp(tmp.filePath("ws"), path, search_dirs, "ZEMA");
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

    void blockItemFields()
    {
        WspPtr data(Load("<wsp_data><enabled>0</enabled>" + Bitem(
            "<id>11</id><ref_id>22</ref_id><ver>1.5</ver><custom_type>51</custom_type>"
            "<ui_grp>3</ui_grp><ord_id>4</ord_id><name>Gain 1</name><pos>12.5,-3</pos>"
            "<enable>0</enable><hf>1</hf><vf>0</vf><an>-90</an><sx>2</sx>"
            "<rt>1,2,30,60</rt>") + "</wsp_data>"));
        QVERIFY(data);
        QVERIFY(!data->enabled);
        QCOMPARE(data->bitems.size(), 1);
        const WSP_BLK_ITEM_STRUCT *item = data->bitems.first();
        QCOMPARE(item->id, 11u);
        QCOMPARE(item->ref_id, 22u);
        QCOMPARE(item->custom_type, 51);
        QCOMPARE(item->ui_grp, 3);
        QCOMPARE(item->ui_wnd, -1);
        QCOMPARE(item->ord_id, 4u);
        QCOMPARE(item->name, QString("Gain 1"));
        QCOMPARE(item->pos, QPointF(12.5, -3));
        QVERIFY(!item->enable);
        QVERIFY(item->hf && !item->vf);
        QCOMPARE(item->an, -90.0f);
        QCOMPARE(item->sx, 2.0f);
        QCOMPARE(item->sy, 1.0f);
        QCOMPARE(item->rt, QRectF(1, 2, 30, 60));
        QCOMPARE(item->wsp_path, QString("sub/test.wsp"));
        QVERIFY(item->para && !item->ic);
        QCOMPARE(item->para->title, QString("P"));
    }

    void geometryNeedsExactParts_data()
    {
        QTest::addColumn<QByteArray>("pos");
        QTest::addColumn<QByteArray>("rt");
        QTest::addColumn<QPointF>("expected_pos");
        QTest::addColumn<QRectF>("expected_rt");
        QTest::newRow("exact") << QByteArray("1,2") << QByteArray("5,6,7,8") << QPointF(1, 2)
                               << QRectF(5, 6, 7, 8);
        QTest::newRow("empty parts skipped") << QByteArray(",1,,2,") << QByteArray("5,,6,7,8")
                                             << QPointF(1, 2) << QRectF(5, 6, 7, 8);
        QTest::newRow("too many") << QByteArray("1,2,3") << QByteArray("1,2,3,4,5") << QPointF()
                                  << QRectF(0, 0, 40, 40);
        QTest::newRow("too few") << QByteArray("1") << QByteArray("1,2,3") << QPointF()
                                 << QRectF(0, 0, 40, 40);
    }
    void geometryNeedsExactParts()
    {
        QFETCH(QByteArray, pos);
        QFETCH(QByteArray, rt);
        WspPtr data(Load("<wsp_data>" + Bitem("<pos>" + pos + "</pos><rt>" + rt + "</rt>") +
                         "</wsp_data>"));
        QVERIFY(data);
        QCOMPARE(data->bitems.size(), 1);
        QTEST(data->bitems.first()->pos, "expected_pos");
        QTEST(data->bitems.first()->rt, "expected_rt");
    }

    void connectionColour_data()
    {
        QTest::addColumn<QByteArray>("cl");
        QTest::addColumn<quint32>("expected");
        QTest::newRow("no alpha gets 200") << QByteArray("<cl>16711680</cl>") << 0xc8ff0000u;
        QTest::newRow("own alpha kept") << QByteArray("<cl>33488896</cl>") << 0x01ff0000u;
        QTest::newRow("missing") << QByteArray() << 0xc8000000u;
    }
    void connectionColour()
    {
        QFETCH(QByteArray, cl);
        WspPtr data(Load("<wsp_data><citem>" + cl + "<pts>0,0;1,1</pts></citem></wsp_data>"));
        QVERIFY(data);
        QCOMPARE(data->citems.size(), 1);
        QTEST(data->citems.first()->cl, "expected");
    }

    void connectionPoints_data()
    {
        QTest::addColumn<QByteArray>("pts");
        QTest::addColumn<QList<QPointF>>("expected");
        QTest::newRow("short and long parts")
            << QByteArray("1,2;3;4,5,6") << QList<QPointF>{{1, 2}, {4, 5}};
        QTest::newRow("empty parts") << QByteArray(";;1.5,,-2;;") << QList<QPointF>{{1.5, -2}};
        QTest::newRow("only short parts") << QByteArray("3;4") << QList<QPointF>{};
        QTest::newRow("empty") << QByteArray() << QList<QPointF>{};
    }
    void connectionPoints()
    {
        QFETCH(QByteArray, pts);
        QFETCH(QList<QPointF>, expected);
        WspPtr data(Load("<wsp_data><citem><id>5</id><wd>3</wd><pos>1,1</pos><pts>" + pts +
                         "</pts></citem></wsp_data>"));
        QVERIFY(data);
        // A connection without points is dropped.
        QCOMPARE(data->citems.size(), expected.isEmpty() ? 0 : 1);
        if (!expected.isEmpty()) {
            QCOMPARE(data->citems.first()->pts, expected);
            QCOMPARE(data->citems.first()->wd, 3);
            QCOMPARE(data->citems.first()->st, 1);
        }
    }

    void incompleteItemsDropped_data()
    {
        QTest::addColumn<QByteArray>("items");
        QTest::addColumn<QList<int>>("counts"); // blocks, connections, texts, nodes
        QTest::newRow("citem without pts") << QByteArray("<citem><id>1</id></citem>")
                                           << QList<int>{0, 0, 0, 0};
        QTest::newRow("titem without text") << QByteArray("<titem><id>1</id><pos>1,2</pos></titem>")
                                            << QList<int>{0, 0, 0, 0};
        QTest::newRow("titem with text") << QByteArray("<titem><text>a &lt; b</text></titem>")
                                         << QList<int>{0, 0, 1, 0};
        QTest::newRow("bitem without blk_para")
            << QByteArray("<bitem><id>1</id><name>x</name></bitem>") << QList<int>{0, 0, 0, 0};
        QTest::newRow("node") << QByteArray("<node><blks>1,,2</blks><ports>a,b</ports></node>")
                              << QList<int>{0, 0, 0, 1};
        QTest::newRow("unknown wrapper")
            << QByteArray("<group><titem><text>t</text></titem></group>")
            << QList<int>{0, 0, 1, 0};
    }
    void incompleteItemsDropped()
    {
        QFETCH(QByteArray, items);
        QFETCH(QList<int>, counts);
        WspPtr data(Load("<wsp_data>" + items + "</wsp_data>"));
        QVERIFY(data);
        QCOMPARE((QList<int>{data->bitems.size(), data->citems.size(), data->titems.size(),
                             data->nodes.size()}),
                 counts);
        QVERIFY(errors.IsEmpty());
    }

    void threeParameterLists()
    {
        WspPtr data(Load(
            "<wsp_data><bitem><blk_para><title>first</title></blk_para>"
            "<blk_para><title>second</title></blk_para>"
            "<blk_para><title>third</title><para_grp><header>G</header><para_entity>"
            "<label>L</label><enable>0</enable></para_entity></para_grp></blk_para>"
            "</bitem></wsp_data>"));
        QVERIFY(data);
        QCOMPARE(data->bitems.size(), 1);
        const WSP_BLK_ITEM_STRUCT *item = data->bitems.first();
        QCOMPARE(item->para->title, QString("first"));
        QCOMPARE(item->ic->title, QString("second"));
        // The third list's elements must not reach the item.
        QVERIFY(item->enable);
    }

    void referencePaths_data()
    {
        QTest::addColumn<QString>("ref_name");
        QTest::addColumn<QString>("ref_path");
        QTest::addColumn<QString>("expected_name");
        QTest::addColumn<QString>("expected_path");
        const QString lib = tmp.filePath("lib2");
        QTest::newRow("old style full path") << "/blocks/Gain/Gain.bdef" << ""
                                             << "Gain.bdef" << "/blocks/Gain/Gain.bdef";
        QTest::newRow("old style ends in slash") << "/blocks/Gain/" << "" << "/blocks/Gain/"
                                                 << "/blocks/Gain/";
        QTest::newRow("new style") << "Gain.bdef" << "/blocks/Gain" << "Gain.bdef"
                                   << "/blocks/Gain";
        QTest::newRow("relative found in second dir") << "Sum.bdef" << "Sum" << "Sum.bdef"
                                                      << lib + "/Sum";
        QTest::newRow("relative not found") << "N" << "Nope" << "N" << "Nope";
        // An unresolved path shorter than the name is taken for the old manner too.
        QTest::newRow("short relative path") << "Nope.bdef" << "Nope" << "Nope.bdef"
                                             << "Nope.bdef";
        QTest::newRow("drive letter") << "x.bdef" << "C:/lib/Sum" << "x.bdef" << "C:/lib/Sum";
    }
    void referencePaths()
    {
        QFETCH(QString, ref_name);
        QFETCH(QString, ref_path);
        QVERIFY(QDir().mkpath(tmp.filePath("lib1")));
        QVERIFY(QDir().mkpath(tmp.filePath("lib2/Sum")));
        WspPtr data(Load("<wsp_data>" + Bitem("<ref_name>" + ref_name.toUtf8() +
                                              "</ref_name><ref_path>" + ref_path.toUtf8() +
                                              "</ref_path>") + "</wsp_data>",
                         {tmp.filePath("lib1"), tmp.filePath("lib2")}));
        QVERIFY(data);
        QCOMPARE(data->bitems.size(), 1);
        QTEST(data->bitems.first()->ref_name, "expected_name");
        QTEST(data->bitems.first()->ref_path, "expected_path");
    }

    void otherRootIsEmpty()
    {
        WspPtr data(Load("<blk_para>" + Bitem("<id>1</id>") + "</blk_para>"));
        QVERIFY(data);
        QVERIFY(data->enabled);
        QVERIFY(data->bitems.isEmpty());
        QVERIFY(errors.IsEmpty());
    }

    void brokenFiles_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("broken inside a bitem")
            << QByteArray("<wsp_data>" + Bitem("<id>1</id>") + "<bitem><blk_para><title>x"
                          "</blk_para></bitem></wsp_data>");
        QTest::newRow("broken inside a citem")
            << QByteArray("<wsp_data><citem><pts>1,2</cl></citem></wsp_data>");
        QTest::newRow("truncated") << QByteArray("<wsp_data>" + Bitem("<id>1</id>"));
    }
    void brokenFiles()
    {
        QFETCH(QByteArray, xml);
        QVERIFY(!Load(xml));
        QCOMPARE(errors.errors.size(), 1);
        QVERIFY(errors.errors.first().contains("test.wsp: File Loading Error: "));
    }

    void mergeRules_data()
    {
        QTest::addColumn<bool>("merge_values");
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("sel_idx");
        QTest::addColumn<QString>("sel_val");
        QTest::newRow("line edit takes the stored value") << false << "G" << "Line" << -1 << "7";
        QTest::newRow("index takes the fresh list's entry") << false << "G" << "Combo" << 2 << "c";
        QTest::newRow("select takes index and value") << false << "G" << "Sel" << 3 << "picked";
        QTest::newRow("invalid index keeps the default") << false << "G" << "Short" << 0 << "x";
        QTest::newRow("new entity keeps its default") << false << "G" << "New" << -1 << "5";
        QTest::newRow("new group keeps its default") << false << "H" << "E" << -1 << "h";
        QTest::newRow("merge values: combo") << true << "G" << "Combo" << 2 << "zzz";
        QTest::newRow("merge values: invalid index") << true << "G" << "Short" << 0 << "q";
    }
    void mergeRules()
    {
        QFETCH(bool, merge_values);
        QFETCH(QString, group);
        QFETCH(QString, label);
        const QString dir = tmp.filePath("blocks/Merge");
        QVERIFY(WriteMergeBlock(dir));
        WSP_BLK_ITEM_STRUCT *record = StoredInstance(dir);
        const bool loaded = LoadBlockRef(record, &errors, "ZEMA", true, merge_values);
        const ParaEntity *entity = FindEntity(record->para, group, label);
        const int sel_idx = entity ? entity->sel_idx : -99;
        const QString sel_val = entity ? entity->sel_val : QString("<none>");
        FreeBlkItem(record);
        QVERIFY(loaded);
        QTEST(sel_idx, "sel_idx");
        QTEST(sel_val, "sel_val");
    }

    void mergeResult()
    {
        const QString dir = tmp.filePath("blocks/Merge");
        QVERIFY(WriteMergeBlock(dir));
        std::unique_ptr<WSP_BLK_ITEM_STRUCT, void (*)(WSP_BLK_ITEM_STRUCT *)> record(
            StoredInstance(dir), FreeBlkItem);
        record->user_lists[0] << 1;
        QVERIFY(LoadBlockRef(record.get(), &errors, "ZEMA", true, false));
        BlockData *block = record->blockdef;
        QVERIFY(block);
        QCOMPARE(record->ref_id, 1001u);
        QCOMPARE(record->ref_name, QString("Merge.bdef"));
        QCOMPARE(record->custom_type, 7);
        QCOMPARE(record->ver, QString("3.0"));
        QVERIFY(record->user_lists[0].isEmpty());
        // Removed entities and groups vanish; status flags come from the workspace.
        QVERIFY(!FindEntity(record->para, "G", "Gone"));
        QVERIFY(!FindGroup(record->para, "Old"));
        QCOMPARE(int(FindEntity(record->para, "G", "Line")->usr_visible), 0);
        QCOMPARE(int(FindEntity(record->para, "G", "Combo")->usr_visible), 1);
        // A workspace without initial conditions takes a copy of the block's own.
        QVERIFY(record->ic && record->ic != block->initconds);
        QCOMPARE(FindEntity(record->ic, "IC", "x0")->sel_val, QString("0"));
        // The block's own lists stay untouched.
        QCOMPARE(FindEntity(block->params, "G", "Combo")->sel_val, QString("a"));

        WSP_BLK_ITEM_STRUCT *versioned = StoredInstance(dir);
        versioned->ver = "0.9";
        QVERIFY(LoadBlockRef(versioned, &errors, "ZEMA", true, false));
        QCOMPARE(versioned->ver, QString("0.9"));
        FreeBlkItem(versioned);
    }

    void missingBlockDoesNotAttach()
    {
        auto *record = new WSP_BLK_ITEM_STRUCT;
        record->ref_path = tmp.filePath("no_such_block");
        record->para = ParaList({});
        QVERIFY(!LoadBlockRef(record, &errors, "ZEMA", true, false));
        QVERIFY(!record->blockdef);
        QVERIFY(record->ports.isEmpty());
        FreeBlkItem(record);
    }

    void iteratorSkipsUnloadableBlocks()
    {
        const QString root = tmp.filePath("composite");
        QVERIFY(WriteMergeBlock(root + "/blocks/Good"));
        QByteArray bytes = XmlDocument(
            "<wsp_data>" + Bitem("<id>1</id><ref_path>Missing</ref_path>") +
            Bitem("<id>2</id><ref_path>Good</ref_path>") + "<bitem><id>3</id></bitem>" +
            Bitem("<id>4</id><ref_path>Good</ref_path>") + "</wsp_data>");
        EncodeBuffer(bytes, true, 0);
        QVERIFY(WriteBytes(root + "/ws/a.wsp", bytes));
        WspBlockIterator blocks("ws/a.wsp", root, &errors);
        QList<quint32> ids;
        while (WSP_BLK_ITEM_STRUCT *item = blocks.NextBlock()) {
            QVERIFY(item->blockdef);
            ids << item->id;
        }
        QCOMPARE(ids, (QList<quint32>{2, 4}));
        QVERIFY(!blocks.NextBlock());

        WspBlockIterator none("ws/absent.wsp", root, &errors);
        QVERIFY(!none.NextBlock());
    }

    void portVisibility_data()
    {
        QTest::addColumn<int>("vport_para");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("visible") << 0 << "" << 0;
        QTest::newRow("invisible") << 1 << "" << 1;
        QTest::newRow("parameter matches") << 2 << "On" << 0;
        QTest::newRow("parameter differs") << 2 << "on" << 1;
        QTest::newRow("parameter missing") << 2 << QString() << 1;
    }
    void portVisibility()
    {
        QFETCH(int, vport_para);
        QFETCH(QString, value);
        Instance instance;
        BlkPort *port = instance.AddPort("in", "Left", 40);
        port->vport_para = vport_para;
        port->vport_grp = "P";
        port->vport_entity = "Show";
        port->vport_value = "On";
        if (!value.isNull())
            instance.SetValue("Show", value);
        RebuildWorkingPorts(instance.record);
        QCOMPARE(instance.record->ports.size(), 1);
        const BlkPort *working = instance.record->ports.first();
        QTEST(int(working->vport_para), "expected");
        QCOMPARE(working->owner, instance.record);
        QCOMPARE(working->stub_len, 4.0f);
        QCOMPARE(working->per_distance, 40.0f);
        QVERIFY(working != port);
    }

    void multiplePorts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("dis_text");
        QTest::addColumn<int>("vport_para");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QList<double>>("distances");
        QTest::newRow("three on the left")
            << "in" << "" << 0 << "3" << QStringList{"in$0", "in$1", "in$2"}
            << QStringList{"0", "1", "2"} << QList<double>{25, 50, 75};
        QTest::newRow("star on the first only")
            << "in" << "*" << 0 << "2" << QStringList{"in$0", "in$1"} << QStringList{"*", ""}
            << QList<double>{33.33, 66.67};
        QTest::newRow("fixed text") << "" << "u" << 0 << "2" << QStringList{"", ""}
                                    << QStringList{"u", "u"} << QList<double>{33.33, 66.67};
        QTest::newRow("hidden copies at zero")
            << "in" << "" << 1 << "2" << QStringList{"in$0", "in$1"} << QStringList{"0", "1"}
            << QList<double>{0, 0};
        QTest::newRow("count zero") << "in" << "" << 0 << "0" << QStringList{} << QStringList{}
                                    << QList<double>{};
        QTest::newRow("count entity missing")
            << "in" << "" << 0 << QString() << QStringList{} << QStringList{} << QList<double>{};
    }
    void multiplePorts()
    {
        QFETCH(QString, name);
        QFETCH(QString, dis_text);
        QFETCH(int, vport_para);
        QFETCH(QString, count);
        Instance instance;
        BlkPort *port = instance.AddPort(name, "Left");
        port->dis_text = dis_text;
        port->vport_para = vport_para;
        port->mport_para = 1;
        port->mport_grp = "P";
        port->mport_entity = "Count";
        if (!count.isNull())
            instance.SetValue("Count", count);
        RebuildWorkingPorts(instance.record);
        QTEST(instance.Names(), "names");
        QTEST(instance.Texts(), "texts");
        QTEST(instance.Distances(), "distances");
    }

    void multiplePortRoom_data()
    {
        QTest::addColumn<QString>("placement");
        QTest::addColumn<float>("an");
        QTest::addColumn<int>("vport_para");
        QTest::addColumn<QString>("count");
        QTest::addColumn<QRectF>("rt");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("count zero still needs 12") << "Left" << 0.0f << 0 << "0"
                                                   << QRectF(5, 5, 40, 10) << QRectF(5, 5, 40, 12);
        QTest::newRow("top bounds the width") << "Top" << 0.0f << 0 << "4"
                                              << QRectF(0, 0, 40, 40) << QRectF(0, 0, 60, 40);
        QTest::newRow("turned top bounds the height") << "Top" << 90.0f << 0 << "4"
                                                      << QRectF(0, 0, 40, 40)
                                                      << QRectF(0, 0, 40, 60);
        QTest::newRow("turned backwards") << "Bottom" << -270.0f << 0 << "4"
                                          << QRectF(0, 0, 40, 40) << QRectF(0, 0, 40, 60);
        QTest::newRow("half turn") << "Right" << 180.0f << 0 << "4" << QRectF(0, 0, 40, 40)
                                   << QRectF(0, 0, 40, 60);
        QTest::newRow("never shrinks") << "Left" << 0.0f << 0 << "1" << QRectF(0, 0, 40, 100)
                                       << QRectF(0, 0, 40, 100);
        QTest::newRow("hidden takes no room") << "Left" << 0.0f << 1 << "9"
                                              << QRectF(0, 0, 40, 40) << QRectF(0, 0, 40, 40);
    }
    void multiplePortRoom()
    {
        QFETCH(QString, placement);
        QFETCH(float, an);
        QFETCH(int, vport_para);
        QFETCH(QString, count);
        QFETCH(QRectF, rt);
        Instance instance;
        BlkPort *port = instance.AddPort("p", placement);
        port->vport_para = vport_para;
        port->mport_para = 1;
        port->mport_grp = "P";
        port->mport_entity = "Count";
        instance.SetValue("Count", count);
        instance.record->an = an;
        instance.record->rt = rt;
        RebuildWorkingPorts(instance.record);
        QTEST(instance.record->rt, "expected");
    }

    void unplacedPortsSpreadPerSide()
    {
        Instance instance;
        instance.AddPort("l1", "Left");
        instance.AddPort("l2", "Left")->vport_para = 1;
        instance.AddPort("l3", "Left");
        instance.AddPort("t1", "Top", 30);
        instance.AddPort("l4", "Left");
        instance.AddPort("r1", "Any");
        instance.AddPort("r2", "Right");
        instance.AddPort("b1", "Bottom");
        RebuildWorkingPorts(instance.record);
        QCOMPARE(instance.Distances(), (QList<double>{25, 0, 50, 30, 75, 33.33, 66.67, 50}));
        // Building again replaces the list rather than adding to it.
        RebuildWorkingPorts(instance.record);
        QCOMPARE(instance.record->ports.size(), 8);
    }

    void flowTapPorts_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("placement");
        QTest::addColumn<float>("an");
        QTest::addColumn<QRectF>("rt");
        QTest::addColumn<QList<double>>("distances");
        const QList<double> tens{10, 20, 30, 40, 50, 60, 70, 80, 90};
        QTest::newRow("top of width 100") << 301 << "Top" << 0.0f << QRectF(0, 0, 100, 50)
                                          << tens;
        QTest::newRow("left uses the height") << 302 << "Left" << 0.0f << QRectF(0, 0, 100, 50)
                                              << QList<double>{20, 40, 60, 80};
        QTest::newRow("turned top uses the height") << 301 << "Top" << 90.0f
                                                    << QRectF(0, 0, 100, 50)
                                                    << QList<double>{20, 40, 60, 80};
        QTest::newRow("too short") << 301 << "Top" << 0.0f << QRectF(0, 0, 10, 10)
                                   << QList<double>{};
        QTest::newRow("not a flow tap") << 300 << "Top" << 0.0f << QRectF(0, 0, 100, 50)
                                        << QList<double>{50};
    }
    void flowTapPorts()
    {
        QFETCH(int, type);
        QFETCH(QString, placement);
        QFETCH(QList<double>, distances);
        Instance instance;
        BlkPort *port = instance.AddPort("p", placement);
        port->dis_text = "T";
        port->vport_para = 1; // generated ports are always shown
        if (type == 300)
            port->vport_para = 0;
        instance.record->custom_type = type;
        QFETCH(float, an);
        QFETCH(QRectF, rt);
        instance.record->an = an;
        instance.record->rt = rt;
        RebuildWorkingPorts(instance.record);
        QCOMPARE(instance.Distances(), distances);
        if (type == 300)
            return;
        for (int i = 0; i < instance.record->ports.size(); ++i) {
            const BlkPort *working = instance.record->ports[i];
            QCOMPARE(working->name, QString("p$%1").arg(i + 1));
            QCOMPARE(working->dis_text, QString("T%1").arg(i + 1));
            QCOMPARE(working->vport_para, 0);
        }
    }

    void noWorkingPorts_data()
    {
        QTest::addColumn<bool>("with_para");
        QTest::addColumn<int>("type");
        QTest::newRow("no parameter list") << false << 0;
        QTest::newRow("negative block type") << true << -1;
    }
    void noWorkingPorts()
    {
        QFETCH(bool, with_para);
        QFETCH(int, type);
        Instance instance;
        instance.AddPort("in", "Left");
        RebuildWorkingPorts(instance.record);
        QCOMPARE(instance.record->ports.size(), 1);
        if (!with_para) {
            FreeBlkParaData(instance.record->para);
            instance.record->para = nullptr;
        }
        instance.record->custom_type = type;
        RebuildWorkingPorts(instance.record);
        QVERIFY(instance.record->ports.isEmpty());
    }

    void copyIsIndependent()
    {
        Instance instance;
        instance.AddPort("in", "Left");
        instance.SetValue("K", "1");
        RebuildWorkingPorts(instance.record);
        WSP_BLK_ITEM_STRUCT *copy = CopyBlkItem(instance.record);
        QVERIFY(copy->para != instance.record->para);
        QCOMPARE(copy->ports.size(), 1);
        QVERIFY(copy->ports.first() != instance.record->ports.first());
        QCOMPARE(copy->ports.first()->owner, copy);
        QCOMPARE(copy->blockdef, instance.block);
        FindEntity(copy->para, "P", "K")->sel_val = "2";
        QCOMPARE(FindEntity(instance.record->para, "P", "K")->sel_val, QString("1"));
        FreeBlkItem(copy);
    }
};

ZEMA_TEST(tst_Workspace)
#include "tst_Workspace.moc"
