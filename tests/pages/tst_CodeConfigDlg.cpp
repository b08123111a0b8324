// The code page: its checks on small blocks that a hidden main window opens and validates, the
// repairs a save writes, and the behaviour of the port form and the two tables.
#include "TestRegistry.h"

#include "PageWindow.h"
#include "app/BlkDefFileIO.h"
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

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShowEvent>
#include <QtTest>

using BlockSetup = void (*)(BlockData *);
Q_DECLARE_METATYPE(BlockSetup)

namespace {

// The reader of a definition file seeks each section, so one without a schematics section would
// lose the code section behind it.
BlockData *NewBlock()
{
    BlockData *block = PageWindow::NewBlockRecord("blk");
    block->scheme = new BlkSchemeData;
    return block;
}

// A port of the presentation and its code record, clean as it stands.
BlkCodePort *AddPort(BlockData *block, const QString &name, const QString &type,
                     const QStringList &dims = {"1"})
{
    auto *port = new BlkPort;
    port->name = name;
    port->dis_text = name;
    port->type = type;
    port->placement = "Left";
    port->per_distance = 50;
    if (type == "Phy.Ref.")
        port->vport_para = 1;
    block->pres->ports.append(port);
    auto *code = new BlkCodePort;
    code->port_name = name;
    code->data_name = name + "_v";
    code->data_type = "Real";
    code->mem_type = "Cacheable";
    code->mem_alloc = "0";
    code->domain = "Number";
    code->dim_dependency = "Script";
    for (const QString &text : dims)
        code->dims.append(new BlkPortDim{text, 0});
    block->code->ports.append(code);
    return code;
}

// Group "G" with the entity "E" of the values "On" and "Off".
void AddParameters(BlockData *block)
{
    auto *entity = new ParaEntity("E");
    entity->val_type = "Real";
    entity->values = QStringList{"On", "Off"};
    block->params->para_grp.append(new ParaGroup{"G", QString(), {entity}});
}

BlkPhyElement *AddElement(BlockData *block, const QString &port1, const QString &port2,
                          const QString &name, int type = 0)
{
    auto *element = new BlkPhyElement;
    element->port1 = port1;
    element->port2 = port2;
    element->el_name = name;
    element->el_type = type;
    block->code->elements.append(element);
    return element;
}

void SetConfig(BlockData *block, const QString &header, const QString &label, const QString &value)
{
    FindEntity(block->config, header, label)->sel_val = value;
}

// "1. Error: Code: ..." rows, the errors numbered before the warnings.
QStringList Rows(const QStringList &errors, const QStringList &warnings = {})
{
    QStringList rows;
    for (const QString &text : errors)
        rows << QString("%1. Error: Code: %2").arg(rows.size() + 1).arg(text);
    for (const QString &text : warnings)
        rows << QString("%1. Warning: Code: %2").arg(rows.size() + 1).arg(text);
    return rows;
}

QString Cell(const QTableWidget *table, int row, int col)
{
    const QTableWidgetItem *cell = table->item(row, col);
    return cell ? cell->text() : QString();
}

void SetCell(QTableWidget *table, int row, int col, const QString &text)
{
    table->setItem(row, col, new QTableWidgetItem(text));
}

// The form by its object names, which are the page's contract.
struct Form {
    explicit Form(CodeConfigDlg *page)
        : ports(page->findChild<QListWidget *>("ports_lb")),
          data_name(page->findChild<QLineEdit *>("port_dataname_eb")),
          data_type(page->findChild<QComboBox *>("port_datatype_cb")),
          mem_alloc(page->findChild<QComboBox *>("port_memalloc_cb")),
          depend(page->findChild<QComboBox *>("cb_port_dim_depend")),
          dims(page->findChild<TableWidget *>("port_dim_table")),
          phy(page->findChild<TableWidget *>("phy_para_table")),
          save(page->findChild<QPushButton *>("pb_port_data_save"))
    {
    }
    bool Complete() const { return ports && data_name && data_type && mem_alloc && depend && dims && phy && save; }
    QStringList DependItems() const
    {
        QStringList items;
        for (int i = 0; i < depend->count(); ++i)
            items << depend->itemText(i);
        return items;
    }

