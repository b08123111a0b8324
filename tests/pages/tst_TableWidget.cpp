// The pages' table: which double click opens which editor, how a combo box is filled and
// committed, the keys of a line edit, hiding, and the right button.
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
        QTest::mousePress(table->viewport(), Qt::LeftButton, {}, At(row, col));
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, At(row, col));
        QTest::mouseRelease(table->viewport(), Qt::LeftButton, {}, At(row, col));
    }
    void Open(int row, int col) { Click(row, col), DoubleClick(row, col); }
    void Activate(int index) { table->combo->setCurrentIndex(index), emit table->combo->activated(index); }
};

} // namespace

class tst_TableWidget : public QObject
{
    Q_OBJECT

private slots:
    void editorOfAColumn_data()
    {
        QTest::addColumn<QList<qint32>>("combo");
        QTest::addColumn<QList<qint32>>("edit");
        QTest::addColumn<QString>("kind");
        QTest::newRow("combo column") << QList<qint32>{1} << QList<qint32>{} << "QComboBox";
        QTest::newRow("edit column") << QList<qint32>{} << QList<qint32>{1} << "QLineEdit";
        QTest::newRow("in neither list: none") << QList<qint32>{0} << QList<qint32>{2} << "";
        QTest::newRow("in both lists: combo wins") << QList<qint32>{1} << QList<qint32>{1} << "QComboBox";
    }
    void editorOfAColumn()
    {
        QFETCH(QList<qint32>, combo);
        QFETCH(QList<qint32>, edit);
        QFETCH(QString, kind);
        Fixture f(combo, edit);
        f.Open(2, 1);
        QWidget *ours = f.table->combo ? static_cast<QWidget *>(f.table->combo) : f.table->edit;
        QCOMPARE(ours ? QString(ours->metaObject()->className()) : QString(), kind);
        QCOMPARE(f.table->edit_row, kind.isEmpty() ? -1 : 2);
        if (ours)
            QCOMPARE(f.table->cellWidget(2, 1), ours);
        if (kind == "QLineEdit")
            QCOMPARE(f.table->edit->text(), QString("r2c1"));
    }

    void doubleClickOnAnotherRowOnlySelects()
    {
        Fixture f;
        f.Click(0, 1);
        f.DoubleClick(1, 1);
        QVERIFY(!f.table->cellWidget(1, 1) && !f.table->edit);   // not even the default editor
        f.DoubleClick(1, 1);
        QVERIFY(f.table->edit && f.table->cellWidget(1, 1) == f.table->edit);
        // Only the row counts: a read-only cell of the row was clicked before.
        f.Click(2, 2);
        f.DoubleClick(2, 0);
        QVERIFY(f.table->combo && f.table->cellWidget(2, 0) == f.table->combo);
    }

