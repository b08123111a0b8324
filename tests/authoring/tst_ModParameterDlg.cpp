// The entity group editor driven through its widgets: groups, the entity and value checks, moves,
// the control table, and loading and saving with override paths.
#include "TestFiles.h"
#include "TestRegistry.h"

#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "app/Prompt.h"
#include "authoring/ModParameterDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>
#include <QtWidgets>

using S = QStringList;

template <typename T> static T *W(const QObject *form, const QString &name)
{
    T *widget = form->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", qPrintable(name));
    return widget;
}

// Fills one field of the form from "object=value": text for line edits and combo boxes, a check
// box by "1" or "0", the current row of a list.
static void Fill(const QObject *form, const QString &field)
{
    const QString name = field.section('=', 0, 0), value = field.section('=', 1);
    if (auto *edit = form->findChild<QLineEdit *>(name))
        edit->setText(value);
    else if (auto *check = form->findChild<QCheckBox *>(name))
        check->setChecked(value == "1");
    else if (auto *list = form->findChild<QListWidget *>(name))
        list->setCurrentRow(value.toInt());
    else
        W<QComboBox>(form, name)->setCurrentText(value);
}

// "object=shown" as Fill takes it, a list with its items joined by "|".
static QString Shown(const QObject *form, const QString &name)
{
    QString shown;
    if (auto *edit = form->findChild<QLineEdit *>(name))
        shown = edit->text();
    else if (auto *check = form->findChild<QCheckBox *>(name))
        shown = check->isChecked() ? "1" : "0";
    else if (auto *list = form->findChild<QListWidget *>(name))
        for (int row = 0; row < list->count(); ++row)
            shown += (row ? "|" : "") + list->item(row)->text();
    else
        shown = W<QComboBox>(form, name)->currentText();
    return name + "=" + shown;
}

// Groups "G" (entities "E", "E2") and "H" (entity "F" with the values "a", "b"), Parameters.
struct SmallPage {
    SmallPage() : block(new BlockData), page(2)
    {
        auto *f = new ParaEntity("F");
        f->values = S{"a", "b"};
        block->params = new BlkParaData{"T", {new ParaGroup{"G", QString(), {new ParaEntity("E"), new ParaEntity("E2")}},
                                              new ParaGroup{"H", QString(), {f}}}, {}};
        page.LoadParaPage(QDir::tempPath() + "/no-such-block", block);
    }
    ~SmallPage() { FreeBlockData(block); }
    void Select(int group, int entity = -1)
    {
        QTreeWidgetItem *item = tree->topLevelItem(group);
        tree->setCurrentItem(entity < 0 ? item : item->child(entity));
    }
    ParaEntity *Entity(int group, int entity) const { return page.data->para_grp[group]->para_entity.value(entity); }
    // "G(E,E2) H(F)" from the records, followed by the tree's when the two differ.
    QString Layout() const
    {
        QStringList records, items;
        for (const ParaGroup *group : page.data->para_grp) {
            records << group->header + "(";
            for (const ParaEntity *entity : group->para_entity)
                records.last() += entity->label + ",";
        }
        for (int g = 0; g < tree->topLevelItemCount(); ++g) {
            items << tree->topLevelItem(g)->text(0) + "(";
            for (int e = 0; e < tree->topLevelItem(g)->childCount(); ++e)
                items.last() += tree->topLevelItem(g)->child(e)->text(0) + ",";
        }
        QString text = records.join(") ") + ")";
        if (items != records)
            text += " / tree " + items.join(") ") + ")";
        return text.replace(",)", ")");
    }

    BlockData *block;
    ModParameterDlg page;
    QTreeWidget *tree = W<QTreeWidget>(&page, "tree");
};

// The items of the editor a double click makes in each given column of the control table's first
// row, "-" where it makes none.
static QStringList Combos(TableWidget *table, const QList<int> &cols)
{
    QStringList shown;
    for (int col : cols) {
        table->CellClicked(0, col);
        table->CellDoubleClicked(0, col);
        QStringList items;
        for (int i = 0; table->combo && i < table->combo->count(); ++i)
            items << table->combo->itemText(i);
        shown << (table->combo ? items.join(',') : "-");
        table->CommitCell(-1, false);
    }
    return shown;
}

