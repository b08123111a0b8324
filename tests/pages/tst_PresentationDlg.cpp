// The presentation page on small blocks in a hidden main window: every message of its checks,
// the repairs they leave, and the table behaviour the block's port list depends on.
#include "PageWindow.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "app/MainWindow.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"
#include "pages/PresentationDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "params/ParameterDlg.h"
#include "schematics/BlkSchemeData.h"
// Through a macro, so that the suite's own form compiler does not look for the form beside it.
#define ZEMA_PRES_FORM "ui_PresentationDlg.h"
#include ZEMA_PRES_FORM

#include <QBuffer>
#include <QTabWidget>
#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>

namespace {

QStringList Fields(const QString &spec, int count)
{
    QStringList fields = spec.split('|');
    while (fields.size() < count)
        fields.append(QString());
    return fields;
}

// "name|grp|entity|value"
BlkImage *Image(const QString &spec)
{
    const QStringList f = Fields(spec, 4);
    return new BlkImage{f[0], f[1], f[2], f[3]};
}

// "img|text|grp|entity"
BlkImageText *Text(const QString &spec)
{
    const QStringList f = Fields(spec, 4);
    return new BlkImageText{f[0], f[1], f[2], f[3]};
}

// "name|type|placement|distance|conn. req.|visibility|grp|entity|value|multiple|grp|entity|text|dx|dy",
// the coded columns by their words on the page.
BlkPort *Port(const QString &spec)
{
    const QStringList f = Fields(spec, 15);
    auto *port = new BlkPort;
    port->name = f[0];
    port->type = f[1];
    port->placement = f[2];
    port->per_distance = f[3].toFloat();
    port->conn_req = qMax(0, QStringList{"No", "Yes", "Yes (code dependent)"}.indexOf(f[4]));
    port->vport_para = qMax(0, QStringList{"Visible", "Invisible", "Parameter Based"}.indexOf(f[5]));
    port->vport_grp = f[6];
    port->vport_entity = f[7];
    port->vport_value = f[8];
    port->mport_para = f[9] == "Parameter Based";
    port->mport_grp = f[10];
    port->mport_entity = f[11];
    port->dis_text = f[12];
    port->text_dx = f[13].toFloat();
    port->text_dy = f[14].toFloat();
    return port;
}

// The drawings "img1" and "img2", and unless told otherwise the parameter group "G" with "E"
// (values a, b) and "F" (no values).
struct Opened {
    QTemporaryDir tmp;
    PageWindow w{tmp.path()};
    PresentationDlg *page = nullptr;
    bool ok = false;

    explicit Opened(const std::function<void(BlkPresData *)> &fill = {}, bool parameters = true)
    {
        BlockData *block = PageWindow::NewBlockRecord("blk");
        // The sections after the scheme are read only when there is one.
        block->scheme = new BlkSchemeData;
        if (parameters) {
            auto *group = new ParaGroup;
            group->header = "G";
            auto *entity = new ParaEntity("E");
            entity->values = QStringList{"a", "b"};
            group->para_entity << entity << new ParaEntity("F");
            block->params->para_grp << group;
        }
        block->images = new QList<ImgDataRec *>;
        for (const char *name : {"img1", "img2"})
            block->images->append(new ImgDataRec{name, {}});
        if (fill)
            fill(block->pres);
        ok = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        page = w->pres_page;
        if (page)
            page->para_data = w->block->params;
    }
    QString Dir() const { return tmp.path() + "/blk"; }
    ParaEntity *Config(const char *group, const char *label) const
    {
        return FindEntity(w->config_page->data, group, label);
    }
};

QStringList Rows(const QTableWidget *table)
{
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int col = 0; col < table->columnCount(); ++col)
            cells << (table->item(row, col) ? table->item(row, col)->text() : "-");
        rows << cells.join('|');
    }
    return rows;
}

void SetCell(QTableWidget *table, int row, int col, const QString &text)
{
    table->item(row, col)->setText(text);
}

// Opens the cell's editor as a click and a double click would; null when there is none.
QComboBox *OpenCombo(TableWidget *table, int row, int col)
{
    table->CellClicked(row, col);
    table->CellDoubleClicked(row, col);
    return table->cellWidget(row, col) ? table->combo.data() : nullptr;
}

