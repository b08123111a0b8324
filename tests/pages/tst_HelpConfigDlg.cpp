// The Help page: the view's file, the fixed file of the browser button, and the entry file
// checked and written back.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/ErrorList.h"
#include "app/Prompt.h"
#include "help/HelpWnd.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"
#include "pages/HelpConfigDlg.h"

#include <QDesktopServices>
#include <QLineEdit>
#include <QtTest>

class tst_HelpConfigDlg : public QObject
{
    Q_OBJECT
public slots:
    // Stands in for the desktop's handler of local files.
    void OpenUrl(const QUrl &url) { opened << url; }

private slots:
    void cleanup()
    {
        QDesktopServices::unsetUrlHandler("file");
        Prompt::SetAnswerer(std::make_unique<DialogAnswerer>());
    }


    // The choice of another file is switched off on the form; its code still runs.
    void chosenFileAndBrowser()
    {
        QTemporaryDir tmp;
        const QString index = tmp.path() + "/doc/index.htm";
        QVERIFY(WriteBytes(index, "<html><body>entry</body></html>"));
        QVERIFY(WriteBytes(tmp.path() + "/doc/page.htm", "<html><body>page</body></html>"));
        QDesktopServices::setUrlHandler("file", this, "OpenUrl");
        auto scripted = std::make_unique<ScriptedAnswerer>();
        ScriptedAnswerer *answers = scripted.get();
        scripted->choices = {{"/elsewhere/doc/page.htm"}, {}};
        Prompt::SetAnswerer(std::move(scripted));
        HelpConfigDlg page;
        page.LoadHelpData(tmp.path(), nullptr);
        auto *edit = page.findChild<QLineEdit *>("help_file_edit");
        auto *view = page.findChild<HelpWnd *>("help_file_viewer");
        QCOMPARE(view->current_file, index);

        // The chosen file's name only, shown from the block's own "doc".
        page.on_help_file_pb_clicked();
        QCOMPARE(edit->text(), QString("page.htm"));
        QCOMPARE(view->current_file, tmp.path() + "/doc/page.htm");

        // The browser button follows no field, and without its file does nothing and says nothing.
        page.on_help_webbrowser_pb_clicked();
        QVERIFY(QFile::remove(index));
        answers->texts.clear();
        page.on_help_webbrowser_pb_clicked();
        QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(index)});
        QCOMPARE(answers->texts, QStringList());

        page.on_help_file_pb_clicked();   // cancelled: the field is emptied
        QCOMPARE(edit->text(), QString());
        QCOMPARE(view->current_file, QString());
    }

    // The field's file, not the stored one, is checked and written back.
    void entryFileCheckedAndWrittenBack()
    {
        QTemporaryDir tmp;
        const QString file = tmp.path() + "/blk_help.cfg";
        BlkHelpData stored{"Copy the pages", {"other.htm"}};
        QVERIFY(BlkHelpFileIO(QString(), nullptr, 1).SaveFile(file, &stored, "ZEMA"));
        HelpConfigDlg page;
        page.LoadHelpData(tmp.path(), nullptr);
        ErrorList list;
        page.ValidateHelpData(&list);
        QCOMPARE(list.NumberedMessages(),
                 QStringList{"1. Warning: Help: Specified file index.htm does not exists in /doc directory "});
        page.SaveHelpData(tmp.path(), nullptr);
        const QByteArray saved = ReadBytes(file);
        QVERIFY(saved.contains("<h_inst>Copy the pages</h_inst>"));
        QVERIFY(saved.contains("<file_name>index.htm</file_name>") && !saved.contains("other.htm"));
    }

private:
    QList<QUrl> opened;
};

ZEMA_TEST(tst_HelpConfigDlg)
#include "tst_HelpConfigDlg.moc"
