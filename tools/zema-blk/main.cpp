// zema-blk: the block tool's sequences for scripts and pipelines, without a window.
// Exit status: 0 success, 1 the block has errors or the operation was refused, 2 bad usage or
// unreadable input.
#include "app/AbstractFileHandling.h"
#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/PackedArgument.h"
#include "app/Prompt.h"
#include "app/StartUp.h"
#include "codegen/CodeFileConversion.h"
#include "codegen/PythonModule.h"
#include "pages/CodeConfigDlg.h"
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
#include <memory>

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

// The hidden main window the block sequences run in, made at the first use; it must go before
// the application does.
std::unique_ptr<MainWindow> window;

MainWindow *Window()
{
    if (!window) {
        PackedArgument packed;
        packed.root_dir = GlobalSettings()->root_dir;
        window.reset(StartUp(packed));
    }
    return window.get();
}

ScriptedAnswerer *Answers()
{
    return static_cast<ScriptedAnswerer *>(Prompt::CurrentAnswerer());
}

// OpenProjectFile takes a file and opens the directory it lies in; the block's own file is then
// found there, so any name below the directory will do.
bool OpenBlock(MainWindow *window, const QString &block_dir)
{
    const QString dir = QDir::cleanPath(QFileInfo(block_dir).absoluteFilePath());
    window->batch_mode = 1;
    window->OpenProjectFile(dir + "/" + QFileInfo(dir).fileName() + ".bdef");
    return window->block_open;
}

void PrintReport(const QString &block_dir, const ErrorList &list)
{
    QTextStream out(stdout);
    out << "== " << block_dir << "\n";
    for (const QString &row : list.NumberedMessages())
        out << row << "\n";
}

int Check(QStringList args)
{
    if (args.isEmpty())
        return UsageError(QStringLiteral("check takes BLOCKDIR..."));
    MainWindow *window = Window();
    int errors = 0, warnings = 0, infos = 0, failed = 0;
    for (const QString &block_dir : args) {
        if (!OpenBlock(window, block_dir)) {
            ++failed;
            PrintReport(block_dir, *window->error_list);
            continue;
        }
        window->ValidateAct(false, true);
        PrintReport(block_dir, *window->error_list);
        errors += window->error_list->errors.size();
        warnings += window->error_list->warnings.size();
        infos += window->error_list->infos.size();
        window->CloseAct(true, false);
    }
    QTextStream(stdout) << "checked " << args.size() << " blocks: " << errors << " errors, "
                        << warnings << " warnings, " << infos << " information, " << failed
                        << " failed to open\n";
    return errors > 0 || failed > 0 ? Refused : Success;
}

int Save(QStringList args)
{
    if (args.size() != 1)
        return UsageError(QStringLiteral("save takes BLOCKDIR"));
    MainWindow *window = Window();
    if (!OpenBlock(window, args[0])) {
        PrintReport(args[0], *window->error_list);
        return Usage;
    }
    const bool saved = window->SaveAct(true);
    PrintReport(args[0], *window->error_list);
    const QString dir = window->BlockDir();
    window->CloseAct(true, false);
    if (!saved) {
        Err() << "zema-blk: not saved: the block has errors\n";
        return Refused;
    }
    QTextStream(stdout) << "saved " << dir << "\n";
    return Success;
}

int Generate(QStringList args)
{
    const bool force = args.removeAll(QStringLiteral("--force")) > 0;
    if (args.size() != 1)
        return UsageError(QStringLiteral("generate takes [--force] BLOCKDIR"));
    MainWindow *window = Window();
    if (!OpenBlock(window, args[0])) {
        PrintReport(args[0], *window->error_list);
        return Usage;
    }
    window->batch_mode = 0;
    window->ValidateAct(true, true);
    if (window->error_list->HasErrors())
        for (const QString &row : window->error_list->NumberedMessages())
            Err() << row << "\n";
    // The overwrite question is the only question generation asks.
    Answers()->buttons = {force ? QMessageBox::Yes : QMessageBox::No};
    const int shown = Answers()->texts.size();
    window->code_page->on_pb_gen_tmpl_code_clicked();
    const QStringList written = window->code_page->generated;
    const QStringList boxes = Answers()->texts.mid(shown);
    Answers()->buttons.clear();
    window->CloseAct(true, false);
    QTextStream out(stdout);
    for (const QString &path : written)
        out << path << "\n";
    // Any box but the overwrite question is a refusal or a failure.
    bool refused = written.isEmpty();
    for (const QString &box : boxes)
        refused = refused || !box.startsWith(QStringLiteral("Existing template code files"));
    return refused ? Refused : Success;
}

