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

private slots:
    void initTestCase()
    {
        QVERIFY(WriteBytes(Doc("a.htm"), "<p>Page A</p>") && WriteBytes(Doc("b.htm"), "<p>Page B</p>"));
        saved_path = qgetenv("PATH");
    }
    void cleanup() { qputenv("PATH", saved_path); }

    // Each request is "name [append] [invisible]", sent through the signal; "clear" runs ClearFile.
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
        QTest::newRow("hidden without load_invisible") << false << QStringList{"a.htm invisible", "b.htm"} << "" << 1 << "";
        QTest::newRow("hidden with load_invisible") << false << QStringList{"b.htm invisible"} << "b.htm" << 1 << "Page B";
        QTest::newRow("missing file clears the page") << true << QStringList{"a.htm", "none.htm"} << "" << 1 << "";
        QTest::newRow("a directory is no page") << true << QStringList{"a.htm", "."} << "" << 1 << "";
    }
    void setFileRules()
    {
        QFETCH(bool, shown);
        QFETCH(QStringList, requests);
        QFETCH(QString, current);
        HelpWnd wnd;
        wnd.setVisible(shown);
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
    }
    void blockItemForm()
    {
        QFETCH(bool, has_item);
        QFETCH(bool, has_help);
        QFETCH(QString, current);
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(new BlockData, FreeBlockData);
        if (has_help) {
            block->help = new BlkHelpData;
            QFETCH(QStringList, files);
            block->help->file_name = files;
        }
        WSP_BLK_ITEM_STRUCT item;
        item.ref_path = dir.path();
        item.blockdef = block.get();

        HelpWnd wnd;
        wnd.show();
        emit wnd.Signal_SetFile(Doc("a.htm"), false, false);
        emit wnd.Signal_SetFile(has_item ? &item : nullptr, false, false);
        QCOMPARE(wnd.current_file, Doc(current));
        QCOMPARE(wnd.toPlainText(), current.isEmpty() ? QString() : QString("Page B"));
    }

    // Entries of a menu before the adjustment, and the visible ones after it.
    void contextMenu_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("visible");
        QTest::newRow("with reload") << QStringList{"&Copy", "Save page as", "View source", "&Reload", "Select All"}
                                     << "&Copy|Home|&Reload|Select All|Zoom In|Zoom Out";
        QTest::newRow("without reload") << QStringList{"&Copy", "View page source"} << "&Copy";
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
    }

    // The text browser's own menu has no "Reload", so ours stay out of it; they outlive the menu.
    void builtMenuAndHomeAction()
    {
        HelpWnd wnd;
        wnd.setHtml("<p>text</p>");
        std::unique_ptr<QMenu> menu(wnd.BuildContextMenu());
        QVERIFY(!menu->actions().isEmpty() && !menu->actions().contains(wnd.home_act));
        QVERIFY(!wnd.home_act->icon().isNull() && !wnd.zoom_in_act->icon().isNull());
        wnd.current_file = Doc("b.htm");
        wnd.home_act->trigger();
        QCOMPARE(wnd.toPlainText(), QString("Page B"));
    }

    void manualTopicUrl_data()
    {
        QTest::addColumn<QString>("map"); // null: no map file
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("page");
        const QString map = "# pages\n\n5300 topics/Block_Tool.htm\n  5301\ttopics/Params.htm  # tabs\n5302\n#5303 x.htm\n";
        QTest::newRow("known id") << map << 5300 << "topics/Block_Tool.htm";
        QTest::newRow("blanks and a trailing comment") << map << 5301 << "topics/Params.htm";
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

    // Without the system's viewer the desktop's browser gets our page; with one, the viewer gets
    // the number and the compiled manual.
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
            QVERIFY(WriteBytes(bin.path() + "/hh", "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args\"\n"));
            QFile::setPermissions(bin.path() + "/hh", QFile::ReadOwner | QFile::ExeOwner);
        }
        qputenv("PATH", bin.path().toLocal8Bit());
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler("file", &catcher, "Open");
        ShowManualTopic(root.path(), 5301, "topics/Block_Tool.htm");
        QDesktopServices::unsetUrlHandler("file");
        if (viewer) {
            // Detached: wait until it has written all of its arguments.
            QTRY_COMPARE(QString::fromUtf8(ReadBytes(bin.path() + "/hh.args")),
                         "-mapid\n5301\n" + root.path() + "/help/ZEMA_Documentation.chm\n");
            QVERIFY(catcher.urls.isEmpty());
        } else {
            QCOMPARE(catcher.urls, QList<QUrl>{QUrl::fromLocalFile(root.path() + "/help/topics/Parameters.htm")});
        }
    }

    // Our manual: every number of its map leads to a page of its own, and no link is dead.
    void shippedManualHoldsTogether()
    {
        const QString root = QDir(QStringLiteral(ZEMA_FIXTURES "/../../appdir")).absolutePath();
        const QString map = QString::fromUtf8(ReadBytes(root + "/help/topics.map"));
        QCOMPARE(ManualTopicUrl(root, 5300), QUrl::fromLocalFile(root + "/help/topics/Block_Tool.htm"));
        int pages = 0;
        for (auto it = QRegularExpression("^(\\d+)\\s", QRegularExpression::MultilineOption).globalMatch(map);
             it.hasNext(); ++pages) {
            const QString page = ManualTopicUrl(root, it.next().captured(1).toInt()).toLocalFile();
            QVERIFY2(QFileInfo(page).isFile() && !page.endsWith("index.html"), qPrintable(page));
        }
        QVERIFY(pages >= 14);

        const QRegularExpression link("(?:href|src)=\"([^\"]*)\"");
        for (QDirIterator it(root + "/help", {"*.htm", "*.html"}, QDir::Files, QDirIterator::Subdirectories);
             it.hasNext();) {
            const QString file = it.next();
            const QString text = QString::fromUtf8(ReadBytes(file));
            QVERIFY2(!text.contains("<script", Qt::CaseInsensitive), qPrintable(file));
            for (auto links = link.globalMatch(text); links.hasNext();) {
                const QString target = links.next().captured(1).section('#', 0, 0);
                QVERIFY2(target.isEmpty() || target.contains(':') || QFileInfo(QFileInfo(file).dir(), target).isFile(),
                         qPrintable(file + " -> " + target));
            }
        }
    }
};

ZEMA_TEST(tst_HelpWnd)
#include "tst_HelpWnd.moc"
