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

#include <QDesktopServices>
#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QtTest>
#include <memory>

using Dialog = std::unique_ptr<ParameterDlg>;

// The Configuration tab as the main window makes it; `prepare` edits the table before the form.
static Dialog ConfigDlg(bool unlocked = false, void (*prepare)(BlkParaData *) = nullptr)
{
    BlkParaData *config = BuildConfigurationEntities(0);
    if (prepare)
        prepare(config);
    return Dialog(new ParameterDlg(false, config, unlocked, true, false, QString(), QString(), QString()));
}

// One group "G" with one numeric line edit "E".
static BlkParaData *NumericTable(ParaEntity **entity)
{
    auto *data = new BlkParaData;
    data->title = "T";
    data->para_grp.append(new ParaGroup{"G", QString(), {}});
    *entity = new ParaEntity("E");
    (*entity)->val_type = "Real64";
    data->para_grp[0]->para_entity.append(*entity);
    return data;
}

static ParaEntity *Entity(const Dialog &dlg, const QString &header, const QString &label)
{
    ParaEntity *entity = FindEntity(dlg->data, header, label);
    if (!entity)
        qFatal("no entity %s", qPrintable(label));
    return entity;
}

static const QStringList kCodeGroups = {"Code-Basic", "Code-Physical Ports", "Code-Signal Ports"};
static const QList<QStringList> kPinnedBySecondary = {
    {"Basic", "Linear/Non-Linear Block", "Linear"}, {"Basic", "Zero Crossing Detection", "Disable"},
    {"Code-Physical Ports", "Step DeltaG Detection", "Not Required"},
    {"Code-Physical Ports", "Supports Decoupling", "No"}, {"Basic", "Has Private Data", "No"},
    {"Basic", "Hardware Block", "No"}};

class tst_ParameterDlg : public QObject
{
    Q_OBJECT
public slots:
    void Open(const QUrl &url) { opened << url; }

private:
    QList<QUrl> opened;

private slots:
    void cleanup() { Prompt::SetAnswerer(std::make_unique<DialogAnswerer>()); }

    void configurationForm()
    {
        const Dialog dlg = ConfigDlg();
        auto *id = qobject_cast<QLineEdit *>(Entity(dlg, "Basic", "Block ID")->editor);
        QVERIFY(id && id->isReadOnly() && id->text().toUInt() > 0);
        auto *auth = qobject_cast<QLineEdit *>(Entity(dlg, AuthGroupHeader(), AuthEntityLabels()[0])->editor);
        QCOMPARE(auth->echoMode(), QLineEdit::Password);
        QVERIFY(dlg->ok_button->isHidden() && dlg->help_button->isHidden() && dlg->body != dlg.get());
        // Stored selections are applied at construction: a Primary block is no workspace block.
        QVERIFY(!Entity(dlg, "Advanced", "Is Workspace Block")->editor->isEnabled());

        const int vendor = dlg->data->para_grp.indexOf(FindGroup(dlg->data, "Vendor Specific"));
        auto *grid = qobject_cast<QScrollArea *>(dlg->stack->widget(vendor))->widget()->findChild<QGridLayout *>();
        QStringList rows;
        for (int row = 0; row < 7; ++row)
            rows << (grid->itemAtPosition(row, 1) ? "shown" : "empty");
        QCOMPARE(rows.join(","), QString("shown,shown,empty,empty,empty,empty,empty"));
    }

