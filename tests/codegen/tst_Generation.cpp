// The generation as the code page runs it: its refusals, the overwrite question, which files a
// run opens, and the creation of a whole block with its code in one go.
#include "CompanionRun.h"
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "automation/NewBlockRequest.h"
#include "codegen/CodeNames.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/CodeConfigDlg.h"
#include "params/BlkParaData.h"
#include "params/ParameterDlg.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString kOverwrite = QStringLiteral("Existing template code files will be overwritten. Do you want to continue generating template code.");

// A saved and opened block "blk" with one input and one output port; `embed` is the index of
// "Embeds other language code".
void OpenPortBlock(PageWindow &w, const QString &dir, int embed)
{
    BlockData *block = PageWindow::NewBlockRecord(QStringLiteral("blk"));
    ParaEntity *lang = FindEntity(block->config, QStringLiteral("Code-Basic"),
                                  QStringLiteral("Embeds other language code"));
    lang->sel_idx = embed;
    lang->sel_val = lang->values.value(embed);
    for (const char *name : {"in0", "out0"}) {
        auto *port = new BlkPort;
        port->name = QString::fromLatin1(name);
        const bool input = port->name.startsWith("in");
        port->type = input ? QStringLiteral("Input") : QStringLiteral("Output");
        port->placement = input ? QStringLiteral("Left") : QStringLiteral("Right");
        block->pres->ports.append(port);
        auto *code = new BlkCodePort;
        code->port_name = code->data_name = port->name;
        code->data_type = QStringLiteral("Real");
        code->mem_type = QStringLiteral("Cacheable");
        code->dims.append(new BlkPortDim{QStringLiteral("1"), 1});
        block->code->ports.append(code);
    }
    QVERIFY(w.OpenBlock(block, dir, QStringLiteral("blk")));
    FreeBlockData(block);
}

QString SrcDir(PageWindow &w)
{
    return w->BlockDir() + "/src/";
}

QString ClassOf(PageWindow &w)
{
    return BlockClassName(w->config_page->data);
}

} // namespace

class tst_Generation : public QObject
{
    Q_OBJECT
private slots:
    void refusals_data();
    void refusals();
    void filesOfARun_data();
    void filesOfARun();
    void overwriteQuestion();
    void openFailureStopsTheRun();
    void createBlock();
    void companionGenerate();
};

void tst_Generation::refusals_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("message");
    QTest::newRow("not validated") << "none" << "Cannot generate template code without validating block.";
    QTest::newRow("an error") << "error" << "Cannot generate template code. Errors found during previous block validation.";
    QTest::newRow("no directory") << "nodir" << "Cannot generate template code. Block directory cannot be empty.";
    QTest::newRow("a warning only") << "warning" << "";
}

void tst_Generation::refusals()
{
    QFETCH(QString, step);
    QFETCH(QString, message);
    QTemporaryDir tmp;
    PageWindow w(tmp.path());
    OpenPortBlock(w, tmp.path(), 0);
    if (step != "none")
        w->ValidateAct(true, true);
    if (step == "error")
        w->error_list->AddMessage(ErrorList::Error, QStringLiteral("Code: x"));
    if (step == "warning")
        w->error_list->AddMessage(ErrorList::Warning, QStringLiteral("Code: x"));
    if (step == "nodir")
        w->code_page->block_dir.clear();
    const int shown = w.answers->texts.size();
    w->code_page->on_pb_gen_tmpl_code_clicked();
    const QStringList boxes = w.answers->texts.mid(shown);
    QCOMPARE(boxes, message.isEmpty() ? QStringList() : QStringList{message});
    QCOMPARE(w->code_page->generated.isEmpty(), !message.isEmpty());
}

