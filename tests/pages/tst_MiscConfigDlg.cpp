// The Miscellaneous page: its round trip through its section file, the three add buttons against
// the installed directory, and every message of its checks.
#include "PageWindow.h"
#include "TestRegistry.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"
#include "pages/BlkPresData.h"
#include "pages/MiscConfigDlg.h"
#include "params/BlkParaData.h"

#include <QtTest>
#include <QtWidgets>
#include <memory>

namespace {

using Misc = std::unique_ptr<BlkMiscData, void (*)(BlkMiscData *)>;

} // namespace

class tst_MiscConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }


    void sectionFileRoundTrip()
    {
        const QString file = tmp.path() + "/blk_misc.cfg";
        Misc stored(new BlkMiscData, FreeBlkMiscData);
        stored->char_vars << new BlkCharVar{"_ZeroCrossing", "G", "E"} << new BlkCharVar{"_Gone", "G", "F"};
        stored->cpu_ops = "[G#E]*2";
        stored->para_cond = QStringList{" [G#E] > 1 $ too big ", "bare", "c$"};
        stored->blk_depends = QStringList{"blocks/a"};
        stored->cpp_depends = QStringList{"src/a.cpp", "lib"};
        stored->dev_rem = "one\ntwo";
        QVERIFY(BlkMiscFileIO(QString(), nullptr, 1).SaveFile(file, stored.get(), "ZEMA"));

        auto page = std::make_unique<MiscConfigDlg>(nullptr);
        page->LoadMiscData(tmp.path(), nullptr);
        QFile::remove(file);
        page->SaveMiscData(tmp.path(), nullptr);
        Misc back(BlkMiscFileIO(QString(), nullptr, 1).LoadFile(file, "ZEMA"), FreeBlkMiscData);
        QVERIFY(back);
        // Both fixed rows come back; a variable without a row is gone. Conditions are trimmed.
        QStringList vars;
        for (const BlkCharVar *var : back->char_vars)
            vars << var->char_var_name + "|" + var->para_grp + "|" + var->para_entity;
        QCOMPARE(vars, (QStringList{"_SimStepSize||", "_ZeroCrossing|G|E"}));
        QCOMPARE(back->para_cond, (QStringList{"[G#E] > 1$too big", "bare", "c$"}));
        QCOMPARE((QList<QStringList>{{back->cpu_ops, back->dev_rem}, back->blk_depends, back->cpp_depends}),
                 (QList<QStringList>{{stored->cpu_ops, stored->dev_rem}, stored->blk_depends, stored->cpp_depends}));

        // A record read from the file goes over to the block on the first save with one.
        auto *block = new BlockData;
        block->misc = new BlkMiscData;
        page->SaveMiscData(tmp.path(), block);
        QCOMPARE(block->misc, page->data);
        page.reset();
        QCOMPARE(block->misc->cpu_ops, stored->cpu_ops);
        FreeBlockData(block);
    }

    // Against the installed directory /opt/zema: the item added, and the dialog's title with any refusal.
    void addButtons_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("choice");
        QTest::addColumn<QString>("added");
        QTest::addColumn<QStringList>("texts");
        const QString blocks = "Select dependency block directory";
        QTest::newRow("block directory outside") << "pb_blk_depend_add" << QStringList{"/home/b1"} << QString()
            << QStringList{blocks, "Selected block directory /home/b1 shall be within program installed directory."};
        QTest::newRow("installed directory itself") << "pb_blk_depend_add" << QStringList{"/opt/zema"} << QString() << QStringList{blocks};
        QTest::newRow("root text inside a path counts as inside")
            << "pb_blk_depend_add" << QStringList{"/data/opt/zema/b2"} << QString("data/b2") << QStringList{blocks};
        QTest::newRow("files stop at the first outside")
            << "pb_cdepend_add" << QStringList{"/opt/zema/src/a.cpp", "/tmp/b.cpp", "/opt/zema/src/c.cpp"}
            << QString("src/a.cpp")
            << QStringList{"Select files to add", "Selected file directory /tmp/b.cpp shall be within program installed directory."};
        QTest::newRow("folder outside") << "pb_cdepend_add_dir" << QStringList{"/srv/lib"} << QString()
            << QStringList{"Select directory to add", "Selected directory /srv/lib shall be within program installed directory."};
    }

    void addButtons()
    {
        QFETCH(QString, button);
        QFETCH(QStringList, choice);
        QFETCH(QString, added);
        QFETCH(QStringList, texts);
        PageWindow w("/opt/zema");
        w.answers->choices = {choice};
        MiscConfigDlg page(w.get());
        auto *add = page.findChild<QPushButton *>(button);
        auto *list = page.findChild<QListWidget *>(button == "pb_blk_depend_add" ? "lb_depend_blk" : "lb_depend_code");
        QVERIFY(add && list);
        add->click();
        // The last item: nothing after a refusal.
        QCOMPARE(list->count() ? list->item(list->count() - 1)->text() : QString(), added);
        QCOMPARE(w.answers->texts, texts);
    }

    void validation_data()
    {
        QTest::addColumn<QStringList>("vars");
        QTest::addColumn<QString>("cpu_ops");
        QTest::addColumn<QStringList>("conds");
        QTest::addColumn<QStringList>("messages");
        const QString cpu = "Miscellaneous: CPU operation required field has ";
        const QString cond = "Miscellaneous: Parameter conditions at row %1 has ";
        QTest::newRow("clean") << QStringList{"_SimStepSize|G|E", "_ZeroCrossing||"}
                               << "[G#E]*[P#4]+[_PlotStepSize]+[x_PointerSizes]" << QStringList{"[G#E] > [P#1]$too big"}
                               << QStringList{};
        QTest::newRow("two # end the check") << QStringList{} << "[Step]+[G#X]*[P#5]+[a#b#c]+[Step]" << QStringList{}
            << QStringList{cpu + "invalid string Step", cpu + "non-matching variable 'G#X'",
                           cpu + "non-matching variable 'P#5'", cpu + "invalid syntax related to #"};
        QTest::newRow("conditions, first row is 0; a negative decimal")
            << QStringList{} << "-2.5"
            << QStringList{" $text", "[G#E > 1$t", "([G#E] > 1$t", "[G] > [P#1] + [x#y] + [G#E#z]$", "[G#E] > 1$ok", "bare"}
            << QStringList{cond.arg(0) + "empty Condition field", cond.arg(1) + "invalid syntax related to '[]'",
                           cond.arg(2) + "invalid syntax related to '()'", cond.arg(3) + "invalid syntax related to #",
                           cond.arg(3) + "non-matching variable 'x#y'", cond.arg(3) + "empty Error Text field",
                           cond.arg(5) + "empty Error Text field"};
        QTest::newRow("intrinsic variables, then the others")
            << QStringList{"_SimStepSize|Nope|E", "_ZeroCrossing|G|X"} << "[G#E" << QStringList{"$t"}
            << QStringList{"Code: Parameter group name 'Nope' mentioned in instrinsic variable table does not exists",
                           "Code: Parameter entity name 'X' mentioned in instrinsic variable table does not exists",
                           cpu + "missing square braces", cond.arg(0) + "empty Condition field"};
    }

    void validation()
    {
        QFETCH(QStringList, vars);
        QFETCH(QString, cpu_ops);
        QFETCH(QStringList, conds);
        QFETCH(QStringList, messages);
        // A block with the parameter "G"/"E" and an input port "P" of one dimension, both clean.
        BlockData *block = PageWindow::NewBlockRecord("blk");
        auto *entity = new ParaEntity("E");
        entity->val_type = "Real64";
        block->params->para_grp << new ParaGroup{"G", QString(), {entity}};
        auto *port = new BlkPort;
        port->name = "P";
        port->type = "Input";
        port->placement = "Left";
        block->pres->ports.append(port);
        auto *code = new BlkCodePort;
        code->port_name = code->data_name = "P";
        code->domain = "Number";
        code->dim_dependency = "Script";
        code->dims.append(new BlkPortDim{"1", 0});
        block->code->ports.append(code);
        for (const QString &var : vars)
            block->misc->char_vars.append(new BlkCharVar{var.section('|', 0, 0), var.section('|', 1, 1), var.section('|', 2)});
        block->misc->cpu_ops = cpu_ops;
        block->misc->para_cond = conds;
        PageWindow w(tmp.path());
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QStringList rows;
        for (const QString &message : messages)
            rows << QString("%1. Error: %2").arg(rows.size() + 1).arg(message);
        QCOMPARE(w.ValidationRows(), rows);
    }

private:
    QTemporaryDir tmp;
};

ZEMA_TEST(tst_MiscConfigDlg)
#include "tst_MiscConfigDlg.moc"
