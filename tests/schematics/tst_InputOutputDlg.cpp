// The Hardware I/O page: its empty tree and its one combo column.
#include "TestRegistry.h"
#include "params/TreeWidget.h"
#include "schematics/InputOutputDlg.h"

#include <QComboBox>
#include <QtTest>

class tst_InputOutputDlg : public QObject
{
    Q_OBJECT
private slots:
    void emptyTree()
    {
        InputOutputDlg page(0, "/blocks/b");
        TreeWidget *tree = page.tree;
        QCOMPARE(tree->topLevelItemCount(), 0);
        QCOMPARE(tree->headerItem()->text(0), QString("Description"));
        QCOMPARE(tree->headerItem()->text(2), QString("Enable/Disable"));
        QCOMPARE(tree->combo_cols, QList<int>{2});
        QVERIFY(tree->edit_cols.isEmpty());
        // 0.6 and 0.2 of the page's 900, then a fixed 50.
        QCOMPARE(QList<int>({tree->columnWidth(0), tree->columnWidth(1), tree->columnWidth(2)}), QList<int>({540, 180, 50}));
    }

    void enableCombo_data()
    {
        QTest::addColumn<int>("col");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<int>("current");
        QTest::newRow("enabled row") << 2 << "Disable" << QStringList{"Enable", "Disable"} << 1;
        QTest::newRow("unknown text") << 2 << "On" << QStringList{"Enable", "Disable"} << -1;
        QTest::newRow("other column lists nothing") << 1 << "Digital" << QStringList{} << -1;
    }

    void enableCombo()
    {
        QFETCH(int, col);
        QFETCH(QString, text);
        QFETCH(QStringList, items);
        QFETCH(int, current);
        InputOutputDlg page(0, QString());
        auto *item = new QTreeWidgetItem(page.tree, QStringList{"In 1", "Digital", "Enable"});
        item->setText(col, text);
        auto *box = new QComboBox;
        page.FillComboBoxData(item, col, box);
        QCOMPARE(page.tree->itemWidget(item, col), box);
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts << box->itemText(i);
        QCOMPARE(texts, items);
        QCOMPARE(box->currentIndex(), current);
    }
};

ZEMA_TEST(tst_InputOutputDlg)
#include "tst_InputOutputDlg.moc"
