#include "PageWindow.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/BlockRegistry.h"
#include "params/ParameterDlg.h"
#include "params/Para_LineEdit.h"
#include "params/ConfigurationEntities.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

PageWindow::PageWindow(const QString &root)
{
    QStandardPaths::setTestModeEnabled(true);
    auto scripted = std::make_unique<ScriptedAnswerer>();
    answers = scripted.get();
    Prompt::SetAnswerer(std::move(scripted));
    window = std::make_unique<MainWindow>(QStringLiteral("1.0.0"), false);
    AppSettings *settings = CreateAppSettings(window.get());
    settings->root_dir = root;
    settings->bin_dir = root + "/bin_win";
    InitRegistry(window.get());
    window->LateInitialise();
}

PageWindow::~PageWindow()
{
    window->CloseAct(true, false);
    window.reset();
    GlobalSettings()->main_window = nullptr;
}

void PageWindow::NewBlock()
{
    window->CloseAct(true, false);
    window->NewAct();
}

bool PageWindow::OpenBlock(BlockData *block, const QString &dir, const QString &name)
{
    const QString path = dir + "/" + name;
    QDir().mkpath(path + "/src");
    QDir().mkpath(path + "/doc");
    block->path = path;
    for (const QString &file : {path + "/src/" + name + ".h", path + "/doc/index.htm"}) {
        QFile out(file);
        if (!out.exists() && out.open(QIODevice::WriteOnly))
            out.write(file.endsWith(".h") ? "// header\n" : "<html><body>help</body></html>\n");
    }
    if (!SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true))
        return false;
    window->CloseAct(true, false);
    window->OpenProjectFile(path + "/" + name + ".bdef");
    return window->block != nullptr;
}

QStringList PageWindow::ValidationRows() const
{
    window->ValidateAct(true, true);
    return window->error_list->NumberedMessages();
}

BlockData *PageWindow::NewBlockRecord(const QString &name)
{
    auto *block = new BlockData;
    block->config = BuildConfigurationEntities(0);
    FindEntity(block->config, QStringLiteral("Basic"), QStringLiteral("Block Name"))->sel_val = name;
    FindEntity(block->config, QStringLiteral("Code-Basic"), QStringLiteral("Header File Name"))->sel_val = name + ".h";
    for (const char *kind : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
        FindEntity(block->config, QStringLiteral("Code-Basic"),
                   QStringLiteral("Class/Structure Name (%1)").arg(QLatin1String(kind)))->sel_val = name;
    block->params = new BlkParaData;
    block->initconds = new BlkParaData;
    block->pres = NewDefaultPresData();
    block->pres->title = name;
    block->code = new BlkCodeData;
    block->misc = new BlkMiscData;
    block->help = new BlkHelpData;
    return block;
}

bool TypeIntoConfiguration(MainWindow *window, const QString &header, const QString &label,
                           const QString &text)
{
    ParaEntity *entity = FindEntity(window->config_page->data, header, label);
    auto *edit = qobject_cast<Para_LineEdit *>(entity ? entity->editor : nullptr);
    if (!edit)
        return false;
    edit->edited = true;
    edit->setText(text);
    edit->edited = false;
    return true;
}
