// Times the command interface of the real program as a parent drives it: a burst of add_para
// lines written at once, then the same command in lock-step (one line, wait for its reply).
// The start-up pause of the program is not counted. Usage: bench_cli APP_DIR [COUNT]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

QTextStream out(stdout);

class Tool
{
public:
    QProcess process;

    // One line of the program's standard output, or empty after 60 s.
    QString ReadLine()
    {
        QElapsedTimer clock;
        clock.start();
        while (!process.canReadLine() && clock.elapsed() < 60000)
            process.waitForReadyRead(1000);
        return process.canReadLine() ? QString::fromLatin1(process.readLine()).trimmed() : QString();
    }

    void Send(const QString &line) { process.write(line.toLatin1() + '\n'); }
};

QString Para(int i)
{
    return QStringLiteral("zema.add_para$Parameter %1$para_%1$Real$%1.5").arg(i);
}

void Report(const QString &what, double ms, int count)
{
    out << what.leftJustified(48) << QString::number(ms, 'f', 1).rightJustified(10) << " ms  ("
        << QString::number(ms * 1000.0 / count, 'f', 1) << " us a command)\n";
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().size() < 2) {
        out << "usage: bench_cli APP_DIR [COUNT]\n";
        return 2;
    }
    const QString app_dir = app.arguments()[1];
    const int count = app.arguments().size() > 2 ? app.arguments()[2].toInt() : 1000;
    const int steps = count / 5;

    // Its own root and home, so that nothing of the user's is touched.
    QTemporaryDir temp;
    QDir().mkpath(temp.filePath("root/bin_win"));
    QFile::copy(app_dir + "/bin_win/ZEMA.cfg", temp.filePath("root/bin_win/ZEMA.cfg"));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", temp.filePath("home"));
    env.insert("XDG_CONFIG_HOME", temp.filePath("home/.config"));
    env.insert("QT_QPA_PLATFORM", "offscreen");
    Tool tool;
    tool.process.setProcessEnvironment(env);
    tool.process.setProcessChannelMode(QProcess::SeparateChannels);
    tool.process.setStandardErrorFile(QProcess::nullDevice());

    QElapsedTimer clock;
    clock.start();
    tool.process.start(app_dir + "/bin_win/zema-block-tool", {"#cli_on#" + temp.filePath("root")});
    if (!tool.process.waitForStarted() || tool.ReadLine().isEmpty()) {
        out << "the tool did not start\n";
        return 1;
    }
    const double start_ms = clock.nsecsElapsed() / 1e6;
    out << QStringLiteral("cli: start-up until the greeting").leftJustified(48)
        << QString::number(start_ms, 'f', 1).rightJustified(10) << " ms  (2,500 ms of it a fixed pause)\n";
    tool.Send(QStringLiteral("zema.open$BenchBlock$Bench$$1"));
    if (!tool.ReadLine().startsWith(QLatin1String("ZEMABENew block created"))) {
        out << "the tool refused to open a block\n";
        return 1;
    }

    // The whole burst is written before the first reply is read, as a parent that pipes a script.
    clock.restart();
    QByteArray burst;
    for (int i = 0; i < count; ++i)
        burst += Para(i).toLatin1() + '\n';
    tool.process.write(burst);
    int added = 0;
    for (int i = 0; i < count; ++i)
        added += tool.ReadLine().endsWith(QLatin1String("added.")) ? 1 : 0;
    Report(QStringLiteral("cli: burst of %L1 add_para").arg(count), clock.nsecsElapsed() / 1e6, count);

    clock.restart();
    for (int i = count; i < count + steps; ++i) {
        tool.Send(Para(i));
        added += tool.ReadLine().endsWith(QLatin1String("added.")) ? 1 : 0;
    }
    Report(QStringLiteral("cli: %L1 add_para in lock-step").arg(steps), clock.nsecsElapsed() / 1e6, steps);
    if (added != count + steps)
        out << "warning: " << count + steps - added << " commands were refused\n";

    tool.process.closeWriteChannel();
    tool.process.waitForFinished(30000);
    return added == count + steps ? 0 : 1;
}
