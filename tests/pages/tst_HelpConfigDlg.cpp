// The Help page: the view's file, the fixed file of the browser button, the entry file written
// back, and the warning for a missing help file.
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "help/HelpWnd.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/HelpConfigDlg.h"

#include <QDesktopServices>
#include <QLineEdit>
#include <QtTest>
#include <memory>

namespace {

using Help = std::unique_ptr<BlkHelpData, void (*)(BlkHelpData *)>;

QStringList g_messages;
void RecordMessage(QtMsgType, const QMessageLogContext &, const QString &text) { g_messages << text; }

} // namespace

class tst_HelpConfigDlg : public QObject
{
    Q_OBJECT
public slots:
    // Stands in for the desktop's handler of local files.
    void OpenUrl(const QUrl &url) { opened << url; }

private slots:
    void init() { opened.clear(); }
    void cleanup()
    {
        QDesktopServices::unsetUrlHandler("file");
        Prompt::SetAnswerer(std::make_unique<DialogAnswerer>());
    }

    void formSlotsConnect()
    {
        g_messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(RecordMessage);
        delete new HelpConfigDlg;
        qInstallMessageHandler(previous);
        for (const QString &message : g_messages)
            QVERIFY2(!message.contains("connectSlotsByName"), qPrintable(message));
    }

    void shownFile_data()
    {
        QTest::addColumn<QStringList>("choice");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("shown");
        QTest::newRow("entry page") << QStringList() << "index.htm" << "/doc/index.htm";
        QTest::newRow("chosen file, its name only") << QStringList{"/elsewhere/doc/page.htm"} << "page.htm"
                                                    << "/doc/page.htm";
        QTest::newRow("chosen file missing") << QStringList{"/elsewhere/other.htm"} << "other.htm" << "";
        QTest::newRow("cancelled choice empties the field") << QStringList{} << "" << "";
    }

    void shownFile()
    {
        QFETCH(QStringList, choice);
        QFETCH(QString, field);
        QFETCH(QString, shown);
        QTemporaryDir tmp;
        QVERIFY(WriteBytes(tmp.path() + "/doc/index.htm", "<html><body>entry</body></html>"));
        QVERIFY(WriteBytes(tmp.path() + "/doc/page.htm", "<html><body>page</body></html>"));
        auto scripted = std::make_unique<ScriptedAnswerer>();
        scripted->choices = {choice};
        Prompt::SetAnswerer(std::move(scripted));
        HelpConfigDlg page;
        page.LoadHelpData(tmp.path(), nullptr);
        // The choice of another file is switched off on the form; its code still runs.
        if (!choice.isEmpty() || field.isEmpty())
            page.on_help_file_pb_clicked();
        QCOMPARE(page.findChild<QLineEdit *>("help_file_edit")->text(), field);
        auto *view = page.findChild<HelpWnd *>("help_file_viewer");
        QCOMPARE(view->current_file, shown.isEmpty() ? QString() : tmp.path() + shown);
        QCOMPARE(view->toPlainText().isEmpty(), shown.isEmpty());
    }

    void browserButton_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("opens");
        QTest::newRow("entry page exists") << "index.htm" << true;
        // The button follows no field: another file alone is not opened.
        QTest::newRow("only another file") << "page.htm" << false;
    }

    void browserButton()
    {
        QFETCH(QString, file);
        QFETCH(bool, opens);
        QTemporaryDir tmp;
        if (!file.isEmpty())
            QVERIFY(WriteBytes(tmp.path() + "/doc/" + file, "<html></html>"));
        QDesktopServices::setUrlHandler("file", this, "OpenUrl");
        auto scripted = std::make_unique<ScriptedAnswerer>();
        ScriptedAnswerer *answers = scripted.get();
        Prompt::SetAnswerer(std::move(scripted));
        HelpConfigDlg page;
        page.LoadHelpData(tmp.path(), nullptr);
        page.findChild<QLineEdit *>("help_file_edit")->setText(file);
        page.on_help_webbrowser_pb_clicked();
        QCOMPARE(opened, opens ? QList<QUrl>{QUrl::fromLocalFile(tmp.path() + "/doc/index.htm")} : QList<QUrl>{});
        QVERIFY(answers->texts.isEmpty());
    }

    void entryFileWrittenBack()
    {
        QTemporaryDir tmp;
        const QString file = tmp.path() + "/blk_help.cfg";
        Help stored(new BlkHelpData{"Copy the pages", {"other.htm"}}, FreeBlkHelpData);
        QVERIFY(BlkHelpFileIO(QString(), nullptr, 1).SaveFile(file, stored.get(), "ZEMA"));
        HelpConfigDlg page;
        page.LoadHelpData(tmp.path(), nullptr);
        page.SaveHelpData(tmp.path(), nullptr);
        Help back(BlkHelpFileIO(QString(), nullptr, 1).LoadFile(file, "ZEMA"), FreeBlkHelpData);
        QVERIFY(back);
        QCOMPARE(back->h_inst, stored->h_inst);
        QCOMPARE(back->file_name, QStringList{"index.htm"});
    }

    void missingHelpFileWarns()
    {
        QTemporaryDir tmp;
        PageWindow w(tmp.path());
        BlockData *block = PageWindow::NewBlockRecord("blk");
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QCOMPARE(w.ValidationRows(), QStringList{});
        QVERIFY(QFile::remove(tmp.path() + "/blk/doc/index.htm"));
        QCOMPARE(w.ValidationRows(),
                 QStringList{"1. Warning: Help: Specified file index.htm does not exists in /doc directory "});
        // A warning only asks; the block is saved.
        w.answers->texts.clear();
        QVERIFY(w->SaveAct());
        QVERIFY(w.answers->texts.contains("Warnings are present in block configuration data. Press OK to continue saving."));
    }

private:
    QList<QUrl> opened;
};

ZEMA_TEST(tst_HelpConfigDlg)
#include "tst_HelpConfigDlg.moc"