    void secondaryAndBack()
    {
        const Dialog dlg = ConfigDlg();
        qobject_cast<QComboBox *>(Entity(dlg, "Basic", "Linear/Non-Linear Block")->editor)->setCurrentIndex(1);
        ParaEntity *kind = Entity(dlg, "Basic", "Block Primary/Secondary");
        auto *kind_combo = qobject_cast<QComboBox *>(kind->editor);

        kind_combo->setCurrentIndex(1);
        QCOMPARE(kind->sel_val + QString::number(kind->sel_idx), QString("Secondary1"));
        for (const QStringList &pin : kPinnedBySecondary) {
            ParaEntity *entity = Entity(dlg, pin[0], pin[1]);
            QVERIFY2(entity->sel_val == pin[2] && qobject_cast<QComboBox *>(entity->editor)->currentText() == pin[2]
                         && !entity->editor->isEnabled() && !entity->usr_enable, qPrintable(pin[1]));
        }
        for (const QString &header : kCodeGroups)
            for (const ParaEntity *entity : FindGroup(dlg->data, header)->para_entity)
                QVERIFY2(!entity->editor->isEnabled() && !entity->usr_enable, qPrintable(entity->label));
        ParaEntity *workspace = Entity(dlg, "Advanced", "Is Workspace Block");
        QVERIFY(workspace->editor->isEnabled());
        qobject_cast<QComboBox *>(workspace->editor)->setCurrentIndex(1);
        QCOMPARE(workspace->sel_val, QString("Yes"));

        kind_combo->setCurrentIndex(0);
        QCOMPARE(kind->sel_val, QString("Primary"));
        for (const QStringList &pin : kPinnedBySecondary)
            QVERIFY2(Entity(dlg, pin[0], pin[1])->editor->isEnabled(), qPrintable(pin[1]));
        for (const QString &header : kCodeGroups)
            for (const ParaEntity *entity : FindGroup(dlg->data, header)->para_entity)
                QVERIFY2(entity->editor->isEnabled() == bool(entity->enable) && entity->usr_enable == entity->enable,
                         qPrintable(entity->label));
        QVERIFY(workspace->sel_val == "No" && !workspace->editor->isEnabled() && !workspace->usr_enable);
    }

    void licenseEntity_data()
    {
        QTest::addColumn<bool>("unlocked");
        QTest::newRow("locked stays disabled") << false;
        QTest::newRow("unlocked follows enable") << true;
    }

    void licenseEntity()
    {
        QFETCH(bool, unlocked);
        const Dialog dlg = ConfigDlg(unlocked, [](BlkParaData *config) {
            FindEntity(config, "Basic", "Hardware Block")->license = 1;
        });
        QWidget *hardware = Entity(dlg, "Basic", "Hardware Block")->editor;
        QCOMPARE(hardware->isEnabled(), unlocked);
        auto *kind = qobject_cast<QComboBox *>(Entity(dlg, "Basic", "Block Primary/Secondary")->editor);
        kind->setCurrentIndex(1);
        kind->setCurrentIndex(0);
        QCOMPARE(hardware->isEnabled(), unlocked);
    }

    void unresolvedControlsAreDropped()
    {
        const Dialog dlg = ConfigDlg(false, [](BlkParaData *config) {
            ParaEntity *kind = FindEntity(config, "Basic", "Block Primary/Secondary");
            for (const QStringList &target : {QStringList{"Basic", "No Such Entity"}, {"No Such Group", ""}, {"", ""}})
                kind->para_con.append(new ParaCon{target[0], target[1], "x", "Disable", 1});
        });
        const QList<ParaCon *> &cons = Entity(dlg, "Basic", "Block Primary/Secondary")->para_con;
        QCOMPARE(cons.size(), 10);
        for (const ParaCon *con : cons)
            QVERIFY(con->label.isEmpty() ? con->target_group != nullptr : con->target_entity != nullptr);
    }

