// The main window's sequences, clicked through the scripted answerer: new, edit, save, open,
// close, rename, the guards and the batch run.
#include "PageWindow.h"
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/Entitlement.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "pages/PresentationDlg.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"
#include "params/ConfigurationEntities.h"
#include "params/ParameterDlg.h"
#include "params/Para_LineEdit.h"

#include <QAction>
#include <QStackedWidget>
#include <QToolBar>
#include <QMenuBar>
#include <QScrollArea>
#include <QTabWidget>
#include <QtTest>
#include <memory>

namespace {

const QString kCannotSave = "Cannot save data. Block configuration data contains errors.";
const QString kWarningsAsk = "Warnings are present in block configuration data. Press OK to continue saving.";
const QString kSaveBeforeClose = "Do you want to save changes before closing.";
const QString kRenameAsk = "Specified block directory name does not match with existing directory name. Do you want to save the block data to new directory name.";

ParaEntity *Entity(MainWindow &window, const char *header, const char *label)
{
    return FindEntity(window.config_page->data, header, label);
}

} // namespace

class tst_MainWindow : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    ScriptedAnswerer *answers = nullptr;
    std::unique_ptr<MainWindow> window;

    // A new block named `name` with a title, whose header file and help page exist, so that it
    // has no warning at all.
    void NewCleanBlock(const QString &name)
    {
        window->NewAct();
        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "Block Name", name));
        QVERIFY(TypeIntoConfiguration(window.get(), "Code-Basic", "Header File Name", name + ".h"));
        for (const char *kind : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
            QVERIFY(TypeIntoConfiguration(window.get(), "Code-Basic", QStringLiteral("Class/Structure Name (%1)").arg(kind), name));
        window->pres_page->SetBlockTitle(name);
        QVERIFY(WriteBytes(dir.path() + "/" + name + "/src/" + name + ".h", "// header\n"));
        QVERIFY(WriteBytes(dir.path() + "/" + name + "/doc/index.htm", "<html></html>\n"));
    }

    QString SaveNew(const QString &name)
    {
        NewCleanBlock(name);
        answers->choices.append({dir.path()});
        if (!window->SaveAct())
            return QString();
        return dir.path() + "/" + name;
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(dir.isValid());
        AppSettings *settings = CreateAppSettings(nullptr);
        settings->root_dir = dir.path();
        settings->bin_dir = dir.path() + "/bin_win";
        InitRegistry(nullptr);
    }

    void init()
    {
        auto scripted = std::make_unique<ScriptedAnswerer>();
        answers = scripted.get();
        Prompt::SetAnswerer(std::move(scripted));
        window = std::make_unique<MainWindow>(QStringLiteral("2.1"), false);
        window->LateInitialise();
    }

    void cleanup()
    {
        window->CloseAct(true, false);
        window.reset();
    }

    void emptyWindow()
    {
        QCOMPARE(window->windowTitle(), QStringLiteral("ZEMA Block Tool"));
        QCOMPARE(window->tabs->count(), 10);
        QStringList menus;
        for (QAction *menu : window->menuBar()->actions()) {
            QStringList entries;
            for (QAction *action : menu->menu()->actions())
                entries << action->text() + "|" + action->statusTip();
            menus << menu->text() + ": " + entries.join(", ");
        }
        QCOMPARE(menus, QStringList({
            "&FileWiz: New (wizard based)|Create New Block (Wizard Based)",
            "&File: &New|Create New Block, &Open|Open Existing Block, &Save|Save Changes, &Close|Close Block",
            "&Edit: &Validate|Validate Data",
            "&Help: ImageEditor|Open ZEMA Image Editor, OpenFolder|Open Block Folder In Explorer, &Help|Help, &About|About ZEMA Block Tool",
            "&Batch Process: &Encrypt Code Files|Encrypt Code Files, &Batch Process|Batch Process",
            "&View: FileWiz|, File|, Edit|, Help|"}));
        QVERIFY(window->batch_bar->isHidden());
        // Nothing open: Save does nothing, Validate passes.
        QVERIFY(!window->SaveAct());
        QVERIFY(window->ValidateAct());
        QVERIFY(answers->texts.isEmpty());
    }

    void newSaveAndOpenAgain()
    {
        window->NewAct();
        QVERIFY(window->block_open);
        QCOMPARE(window->tabs->isTabEnabled(6), false);
        QCOMPARE(static_cast<QScrollArea *>(window->tabs->widget(0))->widget(), window->config_page);
        // The whole table: a page of the form for every group.
        QCOMPARE(window->config_page->stack->count(), window->config_page->data->para_grp.size());
        ParaEntity *id = Entity(*window, "Basic", "Block ID");
        QVERIFY(id->sel_val.toUInt() > 0);

        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "Block Name", "lowpass"));
        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "Block Version", "  "));
        answers->choices.append({dir.path()});
        // A new block has no header file yet: one Warning, asked about.
        answers->buttons.append(QMessageBox::Ok);
        QVERIFY(window->SaveAct());
        QVERIFY(answers->texts.contains(kWarningsAsk));
        const QString block_dir = dir.path() + "/lowpass";
        QVERIFY(QFileInfo(block_dir + "/lowpass.bdef").isFile());
        QVERIFY(QFileInfo(block_dir + "/src").isDir() && QFileInfo(block_dir + "/doc").isDir());
        QCOMPARE(window->windowTitle(), "ZEMA Block Tool: " + dir.path() + "/lowpass");
        const QString saved_id = id->sel_val;
        const QString class_name = "Lowpass" + saved_id;
        QCOMPARE(Entity(*window, "Code-Basic", "Header File Name")->sel_val, class_name + ".h");

        QVERIFY(window->CloseAct(true, false));
        QCOMPARE(window->windowTitle(), QStringLiteral("ZEMA Block Tool"));
        window->OpenProjectFile(block_dir + "/lowpass.bdef");
        QVERIFY(window->block_open);
        QCOMPARE(window->block_name, QStringLiteral("lowpass"));
        QCOMPARE(Entity(*window, "Basic", "Block ID")->sel_val, saved_id);
        QCOMPARE(Entity(*window, "Basic", "Block Version")->sel_val, QStringLiteral("1.0"));
        QCOMPARE(Entity(*window, "Code-Basic", "Class/Structure Name (Integer16)")->sel_val, class_name);
        auto *shown = qobject_cast<QLineEdit *>(Entity(*window, "Basic", "Block Name")->editor);
        QCOMPARE(shown->text(), QStringLiteral("lowpass"));
    }

    void closeAnswers_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<bool>("written");
        QTest::newRow("save") << int(QMessageBox::Save) << true << true;
        QTest::newRow("discard") << int(QMessageBox::Discard) << true << false;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false << false;
    }

    void closeAnswers()
    {
        QFETCH(int, answer);
        QFETCH(bool, closed);
        QFETCH(bool, written);
        const QString name = QStringLiteral("close_%1").arg(answer);
        NewCleanBlock(name);
        answers->buttons.append(QMessageBox::StandardButton(answer));
        answers->choices.append({dir.path()});
        QCOMPARE(window->CloseAct(), closed);
        QCOMPARE(answers->texts.value(0), kSaveBeforeClose);
        QCOMPARE(!window->block_open, closed);
        QCOMPARE(QFileInfo::exists(dir.path() + "/" + name + "/" + name + ".bdef"), written);
    }

    void closeWithErrorsLosesChanges()
    {
        window->NewAct();
        answers->buttons.append(QMessageBox::Save);
        QVERIFY(window->CloseAct());
        // The empty name is an Error: the list is shown, the box follows, the block closes.
        QCOMPARE(answers->texts.last(), kCannotSave);
        QVERIFY(answers->texts.contains("1. Error: Configuration: Value at entity 'Block Name' is empty"));
        QVERIFY(!window->block_open);
    }

    void warningsAndBatchMode()
    {
        window->NewAct();
        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "Block Name", "warned"));
        answers->buttons.append(QMessageBox::Cancel);
        QVERIFY(!window->SaveAct());
        QVERIFY(answers->texts.contains(kWarningsAsk));
        QVERIFY(!QFileInfo::exists(dir.path() + "/warned"));

        // Neither in a batch nor with silent set is anybody asked.
        answers->texts.clear();
        window->batch_mode = 1;
        answers->choices.append({dir.path()});
        QVERIFY(window->SaveAct());
        QVERIFY(!answers->texts.contains(kWarningsAsk));
        window->batch_mode = 0;
        answers->texts.clear();
        QVERIFY(window->SaveAct(true));
        QVERIFY(answers->texts.isEmpty());
    }

    void renameOnSave()
    {
        const QString old_dir = SaveNew("first");
        QVERIFY(!old_dir.isEmpty());
        QVERIFY(WriteBytes(old_dir + "/src/kept.cpp", "int x;\n"));
        QVERIFY(WriteBytes(old_dir + "/loose.txt", "not carried over\n"));
        QVERIFY(WriteBytes(old_dir + "/extra/deep.txt", "not carried over\n"));
        const QString old_id = Entity(*window, "Basic", "Block ID")->sel_val;

        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "Block Name", "second"));
        answers->buttons.append(QMessageBox::No);
        QVERIFY(window->SaveAct()); // a refused rename still counts as saved
        QVERIFY(!QFileInfo::exists(dir.path() + "/second"));
        QCOMPARE(answers->texts.last(), kRenameAsk);

        answers->buttons.append(QMessageBox::Yes);
        QVERIFY(window->SaveAct());
        const QString new_dir = dir.path() + "/second";
        QCOMPARE(ReadBytes(new_dir + "/src/kept.cpp"), QByteArray("int x;\n"));
        QVERIFY(QFileInfo(new_dir + "/second.bdef").isFile());
        QVERIFY(!QFileInfo::exists(new_dir + "/loose.txt"));
        QVERIFY(!QFileInfo::exists(new_dir + "/extra"));
        QVERIFY(QFileInfo(old_dir + "/first.bdef").isFile());
        const QString new_id = Entity(*window, "Basic", "Block ID")->sel_val;
        QVERIFY(new_id != old_id);
        QCOMPARE(qobject_cast<QLineEdit *>(Entity(*window, "Basic", "Block ID")->editor)->text(), new_id);
        QCOMPARE(window->block_name, QStringLiteral("second"));
    }

    void newBlockIntoExistingDirectory()
    {
        QVERIFY(QDir(dir.path()).mkpath("existing/notes"));
        NewCleanBlock("existing");
        answers->choices.append({dir.path()});
        QVERIFY(window->SaveAct());
        QVERIFY(QFileInfo(dir.path() + "/existing/existing.bdef").isFile());
        QVERIFY(!answers->texts.contains(kRenameAsk));
    }

    void closeGuards()
    {
        window->NewAct();
        // New over an open block asks first; No keeps the block.
        answers->buttons.append(QMessageBox::No);
        window->NewAct();
        QCOMPARE(answers->texts.value(0), QStringLiteral("Do you want to close existing block configuration."));
        QVERIFY(window->block_open);

        // Closing the window asks as Close does; Cancel keeps the window and the block.
        window->show();
        answers->buttons.append(QMessageBox::Cancel);
        QVERIFY(!window->close());
        QVERIFY(window->block_open);
        answers->buttons.append(QMessageBox::Discard);
        QVERIFY(window->close());
        QVERIFY(!window->block_open);
    }

    void openRefusals()
    {
        // A directory without a definition file leaves no block and says why.
        QVERIFY(QDir(dir.path()).mkpath("hollow"));
        window->OpenProjectFile(dir.path() + "/hollow/hollow.bdef");
        QVERIFY(!window->block_open && !window->block && !window->config_page);
        QVERIFY(window->error_list->HasErrors());

        // A block whose signature does not fit its author key is refused.
        BlockData *block = MakeSampleBlock(dir.path() + "/forged");
        FindEntity(block->config, AuthGroupHeader(), AuthEntityLabels()[1])->sel_val = "forged";
        QVERIFY(QDir().mkpath(block->path) && SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        answers->texts.clear();
        window->OpenProjectFile(dir.path() + "/forged/forged.bdef");
        QVERIFY(!window->block_open && !window->block);
        QCOMPARE(answers->texts.size(), 1);
        QVERIFY(answers->texts[0].startsWith("Block authentication failed."));
    }

    void versionCheck_data()
    {
        QTest::addColumn<QString>("block_version");
        QTest::addColumn<bool>("warned");
        QTest::newRow("newer major") << "3.0" << true;
        QTest::newRow("same major") << "2.9" << false;
    }

    void versionCheck()
    {
        QFETCH(QString, block_version);
        QFETCH(bool, warned);
        const QString name = QString(QTest::currentDataTag()).replace(' ', '_');
        const QString block_dir = SaveNew(name);
        QVERIFY(TypeIntoConfiguration(window.get(), "Basic", "ZEMA Version", block_version));
        QVERIFY(window->SaveAct());
        window->CloseAct(true, false);
        answers->texts.clear();
        const QString warning = "Block library version is incompatible with current ZEMA version.";
        window->OpenProjectFile(block_dir + "/x.bdef");
        QVERIFY(window->block_open); // the open goes on in any case
        QCOMPARE(answers->texts.contains(warning), warned);
        window->CloseAct(true, false);
        // In a batch the warning goes to the list instead of a box.
        answers->texts.clear();
        window->batch_mode = 1;
        window->OpenProjectFile(block_dir + "/x.bdef");
        QVERIFY(answers->texts.isEmpty());
        QCOMPARE(window->error_list->warnings.contains("Warning: " + warning), warned);
        window->batch_mode = 0;
    }

    void batchRun()
    {
        QVERIFY(WriteSampleBlock(dir.path() + "/batch/good"));
        QVERIFY(WriteBytes(dir.path() + "/batch/sub/broken/broken.bdef", "not a block"));
        const QByteArray good_before = ReadBytes(dir.path() + "/batch/good/good.bdef");

        window->NewAct();
        window->BatchProcAct();
        QCOMPARE(answers->texts.last(), QStringLiteral("Close present project before proceeding"));
        window->CloseAct(true, false);

        answers->texts.clear();
        answers->choices.append({dir.path() + "/batch"});
        answers->buttons.append(QMessageBox::Yes);
        window->BatchProcAct();
        const QString broken = dir.path() + "/batch/sub/broken/broken.bdef";
        QCOMPARE(window->batch_failed, QStringList{broken});
        QCOMPARE(answers->texts.value(1), QStringLiteral("Total 2 files found. Do you want to process the files."));
        QVERIFY(answers->texts.last().contains("1. Error: " + broken));
        QVERIFY(!window->batch_mode && !window->block_open);
        QCOMPARE(window->error_list->windowTitle(), QStringLiteral("ZEMA"));
        QCOMPARE(ReadBytes(dir.path() + "/batch/good/good.bdef"), good_before);
        QCOMPARE(ReadBytes(broken), QByteArray("not a block"));

        // An empty folder still asks, then completes.
        QVERIFY(QDir(dir.path()).mkpath("batch_empty"));
        answers->texts.clear();
        answers->choices.append({dir.path() + "/batch_empty"});
        answers->buttons.append(QMessageBox::Yes);
        window->BatchProcAct();
        QCOMPARE(answers->texts, QStringList({"Select Root Directory For Batch Processing",
                                              "Total 0 files found. Do you want to process the files.",
                                              "Batch file processing completed."}));
    }
};

ZEMA_TEST(tst_MainWindow)
#include "tst_MainWindow.moc"
