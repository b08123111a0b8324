// The block cache and its built-in execution groups.
#include "SampleBlock.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"

#include <QDir>
#include <QtTest>

namespace {

// A block directory whose definition file carries `id`.
bool WriteBlock(const QString &dir, quint32 id)
{
    QDir().mkpath(dir);
    BlockData *block = MakeSampleBlock(dir);
    FindEntity(block->config, "Basic", "Block ID")->sel_val = QString::number(id);
    const bool saved = SaveBlockData(block, nullptr, "ZEMA", true);
    FreeBlockData(block);
    return saved;
}

} // namespace

class tst_Registry : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;

private slots:
    void builtInGroups()
    {
        BlockRegistry registry;
        QStringList headers;
        for (const ParaGroup *group : registry.groups)
            headers << group->header + "/" + QString::number(group->para_entity.size());
        QCOMPARE(headers, (QStringList{"_Block Execution/5", "_Block Miscellaneous-1/2",
                                       "_Block Miscellaneous-2/3"}));
        const auto entity = [&registry](int group, int index) {
            const ParaEntity *e = registry.groups[group]->para_entity[index];
            return QStringList{e->label, e->sel_val, e->sel_val_gt, QString::number(e->sel_idx)};
        };
        // The bounds are exclusive, and only the first list preselects its value.
        QCOMPARE(entity(0, 0), (QStringList{"Execution Thread", "0", "-2", "-1"}));
        QCOMPARE(entity(0, 4), (QStringList{"Execution Interval Reference",
                                            "Number of block execution cycles", "", "0"}));
        QCOMPARE(entity(1, 0), (QStringList{"Block Ordering", "", "", "0"}));
    }

    void hitIsStoredUnderTheFilesIdAndNeverInvalidated()
    {
        const QString dir = tmp.filePath("lib/Gain");
        QVERIFY(WriteBlock(dir, 602));
        BlockRegistry registry;
        BlockData *block = FindBlock(&registry, 9, QString(), dir);
        QVERIFY(block);
        QCOMPARE(registry.blocks.keys(), QList<quint32>{602});
        QCOMPARE(FindBlockByName(&registry, "lib/Gain"), block);
        QVERIFY(QDir(dir).removeRecursively());
        QCOMPARE(FindBlock(&registry, 602, QString(), tmp.filePath("elsewhere")), block);
    }

    void failedLoadLeavesNoEntryAndIdZeroReplaces()
    {
        const QString dir = tmp.filePath("zero");
        QDir().mkpath(dir);
        BlockRegistry registry;
        QVERIFY(!FindBlock(&registry, 703, QString(), dir));
        QVERIFY(registry.blocks.isEmpty());
        QVERIFY(WriteBlock(dir, 703));
        BlockData *first = FindBlock(&registry, 703, QString(), dir);
        BlockData *second = FindBlock(&registry, 0, QString(), dir);
        QVERIFY(first && second && second != first);
        QCOMPARE(registry.blocks.size(), 1);
        QCOMPARE(FindBlock(&registry, 703, QString(), QString()), second);
    }

    void initRegistryKeepsTheFirst()
    {
        InitRegistry(nullptr);
        BlockRegistry *first = Registry();
        InitRegistry(reinterpret_cast<MainWindow *>(quintptr(0x10)));
        QVERIFY(first && Registry() == first);
        QCOMPARE(first->main_window, static_cast<MainWindow *>(nullptr));
    }
};

ZEMA_TEST(tst_Registry)
#include "tst_Registry.moc"
