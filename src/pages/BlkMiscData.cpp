#include "pages/BlkMiscData.h"

void FreeBlkMiscData(BlkMiscData *data)
{
    if (!data)
        return;
    qDeleteAll(data->char_vars);
    delete data;
}

QString RelativeToRoot(const QString &root, const QString &path)
{
    if (!path.contains(root))
        return path;
    // Every occurrence goes, not just a leading one: a path that merely holds the root's
    // text somewhere inside counts as inside.
    QString rel = path;
    rel.remove(root);
    if (rel.startsWith('/'))
        rel.remove(0, 1);
    return rel;
}
