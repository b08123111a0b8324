// A block made only through the widgets of the pages, as an author makes it: saved, reopened and
// read back on every page. And the ports of the presentation and code pages kept in step.
#include "PageWindow.h"
#include "TestRegistry.h"
#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "authoring/ModParameterDlg.h"
#include "authoring/ModelParameterDlg.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/CodeConfigDlg.h"
#include "pages/MiscConfigDlg.h"
#include "pages/PresentationDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

namespace {

template <typename T>
T *Widget(QWidget *page, const char *name)
{
    T *widget = page->findChild<T *>(QLatin1String(name));
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

void Click(QWidget *page, const char *button)
{
    Widget<QPushButton>(page, button)->click();
}

void SetText(QWidget *page, const char *edit, const QString &text)
{
    Widget<QLineEdit>(page, edit)->setText(text);
}

// Fills a table row as committed combo and line edits leave it: plain text items.
void FillRow(QTableWidget *table, int row, const QStringList &cells)
{
    if (table->rowCount() <= row)
        table->setRowCount(row + 1);
    for (int col = 0; col < cells.size(); ++col)
        table->setItem(row, col, new QTableWidgetItem(cells[col]));
}

QStringList RowTexts(const QTableWidget *table, int row)
{
    QStringList texts;
    for (int col = 0; col < table->columnCount(); ++col)
        texts << (table->item(row, col) ? table->item(row, col)->text() : QString());
    return texts;
}

QStringList TreeTexts(const QTreeWidget *tree)
{
    QStringList texts;
    for (int group = 0; group < tree->topLevelItemCount(); ++group) {
        QTreeWidgetItem *item = tree->topLevelItem(group);
        texts << item->text(0);
        for (int child = 0; child < item->childCount(); ++child)
            texts << "  " + item->child(child)->text(0);
    }
    return texts;
}

QStringList ListTexts(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->item(row)->text();
    return texts;
}

// One entity through the form: name, variable, type, value, range, then "Add Entity".
void AddEntity(ModParameterDlg *page, const QString &name, const QString &var, const QString &type,
               const QString &value, const QStringList &values = {})
{
    SetText(page, "en_name", name);
    SetText(page, "en_para_var_name", var);
    Widget<QComboBox>(page, "en_value_type")->setCurrentText(type);
    for (const QString &choice : values) {
        SetText(page, "en_value_edit", choice);
        Click(page, "en_value_add");
    }
    SetText(page, "en_value_edit", value);
    Click(page, "add_entity");
}

void AddGroup(ModParameterDlg *page, const QString &header)
{
    SetText(page, "header", header);
    Click(page, "header_add");
}

} // namespace

class tst_AuthoredBlock : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    std::unique_ptr<PageWindow> w;

    void Author()
    {
        MainWindow *window = w->get();
        QVERIFY(TypeIntoConfiguration(window, "Basic", "Block Name", "authored"));
        QVERIFY(TypeIntoConfiguration(window, "Code-Basic", "Header File Name", "authored.h"));
        for (const char *kind : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
            QVERIFY(TypeIntoConfiguration(window, "Code-Basic", QStringLiteral("Class/Structure Name (%1)").arg(kind), "Authored"));

        ModParameterDlg *params = window->param_page;
        AddGroup(params, "Gain");
        AddEntity(params, "K", "k", "Real64", "2");
        // "Mode" at "Fast" sets K to 10.
        SetText(params, "en_name", "Mode");
        auto *controls = Widget<TableWidget>(params, "en_ctrl_table");
        SetText(params, "en_value_edit", "Slow");
        Click(params, "en_value_add");
        SetText(params, "en_value_edit", "Fast");
        Click(params, "en_value_add");
        params->TableAddRow(controls);
        FillRow(controls, 0, {"Gain", "K", "10", "Fast", "SetValue"});
        AddEntity(params, "Mode", "mode", "Selected Index", "Slow");

        ModelParameterDlg *models = window->model_page;
        Click(models, "pb_addmodel");
        models->AddColAct();
        models->AddColAct();
        models->AddRowAct();
        models->AddRowAct();
        auto *header = Widget<TableWidget>(models, "tb_header");
        auto *values = Widget<TableWidget>(models, "tb_data");
        FillRow(header, 0, {"Gain", "Gain"});
        FillRow(header, 1, {"Mode", "K"});
        FillRow(values, 0, {"Slow", "1"});
        FillRow(values, 1, {"Fast", "10"});

        AddGroup(window->initcond_page, "State");
        AddEntity(window->initcond_page, "x0", "x0", "Real64", "0");

        PresentationDlg *pres = window->pres_page;
        pres->SetBlockTitle("Authored");
        pres->SetBlockSize(60, 40);
        pres->AddPortRow("in", "u", "Input");
        pres->AddPortRow("out", "y", "Output");
        pres->AddPortRow("p", "", "Physical");
        pres->AddPortRow("n", "", "Physical");

        // The code page learns of the new ports at the next validation.
        window->ValidateAct(true, true);
        CodeConfigDlg *code = window->code_page;
        code->SetPortForm(0, "Real64", 1);
        code->SetPortForm(1, "Real64", 1);
        code->SetPortForm(2, "Real", 1);
        code->SetPortForm(3, "Real", 1);
        auto *elements = Widget<TableWidget>(code, "phy_para_table");
        code->TableAddRow(elements);
        FillRow(elements, 0, {"p", "n", "p_n", "Through(Const.)", "0"});

        MiscConfigDlg *misc = window->misc_page;
        SetText(misc, "eb_cpu_ops", "4");
        auto *conditions = Widget<TableWidget>(misc, "para_cond_table");
        misc->TableAddRow(conditions);
        FillRow(conditions, 0, {"[Gain#K] > 0", "K must be positive"});
    }

private slots:
    void init()
    {
        w = std::make_unique<PageWindow>(dir.path());
    }

    void cleanup()
    {
        w.reset();
    }

    // Opening a block builds every page; a renamed widget would leave its slot unconnected.
    void everyPageConnectsItsSlots()
    {
        static QStringList warnings;
        warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { warnings << text; });
        w->NewBlock();
        qInstallMessageHandler(previous);
        QVERIFY(w->get()->help_page && w->get()->hwio_page);
        QVERIFY2(warnings.filter("connectSlotsByName").isEmpty(), qPrintable(warnings.join('\n')));
    }