    void attachCombo_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("with_select");
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("committed");
        QTest::newRow("match at 0, with select") << "Alpha" << true << 1 << "Alpha";
        QTest::newRow("match, without select") << "Beta" << false << 1 << "Beta";
        QTest::newRow("not listed, with select: emptied") << "Gamma" << true << 0 << "";
        QTest::newRow("not listed, without select: emptied") << "Gamma" << false << -1 << "";
        QTest::newRow("case differs") << "beta" << false << -1 << "";
    }
    void attachCombo()
    {
        QFETCH(QString, text);
        QFETCH(bool, with_select);
        QFETCH(int, current);
        QFETCH(QString, committed);
        Fixture f;
        f.with_select = with_select;
        f.table->item(1, 0)->setText(text);
        f.Open(1, 0);
        QCOMPARE(f.table->combo->currentIndex(), current);
        QCOMPARE(f.table->item(1, 0)->text(), text);   // filling is no selection
        f.Click(2, 2);   // leaving the cell commits what the box shows
        QCOMPARE(f.table->item(1, 0)->text(), committed);
        QVERIFY(!f.table->cellWidget(1, 0) && !f.table->combo && f.changes.isEmpty());
    }

    void comboActivation()
    {
        Fixture f;
        f.Open(0, 0);
        f.Activate(2);
        QVERIFY(!f.table->combo && !f.table->cellWidget(0, 0));   // one activation ends the edit
        QCOMPARE(f.table->item(0, 0)->text(), QString("Beta"));
        f.DoubleClick(0, 0);
        f.Activate(2);   // the same item again still signals
        f.DoubleClick(0, 0);
        f.Activate(0);
        QCOMPARE(f.table->item(0, 0)->text(), QString());   // "<Select>" is stored as empty
        QCOMPARE(f.changes, (QStringList{"0,0,2,-1", "0,0,2,-1", "0,0,0,-1"}));
    }

    void lineEditKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("accepted");
        QTest::newRow("Return commits") << int(Qt::Key_Return) << "r1c1 new" << 1;
        QTest::newRow("Enter commits") << int(Qt::Key_Enter) << "r1c1 new" << 1;
        QTest::newRow("Escape drops the typing") << int(Qt::Key_Escape) << "r1c1" << 0;
    }
    void lineEditKeys()
    {
        QFETCH(int, key);
        QFETCH(QString, text);
        QFETCH(int, accepted);
        Fixture f;
        QSignalSpy spy(f.table, &TableWidget::EditBoxTextAccepted);
        f.Open(1, 1);
        QTest::keyClicks(f.table->edit, " new");
        QTest::keyClick(f.table->edit, Qt::Key(key));
        QCOMPARE(f.table->item(1, 1)->text(), text);
        QCOMPARE(spy.count(), accepted);
        QVERIFY(!f.table->edit && !f.table->cellWidget(1, 1) && f.table->edit_row == -1);
        QVERIFY(f.dialog.isVisible());   // the key ended the edit, not the dialog around it
    }

    void hideCommitsAnEditorOffTheScreen()
    {
        Fixture f;
        delete f.table->takeItem(1, 1);
        QSignalSpy spy(f.table, &TableWidget::EditBoxTextAccepted);
        f.Open(1, 1);
        QVERIFY(f.table->edit && !f.table->cellWidget(1, 1));   // a cell without item shows none
        f.table->edit->setText("typed");
        f.dialog.hide();
        QVERIFY(f.table->item(1, 1) && !f.table->edit);
        QCOMPARE(f.table->item(1, 1)->text(), QString("typed"));
        QCOMPARE(spy.count(), 1);
    }

    void rightButton()
    {
        Fixture f;
        QList<TableWidget *> signalled;
        QObject::connect(f.table, &TableWidget::RightMouseButtonClicked, [&](TableWidget *wgt, QMouseEvent *event) {
            signalled << (event->button() == Qt::RightButton ? wgt : nullptr);
        });
        QObject::connect(f.table, &TableWidget::AddRowSignal, [&](TableWidget *wgt) { signalled << wgt; });
        QObject::connect(f.table, &TableWidget::RemoveRowSignal, [&](TableWidget *wgt) { signalled << wgt; });
        QTest::mousePress(f.table->viewport(), Qt::RightButton, {}, f.At(0, 0));
        QVERIFY(!f.table->menu->isVisible());   // menu_enabled clear: the signal alone
        f.table->menu_enabled = 1;
        QTest::mousePress(f.table->viewport(), Qt::RightButton, {}, f.At(0, 0));
        QVERIFY(f.table->menu->isVisible());
        f.table->add_row_action->trigger();
        f.table->remove_row_action->trigger();
        f.table->menu->hide();
        QCOMPARE(signalled, QVector<TableWidget *>(4, f.table).toList());
        QCOMPARE(f.table->rowCount(), 3);   // the page adds and removes, never the table
    }
};

ZEMA_TEST(tst_TableWidget)
#include "tst_TableWidget.moc"
