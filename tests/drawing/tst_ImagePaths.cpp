// The outline of each primitive kind, checked by its geometry rather than by pixels.
#include "TestRegistry.h"

#include "drawing/ImgDataRec.h"
#include "drawing/ImgItemPath.h"

#include <QLineF>
#include <QPolygonF>
#include <QtMath>
#include <QtTest>

namespace {

ImgItemRec Item(qint32 type, const QList<QPointF> &points)
{
    ImgItemRec item;
    item.type = type;
    item.points = points;
    return item;
}

// A point at an angle on a circle, the angle counter-clockwise on the screen as in QLineF.
QPointF OnCircle(const QPointF &centre, double radius, double degrees)
{
    const double rad = qDegreesToRadians(degrees);
    return centre + QPointF(radius * qCos(rad), -radius * qSin(rad));
}

QList<QPointF> Vertices(const QPainterPath &path)
{
    QList<QPointF> vertices;
    for (const QPolygonF &polygon : path.toSubpathPolygons())
        for (const QPointF &vertex : polygon)
            vertices.append(vertex);
    return vertices;
}

double SegmentDistance(const QPointF &p, const QPointF &a, const QPointF &b)
{
    const QPointF ab = b - a;
    const double len2 = QPointF::dotProduct(ab, ab);
    const double t = len2 > 0 ? qBound(0.0, QPointF::dotProduct(p - a, ab) / len2, 1.0) : 0.0;
    return QLineF(p, a + t * ab).length();
}

double DistanceToPath(const QPainterPath &path, const QPointF &point)
{
    double best = 1e300;
    for (const QPolygonF &polygon : path.toSubpathPolygons())
        for (int i = 1; i < polygon.size(); ++i)
            best = qMin(best, SegmentDistance(point, polygon[i - 1], polygon[i]));
    return best;
}

bool Near(const QPointF &a, const QPointF &b, double tolerance = 0.0001)
{
    return QLineF(a, b).length() < tolerance;
}

QString Show(const QPointF &p)
{
    return QString("(%1, %2)").arg(p.x()).arg(p.y());
}

} // namespace

class tst_ImagePaths : public QObject
{
    Q_OBJECT
private slots:
    void polyline();
    void rotatedRectangle();
    void ellipse_data();
    void ellipse();
    void arc_data();
    void arc();
    void arcDrawsNothing_data();
    void arcDrawsNothing();
    void splineOfThree();
    void splineRuns_data();
    void splineRuns();
    void splineControls();
    void noPath_data();
    void noPath();
    void frameRect();
};

void tst_ImagePaths::polyline()
{
    const QList<QPointF> points{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const QPainterPath path = ImgItemPath(Item(1, points));
    QCOMPARE(path.elementCount(), 4);
    QVERIFY(path.elementAt(0).isMoveTo());
    for (int i = 0; i < 4; ++i)
        QCOMPARE(QPointF(path.elementAt(i)), points[i]);
    // Not closed: nothing leads back to the first point.
    QVERIFY(DistanceToPath(path, QPointF(0, 5)) > 4.9);
}

void tst_ImagePaths::rotatedRectangle()
{
    const QPointF centre(20, 30);
    QList<QPointF> corners;
    for (double angle : {30.0 + 135, 30.0 + 45, 30.0 - 45, 30.0 - 135})
        corners.append(OnCircle(centre, 10, angle));
    const QPainterPath path = ImgItemPath(Item(2, corners));
    QCOMPARE(path.elementCount(), 5);
    for (int i = 0; i < 5; ++i)
        QVERIFY(Near(path.elementAt(i), corners[i % 4]));
    const QRectF box = path.boundingRect();
    const double half = 10 * qCos(qDegreesToRadians(15.0));
    QVERIFY(Near(box.center(), centre));
    QVERIFY(qAbs(box.width() / 2 - half) < 0.0001);
    QVERIFY(qAbs(box.height() / 2 - half) < 0.0001);
    // Extra points beyond the four corners play no part.
    QCOMPARE(ImgItemPath(Item(2, corners + QList<QPointF>{{500, 500}})).boundingRect(), box);
}

void tst_ImagePaths::ellipse_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("clockwise");
    QTest::newRow("square with the axes") << 0.0 << false;
    QTest::newRow("at 30 degrees") << 30.0 << false;
    QTest::newRow("at 120 degrees") << 120.0 << false;
    QTest::newRow("at -45 degrees") << -45.0 << false;
    QTest::newRow("corners the other way round") << 30.0 << true;
}

