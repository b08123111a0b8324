// The records of a block's vector drawings: one drawing and its primitives.
#pragma once

#include <QBrush>
#include <QList>
#include <QPen>
#include <QPointF>
#include <QString>

// One primitive of a drawing. Points are held by value: the list owns them as the record
// owns its strings, and a copy of the record copies them.
struct ImgItemRec {
    ImgItemRec();

    quint32 id = 0;            // kept and written back, never used for drawing
    float z = 0;               // kept and written back; primitives stack in list order
    qint32 type = 0;           // 1 polyline .. 7 frame, 0 invalid; others draw nothing
    QList<QPointF> points;
    QPen pen;
    QBrush brush;              // style of a default brush, colour 0,0,0 with alpha 0
    QString text;              // attribute t
    QString font;              // attribute f; empty: the block item's default font
    float h = 0;               // font point size
    float w = 0;               // font weight
    float a = 0;               // text angle in degrees
};

struct ImgDataRec {
    QString img_name;          // without ".vimg"
    QList<ImgItemRec *> items; // owned, in file order
};

// Each frees what it owns, then the record; null is allowed.
void FreeImgItemRec(ImgItemRec *item);
void FreeImgDataRec(ImgDataRec *data);

// Deep copies owned by the caller; null gives null.
ImgItemRec *CopyImgItemRec(const ImgItemRec *item);
ImgDataRec *CopyImgDataRec(const ImgDataRec *data);
