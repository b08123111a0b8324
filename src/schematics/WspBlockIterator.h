// Walks the block instances of one workspace file whose blocks could be loaded.
#pragma once

#include <QObject>
#include <QString>

class ErrorList;
struct WspData;
struct WSP_BLK_ITEM_STRUCT;

class WspBlockIterator : public QObject
{
    Q_OBJECT
public:
    // Reads the workspace at `path` (relative paths are taken below `root`) and attaches every
    // block; a block that cannot be loaded is dropped. A file that cannot be read gives none.
    WspBlockIterator(const QString &path, const QString &root, ErrorList *error_list,
                     QObject *owner = nullptr);
    ~WspBlockIterator() override;

    // The next instance, owned by the iterator, or null at the end.
    WSP_BLK_ITEM_STRUCT *NextBlock();

private:
    WspData *data = nullptr;
    int next = 0;
};
