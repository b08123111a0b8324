// Start-up: the packed argument, the settings file and the relative path helpers.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/AppSettings.h"
#include "app/ErrorList.h"
#include "app/FileReport.h"
#include "app/PackedArgument.h"
#include "app/ZemaSettingsFileIO.h"

#include <QtTest>

class tst_Settings : public QObject
{
    Q_OBJECT
    QTemporaryDir root;

    AppSettings *FreshSettings()
    {
        AppSettings *settings = CreateAppSettings(nullptr);
        settings->root_dir = root.path();
        settings->bin_dir = root.path() + "/bin_win";
        return settings;
    }

private slots:
    void initTestCase()
    {
        for (const char *sub : {"bin_win", "blocks", "tools"})
            QVERIFY(QDir(root.path()).mkpath(sub));
        QVERIFY(WriteBytes(root.filePath("qtc/bin/qtcreator.exe"), ""));
    }

    void packedArgument_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("expected"); // cli_on, root, third directory, licence token
        const QString top = root.path(), tools = QFileInfo(top + "/tools").canonicalFilePath();
        QTest::newRow("relative root") << QStringList{"prog", "-#cli_on#./tools#x"} << QStringList{"1", tools, "x", ""};
        QTest::newRow("nothing packed") << QStringList{"prog", "file.bdef"} << QStringList{"0", top, "", ""};
        QTest::newRow("short root ignored") << QStringList{"#x#a#t#tok"} << QStringList{"0", top, "t", "tok"};
        QTest::newRow("last wins") << QStringList{"#cli_on#./tools#a", "#no#./blocks#b"}
                                   << QStringList{"1", QFileInfo(top + "/blocks").canonicalFilePath(), "b", ""};
    }
    void packedArgument()
    {
        QFETCH(QStringList, args);
        const PackedArgument packed = ReadPackedArguments(args, root.path());
        QTEST(QStringList({QString::number(packed.cli_on), packed.root_dir, packed.third_dir, packed.licence_token}), "expected");
    }

    // Absolute and unfound paths are reached through the settings file below.
    void relativePaths()
    {
        const QStringList dirs{root.path() + "/missing", root.path() + "/blocks", root.path()};
        QCOMPARE(ResolvePath(dirs, "tools"), root.path() + "/tools"); // found in a later directory
        QCOMPARE(ResolvePath(dirs, ""), root.path() + "/blocks");     // empty takes the first existing
        // The block's "blocks" directory, else the block's own, goes in front until the block changes.
        AppSettings *settings = FreshSettings();
        settings->search_dirs = settings->dirs = QStringList{"/lib1"};
        QCOMPARE(SearchDirs(settings, ""), QStringList{"/lib1"});
        QCOMPARE(SearchDirs(settings, root.path()), QStringList({root.path() + "/blocks", "/lib1"}));
        QCOMPARE(SearchDirs(settings, root.path() + "/tools"), QStringList({root.path() + "/tools", "/lib1"}));
        QCOMPARE(SearchDirs(settings, ""), QStringList{"/lib1"});
    }

    void settingsFile()
    {
        AppSettings *settings = FreshSettings();
        QVERIFY(WriteBytes(settings->bin_dir + "/ZEMA.cfg", XmlDocument(
            "<zema_settings_data><dirs>blocks||nowhere|/abs</dirs><pyinc_dirs>a|b</pyinc_dirs>"
            "<accel_2d>3</accel_2d><thw_path>missing</thw_path><qtc_path>" + root.path().toUtf8() +
            "/qtc</qtc_path><script_en>0</script_en><unknown>x</unknown></zema_settings_data>")));
        QVERIFY(ZemaSettingsFileIO(root.path(), nullptr, 1).ReadSettings(settings, "ZEMA"));
        QCOMPARE(settings->dirs, QStringList({root.path() + "/blocks", "nowhere", "/abs"}));
        QCOMPARE(settings->search_dirs, settings->dirs);
        QCOMPARE(settings->pyinc_dirs, QStringList({"a", "b"}));
        QCOMPARE(QString("%1%2%3").arg(settings->accel_2d).arg(settings->html_help).arg(settings->script_en), QString("100"));
        QCOMPARE(settings->thw_path + " " + settings->qtc_path, root.path() + " " + root.path() + "/qtc");
    }

    // A missing file is shown and leaves usable defaults; a qtc_path without its program is cleared.
    void fallbacks()
    {
        QStringList shown;
        SetFileReportHook([&](const QString &title, const QString &text) { shown << title + ": " + text; });
        AppSettings *settings = FreshSettings();
        settings->bin_dir = root.path() + "/nowhere";
        QVERIFY(!ZemaSettingsFileIO(root.path(), nullptr, 0).ReadSettings(settings, "ZEMA"));
        SetFileReportHook(nullptr);
        QVERIFY(shown.value(0).startsWith("ZEMA: Cannot open file: " + root.path() + "/nowhere/ZEMA.cfg"));
        QCOMPARE(settings->thw_path, root.path());

        settings = FreshSettings();
        QVERIFY(WriteBytes(settings->bin_dir + "/ZEMA.cfg",
                           XmlDocument("<zema_settings_data><qtc_path>/opt/none</qtc_path></zema_settings_data>")));
        QVERIFY(ZemaSettingsFileIO(root.path(), nullptr, 1).ReadSettings(settings, "ZEMA"));
        QVERIFY(settings->qtc_path.isEmpty() && settings->script_en == 1);
    }
};

ZEMA_TEST(tst_Settings)
#include "tst_Settings.moc"
