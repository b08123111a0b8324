// The pages' table: which double click opens which editor, how a combo box is filled and
// committed, how a line edit ends, and the right button.
#include "TestRegistry.h"
#include "pages/TableWidget.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// A dialog around a 3x3 table of cells "r<row>c<col>"; the FillComboBox handler acts as a page's,
// except that its box reports an activation while being filled, before it is wired.
struct Fixture {
    QDialog dialog;
    TableWidget *table = new TableWidget;
    bool with_select = true;
    QStringList changes;   // "row,col,cur,prev" per ComboBoxSelectionChanged

    explicit Fixture(QList<qint32> combo = {0}, QList<qint32> edit = {1})
    {
        (new QVBoxLayout(&dialog))->addWidget(table);
        dialog.resize(500, 300);
        table->setRowCount(3);
        table->setColumnCount(3);
        for (int cell = 0; cell < 9; ++cell)
            table->setItem(cell / 3, cell % 3, new QTableWidgetItem(QString("r%1c%2").arg(cell / 3).arg(cell % 3)));
        table->ColumnKinds(combo, edit);
        QObject::connect(table, &TableWidget::FillComboBox, [this](int, int, QComboBox *cbox) {
            cbox->addItems({"Alpha", "Beta"});
            emit cbox->activated(1);
            table->AttachCombo(cbox, with_select);
        });
        QObject::connect(table, &TableWidget::ComboBoxSelectionChanged, [this](int r, int c, int cur, int prev) {
            changes << QString("%1,%2,%3,%4").arg(r).arg(c).arg(cur).arg(prev);
        });
        dialog.show();
    }
    QPoint At(int row, int col) const { return table->visualRect(table->model()->index(row, col)).center(); }
    void Click(int row, int col) { QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, At(row, col)); }
    // A real double click without its first click, which would have made the row the last one.
    void DoubleClick(int row, int col)
    {
        for (QTest::MouseAction action : {QTest::MousePress, QTest::MouseDClick, QTest::MouseRelease})
            QTest::mouseEvent(action, table->viewport(), Qt::LeftButton, {}, At(row, col));
    }
    void Open(int row, int col) { Click(row, col), DoubleClick(row, col); }
    void Activate(int index) { table->combo->setCurrentIndex(index), emit table->combo->activated(index); }
};

} // namespace

class tst_TableWidget : public QObject
{
    Q_OBJECT

private slots:
    // Column 0 takes a combo box, 1 nothing of ours, 2 is in both lists. A double click opens an
    // editor only on the row clicked last, in any of its cells. The right button always signals;
    // its menu pops up only when enabled.
    void whatTheMouseOpens()
    {
        Fixture f({0, 2}, {2});
        f.Click(0, 1);
        f.DoubleClick(1, 2);
        QVERIFY(!f.table->cellWidget(1, 2) && !f.table->combo);   // not even the default editor
        f.DoubleClick(1, 2);
        QVERIFY(f.table->combo && f.table->cellWidget(1, 2) == f.table->combo && !f.table->edit);
        f.DoubleClick(1, 1);
        QVERIFY(!f.table->combo && !f.table->edit && f.table->edit_row == -1 && !f.table->cellWidget(1, 2));
        f.Click(2, 1);
        f.DoubleClick(2, 0);
        QVERIFY(f.table->combo && f.table->cellWidget(2, 0) == f.table->combo);

        int signalled = 0;
        connect(f.table, &TableWidget::RightMouseButtonClicked, [&](TableWidget *wgt) { signalled += wgt == f.table; });
        QTest::mousePress(f.table->viewport(), Qt::RightButton, {}, f.At(0, 0));
        QVERIFY(!f.table->menu->isVisible());
        f.table->menu_enabled = 1;
        QTest::mousePress(f.table->viewport(), Qt::RightButton, {}, f.At(0, 0));
        QVERIFY(f.table->menu->isVisible());
        f.table->menu->hide();
        QCOMPARE(signalled, 2);
    }

    // The box is filled for the cell's text, then either another cell is clicked (activate -1),
    // which commits what the box shows, or an item is activated twice, reopening in between.
    void comboBox_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("with_select");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("activate");
        QTest::addColumn<QString>("committed");
        QTest::newRow("match at 0, with select") << "Alpha" << true << 1 << -1 << "Alpha";
        QTest::newRow("match, without select") << "Beta" << false << 1 << -1 << "Beta";
        QTest::newRow("not listed, with select: emptied") << "Gamma" << true << 0 << -1 << "";
        QTest::newRow("case differs, without select: emptied") << "beta" << false << -1 << -1 << "";
        QTest::newRow("activation commits, the same item again signals") << "Beta" << true << 2 << 2 << "Beta";
        QTest::newRow("<Select> is stored as empty") << "Alpha" << true << 1 << 0 << "";
    }
    void comboBox()
    {
        QFETCH(QString, text);
        QFETCH(int, activate);
        Fixture f;
        QFETCH(bool, with_select);
        f.with_select = with_select;
        f.table->item(1, 0)->setText(text);
        f.Open(1, 0);
        QTEST(f.table->combo->currentIndex(), "current");
        QCOMPARE(f.table->item(1, 0)->text(), text);   // filling is no selection
        if (activate < 0)
            f.Click(2, 2);
        else
            f.Activate(activate), f.DoubleClick(1, 0), f.Activate(activate);
        QTEST(f.table->item(1, 0)->text(), "committed");
        QVERIFY(!f.table->cellWidget(1, 0) && !f.table->combo);   // one activation ends the edit
        QCOMPARE(f.changes.join(' '), activate < 0 ? QString() : QString("1,0,%1,-1 1,0,%1,-1").arg(activate));
    }

    // Key 0: the dialog is hidden instead, with the editor of a cell without item, off the screen.
    void lineEditEnds_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("accepted");
        QTest::newRow("Return commits") << int(Qt::Key_Return) << "r1c1 new" << 1;
        QTest::newRow("Enter commits") << int(Qt::Key_Enter) << "r1c1 new" << 1;
        QTest::newRow("Escape drops the typing") << int(Qt::Key_Escape) << "r1c1" << 0;
        QTest::newRow("hiding commits, into a new item") << 0 << " new" << 1;
    }
    void lineEditEnds()
    {
        QFETCH(int, key);
        Fixture f;
        if (!key)
            delete f.table->takeItem(1, 1);
        QSignalSpy spy(f.table, &TableWidget::EditBoxTextAccepted);
        f.Open(1, 1);
        QCOMPARE(f.table->cellWidget(1, 1), key ? f.table->edit : nullptr);
        QTest::keyClicks(f.table->edit, " new");
        key ? QTest::keyClick(f.table->edit, Qt::Key(key)) : f.dialog.hide();
        QTEST(f.table->item(1, 1) ? f.table->item(1, 1)->text() : "(no item)", "text");
        QTEST(int(spy.count()), "accepted");
        QVERIFY(!f.table->edit && !f.table->cellWidget(1, 1) && f.table->edit_row == -1);
        QCOMPARE(f.dialog.isVisible(), key != 0);   // a key ends the edit, not the dialog around it
    }
};

ZEMA_TEST(tst_TableWidget)
#include "tst_TableWidget.moc"
