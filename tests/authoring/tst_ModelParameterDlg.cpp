// The parameter model page: storing its tables, the table actions and their enabling, deleting
// models, the header's combo lists, and both validation messages.
#include "PageWindow.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "app/Prompt.h"
#include "authoring/ModelParameterDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using S = QStringList;

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

QStringList ComboTexts(const QComboBox *box)
{
    QStringList texts;
    for (int i = 0; box && i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

template <typename T> T *Child(QObject *page, const char *name)
{
    T *widget = page->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

// The page on group "G" with "A" (a list of choices), "B" and "C", group "H" with "D", and the
// given models.
struct Page {
    explicit Page(const QStringList &models) : para(MakePara(models), FreeBlkParaData), page(para.get()) {}
    static BlkParaData *MakePara(const QStringList &models)
    {
        auto *a = new ParaEntity("A");
        a->values = S{"x", "y"};
        auto *data = new BlkParaData{"", {new ParaGroup{"G", "", {a, new ParaEntity("B"), new ParaEntity("C")}},
                                          new ParaGroup{"H", "", {new ParaEntity("D")}}}, {}};
        for (const QString &text : models)
            data->model_cat.append(MakeModel(text));
        return data;
    }
    // The stored models after a sync, in the form MakeModel takes.
    QStringList Stored()
    {
        page.SyncModels();
        QStringList models;
        for (const ModelCat *model : para->model_cat) {
            QStringList columns;
            for (const ModelSubCat *sub : model->subcats)
                columns << sub->group + "|" + sub->entity + "|" + sub->vals.join(',');
            models << columns.join(';');
        }
        return models;
    }

    std::unique_ptr<BlkParaData, void (*)(BlkParaData *)> para;
    ModelParameterDlg page;
    TableWidget *data = Child<TableWidget>(&page, "tb_data"), *header = Child<TableWidget>(&page, "tb_header");
};

} // namespace

class tst_ModelParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }


    // Edits of the tables as a sync stores them: cells without an item are skipped, so the values
    // below move up. A shift ends with "@row,col", the current cell it moved to.
    void editsStored_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QPoint>("cell");
        QTest::addColumn<QString>("action"); // a context menu entry, "take" the cell's item, or "none"
        QTest::addColumn<QString>("stored");
        const QString two = "G|A|x,y;G|B|1,2";
        const QPoint none(-1, -1);
        QTest::newRow("longer dependent column is cut") << "G|A|x;G|B|1,2" << none << "none" << "G|A|x;G|B|1";
        QTest::newRow("gap moves the values below up") << "G|A|x,y,z;G|B|1,2,3" << QPoint(1, 1) << "take" << "G|A|x,y,z;G|B|1,3";
        QTest::newRow("columns without rows") << "G|A|;|B|" << none << "none" << "G|A|;|B|";
        QTest::newRow("insert column") << two << QPoint(0, 1) << "Insert Column" << "G|A|x,y;||;G|B|1,2";
        QTest::newRow("shift column left") << two << QPoint(0, 1) << "Shift Column Left" << "G|B|1,2;G|A|x,y @0,0";
        QTest::newRow("shift column right") << two << QPoint(1, 0) << "Shift Column Right" << "G|B|1,2;G|A|x,y @1,1";
        QTest::newRow("shift row up") << two << QPoint(1, 1) << "Shift Row Up" << "G|A|y,x;G|B|2,1 @0,1";
        QTest::newRow("shift row down") << two << QPoint(0, 0) << "Shift Row Down" << "G|A|y,x;G|B|2,1 @1,0";
    }

    void editsStored()
    {
        QFETCH(QString, model);
        QFETCH(QPoint, cell);
        QFETCH(QString, action);
        QFETCH(QString, stored);
        Page p({model});
        p.data->setCurrentCell(cell.x(), cell.y());
        if (action == "take")
            delete p.data->takeItem(cell.x(), cell.y());
        for (QAction *entry : p.page.context_menu->actions())
            if (entry->text() == action)
                entry->trigger();
        // The header stays one combo column per column, and its current column follows a shift.
        QCOMPARE(p.header->combo_columns.size(), p.data->columnCount());
        if (action.startsWith("Shift Column"))
            QCOMPARE(p.header->currentColumn(), p.data->currentColumn());
        const QString moved = QString(" @%1,%2").arg(p.data->currentRow()).arg(p.data->currentColumn());
        QCOMPARE(p.Stored().join(' ') + (action.startsWith("Shift") ? moved : QString()), stored);
    }

    // The menu opens only from the data table of a page with a model, its actions set for the
    // current cell: those off for no cell, the first and the last cell of a 3 by 3 table.
    void contextMenu()
    {
        Page p({"G|A|x,y,z;G|B|1,2,3;G|C|4,5,6"}), empty({});
        QStringList off;
        for (Page *shown : {&empty, &p}) {
            shown->page.show();
            QApplication::setActiveWindow(&shown->page);
            QVERIFY(QTest::qWaitForWindowActive(&shown->page));
            for (const QPoint &cell : {QPoint(-1, -1), QPoint(0, 0), QPoint(2, 2)}) {
                shown->data->setCurrentCell(cell.x(), cell.y());
                for (TableWidget *focus : {shown->header, shown->data}) {
                    focus->setFocus();
                    shown->page.ShowContextMenu(QPoint(5, 5));
                    QCOMPARE(shown->page.context_menu->isVisible(), shown == &p && focus == p.data);
                    shown->page.context_menu->hide();
                }
                off << QString();
                for (const QAction *action : shown->page.context_menu->actions())
                    if (!action->isSeparator() && !action->isEnabled())
                        off.last() += action->text() + ",";
            }
        }
        QCOMPARE(off.mid(3), (S{"Insert Column,Insert Row,Shift Column Left,Shift Column Right,Shift Row Up,Shift Row Down,"
                                "Delete Column,Delete Row,",
                                "Shift Column Left,Shift Row Up,", "Shift Column Right,Shift Row Down,"}));
    }

    // The model after the deleted one takes its place, and the emptied tables are stored into it.
    // Expected: the combo's names, then the stored models.
    void deleteModel_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("last model") << 2 << int(QMessageBox::Ok) << S{"Model1", "Model2", "G|A|a", "G|A|b"};
        QTest::newRow("middle model wipes the next") << 1 << int(QMessageBox::Ok) << S{"Model1", "Model3", "G|A|a", ""};
        QTest::newRow("cancelled") << 1 << int(QMessageBox::Cancel) << S{"Model1", "Model2", "Model3", "G|A|a", "G|A|b", "G|A|c"};
    }

    void deleteModel()
    {
        QFETCH(int, index);
        QFETCH(int, answer);
        QFETCH(QStringList, after);
        auto *answers = new ScriptedAnswerer;
        answers->buttons = {QMessageBox::StandardButton(answer)};
        Prompt::SetAnswerer(std::unique_ptr<ScriptedAnswerer>(answers));
        Page p({"G|A|a", "G|A|b", "G|A|c"});
        auto *combo = Child<QComboBox>(&p.page, "cb_models");
        combo->setCurrentIndex(index);
        Child<QPushButton>(&p.page, "pb_delmodel")->click();
        QCOMPARE(answers->texts, S{"Do you want to delete selected model"});
        QCOMPARE(ComboTexts(combo) + p.Stored(), after);
    }

    // Row 0 lists the groups; row 1 the entities of the column's group, in a dependent column only
    // those without a list of choices.
    void headerCombos()
    {
        Page p({"G|A|x;G|B|1;|"});
        QStringList lists;
        for (const QPoint &cell : {QPoint(0, 1), QPoint(1, 0), QPoint(1, 1), QPoint(1, 2)}) {
            p.header->CellClicked(cell.x(), cell.y());
            p.header->CellDoubleClicked(cell.x(), cell.y());
            QVERIFY(p.header->combo);
            lists << ComboTexts(p.header->combo).join(',');
            p.header->CommitCell(-1, false);
        }
        QCOMPARE(lists, (S{"G,H", "A,B,C", "B,C", ""}));
    }

    // Rows without their "N. Error: Parameter Models: " start.
    void validation_data()
    {
        QTest::addColumn<QStringList>("models");
        QTest::addColumn<QStringList>("rows");
        const QString x = "Model1: Duplicate value x exits at column 1", b = "Model1: Duplicate group:G/entity:B fields exists";
        QTest::newRow("three equal values") << S{"G|A|x,x,x"} << S{x, x, x};
        QTest::newRow("one entity in three columns") << S{"G|A|x,y;G|B|1,2;G|B|3,4;G|B|5,6"} << S{b, b, b};
        QTest::newRow("empty names and values pass") << S{"G|A|,;|B|1,2;|B|3,4;G||5,6;G||7,8"} << S{};
        QTest::newRow("second model, columns before values")
            << S{"G|A|x", "G|A|y,y;G|A|z"}
            << S{"Model2: Duplicate group:G/entity:A fields exists", "Model2: Duplicate value y exits at column 1"};
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
        for (int i = 0; i < rows.size(); ++i)
            rows[i] = QString("%1. Error: Parameter Models: ").arg(i + 1) + rows[i];
        QCOMPARE(w.ValidationRows(), rows);
    }
};

ZEMA_TEST(tst_ModelParameterDlg)
#include "tst_ModelParameterDlg.moc"
