// Conversion of code files to ".enc" and back: the suffix rule, round trips with every kind of key,
// whole trees through the main window and the companion, and the code page's one-way encoding.
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "ui_CodeConfigDlg.h"
#include "ui_EncryptFilesDlg.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "codegen/CodeFileConversion.h"
#include "codegen/EncryptFilesDlg.h"
#include "pages/CodeConfigDlg.h"
#include "params/BlkParaData.h"

#include <QDir>
#include <QDirIterator>
#include <QMap>
#include <QProcess>
#include <QSet>

namespace {

const QString kCompleted = QStringLiteral("Encrypt/Decrypt Completed");
const QString kUnequal = QStringLiteral("Number of files in source and destination directories are unequal");
const QString kFailed = QStringLiteral("Encrypt/Decrypt Failed");

// Every file below `dir` with its content, by relative path.
QMap<QString, QByteArray> Snapshot(const QString &dir)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(dir, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(QDir(dir).relativeFilePath(path), ReadBytes(path));
    }
    return files;
}

// A saved block "<dir>/<name>" with its header, a source, a nested source and a text file in src.
bool WriteBlock(const QString &dir, const QString &name, bool prefer_encryption)
{
    BlockData *block = PageWindow::NewBlockRecord(name);
    block->path = dir + "/" + name;
    ParaEntity *prefer = FindEntity(block->config, QStringLiteral("Vendor Specific"),
                                    QStringLiteral("Prefer Encrypting Code Files"));
    prefer->sel_idx = prefer_encryption ? 1 : 0;
    prefer->sel_val = prefer_encryption ? QStringLiteral("Yes") : QStringLiteral("No");
    const QString src = block->path + "/src/";
    const bool ok = WriteBytes(src + name + ".h", "#pragma once\n") &&
                    WriteBytes(src + name + ".cpp", "#include \"" + name.toUtf8() + ".h\"\n") &&
                    WriteBytes(src + "kernels/step.c", QByteArray("int step(void) { return 1; }\n").repeated(50)) &&
                    WriteBytes(src + "notes.txt", "plain notes\n") &&
                    SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true);
    FreeBlockData(block);
    return ok;
}

// "lib" with a block that prefers encryption, one that does not, and a file at the top.
bool WriteTree(const QString &root)
{
    return WriteBlock(root, QStringLiteral("secret"), true) &&
           WriteBlock(root, QStringLiteral("open"), false) &&
           WriteBytes(root + "/readme.txt", "blocks of the library\n");
}

struct Run {
    int exit_code = -1;
    QString out;
};

Run Companion(const QStringList &args)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ASAN_OPTIONS", "detect_leaks=0");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(ZEMA_APP_DIR "/bin_win/zema-blk"), args);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
}

} // namespace

class tst_CodeConversion : public QObject
{
    Q_OBJECT
private slots:
    void suffixRule_data();
    void suffixRule();
    void roundTrip_data();
    void roundTrip();
    void failuresDoNotStopTheRun();
    void treeThroughTheWindow_data();
    void treeThroughTheWindow();
    void refusals();
    void companion();
    void codePageEncoding();
};

void tst_CodeConversion::suffixRule_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("options"); // d decrypt, f fortran, p python, a all types, s single file
    QTest::addColumn<bool>("taken");
    QTest::newRow("c family") << "x.cl" << "" << true;
    QTest::newRow("upper-case suffix") << "x.CPP" << "" << true;
    QTest::newRow("header .h is not code") << "x.h" << "" << false;
    QTest::newRow("last suffix only") << "x.c.bak" << "" << false;
    QTest::newRow("fortran off") << "x.f90" << "" << false;
    QTest::newRow("fortran f") << "x.f" << "f" << true;
    QTest::newRow("fortran F90") << "x.F90" << "f" << true;
    QTest::newRow("fortran f1x") << "x.f1x" << "f" << true;
    QTest::newRow("fortran for") << "x.for" << "f" << false;
    QTest::newRow("python off") << "x.py" << "f" << false;
    QTest::newRow("python pyc") << "x.pyc" << "p" << true;
    QTest::newRow("python anywhere in the suffix") << "x.ipynb" << "p" << true;
    QTest::newRow("all types") << "x.txt" << "a" << true;
    QTest::newRow("single file") << "x.txt" << "s" << true;
    QTest::newRow("single file, no suffix") << "Makefile" << "s" << false;
    QTest::newRow("all types, dot in directory") << "v1.2/Makefile" << "a" << false;
    QTest::newRow("decrypt enc") << "x.c.ENC" << "d" << true;
    QTest::newRow("decrypt takes only enc") << "x.c" << "das" << false;
}

