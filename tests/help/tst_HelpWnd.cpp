// The help view's request rules and menu, and the opening of the program's manual.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "help/HelpWnd.h"
#include "help/ManualTopic.h"
#include "pages/BlkHelpData.h"
#include "schematics/WspData.h"

#include <QAction>
#include <QDesktopServices>
#include <QDirIterator>
#include <QMenu>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

// Stands in for the desktop's browser.
class UrlCatcher : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void Open(const QUrl &url) { urls << url; }
};

class tst_HelpWnd : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    QByteArray saved_path;

    QString Doc(const QString &name) const { return name.isEmpty() ? name : dir.path() + "/doc/" + name; }
    static QString VisibleTexts(QMenu *menu)
    {
        QStringList texts;
        for (QAction *action : menu->actions())
            if (action->isVisible())
                texts << action->text();
        return texts.join('|');
    }
    static QString AppHelpDir() { return QDir(QStringLiteral(ZEMA_FIXTURES "/../../appdir/help")).absolutePath(); }

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        QVERIFY(WriteBytes(Doc("a.htm"), "<html><body><p>Page A</p></body></html>"));
        QVERIFY(WriteBytes(Doc("b.htm"), "<html><body><p>Page B</p></body></html>"));
        saved_path = qgetenv("PATH");
    }
    void cleanup() { qputenv("PATH", saved_path); }

    // Each request is "name [append] [invisible]"; "clear" runs ClearFile.
    void setFileRules_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<QString>("current");
        QTest::addColumn<int>("loads");
        QTest::addColumn<QString>("page");
        QTest::newRow("same file twice loads once") << true << QStringList{"a.htm", "a.htm"} << "a.htm" << 1 << "Page A";
        QTest::newRow("after ClearFile it loads again") << true << QStringList{"a.htm", "clear", "a.htm"} << "a.htm" << 2 << "Page A";
        QTest::newRow("another file replaces the page") << true << QStringList{"a.htm", "b.htm"} << "b.htm" << 2 << "Page B";
        QTest::newRow("append keeps the page shown") << true << QStringList{"a.htm", "b.htm append"} << "a.htm" << 2 << "Page A";
        QTest::newRow("append on an empty view") << true << QStringList{"b.htm append"} << "b.htm" << 1 << "Page B";
        QTest::newRow("hidden without load_invisible") << false << QStringList{"a.htm invisible", "b.htm"} << "" << 1 << "";
        QTest::newRow("hidden with load_invisible") << false << QStringList{"b.htm invisible"} << "b.htm" << 1 << "Page B";
        QTest::newRow("missing file clears the page") << true << QStringList{"a.htm", "none.htm"} << "" << 1 << "";
        QTest::newRow("empty name clears the page") << true << QStringList{"a.htm", ""} << "" << 1 << "";
        QTest::newRow("a directory is no page") << true << QStringList{"a.htm", "."} << "" << 1 << "";
    }
    void setFileRules()
    {
        QFETCH(bool, shown);
        QFETCH(QStringList, requests);
        QFETCH(QString, current);
        HelpWnd wnd;
        if (shown)
            wnd.show();
        QSignalSpy loads(&wnd, &HelpWnd::Signal_ShowHome);
        for (const QString &request : requests) {
            const QStringList parts = request.split(' ');
            if (parts[0] == "clear")
                wnd.ClearFile();
            else
                emit wnd.Signal_SetFile(Doc(parts[0]), parts.contains("append"), parts.contains("invisible"));
        }
        QCOMPARE(wnd.current_file, Doc(current));
        QTEST(int(loads.count()), "loads");
        QTEST(wnd.toPlainText(), "page");
    }

    void blockItemForm_data()
    {
        QTest::addColumn<bool>("has_item");
        QTest::addColumn<bool>("has_help");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("current");
        QTest::newRow("no item") << false << false << QStringList{} << "";
        QTest::newRow("block without help record") << true << false << QStringList{} << "";
        QTest::newRow("block with no help file") << true << true << QStringList{} << "";
        QTest::newRow("first help file of the block") << true << true << QStringList{"b.htm", "a.htm"} << "b.htm";
        QTest::newRow("help file missing on disk") << true << true << QStringList{"gone.htm"} << "";
    }
    void blockItemForm()
    {
        QFETCH(bool, has_item);
        QFETCH(bool, has_help);
        QFETCH(QStringList, files);
        QFETCH(QString, current);
        BlockData *block = new BlockData;
        if (has_help) {
            block->help = new BlkHelpData;
            block->help->file_name = files;
        }
        WSP_BLK_ITEM_STRUCT item;
        item.ref_path = dir.path();
        item.blockdef = block;

        HelpWnd wnd;
        wnd.show();
        emit wnd.Signal_SetFile(Doc("a.htm"), false, false);
        emit wnd.Signal_SetFile(has_item ? &item : nullptr, false, false);
        QCOMPARE(wnd.current_file, Doc(current));
        QCOMPARE(wnd.toPlainText(), current.isEmpty() ? QString() : QString("Page B"));
        FreeBlockData(block);
    }

    // Entries are "text" or "text hidden" after the adjustment; "Home" marks where ours went in.
    void contextMenu_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("visible");
        QTest::newRow("with reload")
            << QStringList{"&Copy", "Save page as", "View source", "&Reload", "Select All"}
            << "&Copy|Home|&Reload|Select All|Zoom In|Zoom Out";
        QTest::newRow("without reload") << QStringList{"&Copy", "View page source", "Select All"} << "&Copy|Select All";
        QTest::newRow("case matters") << QStringList{"Source", "save page", "reload"} << "Source|save page|reload";
    }
    void contextMenu()
    {
        QFETCH(QStringList, entries);
        HelpWnd wnd;
        QMenu menu;
        for (const QString &text : entries)
            menu.addAction(text);
        wnd.AdjustContextMenu(&menu);
        QTEST(VisibleTexts(&menu), "visible");
        for (QAction *ours : {wnd.home_act, wnd.zoom_in_act, wnd.zoom_out_act})
            QVERIFY(!ours->icon().isNull());
    }

    // The menu a right click builds: the text browser's own entries, and ours only beside a
    // "Reload"; the actions stay with the window when the menu goes.
    void builtMenuKeepsOurActions()
    {
        HelpWnd wnd;
        wnd.setHtml("<p>text</p>");
        QMenu *menu = wnd.BuildContextMenu();
        QVERIFY(!menu->actions().isEmpty());
        const QString visible = VisibleTexts(menu);
        QVERIFY2(!visible.contains("source") && !visible.contains("Save page"), qPrintable(visible));
        QCOMPARE(menu->actions().contains(wnd.home_act), visible.contains("Reload"));
        delete menu;
        QCOMPARE(wnd.home_act->text(), QString("Home"));
        QCOMPARE(wnd.home_act->statusTip(), QString("Start Page"));
    }

    void homeActionShowsCurrentFile()
    {
        HelpWnd wnd;
        wnd.current_file = Doc("b.htm");
        wnd.home_act->trigger();
        QCOMPARE(wnd.toPlainText(), QString("Page B"));
        wnd.current_file.clear();
        wnd.home_act->trigger();
        QCOMPARE(wnd.toPlainText(), QString());
    }

    // A map file "5300 topics/x.htm"; `map` null means no map at all.
    void manualTopicUrl_data()
    {
        QTest::addColumn<QString>("map");
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("page");
        const QString map = "# pages of the manual\n\n5300 topics/Block_Tool.htm\n  5301\ttopics/Params.htm  # tabs\n"
                            "5302\n#5303 topics/Old.htm\n";
        QTest::newRow("known id") << map << 5300 << "topics/Block_Tool.htm";
        QTest::newRow("tabs, blanks and a trailing comment") << map << 5301 << "topics/Params.htm";
        QTest::newRow("line without a page") << map << 5302 << "index.html";
        QTest::newRow("commented out") << map << 5303 << "index.html";
        QTest::newRow("unknown id") << map << 42 << "index.html";
        QTest::newRow("missing map") << QString() << 5300 << "index.html";
    }
    void manualTopicUrl()
    {
        QFETCH(QString, map);
        QFETCH(int, id);
        QFETCH(QString, page);
        QTemporaryDir root;
        if (!map.isNull())
            QVERIFY(WriteBytes(root.path() + "/help/topics.map", map.toUtf8()));
        QCOMPARE(ManualTopicUrl(root.path(), id), QUrl::fromLocalFile(root.path() + "/help/" + page));
    }

    // Without the system's viewer the manual opens in the desktop's browser at its page; with one,
    // the viewer gets the number and the compiled manual.
    void showManualTopic_data()
    {
        QTest::addColumn<bool>("viewer");
        QTest::newRow("no viewer") << false;
        QTest::newRow("viewer on the path") << true;
    }
    void showManualTopic()
    {
        QFETCH(bool, viewer);
        QTemporaryDir root, bin;
        QVERIFY(WriteBytes(root.path() + "/help/topics.map", "5301 topics/Parameters.htm\n"));
        if (viewer) {
            QVERIFY(WriteBytes(bin.path() + "/hh", "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args.tmp\"\n"
                                                   "mv \"$0.args.tmp\" \"$0.args\"\n"));
            QFile::setPermissions(bin.path() + "/hh", QFile::ReadOwner | QFile::ExeOwner);
        }
        qputenv("PATH", bin.path().toLocal8Bit());
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler("file", &catcher, "Open");
        ShowManualTopic(root.path(), 5301, "topics/Block_Tool.htm");
        QDesktopServices::unsetUrlHandler("file");
        if (viewer) {
            QTRY_VERIFY(QFile::exists(bin.path() + "/hh.args"));
            QCOMPARE(QString(ReadBytes(bin.path() + "/hh.args")),
                     "-mapid\n5301\n" + root.path() + "/help/ZEMA_Documentation.chm\n");
            QVERIFY(catcher.urls.isEmpty());
        } else {
            QCOMPARE(catcher.urls, QList<QUrl>{QUrl::fromLocalFile(root.path() + "/help/topics/Parameters.htm")});
        }
    }

    // Our own manual: every number of its map leads to a page, and no page links to a missing one.
    void shippedManualHoldsTogether()
    {
        const QString help = AppHelpDir();
        const QString map = QString::fromUtf8(ReadBytes(help + "/topics.map"));
        QVERIFY(map.contains(QRegularExpression("^5300\\s+topics/Block_Tool.htm\\s*$", QRegularExpression::MultilineOption)));
        const QRegularExpression entry("^(\\d+)\\s", QRegularExpression::MultilineOption);
        int pages = 0;
        for (auto it = entry.globalMatch(map); it.hasNext(); ++pages) {
            const QUrl url = ManualTopicUrl(QFileInfo(help).path(), it.next().captured(1).toInt());
            QVERIFY2(QFileInfo(url.toLocalFile()).isFile() && !url.toLocalFile().endsWith("index.html"),
                     qPrintable(url.toString()));
        }
        QVERIFY(pages >= 14);

        const QRegularExpression link("(?:href|src)=\"([^\"]+)\"");
        QDirIterator files(help, {"*.htm", "*.html", "*.css"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QString text = QString::fromUtf8(ReadBytes(file));
            QVERIFY2(!text.contains("<script", Qt::CaseInsensitive), qPrintable(file));
            for (auto it = link.globalMatch(text); it.hasNext();) {
                const QString target = it.next().captured(1).section('#', 0, 0);
                if (target.isEmpty() || target.contains(':'))
                    continue;
                QVERIFY2(QFileInfo(QFileInfo(file).dir(), target).isFile(), qPrintable(file + " -> " + target));
            }
        }
    }
};

ZEMA_TEST(tst_HelpWnd)
#include "tst_HelpWnd.moc"
