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

using Page = std::unique_ptr<ModParameterDlg>;

template <typename T> static T *W(const QObject *form, const char *name)
{
    T *widget = form->findChild<T *>(name);
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}
static QLineEdit *Edit(const QObject *form, const char *name) { return W<QLineEdit>(form, name); }
static QComboBox *Combo(const QObject *form, const char *name) { return W<QComboBox>(form, name); }
static QCheckBox *Check(const QObject *form, const char *name) { return W<QCheckBox>(form, name); }
static void Click(const QObject *form, const char *name) { W<QPushButton>(form, name)->click(); }
static QTreeWidget *Tree(const QObject *form) { return W<QTreeWidget>(form, "tree"); }
static QListWidget *Values(const QObject *form) { return W<QListWidget>(form, "en_value_list"); }

// Groups "G" (entities "E", "E2") and "H" (entity "F" with the values "a", "b"), Parameters.
static BlockData *SmallBlock()
{
    auto *f = new ParaEntity("F");
    f->values = QStringList{"a", "b"};
    auto *block = new BlockData;
    block->params = new BlkParaData{"T", {new ParaGroup{"G", QString(), {new ParaEntity("E"), new ParaEntity("E2")}},
                                          new ParaGroup{"H", QString(), {f}}}, {}};
    return block;
}

static Page OpenPage(BlockData *block)
{
    Page page(new ModParameterDlg(2));
    page->LoadParaPage(QDir::tempPath() + "/no-such-block", block);
    return page;
}

static void Select(ModParameterDlg *page, int group, int entity = -1)
{
    QTreeWidgetItem *item = Tree(page)->topLevelItem(group);
    Tree(page)->setCurrentItem(entity < 0 ? item : item->child(entity));
}

