#include "drawing/ImgItemPath.h"

#include "drawing/ImgDataRec.h"

#include <QLineF>
#include <QPolygonF>
#include <QRect>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double kTolerance = 0.0001;

// Turns a point about a pivot; positive degrees are counter-clockwise in Qt's line angles.
QPointF Turn(const QPointF &point, const QPointF &pivot, double degrees)
{
    QLineF line(pivot, point);
    line.setAngle(line.angle() + degrees);
    return line.p2();
}

QPainterPath PolylinePath(const QList<QPointF> &points)
{
    QPainterPath path;
    if (points.isEmpty())
        return path;
    path.moveTo(points[0]);
    for (int i = 1; i < points.size(); ++i)
        path.lineTo(points[i]);
    return path;
}

QPainterPath RectanglePath(const QList<QPointF> &points)
{
    QPainterPath path;
    if (points.size() < 4)
        return path;
    path.moveTo(points[0]);
    path.lineTo(points[1]);
    path.lineTo(points[2]);
    path.lineTo(points[3]);
    path.lineTo(points[0]);
    return path;
}

// The frame is squared up about its first corner, the ellipse built there, and its outline
// turned back vertex by vertex.
QPainterPath EllipsePath(const QList<QPointF> &points)
{
    QPainterPath path;
    if (points.size() < 4)
        return path;
    const QPointF pivot = points[0];
    const double angle = QLineF(pivot, points[1]).angle();
    QPainterPath ellipse;
    ellipse.addEllipse(QRectF(Turn(points[3], pivot, -angle), Turn(points[1], pivot, -angle)));
    const QList<QPolygonF> polygons = ellipse.toSubpathPolygons();
    if (polygons.isEmpty())
        return path;
    QPolygonF outline = polygons.first();
    for (QPointF &vertex : outline)
        vertex = Turn(vertex, pivot, angle);
    path.addPolygon(outline);
    return path;
}

// The perpendicular bisector of a chord, as a slope through the midpoint or as an axis line.
struct Bisector {
    enum Kind { Sloped, Vertical, Horizontal } kind = Sloped;
    QPointF mid;
    double slope = 0;
};

Bisector BisectorOf(const QPointF &a, const QPointF &b)
{
    Bisector bisector;
    bisector.mid = (a + b) / 2.0;
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    if (qAbs(dx) < kTolerance)
        bisector.kind = Bisector::Horizontal;
    else if (qAbs(dy / dx) < kTolerance)
        bisector.kind = Bisector::Vertical;
    else
        bisector.slope = -dx / dy;
    return bisector;
}

// Parallel bisectors have no intersection; the centre is then the origin, as it always was.
QPointF CircleCentre(const QPointF &p0, const QPointF &p1, const QPointF &p2)
{
    Bisector first = BisectorOf(p0, p1);
    Bisector second = BisectorOf(p1, p2);
    if (first.kind == second.kind &&
        (first.kind != Bisector::Sloped || qAbs(first.slope - second.slope) < kTolerance))
        return QPointF(0, 0);
    if (second.kind == Bisector::Vertical || (second.kind == Bisector::Horizontal &&
                                              first.kind == Bisector::Sloped))
        std::swap(first, second);
    // Now first is the vertical one if any, else the horizontal one if any.
    if (first.kind == Bisector::Vertical) {
        if (second.kind == Bisector::Horizontal)
            return QPointF(first.mid.x(), second.mid.y());
        return QPointF(first.mid.x(),
                       second.mid.y() + second.slope * (first.mid.x() - second.mid.x()));
    }
    if (first.kind == Bisector::Horizontal)
        return QPointF(second.mid.x() + (first.mid.y() - second.mid.y()) / second.slope,
                       first.mid.y());
    const double x = (first.slope * first.mid.x() - second.slope * second.mid.x() +
                      second.mid.y() - first.mid.y()) / (first.slope - second.slope);
    return QPointF(x, first.mid.y() + first.slope * (x - first.mid.x()));
}