QStringList Items(const QComboBox *cbox)
{
    QStringList items;
    for (int i = 0; i < cbox->count(); ++i)
        items << cbox->itemText(i);
    return items;
}

QByteArray Xml(const BlkPresData *data)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QXmlStreamWriter writer(&buffer);
    BlkPresFileIO::WritePresData(&writer, data);
    return buffer.data();
}

QStringList slot_warnings;

void RecordSlotWarnings(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (text.contains("connectSlotsByName"))
        slot_warnings << text;
}

} // namespace

class tst_PresentationDlg : public QObject
{
    Q_OBJECT

private slots:
    void zzShot()
    {
        Opened o;
        o.w->resize(1024, 600);
        o.w->show();
        o.w->tabs->setCurrentIndex(4);
        for (int i = 0; i < 5; ++i) QApplication::processEvents();
        QWidget *area = o.page->parentWidget();
        qDebug() << "min" << o.page->minimumSizeHint() << "page" << o.page->size() << "viewport" << area->size();
        o.w->grab().save("/tmp/pres/shot.png");
    }
    void everySlotFindsItsWidget()
    {
        slot_warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(RecordSlotWarnings);
        { PresentationDlg page(nullptr); }
        qInstallMessageHandler(previous);
        QCOMPARE(slot_warnings, QStringList());
    }

    void cleanBlockGivesNoRow()
    {
        Opened o([](BlkPresData *pres) { pres->images << Image("img1"); }, false);
        QVERIFY(o.ok);
        QCOMPARE(o.w.ValidationRows(), QStringList());
    }

    void messages_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("size");
        QTest::addColumn<QStringList>("images");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("rows");
        const QString e = "%1. Error: Presentation: ";
        const QString w = "%1. Warning: Presentation: ";