// "G(E,E2) H(F)" from the records, and the same from the tree when they differ.
static QString Layout(const ModParameterDlg *page)
{
    QStringList records, tree;
    for (const ParaGroup *group : page->data->para_grp) {
        QStringList labels;
        for (const ParaEntity *entity : group->para_entity)
            labels << entity->label;
        records << group->header + "(" + labels.join(',') + ")";
    }
    for (int g = 0; g < Tree(page)->topLevelItemCount(); ++g) {
        const QTreeWidgetItem *item = Tree(page)->topLevelItem(g);
        QStringList labels;
        for (int e = 0; e < item->childCount(); ++e)
            labels << item->child(e)->text(0);
        tree << item->text(0) + "(" + labels.join(',') + ")";
    }
    return records == tree ? records.join(' ') : records.join(' ') + " / tree " + tree.join(' ');
}

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
        BlockData *block = SmallBlock();
        const Page page = OpenPage(block);
        const QObject *ui = page.get();
        Edit(ui, "header")->setText("a.b");
        Click(ui, "header_add");
        // A second group of the same name is taken without a word.
        Edit(ui, "header")->setText(" G ");
        Edit(ui, "header_helpfile_edit")->setText("g.htm");
        Click(ui, "header_add");
        QCOMPARE(Layout(page.get()), QString("G(E,E2) H(F) G()"));
        QCOMPARE(page->cur_group->helpfile, QString("g.htm"));

        Edit(ui, "header")->setText("K");
        Click(ui, "header_edit");
        answers->choices << QStringList{"/elsewhere/doc/topic.html"};
        Click(ui, "header_helpfile_pb");
        QCOMPARE(page->data->para_grp[2]->header, QString("K"));
        QCOMPARE(page->data->para_grp[2]->helpfile, QString("topic.html"));
        QCOMPARE(Edit(ui, "header_helpfile_edit")->text(), QString("topic.html"));

        answers->buttons << QMessageBox::Cancel;
        Click(ui, "header_del");
        QCOMPARE(page->data->para_grp.size(), 3);
        Click(ui, "header_del");
        QCOMPARE(Layout(page.get()), QString("G(E,E2) H(F)"));
        QVERIFY(!page->cur_group && Edit(ui, "header")->text().isEmpty());
        // An entity is deleted without a question.
        Select(page.get(), 0, 1);
        Click(ui, "del_entity");
        QCOMPARE(Layout(page.get()), QString("G(E) H(F)"));
        QCOMPARE(answers->texts, (QStringList{"Group name has invalid characters.", "Select Entity Group Description File",
                                             "Press OK to continue deletion.", "Press OK to continue deletion."}));
        FreeBlockData(block);
    }

    void entityChecks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("size");
        QTest::addColumn<int>("var_type");
        QTest::addColumn<QString>("range");
        QTest::addColumn<QString>("para_var");
        QTest::addColumn<QString>("port_var");
        QTest::addColumn<QString>("box");
        QTest::newRow("blank name") << "  " << "Real" << "" << 0 << "" << "" << "" << "Entity name is empty.";
        QTest::newRow("backslash") << "a\\b" << "Real" << "" << 0 << "" << "" << "" << "Entity name has invalid characters.";
        QTest::newRow("any other character") << "a#b c." << "Real" << "" << 0 << "" << "" << "" << "";
        QTest::newRow("selected index without values")
            << "N" << "Selected Index" << "" << 0 << "" << "" << "" << "Selected entity variable type is invalid.";
        QTest::newRow("negative size") << "N" << "Real" << "-2" << 0 << "" << "" << "" << "Selected entity data array size is invalid.";
        QTest::newRow("constant array") << "N" << "Real" << "2" << 1 << "" << "" << "" << "Selected entity variable type is invalid.";
        QTest::newRow("empty range") << "N" << "Real" << "" << 0 << "1,1" << "" << "" << "Entity value range is invalid.";
        QTest::newRow("reversed range") << "N" << "Real" << "" << 0 << "2,1" << "" << "" << "Entity value range is invalid.";
        QTest::newRow("string drops range") << "N" << "String" << "" << 0 << "2,1" << "" << "" << "";
        QTest::newRow("name taken") << "E2" << "Real" << "" << 0 << "" << "" << "" << "Entity name already exists.";
        QTest::newRow("internal name with blank")
            << "N" << "Real" << "" << 0 << "" << "a b" << "" << "Entity internal variable name has invalid characters.";
        QTest::newRow("port name with #") << "N" << "Real" << "" << 0 << "" << "" << "a#b" << "Entity port name has invalid characters.";
    }

    void entityChecks()
    {
        QFETCH(QString, name);
        QFETCH(QString, type);
        QFETCH(QString, size);
        QFETCH(int, var_type);
        QFETCH(QString, range);
        QFETCH(QString, para_var);
        QFETCH(QString, port_var);
        QFETCH(QString, box);
        BlockData *block = SmallBlock();
        const Page page = OpenPage(block);
        const QObject *ui = page.get();
        Select(page.get(), 0);
        Edit(ui, "en_name")->setText(name);
        Combo(ui, "en_value_type")->setCurrentText(type);
        Edit(ui, "en_value_size")->setText(size);
        Combo(ui, "en_var_type")->setCurrentIndex(var_type);
        Edit(ui, "en_range_gt")->setText(range.section(',', 0, 0));
        Edit(ui, "en_range_lt")->setText(range.section(',', 1, 1));
        Edit(ui, "en_para_var_name")->setText(para_var);
        Edit(ui, "en_port_var_name")->setText(port_var);
        Click(ui, "add_entity");
        QCOMPARE(answers->texts, box.isEmpty() ? QStringList() : QStringList{box});
        QCOMPARE(page->data->para_grp[0]->para_entity.size(), box.isEmpty() ? 3 : 2);
        if (box.isEmpty()) {
            QCOMPARE(Tree(ui)->topLevelItem(0)->child(2)->text(0), name.trimmed());
            QCOMPARE(page->data->para_grp[0]->para_entity[2]->sel_val_gt, QString());
        }
        FreeBlockData(block);
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
        const QObject *ui = &page;
        QListWidget *list = Values(ui);
        list->addItem("x");
        Edit(ui, "en_value_edit")->setText(text);
        Click(ui, "en_value_add");
        QCOMPARE(answers->texts, box.isEmpty() ? QStringList() : QStringList{box});
        QCOMPARE(list->count(), box.isEmpty() ? 2 : 1);
        QCOMPARE(list->item(list->count() - 1)->text(), box.isEmpty() ? text.trimmed() : QString("x"));
    }

    void valueList()
    {
        ModParameterDlg page(2);
        const QObject *ui = &page;
        Values(ui)->addItems({"x", "y", "z"});
        auto items = [ui] {
            QStringList texts;
            for (int i = 0; i < Values(ui)->count(); ++i)
                texts << Values(ui)->item(i)->text();
            return texts.join(',') + " @" + Values(ui)->currentItem()->text();
        };
        Values(ui)->setCurrentRow(2);
        QCOMPARE(Edit(ui, "en_value_edit")->text(), QString("z"));
        Click(ui, "en_value_dn");
        Click(ui, "en_value_up");
        QCOMPARE(items(), QString("x,z,y @z"));
        Edit(ui, "en_value_edit")->setText("y");
        Click(ui, "en_value_edit_pb");
        Edit(ui, "en_value_edit")->setText("z");
        Click(ui, "en_value_edit_pb");       // its own text again is no duplicate
        Edit(ui, "en_value_edit")->setText("w ");
        Click(ui, "en_value_edit_pb");       // taken untrimmed
        QCOMPARE(items(), QString("x,w ,y @w "));
        Click(ui, "en_value_del");
        QCOMPARE(Values(ui)->count(), 2);
        QCOMPARE(answers->texts, QStringList{"Entity value already exits."});
    }

    void addAndEdit()
    {
        BlockData *block = SmallBlock();
        const Page page = OpenPage(block);
        const QObject *ui = page.get();
        ParaEntity *old = page->data->para_grp[0]->para_entity[1];
        old->ovrds << new ParaOvrd{"w.wsp", 7, "G", "3", old};
        Select(page.get(), 0, 1);
        Edit(ui, "en_value_edit")->setText("1.5");
        Click(ui, "en_value_add");
        Edit(ui, "en_value_edit")->setText("2.5");
        Click(ui, "en_value_add");
        Edit(ui, "en_value_edit")->setText("9");    // not in the list: the first value is taken
        Combo(ui, "en_value_type")->setCurrentText("Integer16");
        Combo(ui, "en_var_type")->setCurrentIndex(2);
        Edit(ui, "en_units")->setText("V");
        Check(ui, "en_license_chk")->setChecked(true);
        Check(ui, "en_visible_chk")->setChecked(false);
        // "Edit" beside the name renames the tree item only, until "Edit Entity".
        Edit(ui, "en_name")->setText("R");
        Click(ui, "en_value_label_editb");
        QCOMPARE(Tree(ui)->currentItem()->text(0), QString("R"));
        QCOMPARE(old->label, QString("E2"));

        Click(ui, "edit_entity");
        ParaEntity *entity = page->data->para_grp[0]->para_entity[1];
        QCOMPARE(page->cur_entity, entity);
        QCOMPARE(entity->label, QString("R"));
        QCOMPARE(entity->values, (QStringList{"1.5", "2.5"}));
        QCOMPARE(entity->sel_idx, 0);
        QCOMPARE(entity->sel_val, QString("1.5"));
        QCOMPARE(entity->val_type, QString("Integer16"));
        QCOMPARE(entity->var_type, 2);
        QCOMPARE(entity->unit, QString("V"));
        QVERIFY(entity->license && !entity->visible && entity->enable && !entity->sigpara);
        QCOMPARE(entity->ovrds.size(), 1);
        QCOMPARE(entity->ovrds[0]->owner, entity);

        // Back on the form as stored.
        Select(page.get(), 1);
        Select(page.get(), 0, 1);
        QCOMPARE(Values(ui)->currentRow(), 0);
        QCOMPARE(Edit(ui, "en_value_edit")->text(), QString("1.5"));
        QCOMPARE(Combo(ui, "en_value_type")->currentText(), QString("Integer16"));
        QCOMPARE(Combo(ui, "en_var_type")->currentIndex(), 2);
        QVERIFY(answers->texts.isEmpty());
        FreeBlockData(block);
    }

    void moves_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("entity");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("layout");
        QTest::newRow("group down") << 0 << -1 << false << "H(F) G(E,E2)";
        QTest::newRow("group up") << 1 << -1 << true << "H(F) G(E,E2)";
        QTest::newRow("first group up") << 0 << -1 << true << "G(E,E2) H(F)";
        QTest::newRow("last group down") << 1 << -1 << false << "G(E,E2) H(F)";
        QTest::newRow("entity up") << 0 << 1 << true << "G(E2,E) H(F)";
        QTest::newRow("entity down") << 0 << 0 << false << "G(E2,E) H(F)";
        QTest::newRow("last entity down crosses") << 0 << 1 << false << "G(E) H(E2,F)";
        QTest::newRow("first entity up crosses") << 1 << 0 << true << "G(E,E2,F) H()";
        QTest::newRow("first of first group up") << 0 << 0 << true << "G(E,E2) H(F)";
        QTest::newRow("last of last group down") << 1 << 0 << false << "G(E,E2) H(F)";
    }

    void moves()
    {
        QFETCH(int, group);
        QFETCH(int, entity);
        QFETCH(bool, up);
        QFETCH(QString, layout);
        BlockData *block = SmallBlock();
        const Page page = OpenPage(block);
        Select(page.get(), group, entity);
        const QString moved = Tree(page.get())->currentItem()->text(0);
        Click(page.get(), up ? "header_up" : "header_dn");
        QCOMPARE(Layout(page.get()), layout);
        QCOMPARE(Tree(page.get())->currentItem()->text(0), moved);
        QCOMPARE(page->cur_entity ? page->cur_entity->label : page->cur_group->header, moved);
        FreeBlockData(block);
    }

    void controlTable()
    {
        BlockData *block = SmallBlock();
        const Page page = OpenPage(block);
        const QObject *ui = page.get();
        TableWidget *table = W<TableWidget>(ui, "en_ctrl_table");
        Select(page.get(), 0, 0);
        page->TableAddRow(table);
        QCOMPARE(table->rowCount(), 0);
        QCOMPARE(answers->texts, QStringList{"Cannot add entity connection. Entity value list is empty."});

        Values(ui)->addItems({"on", "off"});
        page->TableAddRow(table);
        page->TableAddRow(table);
        Values(ui)->clear();
        QCOMPARE(ComboItems(table, 0, 3), QStringList{"no editor"});
        Values(ui)->addItems({"on", "off"});
        QCOMPARE(ComboItems(table, 0, 4), (QStringList{"SetValue", "Disable", "Hide"}));
        QCOMPARE(ComboItems(table, 0, 0), (QStringList{"<Select>", "G", "H"}));
        QCOMPARE(ComboItems(table, 0, 1), QStringList{"no editor"});
        QCOMPARE(ComboItems(table, 0, 3), (QStringList{"<Select>", "on", "off"}));
        table->item(0, 0)->setText("G");
        QCOMPARE(ComboItems(table, 0, 1), (QStringList{"<Select>", "E2"}));
        table->item(0, 1)->setText("E2");
        table->item(0, 2)->setText("5");
        QCOMPARE(ComboItems(table, 0, 2), QStringList{"5"});
        QVERIFY(table->item(0, 2)->text() == "5");
        table->item(0, 0)->setText("H");
        table->item(0, 1)->setText("F");
        QCOMPARE(ComboItems(table, 0, 2), (QStringList{"a", "b"}));
        delete table->takeItem(0, 1);
        QCOMPARE(ComboItems(table, 0, 4), (QStringList{"Disable", "Hide"}));

        // A row that lacks a cell outside the entity columns stops the entity.
        table->setCurrentCell(1, 0);
        page->TableRemoveRow(table);
        QCOMPARE(table->rowCount(), 1);
        delete table->takeItem(0, 4);
        Click(ui, "edit_entity");
        QCOMPARE(answers->texts.last(), QString("One or more of table cells are unassigned."));
        QVERIFY(page->data->para_grp[0]->para_entity[0]->para_con.isEmpty());

        table->setItem(0, 4, new QTableWidgetItem("Hide"));
        table->item(0, 3)->setText("off");
        Click(ui, "edit_entity");
        const ParaCon *control = page->data->para_grp[0]->para_entity[0]->para_con.value(0);
        QVERIFY(control);
        QCOMPARE((QStringList{control->header, control->label, control->value, control->act_type}),
                 (QStringList{"H", "", "5", "Hide"}));
        QCOMPARE(control->sel_idx, 1);
        Select(page.get(), 1);
        Select(page.get(), 0, 0);
        QCOMPARE(table->rowCount(), 1);
        QCOMPARE(table->item(0, 3)->text(), QString("off"));
        FreeBlockData(block);
    }

    void loadAndSave()
    {
        QTemporaryDir tmp;
        const QString lib = tmp.path() + "/lib";
        QDir().mkpath(lib + "/sub");
        QFile(lib + "/sub/w.wsp").open(QIODevice::WriteOnly);
        GlobalSettings()->dirs = QStringList{lib};
        auto *entity = new ParaEntity("E");
        entity->ovrds << new ParaOvrd{"sub/w.wsp", 7, "G", "3", entity};
        auto *stored = new BlkParaData{"T", {new ParaGroup{"G", QString(), {entity}}}, {}};
        BlkParaFileIO io(QString(), nullptr, 1, 1);
        QVERIFY(io.SaveFile(tmp.path() + "/blk_initcond.cfg", stored, "ZEMA"));
        FreeBlkParaData(stored);

        // Without a block the section file is read, and overrides point into the library.
        ModParameterDlg page(1);
        page.LoadParaPage(tmp.path(), nullptr);
        QVERIFY(page.own_data);
        QCOMPARE(Layout(&page), QString("G(E)"));
        QCOMPARE(page.data->para_grp[0]->para_entity[0]->ovrds[0]->file, lib + "/sub/w.wsp");
        const QString out = tmp.path() + "/out";
        QDir().mkpath(out);
        page.SaveParaPage(out, nullptr);
        QVERIFY(QFile::exists(out + "/blk_initcond.cfg"));
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
