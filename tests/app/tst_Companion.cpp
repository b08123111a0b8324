// The companion program, run as a user's script runs it.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/EncodeBuffer.h"

#include <QProcess>
#include <QtTest>

namespace {

struct Run {
    int exit_code = -1;
    QByteArray out;
    QString err;
};

Run Companion(const QStringList &args)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ASAN_OPTIONS", "detect_leaks=0");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(ZEMA_APP_DIR "/bin_win/zema-blk"), args);
    Run run;
    if (!process.waitForFinished(60000))
        return run;
    run.exit_code = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

class tst_Companion : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void helpAndUsage()
    {
        Run help = Companion({"--help"});
        QCOMPARE(help.exit_code, 0);
        for (const char *command : {"dump [--key K] FILE", "pack [--key K] IN OUT", "resave BLOCKDIR"})
            QVERIFY2(help.out.contains(command), command);
        QCOMPARE(Companion({"help", "resave"}).exit_code, 0);
        for (const QStringList &bad : {QStringList{}, {"frobnicate"}, {"dump", "--key", "x", "f"}, {"pack", "only-one"}})
            QCOMPARE(Companion(bad).exit_code, 2);
    }

    void packAndDumpAreInverse()
    {
        const QStringList keyed{"--key", "2"};
        QByteArray plain;
        for (int i = 0; i < 3000; ++i)
            plain.append(char(i % 256));
        QVERIFY(WriteBytes(dir.filePath("plain.bin"), plain));
        QCOMPARE(Companion(QStringList{"pack"} + keyed + QStringList{dir.filePath("plain.bin"), dir.filePath("x.enc")}).exit_code, 0);
        QByteArray expected = plain;
        EncodeBuffer(expected, true, 2);
        QCOMPARE(ReadBytes(dir.filePath("x.enc")), expected);
        Run dump = Companion(QStringList{"dump"} + keyed + QStringList{dir.filePath("x.enc")});
        QCOMPARE(dump.exit_code, 0);
        QCOMPARE(dump.out, plain);
    }

    void unreadableInputs()
    {
        const QString missing = dir.filePath("missing.bdef");
        Run run = Companion({"dump", missing});
        QCOMPARE(run.exit_code, 2);
        QVERIFY(run.err.contains("Cannot open file: " + missing));
        QVERIFY(run.out.isEmpty());

        QVERIFY(WriteBytes(dir.filePath("plain.xml"), "<a/>"));
        run = Companion({"dump", dir.filePath("plain.xml")});
        QCOMPARE(run.exit_code, 2);
        QVERIFY(run.err.contains("plain.xml: File Loading Error: "));

        // Nothing is written over when reading failed.
        const QString path = dir.filePath("broken");
        QVERIFY(WriteSampleBlock(path));
        QByteArray disk = ReadBytes(path + "/broken.bdef");
        disk.chop(9);
        QVERIFY(WriteBytes(path + "/broken.bdef", disk));
        run = Companion({"resave", path});
        QCOMPARE(run.exit_code, 2);
        QVERIFY(run.err.contains("broken.bdef: File Loading Error: "));
        QCOMPARE(ReadBytes(path + "/broken.bdef"), disk);
        QDir().mkpath(dir.filePath("empty"));
        run = Companion({"resave", dir.filePath("empty")});
        QVERIFY(run.exit_code == 2 && run.err.contains("No block definition file"));
        QVERIFY(QDir(dir.filePath("empty")).isEmpty());
    }

    void resavePassesThroughEveryReader()
    {
        const QString path = dir.filePath("sample");
        QVERIFY(WriteSampleBlock(path));
        const QByteArray before = DecodedDefinition(path + "/sample.bdef");
        Run run = Companion({"resave", path});
        QCOMPARE(run.exit_code, 0);
        QCOMPARE(DecodedDefinition(path + "/sample.bdef"), before);
    }

};

ZEMA_TEST(tst_Companion)
#include "tst_Companion.moc"
