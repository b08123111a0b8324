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

    void numberingRunsThroughAllKinds()
    {
        ErrorList list;
        list.AddMessage(ErrorList::Warning, "w1");
        list.AddMessage(ErrorList::Error, "e1");
        list.AddMessage(ErrorList::Information, "i1");
        list.AddMessage(ErrorList::Error, "e2");
        QCOMPARE(list.NumberedMessages(),
                 QStringList({"1. Error: e1", "2. Error: e2", "3. Warning: w1", "4. Information: i1"}));
    }

    void kindsAndEmptyTexts_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("empty");
        QTest::addColumn<bool>("errors");
        QTest::addColumn<bool>("warnings");
        QTest::addColumn<QString>("row");
        QTest::newRow("error") << 1 << "x" << false << true << false << "1. Error: x";
        QTest::newRow("warning") << 2 << "x" << false << false << true << "1. Warning: x";
        QTest::newRow("information") << 3 << "x" << false << false << false << "1. Information: x";
        QTest::newRow("kind 0 has no prefix") << 0 << "x" << false << false << false << "1. x";
        QTest::newRow("empty text dropped") << 1 << "" << true << false << false << "";
    }
    void kindsAndEmptyTexts()
    {
        QFETCH(int, kind);
        QFETCH(QString, text);
        ErrorList list;
        list.AddMessage(kind, text);
        QTEST(list.IsEmpty(), "empty");
        QTEST(list.HasErrors(), "errors");
        QTEST(list.HasWarnings(), "warnings");
        QTEST(list.NumberedMessages().value(0), "row");
    }

    void showTwiceAddsRowsTwiceAndClearEmptiesAll()
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
        QVERIFY(dlg.IsEmpty());
        QCOMPARE(dlg.list->count(), 0);
    }

    void shownDialogSizesByRows_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("height");
        QTest::newRow("9 rows") << 9 << 300;
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
        QCOMPARE(answerer->texts.value(0), QString("Block Configuration Errors: Following errors/warnings are found"));
        QCOMPARE(answerer->texts.value(1), QString("1. Error: 0"));
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
        QCOMPARE(lines.value(0), QString("earlier"));
        QCOMPARE(lines.value(1), QString(""));
        QVERIFY(QRegularExpression("^\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d: T: L$").match(lines.value(2)).hasMatch());
        QCOMPARE(lines.value(3), QString("1. Error: e"));
        QCOMPARE(lines.value(4), QString("2. Warning: w"));

        ErrorListDlg unlogged("T", "L", "/nonexistent/dir/x.log", 1);
        unlogged.AddMessage(ErrorList::Error, "e");
        unlogged.ShowMessages();
        QCOMPARE(unlogged.list->count(), 1);
    }
};

ZEMA_TEST(tst_ErrorList)
#include "tst_ErrorList.moc"
