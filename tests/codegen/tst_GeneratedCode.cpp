// Generated code is real code: the Python interface pair made from the reference files, and every
// file of the sane generator cases, go through the compilers they are meant for. The interface
// pair also runs against a small Python class.
#include "CodegenBlocks.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "codegen/PyInterfaceFiles.h"
#include "codegen/TemplateGenerator.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

struct ToolRun {
    bool ok = false;
    QString output;    // standard output and error together, for the failure message
};

ToolRun RunTool(const QString &program, const QStringList &args, const QString &cwd = QString())
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(cwd);
    process.start(program, args);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return {false, program + ": did not finish"};
    }
    return {process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            QString::fromLocal8Bit(process.readAll())};
}

// The words `python3-config` prints for `args`; empty when it is missing or fails.
QStringList PythonConfig(const QStringList &args)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("python3-config"));
    const ToolRun run = tool.isEmpty() ? ToolRun() : RunTool(tool, args);
    return run.ok ? run.output.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts)
                  : QStringList();
}

const QStringList &PythonIncludes()
{
    static const QStringList includes = PythonConfig({QStringLiteral("--includes")});
    return includes;
}

// Empty when everything is there; otherwise why the compile cannot run here.
QString MissingTools(const QStringList &tools)
{
    for (const QString &tool : tools) {
        if (tool == QLatin1String("python3-config") ? PythonIncludes().isEmpty()
                                                    : QStandardPaths::findExecutable(tool).isEmpty())
            return tool + " not found: scripts/deps installs it";
    }
    return {};
}

// The compiler of `file` and its arguments for a syntax check; `flags` go to g++ only.
QStringList CompileCommand(const QString &file, const QStringList &flags)
{
    if (file.endsWith(QLatin1String(".f90")))
        return {"gfortran", "-fsyntax-only", file};
    if (file.endsWith(QLatin1String(".py")))
        return {"python3", "-m", "py_compile", file};
    return QStringList{"g++", "-std=c++17", "-fsyntax-only", "-Wall"} + flags + QStringList{"-x", "c++", file};
}

ToolRun Compile(const QString &file, const QStringList &flags)
{
    QStringList command = CompileCommand(file, flags);
    const QString tool = QStandardPaths::findExecutable(command.takeFirst());
    return RunTool(tool, command, QFileInfo(file).absolutePath());
}

// A reference pair of our own, so that the text of each replacement can be checked exactly.
const QByteArray kMiniHeader = "#ifndef PY_INTERFACE_TEMPLATE_H\nclass PyIntf; // py_interface_template.h \xe9\n"
                               "#define PYINTF_NPORTS 1\nPYINTF_NPORTS\n#define PYINTF_NPARA 1\nPYINTF_NPARA\n";
const QByteArray kMiniSource = "#include \"py_interface_template.h\"\nPyIntf::f(){ g(a, m_port_objs[-1], 0); "
                               "h(b, m_para_objs[-1], 0); } PYINTF_NPORTS PYINTF_NPARA \xe9\n";

} // namespace

