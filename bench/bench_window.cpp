// Times the very large block (2,000 entities, 500 ports) through the main window, as an author
// meets it: open with every page built, validate every page, save. Usage: bench_window [--keep DIR]
#include "BenchBlocks.h"

#include "app/AppSettings.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "params/BlockRegistry.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <memory>

namespace {

QTextStream out(stdout);

double Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Report(const QString &what, const QList<double> &runs)
{
    out << what.leftJustified(44) << QString::number(Median(runs), 'f', 1).rightJustified(10)
        << " ms  (median of " << runs.size() << ", max "
        << QString::number(*std::max_element(runs.begin(), runs.end()), 'f', 1) << ")\n";
    out.flush();
}

double Elapsed(const QElapsedTimer &timer)
{
    return timer.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QTemporaryDir temp;
    QString dir = temp.path();
    const int keep = app.arguments().indexOf(QStringLiteral("--keep"));
    if (keep > 0 && keep + 1 < app.arguments().size()) {
        dir = app.arguments()[keep + 1];
        QDir().mkpath(dir);
    }
    const QString large = dir + "/large_block";
    if (!QFileInfo::exists(large + "/large_block.bdef") && !MakeLargeBlock(dir)) {
        out << "cannot write the large block in " << dir << "\n";
        return 1;
    }

    Prompt::SetAnswerer(std::make_unique<ScriptedAnswerer>());
    auto window = std::make_unique<MainWindow>(QStringLiteral(ZEMA_VERSION_TEXT), false);
    AppSettings *settings = CreateAppSettings(window.get());
    settings->root_dir = dir;
    settings->bin_dir = dir + "/bin_win";
    InitRegistry(window.get());
    window->LateInitialise();
    window->batch_mode = 1;

    QList<double> open, validate, save, close;
    int messages = 0;
    for (int run = 0; run < 7; ++run) {
        QElapsedTimer timer;
        timer.start();
        window->OpenProjectFile(large + "/large_block.bdef");
        open.append(Elapsed(timer));
        if (!window->block) {
            out << "the window refused the large block\n";
            return 1;
        }
        timer.restart();
        window->ValidateAct(true, true);
        validate.append(Elapsed(timer));
        messages = window->error_list->NumberedMessages().size();
        timer.restart();
        window->WriteBlock(window->block_parent, true);
        save.append(Elapsed(timer));
        timer.restart();
        window->CloseAct(true, false);
        close.append(Elapsed(timer));
    }
    Report(QStringLiteral("window: open large block"), open);
    Report(QStringLiteral("window: validate every page"), validate);
    Report(QStringLiteral("window: save (pages into block, file)"), save);
    Report(QStringLiteral("window: close"), close);
    out << "validation messages on the large block: " << messages << "\n";
    window.reset();
    settings->main_window = nullptr;
    return 0;
}