bool FitsInt(double value)
{
    return std::isfinite(value) && value > std::numeric_limits<int>::min() &&
           value < std::numeric_limits<int>::max();
}

QPainterPath ArcPath(const QList<QPointF> &points)
{
    QPainterPath path;
    QPointF p0, p1, p2;
    switch (points.size()) {
    case 1: p0 = p1 = p2 = points[0]; break;
    case 2: p0 = points[0]; p1 = p2 = points[1]; break;
    case 3: p0 = points[0]; p1 = points[1]; p2 = points[2]; break;
    default: return path;
    }
    if (QLineF(p0, p1).angleTo(QLineF(p0, p2)) < 1e-06)
        return path;
    const QPointF centre = CircleCentre(p0, p1, p2);
    const float radius = float(QLineF(centre, p2).length());
    const double left = centre.x() - radius;
    const double top = centre.y() - radius;
    const double size = 2.0 * radius;
    // A nearly straight arc has a radius no integer box can hold: it is not drawn.
    if (!FitsInt(left) || !FitsInt(top) || !FitsInt(size))
        return path;
    // Truncated on purpose: arcs snap to whole units.
    const QRectF box(QRect(static_cast<int>(left), static_cast<int>(top), static_cast<int>(size),
                           static_cast<int>(size)));
    const QLineF to_p0(centre, p0);
    const double start = to_p0.angle();
    double span = to_p0.angleTo(QLineF(centre, p2));
    // The sweep goes the way that passes through p1.
    if (span < to_p0.angleTo(QLineF(centre, p1)))
        span -= 360.0;
    path.arcMoveTo(box, start);
    path.arcTo(box, start, span);
    return path;
}

// Mirrors a point through a centre.
QPointF Mirror(const QPointF &point, const QPointF &centre)
{
    return 2.0 * centre - point;
}

// Three points: one curve from p0 to p1, shaped by p2. Four and more: anchors every third point,
// with the two points between them shaping the curve; a trailing incomplete run is not drawn.
QPainterPath SplinePath(const QList<QPointF> &p)
{
    QPainterPath path;
    const int count = p.size();
    if (count < 3)
        return path;
    if (count == 3) {
        path.moveTo(p[0]);
        path.cubicTo((p[0] + p[1]) / 2.0, (p[1] + p[2]) / 2.0, p[1]);
        return path;
    }
    for (int i = 0; i + 3 < count; i += 3) {
        const QPointF mid = (p[i] + p[i + 3]) / 2.0;
        const QPointF c1 = Mirror((mid + p[i]) / 2.0, p[i + 1]);
        const QPointF c2 = Mirror((mid + p[i + 3]) / 2.0, p[i + 2]);
        path.moveTo(p[i]);
        path.cubicTo(c1, c2, p[i + 3]);
    }
    return path;
}

} // namespace

QPainterPath ImgItemPath(const ImgItemRec &item)
{
    switch (item.type) {
    case 1: return PolylinePath(item.points);
    case 2: return RectanglePath(item.points);
    case 3: return EllipsePath(item.points);
    case 4: return ArcPath(item.points);
    case 5: return SplinePath(item.points);
    default: return QPainterPath();
    }
}

QRectF ImgPointsRect(const QList<QPointF> &points)
{
    if (points.isEmpty())
        return QRectF();
    double left = points[0].x(), right = left, top = points[0].y(), bottom = top;
    for (const QPointF &point : points) {
        left = qMin(left, point.x());
        right = qMax(right, point.x());
        top = qMin(top, point.y());
        bottom = qMax(bottom, point.y());
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

QRectF ImgFrameRect(const ImgDataRec &data)
{
    for (const ImgItemRec *item : data.items)
        if (item->type == 7)
            return ImgPointsRect(item->points);
    return QRectF();
}