int Batch(QStringList args)
{
    if (args.size() != 1)
        return UsageError(QStringLiteral("batch takes DIR"));
    if (!QFileInfo(args[0]).isDir())
        return UsageError("not a directory: " + args[0]);
    MainWindow *window = Window();
    Answers()->choices.append({QDir::cleanPath(QFileInfo(args[0]).absoluteFilePath())});
    Answers()->buttons.append(QMessageBox::Yes);
    window->BatchProcAct();
    QTextStream out(stdout);
    for (const QString &file : window->batch_failed)
        out << file << "\n";
    return window->batch_failed.isEmpty() ? Success : Refused;
}

int PyModule(QStringList args)
{
    if (args.size() != 2)
        return UsageError(QStringLiteral("pymodule takes BLOCKDIR OUTDIR"));
    ErrorList errors;
    auto *block = new BlockData;
    block->path = QDir::cleanPath(QFileInfo(args[0]).absoluteFilePath());
    if (!LoadBlockData(block, QString(), &errors, QStringLiteral("ZEMA"), true)) {
        PrintErrors(errors);
        FreeBlockData(block);
        return Usage;
    }
    const QString written = WritePythonModule(block, args[1], QStringLiteral(".py"));
    FreeBlockData(block);
    if (written.isEmpty()) {
        Err() << "zema-blk: no module written: the block has no name or " << args[1]
              << " cannot take the file\n";
        return Refused;
    }
    QTextStream(stdout) << written << "\n";
    return Success;
}

int Convert(QStringList args)
{
    ConversionSettings settings;
    if (!TakeKey(args, settings.key))
        return UsageError(QStringLiteral("convert takes a number after --key"));
    const bool encrypt = args.removeAll(QStringLiteral("--encrypt")) > 0;
    settings.decrypt = args.removeAll(QStringLiteral("--decrypt")) > 0;
    settings.subdirs = args.removeAll(QStringLiteral("--subdirs")) > 0;
    settings.single_file = args.removeAll(QStringLiteral("--single-file")) > 0;
    settings.fortran = args.removeAll(QStringLiteral("--fortran")) > 0;
    settings.python = args.removeAll(QStringLiteral("--python")) > 0;
    settings.all_types = args.removeAll(QStringLiteral("--all-types")) > 0;
    if (encrypt == settings.decrypt || args.size() != 1 || args[0].startsWith(QLatin1String("--")))
        return UsageError(QStringLiteral("convert takes (--encrypt | --decrypt) [options] PATH"));
    if (!QFileInfo::exists(args[0]))
        return UsageError("no such file or directory: " + args[0]);
    settings.path = QDir::cleanPath(QFileInfo(args[0]).absoluteFilePath());
    const QString message = Window()->ConvertCodeFiles(settings);
    if (!message.isEmpty())
        QTextStream(stdout) << message << "\n";
    return message.isEmpty() || message == QLatin1String("Encrypt/Decrypt Failed") ? Refused : Success;
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
        {"check", "check BLOCKDIR...",
         "Open each block as the window does, validate it, and print \"== BLOCKDIR\" and its\n"
         "numbered messages; a block that cannot be opened prints why. Last line: the counts.\n"
         "Exit 1 when any block has an Error or could not be opened.",
         Check},
        {"save", "save BLOCKDIR",
         "Open the block, validate it and save it as the window's Save does, without questions:\n"
         "Warnings do not stop the save, Errors refuse it (exit 1). Prints the messages as check.",
         Save},
        {"generate", "generate [--force] BLOCKDIR",
         "Open the block, validate it and generate its template code as the code page's button\n"
         "does; prints each file written, one path a line. Existing header and source files are\n"
         "replaced only with --force. Exit 1 when the generation was refused.",
         Generate},
        {"batch", "batch DIR",
         "Open and close every block definition file below DIR without saving, as the batch run\n"
         "of the window does; prints each file that could not be processed (exit 1 if any).",
         Batch},
        {"pymodule", "pymodule BLOCKDIR OUTDIR",
         "Write the block's Python module, with ready-made calls for adding, setting and connecting\n"
         "the block from a script, into OUTDIR and print its path. Exit 1 when nothing was written.",
         PyModule},
        {"convert", "convert OPTIONS PATH",
         "Convert code files to or from .enc as the window's Encrypt/Decrypt Code Files does.\n"
         "OPTIONS are the dialog's choices: (--encrypt | --decrypt) [--key K] [--subdirs]\n"
         "[--single-file] [--fortran] [--python] [--all-types]; the key defaults to 0.\n"
         "A directory is copied to PATH_enc or PATH_dec and converted there: when encrypting, the\n"
         "src files of each block that prefers encrypted code; when decrypting, every .enc file.\n"
         "A file converts beside itself and stays. Prints the closing message; exit 1 on\n"
         "\"Encrypt/Decrypt Failed\" or when the blocks of the tree cannot be opened.",
         Convert},
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
        if (name == QLatin1String(command.name)) {
            const int status = command.run(args);
            window.reset();
            return status;
        }
    return UsageError("no such command: " + name);
}
