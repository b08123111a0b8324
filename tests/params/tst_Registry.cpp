// The block cache and its built-in execution groups.
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"

#include <QDir>
#include <QtTest>

namespace {

ParaGroup *Group(const QString &header, const QList<ParaEntity *> &entities)
{
    auto *group = new ParaGroup;
    group->header = header;
    group->para_entity = entities;
    return group;
}

ParaEntity *Edit(const QString &label, const QString &value)
{
    auto *entity = new ParaEntity(label);
    entity->sel_val = value;
    return entity;
}

// A block directory whose definition file carries `id`.
bool WriteBlock(const QString &dir, quint32 id)
{
    QDir().mkpath(dir);
    auto *block = new BlockData;
    block->path = dir;
    block->config = new BlkParaData;
    block->config->para_grp.append(Group(QStringLiteral("Basic"),
        {Edit(QStringLiteral("Block ID"), QString::number(id)),
         Edit(QStringLiteral("Block Version"), QStringLiteral("2.1"))}));
    block->params = new BlkParaData;
    const bool saved = SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true);
    FreeBlockData(block);
    return saved;
}

} // namespace

class tst_Registry : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;

private slots:
    void builtInGroupOrder()
    {
        BlockRegistry registry;
        QStringList headers;
        for (const ParaGroup *group : registry.groups)
            headers << group->header;
        QCOMPARE(headers, (QStringList{"_Block Execution", "_Block Miscellaneous-1",
                                       "_Block Miscellaneous-2"}));
        QStringList labels;
        for (const ParaGroup *group : registry.groups)
            for (const ParaEntity *entity : group->para_entity)
                labels << group->header + "/" + entity->label;
        QCOMPARE(labels, (QStringList{
            "_Block Execution/Execution Thread", "_Block Execution/Execution Start Offset",
            "_Block Execution/Execution Interval Offset", "_Block Execution/Execution Interval",
            "_Block Execution/Execution Interval Reference",
            "_Block Miscellaneous-1/Block Ordering",
            "_Block Miscellaneous-1/Block Ordering (Other Block ID)",
            "_Block Miscellaneous-2/Block Name", "_Block Miscellaneous-2/Friend Block ID",
            "_Block Miscellaneous-2/Enable/Disable"}));
    }

    void builtInEntities_data()
    {
        QTest::addColumn<QString>("header");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("sel_val");
        QTest::addColumn<QString>("sel_val_gt");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<int>("sel_idx");
        const QString exec = "_Block Execution";
        const QString cycles = "in block execution cycles";
        QTest::newRow("thread") << exec << "Execution Thread" << "-1,0,1,2,.." << "0" << "-2"
                                << QStringList() << -1;
        QTest::newRow("start offset") << exec << "Execution Start Offset" << cycles << "0"
                                      << "-1" << QStringList() << -1;
        QTest::newRow("interval offset") << exec << "Execution Interval Offset" << cycles << "0"
                                         << "-1" << QStringList() << -1;
        QTest::newRow("interval") << exec << "Execution Interval"
                                  << "units specified in the parameter below" << "1" << "0"
                                  << QStringList() << -1;
        QTest::newRow("reference")
            << exec << "Execution Interval Reference" << "" << "Number of block execution cycles"
            << "" << QStringList{"Number of block execution cycles",
                                 "Simulation Time (in micro seconds)",
                                 "Real Time (in micro seconds)"} << 0;
        QTest::newRow("ordering")
            << "_Block Miscellaneous-1" << "Block Ordering" << "" << "" << ""
            << QStringList{"None", "Start Block", "Middle Block", "End Block",
                           "Before Other Block", "After Other Block"} << 0;
        QTest::newRow("other block") << "_Block Miscellaneous-1"
                                     << "Block Ordering (Other Block ID)" << "" << "" << ""
                                     << QStringList() << -1;
        QTest::newRow("block name") << "_Block Miscellaneous-2" << "Block Name" << "" << "" << ""
                                    << QStringList() << -1;
        QTest::newRow("friend") << "_Block Miscellaneous-2" << "Friend Block ID" << "" << ""
                                << "" << QStringList() << -1;
        QTest::newRow("enable") << "_Block Miscellaneous-2" << "Enable/Disable" << "" << "" << ""
                                << QStringList{"Disable", "Enable"} << 0;
    }
    void builtInEntities()
    {
        QFETCH(QString, header);
        QFETCH(QString, label);
        BlockRegistry registry;
        BlkParaData view;
        view.para_grp = registry.groups;
        const ParaEntity *entity = FindEntity(&view, header, label);
        view.para_grp.clear();
        QVERIFY(entity);
        QTEST(entity->unit, "unit");
        QTEST(entity->sel_val, "sel_val");
        QTEST(entity->sel_val_gt, "sel_val_gt");
        QCOMPARE(entity->sel_val_lt, QString());
        QCOMPARE(entity->val_type, QString());
        QTEST(entity->values, "values");
        QTEST(int(entity->sel_idx), "sel_idx");
    }

    void cacheHitReturnsTheSameRecord()
    {
        const QString dir = tmp.filePath("hit");
        QVERIFY(WriteBlock(dir, 501));
        BlockRegistry registry;
        BlockData *first = FindBlock(&registry, 501, QString(), dir);
        QVERIFY(first);
        QCOMPARE(first->version, QString("2.1"));
        QVERIFY(QDir(dir).removeRecursively());
        // No invalidation: the record outlives its directory.
        QCOMPARE(FindBlock(&registry, 501, QString(), dir), first);
        QCOMPARE(FindBlock(&registry, 501, QString(), tmp.filePath("elsewhere")), first);
    }

    void storedUnderTheFilesId()
    {
        const QString dir = tmp.filePath("other_id");
        QVERIFY(WriteBlock(dir, 602));
        BlockRegistry registry;
        BlockData *block = FindBlock(&registry, 9, QString(), dir);
        QVERIFY(block);
        QCOMPARE(block->block_id, 602u);
        QCOMPARE(registry.blocks.keys(), QList<quint32>{602});
        QCOMPARE(FindBlock(&registry, 602, QString(), QString()), block);
    }

    void idZeroAlwaysLoadsAndReplaces()
    {
        const QString dir = tmp.filePath("zero");
        QVERIFY(WriteBlock(dir, 703));
        BlockRegistry registry;
        BlockData *first = FindBlock(&registry, 0, QString(), dir);
        QVERIFY(first);
        BlockData *second = FindBlock(&registry, 0, QString(), dir);
        QVERIFY(second);
        QVERIFY(second != first);
        QCOMPARE(registry.blocks.size(), 1);
        QCOMPARE(FindBlock(&registry, 703, QString(), QString()), second);
        // The replaced record is still there for whoever holds it.
        QCOMPARE(first->path, dir);
    }

    void failedLoadLeavesNoEntry()
    {
        const QString dir = tmp.filePath("late");
        QDir().mkpath(dir);
        BlockRegistry registry;
        QVERIFY(!FindBlock(&registry, 804, QString(), dir));
        QVERIFY(registry.blocks.isEmpty());
        QVERIFY(WriteBlock(dir, 804));
        QVERIFY(FindBlock(&registry, 804, QString(), dir));
        QCOMPARE(registry.blocks.size(), 1);
    }

    void findByName()
    {
        BlockRegistry registry;
        QVERIFY(!FindBlockByName(&registry, "Gain"));
        QVERIFY(WriteBlock(tmp.filePath("lib/Gain"), 901));
        QVERIFY(WriteBlock(tmp.filePath("lib/Sum"), 902));
        BlockData *gain = FindBlock(&registry, 901, QString(), tmp.filePath("lib/Gain"));
        BlockData *sum = FindBlock(&registry, 902, QString(), tmp.filePath("lib/Sum"));
        QVERIFY(gain && sum);
        QCOMPARE(FindBlockByName(&registry, "Gain"), gain);
        QCOMPARE(FindBlockByName(&registry, "lib/Sum"), sum);
        QVERIFY(!FindBlockByName(&registry, "Product"));
    }

    void initRegistryKeepsTheFirst()
    {
        InitRegistry(nullptr);
        BlockRegistry *first = Registry();
        QVERIFY(first);
        InitRegistry(reinterpret_cast<MainWindow *>(quintptr(0x10)));
        QCOMPARE(Registry(), first);
        QCOMPARE(first->main_window, static_cast<MainWindow *>(nullptr));
    }
};

ZEMA_TEST(tst_Registry)
#include "tst_Registry.moc"