class tst_ModParameterDlg : public QObject
{
    Q_OBJECT
    ScriptedAnswerer *answers = nullptr;

private slots:
    void init()
    {
        Prompt::SetAnswerer(std::unique_ptr<ScriptedAnswerer>(answers = new ScriptedAnswerer));
        CreateAppSettings(nullptr)->licence_level = kVendorLicenceLevel;
    }
    void cleanup()
    {
        Prompt::SetAnswerer(std::make_unique<DialogAnswerer>());
        CreateAppSettings(nullptr);
    }


    // Steps on the small page: "object=value" fills the form, "@g" or "@g.e" selects a tree item,
    // "?path" is the next file chosen, "!" cancels the next question, any other word clicks that
    // button. Expected: "tree=" the layout (when it changed), "object=" what a widget shows, and
    // every box in order.
    void steps_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("expected");
        const S n = {"@0.0", "en_name=N", "en_value_type=Real"}, f = {"@1.0", "en_value_list=1"};
        const QString deletion = "Press OK to continue deletion.", exits = "Entity value already exits.", add = "add_entity";
        const S form = {"en_name=R", "en_para_var_name=pv", "en_port_var_name=pp", "en_value_edit=2", "en_range_gt=1",
                        "en_range_lt=4", "en_value_expr=x+1", "en_value_type=Integer16", "en_value_size=3", "en_units=V",
                        "en_var_type=Preprocessor Definition", "en_enable_chk=0", "en_visible_chk=0", "en_license_chk=1",
                        "en_sigpara_chk=1"};
        // A second group of the same name is taken without a word.
        QTest::newRow("group names")
            << S{"header=a.b", "header_add", "header= G ", "header_helpfile_edit=g.htm", "header_add", "@0", "@2"}
            << S{"Group name has invalid characters.", "tree=G(E,E2) H(F) G()", "header_helpfile_edit=g.htm"};
        QTest::newRow("group edit, help file name only")
            << S{"@1", "header=K", "header_edit", "?/elsewhere/doc/topic.html", "header_helpfile_pb", "@0", "@1"}
            << S{"Select Entity Group Description File", "tree=G(E,E2) K(F)", "header_helpfile_edit=topic.html"};
        QTest::newRow("a group is deleted on OK, an entity unasked")
            << S{"@1", "!", "header_del", "header_del", "@0.1", "del_entity"} << S{deletion, deletion, "tree=G(E)", "header="};

        // Each refusal leaves the form as it was, so a row goes on with the next field.
        QTest::newRow("entity name: any character but a backslash")
            << n + S{"en_name=  ", add, "en_name=a\\b", add, "en_name=a#b c.", add}
            << S{"Entity name is empty.", "Entity name has invalid characters.", "tree=G(E,E2,a#b c.) H(F)"};
        QTest::newRow("label edit: identifier rule, tree only")
            << S{"@0.1", "en_name=a#b", "en_value_label_editb", "en_name=R", "en_value_label_editb"}
            << S{"Entity name has invalid characters.", "tree=G(E,E2) H(F) / tree G(E,R) H(F)"};
        QTest::newRow("label edit: port name") << n + S{"en_name=E", "en_port_var_name=a#b", "en_value_label_editb"}
                                               << S{"Entity internal port variable name has invalid characters."};
        QTest::newRow("types and sizes")
            << n + S{"en_value_type=Selected Index", add, "en_value_type=Real", "en_value_size=-2", add, "en_value_size=2",
                     "en_var_type=Constant", add}
            << S{"Selected entity variable type is invalid.", "Selected entity data array size is invalid.",
                 "Selected entity variable type is invalid."};
        QTest::newRow("empty range, a string drops its range")
            << n + S{"en_range_gt=1", "en_range_lt=1", add, "en_value_type=String", "en_range_gt=2", add, "@0.2"}
            << S{"Entity value range is invalid.", "tree=G(E,E2,N) H(F)", "en_range_gt=", "en_range_lt="};
        QTest::newRow("names taken or with characters")
            << n + S{"en_name=E2", add, "en_name=N", "en_para_var_name=a b", add, "en_para_var_name=a", "en_port_var_name=a#b",
                     add}
            << S{"Entity name already exists.", "Entity internal variable name has invalid characters.",
                 "Entity port name has invalid characters."};
        QTest::newRow("every field back from Edit Entity")
            << S{"@0.1"} + form + S{"edit_entity", "@0", "@0.1"} << S{"tree=G(E,R) H(F)"} + form;

