// The presentation records of a block: title, size, images, image texts and the master list of
// its ports.
#pragma once

#include <QList>
#include <QString>

struct BlkCodeData;
struct BlkCodePort;
struct WSP_BLK_ITEM_STRUCT;

// An image and the parameter value under which it is drawn; no group: the default image.
struct BlkImage {
    QString name;              // without its extension
    QString para_grp;
    QString para_entity;
    QString para_value;
};

// A text block inside an image that shows a parameter's value.
struct BlkImageText {
    QString img_name;          // without its extension
    QString text;
    QString para_grp;
    QString para_entity;
};

struct BlkPort {
    // Working members of a schematic's copy of the port; no file holds them.
    WSP_BLK_ITEM_STRUCT *owner = nullptr;
    BlkCodePort *code_port = nullptr;  // the code record of the same name, not owned
    void *user_data = nullptr;

    QString name;              // key to BlkCodePort
    QString dis_text;
    QString type;              // "Input", "Output", "Physical", "Phy.Ref.", "Any"
    QString placement;         // "Top", "Left", "Bottom", "Right"
    float per_distance = 0.0f; // percent along the side
    float text_dx = 0.0f;
    float text_dy = 0.0f;
    qint32 conn_req = 0;       // 0 "No", 1 "Yes", 2 "Yes (code dependent)"
    quint8 mport_para = 0;     // set: mport_grp, mport_entity give the number of occurrences
    qint32 vport_para = 0;     // 0 "Visible", 1 "Invisible", 2 "Parameter Based"
    QString vport_grp;
    QString vport_entity;
    QString vport_value;
    QString mport_grp;
    QString mport_entity;

    QList<void *> conns;       // not owned
    QList<void *> nodes;       // not owned
    float stub_len = 0.0f;     // the reader gives every port 4.0
    QString work_name;
    QString work_text;
};

struct BlkPresData {
    QString title;
    qint32 vsize = 0;
    qint32 hsize = 0;
    quint8 border = 0;
    quint8 aspect = 0;
    QList<BlkImage *> images;     // owned
    QList<BlkImageText *> texts;  // owned
    QList<BlkPort *> ports;       // owned; the master order of the block's ports
};

// The record of a block that has no directory yet: 40 by 40 with a border. Owned by the caller.
BlkPresData *NewDefaultPresData();
// Each port's code_port becomes the code record of its name, or null; a null code clears them.
void LinkPortsToCode(BlkPresData *pres, BlkCodeData *code);
// Frees the lists' records, then the record; null is allowed.
void FreeBlkPresData(BlkPresData *data);
