// The miscellaneous record of a block: operation count, intrinsic variable links, dependencies,
// parameter conditions and the developer's remarks.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Links a block intrinsic variable to a parameter.
struct BlkCharVar {
    QString char_var_name;
    QString para_grp;
    QString para_entity;
};

struct BlkMiscData {
    QString cpu_ops;               // a number or a script field
    QString dev_rem;
    QList<BlkCharVar *> char_vars; // owned
    QStringList para_cond;         // condition "$" error text
    QStringList blk_depends;       // block directories, relative to the installed directory
    QStringList cpp_depends;       // code files and directories, relative likewise
};

// Frees the variable links, then the record; null is allowed.
void FreeBlkMiscData(BlkMiscData *data);

