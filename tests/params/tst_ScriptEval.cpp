// Script fields and the text tests that every validation uses.
#include "TestRegistry.h"

#include "app/ScriptEval.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

#include <QElapsedTimer>
#include <QtTest>
#include <thread>

class tst_ScriptEval : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase() { FreeBlkParaData(config); }
    void scriptEval_data();
    void scriptEval();
    void scriptStateDoesNotLeak();
    void runawayScriptIsStopped();
    void otherThreads();
    void textHelpers();

private:
    BlkParaData *config = nullptr;
};

void tst_ScriptEval::initTestCase()
{
    auto add = [](ParaGroup *group, const QString &label, const QString &sel_val, qint32 sel_idx = -1,
                  const QString &val_size = QString()) {
        auto *entity = new ParaEntity(label);
        entity->sel_val = sel_val;
        entity->sel_idx = sel_idx;
        entity->val_size = val_size;
        group->para_entity.append(entity);
    };
    config = new BlkParaData;
    config->para_grp << new ParaGroup << new ParaGroup;
    config->para_grp[0]->header = "G";
    config->para_grp[1]->header = "H";
    add(config->para_grp[0], "E", "3", 2);
    add(config->para_grp[0], "Arr", "1,2,3", -1, "3");
    add(config->para_grp[0], "Sized", "4,5", -1, "[G#E#i]");
    add(config->para_grp[0], "Self", "7", -1, "[G#Self]+[G#Self]");
    add(config->para_grp[0], "Frac", "2.5");
    add(config->para_grp[1], "E", "10");
}

void tst_ScriptEval::scriptEval_data()
{
    // An error result need only start with the expected text.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("ok");
    QTest::newRow("empty") << "" << "" << true;
    QTest::newRow("plain number as written") << "1.50" << "1.50" << true;
    QTest::newRow("entity of its own group") << "[G#E]*2+[H#E]" << "16" << true;
    QTest::newRow("missing entity, one-part token") << "[G#X]*2+[_SimStepSize]" << "0" << true;
    QTest::newRow("empty parts skipped") << "[G##E]" << "3" << true;
    QTest::newRow("array summed") << "[G#Arr]" << "6" << true;
    QTest::newRow("array size from script") << "[G#Sized]" << "9" << true;
    QTest::newRow("self-sized terminates") << "[G#Self]" << "7" << true;
    QTest::newRow("value read as integer") << "[G#Frac]" << "0" << true;
    QTest::newRow("index form, every occurrence") << "[G#E]*[G#E]+[G#E#i]" << "11" << true;
    QTest::newRow("boolean as integer") << "[G#E] > 2" << "1" << true;
    QTest::newRow("syntax error") << "[G#E+1" << "SyntaxError" << false;
    QTest::newRow("unknown name") << "foo * 2" << "ReferenceError: foo is not defined" << false;
}

void tst_ScriptEval::scriptEval()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QFETCH(bool, ok);
    bool got_ok = !ok;
    const QString got = ScriptEval(text, config, &got_ok);
    QVERIFY2(ok ? got == expected : got.startsWith(expected), qPrintable(got));
    QCOMPARE(got_ok, ok);
}

void tst_ScriptEval::scriptStateDoesNotLeak()
{
    QCOMPARE(ScriptEval("[G#E]*2", nullptr), QString("0"));
    QCOMPARE(ScriptEval("leaked = 5; function f() { return 7 } leaked", config), QString("5"));
    QCOMPARE(ScriptEval("typeof leaked + typeof f", config), QString("undefinedundefined"));
}

void tst_ScriptEval::runawayScriptIsStopped()
{
    QElapsedTimer timer;
    timer.start();
    bool ok = true;
    ScriptEval("for (;;) {}", config, &ok);
    QVERIFY(!ok && timer.elapsed() < 10000);
    // The engine is usable again afterwards.
    QCOMPARE(ScriptEval("[G#E]+1", config, &ok), QString("4"));
    QVERIFY(ok);
}

void tst_ScriptEval::otherThreads()
{
    QString other;
    std::thread thread([this, &other] { other = ScriptEval("[G#E]*3", config); });
    const QString here = ScriptEval("[G#E]*2", config);
    thread.join();
    QCOMPARE(other + "," + here, QString("9,6"));
}

void tst_ScriptEval::textHelpers()
{
    // "0" is the one zero accepted; other small values below 0.0001 are refused.
    for (const char *text : {"0", "-3", "0.0002", "1e3"})
        QVERIFY2(IsNumericText(text, true), text);
    for (const char *text : {"", "0.0", "0.00005", "12abc", "inf"})
        QVERIFY2(!IsNumericText(text, true), text);
    QVERIFY(IsNumericText("0", false));
    QVERIFY(!IsNumericText("-3", false));

    auto pieces = [](const QString &text, const QString &open, const QString &close) {
        QStringList out = {"kept"}; // appended to, never cleared
        ExtractBetween(text, open, close, out);
        return out.join("|");
    };
    QCOMPARE(pieces("[a]+[]", "[", "]"), QString("kept|a|"));
    QCOMPARE(pieces("]a[", "[", "]"), QString("kept"));
    QCOMPARE(pieces("[a[b]c]+[d", "[", "]"), QString("kept|a[b"));
    QCOMPARE(pieces("<<x>>y<<z>>", "<<", ">>"), QString("kept|x|z"));
    QCOMPARE(pieces("$a$b$c$", "$", "$"), QString("kept|a|c"));

    QVERIFY(!IsValidIdentifier(""));
    QVERIFY(IsValidIdentifier(QString::fromUtf8("my Blöck")));
    QVERIFY(!IsValidIdentifier("my block", " "));
    for (const QChar c : QString("/\\:*?\"<>|.%;'#$^"))
        QVERIFY2(!IsValidIdentifier(QString("ab") + c + "cd"), qPrintable(QString(c)));
    for (const QChar c : QString("_-+!@&()[]{}=~,`"))
        QVERIFY2(IsValidIdentifier(QString("ab") + c), qPrintable(QString(c)));
}

ZEMA_TEST(tst_ScriptEval)
#include "tst_ScriptEval.moc"
