// Takes a picture of every tab of the main window with a block open, for the README.
// Usage: zema-screenshots BLOCKDIR OUTDIR (run under a real display, e.g. Xvfb).
#include "app/AppSettings.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "params/BlockRegistry.h"

#include <QApplication>
#include <QRegularExpression>
#include <QDir>
#include <QListWidget>
#include <QTreeWidget>
#include <QTabWidget>
#include <QTextStream>
#include <QThread>
#include <memory>

namespace {

void Settle()
{
    for (int round = 0; round < 10; ++round) {
        QApplication::processEvents();
        QThread::msleep(30);
    }
}

// A page shows its form filled once something is selected: the first entity, the first port.
void SelectFirstItem(QWidget *page)
{
    if (auto *tree = page->findChild<QTreeWidget *>(QStringLiteral("tree"))) {
        if (QTreeWidgetItem *group = tree->topLevelItem(0))
            tree->setCurrentItem(group->childCount() > 0 ? group->child(0) : group);
    }
    if (auto *ports = page->findChild<QListWidget *>(QStringLiteral("ports_lb")))
        ports->setCurrentRow(0);
}

QString Slug(const QString &title)
{
    return title.toLower().replace(QRegularExpression(QStringLiteral("[^a-z0-9]+")), QStringLiteral("-"));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QTextStream err(stderr);
    if (app.arguments().size() != 3) {
        err << "usage: zema-screenshots BLOCKDIR OUTDIR\n";
        return 2;
    }
    const QString block_dir = QDir(app.arguments()[1]).absolutePath();
    const QString out_dir = QDir(app.arguments()[2]).absolutePath();
    QDir().mkpath(out_dir);

    Prompt::SetAnswerer(std::make_unique<ScriptedAnswerer>());
    auto window = std::make_unique<MainWindow>(QStringLiteral(ZEMA_VERSION_TEXT), false);
    AppSettings *settings = CreateAppSettings(window.get());
    settings->root_dir = QStringLiteral(ZEMA_APP_DIR);
    settings->bin_dir = settings->root_dir + "/bin_win";
    InitRegistry(window.get());
    window->LateInitialise();
    window->show();
    window->OpenProjectFile(block_dir + "/" + QDir(block_dir).dirName() + ".bdef");
    if (!window->block) {
        err << "cannot open " << block_dir << "\n";
        return 1;
    }
    for (int tab = 0; tab < window->tabs->count(); ++tab) {
        window->tabs->setCurrentIndex(tab);
        Settle();
        SelectFirstItem(window->tabs->currentWidget());
        Settle();
        const QString file = QStringLiteral("%1/tab-%2-%3.png").arg(out_dir).arg(tab)
                                 .arg(Slug(window->tabs->tabText(tab)));
        if (!window->grab().save(file)) {
            err << "cannot write " << file << "\n";
            return 1;
        }
    }
    window->CloseAct(true, false);
    window.reset();
    settings->main_window = nullptr;
    return 0;
}
