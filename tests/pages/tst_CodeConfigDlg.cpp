// The code page: its checks on small blocks that a hidden main window opens and validates, the
// repairs a save writes, and the behaviour of the port form and the two tables.
#include "TestRegistry.h"

#include "PageWindow.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/CodeConfigDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "schematics/BlkSchemeData.h"
#include "ui_CodeConfigDlg.h"

#include <QtTest>
#include <QtWidgets>
#include <functional>

using BlockSetup = std::function<void(BlockData *)>;
Q_DECLARE_METATYPE(BlockSetup)

namespace {

// Saves the block that `setup` fills as `dir`/blk and opens it. Every block has the parameter
// group "G" with the entity "E" of the values "On" and "Off".
bool Open(PageWindow &w, const QString &dir, BlockSetup setup)
{
    BlockData *block = PageWindow::NewBlockRecord("blk");
    // The reader seeks each section: without a schematics section the code section behind it is lost.
    block->scheme = new BlkSchemeData;
    auto *entity = new ParaEntity("E");
    entity->val_type = "Real";
    entity->values = QStringList{"On", "Off"};
    block->params->para_grp.append(new ParaGroup{"G", QString(), {entity}});
    setup(block);
    const bool opened = w.OpenBlock(block, dir, "blk");
    FreeBlockData(block);
    return opened;
}

// A port of the presentation and its code record, clean as it stands.
BlkCodePort *AddPort(BlockData *block, const QString &name, const QString &type,
                     const QStringList &dims = {"1"})
{
    auto *port = new BlkPort;
    port->name = port->dis_text = name;
    port->type = type;
    port->placement = "Left";
    port->vport_para = type == "Phy.Ref." ? 1 : 0;
    block->pres->ports.append(port);
    auto *code = new BlkCodePort;
    code->port_name = name;
    code->data_name = name + "_v";
    code->domain = "Number";
    code->dim_dependency = "Script";
    for (const QString &text : dims)
        code->dims.append(new BlkPortDim{text, 0});
    block->code->ports.append(code);
    return code;
}

// An element from the texts of its row in the elements table, the type as its number.
void AddElement(BlockData *block, const QStringList &row)
{
    auto *e = new BlkPhyElement;
    QString type;
    QString *fields[] = {&e->port1, &e->port2, &e->el_name, &type, &e->el_mf, &e->elen_para_grp,
                         &e->elen_para_en, &e->elen_para_en_val, &e->elval_para_grp, &e->elval_para_en};
    for (int i = 0; i < row.size(); ++i)
        *fields[i] = row.at(i);
    e->el_type = type.toInt();
    block->code->elements.append(e);
}

// Numbered "Error: Code: ..." rows.
QStringList Rows(const QStringList &errors)
{
    QStringList rows;
    for (const QString &text : errors)
        rows << QString("%1. Error: Code: %2").arg(rows.size() + 1).arg(text);
    return rows;
}

QString Cell(const QTableWidget *table, int row, int col)
{
    const QTableWidgetItem *cell = table->item(row, col);
    return cell ? cell->text() : QString();
}

} // namespace

