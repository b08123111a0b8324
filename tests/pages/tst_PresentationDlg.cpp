// The presentation page on small blocks in a hidden main window: every message of its checks,
// the repairs they leave, and the table behaviour the block's port list depends on.
#include "PageWindow.h"
#include "TestRegistry.h"
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
#include "ui_PresentationDlg.h"

#include <QComboBox>
#include <QtTest>

namespace {

// One line per record: "pres:title|hsize|vsize|border|aspect", "img:name|grp|entity|value",
// "txt:img|text|grp|entity", or "port:name|type|placement|distance|conn. req.|visibility|grp|entity|
// value|multiple|grp|entity|text|dx|dy" with the coded columns by their words on the page.
void AddRecords(BlkPresData *pres, const QStringList &lines)
{
    for (const QString &line : lines) {
        QStringList f = line.section(':', 1).split('|');
        while (f.size() < 15)
            f.append(QString());
        if (line.startsWith("pres:")) {
            pres->title = f[0], pres->hsize = f[1].toInt(), pres->vsize = f[2].toInt();
            pres->border = f[3].toInt(), pres->aspect = f[4].toInt();
        } else if (line.startsWith("img:")) {
            pres->images << new BlkImage{f[0], f[1], f[2], f[3]};
        } else if (line.startsWith("txt:")) {
            pres->texts << new BlkImageText{f[0], f[1], f[2], f[3]};
        } else {
            auto *port = new BlkPort;
            port->name = f[0], port->type = f[1], port->placement = f[2], port->per_distance = f[3].toFloat();
            port->conn_req = qMax(0, QStringList{"No", "Yes", "Yes (code dependent)"}.indexOf(f[4]));
            port->vport_para = qMax(0, QStringList{"Visible", "Invisible", "Parameter Based"}.indexOf(f[5]));
            port->vport_grp = f[6], port->vport_entity = f[7], port->vport_value = f[8];
            port->mport_para = f[9] == "Parameter Based";
            port->mport_grp = f[10], port->mport_entity = f[11], port->dis_text = f[12];
            port->text_dx = f[13].toFloat(), port->text_dy = f[14].toFloat();
            pres->ports << port;
        }
    }
}

// "E text" and "W text" as the error list numbers them.
QStringList Numbered(const QStringList &rows)
{
    QStringList numbered;
    for (const QString &row : rows)
        numbered << QString("%1. %2: Presentation: %3").arg(numbered.size() + 1)
                        .arg(row.startsWith('W') ? "Warning" : "Error", row.mid(2));
    return numbered;
}

// The drawings "img1" and "img2", and the parameter group "G" with "E" (values a, b) and "F"
// (no values).
struct Opened {
    QTemporaryDir tmp;
    PageWindow w{tmp.path()};
    PresentationDlg *page = nullptr;
    Ui::PresentationDlg *ui = nullptr;
    bool ok = false;

