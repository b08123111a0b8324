// Generated code is real code: the Python interface pair made from the reference files, and every
// file of the sane generator cases, go through the compilers they are meant for. The interface
// pair also runs, against a small Python class and inside the root case's generated block.
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

#include <algorithm>

namespace {

const QString kRuntime = QStringLiteral(ZEMA_FIXTURES "/runtime");
const QString kReferenceDir = QStringLiteral(ZEMA_APP_DIR "/source/src_py");

struct ToolRun {
    bool ok = false;
    QString output;    // standard output and error together, for the failure message
};

ToolRun RunTool(const QString &program, const QStringList &args, const QString &cwd = QString())
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    if (!cwd.isEmpty())
        process.setWorkingDirectory(cwd);
    process.start(program, args);
    ToolRun run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        run.output = program + ": did not finish";
        return run;
    }
    run.output = QString::fromLocal8Bit(process.readAll());
    run.ok = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return run;
}

// The words `python3-config` prints for `args`; empty when it is missing or fails.
QStringList PythonConfig(const QStringList &args)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("python3-config"));
    if (tool.isEmpty())
        return {};
    const ToolRun run = RunTool(tool, args);
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

QString ToolOf(const QString &file)
{
    if (file.endsWith(QLatin1String(".f90")))
        return QStringLiteral("gfortran");
    if (file.endsWith(QLatin1String(".py")))
        return QStringLiteral("python3");
    return QStringLiteral("g++");
}

ToolRun Compile(const QString &file, const QStringList &flags)
{
    const QString tool = ToolOf(file);
    const QString dir = QFileInfo(file).absolutePath();
    if (tool == QLatin1String("python3"))
        return RunTool(QStandardPaths::findExecutable(tool),
                       {QStringLiteral("-m"), QStringLiteral("py_compile"), file}, dir);
    if (tool == QLatin1String("gfortran"))
        return RunTool(QStandardPaths::findExecutable(tool), {QStringLiteral("-fsyntax-only"), file}, dir);
    return RunTool(QStandardPaths::findExecutable(tool),
                   QStringList{QStringLiteral("-std=c++17"), QStringLiteral("-fsyntax-only"),
                               QStringLiteral("-Wall")}
                       + flags + QStringList{QStringLiteral("-x"), QStringLiteral("c++"), file},
                   dir);
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
private slots:
    void initTestCase();
    void substitution_data();
    void substitution();
    void interfaceFailures_data();
    void interfaceFailures();
    void interfacePairCompiles_data();
    void interfacePairCompiles();
    void interfaceRuns();
    void generatedFilesCompile_data();
    void generatedFilesCompile();
    void generatedBlockRuns();

private:
    // One file of a generator case and what its compiler needs besides the file.
    struct GeneratedFile {
        QString row;
        QString path;
        QStringList flags;
        QString failure;   // the generator's message when the case could not be generated
    };
    QTemporaryDir m_dir;
    QList<GeneratedFile> m_files;
    QMap<QString, QStringList> m_python_flags;   // by case name: the flags of its C++ files
};

void tst_GeneratedCode::initTestCase()
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
            const QString failure = outcome.message.isEmpty() ? "nothing written" : outcome.message;
            m_files.append({c.name, QString(), {}, failure});
            continue;
        }
        QStringList flags{"-I" + kRuntime, "-I" + block_dir + "/src"};
        const bool python = std::any_of(outcome.written.begin(), outcome.written.end(),
                                        [](const QString &f) { return f.endsWith(QLatin1String(".py")); });
        if (python) {
            flags += PythonIncludes();
            // The block's build defines where its module lives; any text will do for a compile.
            flags += QStringLiteral("-D_%1%2_SrcPath=\"%3\"")
                         .arg(BlockNameOf(c.block)).arg(BlockIdOf(c.block)).arg(block_dir + "/src");
            m_python_flags.insert(c.name, flags);
        }
        for (const QString &path : outcome.written) {
            const QString name = c.name + "/" + QFileInfo(path).fileName();
            const bool block_file = ToolOf(path) == QLatin1String("g++")
                && !QFileInfo(path).fileName().startsWith(QLatin1String("PyIntf"));
            m_files.append({name, path, flags, {}});
            // The run pointer is declared only for builds on an operating system.
            if (block_file)
                m_files.append({name + " OS", path, flags + QStringList{"-D_BUILD_ARCH_OS"}, {}});
        }
    }
    FreeCodegenCases(cases);
    // An empty list of cases would pass every compile by running none.
    if (m_files.isEmpty())
        m_files.append({QStringLiteral("no cases"), QString(), {}, QStringLiteral("no sane generator cases")});
}

void tst_GeneratedCode::substitution_data()
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

