// The parameter page: entity controls on the real Configuration table, model tables, range checks,
// line edit write-back and the OK road of the modal dialog.
#include "TestRegistry.h"

#include "app/BlockData.h"
#include "app/Prompt.h"
#include "pages/BlkMiscData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"
#include "params/ParameterDlg.h"
#include "params/Para_LineEdit.h"
#include "schematics/WspData.h"

#include <QComboBox>
#include <QtTest>

using Dialog = std::unique_ptr<ParameterDlg>;

// A modal dialog owning a table "T" of one group "G" with one numeric line edit "E", valid in (0, 10).
static Dialog OneEntityDlg(ParaEntity *&entity, WSP_BLK_ITEM_STRUCT *item = nullptr)
{
    auto *data = new BlkParaData{"T", {new ParaGroup{"G", QString(), {new ParaEntity("E")}}}, {}};
    entity = data->para_grp[0]->para_entity[0];
    entity->val_type = "Real64";
    entity->sel_val_gt = "0";
    entity->sel_val_lt = "10";
    return Dialog(new ParameterDlg(true, data, false, true, false, QString(), "Item", QString(), nullptr, item));
}

static QComboBox *Combo(const ParaEntity *entity) { return qobject_cast<QComboBox *>(entity->editor); }

class tst_ParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }

    void configurationForm()
    {
        // Controls whose target is missing are dropped for good, so the next save loses them.
        BlkParaData *config = BuildConfigurationEntities(0);
        ParaEntity *kind = FindEntity(config, "Basic", "Block Primary/Secondary");
        for (const QStringList &target : {QStringList{"Basic", "No Such Entity"}, {"No Such Group", ""}, {"", ""}})
            kind->para_con.append(new ParaCon{target[0], target[1], "x", "Disable", 1});
        const Dialog dlg(new ParameterDlg(false, config, false, true, false, QString(), QString(), QString()));
        QCOMPARE(kind->para_con.size(), 10);
        auto *auth = qobject_cast<QLineEdit *>(FindEntity(config, AuthGroupHeader(), AuthEntityLabels()[0])->editor);
        QCOMPARE(auth->echoMode(), QLineEdit::Password);
        // Stored selections are applied at construction: a Primary block is no workspace block.
        QVERIFY(!FindEntity(config, "Advanced", "Is Workspace Block")->editor->isEnabled());
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
        BlkParaData *config = BuildConfigurationEntities(0);
        ParaEntity *kind = FindEntity(config, "Basic", "Block Primary/Secondary");
        ParaEntity *linear = FindEntity(config, "Basic", "Linear/Non-Linear Block");
        ParaEntity *hardware = FindEntity(config, "Basic", "Hardware Block");
        hardware->license = 1;
        const Dialog dlg(new ParameterDlg(false, config, unlocked, true, false, QString(), QString(), QString()));
        // "Code-Basic" is disabled as a group; its "Class or Structure/Function" is the vendor's.
        QList<ParaEntity *> controlled = FindGroup(config, "Code-Basic")->para_entity;
        controlled << linear << hardware;
        Combo(linear)->setCurrentIndex(1);
        Combo(kind)->setCurrentIndex(1);
        QVERIFY(linear->sel_val == "Linear" && Combo(linear)->currentText() == "Linear");
        for (const ParaEntity *entity : controlled)
            QVERIFY2(!entity->editor->isEnabled() && !entity->usr_enable, qPrintable(entity->label));

        Combo(kind)->setCurrentIndex(0);
        // Only what the table enables comes back, and the licensed entity only when unlocked.
        for (const ParaEntity *entity : controlled)
            QVERIFY2(entity->editor->isEnabled() == (entity->enable && (unlocked || entity != hardware))
                         && entity->usr_enable == entity->enable, qPrintable(entity->label));
    }

    void checkEntityRange_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("val_size");
        QTest::addColumn<QString>("range");  // empty: accepted
        QTest::newRow("empty reads as zero") << "" << "" << ">0";
        QTest::newRow("bounds exclusive, both appended") << "0,10" << "2" << ">0 and <10";
        QTest::newRow("last failure overwrites") << "20,-1" << "2" << ">0";
        QTest::newRow("size 2 checks two") << "1,2,-3" << "2" << "";
        QTest::newRow("size from script") << "1,-2,3" << "1+1" << ">0";
        QTest::newRow("size above count") << "1,-2" << "5" << ">0";
    }

    void checkEntityRange()
    {
        QFETCH(QString, range);
        ParaEntity *entity = nullptr;
        const Dialog dlg = OneEntityDlg(entity);
        QFETCH(QString, value);
        entity->sel_val = value;
        QFETCH(QString, val_size);
        entity->val_size = val_size;
        QString message;
        QCOMPARE(dlg->CheckEntityRange(0, 0, message), range.isEmpty());
        QCOMPARE(message, range.isEmpty() ? QString() : "Entered value of G->E is out of range. Valid Range " + range);
        entity->editor->setEnabled(false);  // a disabled editor is not checked at all
        QVERIFY(dlg->CheckEntityRange(0, 0, message));
    }

    void lineEditWritesBackOnlyWhenEdited()
    {
        ParaEntity *entity = nullptr;
        Dialog dlg = OneEntityDlg(entity);
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
        // Not ready: nothing is written while typing, but leaving the field copies the text.
        QApplication::sendEvent(edit, &focus_in);
        dlg->ready = 0;
        QTest::keyClicks(edit, "3");
        QCOMPARE(entity->sel_val, QString("by program12"));
        QApplication::sendEvent(edit, &focus_out);
        QVERIFY(!edit->edited && entity->sel_val == "after return3");

        // A dialog that owns its record goes with the focus still in a field.
        dlg->show();
        QApplication::setActiveWindow(dlg.get());
        QVERIFY(QTest::qWaitForWindowActive(dlg.get()));
        edit->setFocus();
        QTest::keyClicks(edit, "7");
        QVERIFY(edit->edited);
        dlg.reset();
    }

    void modelSelectionFillsDependents()
    {
        ParaEntity *type = new ParaEntity("Type"), *r = new ParaEntity("R");
        auto *data = new BlkParaData{"M", {new ParaGroup{"M", QString(), {type, r}}}, {}};
        type->sel_idx = 5;                  // outside the model list: the first model
        r->values = QStringList{"x", "y"};  // a dependent loses its own list
        data->model_cat.append(new ModelCat{{new ModelSubCat{"M", "Type", {"A", "B"}},
                                             new ModelSubCat{"M", "Missing", {"1", "2"}},
                                             new ModelSubCat{"M", "R", {"1k", "2k"}}}});
        ParameterDlg dlg(true, data, false, true, false, QString(), QString(), QString());
        auto *r_edit = qobject_cast<Para_LineEdit *>(r->editor);
        QVERIFY(r_edit && Combo(type) && Combo(type)->count() == 2);
        QCOMPARE(QString("%1 %2 %3").arg(type->sel_val).arg(type->sel_idx).arg(r->sel_val), QString("A 0 1k"));
        Combo(type)->setCurrentIndex(1);
        QCOMPARE(QString("%1 %2 %3").arg(r->sel_val).arg(r->sel_idx).arg(r_edit->text()), QString("2k 1 2k"));
    }

    void okPressed()
    {
        auto *script = new ScriptedAnswerer;
        Prompt::SetAnswerer(std::unique_ptr<Answerer>(script));
        BlkMiscData misc;
        misc.para_cond = QStringList{"[G#E] < 0$negative", "0$never", "1 without separator"};
        BlockData block;
        block.misc = &misc;
        WSP_BLK_ITEM_STRUCT item;
        item.ref_id = 7;
        item.blockdef = &block;
        ParaEntity *entity = nullptr;
        const Dialog dlg = OneEntityDlg(entity, &item);
        entity->sel_val = "-1";
        dlg->OKPressed();
        // Range errors come first, then the block's conditions that hold.
        QCOMPARE(script->texts, QStringList({"T (Ref.Id:7 Id:0) Item: Following errors are present",
                                             "1. Error: Entered value of G->E is out of range. Valid Range >0",
                                             "2. Error: negative"}));
        QVERIFY(dlg->result() != QDialog::Accepted);
        script->texts.clear();
        entity->sel_val = "5";
        dlg->OKPressed();
        QVERIFY(script->texts.isEmpty() && dlg->result() == QDialog::Accepted);
    }
};

ZEMA_TEST(tst_ParameterDlg)
#include "tst_ParameterDlg.moc"
