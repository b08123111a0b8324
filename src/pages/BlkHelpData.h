// The help record of a block: how to install its help, and its entry files below "doc".
#pragma once

#include <QString>
#include <QStringList>

struct BlkHelpData {
    QString h_inst;
    QStringList file_name;     // relative to the block's "doc" directory
};

// Null is allowed.
void FreeBlkHelpData(BlkHelpData *data);
