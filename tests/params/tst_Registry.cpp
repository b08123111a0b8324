// The block cache and its built-in execution groups.
#include "SampleBlock.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"

#include <QDir>
#include <QtTest>

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
        // The bounds are exclusive, and only the first list preselects its value.
        const QList<ParaEntity *> &execution = registry.groups[0]->para_entity;
        QCOMPARE(execution[0]->sel_val + " > " + execution[0]->sel_val_gt, QString("0 > -2"));
        QCOMPARE(execution[4]->sel_val, QString("Number of block execution cycles"));
        const ParaEntity *ordering = registry.groups[1]->para_entity[0];
        QVERIFY(ordering->sel_val.isEmpty() && ordering->sel_idx == 0);
    }

    void cache()
    {
        const QString dir = tmp.filePath("lib/Gain");
        BlockRegistry registry;
        QVERIFY(!FindBlock(&registry, 602, QString(), dir)); // no entry after a failed load
        QVERIFY(registry.blocks.isEmpty() && QDir().mkpath(dir));
        BlockData *sample = MakeSampleBlock(dir);
        FindEntity(sample->config, "Basic", "Block ID")->sel_val = "602";
        QVERIFY(SaveBlockData(sample, nullptr, "ZEMA", true));
        FreeBlockData(sample);
        // A hit is stored under the file's id, and a lookup by that id no longer reads the disk.
        BlockData *block = FindBlock(&registry, 9, QString(), dir);
        QVERIFY(block && registry.blocks.keys() == QList<quint32>{602});
        QCOMPARE(FindBlockByName(&registry, "lib/Gain"), block);
        QCOMPARE(FindBlock(&registry, 602, QString(), tmp.filePath("elsewhere")), block);
        // Id 0 always loads, and replaces the entry of the file's id.
        BlockData *second = FindBlock(&registry, 0, QString(), dir);
        QVERIFY(second && second != block && registry.blocks.size() == 1);
        QCOMPARE(FindBlock(&registry, 602, QString(), QString()), second);
    }

    void initRegistryKeepsTheFirst()
    {
        InitRegistry(nullptr);
        BlockRegistry *first = Registry();
        InitRegistry(reinterpret_cast<MainWindow *>(quintptr(0x10)));
        QVERIFY(first && Registry() == first && !first->main_window);
    }
};

ZEMA_TEST(tst_Registry)
#include "tst_Registry.moc"
