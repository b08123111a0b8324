// The command interface through the real program, as a parent application drives it: one run
// takes a whole script of lines, so the start-up sleep is paid once; each line's reply is a row.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "codegen/CodeNames.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QtTest>

namespace {

const QString kStartLine = QStringLiteral("ZEMA Block Tool initialized with command line interface (CLI) enabled.");
const QString kEndLine = QStringLiteral("ZEMA Block Tool Command Line Interface: Disabled");
const QString kInvalid = QStringLiteral("ZEMABEError: Invalid command received.");

struct Step {
    QString name;
    QString line;
    QString reply;  // without the prefix
};

struct CliRun {
    QStringList out;       // every line of standard output
    QString err;
    qint64 exit_ms = -1;   // from the close of its input to its exit
    int exit_code = -1;
    bool timed_out = false;
};

// Runs the program in command mode with `root` as its application root and `home` as the
// user's home; writes `input`, waits for `replies` reply lines, then closes the input.
CliRun RunCli(const QString &root, const QString &home, const QStringList &input, int replies)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", home);
    env.insert("XDG_CONFIG_HOME", home + "/.config");
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("ASAN_OPTIONS", "detect_leaks=0");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(ZEMA_APP_DIR "/bin_win/zema-block-tool"), {"#cli_on#" + root});
    CliRun run;
    if (!process.waitForStarted(10000)) {
        run.timed_out = true;
        return run;
    }
    for (const QString &line : input)
        process.write(line.toLatin1() + '\n');
    QElapsedTimer clock;
    clock.start();
    while (run.out.size() < replies + 1 && clock.elapsed() < 60000) {
        if (!process.canReadLine() && !process.waitForReadyRead(1000))
            continue;
        while (process.canReadLine())
            run.out << QString::fromLatin1(process.readLine()).chopped(1);
    }
    process.closeWriteChannel();
    clock.restart();
    run.timed_out = !process.waitForFinished(30000);
    run.exit_ms = clock.elapsed();
    for (const QByteArray &line : process.readAllStandardOutput().split('\n'))
        if (!line.isEmpty())
            run.out << QString::fromLatin1(line);
    run.err = QString::fromLocal8Bit(process.readAllStandardError());
    run.exit_code = process.exitCode();
    if (run.timed_out)
        process.kill();
    return run;
}

// A fresh application root: the settings file and the Python reference sources of the tree.
bool MakeRoot(const QString &root)
{
    return WriteBytes(root + "/bin_win/ZEMA.cfg", ReadBytes(ZEMA_APP_DIR "/bin_win/ZEMA.cfg"))
           && CopyTree(ZEMA_APP_DIR "/source", root + "/source");
}

} // namespace

