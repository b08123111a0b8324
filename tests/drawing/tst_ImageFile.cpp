// The drawing reader's rules, its writer's format and what a rewrite loses.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "drawing/ImgDataRec.h"
#include "drawing/ImgEditFileIO.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {

struct DataDeleter {
    void operator()(ImgDataRec *data) const { FreeImgDataRec(data); }
};
using DataPtr = std::unique_ptr<ImgDataRec, DataDeleter>;

QByteArray Drawing(const QByteArray &items, const QByteArray &name = "pump")
{
    return XmlDocument("<imgdata><img_name>" + name + "</img_name>" + items + "</imgdata>\n");
}

DataPtr ReadOne(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return DataPtr(ImgEditFileIO::ReadImgData(&reader));
}

QByteArray Written(const ImgDataRec *data)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    ImgEditFileIO::WriteImgData(&writer, data);
    return bytes;
}

// Polyline from (0,0) to (10,10), with one more child spliced in.
QByteArray Line(const QByteArray &extra)
{
    return "<item><type>1</type><points><point>0,0</point><point>10,10</point></points>" +
           extra + "</item>";
}

} // namespace

class tst_ImageFile : public QObject
{
    Q_OBJECT
private slots:
    void primitiveKeptOrDropped_data();
    void primitiveKeptOrDropped();
    void fieldsRead();
    void colourParts_data();
    void colourParts();
    void nameSuffix_data();
    void nameSuffix();
    void drawingsInOneStream();
    void brokenXml_data();
    void brokenXml();
    void writerFormat();
    void roundTrip();
    void rewriteLosesPrecision();
    void loadFile();
    void copyIsDeep();
};

void tst_ImageFile::primitiveKeptOrDropped_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<bool>("kept");
    auto points = [](const QByteArray &type, std::initializer_list<const char *> list) {
        QByteArray xml = "<item><type>" + type + "</type><points>";
        for (const char *point : list)
            xml += QByteArray("<point>") + point + "</point>";
        return xml + "</points></item>";
    };
    QTest::newRow("polyline") << points("1", {"0,0", "10,0"}) << true;
    QTest::newRow("type zero") << points("0", {"0,0", "10,0"}) << false;
    QTest::newRow("no type") << QByteArray("<item><points><point>0,0</point><point>9,9</point>"
                                           "</points></item>") << false;
    QTest::newRow("no points") << QByteArray("<item><type>1</type></item>") << false;
    QTest::newRow("only malformed points") << points("1", {"1,2,3", "4"}) << false;
    QTest::newRow("small rectangle") << points("2", {"0,0", "0.9,0", "0.9,0.9", "0,0.9"}) << false;
    QTest::newRow("small polyline") << points("1", {"5,5", "5.5,4.2", "4.1,5.9"}) << false;
    QTest::newRow("one point text") << points("6", {"20,20"}) << false;
    QTest::newRow("one point frame") << points("7", {"20,20"}) << false;
    QTest::newRow("exactly one apart") << points("1", {"0,0", "1,0"}) << true;
    QTest::newRow("far on one axis only") << points("1", {"0,0", "0.5,-3"}) << true;
    QTest::newRow("far from first only") << points("1", {"0,0", "0.5,0.5", "0.5,1.5"}) << true;
    QTest::newRow("unknown kind") << points("42", {"0,0", "10,10"}) << true;
    QTest::newRow("empty text attribute")
        << QByteArray("<item><type>6</type><text t=\"\" f=\"\" h=\"\" w=\"\" a=\"\"/><points>"
                      "<point>0,0</point><point>30,10</point></points></item>") << true;
    QTest::newRow("children in any order")
        << QByteArray("<item><points><point>0,0</point><point>9,9</point></points>"
                      "<extra><deep>1</deep></extra><type>5</type></item>") << true;
}

void tst_ImageFile::primitiveKeptOrDropped()
{
    QFETCH(QByteArray, item);
    QFETCH(bool, kept);
    // A kept neighbour shows that a dropped primitive leaves the drawing intact.
    DataPtr data = ReadOne(Drawing(item + Line("<id>77</id>")));
    QVERIFY(data);
    QCOMPARE(data->items.size(), kept ? 2 : 1);
    QCOMPARE(data->items.last()->id, 77u);
}