class tst_GeneratedCode : public QObject
{
    Q_OBJECT
    // One file of a generator case and what its compiler needs besides the file.
    struct GeneratedFile {
        QString row;
        QString path;
        QStringList flags;
        QString failure;   // the generator's message when the case could not be generated
    };
    QTemporaryDir m_dir;
    QList<GeneratedFile> m_files;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QList<CodegenCase> cases = CodegenCases();
        for (const CodegenCase &c : cases) {
            if (!c.sane)
                continue;
            const QString block_dir = m_dir.path() + "/cases/" + c.name;
            QDir().mkpath(block_dir + "/src");
            const TemplateOutcome outcome = GenerateTemplateCode(
                TemplateInputsOf(c.block), block_dir, QStringLiteral(ZEMA_APP_DIR),
                [](const QString &) { return true; });
            if (!outcome.message.isEmpty() || outcome.written.isEmpty()) {
                m_files.append({c.name, {}, {}, outcome.message.isEmpty() ? "nothing written" : outcome.message});
                continue;
            }
            QStringList flags{"-I" ZEMA_FIXTURES "/runtime", "-I" + block_dir + "/src"};
            // The block's build defines where its Python module lives; any text will do for a compile.
            if (!outcome.written.filter(QRegularExpression("\\.py$")).isEmpty())
                flags += PythonIncludes() + QStringList{QStringLiteral("-D_%1%2_SrcPath=\"%3\"")
                    .arg(BlockNameOf(c.block)).arg(BlockIdOf(c.block)).arg(block_dir + "/src")};
            for (const QString &path : outcome.written) {
                const QString name = QFileInfo(path).fileName();
                m_files.append({c.name + "/" + name, path, flags, {}});
                // The run pointer is declared only for builds on an operating system.
                if (CompileCommand(path, {}).first() == "g++" && !name.startsWith(QLatin1String("PyIntf")))
                    m_files.append({c.name + "/" + name + " OS", path, flags + QStringList{"-D_BUILD_ARCH_OS"}, {}});
            }
        }
        FreeCodegenCases(cases);
        // An empty list of cases would pass every compile by running none.
        if (m_files.isEmpty())
            m_files.append({QStringLiteral("no cases"), {}, {}, QStringLiteral("no sane generator cases")});
    }

    void substitution_data()
    {
        QTest::addColumn<int>("nports");
        QTest::addColumn<int>("nparams");
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QByteArray>("source");
        QTest::newRow("no ports, no parameters") << 0 << 0
            << QByteArray("#ifndef PY_INTF_BLK7_H\nclass PyIntfBlk7; // py_interface_template.h \xe9\n"
                          "#define PYINTF_BLK7_NPORTS 0\nPYINTF_BLK7_NPORTS\n"
                          "#define PYINTF_BLK7_NPARA 0\nPYINTF_BLK7_NPARA\n")
            << QByteArray("#include \"PyIntfBlk7.h\"\nPyIntfBlk7::f(){ g(a, 0); h(b, 0); } "
                          "PYINTF_BLK7_NPORTS PYINTF_BLK7_NPARA \xe9\n");
        QTest::newRow("two ports, one parameter") << 2 << 1
            << QByteArray("#ifndef PY_INTF_BLK7_H\nclass PyIntfBlk7; // py_interface_template.h \xe9\n"
                          "#define PYINTF_BLK7_NPORTS 2\nPYINTF_BLK7_NPORTS\n"
                          "#define PYINTF_BLK7_NPARA 1\nPYINTF_BLK7_NPARA\n")
            << QByteArray("#include \"PyIntfBlk7.h\"\nPyIntfBlk7::f(){ g(a, m_port_objs[0], m_port_objs[1], 0); "
                          "h(b, m_para_objs[0], 0); } PYINTF_BLK7_NPORTS PYINTF_BLK7_NPARA \xe9\n");
    }

    void substitution()
    {
        QFETCH(int, nports);
        QFETCH(int, nparams);
        QTemporaryDir root;
        QVERIFY(WriteBytes(root.path() + "/source/src_py/py_interface_template.h", kMiniHeader));
        QVERIFY(WriteBytes(root.path() + "/source/src_py/py_interface_template.cpp", kMiniSource));
        const QString src = root.path() + "/blk/src/";
        QVERIFY(QDir().mkpath(src));
        QStringList written;
        QCOMPARE(WritePyInterfaceFiles(root.path(), src, "Blk7", "PyIntfBlk7", nports, nparams, &written), QString());
        QCOMPARE(written, QStringList({src + "PyIntfBlk7.h", src + "PyIntfBlk7.cpp"}));
        QTEST(ReadBytes(src + "PyIntfBlk7.h"), "header");
        QTEST(ReadBytes(src + "PyIntfBlk7.cpp"), "source");
    }

    void interfaceFailures_data()
    {
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("blocker");     // a directory standing where a file is to go
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("nwritten");
        QTest::newRow("empty reference header") << QByteArray() << kMiniSource << ""
            << "Cannot create python interface header file. Failed to read reference file data." << 0;
        QTest::newRow("empty reference source") << kMiniHeader << QByteArray() << ""
            << "Cannot create python interface cpp file. Failed to read reference file data." << 1;
        QTest::newRow("header not writable") << kMiniHeader << kMiniSource << "PyIntfBlk7.h"
            << "Cannot create python interface header file. Failed to write file data." << 0;
        QTest::newRow("source not writable") << kMiniHeader << kMiniSource << "PyIntfBlk7.cpp"
            << "Cannot create python interface cpp file. Failed to write file data." << 1;
    }

    void interfaceFailures()
    {
        QFETCH(QByteArray, header);
        QFETCH(QByteArray, source);
        QFETCH(QString, blocker);
        QFETCH(int, nwritten);
        QTemporaryDir root;
        const QString ref = root.path() + "/source/src_py/py_interface_template";
        QVERIFY(WriteBytes(ref + ".h", header) && WriteBytes(ref + ".cpp", source));
        const QString src = root.path() + "/src";
        QVERIFY(QDir().mkpath(src + "/" + blocker));
        QStringList written;
        QTEST(WritePyInterfaceFiles(root.path(), src, "Blk7", "PyIntfBlk7", 1, 1, &written), "message");
        QCOMPARE(written.size(), nwritten);
        // A failed header step leaves no interface source behind.
        if (nwritten == 0)
            QVERIFY(!QFileInfo(src + "/PyIntfBlk7.cpp").isFile());
    }

    void interfacePairCompiles_data()
    {
        QTest::addColumn<int>("count");   // ports and parameters alike; -1 for the reference pair itself
        QTest::newRow("reference pair") << -1;
        QTest::newRow("no ports, no parameters") << 0;
        QTest::newRow("three ports, three parameters") << 3;
    }

    void interfacePairCompiles()
    {
        QFETCH(int, count);
        const QString missing = MissingTools({"g++", "python3-config"});
        if (!missing.isEmpty())
            QSKIP(qPrintable(missing));
        QTemporaryDir dir;
        QString base = ZEMA_APP_DIR "/source/src_py/py_interface_template";
        if (count >= 0) {
            QCOMPARE(WritePyInterfaceFiles(ZEMA_APP_DIR, dir.path(), "Blk7", "PyIntfBlk7", count, count, nullptr),
                     QString());
            base = dir.path() + "/PyIntfBlk7";
            QVERIFY(!ReadBytes(base + ".cpp").contains("[-1]"));
        }
        for (const char *suffix : {".h", ".cpp"}) {
            const ToolRun run = Compile(base + suffix, PythonIncludes());
            QVERIFY2(run.ok, qPrintable(base + suffix + "\n" + run.output));
        }
    }

    // The pair, built and linked, moves numbers and texts both ways and reports a missing module.
    void interfaceRuns()
    {
        const QString missing = MissingTools({"g++", "python3-config"});
        if (!missing.isEmpty())
            QSKIP(qPrintable(missing));
        const QStringList link = PythonConfig({"--embed", "--ldflags"});
        if (link.isEmpty())
            QSKIP("python3-config gives no flags to embed the interpreter");
        QTemporaryDir dir;
        QCOMPARE(WritePyInterfaceFiles(ZEMA_APP_DIR, dir.path(), "Echo5", "PyIntfEcho5", 2, 2, nullptr), QString());
        QVERIFY(WriteBytes(dir.path() + "/Echo5.py",
            "class PyEcho5:\n"
            "    def method_init_ports(self, a, b):\n        self.a = a\n        self.b = b\n"
            "    def method_init_para(self, gain, name):\n        self.gain = gain\n        self.name = name\n"
            "    def method_prerun(self):\n        self.n = 0\n"
            "    def method_run(self):\n        self.n += 1\n"
            "        for i in range(len(self.a)):\n            self.b[i] = self.a[i] * self.gain[0] + self.n\n"
            "    def method_postrun(self):\n        self.gain[0] = self.n\n"
            "        self.name[0] = self.name[0].upper() + '!'\n"));
        QVERIFY(WriteBytes(dir.path() + "/main.cpp",
            "#include \"PyIntfEcho5.h\"\n#include <cstdint>\n#include <cstdio>\n"
            "int main(int, char **argv) {\n"
            "    double in[2] = {1.5, -2}; double out[2] = {0, 0}; int32_t gain = 3; char name[8] = \"abcdefg\";\n"
            "    PyIntfEcho5 intf(argv[1], \"Echo5\", \"PyEcho5\");\n"
            "    intf.SetPortObject(in, 1, 2, 2, 0);\n    intf.SetPortObject(out, 1, 2, 4, 1);\n"
            "    intf.SetParaObject(&gain, 1, 1, 7, 0);\n    intf.SetParaObject(name, 1, 8, 1, 1);\n"
            "    intf.SetMethods();\n    intf.InitPortAttributes();\n    intf.InitParaAttributes();\n"
            "    intf.Prerun();\n    intf.Run();\n    intf.Run();\n    intf.Postrun();\n"
            "    PyIntfEcho5 lost(argv[1], \"NoSuchModule\", \"PyEcho5\");\n"
            "    printf(\"%d %g %g %d %s %d\\n\", intf.GetStatus() == PY_INTF_VALID, out[0], out[1], (int)gain, name,\n"
            "           lost.GetStatus() == PY_INTF_NO_MODULE);\n}\n"));
        const QString program = dir.path() + "/echo";
        const ToolRun build = RunTool(QStandardPaths::findExecutable("g++"),
                                      QStringList{"-std=c++17", "-I" + dir.path()} + PythonIncludes()
                                          + QStringList{dir.path() + "/main.cpp", dir.path() + "/PyIntfEcho5.cpp",
                                                        "-o", program} + link);
        QVERIFY2(build.ok, qPrintable(build.output));
        QProcess run;
        run.start(program, {dir.path()});
        QVERIFY(run.waitForFinished(20000));
        const QString output = QString::fromLocal8Bit(run.readAllStandardOutput());
        QVERIFY2(run.exitCode() == 0, qPrintable(output + run.readAllStandardError()));
        // Two runs of b = a * 3 + n; the name is cut to fit its 8 bytes with the zero.
        QCOMPARE(output, QString("1 6.5 -4 2 ABCDEFG 1\n"));
    }

    void generatedFilesCompile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("flags");
        QTest::addColumn<QString>("failure");
        for (const GeneratedFile &file : m_files)
            QTest::newRow(qPrintable(file.row)) << file.path << file.flags << file.failure;
    }

    void generatedFilesCompile()
    {
        QFETCH(QString, path);
        QFETCH(QString, failure);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
        QStringList needed{CompileCommand(path, {}).first()};
        // Only the interface source includes Python.h; the block's own files see just the class.
        if (QFileInfo(path).fileName().startsWith(QLatin1String("PyIntf")) && path.endsWith(QLatin1String(".cpp")))
            needed += QStringLiteral("python3-config");
        const QString missing = MissingTools(needed);
        if (!missing.isEmpty())
            QSKIP(qPrintable(missing));
        QFETCH(QStringList, flags);
        const ToolRun run = Compile(path, flags);
        QVERIFY2(run.ok, qPrintable(path + "\n" + run.output + "\n" + ReadBytes(path)));
    }
};

ZEMA_TEST(tst_GeneratedCode)
#include "tst_GeneratedCode.moc"