class tst_CliControl : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;
    QString home, user_dir, block_path;
    QList<Step> steps;
    CliRun run;

    QList<Step> Script() const
    {
        const QString missing = dir.filePath("missing");
        const QString invalid_chars = "Error: Cannot open/create block. Block name has invalid characters.";
        const QString still_active = "Error: Cannot open/create block: Previous block configuration is still active.";
        const QString port_args = "Error: Insufficient arguments (port name, visible text, input/output, data type, data size)";
        return {
            {"no prefix", "ZEMA.open$MathBlk$T$$0", "Error: Invalid command received."},
            {"shorter than the prefix", "zema", "Error: Invalid command received."},
            {"empty line", "", "Error: Invalid command received."},
            {"prefix alone", "zema.", "Error: Unknown ZEMA command received."},
            {"command in other case", "zema.Open$MathBlk$T$$0", "Error: Unknown ZEMA command received."},
            {"python help", "zema.help.python", user_dir + "/pyzema/doc/index.html"},
            {"add_port before open", "zema.add_port$in0$In$0$Real$1", "Error: Cannot add block port: Block is not open."},
            {"add_para before open", "zema.add_para$Gain$gain$Real$1", "Error: Cannot add block parameter: Block is not open."},
            {"oth_lang_support before open", "zema.oth_lang_support$0", "Error: Cannot set block other language support: Block is not open."},
            {"save before open", "zema.save", "Error: Cannot save block: Block is not open."},
            {"show_dir before open", "zema.show_dir", "Error: Block not open."},
            {"open with three arguments", "zema.open$MathBlk$T$", "Error: Insufficient arguments (block name, block title, parent directory path, overwrite existing)"},
            {"block name with dot", "zema.open$Math.Blk$T$$0", invalid_chars},
            {"block name with dash", "zema.open$Math-Blk$T$$0", invalid_chars},
            {"blank block name", "zema.open$ $T$$0", invalid_chars},
            {"missing parent", "zema.open$MathBlk$T$" + missing + "$0", "Error: Cannot open/create block. Parent path does not exists."},
            {"existing block kept", "zema.open$MathBlk$T$$0", "Error: Cannot open/create block. Existing block already present at this path."},
            {"open as identifier, overwriting", "zema.open$(Math)Blk$Math Block$ $1", "New block created at: " + block_path},
            {"open while open", "zema.open$Other$T$$1", still_active},
            {"save without ports", "zema.save", "Error: Cannot save block: At least one block port should be present."},
            {"add_port with four arguments", "zema.add_port$in0$In$0$Real", port_args},
            {"port name with blank", "zema.add_port$in 0$In$0$Real$1", "Error: Cannot add block port. Port internal name has invalid characters."},
            {"port text with slash", "zema.add_port$in0$In/0$0$Real$1", "Error: Cannot add block port. Port visible text has invalid characters."},
            {"port direction 2", "zema.add_port$in0$In$2$Real$1", "Error: Cannot add block port. Port input[0]/output[1] value is invalid."},
            {"port type unknown", "zema.add_port$in0$In$0$Float$1", "Error: Cannot add block port. Port data type is invalid."},
            {"port size 0", "zema.add_port$in0$In$0$Real$0", "Error: Cannot add block port. Port dimension size should be >0."},
            {"input port", "zema.add_port$in0$Input 0$0$Real$1", "Block port Input 0 added."},
            {"port name taken", "zema.add_port$in0$Other$1$Real$1", "Error: Cannot add block port. Port name already exists."},
            {"zema. inside an argument", "zema.add_port$in1$Inzema.put 1$0$Integer$1", "Block port Input 1 added."},
            {"third input", "zema.add_port$in2$Input 2$0$Real$1", "Block port Input 2 added."},
            {"Latin-1 text", QString::fromUtf8("zema.add_port$out0$Ausgang \u00b0$1$Real64$4"), QString::fromUtf8("Block port Ausgang \u00b0 added.")},
            {"add_para with three arguments", "zema.add_para$Gain$gain$Real", "Error: Insufficient arguments (para name, para variable name, para dtype, para values)."},
            {"para name with dot", "zema.add_para$Gain.1$gain$Real$1", "Error: Cannot add block parameter. Parameter name is invalid."},
            {"para variable with blank", "zema.add_para$Gain$ga in$Real$1", "Error: Cannot add block parameter. Parameter variable name is invalid."},
            {"para type unknown", "zema.add_para$Gain$gain$Float$1", "Error: Cannot add block parameter. Parameter data type is invalid."},
            {"single value", "zema.add_para$Gain$gain$Real$1.5", "Block parameter 'Gain' added."},
            {"para name taken", "zema.add_para$Gain$gain2$Real$1", "Error: Cannot add block parameter. Parameter name already exists."},
            {"para variable taken", "zema.add_para$Gain 2$gain$Real$1", "Error: Cannot add block parameter. Parameter variable name already exists."},
            {"list of values", "zema.add_para$Select Operation$sel_op$Selected Index$Addition$Substraction$Division", "Block parameter 'Select Operation' added."},
            {"oth_lang_support without value", "zema.oth_lang_support", "Error: Insufficient arguments (other language support value)."},
            {"other language 3", "zema.oth_lang_support$3", "Error: Cannot add block parameter: Other language support value is invalid."},
            {"other language -1", "zema.oth_lang_support$-1", "Error: Cannot add block parameter: Other language support value is invalid."},
            {"Python", "zema.oth_lang_support$0", "Block other language support added."},
            {"show_dir", "zema.show_dir", "Block path: " + block_path + "."},
            {"save", "zema.save", "Block data saved at " + block_path + "."},
            {"one block a process", "zema.open$Other$T$$1", still_active},
        };
    }

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        home = dir.filePath("home");
        user_dir = home + "/Documents/zema_user_data";
        block_path = user_dir + "/blocks/MathBlk";
        // A block of that name is already there: kept without overwrite, wiped with it.
        QVERIFY(MakeRoot(dir.filePath("root")) && WriteBytes(block_path + "/stale.txt", "old"));
        steps = Script();
        QStringList lines;
        for (const Step &step : steps)
            lines << step.line;
        run = RunCli(dir.filePath("root"), home, lines, steps.size());
        QVERIFY2(!run.timed_out, qPrintable(run.out.join('\n')));
    }

    void startLine()
    {
        QVERIFY(!run.out.isEmpty());
        QCOMPARE(run.out.first(), kStartLine);
    }

    void replies_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < steps.size(); ++i)
            QTest::newRow(qPrintable(steps[i].name)) << i;
    }

    void replies()
    {
        QFETCH(int, index);
        QVERIFY(run.out.size() > index + 1);
        QCOMPARE(run.out[index + 1], "ZEMABE" + steps[index].reply);
    }

    // A parent that goes away closes the input: a short stream of refusals, then the end.
    void closedInputEndsTheProgram()
    {
        QCOMPARE(run.exit_code, 0);
        QVERIFY2(run.exit_ms > 1000 && run.exit_ms < 10000, qPrintable(QString::number(run.exit_ms)));
        const QStringList tail = run.out.mid(steps.size() + 1);
        QVERIFY(tail.size() >= 2);
        QCOMPARE(tail.last(), kEndLine);
        // Paced, so that a parent that has stopped reading cannot fill the pipe and hang us.
        QVERIFY2(tail.size() < 2000, qPrintable(QString::number(tail.size())));
        QCOMPARE(tail.count(kInvalid), tail.size() - 1);
        QVERIFY(QFileInfo(user_dir + "/temp").isDir());
    }

    void saveMakesBlockWithCode()
    {
        QVERIFY(!QFile::exists(block_path + "/stale.txt"));
        QVERIFY(QFile::exists(block_path + "/MathBlk.bdef"));
        BlockData *block = new BlockData;
        block->path = block_path;
        const bool loaded = LoadBlockData(block, QString(), nullptr, "ZEMA", true);
        auto cleanup = qScopeGuard([block] { FreeBlockData(block); });
        QVERIFY(loaded && block->config && block->params && block->pres && block->code);

        QCOMPARE(FindEntity(block->config, "Basic", "Block Name")->sel_val, QString("MathBlk"));
        QCOMPARE(FindEntity(block->config, "Code-Basic", "Embeds other language code")->sel_val,
                 QString("Embeds Python Code"));
        QCOMPARE(block->pres->title, QString("Math Block"));
        // Three inputs on one side make the block taller than the default.
        QCOMPARE(qMin(block->pres->hsize, block->pres->vsize), 50);
        QCOMPARE(qMax(block->pres->hsize, block->pres->vsize), 60);

        QStringList ports;
        for (const BlkPort *port : block->pres->ports)
            ports << port->name + "|" + port->dis_text + "|" + port->type;
        QCOMPARE(ports, (QStringList{"in0|Input 0|Input", "in1|Input 1|Input", "in2|Input 2|Input",
                                     QString::fromUtf8("out0|Ausgang \u00b0|Output")}));
        QStringList code;
        for (const BlkCodePort *port : block->code->ports)
            code << port->port_name + "|" + port->data_type + "|"
                        + QString::number(port->dims.isEmpty() ? 0 : port->dims.first()->array_size);
        QCOMPARE(code, (QStringList{"in0|Real|1", "in1|Integer|1", "in2|Real|1", "out0|Real64|4"}));

        const ParaEntity *gain = FindEntity(block->params, "Basic", "Gain");
        const ParaEntity *select = FindEntity(block->params, "Basic", "Select Operation");
        QVERIFY(gain && select);
        QCOMPARE(gain->para_var + "|" + gain->val_type + "|" + gain->sel_val, QString("gain|Real|1.5"));
        QVERIFY(gain->values.isEmpty());
        QCOMPARE(select->values, (QStringList{"Addition", "Substraction", "Division"}));
        QCOMPARE(select->val_type, QString("Selected Index"));

        const QString cls = BlockClassName(block->config);
        QStringList expected{cls + ".h", cls + ".cpp", cls + ".py", "PyIntf" + cls + ".h", "PyIntf" + cls + ".cpp"};
        QStringList missing;
        for (const QString &file : expected)
            if (!QFile::exists(block_path + "/src/" + file))
                missing << file;
        QVERIFY2(missing.isEmpty(), qPrintable("not generated: " + missing.join(", ") + "\n" + run.err));
    }

    // Every box is answered from the start, here the one for a missing settings file, so a parent
    // that sends nothing and goes away still sees the program end.
    void startsWithoutSettingsAndNoInput()
    {
        const QString root = dir.filePath("bare");
        QVERIFY(QDir().mkpath(root));
        const CliRun bare = RunCli(root, home, {}, 0);
        QVERIFY(!bare.timed_out);
        QCOMPARE(bare.exit_code, 0);
        QVERIFY2(bare.err.contains(root + "/bin_win/ZEMA.cfg"), qPrintable(bare.err));
        QVERIFY(bare.out.size() >= 3);
        QCOMPARE(bare.out.first(), kStartLine);
        QCOMPARE(bare.out[1], kInvalid);
        QCOMPARE(bare.out.last(), kEndLine);
    }
};

ZEMA_TEST(tst_CliControl)
#include "tst_CliControl.moc"
