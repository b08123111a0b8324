// The entity group editor driven through its widgets: groups, entities and their boxes, values,
// moves, the control table, and loading and saving with override paths.
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

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

template <typename T> static T *W(const QObject *form, const QString &name)
{
    T *widget = form->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", qPrintable(name));
    return widget;
}
static void Click(const QObject *form, const char *name) { W<QPushButton>(form, name)->click(); }
static QTreeWidget *Tree(const QObject *form) { return W<QTreeWidget>(form, "tree"); }
static QListWidget *Values(const QObject *form) { return W<QListWidget>(form, "en_value_list"); }
static QString Text(const QObject *form, const char *name) { return W<QLineEdit>(form, name)->text(); }

// Fills the form from "object=value" entries: text for line edits and combo boxes, a check box
// by "1" or "0".
static void Fill(const QObject *form, const QStringList &fields)
{
    for (const QString &field : fields) {
        const QString name = field.section('=', 0, 0), value = field.section('=', 1);
        if (auto *edit = form->findChild<QLineEdit *>(name))
            edit->setText(value);
        else if (auto *check = form->findChild<QCheckBox *>(name))
            check->setChecked(value == "1");
        else
            W<QComboBox>(form, name)->setCurrentText(value);
    }
}

// Groups "G" (entities "E", "E2") and "H" (entity "F" with the values "a", "b"), Parameters.
struct SmallPage {
    SmallPage() : block(new BlockData), page(2)
    {
        auto *f = new ParaEntity("F");
        f->values = QStringList{"a", "b"};
        block->params = new BlkParaData{"T", {new ParaGroup{"G", QString(), {new ParaEntity("E"), new ParaEntity("E2")}},
                                              new ParaGroup{"H", QString(), {f}}}, {}};
        page.LoadParaPage(QDir::tempPath() + "/no-such-block", block);
    }
    ~SmallPage() { FreeBlockData(block); }
    void Select(int group, int entity = -1)
    {
        QTreeWidgetItem *item = Tree(&page)->topLevelItem(group);
        Tree(&page)->setCurrentItem(entity < 0 ? item : item->child(entity));
    }
    ParaEntity *Entity(int group, int entity) const { return page.data->para_grp[group]->para_entity.value(entity); }
    // "G(E,E2) H(F)" from the records, followed by the tree's when the two differ.
    QString Layout() const
    {
        QStringList records, tree;
        for (const ParaGroup *group : page.data->para_grp) {
            records << group->header + "(";
            for (const ParaEntity *entity : group->para_entity)
                records.last() += entity->label + (entity == group->para_entity.last() ? "" : ",");
            records.last() += ")";
        }
        for (int g = 0; g < Tree(&page)->topLevelItemCount(); ++g) {
            const QTreeWidgetItem *item = Tree(&page)->topLevelItem(g);
            tree << item->text(0) + "(";
            for (int e = 0; e < item->childCount(); ++e)
                tree.last() += item->child(e)->text(0) + (e + 1 < item->childCount() ? "," : "");
            tree.last() += ")";
        }
        return records == tree ? records.join(' ') : records.join(' ') + " / tree " + tree.join(' ');
    }

    BlockData *block;
    ModParameterDlg page;
};

static QStringList ComboItems(TableWidget *table, int row, int col)
{
    table->CellClicked(row, col);
    table->CellDoubleClicked(row, col);
    QStringList items;
    if (!table->combo)
        items << "no editor";
    for (int i = 0; table->combo && i < table->combo->count(); ++i)
        items << table->combo->itemText(i);
    table->CommitCell(-1, false);
    return items;
}

class tst_ModParameterDlg : public QObject
{
    Q_OBJECT
    ScriptedAnswerer *answers = nullptr;

private slots:
    void init()
    {
        auto scripted = std::make_unique<ScriptedAnswerer>();
        answers = scripted.get();
        Prompt::SetAnswerer(std::move(scripted));
        CreateAppSettings(nullptr)->licence_level = kVendorLicenceLevel;
    }
    void cleanup()
    {
        Prompt::SetAnswerer(std::make_unique<DialogAnswerer>());
        CreateAppSettings(nullptr);
    }

