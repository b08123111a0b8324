// The process-wide block cache, and the three built-in groups of how a block instance runs.
#pragma once

#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>

class MainWindow;
struct BlockData;
struct ParaGroup;

struct BlockRegistry {
    explicit BlockRegistry(MainWindow *main_window = nullptr);
    ~BlockRegistry();
    BlockRegistry(const BlockRegistry &) = delete;
    BlockRegistry &operator=(const BlockRegistry &) = delete;

    MainWindow *main_window = nullptr;
    QHash<quint32, BlockData *> blocks;   // owned, by block id
    // Built-in groups "_Block Execution", "_Block Miscellaneous-1", "_Block Miscellaneous-2":
    // kept here only; no page shows them and no file holds them.
    QList<ParaGroup *> groups;            // owned
    // Records that a later load of the same id pushed out of `blocks`; callers may still hold
    // them, so they live as long as the registry.
    QList<BlockData *> replaced;
    QMutex mutex;
};

// Makes the process's registry once; a second call does nothing. Never freed.
void InitRegistry(MainWindow *main_window);
// Null before InitRegistry.
BlockRegistry *Registry();

// The cached block of that id, loading it from `path` on a miss; null when it cannot be loaded.
// The record is shared: callers never free it. An id of 0 always loads.
BlockData *FindBlock(BlockRegistry *registry, quint32 block_id, const QString &name_hint,
                     const QString &path);
// The first cached block whose path contains `name`, in hash order, or null.
BlockData *FindBlockByName(BlockRegistry *registry, const QString &name);