void tst_ImagePaths::ellipse()
{
    QFETCH(double, angle);
    QFETCH(bool, clockwise);
    const QPointF centre(50, 40);
    const double a = 20, b = 10;   // half axes along and across the line from point 0 to 1
    const double rad = qDegreesToRadians(angle);
    const QPointF u(qCos(rad), -qSin(rad));
    const QPointF v = clockwise ? QPointF(-u.y(), u.x()) : QPointF(u.y(), -u.x());
    const QList<QPointF> corners{centre - a * u - b * v, centre + a * u - b * v,
                                 centre + a * u + b * v, centre - a * u + b * v};
    const QPainterPath path = ImgItemPath(Item(3, corners));
    const QList<QPointF> vertices = Vertices(path);
    QVERIFY(vertices.size() > 8);

    QPointF farthest = vertices[0];
    for (const QPointF &vertex : vertices) {
        const QPointF d = vertex - centre;
        const double along = QPointF::dotProduct(d, u) / a;
        const double across = QPointF::dotProduct(d, v) / b;
        QVERIFY2(qAbs(along * along + across * across - 1) < 0.01, qPrintable(Show(vertex)));
        if (QLineF(centre, vertex).length() > QLineF(centre, farthest).length())
            farthest = vertex;
    }
    // The extreme points lie on the long axis, which runs along the frame's first edge.
    QVERIFY(qAbs(QLineF(centre, farthest).length() - a) < 0.05);
    const QPointF dir = (farthest - centre) / a;
    QVERIFY2(qAbs(dir.x() * u.y() - dir.y() * u.x()) < 0.02, qPrintable(Show(farthest)));

    const QRectF box = path.boundingRect();
    const double half_w = qSqrt(a * a * u.x() * u.x() + b * b * v.x() * v.x());
    const double half_h = qSqrt(a * a * u.y() * u.y() + b * b * v.y() * v.y());
    QVERIFY(Near(box.center(), centre, 0.05));
    QVERIFY2(qAbs(box.width() / 2 - half_w) < 0.1, qPrintable(QString::number(box.width())));
    QVERIFY2(qAbs(box.height() / 2 - half_h) < 0.1, qPrintable(QString::number(box.height())));
}

void tst_ImagePaths::arc_data()
{
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("a0");
    QTest::addColumn<double>("a1");
    QTest::addColumn<double>("a2");
    QTest::addColumn<QRectF>("box");
    const QPointF c(10.5, 20.5);
    const QRectF box(5, 15, 10, 10);
    QTest::newRow("counter-clockwise half") << c << 5.0 << 0.0 << 90.0 << 180.0 << box;
    QTest::newRow("clockwise half") << c << 5.0 << 0.0 << 270.0 << 180.0 << box;
    QTest::newRow("clockwise three quarters") << c << 5.0 << 0.0 << 270.0 << 90.0 << box;
    QTest::newRow("counter-clockwise across 0") << c << 5.0 << 300.0 << 10.0 << 60.0 << box;
    QTest::newRow("vertical first chord") << c << 5.0 << 60.0 << 300.0 << 180.0 << box;
    QTest::newRow("horizontal first chord") << c << 5.0 << 30.0 << 150.0 << 270.0 << box;
    QTest::newRow("vertical then horizontal chord") << c << 5.0 << 45.0 << 315.0 << 225.0 << box;
    QTest::newRow("horizontal then vertical chord") << c << 5.0 << 135.0 << 45.0 << 315.0 << box;
    QTest::newRow("box truncated") << QPointF(10.7, 20.9) << 5.0 << 10.0 << 100.0 << 200.0 << box;
    QTest::newRow("negative box truncated toward zero")
        << QPointF(-10.7, -20.7) << 5.0 << 10.0 << 100.0 << 200.0 << QRectF(-15, -25, 10, 10);
    QTest::newRow("radius truncated") << QPointF(0.5, 0.5) << 7.4 << 20.0 << 150.0 << 250.0
                                      << QRectF(-6, -6, 14, 14);
}

void tst_ImagePaths::arc()
{
    QFETCH(QPointF, centre);
    QFETCH(double, radius);
    QFETCH(double, a0);
    QFETCH(double, a1);
    QFETCH(double, a2);
    QFETCH(QRectF, box);
    const QPainterPath path = ImgItemPath(
        Item(4, {OnCircle(centre, radius, a0), OnCircle(centre, radius, a1),
                 OnCircle(centre, radius, a2)}));
    QVERIFY(!path.isEmpty());
    // The arc lies on the snapped box, at the angles the points have about the true centre.
    const double r = box.width() / 2;
    for (const QPointF &vertex : Vertices(path))
        QVERIFY2(qAbs(QLineF(box.center(), vertex).length() - r) < 0.01, qPrintable(Show(vertex)));
    QVERIFY(path.elementAt(0).isMoveTo());
    QVERIFY2(Near(path.elementAt(0), OnCircle(box.center(), r, a0), 0.02),
             qPrintable(Show(path.elementAt(0))));
    QVERIFY(Near(path.currentPosition(), OnCircle(box.center(), r, a2), 0.02));
    const double gap = DistanceToPath(path, OnCircle(box.center(), r, a1));
    // Within the flattening of the curve; the other way round would miss p1 by whole units.
    QVERIFY2(gap < 0.3, qPrintable(QString::number(gap)));
}