void tst_ImageFile::fieldsRead()
{
    DataPtr data = ReadOne(Drawing(
        "<item><id>4000000000</id><z>-2.5</z><type>3</type>"
        "<pen style=\"2\" width=\"3\" color=\"10,20,30,40\"/>"
        "<brush style=\"1\" color=\"50,60,70,80\"/>"
        "<points><point>0.1,0.2</point><point>1,2,3</point><point>12.5,-7</point>"
        "<point>,7</point><point>8</point><point>8,</point></points>"
        "<text t=\"V&lt;1&gt;\" f=\"Courier\" h=\"9.5\" w=\"50\" a=\"-30.25\"/></item>"));
    QVERIFY(data);
    QCOMPARE(data->items.size(), 1);
    const ImgItemRec *item = data->items[0];
    QCOMPARE(item->id, 4000000000u);
    QCOMPARE(item->z, -2.5f);
    QCOMPARE(item->type, 3);
    QCOMPARE(item->pen.style(), Qt::DashLine);
    QCOMPARE(item->pen.width(), 3);
    QCOMPARE(item->pen.color(), QColor(10, 20, 30, 40));
    QCOMPARE(item->brush.style(), Qt::SolidPattern);
    QCOMPARE(item->brush.color(), QColor(50, 60, 70, 80));
    // Points without exactly two parts are skipped; an empty number is 0. Float precision, not
    // double: the numbers are parsed as float and widened.
    const QList<QPointF> expected{QPointF(double(0.1f), double(0.2f)), QPointF(12.5, -7),
                                  QPointF(0, 7), QPointF(8, 0)};
    QCOMPARE(item->points, expected);
    QVERIFY(item->points[0].x() != 0.1);
    QCOMPARE(item->text, QString("V<1>"));
    QCOMPARE(item->font, QString("Courier"));
    QCOMPARE(item->h, 9.5f);
    QCOMPARE(item->w, 50.0f);
    QCOMPARE(item->a, -30.25f);
}

void tst_ImageFile::colourParts_data()
{
    QTest::addColumn<QByteArray>("color");
    QTest::addColumn<bool>("applied");
    QTest::newRow("four parts") << QByteArray("1,2,3,4") << true;
    QTest::newRow("three parts") << QByteArray("1,2,3") << false;
    QTest::newRow("five parts") << QByteArray("1,2,3,4,5") << false;
    QTest::newRow("empty") << QByteArray("") << false;
}

void tst_ImageFile::colourParts()
{
    QFETCH(QByteArray, color);
    QFETCH(bool, applied);
    DataPtr data = ReadOne(Drawing(Line("<pen style=\"1\" width=\"1\" color=\"" + color +
                                        "\"/><brush style=\"1\" color=\"" + color + "\"/>")));
    QVERIFY(data);
    const ImgItemRec *item = data->items[0];
    QCOMPARE(item->pen.color(), applied ? QColor(1, 2, 3, 4) : QPen().color());
    QCOMPARE(item->brush.color(), applied ? QColor(1, 2, 3, 4) : QColor(0, 0, 0, 0));
}

void tst_ImageFile::nameSuffix_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QByteArray("pump") << "pump";
    QTest::newRow("with suffix") << QByteArray("pump.vimg") << "pump";
    QTest::newRow("every occurrence") << QByteArray("a.vimg.b.vimg") << "a.b";
    QTest::newRow("other case kept") << QByteArray("pump.VIMG") << "pump.VIMG";
}

void tst_ImageFile::nameSuffix()
{
    QFETCH(QByteArray, stored);
    QFETCH(QString, name);
    DataPtr data = ReadOne(Drawing(QByteArray(), stored));
    QVERIFY(data);
    QCOMPARE(data->img_name, name);
    QVERIFY(data->items.isEmpty());
}

void tst_ImageFile::drawingsInOneStream()
{
    // As in the block definition file: other sections first, the drawings last and nested.
    const QByteArray xml = XmlDocument(
        "<blk_def_data><blk_misc><item><type>1</type></item></blk_misc>"
        "<imgdata><img_name>first</img_name><junk><img_name>no</img_name></junk>" +
        Line(QByteArray()) + "</imgdata>"
        "<imgdata><img_name>second</img_name>" + Line(QByteArray()) + Line(QByteArray()) +
        "</imgdata></blk_def_data>");
    QXmlStreamReader reader(xml);
    DataPtr first(ImgEditFileIO::ReadImgData(&reader));
    DataPtr second(ImgEditFileIO::ReadImgData(&reader));
    DataPtr third(ImgEditFileIO::ReadImgData(&reader));
    QVERIFY(first);
    QVERIFY(second);
    QVERIFY(!third);
    // Token-by-token skipping reads a name nested in an unknown child too; the last one wins.
    QCOMPARE(first->img_name, QString("no"));
    QCOMPARE(first->items.size(), 1);
    QCOMPARE(second->img_name, QString("second"));
    QCOMPARE(second->items.size(), 2);
    QVERIFY(!reader.hasError());
}

