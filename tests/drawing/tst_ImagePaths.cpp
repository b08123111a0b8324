// The outline of each primitive kind, checked by its geometry rather than by pixels.
#include "TestRegistry.h"

#include "drawing/ImgDataRec.h"
#include "drawing/ImgItemPath.h"

#include <QLineF>
#include <QtMath>
#include <QtTest>

using Points = QList<QPointF>;
using Angles = QList<double>;

namespace {

ImgItemRec Item(qint32 type, const Points &points)
{
    ImgItemRec item;
    item.type = type;
    item.points = points;
    return item;
}

Points Elements(const QPainterPath &path)
{
    Points elements;
    for (int i = 0; i < path.elementCount(); ++i)
        elements.append(path.elementAt(i));
    return elements;
}

// A point at an angle on a circle, the angle counter-clockwise on the screen as in QLineF.
QPointF OnCircle(const QPointF &centre, double radius, double degrees)
{
    return QLineF::fromPolar(radius, degrees).translated(centre).p2();
}

} // namespace

class tst_ImagePaths : public QObject
{
    Q_OBJECT
private slots:
    void elements_data();
    void elements();
    void ellipse_data();
    void ellipse();
    void arc_data();
    void arc();
    void frameRect();
};

void tst_ImagePaths::elements_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<Points>("points");
    QTest::addColumn<int>("count");
    QTest::addColumn<Points>("expected");   // all elements, when given
    auto row = [](const char *name, int type, const Points &points, int count,
                  const Points &expected = {}) {
        QTest::newRow(name) << type << points << count << expected;
    };
    const Points quad{{0, 0}, {10, 5}, {5, 15}, {-5, 10}};
    row("polyline stays open", 1, quad, 4, quad);
    row("rectangle closes, 5th ignored", 2, quad + Points{{9, 9}}, 5, quad + quad.mid(0, 1));
    // Three points: the curve ends at p1, p2 only shapes it.
    row("spline of 3", 5, {{0, 0}, {20, 0}, {20, 20}}, 4, {{0, 0}, {10, 0}, {20, 10}, {20, 0}});
    row("spline controls mirrored", 5,
        {{0, 0}, {10, 10}, {20, 10}, {30, 0}, {40, -10}, {50, -10}, {60, 0}}, 8,
        {{0, 0}, {12.5, 20}, {17.5, 20}, {30, 0}, {30, 0}, {42.5, -20}, {47.5, -20}, {60, 0}});
    row("spline of 6, one run", 5, quad + quad.mid(0, 2), 4);
    row("spline of 10, three runs", 5, quad + quad + quad.mid(0, 2), 12);
    row("spline of 2", 5, quad.mid(0, 2), 0);
    row("text", 6, quad, 0);
    row("rectangle of 3", 2, quad.mid(0, 3), 0);
    row("ellipse of 3", 3, quad.mid(0, 3), 0);
    row("arc of 4", 4, quad, 0);
    row("arc collinear, p2 before p1", 4, {{0, 0}, {9, 0}, {5, 0}}, 0);
}

void tst_ImagePaths::elements()
{
    QFETCH(int, type);
    QFETCH(Points, points);
    QFETCH(int, count);
    QFETCH(Points, expected);
    const QPainterPath path = ImgItemPath(Item(type, points));
    QCOMPARE(path.elementCount(), count);
    if (!expected.isEmpty())
        QCOMPARE(Elements(path), expected);
}

void tst_ImagePaths::ellipse_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("b");   // half axis across the line from corner 0 to corner 1
    QTest::newRow("at 30 degrees") << 30.0 << 10.0;
    QTest::newRow("at 120 degrees") << 120.0 << 10.0;
    QTest::newRow("corners the other way round") << -45.0 << -10.0;
}

void tst_ImagePaths::ellipse()
{
    QFETCH(double, angle);
    QFETCH(double, b);
    const double a = 20;   // half axis along the line from corner 0 to corner 1
    const QPointF centre(50, 40), u = OnCircle({}, 1, angle), v = OnCircle({}, 1, angle + 90);
    const Points corners{centre - a * u - b * v, centre + a * u - b * v, centre + a * u + b * v,
                         centre - a * u + b * v};
    const QPainterPath path = ImgItemPath(Item(3, corners));
    // Every vertex on the ellipse about the true axes: a wrong turn back tilts it off them.
    for (const QPointF &vertex : Elements(path)) {
        const QPointF d = vertex - centre;
        const double along = QPointF::dotProduct(d, u) / a, across = QPointF::dotProduct(d, v) / b;
        QVERIFY(qAbs(along * along + across * across - 1) < 0.01);
    }
    QVERIFY(QLineF(path.boundingRect().center(), centre).length() < 0.05);
}

void tst_ImagePaths::arc_data()
{
    QTest::addColumn<QPointF>("centre");   // of the circle through the points, radius 5.4
    QTest::addColumn<Angles>("angles");    // of p0, p1 and p2 about the centre
    QTest::addColumn<QRectF>("box");       // truncated to whole units
    const QPointF c(10.5, 20.9);
    const QRectF box(5, 15, 10, 10);
    QTest::newRow("clockwise, vertical first chord") << c << Angles{60, 300, 180} << box;
    QTest::newRow("horizontal first chord") << c << Angles{30, 150, 270} << box;
    QTest::newRow("counter-clockwise across 0") << c << Angles{300, 10, 60} << box;
    QTest::newRow("clockwise, negative box truncated toward zero")
        << QPointF(-10.7, -20.7) << Angles{10, 300, 200} << QRectF(-16, -26, 10, 10);
}

void tst_ImagePaths::arc()
{
    QFETCH(QPointF, centre);
    QFETCH(Angles, angles);
    QFETCH(QRectF, box);
    Points points, snapped;
    for (double angle : angles) {
        points.append(OnCircle(centre, 5.4, angle));
        snapped.append(OnCircle(box.center(), box.width() / 2, angle));
    }
    const QPainterPath path = ImgItemPath(Item(4, points));
    // On the snapped circle, from p0 to p2 the way that passes p1.
    QVERIFY(QLineF(path.pointAtPercent(0), snapped[0]).length() < 0.02);
    QVERIFY(QLineF(path.pointAtPercent(1), snapped[2]).length() < 0.02);
    double gap = 1e9;
    for (int i = 0; i <= 200; ++i)
        gap = qMin(gap, QLineF(path.pointAtPercent(i / 200.0), snapped[1]).length());
    QVERIFY2(gap < 0.3, qPrintable(QString::number(gap)));
}

void tst_ImagePaths::frameRect()
{
    ImgDataRec data;
    QVERIFY(ImgFrameRect(data).isNull());
    data.items.append(new ImgItemRec(Item(1, {{-100, -100}, {100, 100}})));
    data.items.append(new ImgItemRec(Item(7, {{40, 5}, {-2, 30}, {10, -7.5}})));
    data.items.append(new ImgItemRec(Item(7, {{0, 0}, {1000, 1000}})));
    // The first frame counts; other kinds and later frames do not.
    QCOMPARE(ImgFrameRect(data), QRectF(-2, -7.5, 42, 37.5));
    qDeleteAll(data.items);
}

ZEMA_TEST(tst_ImagePaths)
#include "tst_ImagePaths.moc"