void tst_CodeConversion::suffixRule()
{
    QFETCH(QString, file);
    QFETCH(QString, options);
    QFETCH(bool, taken);
    ConversionSettings settings;
    settings.decrypt = options.contains('d');
    settings.fortran = options.contains('f');
    settings.python = options.contains('p');
    settings.all_types = options.contains('a');
    settings.single_file = options.contains('s');
    QCOMPARE(TakesFile(file, settings), taken);
}

void tst_CodeConversion::roundTrip_data()
{
    QTest::addColumn<qint32>("key");
    QTest::newRow("key 0") << 0;
    QTest::newRow("key 1") << 1;
    QTest::newRow("key 2") << 2;
    QTest::newRow("key 3") << 3;
    QTest::newRow("key 1000") << 1000;
    QTest::newRow("negative key") << -77;
}

// A file of every suffix rule goes to ".enc" in the container's format and comes back unchanged.
void tst_CodeConversion::roundTrip()
{
    QFETCH(qint32, key);
    QTemporaryDir dir;
    QMap<QString, QByteArray> plain;
    const QByteArray code = QByteArray("double y = 0.5 * x;\n\x01\xfe", 22).repeated(40);
    for (const char *name : {"a.c", "b.cpp", "c.cc", "d.cl", "e.hpp", "f.f", "g.F90", "h.f0x",
                             "i.py", "j.pyw", "notes.txt", "Makefile", "empty.c"})
        plain.insert(QString::fromLatin1(name), name == QByteArray("empty.c") ? QByteArray() : name + code);
    for (auto it = plain.cbegin(); it != plain.cend(); ++it)
        QVERIFY(WriteBytes(dir.filePath(it.key()), it.value()));

    ConversionSettings settings;
    settings.key = key;
    settings.fortran = settings.python = true;
    QVERIFY(ConvertFileList(FilesIn(dir.path(), false), settings, true));
    settings.fortran = settings.python = false;
    settings.all_types = true;
    QVERIFY(ConvertFileList({dir.filePath("notes.txt")}, settings, true));
    QStringList kept;
    for (const QString &file : QDir(dir.path()).entryList(QDir::Files))
        if (!file.endsWith(".enc"))
            kept.append(file);
    QCOMPARE(kept, QStringList{"Makefile"});
    for (auto it = plain.cbegin(); it != plain.cend(); ++it) {
        if (it.key() == "Makefile")
            continue;
        QByteArray expected = it.value();
        EncodeBuffer(expected, true, key);
        QCOMPARE(ReadBytes(dir.filePath(it.key() + ".enc")), expected);
    }
    QVERIFY(ReadBytes(dir.filePath("empty.c.enc")).isEmpty());

    ConversionSettings back;
    back.key = key;
    back.decrypt = true;
    QVERIFY(ConvertFileList(FilesIn(dir.path(), false), back, true));
    QCOMPARE(Snapshot(dir.path()), plain);

    // A wrong key goes unnoticed: whatever comes out is written and the run succeeds.
    QVERIFY(ConvertFileList({dir.filePath("a.c")}, settings, false));
    back.key = key + 1;
    QVERIFY(ConvertFileList({dir.filePath("a.c.enc")}, back, false));
    QVERIFY(ReadBytes(dir.filePath("a.c")) != plain["a.c"]);
}

void tst_CodeConversion::failuresDoNotStopTheRun()
{
    QTemporaryDir dir;
    QVERIFY(WriteBytes(dir.filePath("first.c"), "int a;\n"));
    QVERIFY(WriteBytes(dir.filePath("blocked.c"), "int b;\n"));
    QVERIFY(QDir().mkpath(dir.filePath("blocked.c.enc"))); // the output cannot be opened
    QVERIFY(WriteBytes(dir.filePath("last.c"), "int c;\n"));
    ConversionSettings settings;
    QVERIFY(!ConvertFileList({dir.filePath("first.c"), dir.filePath("missing.c"), dir.filePath("blocked.c"),
                              dir.filePath("last.c")}, settings, true));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
             (QStringList{"blocked.c", "first.c.enc", "last.c.enc"}));
}

void tst_CodeConversion::treeThroughTheWindow_data()
{
    QTest::addColumn<bool>("subdirs");
    QTest::addColumn<bool>("stale_target");
    QTest::newRow("with sub-directories") << true << false;
    QTest::newRow("src level only") << false << false;
    QTest::newRow("merged into an existing target") << true << true;
}