void tst_ImageFile::brokenXml_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("good");
    const QByteArray head = "<?xml version=\"1.0\"?><blk><imgdata><img_name>a</img_name>";
    const QByteArray whole = head + Line(QByteArray()) + "</imgdata>";
    QTest::newRow("truncated in an item") << head + "<item><type>1</type><points><point>0,0" << 0;
    QTest::newRow("truncated after an item") << head + Line(QByteArray()) << 0;
    QTest::newRow("mismatched tag") << head + "<item><type>1</tipe></item></imgdata>" << 0;
    QTest::newRow("broken second drawing")
        << whole + "<imgdata><img_name>b</img_name>" + Line("<z>1</z") + "</imgdata></blk>" << 1;
    QTest::newRow("empty input") << QByteArray() << 0;
    QTest::newRow("no drawing") << QByteArray("<blk><other/></blk>") << 0;
}

void tst_ImageFile::brokenXml()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, good);
    QXmlStreamReader reader(xml);
    for (int i = 0; i < good; ++i)
        QVERIFY(DataPtr(ImgEditFileIO::ReadImgData(&reader)));
    QVERIFY(!ImgEditFileIO::ReadImgData(&reader));
    // The stream stays at its end: another call gives nothing as well.
    QVERIFY(!ImgEditFileIO::ReadImgData(&reader));
}

void tst_ImageFile::writerFormat()
{
    ImgDataRec data;
    data.img_name = "valve";
    auto *item = new ImgItemRec;
    item->id = 12;
    item->z = 3;
    item->type = 6;
    item->pen = QPen(QBrush(QColor(1, 2, 3)), 2, Qt::DashLine);
    item->brush = QBrush(QColor(4, 5, 6, 7), Qt::Dense4Pattern);
    item->points = {QPointF(0.5, -1e-7), QPointF(1234567, 2)};
    item->text = "p<\"&\">";
    item->h = 8;
    item->w = 6.24f;
    item->a = -90;
    data.items.append(item);
    const QByteArray expected =
        "<imgdata><img_name>valve</img_name><item><id>12</id><z>3.00</z><type>6</type>"
        "<pen style=\"2\" width=\"2\" color=\"1,2,3,255\"/>"
        "<brush style=\"5\" color=\"4,5,6,7\"/>"
        "<points><point>0.5,-1e-07</point><point>1.23457e+06,2</point></points>"
        "<text t=\"p&lt;&quot;&amp;&quot;&gt;\" f=\"\" h=\"8.0\" w=\"6.2\" a=\"-90.0\"/>"
        "</item></imgdata>";
    QCOMPARE(Written(&data), expected);
    qDeleteAll(data.items);
    QCOMPARE(Written(nullptr), QByteArray());
}

void tst_ImageFile::roundTrip()
{
    ImgDataRec data;
    data.img_name = "a & b";
    const int kinds[] = {5, 99};
    for (int kind : kinds) {
        auto *item = new ImgItemRec;
        item->id = 0xfffffff0u + kind;
        item->z = kind * 0.25f;
        item->type = kind;
        item->pen = QPen(QBrush(QColor(kind, 2, 3, 250)), kind, Qt::PenStyle(kind % 6));
        item->brush = QBrush(QColor(9, 8, kind, 6), Qt::BrushStyle(kind % 15));
        item->points = {QPointF(-kind, 0.5), QPointF(100.25, kind * 10)};
        item->text = QString("T<%1>\n\"x\"").arg(kind);   // attribute escaping must hold
        item->font = "Sans & Serif";
        item->h = 10.5f;
        item->w = kind;
        item->a = -45.5f;
        data.items.append(item);
    }
    QByteArray bytes = XmlDocument("<root>");
    bytes += Written(&data);
    bytes += "</root>";
    DataPtr read = ReadOne(bytes);
    QVERIFY(read);
    QCOMPARE(read->img_name, data.img_name);
    QCOMPARE(read->items.size(), data.items.size());
    for (int i = 0; i < data.items.size(); ++i) {
        const ImgItemRec *a = data.items[i];
        const ImgItemRec *b = read->items[i];
        QCOMPARE(b->id, a->id);
        QCOMPARE(b->z, a->z);
        QCOMPARE(b->type, a->type);
        QCOMPARE(b->pen.style(), a->pen.style());
        QCOMPARE(b->pen.width(), a->pen.width());
        QCOMPARE(b->pen.color(), a->pen.color());
        QCOMPARE(b->brush, a->brush);
        QCOMPARE(b->points, a->points);
        QCOMPARE(b->text, a->text);
        QCOMPARE(b->font, a->font);
        QCOMPARE(b->h, a->h);
        QCOMPARE(b->w, a->w);
        QCOMPARE(b->a, a->a);
    }
    qDeleteAll(data.items);
}

