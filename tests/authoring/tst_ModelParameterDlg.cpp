// The parameter model page: storing its tables, the table actions and their enabling, deleting
// models, the header's combo lists, and both validation messages.
#include "PageWindow.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "app/Prompt.h"
#include "authoring/ModelParameterDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QtTest>
#include <memory>

namespace {

using Para = std::unique_ptr<BlkParaData, void (*)(BlkParaData *)>;

// A model as "group|entity|v1,v2;group|entity|...", one part per column.
ModelCat *MakeModel(const QString &text)
{
    auto *model = new ModelCat;
    for (const QString &column : text.split(';')) {
        const QStringList parts = column.split('|');
        const QString vals = parts.value(2);
        model->subcats.append(new ModelSubCat{parts[0], parts.value(1), vals.isEmpty() ? QStringList() : vals.split(',')});
    }
    return model;
}

// Group "G" with "A" (a list of choices), "B" and "C"; group "H" with "D".
Para ParaWithModels(const QStringList &models)
{
    auto *a = new ParaEntity("A");
    a->values = QStringList{"x", "y"};
    auto *data = new BlkParaData{"", {new ParaGroup{"G", "", {a, new ParaEntity("B"), new ParaEntity("C")}},
                                      new ParaGroup{"H", "", {new ParaEntity("D")}}}, {}};
    for (const QString &text : models)
        data->model_cat.append(MakeModel(text));
    return Para(data, FreeBlkParaData);
}

QStringList Dump(const BlkParaData *data)
{
    QStringList models;
    for (const ModelCat *model : data->model_cat) {
        QStringList columns;
        for (const ModelSubCat *sub : model->subcats)
            columns << sub->group + "|" + sub->entity + "|" + sub->vals.join(',');
        models << columns.join(';');
    }
    return models;
}

QStringList ComboTexts(const QComboBox *box)
{
    QStringList texts;
    for (int i = 0; box && i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

// Object names are the form's contract with the page's slots.
template <typename T>
T *Child(QObject *page, const char *name)
{
    T *widget = page->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

QStringList g_messages;
void RecordMessage(QtMsgType, const QMessageLogContext &, const QString &text) { g_messages << text; }

} // namespace

class tst_ModelParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }

    void formSlotsConnect()
    {
        g_messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(RecordMessage);
        {
            Para para = ParaWithModels({"G|A|x"});
            ModelParameterDlg page(para.get());
        }
        qInstallMessageHandler(previous);
        for (const QString &message : g_messages)
            QVERIFY2(!message.contains("connectSlotsByName"), qPrintable(message));
    }

    void storeTables_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QPoint>("hole");
        QTest::addColumn<QString>("stored");
        QTest::newRow("longer dependent column is cut") << "G|A|x;G|B|1,2" << QPoint(-1, -1) << "G|A|x;G|B|1";
        QTest::newRow("gap moves the values below up") << "G|A|x,y,z;G|B|1,2,3" << QPoint(1, 1) << "G|A|x,y,z;G|B|1,3";
        QTest::newRow("columns without rows") << "G|A|;|B|" << QPoint(-1, -1) << "G|A|;|B|";
    }

    void storeTables()
    {
        QFETCH(QString, model);
        QFETCH(QPoint, hole);
        QFETCH(QString, stored);
        Para para = ParaWithModels({model});
        ModelParameterDlg page(para.get());
        if (hole.x() >= 0)
            delete Child<TableWidget>(&page, "tb_data")->takeItem(hole.x(), hole.y());
        page.SyncModels();
        QCOMPARE(Dump(para.get()), QStringList{stored});
    }

    void tableActions_data()
    {
        QTest::addColumn<QPoint>("cell");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QPoint>("current"); // where the current cell moves; (-1, -1) unchecked
        QTest::newRow("insert column") << QPoint(0, 1) << "Insert Column" << "G|A|x,y;||;G|B|1,2" << QPoint(-1, -1);
        QTest::newRow("shift column left") << QPoint(0, 1) << "Shift Column Left" << "G|B|1,2;G|A|x,y" << QPoint(0, 0);
        QTest::newRow("shift column right") << QPoint(1, 0) << "Shift Column Right" << "G|B|1,2;G|A|x,y" << QPoint(1, 1);
        QTest::newRow("shift row up") << QPoint(1, 1) << "Shift Row Up" << "G|A|y,x;G|B|2,1" << QPoint(0, 1);
        QTest::newRow("shift row down") << QPoint(0, 0) << "Shift Row Down" << "G|A|y,x;G|B|2,1" << QPoint(1, 0);
    }

