// Entry of the ZEMA Block Tool: the packed argument, the directories, the settings, the block
// cache, the window, then the event loop.
#include "app/MainWindow.h"
#include "app/PackedArgument.h"
#include "app/Prompt.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QDir>
#include <memory>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString default_root = QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath();
    const PackedArgument packed = ReadPackedArguments(app.arguments(), QDir::cleanPath(default_root));
    // Driven by a parent, nobody sees a box: each is answered with its default and told on
    // standard error, from start-up on, so that no command can hang on one.
    if (packed.cli_on)
        Prompt::SetAnswerer(std::make_unique<ScriptedAnswerer>(true));
    std::unique_ptr<MainWindow> window(StartUp(packed));
    if (!packed.cli_on)
        window->show();
    return app.exec();
}