    void everySlotConnects()
    {
        static QStringList warnings;
        warnings.clear();
        const QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) { warnings << text; });
        { ModParameterDlg page(1); }
        qInstallMessageHandler(previous);
        QVERIFY2(warnings.filter("connectSlotsByName").isEmpty(), qPrintable(warnings.join('\n')));
    }

    void groups()
    {
        SmallPage p;
        Fill(&p.page, {"header=a.b"});
        Click(&p.page, "header_add");
        // A second group of the same name is taken without a word.
        Fill(&p.page, {"header= G ", "header_helpfile_edit=g.htm"});
        Click(&p.page, "header_add");
        QCOMPARE(p.Layout(), QString("G(E,E2) H(F) G()"));
        QCOMPARE(p.page.cur_group->helpfile, QString("g.htm"));

        Fill(&p.page, {"header=K"});
        Click(&p.page, "header_edit");
        answers->choices << QStringList{"/elsewhere/doc/topic.html"};
        Click(&p.page, "header_helpfile_pb");
        QCOMPARE(p.page.data->para_grp[2]->header, QString("K"));
        QCOMPARE(p.page.data->para_grp[2]->helpfile, QString("topic.html"));
        QCOMPARE(Text(&p.page, "header_helpfile_edit"), QString("topic.html"));

        answers->buttons << QMessageBox::Cancel;
        Click(&p.page, "header_del");
        QCOMPARE(p.page.data->para_grp.size(), 3);
        Click(&p.page, "header_del");
        QVERIFY(!p.page.cur_group && Text(&p.page, "header").isEmpty());
        // An entity goes without a question.
        p.Select(0, 1);
        Click(&p.page, "del_entity");
        QCOMPARE(p.Layout(), QString("G(E) H(F)"));
        QCOMPARE(answers->texts, (QStringList{"Group name has invalid characters.", "Select Entity Group Description File",
                                             "Press OK to continue deletion.", "Press OK to continue deletion."}));
    }

    void entityChecks_data()
    {
        QTest::addColumn<QStringList>("form");
        QTest::addColumn<QString>("box");
        QTest::newRow("blank name") << QStringList{"en_name=  "} << "Entity name is empty.";
        QTest::newRow("backslash") << QStringList{"en_name=a\\b"} << "Entity name has invalid characters.";
        QTest::newRow("any other character") << QStringList{"en_name=a#b c."} << "";
        QTest::newRow("selected index without values")
            << QStringList{"en_value_type=Selected Index"} << "Selected entity variable type is invalid.";
        QTest::newRow("negative size") << QStringList{"en_value_size=-2"} << "Selected entity data array size is invalid.";
        QTest::newRow("constant array")
            << QStringList{"en_value_size=2", "en_var_type=Constant"} << "Selected entity variable type is invalid.";
        QTest::newRow("empty range") << QStringList{"en_range_gt=1", "en_range_lt=1"} << "Entity value range is invalid.";
        QTest::newRow("reversed range") << QStringList{"en_range_gt=2", "en_range_lt=1"} << "Entity value range is invalid.";
        QTest::newRow("string drops range")
            << QStringList{"en_value_type=String", "en_range_gt=2", "en_range_lt=1"} << "";
        QTest::newRow("name taken") << QStringList{"en_name=E2"} << "Entity name already exists.";
        QTest::newRow("internal name with blank")
            << QStringList{"en_para_var_name=a b"} << "Entity internal variable name has invalid characters.";
        QTest::newRow("port name with #") << QStringList{"en_port_var_name=a#b"} << "Entity port name has invalid characters.";
    }

    void entityChecks()
    {
        QFETCH(QStringList, form);
        QFETCH(QString, box);
        SmallPage p;
        p.Select(0);
        Fill(&p.page, QStringList{"en_name=N", "en_value_type=Real"} + form);
        Click(&p.page, "add_entity");
        QCOMPARE(answers->texts, box.isEmpty() ? QStringList() : QStringList{box});
        QCOMPARE(p.page.data->para_grp[0]->para_entity.size(), box.isEmpty() ? 3 : 2);
        if (box.isEmpty()) {
            QCOMPARE(Tree(&p.page)->topLevelItem(0)->child(2)->text(0), Text(&p.page, "en_name").trimmed());
            QCOMPARE(p.Entity(0, 2)->sel_val_gt, QString());
        }
    }

    void values_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("box");
        QTest::newRow("decimal number") << " 1.5 " << "";
        QTest::newRow("two words") << "two words" << "";
        QTest::newRow("hash") << "a#b" << "Entity value has invalid characters.";
        QTest::newRow("hash beside a dot") << "a#b.c" << "";
        QTest::newRow("bound") << "<5" << "";
        QTest::newRow("empty") << "" << "Entity value has invalid characters.";
        QTest::newRow("already there") << "x" << "Entity value already exits.";
    }

    void values()
    {
        QFETCH(QString, text);
        QFETCH(QString, box);
        ModParameterDlg page(2);
        Values(&page)->addItem("x");
        Fill(&page, {"en_value_edit=" + text});
        Click(&page, "en_value_add");
        QCOMPARE(answers->texts, box.isEmpty() ? QStringList() : QStringList{box});
        QCOMPARE(Values(&page)->count(), box.isEmpty() ? 2 : 1);
        QCOMPARE(Values(&page)->item(Values(&page)->count() - 1)->text(), box.isEmpty() ? text.trimmed() : "x");
    }

    void valueList()
    {
        ModParameterDlg page(2);
        QListWidget *list = Values(&page);
        list->addItems({"x", "y", "z"});
        list->setCurrentRow(2);
        Click(&page, "en_value_dn");
        Click(&page, "en_value_up");
        for (const char *text : {"y", "z", "w "}) { // a duplicate, its own text, an untrimmed one
            Fill(&page, {QString("en_value_edit=") + text});
            Click(&page, "en_value_edit_pb");
        }
        QCOMPARE(list->item(0)->text() + list->item(1)->text() + list->item(2)->text(), QString("xw y"));
        Click(&page, "en_value_del");
        QCOMPARE(list->count(), 2);
        QCOMPARE(answers->texts, QStringList{"Entity value already exits."});
    }

    void addAndEdit()
    {
        SmallPage p;
        ParaEntity *old = p.Entity(0, 1);
        old->ovrds << new ParaOvrd{"w.wsp", 7, "G", "3", old};
        p.Select(0, 1);
        for (const char *value : {"1.5", "2.5"}) {
            Fill(&p.page, {QString("en_value_edit=") + value});
            Click(&p.page, "en_value_add");
        }
        // A selection missing from the list comes back as the first value.
        Fill(&p.page, {"en_value_edit=9", "en_value_type=Integer16", "en_var_type=Preprocessor Definition",
                       "en_units=V", "en_license_chk=1", "en_visible_chk=0", "en_name=R"});
        // "Edit" beside the name renames the tree item only, until "Edit Entity".
        Click(&p.page, "en_value_label_editb");
        QCOMPARE(p.Layout(), QString("G(E,E2) H(F) / tree G(E,R) H(F)"));

        Click(&p.page, "edit_entity");
        ParaEntity *entity = p.Entity(0, 1);
        QCOMPARE(p.page.cur_entity, entity);
        QCOMPARE(p.Layout(), QString("G(E,R) H(F)"));
        QCOMPARE(entity->values, (QStringList{"1.5", "2.5"}));
        QCOMPARE((QStringList{entity->sel_val, entity->val_type, entity->unit}), (QStringList{"1.5", "Integer16", "V"}));
        QCOMPARE((QList<int>{entity->sel_idx, entity->var_type}), (QList<int>{0, 2}));
        QVERIFY(entity->license && !entity->visible && entity->enable && !entity->sigpara);
        QCOMPARE(entity->ovrds.size(), 1);
        QCOMPARE(entity->ovrds[0]->owner, entity);

        p.Select(1);
        p.Select(0, 1);
        QCOMPARE(Values(&p.page)->currentRow(), 0);
        QCOMPARE(Text(&p.page, "en_value_edit"), QString("1.5"));
        QCOMPARE(W<QComboBox>(&p.page, "en_var_type")->currentIndex(), 2);
        QVERIFY(answers->texts.isEmpty());
    }

    void moves_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("entity");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("layout");
        QTest::newRow("group down") << 0 << -1 << false << "H(F) G(E,E2)";
        QTest::newRow("first group up") << 0 << -1 << true << "G(E,E2) H(F)";
        QTest::newRow("entity up") << 0 << 1 << true << "G(E2,E) H(F)";
        QTest::newRow("last entity down crosses") << 0 << 1 << false << "G(E) H(E2,F)";
        QTest::newRow("first entity up crosses") << 1 << 0 << true << "G(E,E2,F) H()";
        QTest::newRow("last of last group down") << 1 << 0 << false << "G(E,E2) H(F)";
    }

    void moves()
    {
        QFETCH(int, group);
        QFETCH(int, entity);
        QFETCH(bool, up);
        QFETCH(QString, layout);
        SmallPage p;
        p.Select(group, entity);
        const QString moved = Tree(&p.page)->currentItem()->text(0);
        Click(&p.page, up ? "header_up" : "header_dn");
        QCOMPARE(p.Layout(), layout);
        QCOMPARE(Tree(&p.page)->currentItem()->text(0), moved);
        QCOMPARE(p.page.cur_entity ? p.page.cur_entity->label : p.page.cur_group->header, moved);
    }

    void controlTable()
    {
        SmallPage p;
        auto *table = W<TableWidget>(&p.page, "en_ctrl_table");
        p.Select(0, 0);
        p.page.TableAddRow(table);
        QCOMPARE(table->rowCount(), 0);
        QCOMPARE(answers->texts, QStringList{"Cannot add entity connection. Entity value list is empty."});

        Values(&p.page)->addItems({"on", "off"});
        p.page.TableAddRow(table);
        p.page.TableAddRow(table);
        QCOMPARE(ComboItems(table, 0, 4), (QStringList{"SetValue", "Disable", "Hide"}));
        QCOMPARE(ComboItems(table, 0, 0), (QStringList{"<Select>", "G", "H"}));
        QCOMPARE(ComboItems(table, 0, 1), QStringList{"no editor"});
        QCOMPARE(ComboItems(table, 0, 3), (QStringList{"<Select>", "on", "off"}));
        table->item(0, 0)->setText("G");
        QCOMPARE(ComboItems(table, 0, 1), (QStringList{"<Select>", "E2"}));
        table->item(0, 1)->setText("E2");
        table->item(0, 2)->setText("5");
        QCOMPARE(ComboItems(table, 0, 2), QStringList{"5"});
        table->item(0, 0)->setText("H");
        table->item(0, 1)->setText("F");
        QCOMPARE(ComboItems(table, 0, 2), (QStringList{"a", "b"}));
        delete table->takeItem(0, 1);
        QCOMPARE(ComboItems(table, 0, 4), (QStringList{"Disable", "Hide"}));

        table->setCurrentCell(1, 0);
        p.page.TableRemoveRow(table);
        QCOMPARE(table->rowCount(), 1);
        // A missing cell outside the entity columns stops the entity.
        delete table->takeItem(0, 4);
        Click(&p.page, "edit_entity");
        QCOMPARE(answers->texts.last(), QString("One or more of table cells are unassigned."));
        QVERIFY(p.Entity(0, 0)->para_con.isEmpty());

        table->setItem(0, 4, new QTableWidgetItem("Hide"));
        table->item(0, 3)->setText("off");
        Click(&p.page, "edit_entity");
        const ParaCon *control = p.Entity(0, 0)->para_con.value(0);
        QVERIFY(control);
        QCOMPARE((QStringList{control->header, control->label, control->value, control->act_type}),
                 (QStringList{"H", "", "5", "Hide"}));
        QCOMPARE(control->sel_idx, 1);
        p.Select(1);
        p.Select(0, 0);
        QCOMPARE(table->rowCount(), 1);
        QCOMPARE(table->item(0, 3)->text(), QString("off"));
        Values(&p.page)->clear();
        QCOMPARE(ComboItems(table, 0, 3), QStringList{"no editor"});
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
        QCOMPARE(Tree(&page)->topLevelItem(0)->child(0)->text(0), QString("E"));
        QCOMPARE(page.data->para_grp[0]->para_entity[0]->ovrds[0]->file, lib + "/sub/w.wsp");
        const QString out = tmp.path() + "/out";
        QDir().mkpath(out);
        page.SaveParaPage(out, nullptr);
        QVERIFY(ReadBytes(out + "/blk_initcond.cfg").contains("<ovrds>sub/w.wsp*7*G*3</ovrds>"));

        // With a block the record is handed over, and a block without one gets one.
        auto *block = new BlockData;
        page.SaveParaPage(out, block);
        QVERIFY(block->initconds == page.data && !page.own_data);
        ModParameterDlg params(2);
        params.LoadParaPage(out, block);
        QVERIFY(block->params && block->params == params.data && !params.own_data);
        FreeBlockData(block);
    }
};

ZEMA_TEST(tst_ModParameterDlg)
#include "tst_ModParameterDlg.moc"
