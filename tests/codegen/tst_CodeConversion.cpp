// Conversion of code files to ".enc" and back: the suffix rule, round trips with every kind of key,
// whole trees through the main window and the companion, and the code page's one-way encoding.
#include "CompanionRun.h"
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "ui_CodeConfigDlg.h"
#include "ui_EncryptFilesDlg.h"

#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/EncodeBuffer.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "codegen/CodeFileConversion.h"
#include "codegen/EncryptFilesDlg.h"
#include "pages/CodeConfigDlg.h"
#include "params/BlkParaData.h"

#include <QDirIterator>

namespace {

const QString kCompleted = QStringLiteral("Encrypt/Decrypt Completed");

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

// "<root>/readme.txt" and two saved blocks, "secret" that prefers encryption and "open" that does
// not, each with its header, a source, a nested source and a text file in src.
bool WriteTree(const QString &root)
{
    bool ok = WriteBytes(root + "/readme.txt", "blocks of the library\n");
    for (const QString name : {"secret", "open"}) {
        BlockData *block = PageWindow::NewBlockRecord(name);
        block->path = root + "/" + name;
        ParaEntity *prefer = FindEntity(block->config, "Vendor Specific", "Prefer Encrypting Code Files");
        prefer->sel_idx = name == "secret" ? 1 : 0;
        prefer->sel_val = name == "secret" ? "Yes" : "No";
        const QString src = block->path + "/src/";
        ok = ok && WriteBytes(src + name + ".h", "#pragma once\n") &&
             WriteBytes(src + name + ".cpp", "#include \"" + name.toUtf8() + ".h\"\n") &&
             WriteBytes(src + "kernels/step.c", QByteArray("int step(void) { return 1; }\n").repeated(50)) &&
             WriteBytes(src + "notes.txt", "plain notes\n") && SaveBlockData(block, nullptr, "ZEMA", true);
        FreeBlockData(block);
    }
    return ok;
}

// Runs File > Encrypt/Decrypt on `path`, chosen through the dialog's browse button.
void ConvertInWindow(PageWindow &w, const QString &path, bool decrypt, bool subdirs)
{
    w.answers->exec_script = [&](QDialog *dialog) {
        auto *encrypt = static_cast<EncryptFilesDlg *>(dialog);
        w.answers->choices.append({path});
        encrypt->ui->pb_brw_file_enc->click();
        encrypt->ui->eb_key->setText("2");
        encrypt->ui->chk_decrypt->setChecked(decrypt);
        encrypt->ui->chk_subdirs->setChecked(subdirs);
        encrypt->ui->pb_start->click();
        return encrypt->result();
    };
    w->EncryptCodeFilesAct();
}

} // namespace

