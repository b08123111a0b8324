// The tree with in-place editors: which click opens which editor, combo commits with their
// signal, the keys of a line edit, hiding, and the right button.
#include "TestRegistry.h"
#include "params/TreeWidget.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

namespace {

// Three top-level items "Name i" / "Enable" / "Note i"; the FillComboBox handler places and wires
// the box itself, as the Hardware I/O page does, so the tree must cope with both doing it.
struct Fixture {
    TreeWidget tree;
    QStringList changes;    // "row,col,cur,prev" per ComboBoxSelectionChanged
    QStringList accepted;   // "row,col" per EditBoxTextAccepted

    Fixture()
    {
        tree.setColumnCount(3);
        for (int i = 0; i < 3; ++i)
            tree.addTopLevelItem(new QTreeWidgetItem({QString("Name %1").arg(i), "Enable",
                                                      QString("Note %1").arg(i)}));
        tree.combo_cols = {1};
        tree.edit_cols = {2};
        QObject::connect(&tree, &TreeWidget::FillComboBox,
                         [this](QTreeWidgetItem *item, int col, QComboBox *cbox) {
                             cbox->addItems({"<Select>", "Enable", "Disable"});
                             tree.setItemWidget(item, col, cbox);
                             QObject::connect(cbox, SIGNAL(activated(int)), &tree,
                                              SLOT(OnComboBoxSelectionChanged(int)));
                         });
        QObject::connect(&tree, &TreeWidget::ComboBoxSelectionChanged,
                         [this](QTreeWidgetItem *item, int col, int cur, int prev) {
                             changes << QString("%1,%2,%3,%4").arg(Row(item)).arg(col).arg(cur).arg(prev);
                         });
        QObject::connect(&tree, &TreeWidget::EditBoxTextAccepted, [this](QTreeWidgetItem *item, int col) {
            accepted << QString("%1,%2").arg(Row(item)).arg(col);
        });
        tree.resize(600, 300);
        tree.show();
    }
    int Row(QTreeWidgetItem *item) { return tree.indexOfTopLevelItem(item); }
    QPoint At(int row, int col) const { return tree.visualRect(tree.model()->index(row, col)).center(); }
    void Click(int row, int col) { QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, At(row, col)); }
    void Open(int row, int col) { Click(row, col), Click(row, col); }
    // All events of a real double click, its first click included.
    void DoubleClick(int row, int col)
    {
        Click(row, col);
        QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, At(row, col));
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, At(row, col));
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, At(row, col));
    }
    QString Text(int row, int col) { return tree.topLevelItem(row)->text(col); }
    QWidget *Widget(int row, int col) { return tree.itemWidget(tree.topLevelItem(row), col); }
};

} // namespace

class tst_TreeWidget : public QObject
{
    Q_OBJECT

private slots:
    void secondClickOpensEditor()
    {
        Fixture f;
        f.tree.edit_cols << 1;   // the combo wins
        f.Click(1, 1);
        QVERIFY(!f.Widget(1, 1));   // the first click only selects
        f.Click(1, 1);
        QVERIFY(f.tree.combo && f.Widget(1, 1) == f.tree.combo);
        QCOMPARE(f.tree.combo->currentText(), QString("Enable"));   // the cell's text
        f.Open(1, 0);   // in neither list
        QVERIFY(!f.tree.combo && !f.tree.edit && !f.Widget(1, 1) && !f.Widget(1, 0));
        f.Open(1, 2);
        QVERIFY(f.tree.edit && f.Widget(1, 2) == f.tree.edit);
        QCOMPARE(f.tree.edit->text(), QString("Note 1"));
    }

    void doubleClickOpensOnce()
    {
        Fixture f;
        f.Click(0, 2);
        f.DoubleClick(1, 2);
        QVERIFY(f.tree.edit && f.Widget(1, 2) == f.tree.edit);
        QTest::keyClick(f.tree.edit, Qt::Key_Return);
        // Now the first click of the pair opens the editor; the double click must not commit it.
        f.DoubleClick(1, 2);
        QVERIFY(f.tree.edit && f.Widget(1, 2) == f.tree.edit);
        QCOMPARE(f.accepted, QStringList{"1,2"});
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
        Fixture f;
        f.Open(2, 1);
        f.tree.combo->setCurrentIndex(index);
        emit f.tree.combo->activated(index);
        QCOMPARE(f.Text(2, 1), text);
        QVERIFY(!f.tree.combo && !f.Widget(2, 1));
        // The page wired the box a second time; still one signal, and the previous index is -1.
        QCOMPARE(f.changes, QStringList{QString("2,1,%1,-1").arg(index)});
        QVERIFY(f.accepted.isEmpty());
        // An empty cell reopens on "<Select>".
        f.Click(2, 1);
        QCOMPARE(f.tree.combo->currentText(), text.isEmpty() ? QString("<Select>") : text);
    }

    void lineEditKeys()
    {
        Fixture f;
        f.Open(0, 2);
        QTest::keyClicks(f.tree.edit, " new");
        QTest::keyClick(f.tree.edit, Qt::Key_Return);
        QVERIFY(!f.tree.edit && !f.Widget(0, 2) && !f.tree.edit_item);
        f.Click(0, 2);   // the cell clicked before: a single click reopens
        QTest::keyClicks(f.tree.edit, " more");
        QTest::keyClick(f.tree.edit, Qt::Key_Escape);
        QVERIFY(!f.tree.edit && !f.Widget(0, 2));
        QCOMPARE(f.Text(0, 2), QString("Note 0 new"));
        QCOMPARE(f.accepted, QStringList{"0,2"});
    }

    void commitOnHideAndOnOtherClick()
    {
        Fixture f;
        f.Open(0, 2);
        f.tree.edit->setText("clicked away");
        f.Click(1, 2);
        QCOMPARE(f.Text(0, 2), QString("clicked away"));
        f.Click(1, 2);
        f.tree.edit->setText("hidden");
        f.tree.hide();
        QCOMPARE(f.Text(1, 2), QString("hidden"));
        QCOMPARE(f.accepted, (QStringList{"0,2", "1,2"}));
    }

    void deletedItemWhileEditing()
    {
        Fixture f;
        f.Open(1, 2);
        delete f.tree.takeTopLevelItem(1);
        f.tree.CommitEdit(true);   // nothing left to write to, and no crash
        QVERIFY(f.accepted.isEmpty() && !f.tree.edit_item);
    }

    void rightPress()
    {
        Fixture f;
        QList<QPoint> points;
        QObject::connect(&f.tree, &TreeWidget::RightButtonClicked, [&](const QPoint &pos) { points << pos; });
        QTest::mousePress(f.tree.viewport(), Qt::RightButton, {}, f.At(2, 0));
        QCOMPARE(points, QList<QPoint>{f.At(2, 0)});
    }
};

ZEMA_TEST(tst_TreeWidget)
#include "tst_TreeWidget.moc"
