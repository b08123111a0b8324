#include "CompanionRun.h"

#include <QProcess>
#include <QProcessEnvironment>

CompanionRun RunCompanion(const QStringList &args)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    // The offscreen platform leaks a little at exit; the suites' own leak checks cover our code.
    env.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(ZEMA_APP_DIR "/bin_win/zema-blk"), args);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
}
