#include "schematics/WspBlockIterator.h"

#include "app/AppSettings.h"
#include "schematics/BlockRef.h"
#include "schematics/WSPFileIO.h"
#include "schematics/WspData.h"

#include <QDir>
#include <QFileInfo>

namespace {

QStringList WorkspaceSearchDirs(const QString &root)
{
    if (AppSettings *settings = GlobalSettings())
        return SearchDirs(settings, root);
    // Without settings (tools, tests) only the workspace's own tree is searched.
    const QString blocks = root + QStringLiteral("/blocks");
    return {QFileInfo(blocks).isDir() ? blocks : root};
}

} // namespace

WspBlockIterator::WspBlockIterator(const QString &path, const QString &root,
                                   ErrorList *error_list, QObject *owner)
    : QObject(owner)
{
    const QString full_path = QDir(root).filePath(path);
    WSPFileIO io(root, error_list, 1);
    data = io.LoadWsp(root, full_path, WorkspaceSearchDirs(root), QStringLiteral("ZEMA"));
    if (!data)
        return;
    for (int i = 0; i < data->bitems.size();) {
        if (LoadBlockRef(data->bitems[i], error_list, QStringLiteral("ZEMA"), true, false))
            ++i;
        else
            FreeBlkItem(data->bitems.takeAt(i));
    }
}

WspBlockIterator::~WspBlockIterator()
{
    FreeWsp(data);
}

WSP_BLK_ITEM_STRUCT *WspBlockIterator::NextBlock()
{
    if (!data || next >= data->bitems.size())
        return nullptr;
    return data->bitems.at(next++);
}
