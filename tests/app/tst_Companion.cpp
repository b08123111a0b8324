// The companion program, run as a user's script runs it.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/Entitlement.h"
#include "params/BlkParaData.h"

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
        for (const char *command : {"dump [--key K] FILE", "pack [--key K] IN OUT", "resave BLOCKDIR", "check BLOCKDIR...", "save BLOCKDIR", "batch DIR"})
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
        QVERIFY(run.exit_code == 2 && run.err.contains("Cannot open file: " + dir.filePath("empty/empty.bdef")));
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

    void checkSaveAndBatch()
    {
        const QString good = dir.filePath("lib/good");
        const QString bad = dir.filePath("lib/bad");
        const QString broken = dir.filePath("lib/broken");
        QVERIFY(WriteSampleBlock(good));
        BlockData *block = MakeSampleBlock(bad);
        FindEntity(block->config, "Basic", "Block Name")->sel_val = "my block";
        SignBlock(block->config);
        QVERIFY(QDir().mkpath(bad) && SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        QVERIFY(WriteBytes(broken + "/broken.bdef", "garbage"));
        const QByteArray bad_before = ReadBytes(bad + "/bad.bdef");

        Run run = Companion({"check", good, bad, broken});
        QCOMPARE(run.exit_code, 1);
        const QStringList lines = QString::fromUtf8(run.out).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.first(), "== " + good);
        const int at_bad = lines.indexOf("== " + bad);
        QCOMPARE(lines.value(at_bad + 1), QStringLiteral("1. Error: Configuration: Value at entity 'Block Name' has white spaces"));
        const int at_broken = lines.indexOf("== " + broken);
        QVERIFY(at_broken > at_bad);
        QVERIFY(lines.value(at_broken + 1).startsWith("1. Error: broken.bdef: File Loading Error"));
        QVERIFY2(QRegularExpression("^checked 3 blocks: 1 errors, \\d+ warnings, \\d+ information, 1 failed to open$")
                     .match(lines.last()).hasMatch(), qPrintable(lines.last()));
        QCOMPARE(Companion({"check", good}).exit_code, 0);
        // The example blocks shipped with the tool check clean.
        run = Companion({"check", ZEMA_APP_DIR "/blocks/gain"});
        QVERIFY2(run.out.endsWith("checked 1 blocks: 0 errors, 0 warnings, 0 information, 0 failed to open\n"), run.out.constData());

        run = Companion({"save", bad});
        QCOMPARE(run.exit_code, 1);
        QCOMPARE(ReadBytes(bad + "/bad.bdef"), bad_before);
        run = Companion({"save", good});
        QCOMPARE(run.exit_code, 0);
        QVERIFY(run.out.contains("saved " + good.toUtf8()));
        QCOMPARE(Companion({"check", good}).exit_code, 0);

        run = Companion({"batch", dir.filePath("lib")});
        QCOMPARE(run.exit_code, 1);
        QCOMPARE(QString::fromUtf8(run.out), broken + "/broken.bdef\n");
        QCOMPARE(ReadBytes(bad + "/bad.bdef"), bad_before);
    }
};

ZEMA_TEST(tst_Companion)
#include "tst_Companion.moc"
