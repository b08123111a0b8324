// zema-blk: the block tool's sequences for scripts and pipelines, without a window.
// Exit status: 0 success, 1 the block has errors or the operation was refused, 2 bad usage or
// unreadable input.
#include "app/AbstractFileHandling.h"
#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "app/Prompt.h"
#include "params/BlockRegistry.h"
#include "params/ConfigurationEntities.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>
#include <cstdio>
#include <unistd.h>
#include <functional>

namespace {

enum Exit { Success = 0, Refused = 1, Usage = 2 };

struct Command {
    const char *name;
    const char *synopsis;
    const char *description;
    std::function<int(QStringList)> run;
};

QTextStream &Err()
{
    static QTextStream err(stderr);
    return err;
}

int UsageError(const QString &text)
{
    Err() << "zema-blk: " << text << "\n" << "Try 'zema-blk --help'.\n";
    Err().flush();
    return Usage;
}

void PrintErrors(const ErrorList &errors)
{
    for (const QString &row : errors.errors + errors.warnings + errors.infos)
        Err() << row << "\n";
    Err().flush();
}

// Takes "--key K" out of the arguments; false when K is not a number.
bool TakeKey(QStringList &args, qint32 &key)
{
    key = 0;
    const int at = args.indexOf(QStringLiteral("--key"));
    if (at < 0)
        return true;
    bool ok = false;
    key = args.value(at + 1).toInt(&ok);
    args.removeAt(at);
    if (at < args.size())
        args.removeAt(at);
    return ok;
}

// The whole input file, or false after printing the container's message.
bool ReadInput(const QString &path, ErrorList &errors, QByteArray &bytes)
{
    AbstractFileHandling io(QString(), &errors, 1, 0, 0, 0);
    if (!io.OpenDevice(true, path, QStringLiteral("ZEMA"))) {
        PrintErrors(errors);
        return false;
    }
    bytes = io.file.readAll();
    return true;
}

int Dump(QStringList args)
{
    qint32 key = 0;
    if (!TakeKey(args, key) || args.size() != 1)
        return UsageError(QStringLiteral("dump takes [--key K] FILE"));
    ErrorList errors;
    QByteArray bytes;
    if (!ReadInput(args[0], errors, bytes))
        return Usage;
    const bool had_bytes = !bytes.isEmpty();
    EncodeBuffer(bytes, false, key);
    if (had_bytes && bytes.isEmpty()) {
        errors.AddMessage(ErrorList::Error, QFileInfo(args[0]).fileName() +
                          ": File Loading Error: the content cannot be decoded with key " +
                          QString::number(key));
        PrintErrors(errors);
        return Usage;
    }
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    return std::fflush(stdout) == 0 ? Success : Usage;
}

int Pack(QStringList args)
{
    qint32 key = 0;
    if (!TakeKey(args, key) || args.size() != 2)
        return UsageError(QStringLiteral("pack takes [--key K] IN OUT"));
    ErrorList errors;
    QByteArray bytes;
    if (!ReadInput(args[0], errors, bytes))
        return Usage;
    EncodeBuffer(bytes, true, key);
    QSaveFile out(args[1]);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
        errors.AddMessage(ErrorList::Error, "Cannot write file: " + QFileInfo(args[1]).fileName() +
                                                " " + out.errorString());
        PrintErrors(errors);
        return Usage;
    }
    return Success;
}

int Resave(QStringList args)
{
    if (args.size() != 1)
        return UsageError(QStringLiteral("resave takes BLOCKDIR"));
    const QString dir = QDir::cleanPath(QFileInfo(args[0]).absoluteFilePath());
    ErrorList errors;
    auto *block = new BlockData;
    block->path = dir;
    if (!LoadBlockData(block, QString(), &errors, QStringLiteral("ZEMA"), true)) {
        if (errors.IsEmpty())
            errors.AddMessage(ErrorList::Error, "No block definition file in " + args[0]);
        PrintErrors(errors);
        FreeBlockData(block);
        return Usage;
    }
    // The window keeps the authentication values in their working form between load and save.
    AuthValuesToWorking(block->config);
    const bool saved = SaveBlockData(block, &errors, QStringLiteral("ZEMA"), true);
    FreeBlockData(block);
    if (!saved) {
        PrintErrors(errors);
        return Usage;
    }
    return Success;
}

const QList<Command> &Commands()
{
    static const QList<Command> commands = {
        {"dump", "dump [--key K] FILE",
         "Decode a file in the container's encoding (a .bdef, a .wsp, or an .enc with its key;\n"
         "default key 0) and write the plain bytes to standard output, unchanged.",
         Dump},
        {"pack", "pack [--key K] IN OUT",
         "Encode the bytes of IN into OUT, the reverse of dump. OUT is replaced only when the\n"
         "whole result could be written.",
         Pack},
        {"resave", "resave BLOCKDIR",
         "Load the block's definition file and save it again, the file level only, so that it\n"
         "passes once through every reader and writer. Nothing is written when loading failed.",
         Resave},
    };
    return commands;
}

int Help(const QStringList &args)
{
    QTextStream out(stdout);
    if (!args.isEmpty()) {
        for (const Command &command : Commands())
            if (args[0] == QLatin1String(command.name)) {
                out << "usage: zema-blk " << command.synopsis << "\n\n" << command.description << "\n";
                return Success;
            }
        return UsageError("no such command: " + args[0]);
    }
    out << "usage: zema-blk COMMAND [ARGS]\n\n"
        << "The ZEMA Block Tool's sequences without a window.\n\nCommands:\n";
    for (const Command &command : Commands())
        out << "  " << QString::fromLatin1(command.synopsis).leftJustified(28) << " "
            << QString::fromLatin1(command.description).section('\n', 0, 0) << "\n";
    out << "  " << QStringLiteral("help COMMAND").leftJustified(28) << " "
        << "Describe one command.\n\n"
        << "Exit status: 0 success, 1 errors in the block or the operation refused,\n"
        << "2 bad usage or unreadable input.\n";
    return Success;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Standard error carries the tool's messages: no warning about a missing runtime directory.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QString runtime = QDir::tempPath() + "/runtime-zema-" + QString::number(getuid());
        QDir().mkpath(runtime);
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit());
    }
    QApplication app(argc, argv);
    Prompt::SetAnswerer(std::make_unique<ScriptedAnswerer>(true));
    Prompt::InstallFileReportHook();

    AppSettings *settings = CreateAppSettings(nullptr);
    settings->root_dir = QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath();
    settings->bin_dir = settings->root_dir + "/bin_win";
    InitRegistry(nullptr);

    QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return UsageError(QStringLiteral("a command is needed"));
    const QString name = args.takeFirst();
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help"))
        return Help(args);
    for (const Command &command : Commands())
        if (name == QLatin1String(command.name))
            return command.run(args);
    return UsageError("no such command: " + name);
}