void tst_ImageFile::rewriteLosesPrecision()
{
    DataPtr data = ReadOne(Drawing(
        "<item><z>1.23456</z><type>6</type><text t=\"x\" h=\"9.87\" w=\"50.04\" a=\"12.345\"/>"
        "<points><point>1.2345678,123456.7</point><point>0.000123456789,-98765.4321</point>"
        "</points></item>"));
    QVERIFY(data);
    DataPtr again = ReadOne(XmlDocument(Written(data.get())));
    QVERIFY(again);
    const ImgItemRec *item = again->items[0];
    QCOMPARE(item->z, 1.23f);
    QCOMPARE(item->h, 9.9f);
    QCOMPARE(item->w, 50.0f);
    QCOMPARE(item->a, 12.3f);
    const QList<QPointF> expected{QPointF(double(1.23457f), 123457),
                                  QPointF(double(0.000123457f), -98765.4)};
    QCOMPARE(item->points.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(float(item->points[i].x()), float(expected[i].x()));
        QCOMPARE(float(item->points[i].y()), float(expected[i].y()));
    }
}

void tst_ImageFile::loadFile()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString good = dir.filePath("pump.vimg");
    const QString broken = dir.filePath("broken.vimg");
    // Only the first drawing is read, so the stray second root is never reached.
    QVERIFY(WriteBytes(good, Drawing(Line(QByteArray()) + Line(QByteArray()), "pump.vimg") +
                                 "<imgdata><img_name>ignored</img_name></imgdata>"));
    QVERIFY(WriteBytes(broken, Drawing(Line(QByteArray())).left(60)));

    ErrorList errors;
    ImgEditFileIO io(dir.path(), &errors, 1);
    DataPtr data(io.LoadImgFile(good, "Load"));
    QVERIFY(data);
    QCOMPARE(data->img_name, QString("pump"));
    QCOMPARE(data->items.size(), 2);
    QVERIFY(errors.IsEmpty());

    QVERIFY(!io.LoadImgFile(dir.filePath("missing.vimg"), "Load"));
    QCOMPARE(errors.errors.size(), 1);
    QVERIFY(errors.errors[0].contains("missing.vimg"));

    QVERIFY(!io.LoadImgFile(broken, "Load"));
    QCOMPARE(errors.errors.size(), 2);
    QVERIFY(errors.errors[1].contains("broken.vimg"));
    QVERIFY(!io.reader);
}

void tst_ImageFile::copyIsDeep()
{
    DataPtr data = ReadOne(Drawing(Line("<text t=\"a\"/>") + Line("<id>5</id>")));
    QVERIFY(data);
    DataPtr copy(CopyImgDataRec(data.get()));
    QVERIFY(copy);
    QCOMPARE(copy->items.size(), 2);
    QVERIFY(copy->items[0] != data->items[0]);
    copy->items[0]->points[0] = QPointF(99, 99);
    copy->items[0]->text = "b";
    copy->items[1]->pen.setColor(Qt::red);
    QCOMPARE(data->items[0]->points[0], QPointF(0, 0));
    QCOMPARE(data->items[0]->text, QString("a"));
    QCOMPARE(data->items[1]->pen.color(), QColor(Qt::black));
    QVERIFY(!CopyImgDataRec(nullptr));
}

ZEMA_TEST(tst_ImageFile)
#include "tst_ImageFile.moc"