        QTest::newRow("clean") << "blk" << "40,40" << QStringList{"img1", "img2|G|E|b"}
            << QStringList{"img1|t|G|F"}
            << QStringList{"in1|Input|Left|50", "out1|Output|Right|100|Yes|Parameter Based|G|E|a",
                           "ref|Phy.Ref.|Bottom|0|No|Invisible"}
            << "" << QStringList{};
        QTest::newRow("no title, size 0 by 0") << " " << "0,0" << QStringList{} << QStringList{}
            << QStringList{} << ""
            << QStringList{e.arg(1) + "Block horizontal size value is invalid",
                           e.arg(2) + "Block vertical size value is invalid",
                           w.arg(3) + "Block title field is empty"};
        QTest::newRow("missing image, three defaults") << "blk" << "40,40"
            << QStringList{"nofile", "img1", "img2"} << QStringList{} << QStringList{} << ""
            << QStringList{e.arg(1) + "Image file 'nofile' does not exists",
                           e.arg(2) + "More than one default image files exists"};
        QTest::newRow("image parameters") << "blk" << "40,40"
            << QStringList{"img1|X|E|a", "img2|G|Z|a", "img1|G|E|c", "img2|G|F|x", "img1||E|a"}
            << QStringList{} << QStringList{} << ""
            << QStringList{e.arg(1) + "Parameter group name 'X' for image file 'img1' does not exists",
                           e.arg(2) + "Parameter entity name 'Z' for image file 'img2' does not exists",
                           e.arg(3) + "Parameter entity value 'c' for image file 'img1' does not exists",
                           e.arg(4) + "Parameter entity value 'x' for image file 'img2' does not exists"};
        QTest::newRow("texts") << "blk" << "40,40" << QStringList{}
            << QStringList{"nofile|t|G|E", "img1|t||E", "img1|t|X|E", "img2|t|G|Z"}
            << QStringList{} << ""
            << QStringList{e.arg(1) + "Text image file 'nofile' does not exists",
                           e.arg(2) + "Parameter group name is empty for text image 'img1'",
                           e.arg(3) + "Parameter group name 'X' for text image file 'img1' does not exists",
                           e.arg(4) + "Parameter entity name 'Z' for text image file 'img2' does not exists"};
        QTest::newRow("port names") << "blk" << "40,40" << QStringList{} << QStringList{}
            << QStringList{"", "a-b", "a b|Input|Left", "1x", "p|Input|Left", "p|Input|Left", "p|Input|Left"}
            << ""
            << QStringList{e.arg(1) + "One of the port names has invalid characters",
                           e.arg(2) + "One of the port names has invalid characters",
                           e.arg(3) + "One of the port names has invalid characters",
                           e.arg(4) + "One of the port names starts with a numeric charater",
                           e.arg(5) + "Duplicate port names exists",
                           e.arg(6) + "Duplicate port names exists"};
        QTest::newRow("port fields") << "blk" << "40,40" << QStringList{} << QStringList{}
            << QStringList{"q", "d1|Foo|Top|101", "d2|Any|Top|-1"} << ""
            << QStringList{e.arg(1) + "Port 'q' has invalid type field",
                           e.arg(2) + "Port 'q' has invalid placement field",
                           e.arg(3) + "Port 'd1' has invalid percentage distance field",
                           e.arg(4) + "Port 'd2' has invalid percentage distance field"};
        QTest::newRow("physical reference") << "blk" << "40,40" << QStringList{} << QStringList{}
            << QStringList{"r|Phy.Ref.|Left|0|Yes", "s|Phy.Ref.|Left|0|No|Parameter Based|X|E|a"} << ""
            << QStringList{e.arg(1) + "Physical reference port 'r' shall be selected as invisible port",
                           e.arg(2) + "Connection required shall be selected as 'No' for physical reference port 'r'",
                           e.arg(3) + "Physical reference port 's' shall be selected as invisible port",
                           e.arg(4) + "Visibility Parameter group name 'X' for port 's' does not exists"};
        QTest::newRow("visibility, then multiple") << "blk" << "40,40" << QStringList{} << QStringList{}
            << QStringList{"v1|Input|Left|0|No|Parameter Based|G|Z|a|Parameter Based|X|Y",
                           "v2|Input|Left|0|No|Parameter Based|G|E|c|Parameter Based|X|Y"}
            << ""
            << QStringList{e.arg(1) + "Visibility Parameter entity name 'Z' for port 'v1' does not exists",
                           e.arg(2) + "Visibility Parameter entity value 'c' for port 'v2' does not exists",
                           e.arg(3) + "Multiple Occurences Parameter group name 'X' for port 'v2' does not exists",
                           e.arg(4) + "Multiple Occurences Parameter entity name 'Y' for port 'v2' does not exists",
                           w.arg(5) + "Multiple Port Occurences assigned for port 'v2' for non-instrinsic block."};
        QTest::newRow("multiple on a secondary block") << "blk" << "40,40" << QStringList{}
            << QStringList{} << QStringList{"m|Input|Left|0|No|Visible||||Parameter Based|X|Y"}
            << "secondary"
            << QStringList{e.arg(1) + "Multiple Port Occurences assigned for port 'm' will not work for non-primary blocks."};
        QTest::newRow("multiple on an intrinsic block") << "blk" << "40,40" << QStringList{}
            << QStringList{}
            << QStringList{"m|Input|Left|0|No|Visible||||Parameter Based|G|E",
                           "n|Input|Left|0|No|Visible||||Parameter Based|G|Z"}
            << "intrinsic"
            << QStringList{e.arg(1) + "Multiple Occurences Parameter entity name 'Z' for port 'n' does not exists"};
    }

    void messages()
    {
        QFETCH(QString, title);
        QFETCH(QString, size);
        QFETCH(QStringList, images);
        QFETCH(QStringList, texts);
        QFETCH(QStringList, ports);
        QFETCH(QString, kind);
        QFETCH(QStringList, rows);
        Opened o([&](BlkPresData *pres) {
            pres->title = title;
            pres->hsize = size.section(',', 0, 0).toInt();
            pres->vsize = size.section(',', 1, 1).toInt();
            for (const QString &spec : images)
                pres->images << Image(spec);
            for (const QString &spec : texts)
                pres->texts << Text(spec);
            for (const QString &spec : ports)
                pres->ports << Port(spec);
        });
        QVERIFY(o.ok);
        if (kind == "secondary")
            o.Config("Basic", "Block Primary/Secondary")->sel_val = "Secondary";
        if (kind == "intrinsic")
            o.Config("Vendor Specific", "Instrinsic Block")->sel_val = "Yes";

        // The page alone: other pages have their own say about the same ports.
        ErrorList list;
        o.page->ValidatePresData(&list);
        QCOMPARE(list.NumberedMessages(), rows);
    }

    void repairsStayInTheBlockRecordOnly()
    {
        Opened o([](BlkPresData *pres) {
            pres->hsize = 0;
            pres->vsize = -5;
            pres->images << Image("img1||E|a");
            pres->texts << Text("img1|t||E");
        });
        QVERIFY(o.ok);
        ErrorList list;
        o.page->ValidatePresData(&list);

        // Written as repaired by the block's next write of its own record ...
        QVERIFY(SaveBlockData(o.w->block, nullptr, "ZEMA", true));
        auto *saved = new BlockData;
        saved->path = o.Dir();
        QVERIFY(LoadBlockData(saved, QString(), nullptr, "ZEMA", true));
        const BlkPresData *pres = saved->pres;
        QCOMPARE(QList<qint32>({pres->hsize, pres->vsize}), QList<qint32>({40, 40}));
        QCOMPARE(QStringList({pres->images[0]->para_entity, pres->images[0]->para_value,
                              pres->texts[0]->para_entity}),
                 QStringList({"", "", ""}));
        FreeBlockData(saved);

        // ... while the form keeps what the author typed, and the page's own save takes that.
        QCOMPARE(o.page->ui->blk_persize->text(), QString("0,-5"));
        o.page->SavePresData(o.Dir(), o.w->block);
        QCOMPARE(o.w->block->pres->hsize, 0);
        QCOMPARE(o.w->block->pres->images[0]->para_entity, QString("E"));
    }

    void loadAndSyncKeepEveryColumn()
    {
        BlkPresData *expected = nullptr;
        Opened o([&](BlkPresData *pres) {
            pres->title = "Title & <more>";
            pres->hsize = 120;
            pres->vsize = 80;
            pres->border = 0;
            pres->aspect = 1;
            pres->images << Image("img1") << Image("img2|G|E|b");
            pres->texts << Text("img2|label 1|G|F");
            pres->ports << Port("p1|Input|Top|33.5|Yes (code dependent)|Parameter Based|G|E|b|Parameter Based|G|F|P 1|1.5|-2")
                        << Port("p2|Phy.Ref.|Bottom|100|Yes|Invisible||||No|||P2|0|0.25")
                        << Port("p3|Any|Right|0");
            expected = new BlkPresData(*pres);
            expected->images.clear();
            expected->texts.clear();
            expected->ports.clear();
            for (const BlkImage *image : pres->images)
                expected->images << new BlkImage(*image);
            for (const BlkImageText *text : pres->texts)
                expected->texts << new BlkImageText(*text);
            for (const BlkPort *port : pres->ports)
                expected->ports << new BlkPort(*port);
        });
        QVERIFY(o.ok);
        o.page->SavePresData(o.Dir(), o.w->block);
        QCOMPARE(o.w->block->pres, o.page->data);
        QCOMPARE(QString::fromUtf8(Xml(o.page->data)), QString::fromUtf8(Xml(expected)));
        QCOMPARE(o.w->block->params->title, QString("Title & <more>"));
        FreeBlkPresData(expected);
    }

    void updateFollowsThePortsTable()
    {
        Opened o([](BlkPresData *pres) {
            pres->ports << Port("a,alias|Input|Left|0|No|Parameter Based|G|E|b")
                        << Port("b|Output|Right|0")
                        << Port("c|Output|Right|0|No|Parameter Based|G|E|a");
        });
        QVERIFY(o.ok);
        Ui::PresentationDlg *ui = o.page->ui.get();
        QCOMPARE(Rows(ui->vports_table), QStringList({"a|G|E|b", "c|G|E|a"}));
        SetCell(ui->ports_table, 1, 7, "Parameter Based");
        SetCell(ui->ports_table, 0, 8, "Parameter Based");
        ui->ports_table->setCurrentCell(2, 0);
        o.page->TableRemoveRow(ui->ports_table);

        // Without "Update" the new choices have no row, so they save as not chosen.
        o.page->SavePresData(o.Dir(), o.w->block);
        const QList<BlkPort *> &before = o.w->block->pres->ports;
        QCOMPARE(before.size(), 2);
        QCOMPARE(QList<int>({before[0]->vport_para, before[0]->mport_para, before[1]->vport_para}),
                 QList<int>({2, 0, 0}));
        QCOMPARE(before[0]->vport_value, QString("b"));

        ui->ports_update_pb->click();
        QCOMPARE(Rows(ui->vports_table), QStringList({"a|G|E|b", "b|-|-|-"}));
        QCOMPARE(Rows(ui->mulports_table), QStringList({"a|-|-"}));
        ui->mulports_table->setItem(0, 1, new QTableWidgetItem("G"));
        ui->mulports_table->setItem(0, 2, new QTableWidgetItem("E"));
        o.page->SyncPresData();
        const BlkPort *a = o.page->data->ports[0];
        QCOMPARE(QStringList({a->name, QString::number(a->mport_para), a->mport_grp, a->mport_entity}),
                 QStringList({"a,alias", "1", "G", "E"}));
    }

    void portsMoveWithAllTheirCells()
    {
        Opened o([](BlkPresData *pres) {
            pres->ports << Port("p0|Input|Left") << Port("p1|Output|Right") << Port("p2|Any|Top");
        });
        QVERIFY(o.ok);
        Ui::PresentationDlg *ui = o.page->ui.get();
        ui->ports_table->setCurrentCell(2, 1);
        ui->pb_port_up->click();
        QCOMPARE(ui->ports_table->currentRow(), 1);
        ui->pb_port_up->click();
        ui->pb_port_up->click();
        QCOMPARE(ui->ports_table->currentRow(), 0);
        ui->ports_table->setCurrentCell(1, 0);
        ui->pb_port_dn->click();
        ui->pb_port_dn->click();
        QCOMPARE(ui->ports_table->currentRow(), 2);
        o.page->SyncPresData();
        QStringList order;
        for (const BlkPort *port : o.page->data->ports)
            order << port->name + ":" + port->type + ":" + port->placement;
        QCOMPARE(order, QStringList({"p2:Any:Top", "p1:Output:Right", "p0:Input:Left"}));
    }

    void addPortRowAndPortTypeOf()
    {
        Opened o([](BlkPresData *pres) { pres->ports << Port("p0|Input|Left"); });
        QVERIFY(o.ok);
        o.page->AddPortRow("in", "In", "Input");
        o.page->AddPortRow("out", "Out", "Output");
        o.page->AddPortRow("phy", "", "Physical");
        QCOMPARE(Rows(o.page->ui->ports_table).mid(1),
                 QStringList({"in|In|Input|Left|||||", "out|Out|Output|Right|||||",
                              "phy||Physical|Right|||||"}));
        QCOMPARE(o.page->PortTypeOf("out"), QString("Output"));
        QCOMPARE(o.page->PortTypeOf("none"), QString());
    }

    void comboLists()
    {
        Opened o([](BlkPresData *pres) {
            pres->images << Image("img1");
            pres->ports << Port("p|Input|Left");
        });
        QVERIFY(o.ok);
        Ui::PresentationDlg *ui = o.page->ui.get();

        // Each image once: the second row is offered what the first does not hold.
        o.page->TableAddRow(ui->imgs_table);
        QComboBox *images = OpenCombo(ui->imgs_table, 1, 0);
        QVERIFY(images);
        QCOMPARE(Items(images), QStringList({"<Select>", "img2"}));
        QVERIFY(!OpenCombo(ui->imgs_table, 1, 2));   // no group chosen yet
        QCOMPARE(Items(OpenCombo(ui->imgs_table, 0, 1)), QStringList({"<Select>", "G"}));

        // No port name, no editor, and the cell keeps its text.
        o.page->AddPortRow("", "", "Output");
        QVERIFY(!OpenCombo(ui->ports_table, 1, 2));
        ui->ports_table->CommitCell(-1, true);
        QCOMPARE(ui->ports_table->item(1, 2)->text(), QString("Output"));
        QCOMPARE(Items(OpenCombo(ui->ports_table, 0, 2)),
                 QStringList({"Input", "Output", "Physical", "Phy.Ref.", "Any"}));

        // A secondary block's ports can only be picked from the last "Ref.".
        o.Config("Basic", "Block Primary/Secondary")->sel_val = "Secondary";
        o.page->child_port_names = QStringList{"x1", "x2"};
        QComboBox *names = OpenCombo(ui->ports_table, 0, 0);
        QVERIFY(names && !names->isEditable());
        QCOMPARE(Items(names), QStringList({"x1", "x2"}));
    }
};

ZEMA_TEST(tst_PresentationDlg)
#include "tst_PresentationDlg.moc"