    void tableActions()
    {
        QFETCH(QPoint, cell);
        QFETCH(QString, action);
        QFETCH(QString, stored);
        QFETCH(QPoint, current);
        Para para = ParaWithModels({"G|A|x,y;G|B|1,2"});
        ModelParameterDlg page(para.get());
        TableWidget *data = Child<TableWidget>(&page, "tb_data");
        TableWidget *header = Child<TableWidget>(&page, "tb_header");
        data->setCurrentCell(cell.x(), cell.y());
        for (QAction *entry : page.context_menu->actions())
            if (entry->text() == action)
                entry->trigger();
        if (current.x() >= 0)
            QCOMPARE(QPoint(data->currentRow(), data->currentColumn()), current);
        if (action.startsWith("Shift Column"))
            QCOMPARE(header->currentColumn(), current.y());
        // The header stays one combo column per column.
        QCOMPARE(header->combo_columns.size(), data->columnCount());
        page.SyncModels();
        QCOMPARE(Dump(para.get()), QStringList{stored});
    }

    void menuStates_data()
    {
        QTest::addColumn<QPoint>("cell");
        QTest::addColumn<QStringList>("enabled");
        QTest::newRow("no current cell") << QPoint(-1, -1) << QStringList{"Add Column", "Add Row"};
        QTest::newRow("first cell") << QPoint(0, 0)
                                    << QStringList{"Add Column", "Insert Column", "Add Row", "Insert Row", "Shift Column Right",
                                                   "Shift Row Down", "Delete Column", "Delete Row"};
        QTest::newRow("last cell") << QPoint(2, 2)
                                   << QStringList{"Add Column", "Insert Column", "Add Row", "Insert Row", "Shift Column Left",
                                                  "Shift Row Up", "Delete Column", "Delete Row"};
    }

    void menuStates()
    {
        QFETCH(QPoint, cell);
        QFETCH(QStringList, enabled);
        Para para = ParaWithModels({"G|A|x,y,z;G|B|1,2,3;G|C|4,5,6"});
        ModelParameterDlg page(para.get());
        Child<TableWidget>(&page, "tb_data")->setCurrentCell(cell.x(), cell.y());
        page.UpdateActionStates();
        QStringList on;
        for (const QAction *action : page.context_menu->actions())
            if (!action->isSeparator() && action->isEnabled())
                on << action->text();
        QCOMPARE(on, enabled);
    }

    void menuNeedsDataFocus()
    {
        Para para = ParaWithModels({"G|A|x"}), none = ParaWithModels({});
        ModelParameterDlg page(para.get()), empty(none.get());
        for (ModelParameterDlg *shown : {&page, &empty}) {
            shown->show();
            QApplication::setActiveWindow(shown);
            QVERIFY(QTest::qWaitForWindowActive(shown));
            Child<TableWidget>(shown, "tb_header")->setFocus();
            shown->ShowContextMenu(QPoint(5, 5));
            QVERIFY(!shown->context_menu->isVisible());
            Child<TableWidget>(shown, "tb_data")->setFocus();
            shown->ShowContextMenu(QPoint(5, 5));
            // Without a model there is nothing to edit.
            QCOMPARE(shown->context_menu->isVisible(), shown == &page);
            shown->context_menu->hide();
        }
    }

