// The block cache and its built-in execution groups.
#include "SampleBlock.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"

#include <QtTest>

class tst_Registry : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;

private slots:
    void builtInGroupsOfTheFirstRegistry()
    {
        // A second InitRegistry keeps the first registry and its main window.
        InitRegistry(nullptr);
        BlockRegistry *registry = Registry();
        InitRegistry(reinterpret_cast<MainWindow *>(quintptr(0x10)));
        QVERIFY(registry && Registry() == registry && !registry->main_window);
        QStringList headers;
        for (const ParaGroup *group : registry->groups)
            headers << group->header + "/" + QString::number(group->para_entity.size());
        QCOMPARE(headers, (QStringList{"_Block Execution/5", "_Block Miscellaneous-1/2",
                                       "_Block Miscellaneous-2/3"}));
        // Only the first list preselects its value.
        QCOMPARE(registry->groups[0]->para_entity[4]->sel_val,
                 QString("Number of block execution cycles"));
        QVERIFY(registry->groups[1]->para_entity[0]->sel_val.isEmpty());
    }

    void cache()
    {
        const QString dir = tmp.filePath("lib/Gain");
        BlockRegistry registry;
        QVERIFY(!FindBlock(&registry, 602, QString(), dir)); // no entry after a failed load
        QVERIFY(registry.blocks.isEmpty() && WriteSampleBlock(dir));
        // A hit is stored under the file's id, and a lookup by that id no longer reads the disk.
        BlockData *block = FindBlock(&registry, 9, QString(), dir);
        QVERIFY(block && block->block_id != 9);
        QCOMPARE(registry.blocks.keys(), QList<quint32>{block->block_id});
        QCOMPARE(FindBlockByName(&registry, "lib/Gain"), block);
        QCOMPARE(FindBlock(&registry, block->block_id, QString(), tmp.filePath("else")), block);
        // Id 0 always loads, and replaces the entry of the file's id.
        BlockData *second = FindBlock(&registry, 0, QString(), dir);
        QVERIFY(second && second != block && registry.blocks.size() == 1);
        QCOMPARE(FindBlock(&registry, block->block_id, QString(), QString()), second);
    }
};

ZEMA_TEST(tst_Registry)
#include "tst_Registry.moc"
