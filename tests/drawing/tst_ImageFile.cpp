// The drawing reader's rules, its writer's format and what a rewrite loses.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/ErrorList.h"
#include "drawing/ImgDataRec.h"
#include "drawing/ImgEditFileIO.h"

#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {

using DataPtr = std::unique_ptr<ImgDataRec, decltype(&FreeImgDataRec)>;
DataPtr Own(ImgDataRec *data) { return DataPtr(data, FreeImgDataRec); }

QByteArray Drawing(const QByteArray &items, const QByteArray &name = "pump")
{
    return XmlDocument("<imgdata><img_name>" + name + "</img_name>" + items + "</imgdata>\n");
}

DataPtr ReadOne(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    return Own(ImgEditFileIO::ReadImgData(&reader));
}

// An item of the given kind, points separated by spaces; extra children come first, type last.
QByteArray Item(const QByteArray &type, const QByteArray &points, const QByteArray &extra = {})
{
    QByteArray xml = "<item>" + extra + "<points>";
    for (const QByteArray &point : points.split(' '))
        xml += "<point>" + point + "</point>";
    return xml + "</points><type>" + type + "</type></item>";
}

const QByteArray kLine = Item("1", "0,0 10,10");

} // namespace

class tst_ImageFile : public QObject
{
    Q_OBJECT
private slots:
    void primitiveKeptOrDropped_data();
    void primitiveKeptOrDropped();
    void drawingsInStream_data();
    void drawingsInStream();
    void readWriteRead();
    void loadFile();
    void copyIsDeep();
};

void tst_ImageFile::primitiveKeptOrDropped_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<bool>("kept");
    QTest::newRow("type zero") << Item("0", "0,0 10,0") << false;
    QTest::newRow("only malformed points") << Item("1", "1,2,3 4") << false;
    QTest::newRow("small rectangle") << Item("2", "0,0 0.9,0 0.9,0.9 0,0.9") << false;
    QTest::newRow("one point text") << Item("6", "20,20") << false;
    QTest::newRow("exactly one apart") << Item("1", "0,0 1,0") << true;
    QTest::newRow("unknown kind") << Item("42", "0,0 10,10") << true;
    QTest::newRow("empty attributes") << Item("6", "0,0 30,10", "<text t=\"\" h=\"\"/>") << true;
    QTest::newRow("unknown children") << Item("5", "0,0 9,9", "<x><id>1</id></x>") << true;
}

void tst_ImageFile::primitiveKeptOrDropped()
{
    QFETCH(QByteArray, item);
    QFETCH(bool, kept);
    // A kept neighbour shows that a dropped primitive leaves the drawing intact.
    DataPtr data = ReadOne(Drawing(item + Item("1", "0,0 10,10", "<id>77</id>")));
    QVERIFY(data);
    QCOMPARE(data->items.size(), kept ? 2 : 1);
    QCOMPARE(data->items.last()->id, 77u);
}

void tst_ImageFile::drawingsInStream_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("good");
    const QByteArray open = "<?xml version=\"1.0\"?><blk>";
    const QByteArray drawing = "<imgdata><img_name>a</img_name>" + kLine + "</imgdata>";
    QTest::newRow("two after other sections")
        << open + "<blk_misc>" + kLine + "</blk_misc>" + drawing + drawing + "</blk>" << 2;
    QTest::newRow("mismatched tag") << open + "<imgdata><item><type>1</tipe></item></imgdata>" << 0;
    QTest::newRow("broken second drawing") << open + drawing + drawing.left(60) << 1;
}

void tst_ImageFile::drawingsInStream()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, good);
    QXmlStreamReader reader(xml);
    for (int i = 0; i < good; ++i) {
        DataPtr data = Own(ImgEditFileIO::ReadImgData(&reader));
        QVERIFY(data);
        QCOMPARE(data->items.size(), 1);
    }
    QVERIFY(!ImgEditFileIO::ReadImgData(&reader));
    QVERIFY(!ImgEditFileIO::ReadImgData(&reader));
}

