// Script fields and the text tests that every validation uses.
#include "TestRegistry.h"

#include "app/ScriptEval.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

#include <QElapsedTimer>
#include <QtTest>
#include <thread>

namespace {

ParaEntity *AddEntity(ParaGroup *group, const QString &label, const QString &sel_val,
                      qint32 sel_idx = -1, const QString &val_size = QString())
{
    auto *entity = new ParaEntity(label);
    entity->sel_val = sel_val;
    entity->sel_idx = sel_idx;
    entity->val_size = val_size;
    group->para_entity.append(entity);
    return entity;
}

// Group "G": E = 3 at index 2, N = 2, Arr = 1,2,3 of size 3, Sized = 4,5 of size [G#N],
// Self sized by itself, Frac = 2.5; group "H": E = 10.
BlkParaData *MakeConfig()
{
    auto *data = new BlkParaData;
    auto *g = new ParaGroup;
    g->header = "G";
    AddEntity(g, "E", "3", 2);
    AddEntity(g, "N", "2");
    AddEntity(g, "Arr", "1,2,3", -1, "3");
    AddEntity(g, "Sized", "4,5", -1, "[G#N]");
    AddEntity(g, "Self", "7", -1, "[G#Self]+[G#Self]");
    AddEntity(g, "Frac", "2.5");
    auto *h = new ParaGroup;
    h->header = "H";
    AddEntity(h, "E", "10");
    data->para_grp << g << h;
    return data;
}

} // namespace

class tst_ScriptEval : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void scriptEval_data();
    void scriptEval();
    void scriptErrors_data();
    void scriptErrors();
    void withoutConfig();
    void globalsDoNotLeak();
    void runawayScriptIsStopped();
    void otherThreads();
    void isNumericText_data();
    void isNumericText();
    void extractBetween_data();
    void extractBetween();
    void isValidIdentifier_data();
    void isValidIdentifier();
    void everyForbiddenCharacter();

private:
    BlkParaData *config = nullptr;
};

void tst_ScriptEval::initTestCase()
{
    config = MakeConfig();
}

void tst_ScriptEval::cleanupTestCase()
{
    FreeBlkParaData(config);
}

void tst_ScriptEval::scriptEval_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << "" << "";
    QTest::newRow("blanks only") << "  " << "";
    QTest::newRow("plain number as written") << "1.50" << "1.50";
    QTest::newRow("negative number") << "-3" << "-3";
    QTest::newRow("entity times two") << "[G#E]*2" << "6";
    QTest::newRow("same label other group") << "[H#E]" << "10";
    QTest::newRow("missing entity") << "[G#X]*2" << "0";
    QTest::newRow("missing group") << "[X#E]" << "0";
    QTest::newRow("index form") << "[G#E#i]" << "2";
    QTest::newRow("index of line edit") << "[G#N#i]+1" << "0";
    QTest::newRow("empty parts skipped") << "[G##E]" << "3";
    QTest::newRow("array summed") << "[G#Arr]" << "6";
    QTest::newRow("array size from script") << "[G#Sized]" << "9";
    QTest::newRow("self-sized terminates") << "[G#Self]" << "7";
    QTest::newRow("value read as integer") << "[G#Frac]" << "0";
    QTest::newRow("runtime constant counts 0") << "[_SimStepSize]+1" << "1";
    QTest::newRow("empty token") << "[]+4" << "4";
    QTest::newRow("two tokens") << "[G#E]+[G#E#i]" << "5";
    QTest::newRow("repeated token") << "[G#E]*[G#E]" << "9";
    QTest::newRow("boolean true") << "[G#E] > 2" << "1";
    QTest::newRow("boolean false") << "[G#E] == 4" << "0";
    QTest::newRow("real result") << "[G#E]/2" << "1.5";
    QTest::newRow("text result") << "'a' + 'b'" << "ab";
    QTest::newRow("no result") << "var unused_name = 1" << "undefined";
}

void tst_ScriptEval::scriptEval()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(ScriptEval(text, config), expected);
}

void tst_ScriptEval::scriptErrors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<bool>("ok");
    QTest::newRow("good script") << "[G#E]+1" << "4" << true;
    QTest::newRow("plain number") << "12" << "12" << true;
    QTest::newRow("syntax error") << "1 +" << "SyntaxError" << false;
    QTest::newRow("unbalanced bracket") << "[G#E+1" << "SyntaxError" << false;
    QTest::newRow("unknown name") << "foo * 2" << "ReferenceError: foo is not defined" << false;
    QTest::newRow("thrown error") << "throw new Error('bad size')" << "Error: bad size" << false;
}

void tst_ScriptEval::scriptErrors()
{
    QFETCH(QString, text);
    QFETCH(QString, prefix);
    QFETCH(bool, ok);
    bool got_ok = !ok;
    const QString got = ScriptEval(text, config, &got_ok);
    QVERIFY2(got.startsWith(prefix), qPrintable(got));
    QCOMPARE(got_ok, ok);
}

void tst_ScriptEval::withoutConfig()
{
    QCOMPARE(ScriptEval("[G#E]*2", nullptr), QString("0"));
    QCOMPARE(ScriptEval("[G#E#i]", nullptr), QString("0"));
    QCOMPARE(ScriptEval("2+2", nullptr), QString("4"));
}