    void authoredThroughThePagesSavesAndReopens()
    {
        w->NewBlock();
        Author();
        // Before its first save the block has no directory, so no help page either.
        QCOMPARE(w->ValidationRows(), QStringList({"1. Warning: Help: Specified file index.htm does not exists in /doc directory "}));
        for (const char *file : {"authored/doc/index.htm", "authored/src/authored.h"}) {
            QVERIFY(QDir(dir.path()).mkpath(QFileInfo(file).path()));
            QVERIFY(QFile(dir.path() + "/" + file).open(QIODevice::WriteOnly));
        }
        w->answers->choices.append({dir.path()});
        QVERIFY(w->get()->SaveAct());
        w->get()->CloseAct(true, false);
        w->get()->OpenProjectFile(dir.path() + "/authored/authored.bdef");
        MainWindow *window = w->get();
        QVERIFY(window->block_open);
        QVERIFY2(w->ValidationRows().isEmpty(), qPrintable(w->ValidationRows().join('\n')));

        QCOMPARE(TreeTexts(Widget<QTreeWidget>(window->param_page, "tree")),
                 QStringList({"Gain", "  K", "  Mode"}));
        const ParaEntity *mode = FindEntity(window->param_page->data, "Gain", "Mode");
        QVERIFY(mode);
        QCOMPARE(mode->values, QStringList({"Slow", "Fast"}));
        QCOMPARE(mode->val_type, QStringLiteral("Selected Index"));
        QCOMPARE(mode->para_con.size(), 1);
        QCOMPARE(QStringList({mode->para_con[0]->header, mode->para_con[0]->label, mode->para_con[0]->value,
                              QString::number(mode->para_con[0]->sel_idx), mode->para_con[0]->act_type}),
                 QStringList({"Gain", "K", "10", "1", "SetValue"}));
        // Selecting the entity shows it on the form, its control in the table.
        auto *tree = Widget<QTreeWidget>(window->param_page, "tree");
        tree->setCurrentItem(tree->topLevelItem(0)->child(1));
        QCOMPARE(Widget<QLineEdit>(window->param_page, "en_para_var_name")->text(), QStringLiteral("mode"));
        QCOMPARE(RowTexts(Widget<TableWidget>(window->param_page, "en_ctrl_table"), 0),
                 QStringList({"Gain", "K", "10", "Fast", "SetValue"}));

        auto *header = Widget<TableWidget>(window->model_page, "tb_header");
        auto *values = Widget<TableWidget>(window->model_page, "tb_data");
        QCOMPARE(Widget<QComboBox>(window->model_page, "cb_models")->count(), 1);
        QCOMPARE(RowTexts(header, 0) + RowTexts(header, 1), QStringList({"Gain", "Gain", "Mode", "K"}));
        QCOMPARE(RowTexts(values, 0) + RowTexts(values, 1), QStringList({"Slow", "1", "Fast", "10"}));

        QCOMPARE(TreeTexts(Widget<QTreeWidget>(window->initcond_page, "tree")), QStringList({"State", "  x0"}));

        auto *ports = Widget<TableWidget>(window->pres_page, "ports_table");
        QCOMPARE(ports->rowCount(), 4);
        QCOMPARE(RowTexts(ports, 0).mid(0, 4), QStringList({"in", "u", "Input", "Left"}));
        QCOMPARE(RowTexts(ports, 3).mid(0, 4), QStringList({"n", "", "Physical", "Right"}));
        QCOMPARE(Widget<QLineEdit>(window->pres_page, "blk_title")->text(), QStringLiteral("Authored"));
        QCOMPARE(Widget<QLineEdit>(window->pres_page, "blk_persize")->text(), QStringLiteral("60,40"));

        CodeConfigDlg *code = window->code_page;
        QCOMPARE(ListTexts(Widget<QListWidget>(code, "ports_lb")), QStringList({"in", "out", "p", "n"}));
        const BlkCodePort *p = FindCodePort(code->data, "p");
        QVERIFY(p && p->dims.size() == 1);
        QCOMPARE(QStringList({p->data_type, p->dims[0]->para1, QString::number(p->dims[0]->array_size)}),
                 QStringList({"Real", "1", "1"}));
        QCOMPARE(RowTexts(Widget<TableWidget>(code, "phy_para_table"), 0).mid(0, 5),
                 QStringList({"p", "n", "p_n", "Through(Const.)", "0"}));

        QCOMPARE(Widget<QLineEdit>(window->misc_page, "eb_cpu_ops")->text(), QStringLiteral("4"));
        QCOMPARE(RowTexts(Widget<TableWidget>(window->misc_page, "para_cond_table"), 0),
                 QStringList({"[Gain#K] > 0", "K must be positive"}));
    }