    QListWidget *ports;
    QLineEdit *data_name;
    QComboBox *data_type;
    QComboBox *mem_alloc;
    QComboBox *depend;
    TableWidget *dims;
    TableWidget *phy;
    QPushButton *save;
};

QStringList slot_warnings;

void RecordSlotWarnings(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (text.contains("connectSlotsByName"))
        slot_warnings << text;
}

} // namespace

class tst_CodeConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        QVERIFY(tmp.isValid());
    }

    void everySlotFindsItsWidget()
    {
        slot_warnings.clear();
        QtMessageHandler previous = qInstallMessageHandler(RecordSlotWarnings);
        auto *page = new CodeConfigDlg(nullptr, nullptr, nullptr);
        qInstallMessageHandler(previous);
        const bool complete = Form(page).Complete();
        delete page;
        QCOMPARE(slot_warnings, QStringList());
        QVERIFY(complete);
    }

    void messages_data()
    {
        QTest::addColumn<BlockSetup>("setup");
        QTest::addColumn<QStringList>("rows");

        QTest::newRow("clean ports and tables") << BlockSetup([](BlockData *b) {
            AddParameters(b);
            AddPort(b, "in", "Input");
            AddPort(b, "out", "Output", {"2", "[G#E]*[in#2]"})->units = " $in ";
            AddPort(b, "conn", "Input", {})->dim_dependency = "Connected Port";
            b->code->funcs.append(new BlkCodeFunc{"f", "G", "E", "On", "in", "<2", " >3 "});
        }) << QStringList();
        QTest::newRow("empty data name and domain") << BlockSetup([](BlockData *b) {
            BlkCodePort *port = AddPort(b, "in", "Input");
            port->data_name.clear();
            port->domain.clear();
        }) << Rows({"Port 'in' internal pointer variable name is empty"},
                   {"Port 'in' domain is empty. Assigning default type."});
        QTest::newRow("units") << BlockSetup([](BlockData *b) {
            AddPort(b, "p", "Physical")->units = "V";
            AddPort(b, "in", "Input")->units = "$out";
            AddPort(b, "out", "Output")->units = "$nope";
            AddPort(b, "out2", "Output")->units = "$out";
        }) << Rows({"Units cannot be assigned to physical port 'p'.",
                    "Cannot prefix unit field with '$' to non-output type port 'in'.",
                    "Port 'out' unit field has invalid dependency port name.",
                    "Dependent port specified in port 'out2' unit field shall be of input port type."});
        QTest::newRow("dimension scripts") << BlockSetup([](BlockData *b) {
            AddParameters(b);
            AddPort(b, "none", "Input", {});
            AddPort(b, "in", "Input", {"[in#5]", "[G", "[GE]", "[G#X][in#0]"});
        }) << Rows({"Port 'none' size and dimension are not specified",
                    "Port 'in' script field has non-matching variable 'in#5'",
                    "Port 'in' script field has missing square braces",
                    "Port 'in' script field has invalid syntax related to #",
                    "Port 'in' script field has non-matching variable 'G#X'",
                    "Port 'in' script field has non-matching variable 'in#0'"});
        QTest::newRow("memory fields") << BlockSetup([](BlockData *b) {
            AddParameters(b);
            BlkCodePort *in = AddPort(b, "in", "Input");
            in->mem_extra = "5";
            in->mem_offset = "0";
            BlkCodePort *zero = AddPort(b, "zero", "Input");
            zero->mem_extra = " 0 ";
            BlkCodePort *out = AddPort(b, "out", "Output");
            out->mem_extra = "[G#E]";
            out->mem_offset = "-1";
            BlkCodePort *script = AddPort(b, "out2", "Output");
            script->mem_extra = "[G#X]";
            script->mem_offset = "[[G#E]";
        }) << Rows({"Port 'in': Additional memory option is only applicable for output ports",
                    "Port 'zero' additional memory size is invalid",
                    "Port 'out' memory offset size is invalid",
                    "Port 'out2' additional memory script field has non-matching variable 'G#X'",
                    "Port 'out2' memory offset script field has missing square braces"});
        QTest::newRow("memory allocation") << BlockSetup([](BlockData *b) {
            AddPort(b, "in", "Input", {"1", "2"})->mem_alloc = "1";
            AddPort(b, "out", "Output")->mem_alloc = "2";
        }) << Rows({"Port 'in' invalid memory allocation type for non-output port.",
                    "Port 'in' cannot  memory allocation type for multi dimensional array."});
        QTest::newRow("calling table") << BlockSetup([](BlockData *b) {
            AddParameters(b);
            AddPort(b, "in", "Input");
            b->code->funcs = {new BlkCodeFunc{" ", "Nope", "", "", "in", "", ""},
                              new BlkCodeFunc{"f1", "Nope", "E", "On", "", "", ""},
                              new BlkCodeFunc{"f2", "G", "Nope", "On", "", "", ""},
                              new BlkCodeFunc{"f3", "G", "E", "  ", "", "", ""},
                              new BlkCodeFunc{"f4", "", "", "", "nowhere", "", "5"},
                              new BlkCodeFunc{"f5", "", "", "", "in", "=0", ">x"}};
        }) << Rows({"Parameter group name 'Nope' mentioned in class method calling table does not exists",
                    "Parameter entity name 'Nope' mentioned in class method calling table does not exists",
                    "Parameter value in class method calling table cannot be empty",
                    "Port Dimension field in class method calling table cannot be empty",
                    "Port Size field in class method calling table has invalid compare parameter",
                    "Port Dimension field in class method calling table has invalid numeric value",
                    "Port Size field in class method calling table has invalid numeric value"});
        QTest::newRow("element ports") << BlockSetup([](BlockData *b) {
            AddPort(b, "in", "Input");
            AddPort(b, "p1", "Phy.Ref.");
            AddPort(b, "q", "Physical", {})->dim_dependency = "Connected Port";
            AddPort(b, "r", "Physical", {"1", "1"});
            AddPort(b, "s", "Physical", {"2"});
            AddElement(b, "nope", "in", "e1");
            AddElement(b, "q", "r", "e2");
            AddElement(b, "s", "p1", "e3");
        }) << Rows({"Physical Port Elements Table: Port1 'nope' does not exists",
                    "Physical Port Elements Table: Port2 'in' is not a physical port",
                    "Physical Port Elements Table: Port1 'q' shall have dimension dependency as script",
                    "Physical Port Elements Table: Port2 'r' shall have only one dimension",
                    "Physical Port Elements Table: Port1 's' shall have dimension size as one"});
        QTest::newRow("element names and parameters") << BlockSetup([](BlockData *b) {
            AddParameters(b);
            AddPort(b, "p1", "Physical");
            AddPort(b, "p2", "Physical");
            AddElement(b, "p1", "p2", "")->elval_para_grp = "Nope";
            BlkPhyElement *e = AddElement(b, "p2", "p1", "a");
            e->elval_para_grp = "G";
            e->elval_para_en = "Nope";
            e->elen_para_grp = "Nope";
            e = AddElement(b, "p1", "p2", "b");
            e->elen_para_grp = "G";
            e->elen_para_en = "Nope";
            e = AddElement(b, "p1", "p2", "c");
            e->elen_para_grp = "G";
            e->elen_para_en = "E";
            e = AddElement(b, "p1", "p2", "d");
            e->elen_para_grp = "G";
            e->elen_para_en = "E";
            e->elen_para_en_val = "Z";
        }) << Rows({"Physical Port Elements Table: One of the 'Element Variable' field is empty",
                    "Physical Port Elements Table: Element value parameter group name 'Nope' does not exists",
                    "Physical Port Elements Table: Element value parameter entity name 'Nope' does not exists",
                    "Physical Port Elements Table: Element enable parameter group name 'Nope' does not exists",
                    "Physical Port Elements Table: Element enable parameter entity name 'Nope' does not exists",
                    "Physical Port Elements Table: Element enable parameter entity 'E' value cannot be empty",
                    "Physical Port Elements Table: Element enable parameter entity value 'Z' does not exists"});
        QTest::newRow("element pairs on a linear block") << BlockSetup([](BlockData *b) {
            AddPort(b, "p1", "Physical");
            AddPort(b, "p2", "Physical");
            AddPort(b, "p3", "Physical")->data_type = "Real32";
            AddPort(b, "p4", "Physical")->mem_type = "Non-Cacheable";
            AddPort(b, "p5", "Physical")->data_type = "Real32";
            AddElement(b, "p1", "p3", "x");
            AddElement(b, "p1", "p4", "y");
            AddElement(b, "p1", "p2", "z", 1);
            AddElement(b, "p2", "p2", "w");
            AddElement(b, "p2", "p1", "z");
            AddElement(b, "p3", "p5", "z", 2);
        }) << Rows({"Physical Port Elements Table: Element 'x' ports shall have same data type",
                    "Physical Port Elements Table: Element 'y' ports shall have same memory type",
                    "Physical Port Elements Table: Block type should be non-linear based on selected physical elements",
                    "Physical Port Elements Table: Duplicate element variable names found",
                    "Physical Port Elements Table: Port1 'p2' and Port2 'p2' names shall be different",
                    "Physical Port Elements Table: Duplicate element variable names found"});
        QTest::newRow("intrinsic block skips dimension rules") << BlockSetup([](BlockData *b) {
            SetConfig(b, "Vendor Specific", "Instrinsic Block", "Yes");
            AddPort(b, "q", "Physical", {})->dim_dependency = "Connected Port";
            AddPort(b, "r", "Physical", {"2"});
            AddElement(b, "q", "r", "e");
        }) << QStringList();
        QTest::newRow("secondary block checks only the tables") << BlockSetup([](BlockData *b) {
            SetConfig(b, "Basic", "Block Primary/Secondary", "Secondary");
            BlkCodePort *port = AddPort(b, "p", "Physical", {});
            port->data_name.clear();
            port->dim_dependency = "Child Port";
            AddElement(b, "p", "p", "m", 1)->elen_para_grp = "Nope";
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
        BlockData *block = NewBlock();
        setup(block);
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QCOMPARE(w.ValidationRows(), rows);
    }

    void saveWritesRepairs()
    {
        PageWindow w(tmp.path());
        BlockData *block = NewBlock();
        BlkCodePort *port = AddPort(block, "out", "Output", {"3", " 2.0"});
        port->domain.clear();
        port->units = " kg ";
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QVERIFY(w->SaveAct(true));

        auto *saved = new BlockData;
        saved->path = tmp.path() + "/blk";
        LoadBlockData(saved, QString(), nullptr, "ZEMA", true);
        QVERIFY(saved->code && saved->code->ports.size() == 1);
        const BlkCodePort *out = saved->code->ports.first();
        const QStringList got{out->domain, out->units, QString::number(out->dims.at(0)->array_size),
                              QString::number(out->dims.at(1)->array_size)};
        FreeBlockData(saved);
        QCOMPARE(got, (QStringList{"Number", "kg", "3", "2"}));
    }

    // Only the table can hold an element without a port: the file drops such an element.
    void emptyElementPortSkipsDuplicates()
    {
        PageWindow w(tmp.path());
        BlockData *block = NewBlock();
        AddPort(block, "p1", "Physical");
        AddElement(block, "p1", "p1", "x");
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        TableWidget *phy = Form(w->code_page).phy;
        w->code_page->TableAddRow(phy);
        SetCell(phy, 1, 1, "p1");
        SetCell(phy, 1, 2, "y");
        QCOMPARE(w.ValidationRows(),
                 Rows({"Physical Port Elements Table:  One of the Port1 field value is empty"}));
    }

    // The form fills per port; edits count only through "Save Port Data".
    void portForm()
    {
        PageWindow w(tmp.path());
        BlockData *block = NewBlock();
        AddParameters(block);
        AddPort(block, "in", "Input");
        AddPort(block, "any", "Any")->data_type = "Float128";
        AddPort(block, "out", "Output", {});
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        CodeConfigDlg *page = w->code_page;
        Form form(page);
        BlkCodeData *data = page->data;
        QCOMPARE(form.ports->count(), 3);

        form.ports->setCurrentRow(0);
        QCOMPARE(form.DependItems(), (QStringList{"Script", "Connected Port"}));
        form.data_name->setText("changed");
        form.ports->setCurrentRow(1);
        // "Any" offers no size of its own, so the stored "Script" cannot be chosen.
        QCOMPARE(form.DependItems(), QStringList{"Connected Port"});
        QCOMPARE(form.dims->rowCount(), 0);
        QCOMPARE(form.data_type->currentText(), QString("Float128"));
        form.ports->setCurrentRow(0);
        QCOMPARE(form.data_name->text(), QString("in_v"));
        QCOMPARE(data->ports.at(0)->data_name, QString("in_v"));

        form.ports->setCurrentRow(2);
        QCOMPARE(form.dims->rowCount(), 4);
        SetCell(form.dims, 0, 1, "2");
        SetCell(form.dims, 2, 1, "[G#E]");
        form.mem_alloc->setCurrentIndex(1);
        form.save->click();
        const BlkCodePort *out = data->ports.at(2);
        QCOMPARE(out->dims.size(), 2);
        QCOMPARE(out->dims.at(0)->array_size, 2);
        QCOMPARE(out->dims.at(1)->para1, QString("[G#E]"));
        QCOMPARE(out->mem_alloc, QString("1"));

        w.answers->texts.clear();
        SetCell(form.dims, 1, 1, "[G");
        form.save->click();
        QCOMPARE(out->dims.size(), 0);
        QCOMPARE(Cell(form.dims, 1, 1), QString("[G"));
        QCOMPARE(w->error_list->NumberedMessages(),
                 QStringList{"1. Error: Code: Port 'out' script field has missing square braces"});
        QVERIFY(!w.answers->texts.isEmpty());
    }

    void renamedPortStartsFromDefaults()
    {
        PageWindow w(tmp.path());
        BlockData *block = NewBlock();
        BlkCodePort *port = AddPort(block, "old", "Input");
        port->data_type = "Integer";
        port->mem_type = "Depends";
        port->domain = "Thermal";
        block->pres->ports.first()->name = "new";
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        w->code_page->SyncCodeData();
        const BlkCodeData *data = w->code_page->data;
        QCOMPARE(data->ports.size(), 1);
        const BlkCodePort *fresh = data->ports.first();
        QCOMPARE((QStringList{fresh->port_name, fresh->data_name, fresh->data_type, fresh->mem_type,
                              fresh->domain, fresh->dim_dependency}),
                 (QStringList{"new", "new", "Real", "Cacheable", "Number", "Script"}));
    }

    // A block that is not primary keeps its ports read-only and its elements measuring.
    void primaryFlag_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("save_enabled");
        QTest::addColumn<QStringList>("element");
        QTest::newRow("primary") << "Primary" << true << QStringList{"a_v_b_v", "Through(Var.)", "3", "G"};
        QTest::newRow("secondary") << "Secondary" << false << QStringList{"a_v_b_v", "Measuring", "", ""};
    }

    void primaryFlag()
    {
        QFETCH(QString, kind);
        QFETCH(bool, save_enabled);
        QFETCH(QStringList, element);
        PageWindow w(tmp.path());
        BlockData *block = NewBlock();
        SetConfig(block, "Basic", "Block Primary/Secondary", kind);
        AddPort(block, "a", "Physical");
        AddPort(block, "b", "Physical");
        BlkPhyElement *typed = AddElement(block, "a", "b", "typed", 1);
        typed->el_mf = "3";
        typed->elen_para_grp = "G";
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        CodeConfigDlg *page = w->code_page;
        QShowEvent show;
        QApplication::sendEvent(page, &show);
        Form form(page);
        QCOMPARE(form.save->isEnabled(), save_enabled);
        for (const char *name : {"pb_gen_tmpl_code", "pb_encodefiles", "pb_python_code"})
            QVERIFY(!page->findChild<QPushButton *>(name)->isEnabled());
        // The name follows the ports each time, over a name typed by hand.
        page->PhyPortTableCBoxSelChanged(0, 1, 0, -1);
        QCOMPARE((QStringList{Cell(form.phy, 0, 2), Cell(form.phy, 0, 3), Cell(form.phy, 0, 4), Cell(form.phy, 0, 5)}),
                 element);
    }

private:
    QTemporaryDir tmp;
};

ZEMA_TEST(tst_CodeConfigDlg)
#include "tst_CodeConfigDlg.moc"
