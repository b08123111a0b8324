// Script fields and the text tests that every validation uses.
#include "TestRegistry.h"

#include "app/ScriptEval.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

#include <QtTest>
#include <thread>

class tst_ScriptEval : public QObject
{
    Q_OBJECT
    BlkParaData *config = nullptr;

private slots:
    void initTestCase()
    {
        config = new BlkParaData;
        config->para_grp << new ParaGroup;
        config->para_grp[0]->header = "G";
        // Label, sel_val, val_size; every entity has the index 2.
        for (const QStringList &row : {QStringList{"E", "3", ""}, {"Sized", "4,5", "[G#E#i]"},
                                       {"Self", "7", "[G#Self]+[G#Self]"}, {"Frac", "2.5", ""}}) {
            auto *entity = new ParaEntity(row[0]);
            entity->sel_val = row[1];
            entity->val_size = row[2];
            entity->sel_idx = 2;
            config->para_grp[0]->para_entity.append(entity);
        }
    }
    void cleanupTestCase() { FreeBlkParaData(config); }

    void scriptEval_data()
    {
        // An error is given by the start of its text, and clears ok.
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << "" << "";
        QTest::newRow("plain number as written") << "1.50" << "1.50";
        QTest::newRow("empty parts skipped; other group, one-part token count 0")
            << "[G##E]*2+[H#E]+[_SimStepSize]" << "6";
        QTest::newRow("array summed, size from script") << "[G#Sized]" << "9";
        QTest::newRow("self-sized terminates") << "[G#Self]" << "7";
        QTest::newRow("index form, every occurrence, fraction as 0") << "[G#E]*[G#E]+[G#E#i]+[G#Frac]" << "11";
        QTest::newRow("boolean as integer") << "[G#E] > 2" << "1";
        QTest::newRow("unknown name") << "foo * 2" << "ReferenceError: foo is not defined";
        // Globals that one evaluation makes are gone in the next.
        QTest::newRow("globals made") << "leaked = 5; function f() { return 7 } leaked" << "5";
        QTest::newRow("globals gone") << "typeof leaked + typeof f" << "undefinedundefined";
    }
    void scriptEval()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const bool error = expected.contains("Error");
        bool ok = error;
        const QString got = ScriptEval(text, config, &ok);
        QVERIFY2(error ? got.startsWith(expected) : got == expected, qPrintable(got));
        QCOMPARE(ok, !error);
    }

    void endlessScriptOnAnotherThread()
    {
        // An endless script is stopped and leaves its engine usable; another thread has its own.
        bool ok = true;
        QString after;
        std::thread thread([&] { ScriptEval("for (;;) {}", config, &ok); after = ScriptEval("[G#E]*3", config); });
        const QString here = ScriptEval("[G#E]*2", config) + ScriptEval("[G#E]", nullptr);
        thread.join();
        QVERIFY(!ok);
        QCOMPARE(after + "," + here, QString("9,60"));
    }

    void textHelpers()
    {
        // "0" is the one zero accepted; other small values below 0.0001 are refused.
        const QStringList numeric = {"0", "-3", "0.0002", "1e3"};
        for (const QString &text : numeric + QStringList{"", "0.0", "0.00005", "12abc", "inf"})
            QVERIFY2(IsNumericText(text, true) == numeric.contains(text), qPrintable(text));
        QVERIFY(IsNumericText("0", false) && !IsNumericText("-3", false));
        // Pieces are appended, an unclosed one is dropped, a delimiter may be longer than one character.
        QStringList out = {"kept"};
        ExtractBetween("]x[a]+[]+[b[c]d]+[e", "[", "]", out);
        ExtractBetween("$$a$$b$$c$$", "$$", "$$", out);
        QCOMPARE(out, (QStringList{"kept", "a", "", "b[c", "a", "c"}));
        // Blanks are allowed unless named as extra characters.
        const QString forbidden = "/\\:*?\"<>|.%;'#$^";
        for (const QChar c : forbidden + "_-+!@&()[]{}=~,` ")
            QVERIFY2(IsValidIdentifier(QString::fromUtf8("ö") + c) != forbidden.contains(c), qPrintable(QString(c)));
        QVERIFY(!IsValidIdentifier("") && !IsValidIdentifier("my block", " "));
    }
};

ZEMA_TEST(tst_ScriptEval)
#include "tst_ScriptEval.moc"