    void deleteModel_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("models");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<int>("columns");
        QTest::newRow("last model") << 2 << int(QMessageBox::Ok) << QStringList{"G|A|a", "G|A|b"}
                                    << QStringList{"Model1", "Model2"} << 1;
        QTest::newRow("middle model wipes the next") << 1 << int(QMessageBox::Ok) << QStringList{"G|A|a", ""}
                                                     << QStringList{"Model1", "Model3"} << 0;
        QTest::newRow("cancelled") << 1 << int(QMessageBox::Cancel) << QStringList{"G|A|a", "G|A|b", "G|A|c"}
                                   << QStringList{"Model1", "Model2", "Model3"} << 1;
    }

    void deleteModel()
    {
        QFETCH(int, index);
        QFETCH(int, answer);
        QFETCH(QStringList, models);
        QFETCH(QStringList, names);
        QFETCH(int, columns);
        auto scripted = std::make_unique<ScriptedAnswerer>();
        ScriptedAnswerer *answers = scripted.get();
        answers->buttons = {QMessageBox::StandardButton(answer)};
        Prompt::SetAnswerer(std::move(scripted));
        Para para = ParaWithModels({"G|A|a", "G|A|b", "G|A|c"});
        ModelParameterDlg page(para.get());
        auto *combo = Child<QComboBox>(&page, "cb_models");
        combo->setCurrentIndex(index);
        Child<QPushButton>(&page, "pb_delmodel")->click();
        QCOMPARE(answers->texts, QStringList{"Do you want to delete selected model"});
        QCOMPARE(ComboTexts(combo), names);
        QCOMPARE(Child<TableWidget>(&page, "tb_header")->columnCount(), columns);
        page.SyncModels();
        QCOMPARE(Dump(para.get()), models);
    }

    void headerCombos_data()
    {
        QTest::addColumn<QPoint>("cell");
        QTest::addColumn<QStringList>("items");
        QTest::newRow("groups") << QPoint(0, 1) << QStringList{"G", "H"};
        QTest::newRow("first column lists every entity") << QPoint(1, 0) << QStringList{"A", "B", "C"};
        QTest::newRow("dependent column only entities without choices") << QPoint(1, 1) << QStringList{"B", "C"};
        QTest::newRow("empty group") << QPoint(1, 2) << QStringList{};
    }

    void headerCombos()
    {
        QFETCH(QPoint, cell);
        QFETCH(QStringList, items);
        Para para = ParaWithModels({"G|A|x;G|B|1;|"});
        ModelParameterDlg page(para.get());
        TableWidget *header = Child<TableWidget>(&page, "tb_header");
        header->CellClicked(cell.x(), cell.y());
        header->CellDoubleClicked(cell.x(), cell.y());
        QVERIFY(header->combo);
        QCOMPARE(ComboTexts(header->combo), items);
        header->CommitCell(-1, false);
    }

    void validation_data()
    {
        QTest::addColumn<QStringList>("models");
        QTest::addColumn<QStringList>("rows");
        const QString value = "Error: Parameter Models: Model%1: Duplicate value %2 exits at column 1";
        const QString column = "Error: Parameter Models: Model%1: Duplicate group:%2/entity:%3 fields exists";
        QTest::newRow("three equal values")
            << QStringList{"G|A|x,x,x"}
            << QStringList{"1. " + value.arg(1).arg("x"), "2. " + value.arg(1).arg("x"), "3. " + value.arg(1).arg("x")};
        QTest::newRow("one entity in three columns")
            << QStringList{"G|A|x,y;G|B|1,2;G|B|3,4;G|B|5,6"}
            << QStringList{"1. " + column.arg(1).arg("G", "B"), "2. " + column.arg(1).arg("G", "B"),
                           "3. " + column.arg(1).arg("G", "B")};
        QTest::newRow("empty names and values pass") << QStringList{"G|A|,;|B|1,2;|B|3,4;G||5,6;G||7,8"} << QStringList{};
        QTest::newRow("second model, columns before values")
            << QStringList{"G|A|x", "G|A|y,y;G|A|z"}
            << QStringList{"1. " + column.arg(2).arg("G", "A"), "2. " + value.arg(2).arg("y")};
    }

    void validation()
    {
        QFETCH(QStringList, models);
        QFETCH(QStringList, rows);
        QTemporaryDir tmp;
        PageWindow w(tmp.path());
        BlockData *block = PageWindow::NewBlockRecord("blk");
        for (const QString &text : models)
            block->params->model_cat.append(MakeModel(text));
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QCOMPARE(w.ValidationRows(), rows);
    }
};

ZEMA_TEST(tst_ModelParameterDlg)
#include "tst_ModelParameterDlg.moc"