// Encrypting a tree converts the sources of the block that prefers it in a copy; decrypting that
// copy gives the tree back.
void tst_CodeConversion::treeThroughTheWindow()
{
    QFETCH(bool, subdirs);
    QFETCH(bool, stale_target);
    QTemporaryDir tmp;
    const QString root = tmp.path() + "/lib";
    QVERIFY(WriteTree(root));
    if (stale_target)
        QVERIFY(WriteBytes(root + "_enc/left_over.txt", "from an earlier run\n"));
    const QMap<QString, QByteArray> source = Snapshot(root);
    PageWindow w(tmp.path());

    bool decrypt = false;
    w.answers->exec_script = [&](QDialog *dialog) {
        auto *encrypt = static_cast<EncryptFilesDlg *>(dialog);
        w.answers->choices.append({decrypt ? root + "_enc" : root});
        encrypt->ui->pb_brw_file_enc->click();
        encrypt->ui->eb_key->setText("2");
        encrypt->ui->chk_decrypt->setChecked(decrypt);
        // The copy is decrypted whole, or what sits below src would stay encrypted.
        encrypt->ui->chk_subdirs->setChecked(subdirs || decrypt);
        encrypt->ui->pb_start->click();
        return encrypt->result();
    };
    w->EncryptCodeFilesAct();
    QCOMPARE(w.answers->texts.mid(0, 3),
             (QStringList{"Encrypt/Decrypt Code Files",
                          "Files that can be converted: c, cpp, cc, cl, hpp, f, f9x, f0x, f1x, py",
                          "Select Folder"}));
    QCOMPARE(w.answers->texts.last(), stale_target ? kUnequal : kCompleted);
    QCOMPARE(w->last_dir, tmp.path());
    QVERIFY(!w->block_open && !w->batch_mode);
    QCOMPARE(Snapshot(root), source);

    const QMap<QString, QByteArray> target = Snapshot(root + "_enc");
    const QString step = subdirs ? "secret/src/kernels/step.c.enc" : "secret/src/kernels/step.c";
    // Only the block's code files are converted; its header, text and the other block stay plain.
    for (const QString &file : QStringList{"secret/src/secret.cpp.enc", step, "secret/src/secret.h", "secret/src/notes.txt",
                                            "open/src/open.cpp", "open/src/kernels/step.c", "readme.txt"})
        QVERIFY2(target.contains(file), qPrintable(file));
    QCOMPARE(target.size(), source.size() + (stale_target ? 1 : 0));

    decrypt = true;
    w->EncryptCodeFilesAct();
    QCOMPARE(w.answers->texts.last(), kCompleted);
    QMap<QString, QByteArray> back = Snapshot(root + "_enc_dec");
    back.remove("left_over.txt");
    QCOMPARE(back.keys(), source.keys());
    QCOMPARE(back, source);
}

void tst_CodeConversion::refusals()
{
    QTemporaryDir tmp;
    const QString root = tmp.path() + "/lib";
    QVERIFY(WriteTree(root));
    QVERIFY(WriteBytes(root + "/broken/broken.bdef", "not a block definition"));
    PageWindow w(tmp.path());
    w.answers->exec_script = [&](QDialog *dialog) {
        auto *encrypt = static_cast<EncryptFilesDlg *>(dialog);
        encrypt->ui->eb_path->setText(root);
        encrypt->ui->pb_start->click();
        return encrypt->result();
    };

    BlockData *block = PageWindow::NewBlockRecord(QStringLiteral("busy"));
    QVERIFY(w.OpenBlock(block, tmp.path(), QStringLiteral("busy")));
    FreeBlockData(block);
    w.answers->texts.clear();
    w->EncryptCodeFilesAct();
    QCOMPARE(w.answers->texts, QStringList{"Close present project before proceeding"});
    w->CloseAct(true, false);

    w.answers->texts.clear();
    w->EncryptCodeFilesAct();
    QCOMPARE(w.answers->texts.last(),
             QString("Failed to open some block definition files. Aborting encrypt/decrypt files"));
    QVERIFY(!w->block_open && !w->batch_mode);
    // The run stops before converting anything in its copy.
    QVERIFY(QFileInfo::exists(root + "_enc/secret/src/secret.cpp"));
}

