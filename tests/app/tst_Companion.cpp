// The companion program, run as a user's script runs it.
#include "CompanionRun.h"
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/Entitlement.h"
#include "params/ConfigurationEntities.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

#include <QtTest>

class tst_Companion : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void helpAndUsage()
    {
        CompanionRun help = RunCompanion({"--help"});
        QCOMPARE(help.exit_code, 0);
        for (const char *command : {"dump [--key K] FILE", "pack [--key K] IN OUT", "resave BLOCKDIR", "check BLOCKDIR...", "save BLOCKDIR", "batch DIR"})
            QVERIFY2(help.out.contains(command), command);
        for (const QStringList &bad : {QStringList{}, {"frobnicate"}, {"dump", "--key", "x", "f"}, {"pack", "only-one"}})
            QCOMPARE(RunCompanion(bad).exit_code, 2);
    }

    void packAndDumpAreInverse()
    {
        const QByteArray plain = QByteArray("\x00\x7f\xff zema\n", 8).repeated(400);
        QVERIFY(WriteBytes(dir.filePath("plain.bin"), plain));
        QCOMPARE(RunCompanion({"pack", "--key", "2", dir.filePath("plain.bin"), dir.filePath("x.enc")}).exit_code, 0);
        QByteArray expected = plain;
        EncodeBuffer(expected, true, 2);
        QCOMPARE(ReadBytes(dir.filePath("x.enc")), expected);
        const CompanionRun dump = RunCompanion({"dump", "--key", "2", dir.filePath("x.enc")});
        QVERIFY(dump.exit_code == 0 && dump.out == plain);
    }

    // Resave passes the block through every reader and writer; nothing is written when reading failed.
    void resaveAndUnreadableInputs()
    {
        const QString path = dir.filePath("broken"), missing = dir.filePath("missing.bdef"), empty = dir.filePath("empty");
        QVERIFY(WriteSampleBlock(path) && QDir().mkpath(empty) && WriteBytes(dir.filePath("plain.xml"), "<a/>"));
        const QByteArray before = DecodedDefinition(path + "/broken.bdef");
        QCOMPARE(RunCompanion({"resave", path}).exit_code, 0);
        QCOMPARE(DecodedDefinition(path + "/broken.bdef"), before);
        const QByteArray disk = ReadBytes(path + "/broken.bdef").chopped(9);
        QVERIFY(WriteBytes(path + "/broken.bdef", disk));
        const QList<QPair<QStringList, QString>> cases{
            {{"dump", missing}, "Cannot open file: " + missing},
            {{"dump", dir.filePath("plain.xml")}, "plain.xml: File Loading Error: "},
            {{"resave", path}, "broken.bdef: File Loading Error: "},
            {{"resave", empty}, "Cannot open file: " + empty + "/empty.bdef"}};
        for (const auto &[args, error] : cases) {
            const CompanionRun run = RunCompanion(args);
            QVERIFY2(run.exit_code == 2 && run.err.contains(error) && run.out.isEmpty(), qPrintable(args.join(' ')));
        }
        QCOMPARE(ReadBytes(path + "/broken.bdef"), disk);
        QVERIFY(QDir(empty).isEmpty());
    }

    void checkSaveAndBatch()
    {
        const QString good = dir.filePath("lib/gain"), bad = dir.filePath("lib/bad"), broken = dir.filePath("lib/broken");
        // Both start from the shipped example, which checks clean; "bad" gets a blank in its name.
        const QString example = ZEMA_APP_DIR "/blocks/gain";
        QVERIFY(CopyTree(example, good) && CopyTree(example, bad) && WriteBytes(broken + "/broken.bdef", "garbage"));
        QVERIFY(QFile::rename(bad + "/gain.bdef", bad + "/bad.bdef"));
        auto *block = new BlockData;
        block->path = bad;
        QVERIFY(LoadBlockData(block, QString(), nullptr, "ZEMA", true));
        AuthValuesToWorking(block->config);
        FindEntity(block->config, "Basic", "Block Name")->sel_val = "my block";
        block->pres->title.clear();
        QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
        FreeBlockData(block);
        const QByteArray bad_before = ReadBytes(bad + "/bad.bdef");

        CompanionRun run = RunCompanion({"check", good, bad, broken});
        QCOMPARE(run.exit_code, 1);
        const QStringList lines = QString::fromUtf8(run.out).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.first(), "== " + good);
        const int at_bad = lines.indexOf("== " + bad), at_broken = lines.indexOf("== " + broken);
        QVERIFY(at_bad > 0 && at_broken > at_bad);
        // The pages' findings come in the window's order, numbered as the error list numbers them.
        QCOMPARE(lines.mid(at_bad + 1, 2), QStringList({"1. Error: Configuration: Value at entity 'Block Name' has white spaces",
                                                        "2. Warning: Presentation: Block title field is empty"}));
        QVERIFY(lines.value(at_broken + 1).startsWith("1. Error: broken.bdef: File Loading Error"));
        QVERIFY2(QRegularExpression("^checked 3 blocks: 1 errors, 1 warnings, \\d+ information, 1 failed to open$")
                     .match(lines.last()).hasMatch(), qPrintable(lines.last()));
        // The example blocks shipped with the tool check clean.
        run = RunCompanion({"check", example, ZEMA_APP_DIR "/blocks/saturation"});
        QVERIFY2(run.out.endsWith("checked 2 blocks: 0 errors, 0 warnings, 0 information, 0 failed to open\n"), run.out.constData());

        QCOMPARE(RunCompanion({"save", bad}).exit_code, 1);
        QCOMPARE(ReadBytes(bad + "/bad.bdef"), bad_before);
        run = RunCompanion({"save", good});
        QVERIFY(run.exit_code == 0 && run.out.contains("saved " + good.toUtf8()));
        QCOMPARE(RunCompanion({"check", good}).exit_code, 0);

        run = RunCompanion({"batch", dir.filePath("lib")});
        QCOMPARE(run.exit_code, 1);
        QCOMPARE(QString::fromUtf8(run.out), broken + "/broken.bdef\n");
        QCOMPARE(ReadBytes(bad + "/bad.bdef"), bad_before);
    }
};

ZEMA_TEST(tst_Companion)
#include "tst_Companion.moc"
