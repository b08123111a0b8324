// The drawing reader's rules, its writer's format and what a rewrite loses.
#include "TestFiles.h"
#include "TestRegistry.h"

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

// An item of the given kind, points separated by spaces; extra children come first, type last.
QByteArray Item(const QByteArray &type, const QByteArray &points, const QByteArray &extra = {})
{
    return "<item>" + extra + "<points><point>" + QByteArray(points).replace(' ', "</point><point>")
           + "</point></points><type>" + type + "</type></item>";
}

const QByteArray kLine = Item("1", "0,0 10,10");

} // namespace

class tst_ImageFile : public QObject
{
    Q_OBJECT
private slots:
    void read_data();
    void read();
    void roundTrip();
};

void tst_ImageFile::read_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QList<int>>("counts");   // items of each drawing read before the end
    // Each item beside a good line: a dropped primitive leaves the drawing intact.
    auto item = [](const char *name, const QByteArray &item, int count) {
        QTest::newRow(name) << Drawing(item + kLine) << QList<int>{count};
    };
    item("type zero", Item("0", "0,0 10,0"), 1);
    item("only malformed points", Item("1", "1,2,3 4"), 1);
    item("small rectangle", Item("2", "0,0 0.9,0 0.9,0.9 0,0.9"), 1);
    item("exactly one apart", Item("1", "0,0 1,0"), 2);
    item("unknown kind and children", Item("42", "0,0 10,10", "<x><id>1</id></x>"), 2);
    const QByteArray one = "<imgdata><img_name>a</img_name>" + kLine + "</imgdata>";
    QTest::newRow("two after other sections")
        << "<blk><blk_misc>" + kLine + "</blk_misc>" + one + one + "</blk>" << QList<int>{1, 1};
}

void tst_ImageFile::read()
{
    QFETCH(QByteArray, xml);
    QFETCH(QList<int>, counts);
    QXmlStreamReader reader(xml);
    for (int count : counts) {
        DataPtr data = Own(ImgEditFileIO::ReadImgData(&reader));
        QCOMPARE(data ? data->items.size() : -1, count);
    }
    QVERIFY(!ImgEditFileIO::ReadImgData(&reader));
}

void tst_ImageFile::roundTrip()
{
    // In: a point needs two parts, an empty number is 0, a colour needs four parts, and numbers
    // are read as float. Out: fewer digits than were read, and text escaped.
    QXmlStreamReader in(Drawing(Item("6", "1.2345678,-1e-7 1,2,3 1234567,",
        "<id>4000000000</id><z>1.23456</z><pen style=\"2\" width=\"2\" color=\"1,2,3,255\"/>"
        "<brush style=\"5\" color=\"4,5,6\"/><text t=\"p&lt;&quot;&amp;&gt;&#10;\" f=\"S&amp;S\""
        " h=\"9.87\" w=\"50.04\" a=\"-12.345\"/>"), "a &amp; b.vimg"));
    DataPtr data = Own(ImgEditFileIO::ReadImgData(&in));
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
    // The loader reads the first drawing only, so the stray second root is never reached.
    QTemporaryDir dir;
    const QString good = dir.filePath("a.vimg"), broken = dir.filePath("broken.vimg");
    QVERIFY(WriteBytes(good, XmlDocument(bytes) + "<imgdata></imgdata>"));
    QVERIFY(WriteBytes(broken, bytes.left(40)));
    ImgEditFileIO io(dir.path(), nullptr, 1);
    DataPtr back = Own(io.LoadImgFile(good, "Load"));
    QVERIFY(back);
    QCOMPARE((QStringList{back->img_name, back->items[0]->text, back->items[0]->font}),
             (QStringList{"a & b", "p<\"&>\n", "S&S"}));
    // A copy owns its own primitives: a shared one would be freed twice.
    DataPtr copy = Own(CopyImgDataRec(back.get()));
    QVERIFY(copy && copy->items[0] != back->items[0]);
    QVERIFY(!io.LoadImgFile(broken, "Load"));
    QVERIFY(!io.reader);
}

ZEMA_TEST(tst_ImageFile)
#include "tst_ImageFile.moc"