void tst_Generation::filesOfARun_data()
{
    QTest::addColumn<int>("embed");
    QTest::addColumn<QStringList>("suffixes");
    QTest::newRow("no other language") << 0 << QStringList{".h", ".cpp"};
    QTest::newRow("Python") << 1 << QStringList{".h", ".cpp", ".py", "PyIntf.h", "PyIntf.cpp"};
    QTest::newRow("Fortran") << 2 << QStringList{".h", ".cpp", ".f90"};
    QTest::newRow("Verilog writes neither") << 3 << QStringList{".h", ".cpp"};
}

void tst_Generation::filesOfARun()
{
    QFETCH(int, embed);
    QFETCH(QStringList, suffixes);
    QTemporaryDir tmp;
    PageWindow w(tmp.path() + "/app");
    QVERIFY(CopyTree(QStringLiteral(ZEMA_APP_DIR "/source"), tmp.path() + "/app/source"));
    OpenPortBlock(w, tmp.path(), embed);
    w->ValidateAct(true, true);
    QFile::remove(SrcDir(w) + "blk.h");
    w->code_page->on_pb_gen_tmpl_code_clicked();
    const QString cls = ClassOf(w);
    QStringList expected;
    for (const QString &suffix : suffixes)
        expected << SrcDir(w) + (suffix.startsWith("PyIntf") ? "PyIntf" + cls + suffix.mid(6) : cls + suffix);
    QCOMPARE(w->code_page->generated, expected);
    QStringList on_disk = QDir(SrcDir(w)).entryList(QDir::Files);
    QCOMPARE(on_disk.size(), expected.size());
    QVERIFY(w.answers->texts.isEmpty());
}

void tst_Generation::overwriteQuestion()
{
    QTemporaryDir tmp;
    PageWindow w(tmp.path());
    OpenPortBlock(w, tmp.path(), 2);
    w->ValidateAct(true, true);
    const QString base = SrcDir(w) + ClassOf(w);

    // Only the language file exists: rewritten without a question.
    QVERIFY(WriteBytes(base + ".f90", "old"));
    w->code_page->on_pb_gen_tmpl_code_clicked();
    QVERIFY(w.answers->texts.isEmpty());
    QVERIFY(ReadBytes(base + ".f90") != "old");

    // The source exists: a No leaves every file as it was.
    QVERIFY(WriteBytes(base + ".cpp", "mine"));
    QVERIFY(WriteBytes(base + ".f90", "old"));
    w.answers->buttons = {QMessageBox::No};
    w->code_page->on_pb_gen_tmpl_code_clicked();
    QCOMPARE(w.answers->texts, QStringList{kOverwrite});
    QCOMPARE(ReadBytes(base + ".cpp"), QByteArray("mine"));
    QCOMPARE(ReadBytes(base + ".f90"), QByteArray("old"));
    QVERIFY(w->code_page->generated.isEmpty());

    w.answers->buttons = {QMessageBox::Yes};
    w->code_page->on_pb_gen_tmpl_code_clicked();
    QVERIFY(ReadBytes(base + ".cpp") != "mine");
    QCOMPARE(w->code_page->generated.size(), 3);
}

void tst_Generation::openFailureStopsTheRun()
{
    QTemporaryDir tmp;
    PageWindow w(tmp.path());
    OpenPortBlock(w, tmp.path(), 1);
    w->ValidateAct(true, true);
    const QString base = SrcDir(w) + ClassOf(w);
    QVERIFY(WriteBytes(base + ".h", "old header"));
    // A directory where the source should go cannot be opened as a file.
    QVERIFY(QDir().mkpath(base + ".cpp"));
    w.answers->buttons = {QMessageBox::Yes};
    w->code_page->on_pb_gen_tmpl_code_clicked();
    QCOMPARE(w.answers->texts.last(), QStringLiteral("Cannot open cpp file to generate code."));
    // The header was opened first and stays truncated; nothing else is written.
    QCOMPARE(ReadBytes(base + ".h"), QByteArray());
    QVERIFY(!QFileInfo::exists(base + ".py"));
    QVERIFY(w->code_page->generated.isEmpty());
}