void tst_ImagePaths::arcDrawsNothing_data()
{
    QTest::addColumn<QList<QPointF>>("points");
    QTest::newRow("four points") << QList<QPointF>{{15, 20}, {10, 15}, {5, 20}, {10, 25}};
    QTest::newRow("collinear") << QList<QPointF>{{0, 0}, {5, 5}, {10, 10}};
    QTest::newRow("collinear with p2 before p1") << QList<QPointF>{{0, 0}, {10, 0}, {5, 0}};
    QTest::newRow("two points") << QList<QPointF>{{0, 0}, {10, 10}};
    QTest::newRow("one point") << QList<QPointF>{{3, 4}};
    QTest::newRow("no points") << QList<QPointF>{};
}

void tst_ImagePaths::arcDrawsNothing()
{
    QFETCH(QList<QPointF>, points);
    QVERIFY(ImgItemPath(Item(4, points)).isEmpty());
}

void tst_ImagePaths::splineOfThree()
{
    const QPointF p0(0, 0), p1(20, 0), p2(20, 20);
    const QPainterPath path = ImgItemPath(Item(5, {p0, p1, p2}));
    QCOMPARE(path.elementCount(), 4);
    QVERIFY(path.elementAt(0).isMoveTo());
    QCOMPARE(QPointF(path.elementAt(0)), p0);
    QCOMPARE(path.elementAt(1).type, QPainterPath::CurveToElement);
    QCOMPARE(QPointF(path.elementAt(1)), QPointF(10, 0));
    QCOMPARE(QPointF(path.elementAt(2)), QPointF(20, 10));
    // Ends at p1; p2 only shapes the curve.
    QCOMPARE(QPointF(path.elementAt(3)), p1);
}

void tst_ImagePaths::splineRuns_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("segments");
    QTest::newRow("2 points") << 2 << 0;
    QTest::newRow("4 points") << 4 << 1;
    QTest::newRow("5 points") << 5 << 1;
    QTest::newRow("6 points") << 6 << 1;
    QTest::newRow("7 points") << 7 << 2;
    QTest::newRow("9 points") << 9 << 2;
    QTest::newRow("10 points") << 10 << 3;
}

void tst_ImagePaths::splineRuns()
{
    QFETCH(int, count);
    QFETCH(int, segments);
    QList<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.append(QPointF(i * 10, (i % 2) * 10));
    const QPainterPath path = ImgItemPath(Item(5, points));
    QCOMPARE(path.elementCount(), 4 * segments);
    for (int k = 0; k < segments; ++k) {
        QVERIFY(path.elementAt(4 * k).isMoveTo());
        QCOMPARE(QPointF(path.elementAt(4 * k)), points[3 * k]);
        QCOMPARE(QPointF(path.elementAt(4 * k + 3)), points[3 * k + 3]);
    }
}

void tst_ImagePaths::splineControls()
{
    const QList<QPointF> points{{0, 0},   {10, 10},  {20, 10}, {30, 0},
                                {40, -10}, {50, -10}, {60, 0}};
    const QPainterPath path = ImgItemPath(Item(5, points));
    QCOMPARE(path.elementCount(), 8);
    QCOMPARE(QPointF(path.elementAt(1)), QPointF(12.5, 20));
    QCOMPARE(QPointF(path.elementAt(2)), QPointF(17.5, 20));
    QCOMPARE(QPointF(path.elementAt(5)), QPointF(42.5, -20));
    QCOMPARE(QPointF(path.elementAt(6)), QPointF(47.5, -20));
}

void tst_ImagePaths::noPath_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("count");
    QTest::newRow("text") << 6 << 4;
    QTest::newRow("frame") << 7 << 4;
    QTest::newRow("invalid") << 0 << 4;
    QTest::newRow("unknown kind") << 42 << 4;
    QTest::newRow("rectangle of three") << 2 << 3;
    QTest::newRow("ellipse of three") << 3 << 3;
    QTest::newRow("polyline of none") << 1 << 0;
}

void tst_ImagePaths::noPath()
{
    QFETCH(int, type);
    QFETCH(int, count);
    const QList<QPointF> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    QVERIFY(ImgItemPath(Item(type, square.mid(0, count))).isEmpty());
}

void tst_ImagePaths::frameRect()
{
    ImgDataRec data;
    QVERIFY(ImgFrameRect(data).isNull());
    data.items.append(new ImgItemRec(Item(1, {{-100, -100}, {100, 100}})));
    QVERIFY(ImgFrameRect(data).isNull());
    data.items.append(new ImgItemRec(Item(7, {{40, 5}, {-2, 30}, {10, -7.5}})));
    data.items.append(new ImgItemRec(Item(7, {{0, 0}, {1000, 1000}})));
    QCOMPARE(ImgFrameRect(data), QRectF(-2, -7.5, 42, 37.5));
    qDeleteAll(data.items);
}

ZEMA_TEST(tst_ImagePaths)
#include "tst_ImagePaths.moc"
