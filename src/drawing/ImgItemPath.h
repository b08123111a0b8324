// The painter paths of a drawing's primitives, and the frame that places a drawing.
#pragma once

#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

struct ImgDataRec;
struct ImgItemRec;

// The outline of a polyline, rectangle, ellipse, arc or spline; empty for text, frame, unknown
// kinds and for a primitive without enough points for its kind.
QPainterPath ImgItemPath(const ImgItemRec &item);

// Bounding box of the points; a null rectangle for no points.
QRectF ImgPointsRect(const QList<QPointF> &points);
// Bounding box of the first frame primitive (type 7); a null rectangle when there is none.
QRectF ImgFrameRect(const ImgDataRec &data);