    // The presentation's ports table is the master list; the code page follows it by name.
    void portsStayInStep()
    {
        BlockData *block = PageWindow::NewBlockRecord("steps");
        for (const char *name : {"in", "out"}) {
            auto *port = new BlkPort;
            port->name = name;
            port->type = port->name == "in" ? "Input" : "Output";
            port->placement = "Left";
            block->pres->ports.append(port);
            auto *code = new BlkCodePort;
            code->port_name = name;
            code->data_name = QString("v_") + name;
            code->domain = "Electrical";
            code->dim_dependency = "Script";
            code->dims.append(new BlkPortDim{"2", 2});
            block->code->ports.append(code);
        }
        QVERIFY(w->OpenBlock(block, dir.path(), "steps"));
        FreeBlockData(block);
        MainWindow *window = w->get();
        auto *ports = Widget<TableWidget>(window->pres_page, "ports_table");

        ports->item(0, 0)->setText("inp");
        ports->setCurrentCell(1, 0);
        Click(window->pres_page, "pb_port_up");
        QCOMPARE(w->ValidationRows(), QStringList({"1. Error: Code: Port 'inp' size and dimension are not specified"}));
        const BlkCodeData *code = window->code_page->data;
        QCOMPARE(code->ports.size(), 2);
        // The moved port keeps its data; the renamed one starts again from the defaults.
        QCOMPARE(QStringList({code->ports[0]->port_name, code->ports[0]->data_name, code->ports[0]->domain}),
                 QStringList({"out", "v_out", "Electrical"}));
        const BlkCodePort *renamed = code->ports[1];
        QCOMPARE(QStringList({renamed->port_name, renamed->data_name, renamed->data_type, renamed->mem_type,
                              renamed->domain, renamed->dim_dependency}),
                 QStringList({"inp", "inp", "Real", "Cacheable", "Number", "Script"}));
        QCOMPARE(ListTexts(Widget<QListWidget>(window->code_page, "ports_lb")), QStringList({"out", "inp"}));

        // A save writes the same.
        window->code_page->SetPortForm(1, "Real64", 3);
        QVERIFY2(w->ValidationRows().isEmpty(), qPrintable(w->ValidationRows().join('\n')));
        QVERIFY(window->WriteBlock(dir.path(), true));
        window->CloseAct(true, false);
        window->OpenProjectFile(dir.path() + "/steps/steps.bdef");
        code = window->code_page->data;
        QCOMPARE(code->ports.size(), 2);
        QCOMPARE(code->ports[0]->data_name, QStringLiteral("v_out"));
        QCOMPARE(code->ports[1]->data_name, QStringLiteral("inp"));
        QCOMPARE(code->ports[1]->dims.value(0) ? code->ports[1]->dims[0]->array_size : 0, 3);
    }
};

ZEMA_TEST(tst_AuthoredBlock)
#include "tst_AuthoredBlock.moc"