void tst_ScriptEval::globalsDoNotLeak()
{
    QCOMPARE(ScriptEval("leaked = 5; leaked", config), QString("5"));
    QCOMPARE(ScriptEval("typeof leaked", config), QString("undefined"));
    QCOMPARE(ScriptEval("var declared = 6; declared", config), QString("6"));
    QCOMPARE(ScriptEval("typeof declared", config), QString("undefined"));
    QCOMPARE(ScriptEval("function f() { return 7 } f()", config), QString("7"));
    QCOMPARE(ScriptEval("typeof f", config), QString("undefined"));
}

void tst_ScriptEval::runawayScriptIsStopped()
{
    QElapsedTimer timer;
    timer.start();
    bool ok = true;
    ScriptEval("for (;;) {}", config, &ok);
    QVERIFY(!ok);
    QVERIFY(timer.elapsed() < 10000);
    // The engine is usable again afterwards.
    QCOMPARE(ScriptEval("[G#E]+1", config, &ok), QString("4"));
    QVERIFY(ok);
}

void tst_ScriptEval::otherThreads()
{
    QString results[3];
    std::thread threads[3];
    for (int i = 0; i < 3; ++i)
        threads[i] = std::thread([this, i, &results] {
            results[i] = ScriptEval(QString("[G#E]*%1").arg(i + 2), config);
        });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(results[0], QString("6"));
    QCOMPARE(results[1], QString("9"));
    QCOMPARE(results[2], QString("12"));
}

void tst_ScriptEval::isNumericText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("allow_negative");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << "" << true << false;
    QTest::newRow("zero") << "0" << false << true;
    QTest::newRow("real") << "1.5" << false << true;
    QTest::newRow("negative allowed") << "-3" << true << true;
    QTest::newRow("negative refused") << "-3" << false << false;
    QTest::newRow("zero spelt 0.0") << "0.0" << true << false;
    QTest::newRow("zero spelt 00") << "00" << true << false;
    QTest::newRow("below the threshold") << "0.00005" << true << false;
    QTest::newRow("above the threshold") << "0.0002" << true << true;
    QTest::newRow("exponent") << "1e3" << true << true;
    QTest::newRow("letters") << "abc" << true << false;
    QTest::newRow("number then letters") << "12abc" << true << false;
    QTest::newRow("not a number") << "nan" << true << false;
    QTest::newRow("infinity") << "inf" << true << false;
}

void tst_ScriptEval::isNumericText()
{
    QFETCH(QString, text);
    QFETCH(bool, allow_negative);
    QFETCH(bool, expected);
    QCOMPARE(IsNumericText(text, allow_negative), expected);
}

void tst_ScriptEval::extractBetween_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("open");
    QTest::addColumn<QString>("close");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("two tokens") << "[a]+[b#c]" << "[" << "]" << QStringList({"a", "b#c"});
    QTest::newRow("none") << "1+2" << "[" << "]" << QStringList();
    QTest::newRow("reversed braces") << "]a[" << "[" << "]" << QStringList();
    QTest::newRow("nested: up to the first close") << "[a[b]c]" << "[" << "]" << QStringList({"a[b"});
    QTest::newRow("empty piece") << "[]" << "[" << "]" << QStringList({""});
    QTest::newRow("open without close") << "[a]+[b" << "[" << "]" << QStringList({"a"});
    QTest::newRow("long delimiters") << "<<x>>y<<z>>" << "<<" << ">>" << QStringList({"x", "z"});
    QTest::newRow("same delimiter") << "$a$b$c$" << "$" << "$" << QStringList({"a", "c"});
    QTest::newRow("empty delimiter") << "[a]" << "" << "]" << QStringList();
}

void tst_ScriptEval::extractBetween()
{
    QFETCH(QString, text);
    QFETCH(QString, open);
    QFETCH(QString, close);
    QFETCH(QStringList, expected);
    QStringList out = {"kept"};
    ExtractBetween(text, open, close, out);
    QCOMPARE(out, QStringList("kept") + expected);
}

void tst_ScriptEval::isValidIdentifier_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<bool>("expected");
    QTest::newRow("empty") << "" << "" << false;
    QTest::newRow("plain") << "Gain_1" << "" << true;
    QTest::newRow("blank is allowed") << "my block" << "" << true;
    QTest::newRow("blank refused by extra") << "my block" << " " << false;
    QTest::newRow("dot") << "my.block" << "" << false;
    QTest::newRow("extra not present") << "Gain" << "-+" << true;
    QTest::newRow("extra present") << "a-b" << "-+" << false;
    QTest::newRow("non-ascii letters") << QString::fromUtf8("Blöck") << "" << true;
    QTest::newRow("parentheses") << "Gain(2)" << "" << true;
}

void tst_ScriptEval::isValidIdentifier()
{
    QFETCH(QString, text);
    QFETCH(QString, extra);
    QFETCH(bool, expected);
    QCOMPARE(IsValidIdentifier(text, extra), expected);
}

void tst_ScriptEval::everyForbiddenCharacter()
{
    for (const QChar c : QString("/\\:*?\"<>|.%;'#$^")) {
        QVERIFY2(!IsValidIdentifier(QString("ab") + c + "cd"), qPrintable(QString(c)));
        QVERIFY2(!IsValidIdentifier(QString(c)), qPrintable(QString(c)));
    }
    for (const QChar c : QString("_-+!@&()[]{}=~,`"))
        QVERIFY2(IsValidIdentifier(QString("ab") + c), qPrintable(QString(c)));
}

ZEMA_TEST(tst_ScriptEval)
#include "tst_ScriptEval.moc"