void tst_GeneratedCode::substitution()
{
    QFETCH(int, nports);
    QFETCH(int, nparams);
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, source);
    QTemporaryDir root;
    QVERIFY(WriteBytes(root.path() + "/source/src_py/py_interface_template.h", kMiniHeader));
    QVERIFY(WriteBytes(root.path() + "/source/src_py/py_interface_template.cpp", kMiniSource));
    const QString src = root.path() + "/blk/src/";
    QVERIFY(QDir().mkpath(src));
    QStringList written;
    QCOMPARE(WritePyInterfaceFiles(root.path(), src, "Blk7", "PyIntfBlk7", nports, nparams, &written), QString());
    QCOMPARE(written, QStringList({src + "PyIntfBlk7.h", src + "PyIntfBlk7.cpp"}));
    QCOMPARE(ReadBytes(src + "PyIntfBlk7.h"), header);
    QCOMPARE(ReadBytes(src + "PyIntfBlk7.cpp"), source);
}

void tst_GeneratedCode::interfaceFailures_data()
{
    QTest::addColumn<QByteArray>("header");   // "-" for no file
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("blocker");     // a directory standing where a file is to go
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("nwritten");
    const QString header_read = "Cannot create python interface header file. Failed to read reference file data.";
    QTest::newRow("no reference header") << QByteArray("-") << kMiniSource << "" << header_read << 0;
    QTest::newRow("empty reference header") << QByteArray() << kMiniSource << "" << header_read << 0;
    QTest::newRow("empty reference source") << kMiniHeader << QByteArray() << ""
        << "Cannot create python interface cpp file. Failed to read reference file data." << 1;
    QTest::newRow("header not writable") << kMiniHeader << kMiniSource << "PyIntfBlk7.h"
        << "Cannot create python interface header file. Failed to write file data." << 0;
    QTest::newRow("source not writable") << kMiniHeader << kMiniSource << "PyIntfBlk7.cpp"
        << "Cannot create python interface cpp file. Failed to write file data." << 1;
}

void tst_GeneratedCode::interfaceFailures()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, source);
    QFETCH(QString, blocker);
    QFETCH(QString, message);
    QFETCH(int, nwritten);
    QTemporaryDir root;
    const QString ref = root.path() + "/source/src_py/py_interface_template";
    QVERIFY(QDir().mkpath(root.path() + "/source/src_py"));
    if (header != "-")
        QVERIFY(WriteBytes(ref + ".h", header));
    QVERIFY(WriteBytes(ref + ".cpp", source));
    const QString src = root.path() + "/src";
    QVERIFY(QDir().mkpath(src));
    if (!blocker.isEmpty())
        QVERIFY(QDir().mkpath(src + "/" + blocker));
    QStringList written;
    QCOMPARE(WritePyInterfaceFiles(root.path(), src, "Blk7", "PyIntfBlk7", 1, 1, &written), message);
    QCOMPARE(written.size(), nwritten);
    // A failed header step leaves no interface source behind.
    if (nwritten == 0)
        QVERIFY(!QFileInfo(src + "/PyIntfBlk7.cpp").isFile());
}

void tst_GeneratedCode::interfacePairCompiles_data()
{
    QTest::addColumn<int>("count");   // ports and parameters alike; -1 for the reference pair itself
    QTest::newRow("reference pair") << -1;
    QTest::newRow("no ports, no parameters") << 0;
    QTest::newRow("one port, one parameter") << 1;
    QTest::newRow("three ports, three parameters") << 3;
}

void tst_GeneratedCode::interfacePairCompiles()
{
    QFETCH(int, count);
    const QString missing = MissingTools({"g++", "python3-config"});
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing));
    QTemporaryDir dir;
    QString base = kReferenceDir + "/py_interface_template";
    if (count >= 0) {
        QStringList written;
        QCOMPARE(WritePyInterfaceFiles(ZEMA_APP_DIR, dir.path(), "Blk7", "PyIntfBlk7", count, count,
                                       &written), QString());
        base = dir.path() + "/PyIntfBlk7";
        const QByteArray text = ReadBytes(base + ".cpp");
        QVERIFY(!text.contains("[-1]"));
        const QByteArray last_arg = "m_port_objs[" + QByteArray::number(qMax(count - 1, 0)) + "], nullptr";
        QCOMPARE(text.count(last_arg), count > 0 ? 1 : 0);
        QVERIFY(ReadBytes(base + ".h").contains("#define PYINTF_BLK7_NPORTS " + QByteArray::number(count) + "\n"));
    }
    for (const char *suffix : {".h", ".cpp"}) {
        const ToolRun run = Compile(base + suffix, PythonIncludes());
        QVERIFY2(run.ok, qPrintable(base + suffix + "\n" + run.output));
    }
}