void tst_CodeConversion::companion()
{
    QTemporaryDir tmp;
    const QString root = tmp.path() + "/lib";
    QVERIFY(WriteTree(root));
    const QMap<QString, QByteArray> source = Snapshot(root);

    Run run = Companion({"convert", "--encrypt", "--key", "3", "--subdirs", root});
    QCOMPARE(run.out, kCompleted + "\n");
    QCOMPARE(run.exit_code, 0);
    QVERIFY(QFileInfo::exists(root + "_enc/secret/src/kernels/step.c.enc"));
    run = Companion({"convert", "--decrypt", "--key", "3", "--subdirs", root + "_enc"});
    QCOMPARE(run.exit_code, 0);
    QCOMPARE(Snapshot(root + "_enc_dec"), source);
    QCOMPARE(Snapshot(root), source);

    // A single file converts beside itself and stays.
    const QString header = root + "/secret/src/secret.h";
    QCOMPARE(Companion({"convert", "--encrypt", "--single-file", "--key", "1000", header}).exit_code, 0);
    QVERIFY(QFileInfo::exists(header) && QFileInfo::exists(header + ".enc"));
    QVERIFY(QFile::copy(header + ".enc", tmp.path() + "/x.h.enc"));
    QCOMPARE(Companion({"convert", "--decrypt", "--key", "1000", tmp.path() + "/x.h.enc"}).exit_code, 0);
    QCOMPARE(ReadBytes(tmp.path() + "/x.h"), ReadBytes(header));
    QVERIFY(QFileInfo::exists(tmp.path() + "/x.h.enc"));

    QVERIFY(WriteBytes(tmp.path() + "/out.c.enc", "x"));
    QVERIFY(QDir().mkpath(tmp.path() + "/out.c"));
    run = Companion({"convert", "--decrypt", tmp.path() + "/out.c.enc"});
    QCOMPARE(run.out, kFailed + "\n");
    QCOMPARE(run.exit_code, 1);
    for (const QStringList &bad : {QStringList{"convert", root}, {"convert", "--encrypt", "--decrypt", root},
                                   {"convert", "--encrypt", "--key", "k", root},
                                   {"convert", "--encrypt", tmp.path() + "/nowhere"}})
        QCOMPARE(Companion(bad).exit_code, 2);

    run = Companion({"pymodule", root + "/secret", tmp.path()});
    QCOMPARE(run.exit_code, 0);
    QVERIFY(run.out.startsWith(tmp.path() + "/secret") && run.out.endsWith(".py\n"));
    QVERIFY(ReadBytes(run.out.trimmed()).startsWith("\"\"\"! Python module for ZEMA block: secret"));
    QCOMPARE(Companion({"pymodule", root + "/secret", tmp.path() + "/nowhere"}).exit_code, 1);
    QCOMPARE(Companion({"pymodule", tmp.path() + "/nowhere", tmp.path()}).exit_code, 2);
}

// The code page's encoding: qCompress under a 16-byte table that cycles from the first byte.
void tst_CodeConversion::codePageEncoding()
{
    QTemporaryDir tmp;
    PageWindow w(tmp.path());
    BlockData *block = PageWindow::NewBlockRecord(QStringLiteral("enc"));
    QVERIFY(w.OpenBlock(block, tmp.path(), QStringLiteral("enc")));
    FreeBlockData(block);
    const QString src = tmp.path() + "/enc/src/";
    const QByteArray plain = QByteArray("void Run();\n").repeated(30);
    QVERIFY(WriteBytes(src + "a.cpp", plain));
    QVERIFY(WriteBytes(src + "empty.txt", QByteArray()));

    w.answers->texts.clear();
    const QString block_dir = w->code_page->block_dir;
    w->code_page->block_dir.clear();
    w.answers->choices = {{src + "a.cpp"}};
    w->code_page->ui->pb_encodefiles->click(); // a block never saved: nothing is asked
    QVERIFY(w.answers->texts.isEmpty());
    w->code_page->block_dir = block_dir;
    w.answers->choices = {{src + "a.cpp", src + "missing.cpp", src + "empty.txt"}};
    w->code_page->ui->pb_encodefiles->click();
    QCOMPARE(w.answers->texts,
             (QStringList{"Select Files To Encode (Please note that encrypted files cannot be decrypted back)",
                          "One or more file conversion failed."}));

    const QByteArray packed = qCompress(plain, -1);
    const QByteArray encoded = ReadBytes(src + "a.cpp.enc");
    QCOMPARE(encoded.size(), packed.size());
    QSet<quint8> deltas;
    for (int i = 0; i < encoded.size(); ++i) {
        const quint8 delta = quint8(encoded[i]) - quint8(packed[i]);
        if (i >= 16)
            QCOMPARE(delta, quint8(quint8(encoded[i - 16]) - quint8(packed[i - 16])));
        deltas.insert(delta);
    }
    QVERIFY(deltas.size() > 1);
    QCOMPARE(ReadBytes(src + "a.cpp"), plain);
    QVERIFY(QFileInfo::exists(src + "empty.txt.enc") && ReadBytes(src + "empty.txt.enc").isEmpty());
}

ZEMA_TEST(tst_CodeConversion)
#include "tst_CodeConversion.moc"
