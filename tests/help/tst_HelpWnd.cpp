// The help view's request rules and menu, and the opening of the program's manual.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "help/HelpWnd.h"
#include "help/ManualTopic.h"
#include "pages/BlkHelpData.h"
#include "schematics/WspData.h"

#include <QDesktopServices>
#include <QDirIterator>
#include <QMenu>
#include <QRegularExpression>
#include <QtTest>

class tst_HelpWnd : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    QList<QUrl> opened;

    QString Doc(const QString &name) const { return name.isEmpty() ? name : dir.path() + "/doc/" + name; }
    // A workspace item whose block has the help files `files`, comma separated; "-": no help
    // record, "none": no item at all.
    void SendItem(HelpWnd &wnd, const QString &files)
    {
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(new BlockData, FreeBlockData);
        if (files != "-")
            (block->help = new BlkHelpData)->file_name = files.split(',', Qt::SkipEmptyParts);
        WSP_BLK_ITEM_STRUCT item;
        item.ref_path = dir.path();
        item.blockdef = block.get();
        emit wnd.Signal_SetFile(files == "none" ? nullptr : &item, false, false);
    }

public slots:
    // Stands in for the desktop's browser.
    void Open(const QUrl &url) { opened << url; }

private slots:
    void initTestCase()
    {
        QVERIFY(WriteBytes(Doc("a.htm"), "<p>Page A</p>") && WriteBytes(Doc("b.htm"), "<p>Page B</p>"));
    }

    // Each request is "name [append] [invisible]" sent through the signal, or "item:<files>".
    // The page shown is the one of `current`.
    void setFileRules_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<QString>("current");
        QTest::addColumn<int>("loads");
        QTest::newRow("same file twice loads once") << true << QStringList{"a.htm", "a.htm"} << "a.htm" << 1;
        QTest::newRow("append keeps the page shown") << true << QStringList{"a.htm", "b.htm append"} << "a.htm" << 2;
        QTest::newRow("hidden without load_invisible") << false << QStringList{"a.htm invisible", "b.htm"} << "" << 1;
        QTest::newRow("hidden with load_invisible") << false << QStringList{"b.htm invisible"} << "b.htm" << 1;
        QTest::newRow("missing file clears the page") << true << QStringList{"a.htm", "none.htm"} << "" << 1;
        QTest::newRow("a directory is no page") << true << QStringList{"a.htm", "."} << "" << 1;
        QTest::newRow("first help file of the block") << true << QStringList{"a.htm", "item:b.htm,a.htm"} << "b.htm" << 2;
        QTest::newRow("block without help file") << true << QStringList{"a.htm", "item:"} << "" << 1;
        QTest::newRow("block without help record") << true << QStringList{"a.htm", "item:-"} << "" << 1;
        QTest::newRow("no item") << true << QStringList{"a.htm", "item:none"} << "" << 1;
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
            if (parts[0].startsWith("item:"))
                SendItem(wnd, parts[0].mid(5));
            else
                emit wnd.Signal_SetFile(Doc(parts[0]), parts.contains("append"), parts.contains("invisible"));
        }
        QCOMPARE(wnd.current_file, Doc(current));
        QTEST(int(loads.count()), "loads");
        QCOMPARE(wnd.toPlainText(), current.isEmpty() ? QString() : "Page " + current.left(1).toUpper());
    }

    // Entries of a menu before the adjustment, and the visible ones after it: the match is case
    // sensitive, and ours go in only around a "Reload".
    void contextMenu_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("visible");
        QTest::newRow("with reload") << QStringList{"&Copy", "Save page as", "View source", "&Reload", "Select All"}
                                     << "&Copy|Home|&Reload|Select All|Zoom In|Zoom Out";
        QTest::newRow("without reload") << QStringList{"&Copy", "View page source", "Source", "reload"}
                                        << "&Copy|Source|reload";
    }
    void contextMenu()
    {
        QFETCH(QStringList, entries);
        HelpWnd wnd;
        QMenu menu;
        for (const QString &text : entries)
            menu.addAction(text);
        wnd.AdjustContextMenu(&menu);
        QStringList visible;
        for (QAction *action : menu.actions())
            if (action->isVisible())
                visible << action->text();
        QTEST(visible.join('|'), "visible");
    }

    // Without the system's viewer the desktop's browser gets the page of the number; with one,
    // the viewer gets the number and the compiled manual.
    void showManualTopic_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("page"); // empty: the viewer is on the path
        QTest::newRow("blanks and a trailing comment") << 5301 << "topics/Params.htm";
        QTest::newRow("line without a page") << 5302 << "index.html";
        QTest::newRow("commented out") << 5303 << "index.html";
        QTest::newRow("viewer on the path") << 5301 << "";
    }
    void showManualTopic()
    {
        QFETCH(int, id);
        QFETCH(QString, page);
        QTemporaryDir root, bin;
        const QString hh = bin.path() + "/hh";
        QVERIFY(WriteBytes(root.path() + "/help/topics.map",
                           "# pages\n\n5300 topics/Block_Tool.htm\n  5301\ttopics/Params.htm  # tabs\n5302\n#5303 x.htm\n"));
        QVERIFY(!page.isEmpty() || (WriteBytes(hh, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args\"\n")
                                    && QFile::setPermissions(hh, QFile::ReadOwner | QFile::ExeOwner)));
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.path().toLocal8Bit());
        opened.clear();
        QDesktopServices::setUrlHandler("file", this, "Open");
        ShowManualTopic(root.path(), id, "topics/Block_Tool.htm");
        QDesktopServices::unsetUrlHandler("file");
        qputenv("PATH", path);
        if (page.isEmpty())   // detached: wait until it has written all of its arguments
            QTRY_COMPARE(QString::fromUtf8(ReadBytes(hh + ".args")),
                         "-mapid\n5301\n" + root.path() + "/help/ZEMA_Documentation.chm\n");
        QCOMPARE(opened, page.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl::fromLocalFile(root.path() + "/help/" + page)});
    }

    // Our manual: every number of its map leads to a page of its own, and no local link is dead.
    void shippedManualHoldsTogether()
    {
        const QString root = QDir(QStringLiteral(ZEMA_FIXTURES "/../../appdir")).absolutePath();
        const QRegularExpression number("^(\\d+)\\s", QRegularExpression::MultilineOption);
        QStringList targets;
        for (auto it = number.globalMatch(QString::fromUtf8(ReadBytes(root + "/help/topics.map"))); it.hasNext();)
            targets << ManualTopicUrl(root, it.next().captured(1).toInt()).toLocalFile();
        QVERIFY(targets.size() >= 14 && targets.filter("index.html").isEmpty());
        const QRegularExpression link("(?:href|src)=\"([^\":#]+)[#\"]");
        for (QDirIterator it(root + "/help", {"*.htm", "*.html"}, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            for (auto links = link.globalMatch(QString::fromUtf8(ReadBytes(it.next()))); links.hasNext();)
                targets << it.fileInfo().dir().filePath(links.next().captured(1));
        for (const QString &target : targets)
            QVERIFY2(QFileInfo(target).isFile(), qPrintable(target));
    }
};

ZEMA_TEST(tst_HelpWnd)
#include "tst_HelpWnd.moc"
