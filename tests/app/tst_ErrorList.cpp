// The error list: numbering across kinds, prefixes, the log and the dialog.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/ErrorListDlg.h"
#include "app/Prompt.h"

#include <QListWidget>
#include <QtTest>

class tst_ErrorList : public QObject
{
    Q_OBJECT
    ScriptedAnswerer *answerer = nullptr;

private slots:
    void init()
    {
        auto scripted = std::make_unique<ScriptedAnswerer>();
        answerer = scripted.get();
        Prompt::SetAnswerer(std::move(scripted));
    }
    void cleanup() { Prompt::SetAnswerer(nullptr); }

    // Kind 0 lands among the infos without a prefix; an empty text is dropped.
    void numberingRunsThroughAllKinds()
    {
        ErrorList list;
        list.AddMessage(ErrorList::Warning, "w1");
        list.AddMessage(0, "plain");
        list.AddMessage(ErrorList::Error, "e1");
        list.AddMessage(ErrorList::Error, "");
        list.AddMessage(ErrorList::Information, "i1");
        list.AddMessage(ErrorList::Error, "e2");
        QCOMPARE(list.NumberedMessages(), QStringList({"1. Error: e1", "2. Error: e2", "3. Warning: w1",
                                                       "4. plain", "5. Information: i1"}));
        ErrorList quiet;
        quiet.AddMessage(7, "x");
        QVERIFY(!quiet.IsEmpty() && !quiet.HasErrors() && !quiet.HasWarnings());
        quiet.ClearMessages();
        quiet.AddMessage(ErrorList::Error, "");
        QVERIFY(quiet.IsEmpty());
    }

    void showTwiceAddsRowsTwice()
    {
        ErrorListDlg dlg("Title", "Label", QString(), 1);
        dlg.AddMessage(ErrorList::Error, "e");
        dlg.AddMessage(ErrorList::Warning, "w");
        dlg.ShowMessages();
        dlg.ShowMessages();
        QCOMPARE(dlg.list->count(), 4);
        QCOMPARE(dlg.list->item(3)->text(), QString("2. Warning: w"));
        QVERIFY(answerer->texts.isEmpty()); // no_show: never run
        dlg.ClearMessages();
        QVERIFY(dlg.IsEmpty() && dlg.list->count() == 0);
    }

    void shownDialogSizesByRows_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("height");
        QTest::newRow("9 rows") << 9 << 300;
        QTest::newRow("19 rows") << 19 << 350;
        QTest::newRow("29 rows") << 29 << 425;
        QTest::newRow("30 rows") << 30 << 500;
    }
    void shownDialogSizesByRows()
    {
        QFETCH(int, rows);
        ErrorListDlg dlg("Block Configuration Errors", "Following errors/warnings are found", QString(), 0);
        for (int i = 0; i < rows; ++i)
            dlg.AddMessage(ErrorList::Error, QString::number(i));
        dlg.ShowMessages();
        QCOMPARE(dlg.width(), 600);
        QTEST(dlg.height(), "height");
        QCOMPARE(answerer->texts.mid(0, 2), QStringList({"Block Configuration Errors: Following errors/warnings are found",
                                                         "1. Error: 0"}));
    }

    void logAppendsHeadLineAndRows()
    {
        QTemporaryDir dir;
        const QString log = dir.filePath("check.log");
        QVERIFY(WriteBytes(log, "earlier\n"));
        ErrorListDlg dlg("T", "L", log, 1);
        dlg.AddMessage(ErrorList::Warning, "w");
        dlg.AddMessage(ErrorList::Error, "e");
        dlg.ShowMessages();
        const QStringList lines = QString::fromUtf8(ReadBytes(log)).split('\n');
        QCOMPARE(lines.mid(0, 2), QStringList({"earlier", ""}));
        QVERIFY(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d: T: L$").match(lines.value(2)).hasMatch());
        QCOMPARE(lines.mid(3, 2), QStringList({"1. Error: e", "2. Warning: w"}));

        ErrorListDlg unlogged("T", "L", "/nonexistent/dir/x.log", 1);
        unlogged.AddMessage(ErrorList::Error, "e");
        unlogged.ShowMessages();
        QCOMPARE(unlogged.list->count(), 1);
    }
};

ZEMA_TEST(tst_ErrorList)
#include "tst_ErrorList.moc"
