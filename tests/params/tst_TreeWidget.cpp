// The tree with in-place editors: which click opens which editor, combo commits with their
// signal, the keys of a line edit, hiding and a deleted item.
#include "TestRegistry.h"
#include "params/TreeWidget.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

namespace {

// Three rows "Name" / "Enable" / "Note i", combo boxes in column 1 and line edits in column 2. The
// FillComboBox handler places and wires the box itself, as the Hardware I/O page does, so the tree
// must cope with both doing it.
struct Tree : TreeWidget {
    QStringList log;  // the tree's signals in order

    Tree()
    {
        setColumnCount(3);
        for (int i = 0; i < 3; ++i)
            addTopLevelItem(new QTreeWidgetItem({"Name", "Enable", QString("Note %1").arg(i)}));
        combo_cols = {1};
        edit_cols = {2};
        connect(this, &TreeWidget::FillComboBox, [this](QTreeWidgetItem *item, int col, QComboBox *cbox) {
            cbox->addItems({"<Select>", "Enable", "Disable"});
            setItemWidget(item, col, cbox);
            connect(cbox, SIGNAL(activated(int)), this, SLOT(OnComboBoxSelectionChanged(int)));
        });
        connect(this, &TreeWidget::ComboBoxSelectionChanged, [this](QTreeWidgetItem *item, int col, int cur, int prev) {
            log << QString("changed %1,%2,%3,%4").arg(indexOfTopLevelItem(item)).arg(col).arg(cur).arg(prev);
        });
        connect(this, &TreeWidget::EditBoxTextAccepted, [this](QTreeWidgetItem *item, int col) {
            log << QString("accepted %1,%2").arg(indexOfTopLevelItem(item)).arg(col);
        });
        resize(600, 300);
        show();
    }
    QPoint At(int row, int col) const { return visualRect(model()->index(row, col)).center(); }
    void Click(int row, int col) { QTest::mouseClick(viewport(), Qt::LeftButton, {}, At(row, col)); }
    // All events of a real double click, its first click included.
    void DoubleClick(int row, int col)
    {
        Click(row, col);
        for (QTest::MouseAction action : {QTest::MousePress, QTest::MouseDClick, QTest::MouseRelease})
            QTest::mouseEvent(action, viewport(), Qt::LeftButton, {}, At(row, col));
    }
    QWidget *Widget(int row, int col) const { return itemWidget(topLevelItem(row), col); }
};

} // namespace

class tst_TreeWidget : public QObject
{
    Q_OBJECT

private slots:
    void clicksOpenEditors()
    {
        Tree t;
        t.edit_cols << 1;  // the combo wins
        t.Click(1, 1);
        QVERIFY(!t.Widget(1, 1));  // the first click only selects
        t.Click(1, 1);
        QVERIFY(t.combo && t.Widget(1, 1) == t.combo && t.combo->currentText() == "Enable");
        t.DoubleClick(1, 2);
        QVERIFY(t.edit && t.Widget(1, 2) == t.edit && t.edit->text() == "Note 1");
        QTest::keyClick(t.edit, Qt::Key_Return);
        // Now the first click of the pair opens the editor; the double click must not commit it.
        t.DoubleClick(1, 2);
        QVERIFY(t.edit && t.Widget(1, 2) == t.edit);
        QCOMPARE(t.log, QStringList{"accepted 1,2"});
    }

    void comboCommit_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::newRow("other item") << 2 << "Disable";
        QTest::newRow("same item again") << 1 << "Enable";
        QTest::newRow("<Select> stores empty") << 0 << "";
    }

    void comboCommit()
    {
        QFETCH(int, index);
        QFETCH(QString, text);
        Tree t;
        t.Click(2, 1), t.Click(2, 1);
        t.combo->setCurrentIndex(index);
        emit t.combo->activated(index);
        QVERIFY(!t.combo && !t.Widget(2, 1) && t.topLevelItem(2)->text(1) == text);
        // The page wired the box a second time; still one signal, and the previous index is -1.
        QCOMPARE(t.log, QStringList{QString("changed 2,1,%1,-1").arg(index)});
        t.Click(2, 1);  // the cell clicked before: a single click reopens, an empty one on "<Select>"
        QCOMPARE(t.combo->currentText(), text.isEmpty() ? QString("<Select>") : text);
    }

    void lineEditEnds()
    {
        Tree t;
        t.Click(0, 2), t.Click(0, 2);
        QTest::keyClicks(t.edit, " new");
        QTest::keyClick(t.edit, Qt::Key_Return);
        t.Click(0, 2);
        QTest::keyClicks(t.edit, " more");
        QTest::keyClick(t.edit, Qt::Key_Escape);
        QVERIFY(!t.edit && !t.Widget(0, 2) && t.topLevelItem(0)->text(2) == "Note 0 new");
        // Clicking another cell commits, and so does hiding the tree.
        t.Click(0, 2);
        t.edit->setText("clicked away");
        t.Click(1, 2), t.Click(1, 2);
        t.edit->setText("hidden");
        t.hide();
        QVERIFY(t.topLevelItem(0)->text(2) == "clicked away" && t.topLevelItem(1)->text(2) == "hidden");
        // An item deleted while edited is not written to, and nothing is signalled.
        t.ItemClicked(t.topLevelItem(2), 2), t.ItemClicked(t.topLevelItem(2), 2);
        QVERIFY(t.edit);
        delete t.takeTopLevelItem(2);
        t.CommitEdit(true);
        QCOMPARE(t.log, QStringList({"accepted 0,2", "accepted 0,2", "accepted 1,2"}));
    }
};

ZEMA_TEST(tst_TreeWidget)
#include "tst_TreeWidget.moc"
