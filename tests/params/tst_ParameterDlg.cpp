// The parameter page: entity controls on the real Configuration table, model tables, range checks,
// line edit write-back and the OK road of the modal dialog.
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "app/Prompt.h"
#include "pages/BlkMiscData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"
#include "params/ParameterDlg.h"
#include "params/Para_ComboBox.h"
#include "params/Para_LineEdit.h"
#include "schematics/WspData.h"

#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QtTest>
#include <memory>

using Dialog = std::unique_ptr<ParameterDlg>;

// The Configuration tab as the main window makes it, with "Hardware Block" under licence.
static Dialog ConfigDlg(bool unlocked, void (*prepare)(BlkParaData *) = nullptr)
{
    BlkParaData *config = BuildConfigurationEntities(0);
    FindEntity(config, "Basic", "Hardware Block")->license = 1;
    if (prepare)
        prepare(config);
    return Dialog(new ParameterDlg(false, config, unlocked, true, false, QString(), QString(), QString()));
}

// A table "T" of one group "G" with one numeric line edit "E".
static BlkParaData *OneEntity(ParaEntity *&entity)
{
    auto *data = new BlkParaData{"T", {new ParaGroup{"G", QString(), {new ParaEntity("E")}}}, {}};
    entity = data->para_grp[0]->para_entity[0];
    entity->val_type = "Real64";
    return data;
}

static QComboBox *Combo(const ParaEntity *entity) { return qobject_cast<QComboBox *>(entity->editor); }

