// Entry of the ZEMA Block Tool: the packed argument, the directories, the settings, the block
// cache, then the event loop.
#include "app/AppSettings.h"
#include "app/PackedArgument.h"
#include "app/Prompt.h"
#include "app/WaitCursor.h"
#include "app/ZemaSettingsFileIO.h"
#include "params/BlockRegistry.h"

#include <QApplication>
#include <QDir>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString default_root = QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath();
    const PackedArgument packed = ReadPackedArguments(app.arguments(), QDir::cleanPath(default_root));
    Prompt::InstallFileReportHook();
    // A parent reading our standard output cannot close a box: from here on every box answers
    // itself and its text goes to standard error.
    if (packed.cli_on)
        Prompt::SetAnswerer(std::make_unique<ScriptedAnswerer>(true));

    AppSettings *settings = CreateAppSettings(nullptr);
    settings->root_dir = QDir::fromNativeSeparators(packed.root_dir);
    settings->third_dir = QDir::fromNativeSeparators(packed.third_dir);
    settings->bin_dir = settings->root_dir + "/bin_win";
    {
        WaitCursor wait;
        ZemaSettingsFileIO(settings->root_dir, nullptr, 0).ReadSettings(settings, QStringLiteral("ZEMA"));
    }
    InitRegistry(nullptr);
    PrepareUserDir(settings);

    // The main window joins here; until then the start-up reports what it settled on.
    QTextStream out(stdout);
    out << "ZEMA Block Tool " << ZEMA_VERSION_TEXT << "\n"
        << "root: " << settings->root_dir << "\n"
        << "settings: " << settings->bin_dir << "/ZEMA.cfg\n"
        << "block directories: " << settings->dirs.join(QStringLiteral(", ")) << "\n"
        << "user data: " << settings->user_dir << "\n";
    return 0;
}