    explicit Opened(const QStringList &records)
    {
        BlockData *block = PageWindow::NewBlockRecord("blk");
        auto *entity = new ParaEntity("E");
        entity->values = QStringList{"a", "b"};
        block->params->para_grp << new ParaGroup{"G", {}, {entity, new ParaEntity("F")}};
        block->images = new QList<ImgDataRec *>{new ImgDataRec{"img1", {}}, new ImgDataRec{"img2", {}}};
        AddRecords(block->pres, records);
        ok = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        if ((page = w->pres_page)) {
            page->para_data = w->block->params;
            ui = page->ui.get();
        }
    }
    QString Dir() const { return tmp.path() + "/blk"; }
    QStringList Validate() const
    {
        // The page alone: other pages have their own say about the same ports.
        ErrorList list;
        page->ValidatePresData(&list);
        return list.NumberedMessages();
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

// The items of the box that a click and a double click open; none when no editor shows.
QStringList Combo(TableWidget *table, int row, int col)
{
    table->CellClicked(row, col);
    table->CellDoubleClicked(row, col);
    QStringList items;
    for (int i = 0; table->cellWidget(row, col) && i < table->combo->count(); ++i)
        items << table->combo->itemText(i);
    return items;
}

QString Xml(const BlkPresData *data)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QXmlStreamWriter writer(&buffer);
    BlkPresFileIO::WritePresData(&writer, data);
    return QString::fromUtf8(buffer.data());
}

} // namespace

class tst_PresentationDlg : public QObject
{
    Q_OBJECT

private slots:
    void messages_data()
    {
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QStringList>("config");   // group, label, value
        QTest::addColumn<QStringList>("rows");   // "E text" or "W text"
        // Three defaults give one message; a default's parameters are only emptied; an entity without
        // values has none to match.
        QTest::newRow("images and texts")
            << QStringList{"img:nofile", "img:img1", "img:img2||E|a", "img:img1|X|E|a", "img:img2|G|Z|a",
                           "img:img2|G|F|x", "txt:nofile|t|G|E", "txt:img1|t||E", "txt:img1|t|X|E", "txt:img2|t|G|Z"}
            << QStringList{}
            << QStringList{"E Image file 'nofile' does not exists", "E More than one default image files exists",
                           "E Parameter group name 'X' for image file 'img1' does not exists",
                           "E Parameter entity name 'Z' for image file 'img2' does not exists",
                           "E Parameter entity value 'x' for image file 'img2' does not exists",
                           "E Text image file 'nofile' does not exists",
                           "E Parameter group name is empty for text image 'img1'",
                           "E Parameter group name 'X' for text image file 'img1' does not exists",
                           "E Parameter entity name 'Z' for text image file 'img2' does not exists"};
        // A bad name stops the port's checks; an unknown type is no finding, only an empty one. A
        // missing visibility entity ends the port; a missing value goes on to multiple occurrence.
        QTest::newRow("ports")
            << QStringList{"port:a-b", "port:a b", "port:1x", "port:p|Input|Left", "port:p|Input|Left",
                           "port:p|Input|Left", "port:q", "port:d1|Foo|Top|101", "port:d2|Any|Top|-1",
                           "port:r|Phy.Ref.|Left|0|Yes", "port:s|Phy.Ref.|Left|0|No|Parameter Based|X|E|a",
                           "port:v1|Input|Left|0|No|Parameter Based|G|Z|a|Parameter Based|X|Y",
                           "port:v2|Input|Left|0|No|Parameter Based|G|E|c|Parameter Based|X|Y"}
            << QStringList{}
            << QStringList{"E One of the port names has invalid characters",
                           "E One of the port names has invalid characters",
                           "E One of the port names starts with a numeric charater",
                           "E Duplicate port names exists", "E Duplicate port names exists",
                           "E Port 'q' has invalid type field", "E Port 'q' has invalid placement field",
                           "E Port 'd1' has invalid percentage distance field",
                           "E Port 'd2' has invalid percentage distance field",
                           "E Physical reference port 'r' shall be selected as invisible port",
                           "E Connection required shall be selected as 'No' for physical reference port 'r'",
                           "E Physical reference port 's' shall be selected as invisible port",
                           "E Visibility Parameter group name 'X' for port 's' does not exists",
                           "E Visibility Parameter entity name 'Z' for port 'v1' does not exists",
                           "E Visibility Parameter entity value 'c' for port 'v2' does not exists",
                           "E Multiple Occurences Parameter group name 'X' for port 'v2' does not exists",
                           "E Multiple Occurences Parameter entity name 'Y' for port 'v2' does not exists",
                           "W Multiple Port Occurences assigned for port 'v2' for non-instrinsic block."};
        QTest::newRow("multiple on a secondary block")
            << QStringList{"port:m|Input|Left|0|No|Visible||||Parameter Based|X|Y"}
            << QStringList{"Basic", "Block Primary/Secondary", "Secondary"}
            << QStringList{"E Multiple Port Occurences assigned for port 'm' will not work for non-primary blocks."};
        // Valid records give nothing, and an intrinsic block no warning.
        QTest::newRow("valid, and multiple on an intrinsic block")
            << QStringList{"img:img1", "img:img2|G|E|b", "txt:img1|t|G|F", "port:in1|Input|Left|50",
                           "port:out1|Output|Right|100|Yes|Parameter Based|G|E|a",
                           "port:ref|Phy.Ref.|Bottom|0|No|Invisible",
                           "port:n|Input|Left|0|No|Visible||||Parameter Based|G|Z"}
            << QStringList{"Vendor Specific", "Instrinsic Block", "Yes"}
            << QStringList{"E Multiple Occurences Parameter entity name 'Z' for port 'n' does not exists"};
    }

    void messages()
    {
        QFETCH(QStringList, records);
        QFETCH(QStringList, config);
        Opened o(records);
        QVERIFY(o.ok);
        if (!config.isEmpty())
            FindEntity(o.w->config_page->data, config[0], config[1])->sel_val = config[2];
        QFETCH(QStringList, rows);
        QCOMPARE(o.Validate(), Numbered(rows));
    }

    void repairsStayInTheBlockRecordOnly()
    {
        Opened o({"pres:|0|-5", "img:img1||E|a", "txt:img1|t||E"});
        QVERIFY(o.ok);
        QCOMPARE(o.Validate(), Numbered({"E Block horizontal size value is invalid",
                                         "E Block vertical size value is invalid",
                                         "E Parameter group name is empty for text image 'img1'",
                                         "W Block title field is empty"}));

        // The block holds the repaired record, so its next write of its own record takes the repairs ...
        const BlkPresData *pres = o.page->data;
        QCOMPARE(o.w->block->pres, pres);
        QCOMPARE(QStringList({QString::number(pres->hsize), QString::number(pres->vsize),
                              pres->images[0]->para_entity, pres->images[0]->para_value,
                              pres->texts[0]->para_entity}),
                 QStringList({"40", "40", "", "", ""}));

        // ... while the form keeps what the author typed, and the page's own save takes that.
        o.page->SavePresData(o.Dir(), o.w->block);
        QCOMPARE(o.w->block->pres->hsize, 0);
        QCOMPARE(o.w->block->pres->images[0]->para_entity, QString("E"));
    }

