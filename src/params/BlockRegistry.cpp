#include "params/BlockRegistry.h"

#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"

#include <QMutexLocker>

namespace {

BlockRegistry *global_registry = nullptr;

ParaEntity *BoundedEntity(const QString &label, const QString &unit, const QString &value,
                          const QString &above)
{
    auto *entity = new ParaEntity(label, unit);
    entity->sel_val = value;
    entity->sel_val_gt = above;
    return entity;
}

// A combo whose value stays empty until a page would choose one.
ParaEntity *ChoiceEntity(const QString &label, const QStringList &values)
{
    auto *entity = new ParaEntity(label);
    entity->values = values;
    entity->sel_idx = 0;
    return entity;
}

ParaGroup *NewGroup(const QString &header, const QList<ParaEntity *> &entities)
{
    auto *group = new ParaGroup;
    group->header = header;
    group->para_entity = entities;
    return group;
}

QList<ParaGroup *> BuiltInGroups()
{
    const QString cycles = QStringLiteral("in block execution cycles");
    ParaEntity *reference = ChoiceEntity(QStringLiteral("Execution Interval Reference"),
                                         {QStringLiteral("Number of block execution cycles"),
                                          QStringLiteral("Simulation Time (in micro seconds)"),
                                          QStringLiteral("Real Time (in micro seconds)")});
    reference->sel_val = reference->values.first();
    return {
        NewGroup(QStringLiteral("_Block Execution"),
                 {BoundedEntity(QStringLiteral("Execution Thread"), QStringLiteral("-1,0,1,2,.."),
                                QStringLiteral("0"), QStringLiteral("-2")),
                  BoundedEntity(QStringLiteral("Execution Start Offset"), cycles,
                                QStringLiteral("0"), QStringLiteral("-1")),
                  BoundedEntity(QStringLiteral("Execution Interval Offset"), cycles,
                                QStringLiteral("0"), QStringLiteral("-1")),
                  BoundedEntity(QStringLiteral("Execution Interval"),
                                QStringLiteral("units specified in the parameter below"),
                                QStringLiteral("1"), QStringLiteral("0")),
                  reference}),
        NewGroup(QStringLiteral("_Block Miscellaneous-1"),
                 {ChoiceEntity(QStringLiteral("Block Ordering"),
                               {QStringLiteral("None"), QStringLiteral("Start Block"),
                                QStringLiteral("Middle Block"), QStringLiteral("End Block"),
                                QStringLiteral("Before Other Block"),
                                QStringLiteral("After Other Block")}),
                  new ParaEntity(QStringLiteral("Block Ordering (Other Block ID)"))}),
        NewGroup(QStringLiteral("_Block Miscellaneous-2"),
                 {new ParaEntity(QStringLiteral("Block Name")),
                  new ParaEntity(QStringLiteral("Friend Block ID")),
                  ChoiceEntity(QStringLiteral("Enable/Disable"),
                               {QStringLiteral("Disable"), QStringLiteral("Enable")})}),
    };
}

} // namespace

BlockRegistry::BlockRegistry(MainWindow *main_window)
    : main_window(main_window), groups(BuiltInGroups())
{
    blocks.reserve(20000);
}

BlockRegistry::~BlockRegistry()
{
    for (BlockData *block : qAsConst(blocks))
        FreeBlockData(block);
    for (BlockData *block : qAsConst(replaced))
        FreeBlockData(block);
    for (ParaGroup *group : qAsConst(groups))
        FreeParaGroup(group);
}

void InitRegistry(MainWindow *main_window)
{
    if (!global_registry)
        global_registry = new BlockRegistry(main_window);
}

BlockRegistry *Registry()
{
    return global_registry;
}

// QHash gives no guarantee for a read that overlaps an insert, so every lookup takes the mutex;
// uncontended, that costs far less than anything done with the block found.
BlockData *FindBlock(BlockRegistry *registry, quint32 block_id, const QString &name_hint,
                     const QString &path)
{
    if (!registry)
        return nullptr;
    QMutexLocker lock(&registry->mutex);
    // An id of 0 means "not known yet": it never hits, and the file's own id decides.
    if (block_id != 0)
        if (BlockData *hit = registry->blocks.value(block_id))
            return hit;
    auto *block = new BlockData;
    block->block_id = block_id;
    block->path = path;
    if (!LoadBlockData(block, name_hint, nullptr, QStringLiteral("ZEMA"), true)) {
        FreeBlockData(block);
        return nullptr;
    }
    if (BlockData *old = registry->blocks.value(block->block_id))
        registry->replaced.append(old);
    registry->blocks.insert(block->block_id, block);
    return block;
}

BlockData *FindBlockByName(BlockRegistry *registry, const QString &name)
{
    if (!registry)
        return nullptr;
    QMutexLocker lock(&registry->mutex);
    for (BlockData *block : qAsConst(registry->blocks))
        if (block->path.contains(name))
            return block;
    return nullptr;
}