void tst_ImageFile::readWriteRead()
{
    // In: a point needs two parts, an empty number is 0, a colour needs four parts, and numbers
    // are read as float. Out: fewer digits than were read, and text escaped.
    DataPtr data = ReadOne(Drawing(Item("6", "1.2345678,-1e-7 1,2,3 1234567,",
        "<id>4000000000</id><z>1.23456</z><pen style=\"2\" width=\"2\" color=\"1,2,3,255\"/>"
        "<brush style=\"5\" color=\"4,5,6\"/><text t=\"p&lt;&quot;&amp;&gt;&#10;\" f=\"S&amp;S\""
        " h=\"9.87\" w=\"50.04\" a=\"-12.345\"/>"), "a &amp; b"));
    QVERIFY(data);
    QCOMPARE(data->items[0]->points[0].x(), double(1.2345678f));
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    ImgEditFileIO::WriteImgData(&writer, data.get());
    int at = 0;
    for (const char *part : {"<img_name>a &amp; b</img_name>", "<id>4000000000</id>", "<z>1.23</z>",
                             "<type>6</type>", "<pen style=\"2\" width=\"2\" color=\"1,2,3,255\"/>",
                             "<brush style=\"5\" color=\"0,0,0,0\"/>",
                             "<points><point>1.23457,-1e-07</point><point>1.23457e+06,0</point>",
                             "h=\"9.9\" w=\"50.0\" a=\"-12.3\""}) {
        at = bytes.indexOf(part, at);
        QVERIFY2(at >= 0, part);
    }
    DataPtr back = ReadOne(XmlDocument(bytes));
    QVERIFY(back);
    QCOMPARE(back->img_name, QString("a & b"));
    const ImgItemRec *item = back->items[0];
    QCOMPARE(item->text, QString("p<\"&>\n"));
    QCOMPARE(item->font, QString("S&S"));
    QCOMPARE(item->pen, QPen(QBrush(QColor(1, 2, 3)), 2, Qt::DashLine));
    QCOMPARE(item->brush, QBrush(QColor(0, 0, 0, 0), Qt::Dense4Pattern));
    QCOMPARE(item->points, (QList<QPointF>{{double(1.23457f), double(-1e-07f)}, {1234570, 0}}));
    QCOMPARE(QList<float>({item->z, item->h, item->w, item->a}),
             QList<float>({1.23f, 9.9f, 50.0f, -12.3f}));
}

void tst_ImageFile::loadFile()
{
    QTemporaryDir dir;
    const QString good = dir.filePath("pump.vimg"), broken = dir.filePath("broken.vimg");
    // Only the first drawing is read, so the stray second root is never reached.
    QVERIFY(WriteBytes(good, Drawing(kLine + kLine, "pump.vimg") + "<imgdata></imgdata>"));
    QVERIFY(WriteBytes(broken, Drawing(kLine).left(60)));
    ErrorList errors;
    ImgEditFileIO io(dir.path(), &errors, 1);
    DataPtr data = Own(io.LoadImgFile(good, "Load"));
    QVERIFY(data);
    QCOMPARE(data->img_name, QString("pump"));
    QCOMPARE(data->items.size(), 2);
    QVERIFY(!io.LoadImgFile(dir.filePath("missing.vimg"), "Load"));
    QVERIFY(!io.LoadImgFile(broken, "Load"));
    QCOMPARE(errors.errors.size(), 2);
    QVERIFY(errors.errors[0].contains("missing.vimg"));
    QVERIFY(!io.reader);
}

void tst_ImageFile::copyIsDeep()
{
    DataPtr data = ReadOne(Drawing(kLine));
    DataPtr copy = Own(CopyImgDataRec(data.get()));
    QVERIFY(copy && copy->items[0] != data->items[0]);
    copy->items[0]->points[0] = QPointF(99, 99);
    QCOMPARE(data->items[0]->points[0], QPointF(0, 0));
}

ZEMA_TEST(tst_ImageFile)
#include "tst_ImageFile.moc"
