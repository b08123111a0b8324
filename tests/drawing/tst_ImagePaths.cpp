// The outline of each primitive kind, checked by its geometry rather than by pixels.
#include "TestRegistry.h"

#include "drawing/ImgDataRec.h"
#include "drawing/ImgItemPath.h"

#include <QLineF>
#include <QtTest>

using Points = QList<QPointF>;

namespace {

ImgItemRec Item(qint32 type, const Points &points)
{
    ImgItemRec item;
    item.type = type;
    item.points = points;
    return item;
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
    void paths_data();
    void paths();
    void frameRect();
};

void tst_ImagePaths::paths_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<Points>("points");
    QTest::addColumn<Points>("elements");   // all of them, unless marks are given
    QTest::addColumn<Points>("marks");      // on the path at even steps of its length
    auto row = [](const char *name, int type, const Points &points, const Points &elements) {
        QTest::newRow(name) << type << points << elements << Points();
    };
    const Points quad{{0, 0}, {10, 5}, {5, 15}, {-5, 10}};
    row("polyline stays open", 1, quad, quad);
    row("rectangle closes, 5th ignored", 2, quad + Points{{9, 9}}, quad + quad.mid(0, 1));
    // Three points: the curve ends at p1, p2 only shapes it.
    row("spline of 3", 5, {{0, 0}, {20, 0}, {20, 20}}, {{0, 0}, {10, 0}, {20, 10}, {20, 0}});
    // Nine points: two runs; the last two points complete no run and draw nothing.
    row("spline controls mirrored", 5,
        {{0, 0}, {10, 10}, {20, 10}, {30, 0}, {40, -10}, {50, -10}, {60, 0}, {70, 10}, {80, 10}},
        {{0, 0}, {12.5, 20}, {17.5, 20}, {30, 0}, {30, 0}, {42.5, -20}, {47.5, -20}, {60, 0}});
    row("spline of 2", 5, quad.mid(0, 2), {});
    row("arc of 4", 4, quad, {});
    row("arc collinear, p2 before p1", 4, {{0, 0}, {9, 0}, {5, 0}}, {});
    // Half axes 20 along corner 0 to corner 1 and b across; a wrong turn back tilts the axes.
    auto ellipse = [](const char *name, double angle, double b) {
        const QPointF c(50, 40), u = OnCircle({}, 20, angle), v = OnCircle({}, b, angle + 90);
        QTest::newRow(name) << 3 << Points{c - u - v, c + u - v, c + u + v, c - u + v} << Points()
                            << Points{c + u, c - u, c + u};
    };
    ellipse("ellipse at 120 degrees", 120, 10);
    ellipse("ellipse, corners the other way round", -45, -10);
    // Points on a circle of radius 5.4 at the given angles, p1 halfway along the arc from p0 to
    // p2; the marks lie on the circle of the truncated box.
    auto arc = [](const char *name, QPointF centre, QList<double> angles, QRectF box) {
        Points points, marks;
        for (double angle : angles) {
            points.append(OnCircle(centre, 5.4, angle));
            marks.append(OnCircle(box.center(), box.width() / 2, angle));
        }
        QTest::newRow(name) << 4 << points << Points() << marks;
    };
    arc("arc clockwise, vertical first chord", {10.5, 20.9}, {60, 300, 180}, {5, 15, 10, 10});
    arc("arc, horizontal first chord", {10.5, 20.9}, {30, 150, 270}, {5, 15, 10, 10});
    arc("arc across 0, negative box", {-10.7, -20.7}, {300, 10, 80}, {-16, -26, 10, 10});
}

void tst_ImagePaths::paths()
{
    QFETCH(int, type);
    QFETCH(Points, points);
    QFETCH(Points, elements);
    QFETCH(Points, marks);
    const QPainterPath path = ImgItemPath(Item(type, points));
    Points drawn;
    for (int i = 0; i < path.elementCount(); ++i)
        drawn.append(path.elementAt(i));
    if (marks.isEmpty())
        QCOMPARE(drawn, elements);
    for (int i = 0; i < marks.size(); ++i) {
        const double gap = QLineF(path.pointAtPercent(i / (marks.size() - 1.0)), marks[i]).length();
        QVERIFY2(gap < 0.1, qPrintable(QString("mark %1 off by %2").arg(i).arg(gap)));
    }
}

void tst_ImagePaths::frameRect()
{
    ImgDataRec data;
    QVERIFY(ImgFrameRect(data).isNull());
    // The first frame counts; other kinds and later frames do not.
    for (const auto &item : {Item(1, {{-9, -9}, {0, 0}}), Item(7, {{4, 5}, {-2, 30}, {10, -7}}),
                             Item(7, {{0, 0}, {99, 9}})})
        data.items.append(new ImgItemRec(item));
    QCOMPARE(ImgFrameRect(data), QRectF(-2, -7, 12, 37));
    qDeleteAll(data.items);
}

ZEMA_TEST(tst_ImagePaths)
#include "tst_ImagePaths.moc"
