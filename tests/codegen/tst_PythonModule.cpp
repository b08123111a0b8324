// The Python block module: the identifier rule, the module text, and the code page's button that
// writes it and opens it.
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "ui_CodeConfigDlg.h"

#include "app/AppSettings.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "codegen/PythonModule.h"
#include "pages/BlkPresData.h"
#include "pages/CodeConfigDlg.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QDesktopServices>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace {

void SetConfig(BlockData *block, const char *label, const QString &value)
{
    FindEntity(block->config, QStringLiteral("Basic"), QLatin1String(label))->sel_val = value;
}

ParaEntity *AddEntity(ParaGroup *group, const QString &label, const QString &value,
                      const QStringList &values = {})
{
    auto *entity = new ParaEntity(label);
    entity->sel_val = value;
    entity->values = values;
    group->para_entity.append(entity);
    return entity;
}

// Two parameter groups, one with a value list, no initial conditions, two ports: every branch of
// the text once.
BlockData *ModuleBlock()
{
    auto *block = new BlockData;
    block->path = QStringLiteral("/blocks/Signals/class");
    block->config = BuildConfigurationEntities(0);
    SetConfig(block, "Block Name", QStringLiteral("class"));
    SetConfig(block, "Block ID", QStringLiteral("123"));
    SetConfig(block, "ZEMA Version", QStringLiteral("3.2.1"));
    block->params = new BlkParaData;
    auto *gains = new ParaGroup{QStringLiteral("Gains"), QString(), {}};
    AddEntity(gains, QStringLiteral("Gain"), QStringLiteral("2.5"));
    AddEntity(gains, QStringLiteral("Mode"), QStringLiteral("Fast"),
              {QStringLiteral("Slow"), QStringLiteral("Fast")});
    auto *limits = new ParaGroup{QStringLiteral("Limits (%1)"), QString(), {}};
    AddEntity(limits, QStringLiteral("Upper"), QStringLiteral("%2"));
    block->params->para_grp = {gains, limits};
    block->initconds = new BlkParaData;
    block->pres = new BlkPresData;
    block->pres->title = QStringLiteral("Class Block");
    for (const char *name : {"in 1", "out"}) {
        auto *port = new BlkPort;
        port->name = QString::fromLatin1(name);
        block->pres->ports.append(port);
    }
    return block;
}

} // namespace

class tst_PythonModule : public QObject
{
    Q_OBJECT
public slots:
    void Open(const QUrl &url) { opened.append(url); }

private slots:
    void makeIdentifier_data();
    void makeIdentifier();
    void makePythonName_data();
    void makePythonName();
    void moduleText();
    void nothingWritten();
    void showPythonCode();

private:
    QList<QUrl> opened;
};

void tst_PythonModule::makeIdentifier_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("options"); // 1 upper, 2 lower, 4 underscore
    QTest::addColumn<QString>("identifier");
    QTest::newRow("separators taken out") << "low pass (2)" << 0 << "lowPass2";
    QTest::newRow("leading digit") << "2nd order" << 0 << "_2ndOrder";
    QTest::newRow("separator pair") << "a  b--c" << 0 << "aBC";
    QTest::newRow("trailing separator") << "gain-" << 0 << "gain";
    QTest::newRow("every separator") << "a b(c)d[e]f{g}h+i-j*k/l^m%n&o$p@q=r<s>t?u.v,w|x:y;z'0" << 0
                                     << "aBCDEFGHIJKLMNOPQRSTUVWXYZ0";
    QTest::newRow("others kept") << "a_b#c~d!" << 0 << "a_b#c~d!";
    QTest::newRow("underscores") << "low pass (2)" << 4 << "low_pass__2_";
    QTest::newRow("underscores, leading digit") << "1 x" << 4 << "_1_x";
    QTest::newRow("upper") << "low pass" << 1 << "LOWPASS";
    QTest::newRow("lower after upper") << "Low Pass" << 3 << "lowpass";
    QTest::newRow("empty") << "" << 0 << "";
}

void tst_PythonModule::makeIdentifier()
{
    QFETCH(QString, name);
    QFETCH(int, options);
    QFETCH(QString, identifier);
    QCOMPARE(MakeIdentifier(name, options & 1, options & 2, options & 4), identifier);
}

void tst_PythonModule::makePythonName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("python");
    QTest::newRow("keyword") << "class" << "_class";
    QTest::newRow("short keyword") << "in" << "_in";
    QTest::newRow("case-sensitive") << "In" << "In";
    QTest::newRow("builtin") << "license" << "_license";
    QTest::newRow("soft keyword") << "type" << "_type";
    QTest::newRow("keyword after the rule") << "non-local" << "nonLocal";
    QTest::newRow("keyword made by the rule") << "(None)" << "_None";
    QTest::newRow("keyword inside") << "classic" << "classic";
}

void tst_PythonModule::makePythonName()
{
    QFETCH(QString, name);
    QFETCH(QString, python);
    QCOMPARE(MakePythonName(name), python);
}

void tst_PythonModule::moduleText()
{
    QTemporaryDir dir;
    BlockData *block = ModuleBlock();
    const QString path = WritePythonModule(block, dir.path(), ".py");
    FreeBlockData(block);
    QCOMPARE(path, dir.path() + "/_class123.py");
    QCOMPARE(QString::fromUtf8(ReadBytes(path)),
             QString::fromUtf8(ReadBytes(ZEMA_FIXTURES "/codegen/pymodule/_class123.py")));

    if (QStandardPaths::findExecutable("python3").isEmpty())
        QSKIP("python3 is not installed");
    QProcess python;
    python.start("python3", {"-m", "py_compile", path});
    QVERIFY(python.waitForFinished(30000));
    QVERIFY2(python.exitCode() == 0, python.readAllStandardError().constData());
}

void tst_PythonModule::nothingWritten()
{
    QTemporaryDir dir;
    QVERIFY(WritePythonModule(nullptr, dir.path(), ".py").isEmpty());
    BlockData *block = ModuleBlock();
    QVERIFY(WritePythonModule(block, dir.path() + "/missing", ".py").isEmpty());
    SetConfig(block, "Block Name", QString());
    QVERIFY(WritePythonModule(block, dir.path(), ".py").isEmpty());
    FreeBlockData(block);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList());
}

// The module goes under its Python name, while the viewer is asked for the raw name.
void tst_PythonModule::showPythonCode()
{
    QTemporaryDir tmp;
    PageWindow w(tmp.path());
    GlobalSettings()->user_dir = tmp.path() + "/user";
    QDir().mkpath(tmp.path() + "/user/temp");
    opened.clear();
    QDesktopServices::setUrlHandler("file", this, "Open");
    BlockData *block = PageWindow::NewBlockRecord(QStringLiteral("in"));
    QVERIFY(w.OpenBlock(block, tmp.path(), QStringLiteral("in")));
    FreeBlockData(block);
    const QString id = QString::number(BlockIdOf(w->block));
    w->code_page->ui->pb_python_code->click();
    QDesktopServices::unsetUrlHandler("file");

    QCOMPARE(QDir(tmp.path() + "/user/temp").entryList(QDir::Files), QStringList{"_in" + id + ".py"});
    QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(tmp.path() + "/user/temp/in" + id + ".py")});
}

ZEMA_TEST(tst_PythonModule)
#include "tst_PythonModule.moc"
