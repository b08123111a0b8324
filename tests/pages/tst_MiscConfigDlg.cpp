// The Miscellaneous page: its round trip through its section file, the three add buttons against
// the installed directory, the intrinsic variable combos, and every message of its checks.
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
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>
#include <memory>

namespace {

using Misc = std::unique_ptr<BlkMiscData, void (*)(BlkMiscData *)>;

template <typename T>
T *Child(QObject *page, const QString &name)
{
    T *widget = page->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", qPrintable(name));
    return widget;
}

QStringList Items(const QListWidget *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

// Parameter "G"/"E" and "G"/"F", group "H", and an input port "P" of one dimension, all clean.
void AddNames(BlockData *block)
{
    QList<ParaEntity *> entities{new ParaEntity("E"), new ParaEntity("F")};
    for (ParaEntity *entity : entities)
        entity->val_type = "Real64";
    block->params->para_grp << new ParaGroup{"G", QString(), entities} << new ParaGroup{"H", QString(), {}};
    auto *port = new BlkPort;
    port->name = port->dis_text = "P";
    port->type = "Input";
    port->placement = "Left";
    port->per_distance = 50;
    block->pres->ports.append(port);
    auto *code = new BlkCodePort;
    code->port_name = "P";
    code->data_name = "p_v";
    code->data_type = "Real";
    code->mem_type = "Cacheable";
    code->mem_alloc = "0";
    code->domain = "Number";
    code->dim_dependency = "Script";
    code->dims.append(new BlkPortDim{"1", 0});
    block->code->ports.append(code);
}

QStringList g_messages;
void RecordMessage(QtMsgType, const QMessageLogContext &, const QString &text) { g_messages << text; }

} // namespace

class tst_MiscConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }

    void formSlotsConnect()
    {
        g_messages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(RecordMessage);
        delete new MiscConfigDlg(nullptr);
        qInstallMessageHandler(previous);
        for (const QString &message : g_messages)
            QVERIFY2(!message.contains("connectSlotsByName"), qPrintable(message));
    }

    void sectionFileRoundTrip()
    {
        QTemporaryDir tmp;
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
        QCOMPARE(back->cpu_ops, stored->cpu_ops);
        QCOMPARE(back->blk_depends, stored->blk_depends);
        QCOMPARE(back->cpp_depends, stored->cpp_depends);
        QCOMPARE(back->dev_rem, stored->dev_rem);

        // A record read from the file goes over to the block on the first save with one.
        auto *block = new BlockData;
        block->misc = new BlkMiscData;
        page->SaveMiscData(tmp.path(), block);
        QCOMPARE(block->misc, page->data);
        page.reset();
        QCOMPARE(block->misc->cpu_ops, stored->cpu_ops);
        FreeBlockData(block);
    }

    void addButtons_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("choice");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("texts");
        const QString blocks = "Select dependency block directory";
        const QString files = "Select files to add";
        const QString folder = "Select directory to add";
        QTest::newRow("block directory inside") << "pb_blk_depend_add" << QStringList{"/opt/zema/blocks/b1"}
                                                << "lb_depend_blk" << QStringList{"blocks/b1"} << QStringList{blocks};
        QTest::newRow("block directory outside")
            << "pb_blk_depend_add" << QStringList{"/home/b1"} << "lb_depend_blk" << QStringList{}
            << QStringList{blocks, "Selected block directory /home/b1 shall be within program installed directory."};
        QTest::newRow("installed directory itself") << "pb_blk_depend_add" << QStringList{"/opt/zema"}
                                                    << "lb_depend_blk" << QStringList{} << QStringList{blocks};
        QTest::newRow("root text inside a path counts as inside") << "pb_blk_depend_add" << QStringList{"/data/opt/zema/b2"}
                                                                  << "lb_depend_blk" << QStringList{"data/b2"}
                                                                  << QStringList{blocks};
        QTest::newRow("files stop at the first outside")
            << "pb_cdepend_add" << QStringList{"/opt/zema/src/a.cpp", "/tmp/b.cpp", "/opt/zema/src/c.cpp"}
            << "lb_depend_code" << QStringList{"src/a.cpp"}
            << QStringList{files, "Selected file directory /tmp/b.cpp shall be within program installed directory."};
        QTest::newRow("folder outside")
            << "pb_cdepend_add_dir" << QStringList{"/srv/lib"} << "lb_depend_code" << QStringList{}
            << QStringList{folder, "Selected directory /srv/lib shall be within program installed directory."};
    }

    void addButtons()
    {
        QFETCH(QString, button);
        QFETCH(QStringList, choice);
        QFETCH(QString, list);
        QFETCH(QStringList, items);
        QFETCH(QStringList, texts);
        PageWindow w("/opt/zema");
        w.answers->choices = {choice};
        MiscConfigDlg page(w.get());
        page.LoadMiscData(QString(), nullptr);
        Child<QPushButton>(&page, button)->click();
        QCOMPARE(Items(Child<QListWidget>(&page, list)), items);
        QCOMPARE(w.answers->texts, texts);
    }

    void intrinsicCombos()
    {
        QTemporaryDir tmp;
        PageWindow w(tmp.path());
        BlockData *block = PageWindow::NewBlockRecord("blk");
        AddNames(block);
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        auto *table = Child<TableWidget>(w->misc_page, "code_intrins_var_table");
        auto open = [table](int row, int col) {
            table->CellClicked(row, col);
            table->CellDoubleClicked(row, col);
            QStringList texts;
            for (int i = 0; table->combo && i < table->combo->count(); ++i)
                texts << table->combo->itemText(i);
            return texts;
        };
        // No group chosen: no editor for the entity, and the cell stays as it was.
        QCOMPARE(open(0, 2), QStringList{});
        QVERIFY(!table->item(0, 2));
        QCOMPARE(open(0, 1), (QStringList{"<Select>", "G", "H"}));
        table->combo->setCurrentIndex(1);
        table->CommitCell(-1, true);
        QCOMPARE(open(0, 2), (QStringList{"<Select>", "E", "F"}));
        table->CommitCell(-1, true);
        QCOMPARE(table->item(0, 2)->text(), QString());
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
        QTest::newRow("negative decimal") << QStringList{} << "-2.5" << QStringList{} << QStringList{};
        QTest::newRow("invalid string") << QStringList{} << "[Step]+[_SimStepSize]" << QStringList{}
                                        << QStringList{cpu + "invalid string Step"};
        QTest::newRow("missing brace") << QStringList{} << "[G#E" << QStringList{} << QStringList{cpu + "missing square braces"};
        QTest::newRow("two # end the check") << QStringList{} << "[Nope#1]+[a#b#c]+[Step]" << QStringList{}
                                             << QStringList{cpu + "non-matching variable 'Nope#1'", cpu + "invalid syntax related to #"};
        QTest::newRow("bad parameter and port dimension") << QStringList{} << "[G#X]*[P#5]+[P#x]" << QStringList{}
                                                          << QStringList{cpu + "non-matching variable 'G#X'",
                                                                         cpu + "non-matching variable 'P#5'",
                                                                         cpu + "non-matching variable 'P#x'"};
        QTest::newRow("conditions, first row is 0")
            << QStringList{} << ""
            << QStringList{" $text", "[G#E > 1$t", "([G#E] > 1$t", "[G] > [P#1] + [x#y] + [G#E#z]$", "[G#E] > 1$ok", "bare"}
            << QStringList{cond.arg(0) + "empty Condition field", cond.arg(1) + "invalid syntax related to '[]'",
                           cond.arg(2) + "invalid syntax related to '()'", cond.arg(3) + "invalid syntax related to #",
                           cond.arg(3) + "non-matching variable 'x#y'", cond.arg(3) + "empty Error Text field",
                           cond.arg(5) + "empty Error Text field"};
        QTest::newRow("intrinsic variables, then the others")
            << QStringList{"_SimStepSize|Nope|E", "_ZeroCrossing|G|X"} << "[Step]" << QStringList{"$t"}
            << QStringList{"Code: Parameter group name 'Nope' mentioned in instrinsic variable table does not exists",
                           "Code: Parameter entity name 'X' mentioned in instrinsic variable table does not exists",
                           cpu + "invalid string Step", cond.arg(0) + "empty Condition field"};
    }

    void validation()
    {
        QFETCH(QStringList, vars);
        QFETCH(QString, cpu_ops);
        QFETCH(QStringList, conds);
        QFETCH(QStringList, messages);
        QTemporaryDir tmp;
        PageWindow w(tmp.path());
        BlockData *block = PageWindow::NewBlockRecord("blk");
        AddNames(block);
        for (const QString &var : vars)
            block->misc->char_vars.append(new BlkCharVar{var.section('|', 0, 0), var.section('|', 1, 1), var.section('|', 2)});
        block->misc->cpu_ops = cpu_ops;
        block->misc->para_cond = conds;
        const bool opened = w.OpenBlock(block, tmp.path(), "blk");
        FreeBlockData(block);
        QVERIFY(opened);
        QStringList rows;
        for (const QString &message : messages)
            rows << QString("%1. Error: %2").arg(rows.size() + 1).arg(message);
        QCOMPARE(w.ValidationRows(), rows);
    }
};

ZEMA_TEST(tst_MiscConfigDlg)
#include "tst_MiscConfigDlg.moc"