    void loadAndSyncKeepEveryColumn()
    {
        Opened o({"pres:Title & <more>|120|80|0|1", "img:img1", "img:img2|G|E|b", "txt:img2|label 1|G|F",
                  "port:p1|Input|Top|33.5|Yes (code dependent)|Parameter Based|G|E|b|Parameter Based|G|F|P 1|1.5|-2",
                  "port:p2|Phy.Ref.|Bottom|100|Yes|Invisible||||No|||P2|0|0.25", "port:p3|Any|Right|0"});
        QVERIFY(o.ok);
        const QString loaded = Xml(o.page->data);
        QVERIFY(loaded.contains("Title &amp; &lt;more&gt;"));
        o.page->SavePresData(o.Dir(), o.w->block);
        QCOMPARE(o.w->block->pres, o.page->data);
        QCOMPARE(Xml(o.page->data), loaded);
        QCOMPARE(o.w->block->params->title, QString("Title & <more>"));
    }

    void updateFollowsThePortsTable()
    {
        Opened o({"port:a,alias|Input|Left|0|No|Parameter Based|G|E|b", "port:b|Output|Right|0",
                  "port:c|Output|Right|0|No|Parameter Based|G|E|a"});
        QVERIFY(o.ok);
        QCOMPARE(Rows(o.ui->vports_table), QStringList({"a|G|E|b", "c|G|E|a"}));
        o.ui->ports_table->item(1, 7)->setText("Parameter Based");
        o.ui->ports_table->item(0, 8)->setText("Parameter Based");
        o.ui->ports_table->setCurrentCell(2, 0);
        o.page->TableRemoveRow(o.ui->ports_table);

        // Without "Update" the new choices have no row, so they save as not chosen.
        o.page->SavePresData(o.Dir(), o.w->block);
        const QList<BlkPort *> &saved = o.w->block->pres->ports;
        QCOMPARE(QStringList({QString::number(saved[0]->vport_para), saved[0]->vport_value,
                              QString::number(saved[0]->mport_para), QString::number(saved[1]->vport_para)}),
                 QStringList({"2", "b", "0", "0"}));

        o.ui->ports_update_pb->click();
        QCOMPARE(Rows(o.ui->vports_table), QStringList({"a|G|E|b", "b|-|-|-"}));
        QCOMPARE(Rows(o.ui->mulports_table), QStringList({"a|-|-"}));
    }

    void portRowsMoveAndAppend()
    {
        Opened o({"port:p0|Input|Left", "port:p1|Output|Right", "port:p2|Any|Top|5|Yes"});
        QVERIFY(o.ok);
        QTableWidget *ports = o.ui->ports_table;
        ports->setCurrentCell(2, 1);
        for (int press = 0; press < 3; ++press)   // the selection follows; the third press finds the top
            o.ui->pb_port_up->click();
        ports->setCurrentCell(1, 0);
        for (int press = 0; press < 2; ++press)   // the second finds the bottom
            o.ui->pb_port_dn->click();
        o.page->AddPortRow("out", "", "Output");
        QCOMPARE(Rows(ports), QStringList({"p2||Any|Top|5|0,0|Yes|Visible|No", "p1||Output|Right|0|0,0|No|Visible|No",
                                           "p0||Input|Left|0|0,0|No|Visible|No", "out||Output|Right|||||"}));
        QCOMPARE(o.page->PortTypeOf("out"), QString("Output"));   // a row not yet saved
    }

    void comboLists()
    {
        Opened o({"img:img1", "port:p|Input|Left"});
        QVERIFY(o.ok);
        // Each image once: the new row is offered what the first does not hold.
        o.page->TableAddRow(o.ui->imgs_table);
        QCOMPARE(Combo(o.ui->imgs_table, 1, 0), QStringList({"<Select>", "img2"}));
        QCOMPARE(Combo(o.ui->imgs_table, 1, 2), QStringList());   // no group chosen yet

        // No port name, no editor; the types carry no "<Select>".
        o.page->AddPortRow("", "", "Output");
        QCOMPARE(Combo(o.ui->ports_table, 1, 2), QStringList());
        QCOMPARE(Combo(o.ui->ports_table, 0, 2), QStringList({"Input", "Output", "Physical", "Phy.Ref.", "Any"}));

        // A secondary block's ports can only be picked from the last "Ref.".
        FindEntity(o.w->config_page->data, "Basic", "Block Primary/Secondary")->sel_val = "Secondary";
        o.page->child_port_names = QStringList{"x1", "x2"};
        QCOMPARE(Combo(o.ui->ports_table, 0, 0), QStringList({"x1", "x2"}));
        QVERIFY(!o.ui->ports_table->combo->isEditable());
    }
};

ZEMA_TEST(tst_PresentationDlg)
#include "tst_PresentationDlg.moc"
