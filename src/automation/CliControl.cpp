#include "automation/CliControl.h"

#include "app/AppSettings.h"
#include "app/MainWindow.h"
#include "automation/NewBlockRequest.h"
#include "codegen/CodeNames.h"
#include "codegen/PythonModule.h"
#include "pages/BlkCodeData.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

const char kInvalidCommand[] = "Error: Invalid command received.";
// Blank and "-" are kept out of names that become directories and code identifiers.
const char kNameExtras[] = " -";

qint64 NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

QString UserDir()
{
    const AppSettings *settings = GlobalSettings();
    return settings ? settings->user_dir : QString();
}

} // namespace

CliControl::CliControl(MainWindow *main_window)
    : main_window(main_window), last_activity(NowMs()), params(new BlkParaData)
{
    auto *basic = new ParaGroup;
    basic->header = QStringLiteral("Basic");
    params->para_grp.append(basic);
    start(QThread::LowPriority);
}

CliControl::~CliControl()
{
    stop_request = 1;
    // A worker still blocked in its read never sees the request; the process is ending anyway.
    if (!wait(3000)) {
        terminate();
        wait();
    }
    for (BlkCodePort *port : ports)
        FreeBlkCodePort(port);
    FreeBlkParaData(params);
}

bool CliControl::FinishControl(int timeout_ms)
{
    const qint64 end = NowMs() + timeout_ms;
    stop_request = 1;
    while (running) {
        if (NowMs() >= end) {
            stop_request = 0;
            return false;
        }
    }
    return true;
}