class tst_ParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }

    void configurationForm()
    {
        const Dialog dlg = ConfigDlg(false);
        auto *id = qobject_cast<QLineEdit *>(FindEntity(dlg->data, "Basic", "Block ID")->editor);
        QVERIFY(id && id->isReadOnly() && id->text().toUInt() > 0);
        auto *auth = qobject_cast<QLineEdit *>(FindEntity(dlg->data, AuthGroupHeader(), AuthEntityLabels()[0])->editor);
        QCOMPARE(auth->echoMode(), QLineEdit::Password);
        QVERIFY(dlg->ok_button->isHidden() && dlg->help_button->isHidden() && dlg->body != dlg.get());
        // Stored selections are applied at construction: a Primary block is no workspace block.
        QVERIFY(!FindEntity(dlg->data, "Advanced", "Is Workspace Block")->editor->isEnabled());

        const int vendor = dlg->data->para_grp.indexOf(FindGroup(dlg->data, "Vendor Specific"));
        auto *grid = qobject_cast<QScrollArea *>(dlg->stack->widget(vendor))->widget()->findChild<QGridLayout *>();
        QStringList rows;
        for (int row = 0; row < 7; ++row)
            rows << (grid->itemAtPosition(row, 0) && grid->itemAtPosition(row, 1) ? "shown" : "empty");
        QCOMPARE(rows.join(","), QString("shown,shown,empty,empty,empty,empty,empty"));
    }

    void secondaryAndBack_data()
    {
        QTest::addColumn<bool>("unlocked");
        QTest::newRow("licence entity stays disabled") << false;
        QTest::newRow("unlocked") << true;
    }

    void secondaryAndBack()
    {
        QFETCH(bool, unlocked);
        const Dialog dlg = ConfigDlg(unlocked);
        const QList<QStringList> pinned = {
            {"Basic", "Linear/Non-Linear Block", "Linear"}, {"Basic", "Zero Crossing Detection", "Disable"},
            {"Code-Physical Ports", "Step DeltaG Detection", "Not Required"},
            {"Code-Physical Ports", "Supports Decoupling", "No"}, {"Basic", "Has Private Data", "No"},
            {"Basic", "Hardware Block", "No"}};
        const QStringList code_groups = {"Code-Basic", "Code-Physical Ports", "Code-Signal Ports"};
        Combo(FindEntity(dlg->data, "Basic", "Linear/Non-Linear Block"))->setCurrentIndex(1);
        ParaEntity *kind = FindEntity(dlg->data, "Basic", "Block Primary/Secondary");
        ParaEntity *workspace = FindEntity(dlg->data, "Advanced", "Is Workspace Block");
        QCOMPARE(FindEntity(dlg->data, "Basic", "Hardware Block")->editor->isEnabled(), unlocked);

        Combo(kind)->setCurrentIndex(1);
        QCOMPARE(kind->sel_val + QString::number(kind->sel_idx), QString("Secondary1"));
        for (const QStringList &pin : pinned) {
            const ParaEntity *entity = FindEntity(dlg->data, pin[0], pin[1]);
            QVERIFY2(entity->sel_val == pin[2] && Combo(entity)->currentText() == pin[2]
                         && !entity->editor->isEnabled() && !entity->usr_enable, qPrintable(pin[1]));
        }
        for (const QString &header : code_groups)
            for (const ParaEntity *entity : FindGroup(dlg->data, header)->para_entity)
                QVERIFY2(!entity->editor->isEnabled() && !entity->usr_enable, qPrintable(entity->label));
        QVERIFY(workspace->editor->isEnabled());
        Combo(workspace)->setCurrentIndex(1);
        QCOMPARE(workspace->sel_val, QString("Yes"));

        Combo(kind)->setCurrentIndex(0);
        for (const QStringList &pin : pinned)
            QVERIFY2(FindEntity(dlg->data, pin[0], pin[1])->editor->isEnabled() == (unlocked || pin[1] != "Hardware Block"),
                     qPrintable(pin[1]));
        // Only what the table enables comes back ("Class or Structure/Function" is the vendor's).
        for (const QString &header : code_groups)
            for (const ParaEntity *entity : FindGroup(dlg->data, header)->para_entity)
                QVERIFY2(entity->editor->isEnabled() == bool(entity->enable) && entity->usr_enable == entity->enable,
                         qPrintable(entity->label));
        QVERIFY(workspace->sel_val == "No" && Combo(workspace)->currentText() == "No"
                && !workspace->editor->isEnabled() && !workspace->usr_enable);
    }

    void unresolvedControlsAreDropped()
    {
        const Dialog dlg = ConfigDlg(false, [](BlkParaData *config) {
            ParaEntity *kind = FindEntity(config, "Basic", "Block Primary/Secondary");
            for (const QStringList &target : {QStringList{"Basic", "No Such Entity"}, {"No Such Group", ""}, {"", ""}})
                kind->para_con.append(new ParaCon{target[0], target[1], "x", "Disable", 1});
        });
        const QList<ParaCon *> &cons = FindEntity(dlg->data, "Basic", "Block Primary/Secondary")->para_con;
        QCOMPARE(cons.size(), 10);
        for (const ParaCon *con : cons)
            QVERIFY(con->label.isEmpty() ? con->target_group != nullptr : con->target_entity != nullptr);
    }

    void checkEntityRange_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("val_size");
        QTest::addColumn<QString>("lt");
        QTest::addColumn<QString>("val_type");
        QTest::addColumn<QString>("range");  // empty: accepted; the lower bound is always 0
        QTest::newRow("empty reads as zero") << "" << "" << "" << "Real64" << ">0";
        QTest::newRow("lower bound exclusive") << "0" << "" << "10" << "Real64" << ">0";
        QTest::newRow("upper bound exclusive") << "10" << "" << "10" << "Real64" << "<10";
        QTest::newRow("size 2 checks two") << "1,2,-3" << "2" << "" << "Real64" << "";
        QTest::newRow("size from script") << "1,-2,3" << "1+1" << "" << "Real64" << ">0";
        QTest::newRow("size above count") << "1,-2" << "5" << "" << "Real64" << ">0";
        QTest::newRow("both bounds appended") << "-1,20" << "2" << "10" << "Real64" << ">0 and <10";
        QTest::newRow("last failure overwrites") << "20,-1" << "2" << "10" << "Real64" << ">0";
        QTest::newRow("text type passes") << "" << "" << "" << "String" << "";
    }

    void checkEntityRange()
    {
        QFETCH(QString, range);
        ParaEntity *entity = nullptr;
        ParameterDlg dlg(true, OneEntity(entity), false, true, false, QString(), QString(), QString());
        entity->sel_val_gt = "0";
        QFETCH(QString, value);
        entity->sel_val = value;
        QFETCH(QString, val_size);
        entity->val_size = val_size;
        QFETCH(QString, lt);
        entity->sel_val_lt = lt;
        QFETCH(QString, val_type);
        entity->val_type = val_type;
        QString message;
        QCOMPARE(dlg.CheckEntityRange(0, 0, message), range.isEmpty());
        QCOMPARE(message, range.isEmpty() ? QString() : "Entered value of G->E is out of range. Valid Range " + range);
        // A disabled editor is not checked at all.
        entity->editor->setEnabled(false);
        QVERIFY(dlg.CheckEntityRange(0, 0, message));
    }

    void lineEditWritesBackOnlyWhenEdited()
    {
        ParaEntity *entity = nullptr;
        ParameterDlg dlg(true, OneEntity(entity), false, true, false, QString(), QString(), QString());
        auto *edit = qobject_cast<Para_LineEdit *>(entity->editor);
        QFocusEvent focus_in(QEvent::FocusIn), focus_out(QEvent::FocusOut);

        edit->setText("by program");
        QCOMPARE(entity->sel_val, QString());
        QApplication::sendEvent(edit, &focus_in);
        QTest::keyClicks(edit, "12");
        QCOMPARE(entity->sel_val, QString("by program12"));
        QTest::keyClick(edit, Qt::Key_Return);
        edit->setText("after return");
        QVERIFY(!edit->edited && entity->sel_val == "by program12");

        QApplication::sendEvent(edit, &focus_in);
        dlg.ready = 0;
        QTest::keyClicks(edit, "3");
        QCOMPARE(entity->sel_val, QString("by program12"));
        QApplication::sendEvent(edit, &focus_out);
        QVERIFY(!edit->edited && entity->sel_val == "after return3");

        // A dialog that owns its record goes with the focus still in a field.
        auto *owner = new ParameterDlg(true, OneEntity(entity), false, true, false, QString(), QString(), QString());
        owner->show();
        QApplication::setActiveWindow(owner);
        QVERIFY(QTest::qWaitForWindowActive(owner));
        entity->editor->setFocus();
        QTest::keyClicks(entity->editor, "7");
        QVERIFY(qobject_cast<Para_LineEdit *>(entity->editor)->edited);
        delete owner;
    }

    void modelSelectionFillsDependents()
    {
        auto *data = new BlkParaData{"M", {new ParaGroup{"M", QString(), {}}}, {}};
        for (const char *label : {"Type", "R", "C"})
            data->para_grp[0]->para_entity.append(new ParaEntity(label));
        auto [type, r, c] = std::tuple(data->para_grp[0]->para_entity[0], data->para_grp[0]->para_entity[1],
                                       data->para_grp[0]->para_entity[2]);
        type->sel_idx = 5;                  // outside the model list: the first model
        r->values = QStringList{"x", "y"};  // a dependent loses its own list
        data->model_cat.append(new ModelCat{{new ModelSubCat{"M", "Type", {"A", "B"}},
                                             new ModelSubCat{"M", "Missing", {"1", "2"}},
                                             new ModelSubCat{"M", "R", {"1k", "2k"}},
                                             new ModelSubCat{"M", "C", {"1u", "2u"}}}});

        ParameterDlg dlg(true, data, false, true, false, QString(), QString(), QString());
        auto *r_edit = qobject_cast<Para_LineEdit *>(r->editor);
        QVERIFY(r_edit && Combo(type) && Combo(type)->count() == 2);
        QCOMPARE(QStringList({type->sel_val, QString::number(type->sel_idx), r->sel_val, r_edit->text()}),
                 QStringList({"A", "0", "1k", "1k"}));
        Combo(type)->setCurrentIndex(1);
        QCOMPARE(QStringList({r->sel_val, r_edit->text(), c->sel_val, QString::number(c->sel_idx)}),
                 QStringList({"2k", "2k", "2u", "1"}));
    }

    void okPressed_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("conditions");
        QTest::addColumn<QStringList>("shown");  // empty: accepted
        const QString head = "T (Ref.Id:7 Id:9) Item: Following errors are present";
        QTest::newRow("in range") << "5" << QStringList{"[G#E] > 9$too big", "no separator"} << QStringList{};
        QTest::newRow("out of range") << "-1" << QStringList{}
            << QStringList{head, "1. Error: Entered value of G->E is out of range. Valid Range >0"};
        QTest::newRow("condition holds") << "12" << QStringList{"[G#E] > 9$too big", "0$never"}
                                         << QStringList{head, "1. Error: too big"};
    }

    void okPressed()
    {
        QFETCH(QStringList, shown);
        auto *script = new ScriptedAnswerer;
        Prompt::SetAnswerer(std::unique_ptr<Answerer>(script));
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(new BlockData, FreeBlockData);
        block->misc = new BlkMiscData;
        QFETCH(QStringList, conditions);
        block->misc->para_cond = conditions;
        WSP_BLK_ITEM_STRUCT item;
        item.ref_id = 7;
        item.id = 9;
        item.blockdef = block.get();
        ParaEntity *entity = nullptr;
        ParameterDlg dlg(true, OneEntity(entity), false, true, false, QString(), "Item", QString(), nullptr, &item);
        QFETCH(QString, value);
        entity->sel_val = value;
        entity->sel_val_gt = "0";
        dlg.show();
        dlg.OKPressed();
        QCOMPARE(script->texts, shown);
        QCOMPARE(dlg.result() == QDialog::Accepted, shown.isEmpty());
        QCOMPARE(dlg.isVisible(), !shown.isEmpty());
    }
};

ZEMA_TEST(tst_ParameterDlg)
#include "tst_ParameterDlg.moc"
