// The template texts byte for byte against reviewed expected files, and the derivations whose
// edges those files do not make obvious. ZEMA_WRITE_EXPECTED=1 rewrites the expected files
// instead of comparing: review every line of the result before keeping it.
#include "CodegenBlocks.h"
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "codegen/TemplateContext.h"
#include "codegen/TemplateText.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QDir>
#include <QFile>
#include <QTextStream>
#include <QtTest>
#include <memory>

namespace {

using ParaPtr = std::unique_ptr<BlkParaData, void (*)(BlkParaData *)>;

ParaPtr NewSet() { return ParaPtr(new BlkParaData, FreeBlkParaData); }

ParaEntity *AddEntity(BlkParaData *set, const QString &group_header, const QString &para_var,
                      const QString &type, const QString &size, const QString &value, int var_type)
{
    ParaGroup *group = FindGroup(set, group_header);
    if (!group) {
        group = new ParaGroup;
        group->header = group_header;
        set->para_grp.append(group);
    }
    auto *entity = new ParaEntity(para_var.isEmpty() ? QStringLiteral("Unnamed") : para_var);
    entity->para_var = para_var;
    entity->val_type = type;
    entity->val_size = size;
    entity->sel_val = value;
    entity->var_type = var_type;
    group->para_entity.append(entity);
    return entity;
}

// The generator writes through a text stream; the expected files are written the same way.
QByteArray StreamBytes(const QString &text)
{
    QByteArray bytes;
    QTextStream stream(&bytes, QIODevice::WriteOnly | QIODevice::Text);
    stream << text;
    stream.flush();
    return bytes;
}

} // namespace

class tst_TemplateText : public QObject
{
    Q_OBJECT
private slots:
    void expectedFiles_data()
    {
        QTest::addColumn<int>("index");
        QList<CodegenCase> cases = CodegenCases();
        for (int i = 0; i < cases.size(); ++i)
            QTest::newRow(qPrintable(cases[i].name)) << i;
        FreeCodegenCases(cases);
    }

