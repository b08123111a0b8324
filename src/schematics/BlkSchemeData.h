// The scheme record of a composite block: its root workspace file and which workspace files
// hold plots, controls, hardware inputs and outputs, and further composite blocks.
#pragma once

#include <QString>
#include <QStringList>

struct BlkSchemeData {
    QString root_file;         // relative to the block directory
    QStringList plots;
    QStringList controls;
    QStringList hw_ios;
    QStringList gp_blks;
};

// Null is allowed.
void FreeBlkSchemeData(BlkSchemeData *data);