class tst_CodeConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void messages_data()
    {
        QTest::addColumn<BlockSetup>("setup");
        QTest::addColumn<QStringList>("rows");

        QTest::newRow("clean ports and tables") << BlockSetup([](BlockData *b) {
            AddPort(b, "in", "Input");
            AddPort(b, "out", "Output", {"2", "[G#E]*[in#2]"})->units = " $in ";
            AddPort(b, "conn", "Input", {})->dim_dependency = "Connected Port";
            b->code->funcs.append(new BlkCodeFunc{"f", "G", "E", "On", "in", "<2", " >3 "});
        }) << QStringList();
        QTest::newRow("names and units") << BlockSetup([](BlockData *b) {
            BlkCodePort *bare = AddPort(b, "bare", "Input");
            bare->data_name.clear();
            bare->domain.clear();
            AddPort(b, "p", "Physical")->units = "V";
            AddPort(b, "in", "Input")->units = "$out";
            AddPort(b, "out", "Output")->units = "$nope";
            AddPort(b, "out2", "Output")->units = "$out";
        }) << (Rows({"Port 'bare' internal pointer variable name is empty",
                    "Units cannot be assigned to physical port 'p'.",
                    "Cannot prefix unit field with '$' to non-output type port 'in'.",
                    "Port 'out' unit field has invalid dependency port name.",
                    "Dependent port specified in port 'out2' unit field shall be of input port type."})
                // The list numbers the errors before the warnings.
                << "6. Warning: Code: Port 'bare' domain is empty. Assigning default type.");
        // Every variable of a field is checked, after a bad one too.
        QTest::newRow("dimension scripts") << BlockSetup([](BlockData *b) {
            AddPort(b, "none", "Input", {});
            AddPort(b, "in", "Input", {"[G", "[GE]", "[G#X][in#5]"});
        }) << Rows({"Port 'none' size and dimension are not specified",
                    "Port 'in' script field has missing square braces",
                    "Port 'in' script field has invalid syntax related to #",
                    "Port 'in' script field has non-matching variable 'G#X'",
                    "Port 'in' script field has non-matching variable 'in#5'"});
        // "0" escapes the output-only rule yet is no valid additional memory size.
        QTest::newRow("memory") << BlockSetup([](BlockData *b) {
            BlkCodePort *in = AddPort(b, "in", "Input", {"1", "2"});
            in->mem_extra = "5";
            in->mem_offset = "2";
            in->mem_alloc = "1";
            AddPort(b, "zero", "Input")->mem_extra = " 0 ";
            BlkCodePort *out = AddPort(b, "out", "Output");
            out->mem_extra = "[G#X]";
            out->mem_offset = "-1";
            out->mem_alloc = "2";
        }) << Rows({"Port 'in': Additional memory option is only applicable for output ports",
                    "Port 'in': Memory offset option is only applicable for output ports",
                    "Port 'in' invalid memory allocation type for non-output port.",
                    "Port 'in' cannot  memory allocation type for multi dimensional array.",
                    "Port 'zero' additional memory size is invalid",
                    "Port 'out' additional memory script field has non-matching variable 'G#X'",
                    "Port 'out' memory offset size is invalid"});
        // The port of a row is not looked up.
        QTest::newRow("calling table") << BlockSetup([](BlockData *b) {
            b->code->funcs = {new BlkCodeFunc{" ", "Nope", "", "", "in", "", ""},
                              new BlkCodeFunc{"f1", "Nope", "E", "On", "", "", ""},
                              new BlkCodeFunc{"f2", "G", "Nope", "On", "", "", ""},
                              new BlkCodeFunc{"f3", "G", "E", "  ", "", "", ""},
                              new BlkCodeFunc{"f4", "", "", "", "nowhere", "", "5"},
                              new BlkCodeFunc{"f5", "", "", "", "in", "=0", ">x"},
                              new BlkCodeFunc{"f6", "", "", "", "in", "3", ""}};
        }) << Rows({"Parameter group name 'Nope' mentioned in class method calling table does not exists",
                    "Parameter entity name 'Nope' mentioned in class method calling table does not exists",
                    "Parameter value in class method calling table cannot be empty",
                    "Port Dimension field in class method calling table cannot be empty",
                    "Port Size field in class method calling table has invalid compare parameter",
                    "Port Dimension field in class method calling table has invalid numeric value",
                    "Port Size field in class method calling table has invalid numeric value",
                    "Port Dimension field in class method calling table has invalid compare parameter",
                    "Port Size field in class method calling table cannot be empty"});
        QTest::newRow("element ports and parameters") << BlockSetup([](BlockData *b) {
            AddPort(b, "in", "Input");
            AddPort(b, "p1", "Phy.Ref.");
            AddPort(b, "q", "Physical", {})->dim_dependency = "Connected Port";
            AddPort(b, "r", "Physical", {"1", "1"});
            AddPort(b, "s", "Physical", {"2"});
            AddPort(b, "t", "Physical");
            AddElement(b, {"nope", "in", "", "0", "", "", "", "", "Nope"});
            AddElement(b, {"q", "r", "a", "0", "", "Nope", "", "", "G", "Nope"});
            AddElement(b, {"s", "p1", "b", "0", "", "G", "Nope"});
            AddElement(b, {"p1", "t", "c", "0", "", "G", "E"});
            AddElement(b, {"t", "p1", "d", "0", "", "G", "E", "Z"});
        }) << Rows({"Physical Port Elements Table: Port1 'nope' does not exists",
                    "Physical Port Elements Table: Port2 'in' is not a physical port",
                    "Physical Port Elements Table: One of the 'Element Variable' field is empty",
                    "Physical Port Elements Table: Element value parameter group name 'Nope' does not exists",
                    "Physical Port Elements Table: Port1 'q' shall have dimension dependency as script",
                    "Physical Port Elements Table: Port2 'r' shall have only one dimension",
                    "Physical Port Elements Table: Element value parameter entity name 'Nope' does not exists",
                    "Physical Port Elements Table: Element enable parameter group name 'Nope' does not exists",
                    "Physical Port Elements Table: Port1 's' shall have dimension size as one",
                    "Physical Port Elements Table: Element enable parameter entity name 'Nope' does not exists",
                    "Physical Port Elements Table: Element enable parameter entity 'E' value cannot be empty",
                    "Physical Port Elements Table: Element enable parameter entity value 'Z' does not exists"});
        // Two elements on the same two ports, in either order, may share a name.
        QTest::newRow("element pairs on a linear block") << BlockSetup([](BlockData *b) {
            AddPort(b, "p1", "Physical");
            AddPort(b, "p2", "Physical");
            AddPort(b, "p3", "Physical")->data_type = "Real32";
            AddPort(b, "p4", "Physical")->mem_type = "Non-Cacheable";
            AddPort(b, "p5", "Physical")->data_type = "Real32";
            AddElement(b, {"p1", "p3", "x"});
            AddElement(b, {"p1", "p4", "y"});
            AddElement(b, {"p1", "p2", "z", "1"});
            AddElement(b, {"p2", "p2", "w"});
            AddElement(b, {"p2", "p1", "z"});
            AddElement(b, {"p3", "p5", "z", "2"});
        }) << Rows({"Physical Port Elements Table: Element 'x' ports shall have same data type",
                    "Physical Port Elements Table: Element 'y' ports shall have same memory type",
                    "Physical Port Elements Table: Block type should be non-linear based on selected physical elements",
                    "Physical Port Elements Table: Duplicate element variable names found",
                    "Physical Port Elements Table: Port1 'p2' and Port2 'p2' names shall be different",
                    "Physical Port Elements Table: Duplicate element variable names found"});
        QTest::newRow("intrinsic block skips dimension rules") << BlockSetup([](BlockData *b) {
            FindEntity(b->config, "Vendor Specific", "Instrinsic Block")->sel_val = "Yes";
            AddPort(b, "q", "Physical", {})->dim_dependency = "Connected Port";
            AddPort(b, "r", "Physical", {"2"});
            AddElement(b, {"q", "r", "e"});
        }) << QStringList();
        QTest::newRow("secondary block checks only the tables") << BlockSetup([](BlockData *b) {
            FindEntity(b->config, "Basic", "Block Primary/Secondary")->sel_val = "Secondary";
            BlkCodePort *port = AddPort(b, "p", "Physical", {});
            port->data_name.clear();
            port->dim_dependency = "Child Port";
            AddElement(b, {"p", "p", "m", "1", "", "Nope"});
            b->code->funcs.append(new BlkCodeFunc{"f", "Nope", "", "", "", "", ""});
        }) << Rows({"Parameter group name 'Nope' mentioned in class method calling table does not exists",
                    "Physical Port Elements Table: Port1 'p' shall have dimension dependency as script",
                    "Physical Port Elements Table: Port2 'p' shall have dimension dependency as script",
                    "Physical Port Elements Table: Port1 'p' and Port2 'p' names shall be different"});
    }

    void messages()
    {
        QFETCH(BlockSetup, setup);
        QFETCH(QStringList, rows);
        PageWindow w(tmp.path());
        QVERIFY(Open(w, tmp.path(), setup));
        QCOMPARE(w.ValidationRows(), rows);
    }

    // Only the table can hold an element without a port (the file drops it). That ends the pair
    // checks: neither the element on one port nor the name "x" used twice is reported.
    void emptyElementPortSkipsDuplicates()
    {
        PageWindow w(tmp.path());
        QVERIFY(Open(w, tmp.path(), [](BlockData *b) {
            AddPort(b, "p1", "Physical");
            AddElement(b, {"p1", "p1", "x"});
        }));
        TableWidget *phy = w->code_page->ui->phy_para_table;
        w->code_page->TableAddRow(phy);
        phy->SetCellText(1, 1, "p1");
        phy->SetCellText(1, 2, "x");
        QCOMPARE(w.ValidationRows(), Rows({"Physical Port Elements Table:  One of the Port1 field value is empty"}));
    }

    // Validation repairs the domain, trims the units and sizes the dimensions; the save keeps that.
    void saveWritesRepairs()
    {
        PageWindow w(tmp.path());
        QVERIFY(Open(w, tmp.path(), [](BlockData *b) {
            BlkCodePort *port = AddPort(b, "out", "Output", {"3", " 2.0"});
            port->domain.clear();
            port->units = " kg ";
        }));
        QVERIFY(w->SaveAct(true));
        w->CloseAct(true, false);
        w->OpenProjectFile(tmp.path() + "/blk/blk.bdef");
        const BlkCodePort *out = w->code_page->data->ports.value(0);
        QVERIFY(out && out->dims.size() == 2);
        QCOMPARE((QStringList{out->domain, out->units, QString::number(out->dims.at(0)->array_size),
                              QString::number(out->dims.at(1)->array_size)}),
                 (QStringList{"Number", "kg", "3", "2"}));
    }

    // The form fills per port; edits count only through "Save Port Data".
    void portForm()
    {
        PageWindow w(tmp.path());
        QVERIFY(Open(w, tmp.path(), [](BlockData *b) {
            AddPort(b, "in", "Input");
            AddPort(b, "any", "Any")->data_type = "Float128";
            AddPort(b, "out", "Output", {});
            AddPort(b, "old", "Input");
            b->pres->ports.last()->name = "new";
        }));
        CodeConfigDlg *page = w->code_page;
        Ui::CodeConfigDlg *ui = page->ui.get();
        TableWidget *dims = ui->port_dim_table;
        QShowEvent show;
        QApplication::sendEvent(page, &show);
        QVERIFY(ui->pb_port_data_save->isEnabled());

        ui->ports_lb->setCurrentRow(0);
        ui->port_dataname_eb->setText("changed");
        ui->ports_lb->setCurrentRow(1);
        // "Any" offers no size of its own, so the stored "Script" cannot be chosen; a data type
        // from the file outside the list stays.
        QCOMPARE(ui->cb_port_dim_depend->count(), 1);
        QCOMPARE(ui->cb_port_dim_depend->currentText(), QString("Connected Port"));
        QCOMPARE(dims->rowCount(), 0);
        QCOMPARE(ui->port_datatype_cb->currentText(), QString("Float128"));
        ui->ports_lb->setCurrentRow(0);
        QCOMPARE(ui->port_dataname_eb->text(), QString("in_v"));

        // Rows 1 and 3 make two dimensions.
        ui->ports_lb->setCurrentRow(2);
        dims->SetCellText(0, 1, "2");
        dims->SetCellText(2, 1, "[G#E]");
        ui->port_memalloc_cb->setCurrentIndex(1);
        ui->pb_port_data_save->click();
        const BlkCodePort *out = page->data->ports.at(2);
        QCOMPARE(out->dims.size(), 2);
        QCOMPARE((QStringList{QString::number(out->dims.at(0)->array_size), out->dims.at(1)->para1, out->mem_alloc}),
                 (QStringList{"2", "[G#E]", "1"}));

        // A bad size is shown and drops every dimension; the form keeps what was typed.
        w.answers->texts.clear();
        dims->SetCellText(1, 1, "[G");
        ui->pb_port_data_save->click();
        QCOMPARE(out->dims.size(), 0);
        QCOMPARE(Cell(dims, 1, 1), QString("[G"));
        QCOMPARE(w->error_list->NumberedMessages(), Rows({"Port 'out' script field has missing square braces"}));
        QVERIFY(!w.answers->texts.isEmpty());

        // A port renamed on the presentation page loses its record and starts from the defaults.
        page->SyncCodeData();
        QCOMPARE(page->data->ports.size(), 4);
        const BlkCodePort *fresh = page->data->ports.last();
        QCOMPARE((QStringList{fresh->port_name, fresh->data_name, fresh->data_type, fresh->mem_type,
                              fresh->domain, fresh->dim_dependency}),
                 (QStringList{"new", "new", "Real", "Cacheable", "Number", "Script"}));
    }

    // A block that is not primary keeps its ports read-only and its elements measuring; the name
    // follows the ports each time, over a name typed by hand.
    void secondaryBlock()
    {
        PageWindow w(tmp.path());
        QVERIFY(Open(w, tmp.path(), [](BlockData *b) {
            FindEntity(b->config, "Basic", "Block Primary/Secondary")->sel_val = "Secondary";
            AddPort(b, "a", "Physical");
            AddPort(b, "b", "Physical");
            AddElement(b, {"a", "b", "typed", "1", "3", "G"});
        }));
        CodeConfigDlg *page = w->code_page;
        QShowEvent show;
        QApplication::sendEvent(page, &show);
        for (QPushButton *button : {page->ui->pb_port_data_save, page->ui->pb_gen_tmpl_code,
                                    page->ui->pb_encodefiles})
            QVERIFY(!button->isEnabled());
        QVERIFY(page->ui->pb_python_code->isEnabled());
        page->PhyPortTableCBoxSelChanged(0, 1, 0, -1);
        TableWidget *phy = page->ui->phy_para_table;
        QCOMPARE((QStringList{Cell(phy, 0, 2), Cell(phy, 0, 3), Cell(phy, 0, 4), Cell(phy, 0, 5)}),
                 (QStringList{"a_v_b_v", "Measuring", "", ""}));
    }

private:
    QTemporaryDir tmp;
};

ZEMA_TEST(tst_CodeConfigDlg)
#include "tst_CodeConfigDlg.moc"