// The pair, built and linked, moves numbers and texts both ways and reports a missing module.
void tst_GeneratedCode::interfaceRuns()
{
    const QString missing = MissingTools({"g++", "python3-config"});
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing));
    const QStringList link = PythonConfig({"--embed", "--ldflags"});
    if (link.isEmpty())
        QSKIP("python3-config gives no flags to embed the interpreter");
    QTemporaryDir dir;
    QStringList written;
    QCOMPARE(WritePyInterfaceFiles(ZEMA_APP_DIR, dir.path(), "Echo5", "PyIntfEcho5", 2, 2, &written), QString());
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
        "    printf(\"%d %g %g %d %s %d\\n\", intf.GetStatus() == PY_INTF_VALID, out[0], out[1],\n"
        "           (int)gain, name,\n"
        "           lost.GetStatus() == PY_INTF_NO_MODULE);\n}\n"));
    const QString program = dir.path() + "/echo";
    const ToolRun build = RunTool(QStandardPaths::findExecutable("g++"),
                                  QStringList{"-std=c++17", "-I" + dir.path()} + PythonIncludes()
                                      + QStringList{dir.path() + "/main.cpp", dir.path() + "/PyIntfEcho5.cpp",
                                                    "-o", program}
                                      + link);
    QVERIFY2(build.ok, qPrintable(build.output));
    QProcess run;
    run.start(program, {dir.path()});
    QVERIFY(run.waitForFinished(20000));
    const QString output = QString::fromLocal8Bit(run.readAllStandardOutput());
    QVERIFY2(run.exitCode() == 0, qPrintable(output + run.readAllStandardError()));
    // Two runs of b = a * 3 + n; the name is cut to fit its 8 bytes with the zero.
    QCOMPARE(output, QString("1 6.5 -4 2 ABCDEFG 1\n"));
}

void tst_GeneratedCode::generatedFilesCompile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("flags");
    QTest::addColumn<QString>("failure");
    for (const GeneratedFile &file : m_files)
        QTest::newRow(qPrintable(file.row)) << file.path << file.flags << file.failure;
}

void tst_GeneratedCode::generatedFilesCompile()
{
    QFETCH(QString, path);
    QFETCH(QStringList, flags);
    QFETCH(QString, failure);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString tool = ToolOf(path);
    QStringList needed{tool};
    // Only the interface source includes Python.h; the block's own files see just the class.
    if (QFileInfo(path).fileName().startsWith(QLatin1String("PyIntf")) && path.endsWith(QLatin1String(".cpp")))
        needed += QStringLiteral("python3-config");
    const QString missing = MissingTools(needed);
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing));
    const ToolRun run = Compile(path, flags);
    QVERIFY2(run.ok, qPrintable(path + "\n" + run.output + "\n" + ReadBytes(path)));
}

// The root case's generated source, interface pair and module, linked with a stand-in host, run
// through a whole simulation: names, paths and methods agree across the three files.
void tst_GeneratedCode::generatedBlockRuns()
{
    const QString missing = MissingTools({"g++", "python3-config"});
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing));
    const QStringList link = PythonConfig({"--embed", "--ldflags"});
    if (link.isEmpty())
        QSKIP("python3-config gives no flags to embed the interpreter");
    if (!m_python_flags.contains("root_no_ports"))
        QSKIP("no generator case root_no_ports");
    const QString src = m_dir.path() + "/cases/root_no_ports/src";
    QTemporaryDir dir;
    QVERIFY(WriteBytes(dir.path() + "/host.cpp",
        "#include \"RootSignalClass.h\"\n#include \"simcode.h\"\n"
        "void delay(int) {}\nvoid Sim_ProcessEvents() {}\n"
        "void Sim_DisplayMsg(const char *text, int, int, int) { puts(text); }\n"
        "int main() {\n"
        "    BLOCK_CONSTRUCTOR_PARAM_STRUCT init{}; GLOBAL_PRERUN_PARAM_STRUCT pre{};\n"
        "    GLOBAL_RUN_PARAM_STRUCT run{}; GLOBAL_POSTRUN_PARAM_STRUCT post{};\n"
        "    RootSignalClass block;\n"
        "    block.Initialize(&init);\n    block.PreRun(&pre);\n    block.PreRun(&pre);\n"
        "    block.Run(&run);\n    block.PostRun(&post);\n}\n"));
    // The template imports numpy and uses none of it; the suite does not need it installed.
    QVERIFY(WriteBytes(dir.path() + "/stub/numpy.py", "\n"));
    const QString program = dir.path() + "/host";
    const ToolRun build = RunTool(QStandardPaths::findExecutable("g++"),
                                  QStringList{"-std=c++17"} + m_python_flags.value("root_no_ports")
                                      + QStringList{dir.path() + "/host.cpp", src + "/RootSignalClass.cpp",
                                                    src + "/PyIntfRootSignalClass.cpp", "-o", program}
                                      + link);
    QVERIFY2(build.ok, qPrintable(build.output));
    QProcess run;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("PYTHONPATH", dir.path() + "/stub");
    run.setProcessEnvironment(env);
    run.start(program, QStringList());
    QVERIFY(run.waitForFinished(20000));
    const QString output = QString::fromLocal8Bit(run.readAllStandardOutput());
    QVERIFY2(run.exitCode() == 0, qPrintable(output + run.readAllStandardError()));
    QCOMPARE(output, QString("SimPy initialized. Path: %1, Module: RootSignalClass, "
                             "Class: PyRootSignalClass.\n").arg(src));
}

ZEMA_TEST(tst_GeneratedCode)
#include "tst_GeneratedCode.moc"