    void checkEntityRange_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("val_size");
        QTest::addColumn<QString>("gt");
        QTest::addColumn<QString>("lt");
        QTest::addColumn<QString>("val_type");
        QTest::addColumn<QString>("range");  // empty: accepted
        QTest::newRow("empty reads as zero") << "" << "" << "0" << "" << "Real64" << ">0";
        QTest::newRow("lower bound exclusive") << "0" << "" << "0" << "10" << "Real64" << ">0";
        QTest::newRow("upper bound exclusive") << "10" << "" << "0" << "10" << "Real64" << "<10";
        QTest::newRow("inside") << "9.5" << "" << "0" << "10" << "Real64" << "";
        QTest::newRow("size 2 checks two") << "1,2,-3" << "2" << "0" << "" << "Real64" << "";
        QTest::newRow("size from script") << "1,-2,3" << "1+1" << "0" << "" << "Real64" << ">0";
        QTest::newRow("size above count") << "1,-2" << "5" << "0" << "" << "Real64" << ">0";
        QTest::newRow("both bounds appended") << "-1,20" << "2" << "0" << "10" << "Real64" << ">0 and <10";
        QTest::newRow("last failure overwrites") << "20,-1" << "2" << "0" << "10" << "Real64" << ">0";
        QTest::newRow("text type passes") << "" << "" << "0" << "" << "String" << "";
    }

    void checkEntityRange()
    {
        QFETCH(QString, value);
        QFETCH(QString, val_type);
        QFETCH(QString, range);
        ParaEntity *entity = nullptr;
        BlkParaData *data = NumericTable(&entity);
        entity->sel_val = value;
        entity->val_type = val_type;
        QFETCH(QString, val_size);
        QFETCH(QString, gt);
        QFETCH(QString, lt);
        entity->val_size = val_size;
        entity->sel_val_gt = gt;
        entity->sel_val_lt = lt;
        ParameterDlg dlg(true, data, false, true, false, QString(), QString(), QString());
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
        ParameterDlg dlg(true, NumericTable(&entity), false, true, false, QString(), QString(), QString());
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
    }

    void modelSelectionFillsDependents()
    {
        auto *data = new BlkParaData;
        data->para_grp.append(new ParaGroup{"M", QString(), {}});
        for (const char *label : {"Type", "R", "C"})
            data->para_grp[0]->para_entity.append(new ParaEntity(label));
        ParaEntity *type = data->para_grp[0]->para_entity[0];
        ParaEntity *r = data->para_grp[0]->para_entity[1];
        type->sel_idx = 5;                // outside the model list: falls back to the first model
        r->values = QStringList{"x", "y"};  // a dependent loses its own list
        auto *cat = new ModelCat;
        cat->subcats = {new ModelSubCat{"M", "Type", {"A", "B"}}, new ModelSubCat{"M", "Missing", {"1", "2"}},
                        new ModelSubCat{"M", "R", {"1k", "2k"}}, new ModelSubCat{"M", "C", {"1u", "2u"}}};
        data->model_cat.append(cat);

        ParameterDlg dlg(true, data, false, true, false, QString(), QString(), QString());
        auto *combo = qobject_cast<Para_ComboBox *>(type->editor);
        auto *r_edit = qobject_cast<Para_LineEdit *>(r->editor);
        QVERIFY(combo && r_edit);
        QCOMPARE(combo->count(), 2);
        QCOMPARE(QStringList({type->sel_val, QString::number(type->sel_idx), r->sel_val, r_edit->text()}),
                 QStringList({"A", "0", "1k", "1k"}));
        combo->setCurrentIndex(1);
        ParaEntity *c = data->para_grp[0]->para_entity[2];
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
        QTest::newRow("out of range")
            << "-1" << QStringList{}
            << QStringList{head, "1. Error: Entered value of G->E is out of range. Valid Range >0"};
        QTest::newRow("condition holds") << "12" << QStringList{"[G#E] > 9$too big", "0$never"}
                                         << QStringList{head, "1. Error: too big"};
    }

    void okPressed()
    {
        QFETCH(QString, value);
        QFETCH(QStringList, conditions);
        QFETCH(QStringList, shown);
        auto answerer = std::make_unique<ScriptedAnswerer>();
        ScriptedAnswerer *script = answerer.get();
        Prompt::SetAnswerer(std::move(answerer));
        ParaEntity *entity = nullptr;
        BlkParaData *data = NumericTable(&entity);
        entity->sel_val = value;
        entity->sel_val_gt = "0";
        std::unique_ptr<BlockData, void (*)(BlockData *)> block(new BlockData, FreeBlockData);
        block->misc = new BlkMiscData;
        block->misc->para_cond = conditions;
        WSP_BLK_ITEM_STRUCT item;
        item.ref_id = 7;
        item.id = 9;
        item.blockdef = block.get();

        ParameterDlg dlg(true, data, false, true, false, QString(), "Item", QString(), nullptr, &item);
        dlg.show();
        dlg.OKPressed();
        QCOMPARE(script->texts, shown);
        QCOMPARE(dlg.result() == QDialog::Accepted, shown.isEmpty());
        QCOMPARE(dlg.isVisible(), !shown.isEmpty());
    }

    void helpOpensPageOfHelpName()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath("doc/page"));
        QFile index(dir.path() + "/doc/page/index.htm");
        QVERIFY(index.open(QIODevice::WriteOnly));
        index.close();
        QDesktopServices::setUrlHandler("file", this, "Open");
        opened.clear();
        for (const char *name : {"page", "missing"}) {
            ParaEntity *entity = nullptr;
            ParameterDlg dlg(true, NumericTable(&entity), false, true, false, dir.path(), QString(), name);
            dlg.HelpPressed();
        }
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(index.fileName())});
    }
};

ZEMA_TEST(tst_ParameterDlg)
#include "tst_ParameterDlg.moc"