    void expectedFiles()
    {
        QFETCH(int, index);
        QList<CodegenCase> cases = CodegenCases();
        const CodegenCase c = cases.at(index);
        const TemplateContext context = BuildTemplateContext(TemplateInputsOf(c.block));
        QMap<QString, QString> texts;
        texts[context.class_name + ".h"] = TemplateHeaderText(context);
        texts[context.class_name + ".cpp"] = TemplateSourceText(context);
        if (context.options.fortran)
            texts[context.class_name + ".f90"] = FortranTemplateText(context);
        if (context.options.python)
            texts[context.class_name + ".py"] = PythonTemplateText(context);
        FreeCodegenCases(cases);

        const QString dir = QStringLiteral(ZEMA_FIXTURES "/codegen/") + c.name;
        if (qEnvironmentVariableIntValue("ZEMA_WRITE_EXPECTED") == 1) {
            QDir(dir).removeRecursively();
            for (auto it = texts.cbegin(); it != texts.cend(); ++it)
                QVERIFY(WriteBytes(dir + '/' + it.key(), StreamBytes(it.value())));
            QSKIP("expected files written");
        }
        // A file the generator should not write must not be expected either.
        QCOMPARE(QDir(dir).entryList(QDir::Files, QDir::Name), texts.keys());
        for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
            const QByteArray expected = ReadBytes(dir + '/' + it.key());
            const QByteArray actual = StreamBytes(it.value());
            if (actual != expected) {
                const QList<QByteArray> want = expected.split('\n');
                const QList<QByteArray> got = actual.split('\n');
                int line = 0;
                while (line < want.size() && line < got.size() && want[line] == got[line])
                    ++line;
                QFAIL(qPrintable(QStringLiteral("%1 differs at line %2:\nexpected: %3\nactual:   %4")
                                     .arg(it.key()).arg(line + 1)
                                     .arg(QString::fromUtf8(want.value(line)),
                                          QString::fromUtf8(got.value(line)))));
            }
        }
    }

    void classNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("class_name");
        QTest::newRow("id 0 whatever the name") << "low pass (2)" << "0" << "RootSignalClass";
        QTest::newRow("blanks and parentheses") << "low pass (2)" << "117" << "Lowpass2117";
        QTest::newRow("empty after removal") << " ( ) " << "12" << "12";
    }

    void classNames()
    {
        QFETCH(QString, name);
        QFETCH(QString, id);
        QFETCH(QString, class_name);
        ParaPtr config(BuildConfigurationEntities(0), FreeBlkParaData);
        FindEntity(config.get(), "Basic", "Block Name")->sel_val = name;
        FindEntity(config.get(), "Basic", "Block ID")->sel_val = id;
        TemplateInputs inputs;
        inputs.config = config.get();
        const TemplateContext context = BuildTemplateContext(inputs);
        QCOMPARE(context.class_name, class_name);
        QCOMPARE(context.pyintf_name, "PyIntf" + class_name);
        QVERIFY(TemplateHeaderText(context).contains("\n#define " + class_name.toUpper() + "_H\n"));
    }

    // Each option is read from the field the table names: an index for some, a text for others.
    void optionsReadTheirField()
    {
        ParaPtr config(BuildConfigurationEntities(0), FreeBlkParaData);
        ParaEntity *worker = FindEntity(config.get(), "Code-Basic", "Add Worker Thread Function Code");
        worker->sel_idx = 1;
        worker->sel_val.clear();
        ParaEntity *signal = FindEntity(config.get(), "Code-Signal Ports", "Generate code for signal ports");
        signal->sel_idx = 1;
        signal->sel_val = "Yes";
        FindEntity(config.get(), "Code-Basic", "Embeds other language code")->sel_idx = 3;
        TemplateOptions options = ReadTemplateOptions(config.get());
        QVERIFY(options.worker);
        QVERIFY(options.signal_ports);
        QVERIFY(!options.python);
        QVERIFY(!options.fortran);

        ParaGroup *group = FindGroup(config.get(), "Code-Signal Ports");
        FreeParaEntity(group->para_entity.takeAt(group->para_entity.indexOf(signal)));
        QVERIFY(!ReadTemplateOptions(config.get()).signal_ports);
        options = ReadTemplateOptions(nullptr);
        QVERIFY(!options.signal_ports && !options.worker && options.class_form == 0);
    }

    void memoryArguments_data()
    {
        QTest::addColumn<QString>("cacheable");
        QTest::addColumn<QString>("noncacheable");
        QTest::addColumn<QString>("method_args");
        QTest::addColumn<QString>("arg_types");
        QTest::newRow("zero adds nothing") << " 0 " << "0.0" << "" << "";
        QTest::newRow("negative adds nothing") << "-8" << "" << "" << "";
        QTest::newRow("number") << "16" << "" << ", _BYTE *blk_mem" << ", _BYTE*";
        QTest::newRow("script whatever its value") << "" << "[G#E]*0"
                                                   << ", volatile _BYTE *blk_vmem" << ", volatile _BYTE*";
        QTest::newRow("both") << "4" << "2"
                              << ", _BYTE *blk_mem, volatile _BYTE *blk_vmem"
                              << ", _BYTE*, volatile _BYTE*";
    }

    void memoryArguments()
    {
        QFETCH(QString, cacheable);
        QFETCH(QString, noncacheable);
        QFETCH(QString, method_args);
        QFETCH(QString, arg_types);
        ParaPtr config(BuildConfigurationEntities(0), FreeBlkParaData);
        FindEntity(config.get(), "Additional Memory Requirement", "Cacheable Memory (Bytes)")->sel_val = cacheable;
        FindEntity(config.get(), "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)")->sel_val = noncacheable;
        TemplateInputs inputs;
        inputs.config = config.get();
        const TemplateContext context = BuildTemplateContext(inputs);
        QCOMPARE(context.method_args, method_args);
        QCOMPARE(context.arg_types, arg_types);
        QCOMPARE(context.member_body.contains("\n\t_BYTE *m_blk_mem;"), method_args.contains("blk_mem"));
    }

    void declarations_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("size");
        QTest::addColumn<int>("var_type");
        QTest::addColumn<QString>("line");
        QTest::newRow("size 1 is a scalar") << "Real" << "1" << 0 << "_FXDPT_FLOAT v;";
        QTest::newRow("size below 1 is a scalar") << "Integer16" << "0" << 0 << "_INT16 v;";
        QTest::newRow("script size") << "Real64" << "1+2" << 0 << "_FXDPT_FLOAT64 v[3];";
        QTest::newRow("string array") << "String" << "3" << 0 << "_CHAR v[3][MAXIMUM_CHAR_VAR_SIZE];";
        QTest::newRow("constant string") << "String" << "1" << 1 << "const _CHAR* v;";
        QTest::newRow("constant array") << "Byte" << "2" << 1 << "const _BYTE v[2];";
        QTest::newRow("unknown type as it stands") << "Complex" << "" << 0 << "Complex v;";
    }

    void declarations()
    {
        QFETCH(QString, type);
        QFETCH(QString, size);
        QFETCH(int, var_type);
        QFETCH(QString, line);
        ParaPtr params = NewSet();
        AddEntity(params.get(), "G", "v", type, size, "1", var_type);
        TemplateInputs inputs;
        inputs.params = params.get();
        const TemplateContext context = BuildTemplateContext(inputs);
        QVERIFY2(context.member_body.contains("\n\t" + line + "\n"), qPrintable(context.member_body));
        QVERIFY(!context.member_body.contains("[1]"));
        QCOMPARE(context.ctor_pairs.size(), var_type);
        QCOMPARE(context.python_params.size(), 1 - var_type);
    }

    void definitions_data()
    {
        QTest::addColumn<QString>("para_var");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("text");
        QTest::newRow("unnamed defines its value") << "" << "Integer" << "" << "5" << ""
                                                   << "\n#ifndef 5\n#define 5\n#endif";
        QTest::newRow("name upper-cased, blanks to underscores") << "max val" << "Real" << "" << "2" << ""
                                                                  << "\n#ifndef MAX_VAL\n#define MAX_VAL 2\n#endif";
        QTest::newRow("real32 array") << "c" << "Real32" << "2" << "1,2.5" << ""
                                      << "\n#ifndef C\n#define C {1.000000,2.500000}\n#endif";
        QTest::newRow("padded to its size") << "c" << "Integer16" << "3" << "4" << ""
                                            << "\n#ifndef C\n#define C {4,0,0}\n#endif";
        QTest::newRow("expression without the letter u") << "c" << "Real64" << "" << "-3" << "Math.abs(u)"
                                                         << "\n#ifndef C\n#define C 3.000000\n#endif";
        // "round" loses its u to the value, the script fails, and the value stands.
        QTest::newRow("u inside a function name") << "c" << "Real64" << "" << "-3" << "Math.round(u)"
                                                  << "\n#ifndef C\n#define C -3.000000\n#endif";
        QTest::newRow("expression per part") << "c" << "Integer64" << "2" << "1,2" << "u*10"
                                             << "\n#ifndef C\n#define C {10,20}\n#endif";
    }

    void definitions()
    {
        QFETCH(QString, para_var);
        QFETCH(QString, type);
        QFETCH(QString, size);
        QFETCH(QString, value);
        QFETCH(QString, expression);
        QFETCH(QString, text);
        ParaPtr initconds = NewSet();
        AddEntity(initconds.get(), "G", para_var, type, size, value, 2)->sel_val_expr = expression;
        TemplateInputs inputs;
        inputs.initconds = initconds.get();
        const TemplateContext context = BuildTemplateContext(inputs);
        QCOMPARE(context.preproc_block, text);
        QVERIFY(context.python_params.isEmpty());
    }
};

ZEMA_TEST(tst_TemplateText)
#include "tst_TemplateText.moc"