void tst_Generation::createBlock()
{
    QTemporaryDir tmp;
    PageWindow w(tmp.path() + "/app");
    QVERIFY(CopyTree(QStringLiteral(ZEMA_APP_DIR "/source"), tmp.path() + "/app/source"));
    w.NewBlock();
    NewBlockRequest request;
    request.name = QStringLiteral("Mixer");
    request.title = QStringLiteral("Signal Mixer");
    request.parent_dir = tmp.path();
    request.other_language = 1;
    request.fit_size_to_ports = true;
    request.params = {{"Gain", "gain", "2.5", {}, "Real"},
                   {"Mode", "mode", "", {"Add", "Sub"}, "Selected Index"}};
    for (int i = 0; i < 4; ++i)
        request.ports.append({QStringLiteral("in%1").arg(i), QStringLiteral("i%1").arg(i), false,
                           QStringLiteral("Real64"), i + 1});
    request.ports.append({"out0", "", true, "Integer16", 3});
    QVERIFY(w->CreateBlock(request));
    QVERIFY(!w->block_open);
    QCOMPARE(w.answers->texts, QStringList());

    auto *block = new BlockData;
    block->path = tmp.path() + "/Mixer";
    QVERIFY(LoadBlockData(block, QString(), nullptr, QStringLiteral("ZEMA"), true));
    QCOMPARE(BlockNameOf(block->config), QStringLiteral("Mixer"));
    QCOMPARE(block->pres->title, QStringLiteral("Signal Mixer"));
    QCOMPARE(block->pres->ports.size(), 5);
    QCOMPARE(block->pres->ports[4]->type, QStringLiteral("Output"));
    QCOMPARE(block->code->ports[4]->data_type, QStringLiteral("Integer16"));
    QCOMPARE(block->code->ports[3]->dims.value(0) ? block->code->ports[3]->dims[0]->array_size : 0, 4);
    ParaEntity *mode = FindEntity(block->params, QStringLiteral("Basic"), QStringLiteral("Mode"));
    QVERIFY(mode);
    QCOMPARE(mode->sel_val, QStringLiteral("Add"));
    QCOMPARE(FindEntity(block->config, "Code-Basic", "Embeds other language code")->sel_idx, 1);
    const QString cls = BlockClassName(block->config);
    FreeBlockData(block);
    for (const QString &file : {cls + ".h", cls + ".cpp", cls + ".py", "PyIntf" + cls + ".h"})
        QVERIFY2(QFileInfo::exists(tmp.path() + "/Mixer/src/" + file), qPrintable(file));
}

// The companion answers the overwrite question Yes only when told to.
void tst_Generation::companionGenerate()
{
    QTemporaryDir tmp;
    QVERIFY(CopyTree(QStringLiteral(ZEMA_APP_DIR "/blocks/gain"), tmp.path() + "/gain"));
    const QString block = tmp.path() + "/gain";
    // The example's header is there already.
    const QByteArray before = ReadBytes(block + "/src/Gain1001.h");
    CompanionRun run = RunCompanion({"generate", block});
    QCOMPARE(run.exit_code, 1);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.contains(kOverwrite));
    QCOMPARE(ReadBytes(block + "/src/Gain1001.h"), before);

    run = RunCompanion({"generate", "--force", block});
    QCOMPARE(run.exit_code, 0);
    QCOMPARE(QString::fromUtf8(run.out).split('\n', Qt::SkipEmptyParts),
             (QStringList{block + "/src/Gain1001.h", block + "/src/Gain1001.cpp"}));
    QVERIFY(ReadBytes(block + "/src/Gain1001.cpp").contains("void Gain1001::Run("));
    QCOMPARE(RunCompanion({"generate"}).exit_code, 2);
}

ZEMA_TEST(tst_Generation)
#include "tst_Generation.moc"