void CliControl::WriteLine(const QString &text)
{
    const QByteArray bytes = text.toLatin1() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

void CliControl::Reply(const QString &text) const
{
    WriteLine(reply_prefix + text);
}

void CliControl::ThreadBegin()
{
    // The parent's first lines wait in the pipe until the window has settled.
    msleep(2500);
    WriteLine(QStringLiteral("ZEMA Block Tool initialized with command line interface (CLI) enabled."));
    last_activity = NowMs();
}

void CliControl::ThreadLoop()
{
    msleep(quint32(loop_delay));
    if (NowMs() - last_activity > 3000) {
        stop_request = 1;
        QMetaObject::invokeMethod(main_window, &MainWindow::ExitAct, Qt::QueuedConnection);
        last_activity = NowMs();
        return;
    }
    std::string raw;
    std::getline(std::cin, raw);
    if (raw.empty()) {
        // At the end of input every read returns at once; without a pause the replies would
        // flood a parent that no longer reads and block this thread before it can end.
        if (std::cin.eof())
            loop_delay = 10;
        Reply(QString::fromLatin1(kInvalidCommand));
        return;
    }
    const QString line = QString::fromLatin1(raw.data(), int(raw.size()));
    const qint64 now = NowMs();
    loop_delay = now - last_activity < 1000 ? 0 : 10;
    last_activity = now;
    if (line.size() < 5 || !line.startsWith(QLatin1String("zema."))) {
        Reply(QString::fromLatin1(kInvalidCommand));
        return;
    }
    busy = 1;
    QMetaObject::invokeMethod(this, [this, line] { ProcInputCmd(line); }, Qt::QueuedConnection);
    while (busy)
        msleep(1);
    last_activity = NowMs();
}

void CliControl::ThreadEnd()
{
    WriteLine(QStringLiteral("ZEMA Block Tool Command Line Interface: Disabled"));
}

void CliControl::ProcInputCmd(const QString &cmd)
{
    QString text = cmd;
    QStringList args = text.remove(QStringLiteral("zema.")).trimmed().split(QLatin1Char('$'));
    const QString command = args.takeFirst();
    QString reply;
    bool known = true;
    if (command == QLatin1String("open"))
        reply = OpenCmd(args);
    else if (command == QLatin1String("help.python"))
        reply = HelpPythonCmd();
    else if (command == QLatin1String("add_port"))
        reply = AddPortCmd(args);
    else if (command == QLatin1String("add_para"))
        reply = AddParaCmd(args);
    else if (command == QLatin1String("oth_lang_support"))
        reply = OtherLanguageCmd(args);
    else if (command == QLatin1String("save"))
        reply = SaveCmd();
    else if (command == QLatin1String("show_dir"))
        reply = ShowDirCmd();
    else
        known = false;
    if (!known)
        reply = QStringLiteral("Error: Unknown ZEMA command received.");
    else if (reply.isEmpty())
        reply = QStringLiteral("Error: Unprocessed command");
    Reply(reply);
    busy = 0;
}

QString CliControl::BlockPath() const
{
    return parent_dir + "/" + block_name;
}

QString CliControl::OpenCmd(const QStringList &args)
{
    if (!block_name.isEmpty())
        return QStringLiteral("Error: Cannot open/create block: Previous block configuration is still active.");
    if (args.size() < 4)
        return QStringLiteral("Error: Insufficient arguments (block name, block title, parent directory path, overwrite existing)");
    const QString raw_name = args[0].trimmed();
    if (!IsValidIdentifier(raw_name, QString::fromLatin1(kNameExtras)))
        return QStringLiteral("Error: Cannot open/create block. Block name has invalid characters.");
    const QString name = MakeIdentifier(raw_name, false, false, false);
    const QString title = args[1].isEmpty() ? name : args[1];
    QString parent = args[2].trimmed();
    if (parent.isEmpty())
        parent = UserDir() + "/blocks";
    if (!QFileInfo(parent).isDir())
        return QStringLiteral("Error: Cannot open/create block. Parent path does not exists.");
    const bool replace = args[3].toInt() != 0;
    if (QFileInfo(parent + "/" + name).isDir() && !replace)
        return QStringLiteral("Error: Cannot open/create block. Existing block already present at this path.");
    overwrite = replace ? 1 : 0;
    block_name = name;
    block_title = title;
    parent_dir = parent;
    return QStringLiteral("New block created at: ") + BlockPath();
}

QString CliControl::HelpPythonCmd()
{
    const QString page = UserDir() + "/pyzema/doc/index.html";
    QDesktopServices::openUrl(QUrl::fromLocalFile(page));
    return page;
}

QString CliControl::AddPortCmd(const QStringList &args)
{
    if (block_name.isEmpty())
        return QStringLiteral("Error: Cannot add block port: Block is not open.");
    if (args.size() < 5)
        return QStringLiteral("Error: Insufficient arguments (port name, visible text, input/output, data type, data size)");
    const QString &name = args[0];
    const QString &text = args[1];
    if (!IsValidIdentifier(name, QString::fromLatin1(kNameExtras)))
        return QStringLiteral("Error: Cannot add block port. Port internal name has invalid characters.");
    if (!IsValidIdentifier(text))
        return QStringLiteral("Error: Cannot add block port. Port visible text has invalid characters.");
    const int direction = args[2].toInt();
    if (direction != 0 && direction != 1)
        return QStringLiteral("Error: Cannot add block port. Port input[0]/output[1] value is invalid.");
    if (TypeCode(args[3]) == 0)
        return QStringLiteral("Error: Cannot add block port. Port data type is invalid.");
    const int size = args[4].toInt();
    if (size < 1)
        return QStringLiteral("Error: Cannot add block port. Port dimension size should be >0.");
    for (const BlkCodePort *port : ports)
        if (port->data_name == name)
            return QStringLiteral("Error: Cannot add block port. Port name already exists.");

    auto *port = new BlkCodePort;
    port->port_name = text;
    port->data_name = name;
    port->data_type = args[3];
    auto *dim = new BlkPortDim;
    dim->para1 = QString::number(size);
    dim->array_size = size;
    port->dims.append(dim);
    ports.append(port);
    port_dirs.append(quint8(direction));
    return QStringLiteral("Block port %1 added.").arg(text);
}

QString CliControl::AddParaCmd(QStringList args)
{
    if (block_name.isEmpty())
        return QStringLiteral("Error: Cannot add block parameter: Block is not open.");
    if (args.size() < 4)
        return QStringLiteral("Error: Insufficient arguments (para name, para variable name, para dtype, para values).");
    const QString label = args.takeFirst();
    const QString var = args.takeFirst();
    const QString type = args.takeFirst();
    if (!IsValidIdentifier(label))
        return QStringLiteral("Error: Cannot add block parameter. Parameter name is invalid.");
    if (!IsValidIdentifier(var, QString::fromLatin1(kNameExtras)))
        return QStringLiteral("Error: Cannot add block parameter. Parameter variable name is invalid.");
    if (TypeCode(type) == 0)
        return QStringLiteral("Error: Cannot add block parameter. Parameter data type is invalid.");
    for (const ParaGroup *group : params->para_grp)
        for (const ParaEntity *entity : group->para_entity) {
            if (entity->label == label)
                return QStringLiteral("Error: Cannot add block parameter. Parameter name already exists.");
            if (entity->para_var == var)
                return QStringLiteral("Error: Cannot add block parameter. Parameter variable name already exists.");
        }

    auto *entity = new ParaEntity(label);
    entity->para_var = var;
    entity->val_type = type;
    entity->sel_val = args.first();
    if (args.size() > 1)
        entity->values = args;
    entity->sel_idx = 0;
    params->para_grp.first()->para_entity.append(entity);
    return QStringLiteral("Block parameter '%1' added.").arg(label);
}

QString CliControl::OtherLanguageCmd(const QStringList &args)
{
    if (block_name.isEmpty())
        return QStringLiteral("Error: Cannot set block other language support: Block is not open.");
    if (args.isEmpty())
        return QStringLiteral("Error: Insufficient arguments (other language support value).");
    other_language = args[0].toInt();
    if (other_language > 2 || other_language < 0) {
        other_language = -1;
        // The wording of a parameter error is the reply parents already match on.
        return QStringLiteral("Error: Cannot add block parameter: Other language support value is invalid.");
    }
    return QStringLiteral("Block other language support added.");
}

QString CliControl::SaveCmd()
{
    if (block_name.isEmpty())
        return QStringLiteral("Error: Cannot save block: Block is not open.");
    if (ports.isEmpty())
        return QStringLiteral("Error: Cannot save block: At least one block port should be present.");
    if (!CreateBlock())
        return QStringLiteral("Error: Unknown error occured while saving block.");
    return QStringLiteral("Block data saved at %1.").arg(BlockPath());
}

bool CliControl::CreateBlock()
{
    // Whatever was there goes: the parent asked for this block, and overwrite was checked at open.
    QDir(BlockPath()).removeRecursively();
    main_window->show();
    main_window->OpenProject(QString(), true);

    NewBlockRequest request;
    request.name = block_name;
    request.title = block_title;
    request.parent_dir = parent_dir;
    request.other_language = other_language + 1;
    request.fit_size_to_ports = true;
    for (const ParaEntity *entity : params->para_grp.first()->para_entity) {
        NewBlockPara para;
        para.label = entity->label;
        para.para_var = entity->para_var;
        para.sel_val = entity->sel_val;
        para.values = entity->values;
        para.val_type = entity->val_type;
        request.params.append(para);
    }
    for (int i = 0; i < ports.size(); ++i) {
        NewBlockPort port;
        port.data_name = ports[i]->data_name;
        port.port_name = ports[i]->port_name;
        port.output = port_dirs[i] == 1;
        port.data_type = ports[i]->data_type;
        port.size = ports[i]->dims.first()->array_size;
        request.ports.append(port);
    }
    const bool created = main_window->CreateBlock(request);
    main_window->hide();
    return created;
}

QString CliControl::ShowDirCmd()
{
    if (block_name.isEmpty())
        return QStringLiteral("Error: Block not open.");
    QCoreApplication::processEvents();
    QDesktopServices::openUrl(QUrl::fromLocalFile(BlockPath()));
    return QStringLiteral("Block path: %1.").arg(BlockPath());
}
