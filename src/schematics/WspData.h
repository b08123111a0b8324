// The content of a workspace file: block instances, connections, free texts and nodes.
#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVariantList>

struct BlkParaData;
struct BlkPort;
struct BlockData;

// One block instance. The persisted fields carry their element names.
struct WSP_BLK_ITEM_STRUCT {
    quint32 id = 0;
    quint32 ref_id = 0;           // block id: the key of the block cache
    QString wsp_path;             // not stored: the workspace file, relative to its root
    QString ref_name;             // definition file name
    QString ref_path;             // the block's directory
    QString ver;
    qint32 custom_type = 0;       // block type number
    qint32 ui_grp = -1;
    qint32 ui_wnd = -1;
    qint32 ord_type = 0;
    quint32 ord_id = 0;
    QString name;
    quint32 linkid = 0;
    QPointF pos;
    bool enable = true;
    bool hf = false;              // mirrored left to right
    bool vf = false;              // mirrored top to bottom
    float an = 0;                 // rotation in degrees
    float sx = 1.0f;              // carried, never used for drawing
    float sy = 1.0f;
    QRectF rt{0, 0, 40, 40};
    BlkParaData *para = nullptr;  // owned
    BlkParaData *ic = nullptr;    // owned

    // Run time only.
    BlockData *blockdef = nullptr;   // shared, owned by the block cache
    QList<BlkPort *> ports;          // owned: the working port list
    QVariantList user_lists[3];      // for the record's user; copied with the record
};

struct WspConnectRec {
    quint32 id = 0;
    quint32 cl = 0xc8000000;      // packed ARGB
    qint32 wd = 1;
    qint32 st = 1;                // Qt pen style
    QPointF pos;
    QList<QPointF> pts;           // polyline in item coordinates
};

struct WspTextRec {
    quint32 id = 0;
    QPointF pos;
    QString text;
};

struct WspNodeRec {
    QList<quint32> blks;
    QStringList ports;
    QVariantList user_lists[2];   // nothing in the file fills them
};

struct WspData {
    bool enabled = true;
    QList<WSP_BLK_ITEM_STRUCT *> bitems; // owned
    QList<WspConnectRec *> citems;       // owned
    QList<WspTextRec *> titems;          // owned
    QList<WspNodeRec *> nodes;           // owned
};

// Each frees what it owns, then the record; null is allowed. The attached block stays.
void FreeBlkItem(WSP_BLK_ITEM_STRUCT *item);
void FreeWsp(WspData *data);
void FreeWorkingPorts(WSP_BLK_ITEM_STRUCT *item);

// A deep copy owned by the caller: parameter lists and working ports are duplicated, the
// attached block is shared. Null gives null.
WSP_BLK_ITEM_STRUCT *CopyBlkItem(const WSP_BLK_ITEM_STRUCT *item);