        // A value may hold any character once a "." stands in it; "Edit" leaves the text untrimmed.
        QTest::newRow("values added")
            << f + S{"en_value_edit= a#b.c ", "en_value_add", "en_value_edit=x y", "en_value_add"}
            << S{"en_value_list=a|b|a#b.c|x y"};
        QTest::newRow("values refused") << f + S{"en_value_edit=a#b", "en_value_add", "en_value_edit=b", "en_value_add"}
                                        << S{"Entity value has invalid characters.", exits, "en_value_list=a|b"};
        QTest::newRow("value edits") << f + S{"en_value_edit=a", "en_value_edit_pb", "en_value_edit=b", "en_value_edit_pb",
                                              "en_value_edit=w ", "en_value_edit_pb"} << S{exits, "en_value_list=a|w "};
        QTest::newRow("value up, not past the top") << f + S{"en_value_up", "en_value_up"} << S{"en_value_list=b|a"};

        QTest::newRow("group down") << S{"@0", "header_dn"} << S{"tree=H(F) G(E,E2)", "header=G"};
        QTest::newRow("entity up") << S{"@0.1", "header_up"} << S{"tree=G(E2,E) H(F)", "en_name=E2"};
        QTest::newRow("last entity down crosses") << S{"@0.1", "header_dn"} << S{"tree=G(E) H(E2,F)", "en_name=E2"};
        QTest::newRow("first entity up crosses") << S{"@1.0", "header_up"} << S{"tree=G(E,E2,F) H()", "en_name=F"};
        QTest::newRow("last of last group down") << S{"@1.0", "header_dn"} << S{"en_name=F"};
    }

    void steps()
    {
        QFETCH(QStringList, steps);
        QFETCH(QStringList, expected);
        SmallPage p;
        for (const QString &step : steps) {
            if (step.startsWith('@'))
                p.Select(step.mid(1).section('.', 0, 0).toInt(), step.contains('.') ? step.section('.', 1).toInt() : -1);
            else if (step.startsWith('?'))
                answers->choices << S{step.mid(1)};
            else if (step == "!")
                answers->buttons << QMessageBox::Cancel;
            else if (step.contains('='))
                Fill(&p.page, step);
            else
                W<QPushButton>(&p.page, step)->click();
        }
        // The boxes come first in `expected`, then what the page shows.
        QStringList seen = answers->texts;
        for (const QString &entry : expected.filter("="))
            seen << (entry.startsWith("tree=") ? "tree=" + p.Layout() : Shown(&p.page, entry.section('=', 0, 0)));
        QCOMPARE(seen, expected);
        if (expected.filter("tree=").isEmpty())
            QCOMPARE(p.Layout(), QString("G(E,E2) H(F)"));
    }

    void controlTable()
    {
        SmallPage p;
        auto *table = W<TableWidget>(&p.page, "en_ctrl_table");
        auto *values = W<QListWidget>(&p.page, "en_value_list");
        ParaEntity *old = p.Entity(0, 0);
        old->ovrds << new ParaOvrd{"w.wsp", 7, "G", "3", old};
        p.Select(0, 0);
        p.page.TableAddRow(table);
        QCOMPARE(table->rowCount(), 0);
        values->addItems({"on", "off"});
        p.page.TableAddRow(table);
        // A fresh row offers "SetValue"; without a group the entity and value cells get no editor.
        QCOMPARE(Combos(table, {4, 0, 1, 2, 3}), (S{"SetValue,Disable,Hide", "<Select>,G,H", "-", "-", "<Select>,on,off"}));
        // Only the other entities are offered, and one without values keeps the cell's own text.
        table->item(0, 0)->setText("G");
        table->item(0, 1)->setText("E2");
        table->item(0, 2)->setText("5");
        QCOMPARE(Combos(table, {1, 2}), (S{"<Select>,E2", "5"}));
        table->item(0, 0)->setText("H");
        table->item(0, 1)->setText("F");
        QCOMPARE(Combos(table, {2}), S{"a,b"});
        delete table->takeItem(0, 1);
        QCOMPARE(Combos(table, {4}), S{"Disable,Hide"});

        // A missing cell outside the entity columns stops the entity.
        delete table->takeItem(0, 4);
        W<QPushButton>(&p.page, "edit_entity")->click();
        QVERIFY(p.Entity(0, 0) == old && old->para_con.isEmpty());
        QCOMPARE(answers->texts, (S{"Cannot add entity connection. Entity value list is empty.",
                                    "One or more of table cells are unassigned."}));
        table->setItem(0, 4, new QTableWidgetItem("Hide"));
        table->item(0, 3)->setText("off");
        W<QPushButton>(&p.page, "edit_entity")->click();
        // The new record takes the old one's place and its overrides; its empty selection, not in
        // the list, became the first value.
        ParaEntity *entity = p.Entity(0, 0);
        QVERIFY(p.page.cur_entity == entity && entity->ovrds.size() == 1 && entity->ovrds[0]->owner == entity);
        QCOMPARE(entity->sel_val + QString::number(entity->sel_idx), QString("on0"));
        const ParaCon *control = entity->para_con.value(0);
        QVERIFY(control);
        QCOMPARE((S{control->header, control->label, control->value, QString::number(control->sel_idx), control->act_type}),
                 (S{"H", "", "5", "1", "Hide"}));
        p.Select(1);
        p.Select(0, 0);
        QCOMPARE(table->rowCount(), 1);
        QCOMPARE(table->item(0, 3)->text(), QString("off"));
        values->clear();
        QCOMPARE(Combos(table, {3}), S{"-"});
    }

    void loadAndSave()
    {
        QTemporaryDir tmp;
        const QString lib = tmp.path() + "/lib";
        QVERIFY(WriteBytes(lib + "/sub/w.wsp", "x"));
        GlobalSettings()->dirs = QStringList{lib};
        auto *entity = new ParaEntity("E");
        entity->ovrds << new ParaOvrd{"sub/w.wsp", 7, "G", "3", entity};
        auto *stored = new BlkParaData{"T", {new ParaGroup{"G", QString(), {entity}}}, {}};
        QVERIFY(BlkParaFileIO(QString(), nullptr, 1, 1).SaveFile(tmp.path() + "/blk_initcond.cfg", stored, "ZEMA"));
        FreeBlkParaData(stored);

        // Without a block the section file is read, and overrides point into the library.
        ModParameterDlg page(1);
        page.LoadParaPage(tmp.path(), nullptr);
        QVERIFY(page.own_data);
        QCOMPARE(page.data->para_grp[0]->para_entity[0]->ovrds[0]->file, lib + "/sub/w.wsp");
        // Saved into the library folder, and so written relative to it.
        page.SaveParaPage(lib, nullptr);
        QVERIFY(ReadBytes(lib + "/blk_initcond.cfg").contains("<ovrds>sub/w.wsp*7*G*3</ovrds>"));

        // With a block the record is handed over, and a block without one gets one.
        auto *block = new BlockData;
        page.SaveParaPage(lib, block);
        QVERIFY(block->initconds == page.data && !page.own_data);
        ModParameterDlg params(2);
        params.LoadParaPage(lib, block);
        QVERIFY(block->params && block->params == params.data && !params.own_data);
        FreeBlockData(block);
    }
};

ZEMA_TEST(tst_ModParameterDlg)
#include "tst_ModParameterDlg.moc"
