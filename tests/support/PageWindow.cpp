#include "PageWindow.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "params/BlockRegistry.h"

#include <QDir>
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
