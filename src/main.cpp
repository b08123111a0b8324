// Entry of the ZEMA Block Tool: the packed argument, the directories, the settings, the block
// cache, the window, then the event loop.
#include "app/MainWindow.h"
#include "app/PackedArgument.h"
#include "app/Prompt.h"
#include "app/StartUp.h"

#include <QApplication>
#include <QDir>
#include <QTextStream>
#include <memory>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString default_root = QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath();
    const PackedArgument packed = ReadPackedArguments(app.arguments(), QDir::cleanPath(default_root));
    if (packed.cli_on) {
        // The command interface arrives with the automation of blocks; a parent must not wait
        // on a window that nobody sees.
        QTextStream(stderr) << "zema-block-tool: the command interface is not available in this version\n";
        return 2;
    }
    std::unique_ptr<MainWindow> window(StartUp(packed));
    window->show();
    return app.exec();
}