class tst_CodeConversion : public QObject
{
    Q_OBJECT
private slots:
    void suffixRule_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("options"); // d decrypt, f fortran, p python, a all types, s single file
        QTest::addColumn<bool>("taken");
        QTest::newRow("c family") << "x.cl" << "" << true;
        QTest::newRow("header .h is not code") << "x.h" << "" << false;
        QTest::newRow("last suffix only") << "x.c.bak" << "" << false;
        QTest::newRow("fortran off") << "x.f90" << "p" << false;
        QTest::newRow("fortran F90 lower-cased") << "x.F90" << "f" << true;
        QTest::newRow("fortran f1x") << "x.f1x" << "f" << true;
        QTest::newRow("fortran for") << "x.for" << "f" << false;
        QTest::newRow("python off") << "x.py" << "f" << false;
        QTest::newRow("python pyc") << "x.pyc" << "p" << true;
        QTest::newRow("all types") << "x.txt" << "a" << true;
        QTest::newRow("single file") << "x.txt" << "s" << true;
        QTest::newRow("no suffix, dot in directory") << "v1.2/Makefile" << "as" << false;
        QTest::newRow("decrypt ENC") << "x.c.ENC" << "d" << true;
        QTest::newRow("decrypt takes only enc") << "x.c" << "das" << false;
    }

    void suffixRule()
    {
        QFETCH(QString, file);
        QFETCH(QString, options);
        ConversionSettings settings;
        settings.decrypt = options.contains('d');
        settings.fortran = options.contains('f');
        settings.python = options.contains('p');
        settings.all_types = options.contains('a');
        settings.single_file = options.contains('s');
        QTEST(TakesFile(file, settings), "taken");
    }

    void roundTrip_data()
    {
        QTest::addColumn<qint32>("key");
        QTest::newRow("key 0") << 0;
        // Each of the three keys has a table of its own.
        QTest::newRow("key 1") << 1;
        QTest::newRow("key 2") << 2;
        QTest::newRow("key 3") << 3;
        QTest::newRow("other key") << 1000;
        QTest::newRow("negative key") << -77;
    }

    // Files go to ".enc" in the container's format, their inputs removed, and come back unchanged.
    void roundTrip()
    {
        QFETCH(qint32, key);
        QTemporaryDir dir;
        QMap<QString, QByteArray> plain{{"empty.c", QByteArray()}};
        const QByteArray code = QByteArray("double y = 0.5 * x;\n\x01\xfe", 22).repeated(40);
        for (const char *name : {"a.c", "f.F90", "i.py", "notes.txt", "Makefile"})
            plain.insert(QString::fromLatin1(name), name + code);
        for (auto it = plain.cbegin(); it != plain.cend(); ++it)
            QVERIFY(WriteBytes(dir.filePath(it.key()), it.value()));

        ConversionSettings settings;
        settings.key = key;
        settings.all_types = true;
        QVERIFY(ConvertFileList(FilesIn(dir.path(), false), settings, true));
        QCOMPARE(Snapshot(dir.path()).keys(), (QStringList{"Makefile", "a.c.enc", "empty.c.enc", "f.F90.enc",
                                                           "i.py.enc", "notes.txt.enc"}));
        QByteArray expected = plain["i.py"];
        EncodeBuffer(expected, true, key);
        QCOMPARE(ReadBytes(dir.filePath("i.py.enc")), expected);
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

    void failuresDoNotStopTheRun()
    {
        QTemporaryDir dir;
        for (const char *name : {"first.c", "blocked.c", "last.c"})
            QVERIFY(WriteBytes(dir.filePath(name), "int a;\n"));
        QVERIFY(QDir().mkpath(dir.filePath("blocked.c.enc"))); // the output cannot be opened
        QVERIFY(!ConvertFileList({dir.filePath("first.c"), dir.filePath("missing.c"), dir.filePath("blocked.c"),
                                  dir.filePath("last.c")}, ConversionSettings(), true));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), (QStringList{"blocked.c", "first.c.enc", "last.c.enc"}));
    }

    void treeThroughTheWindow_data()
    {
        QTest::addColumn<bool>("subdirs");
        QTest::addColumn<bool>("stale_target");
        QTest::newRow("with sub-directories") << true << false;
        QTest::newRow("src level only") << false << false;
        QTest::newRow("merged into an existing target") << true << true;
    }

    // Encrypting a tree converts the sources of the block that prefers it in a copy; decrypting that
    // copy gives the tree back.
    void treeThroughTheWindow()
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
        ConvertInWindow(w, root, false, subdirs);
        QCOMPARE(w.answers->texts.mid(0, 3),
                 (QStringList{"Encrypt/Decrypt Code Files",
                              "Files that can be converted: c, cpp, cc, cl, hpp, f, f9x, f0x, f1x, py", "Select Folder"}));
        QCOMPARE(w.answers->texts.last(),
                 stale_target ? "Number of files in source and destination directories are unequal" : kCompleted);
        QCOMPARE(w->last_dir, tmp.path());
        QVERIFY(!w->block_open && !w->batch_mode);
        QCOMPARE(Snapshot(root), source);

        const QMap<QString, QByteArray> target = Snapshot(root + "_enc");
        const QString step = subdirs ? "secret/src/kernels/step.c.enc" : "secret/src/kernels/step.c";
        // Only the block's code files are converted; its header, text and the other block stay plain.
        for (const QString &file : QStringList{"secret/src/secret.cpp.enc", step, "secret/src/secret.h",
                                                "secret/src/notes.txt", "open/src/open.cpp", "readme.txt"})
            QVERIFY2(target.contains(file), qPrintable(file));
        QCOMPARE(target.size(), source.size() + (stale_target ? 1 : 0));

        // The copy is decrypted whole, or what sits below src would stay encrypted.
        ConvertInWindow(w, root + "_enc", true, true);
        QCOMPARE(w.answers->texts.last(), kCompleted);
        QMap<QString, QByteArray> back = Snapshot(root + "_enc_dec");
        back.remove("left_over.txt");
        QCOMPARE(back, source);
    }

    void refusals()
    {
        QTemporaryDir tmp;
        const QString root = tmp.path() + "/lib";
        QVERIFY(WriteTree(root));
        QVERIFY(WriteBytes(root + "/broken/broken.bdef", "not a block definition"));
        PageWindow w(tmp.path());
        w.NewBlock();
        QVERIFY(w->block_open);
        w.answers->texts.clear();
        ConvertInWindow(w, root, false, true);
        QCOMPARE(w.answers->texts, QStringList{"Close present project before proceeding"});
        w->CloseAct(true, false);

        ConvertInWindow(w, root, false, true);
        QCOMPARE(w.answers->texts.last(),
                 QString("Failed to open some block definition files. Aborting encrypt/decrypt files"));
        QVERIFY(!w->block_open && !w->batch_mode);
        // The run stops before converting anything in its copy.
        QVERIFY(QFileInfo::exists(root + "_enc/secret/src/secret.cpp"));
    }

    // The companion's options reach the same conversion: direction, key, sub-directories, single file.
    void companion()
    {
        QTemporaryDir tmp;
        const QString root = tmp.path() + "/lib";
        QVERIFY(WriteTree(root));
        const QMap<QString, QByteArray> source = Snapshot(root);
        CompanionRun run = RunCompanion({"convert", "--encrypt", "--key", "3", "--subdirs", root});
        QCOMPARE(run.out, kCompleted.toUtf8() + "\n");
        QCOMPARE(run.exit_code, 0);
        const QString step = root + "_enc/secret/src/kernels/step.c";
        QByteArray expected = source["secret/src/kernels/step.c"];
        EncodeBuffer(expected, true, 3);
        QCOMPARE(ReadBytes(step + ".enc"), expected);
        QCOMPARE(Snapshot(root), source);
        // A file converts beside itself and stays; with --single-file any suffix is taken.
        QCOMPARE(RunCompanion({"convert", "--decrypt", "--key", "3", step + ".enc"}).exit_code, 0);
        QCOMPARE(ReadBytes(step), source["secret/src/kernels/step.c"]);
        QVERIFY(QFileInfo::exists(step + ".enc"));
        const QString header = root + "/secret/src/secret.h";
        QCOMPARE(RunCompanion({"convert", "--encrypt", "--single-file", header}).exit_code, 0);
        QVERIFY(QFileInfo::exists(header) && QFileInfo::exists(header + ".enc"));

        QVERIFY(WriteBytes(tmp.path() + "/out.c.enc", "x") && QDir().mkpath(tmp.path() + "/out.c"));
        run = RunCompanion({"convert", "--decrypt", tmp.path() + "/out.c.enc"});
        QCOMPARE(run.out, QByteArray("Encrypt/Decrypt Failed\n"));
        QCOMPARE(run.exit_code, 1);
        for (const QStringList &bad : {QStringList{"convert", root}, {"convert", "--encrypt", "--decrypt", root},
                                       {"convert", "--encrypt", tmp.path() + "/nowhere"}})
            QCOMPARE(RunCompanion(bad).exit_code, 2);

        const QString module = QString::fromUtf8(RunCompanion({"pymodule", root + "/secret", tmp.path()}).out.trimmed());
        QVERIFY(ReadBytes(module).startsWith("\"\"\"! Python module for ZEMA block: secret"));
        QCOMPARE(RunCompanion({"pymodule", root + "/secret", tmp.path() + "/nowhere"}).exit_code, 1);
        QCOMPARE(RunCompanion({"pymodule", tmp.path() + "/nowhere", tmp.path()}).exit_code, 2);
    }

    // The code page's encoding: qCompress under a 16-byte table that cycles from the first byte; the
    // sources stay.
    void codePageEncoding()
    {
        QTemporaryDir tmp;
        PageWindow w(tmp.path());
        BlockData *block = PageWindow::NewBlockRecord(QStringLiteral("enc"));
        QVERIFY(w.OpenBlock(block, tmp.path(), QStringLiteral("enc")));
        FreeBlockData(block);
        const QString src = tmp.path() + "/enc/src/";
        const QByteArray plain = QByteArray("void Run();\n").repeated(30);
        QVERIFY(WriteBytes(src + "a.cpp", plain) && WriteBytes(src + "empty.txt", QByteArray()));
        w.answers->texts.clear();
        w.answers->choices = {{src + "a.cpp", src + "missing.cpp", src + "empty.txt"}};
        w->code_page->ui->pb_encodefiles->click();
        QCOMPARE(w.answers->texts,
                 (QStringList{"Select Files To Encode (Please note that encrypted files cannot be decrypted back)",
                              "One or more file conversion failed."}));

        const QByteArray packed = qCompress(plain, -1);
        const QByteArray encoded = ReadBytes(src + "a.cpp.enc");
        QCOMPARE(encoded.size(), packed.size());
        QVERIFY(encoded != packed);
        for (int i = 16; i < encoded.size(); ++i)
            QCOMPARE(quint8(encoded[i] - packed[i]), quint8(encoded[i - 16] - packed[i - 16]));
        QCOMPARE(ReadBytes(src + "a.cpp"), plain);
        QVERIFY(QFileInfo::exists(src + "empty.txt.enc") && ReadBytes(src + "empty.txt.enc").isEmpty());
    }
};

ZEMA_TEST(tst_CodeConversion)
#include "tst_CodeConversion.moc"
