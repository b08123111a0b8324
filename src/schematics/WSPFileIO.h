// Reader of workspace files (*.wsp), always compressed and scrambled. The program never
// writes one: there is deliberately no writer.
#pragma once

#include "app/AbstractFileHandling.h"

#include <QStringList>

struct WspData;
struct WSP_BLK_ITEM_STRUCT;
struct WspConnectRec;
struct WspTextRec;
struct WspNodeRec;

class WSPFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    WSPFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
              QObject *parent = nullptr);

    // The new record, owned by the caller; null when the file cannot be opened or decoded or
    // breaks as XML. `root` is what wsp_path is made relative to; `search_dirs` resolve
    // ref_name and ref_path.
    WspData *LoadWsp(const QString &root, const QString &path, const QStringList &search_dirs,
                     const QString &title);

    // Each returns null for an item that is dropped; the caller tells a broken stream apart
    // by hasError(). The reader stands on the item's start element.
    static WspData *ReadWsp(QXmlStreamReader *reader, const QString &wsp_path,
                            const QStringList &search_dirs);
    static WSP_BLK_ITEM_STRUCT *ReadBlkItem(QXmlStreamReader *reader, const QString &wsp_path,
                                            const QStringList &search_dirs);
    static WspConnectRec *ReadConnect(QXmlStreamReader *reader);
    static WspTextRec *ReadText(QXmlStreamReader *reader);
    static WspNodeRec *ReadNode(QXmlStreamReader *reader);
};

