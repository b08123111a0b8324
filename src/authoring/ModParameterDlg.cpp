// The entity group editor. The form is a scratch copy of one entity: nothing reaches the record
// before "Add Entity" or "Edit Entity", and selecting another item drops it.
#include "authoring/ModParameterDlg.h"

#include "ui_ModParameterDlg.h"

#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "authoring/ParaPageChecks.h"
#include "pages/BlkPresData.h"
#include "pages/PresentationDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "params/ConfigurationEntities.h"
#include "params/TextChecks.h"

#include <QFileInfo>
#include <QHeaderView>

namespace {

const char kTitle[] = "ZEMA";

enum CtrlColumn { kGroupCol, kEntityCol, kValueCol, kPresValueCol, kTypeCol, kCtrlColumns };

QString SectionFile(int kind)
{
    return kind == 1 ? QStringLiteral("/blk_initcond.cfg") : QStringLiteral("/blk_param.cfg");
}

BlkParaData *&BlockRecord(BlockData *block, int kind)
{
    return kind == 1 ? block->initconds : block->params;
}

// Overrides hold workspace paths absolute in memory and relative to a search directory on file.
QList<ParaOvrd *> Overrides(const BlkParaData *data)
{
    QList<ParaOvrd *> all;
    for (const ParaGroup *group : data->para_grp)
        for (const ParaEntity *entity : group->para_entity)
            all += entity->ovrds;
    return all;
}

// Entity values may hold a forbidden character as long as one of these stands beside it: that is
// how decimal numbers and bounds pass.
bool IsValueText(const QString &text)
{
    return IsValidIdentifier(text) || text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('<'))
           || text.contains(QLatin1Char('>'));
}

} // namespace

ModParameterDlg::ModParameterDlg(int kind, QWidget *parent)
    : QFrame(parent), kind(kind), ui(std::make_unique<Ui::ModParameterDlg>())
{
    ui->setupUi(this);
    ui->en_value_type->addItems({"String", "Real", "Real32", "Real64", "Integer", "Integer16",
                                 "Integer32_Boolean", "Integer64", "Byte", "Selected Index",
                                 "Preprocessor Definition"});
    ui->en_var_type->addItem(QStringLiteral("Non-Constant"));
    const AppSettings *settings = GlobalSettings();
    if (settings && settings->licence_level >= kVendorLicenceLevel)
        ui->en_var_type->addItems({"Constant", "Preprocessor Definition"});

    TableWidget *table = ui->en_ctrl_table;
    table->setColumnCount(kCtrlColumns);
    table->setHorizontalHeaderLabels(
        {"Group", "Entity Name", "Entity Value", "Pres. Entity Value", "Control Type"});
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->ColumnKinds({kGroupCol, kEntityCol, kValueCol, kPresValueCol, kTypeCol}, {});
    table->menu_enabled = 1;
    connect(table, &TableWidget::FillComboBox, this, &ModParameterDlg::FillComboBoxData);
    connect(table, &TableWidget::AddRowSignal, this, &ModParameterDlg::TableAddRow);
    connect(table, &TableWidget::RemoveRowSignal, this, &ModParameterDlg::TableRemoveRow);

    for (QPushButton *button : {ui->header_edit, ui->header_del, ui->header_up, ui->header_dn,
                                ui->edit_entity, ui->del_entity})
        button->setEnabled(false);
    ClearForm();
}

ModParameterDlg::~ModParameterDlg()
{
    FreeOwnedData();
}

void ModParameterDlg::FreeOwnedData()
{
    if (own_data)
        FreeBlkParaData(data);
    data = nullptr;
    own_data = 0;
}

void ModParameterDlg::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (hide_on_show)
        hide();
}

void ModParameterDlg::LoadParaPage(const QString &block_dir, BlockData *block_data)
{
    cur_group = nullptr;
    cur_entity = nullptr;
    ui->tree->clear();
    FreeOwnedData();
    if (block_dir.isEmpty()) {
        data = new BlkParaData;
        if (block_data) {
            FreeBlkParaData(BlockRecord(block_data, kind));
            BlockRecord(block_data, kind) = data;
        } else {
            own_data = 1;
        }
        return;
    }

    this->block_dir = block_dir;
    if (block_data) {
        BlkParaData *&record = BlockRecord(block_data, kind);
        if (!record)
            record = new BlkParaData;
        data = record;
    } else {
        BlkParaFileIO io(QString(), nullptr, 0, 1);
        data = io.LoadFile(block_dir + SectionFile(kind), QLatin1String(kTitle));
        if (!data)
            data = new BlkParaData;
        own_data = 1;
    }

    if (AppSettings *settings = GlobalSettings()) {
        const QStringList dirs = SearchDirs(settings, block_dir);
        for (ParaOvrd *ovrd : Overrides(data))
            ovrd->file = ResolvePath(dirs, ovrd->file);
    }
    FillTree();
}

void ModParameterDlg::SaveParaPage(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    if (!data)
        return;
    if (AppSettings *settings = GlobalSettings()) {
        const QStringList dirs = SearchDirs(settings, block_dir);
        for (ParaOvrd *ovrd : Overrides(data))
            for (const QString &dir : dirs)
                ovrd->file = MakeRelative(dir, ovrd->file);
    }
    if (block_data) {
        BlkParaData *&record = BlockRecord(block_data, kind);
        if (record != data) {
            FreeBlkParaData(record);
            record = data;
        }
        own_data = 0;
        return;
    }
    BlkParaFileIO io(QString(), nullptr, 0, 1);
    io.SaveFile(block_dir + SectionFile(kind), data, QLatin1String(kTitle));
}

void ModParameterDlg::ValidateParaPage(ErrorList *error_list)
{
    ParaPageContext context;
    context.data = data;
    context.prefix = kind == 1 ? QStringLiteral("Initial Conditions") : QStringLiteral("Parameters");
    const AppSettings *settings = GlobalSettings();
    const MainWindow *window = settings ? settings->main_window : nullptr;
    const PresentationDlg *pres_page = window ? window->pres_page : nullptr;
    if (pres_page && pres_page->data)
        for (const BlkPort *port : pres_page->data->ports)
            context.port_names.append(port->name);
    ValidateParaData(context, error_list);
}

qint32 ModParameterDlg::CheckArraySize(const QString &text, BlkParaData *data, ParaGroup *group,
                                       ParaEntity *entity, ErrorList *error_list, const QString &prefix)
{
    return CheckParaArraySize(text, data, group, entity, error_list, prefix);
}

void ModParameterDlg::FillTree()
{
    ui->tree->clear();
    if (!data)
        return;
    for (const ParaGroup *group : data->para_grp) {
        auto *group_item = new QTreeWidgetItem(ui->tree, {group->header});
        for (const ParaEntity *entity : group->para_entity)
            new QTreeWidgetItem(group_item, {entity->label});
    }
    ui->tree->expandAll();
}

ParaGroup *ModParameterDlg::AddParameterGroup(const QString &header)
{
    if (!data)
        return nullptr;
    ParaGroup *group = FindGroup(data, header);
    if (!group) {
        group = new ParaGroup;
        group->header = header;
        data->para_grp.append(group);
        FillTree();
    }
    return group;
}

ParaEntity *ModParameterDlg::AddParameter(const QString &header, const QString &label,
                                          const QString &para_var, const QString &sel_val,
                                          const QStringList &values, const QString &val_type)
{
    ParaGroup *group = AddParameterGroup(header);
    if (!group)
        return nullptr;
    auto *entity = new ParaEntity(label);
    entity->para_var = para_var;
    entity->val_type = val_type;
    entity->values = values;
    entity->sel_val = sel_val;
    if (!values.isEmpty()) {
        const int at = values.indexOf(sel_val);
        entity->sel_idx = at < 0 ? 0 : at;
        entity->sel_val = values.at(entity->sel_idx);
    }
    group->para_entity.append(entity);
    FillTree();
    return entity;
}

void ModParameterDlg::ClearForm()
{
    for (QLineEdit *edit : {ui->header, ui->header_helpfile_edit, ui->en_name, ui->en_para_var_name,
                            ui->en_port_var_name, ui->en_value_edit, ui->en_range_gt, ui->en_range_lt,
                            ui->en_value_expr, ui->en_value_size, ui->en_units})
        edit->clear();
    ui->en_value_list->clear();
    ui->en_ctrl_table->CommitCell(-1, false);
    ui->en_ctrl_table->setRowCount(0);
    ui->en_visible_chk->setChecked(true);
    ui->en_enable_chk->setChecked(true);
    ui->en_license_chk->setChecked(false);
    ui->en_sigpara_chk->setChecked(false);
    ui->en_value_type->setCurrentIndex(0);
    ui->en_var_type->setCurrentIndex(0);
}

void ModParameterDlg::on_tree_currentItemChanged(QTreeWidgetItem *current, QTreeWidgetItem *)
{
    cur_group = nullptr;
    cur_entity = nullptr;
    ClearForm();
    if (!current || !data)
        return;
    QTreeWidgetItem *parent_item = current->parent();
    if (!parent_item) {
        ui->header_edit->setEnabled(true);
        ui->header_del->setEnabled(true);
        ui->header_up->setEnabled(true);
        ui->header_dn->setEnabled(true);
        ui->edit_entity->setEnabled(false);
        ui->del_entity->setEnabled(false);
        cur_group = data->para_grp.value(ui->tree->indexOfTopLevelItem(current));
        if (cur_group) {
            ui->header->setText(cur_group->header);
            ui->header_helpfile_edit->setText(cur_group->helpfile);
        }
        return;
    }

    ui->header_edit->setEnabled(false);
    ui->header_del->setEnabled(false);
    ui->header_up->setEnabled(true);
    ui->header_dn->setEnabled(true);
    ui->edit_entity->setEnabled(true);
    ui->del_entity->setEnabled(true);
    cur_group = data->para_grp.value(ui->tree->indexOfTopLevelItem(parent_item));
    if (!cur_group)
        return;
    cur_entity = cur_group->para_entity.value(parent_item->indexOfChild(current));
    ui->header->setText(cur_group->header);
    ui->header_helpfile_edit->setText(cur_group->helpfile);
    if (cur_entity)
        ShowEntity(cur_entity);
}

void ModParameterDlg::ShowEntity(const ParaEntity *entity)
{
    ui->en_name->setText(entity->label);
    ui->en_para_var_name->setText(entity->para_var);
    ui->en_port_var_name->setText(entity->port_var);
    if (!entity->values.isEmpty()) {
        ui->en_value_list->addItems(entity->values);
        if (entity->sel_idx >= 0 && entity->sel_idx < entity->values.size())
            ui->en_value_list->setCurrentRow(entity->sel_idx);
    } else {
        ui->en_value_edit->setText(entity->sel_val);
        ui->en_range_gt->setText(entity->sel_val_gt);
        ui->en_range_lt->setText(entity->sel_val_lt);
    }
    ui->en_value_expr->setText(entity->sel_val_expr);
    const int type_index = ui->en_value_type->findText(entity->val_type);
    if (type_index >= 0)
        ui->en_value_type->setCurrentIndex(type_index);
    ui->en_value_size->setText(entity->val_size);
    if (entity->var_type >= 0 && entity->var_type < ui->en_var_type->count())
        ui->en_var_type->setCurrentIndex(entity->var_type);
    ui->en_units->setText(entity->unit);
    ui->en_enable_chk->setChecked(entity->enable);
    ui->en_visible_chk->setChecked(entity->visible);
    ui->en_license_chk->setChecked(entity->license);
    ui->en_sigpara_chk->setChecked(entity->sigpara);

    TableWidget *table = ui->en_ctrl_table;
    for (const ParaCon *control : entity->para_con) {
        const int row = table->rowCount();
        table->insertRow(row);
        const QListWidgetItem *pres_value = ui->en_value_list->item(control->sel_idx);
        const QStringList cells = {control->header, control->label, control->value,
                                   pres_value ? pres_value->text() : QString(), control->act_type};
        for (int col = 0; col < kCtrlColumns; ++col)
            table->setItem(row, col, new QTableWidgetItem(cells[col]));
    }
}

bool ModParameterDlg::CheckValueText(const QString &text, const QListWidgetItem *skip)
{
    if (!IsValueText(text)) {
        Prompt::Critical(this, QStringLiteral("Entity value has invalid characters."));
        return false;
    }
    for (int row = 0; row < ui->en_value_list->count(); ++row) {
        const QListWidgetItem *item = ui->en_value_list->item(row);
        if (item != skip && item->text() == text) {
            // The misspelling is the program's message as users know it.
            Prompt::Critical(this, QStringLiteral("Entity value already exits."));
            return false;
        }
    }
    return true;
}

void ModParameterDlg::on_en_value_list_currentItemChanged(QListWidgetItem *current, QListWidgetItem *)
{
    if (current)
        ui->en_value_edit->setText(current->text());
}

void ModParameterDlg::on_en_value_add_clicked()
{
    const QString text = ui->en_value_edit->text().trimmed();
    if (CheckValueText(text, nullptr))
        ui->en_value_list->addItem(text);
}

void ModParameterDlg::on_en_value_edit_pb_clicked()
{
    QListWidgetItem *item = ui->en_value_list->currentItem();
    if (!item)
        return;
    // Unlike "Add", the text is taken untrimmed.
    const QString text = ui->en_value_edit->text();
    if (CheckValueText(text, item))
        item->setText(text);
}

void ModParameterDlg::on_en_value_del_clicked()
{
    delete ui->en_value_list->takeItem(ui->en_value_list->currentRow());
}

void ModParameterDlg::on_en_value_up_clicked()
{
    QListWidget *list = ui->en_value_list;
    const int row = list->currentRow();
    if (row <= 0)
        return;
    list->insertItem(row - 1, list->takeItem(row));
    list->setCurrentRow(row - 1);
}

void ModParameterDlg::on_en_value_dn_clicked()
{
    QListWidget *list = ui->en_value_list;
    const int row = list->currentRow();
    if (row < 0 || row >= list->count() - 1)
        return;
    list->insertItem(row + 1, list->takeItem(row));
    list->setCurrentRow(row + 1);
}

void ModParameterDlg::on_en_value_label_editb_clicked()
{
    QTreeWidgetItem *item = ui->tree->currentItem();
    if (!item || !item->parent())
        return;
    const QString name = ui->en_name->text().trimmed();
    if (!IsValidIdentifier(name)) {
        Prompt::Critical(this, QStringLiteral("Entity name has invalid characters."));
        return;
    }
    // Only the tree shows the new name; the record takes it on "Edit Entity".
    item->setText(0, name);
    const QString para_var = ui->en_para_var_name->text().trimmed();
    if (!para_var.isEmpty() && !IsValidIdentifier(para_var, QStringLiteral(" "))) {
        Prompt::Critical(this, QStringLiteral("Entity internal variable name has invalid characters."));
        return;
    }
    const QString port_var = ui->en_port_var_name->text().trimmed();
    if (!port_var.isEmpty() && !IsValidIdentifier(port_var, QStringLiteral(" ")))
        Prompt::Critical(this, QStringLiteral("Entity internal port variable name has invalid characters."));
}

bool ModParameterDlg::CheckEntityForm()
{
    const QString name = ui->en_name->text().trimmed();
    if (name.isEmpty()) {
        Prompt::Critical(this, QStringLiteral("Entity name is empty."));
        return false;
    }
    // An entity name may hold anything but a backslash; group names follow the identifier rule.
    if (name.contains(QLatin1Char('\\'))) {
        Prompt::Critical(this, QStringLiteral("Entity name has invalid characters."));
        return false;
    }
    const bool no_values = ui->en_value_list->count() == 0;
    const QString type = ui->en_value_type->currentText();
    if (no_values && type == QLatin1String("Selected Index")) {
        Prompt::Critical(this, QStringLiteral("Selected entity variable type is invalid."));
        return false;
    }
    const int size = ui->en_value_size->text().toInt();
    if (size < 0) {
        Prompt::Critical(this, QStringLiteral("Selected entity data array size is invalid."));
        return false;
    }
    if (size > 1 && ui->en_var_type->currentIndex() == 1) {
        Prompt::Critical(this, QStringLiteral("Selected entity variable type is invalid."));
        return false;
    }
    if (no_values && type != QLatin1String("String")) {
        const QString from = ui->en_range_gt->text();
        const QString to = ui->en_range_lt->text();
        if (!from.isEmpty() && !to.isEmpty() && !(to.toDouble() > from.toDouble())) {
            Prompt::Critical(this, QStringLiteral("Entity value range is invalid."));
            return false;
        }
    } else {
        ui->en_range_gt->clear();
        ui->en_range_lt->clear();
    }
    return true;
}

ParaEntity *ModParameterDlg::ReadEntityForm(bool is_new)
{
    if (!cur_group)
        return nullptr;
    const QString name = ui->en_name->text().trimmed();
    if (is_new && FindEntityInGroup(cur_group, name)) {
        Prompt::Critical(this, QStringLiteral("Entity name already exists."));
        return nullptr;
    }
    const QString para_var = ui->en_para_var_name->text().trimmed();
    if (!para_var.isEmpty() && !IsValidIdentifier(para_var, QStringLiteral(" "))) {
        Prompt::Critical(this, QStringLiteral("Entity internal variable name has invalid characters."));
        return nullptr;
    }
    const QString port_var = ui->en_port_var_name->text().trimmed();
    if (!port_var.isEmpty() && !IsValidIdentifier(port_var, QStringLiteral(" "))) {
        Prompt::Critical(this, QStringLiteral("Entity port name has invalid characters."));
        return nullptr;
    }

    auto *entity = new ParaEntity(name);
    entity->para_var = para_var;
    entity->port_var = port_var;
    for (int row = 0; row < ui->en_value_list->count(); ++row)
        entity->values.append(ui->en_value_list->item(row)->text());
    entity->sel_val = ui->en_value_edit->text();
    entity->sel_idx = -1;
    if (entity->values.isEmpty()) {
        entity->sel_val_gt = ui->en_range_gt->text();
        entity->sel_val_lt = ui->en_range_lt->text();
    } else {
        entity->sel_idx = entity->values.indexOf(entity->sel_val);
        if (entity->sel_idx < 0) {
            entity->sel_idx = 0;
            entity->sel_val = entity->values.first();
        }
    }
    entity->sel_val_expr = ui->en_value_expr->text();
    entity->unit = ui->en_units->text();
    entity->val_type = ui->en_value_type->currentText();
    entity->val_size = ui->en_value_size->text();
    entity->var_type = ui->en_var_type->currentIndex();
    entity->visible = ui->en_visible_chk->isChecked();
    entity->enable = ui->en_enable_chk->isChecked();
    entity->license = ui->en_license_chk->isChecked();
    entity->readonly = 0;
    entity->sigpara = ui->en_sigpara_chk->isChecked();

    TableWidget *table = ui->en_ctrl_table;
    table->CommitCell(-1, true);
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int col : {kGroupCol, kPresValueCol, kTypeCol}) {
            if (!table->item(row, col)) {
                Prompt::Critical(this, QStringLiteral("One or more of table cells are unassigned."));
                FreeParaEntity(entity);
                return nullptr;
            }
        }
    }
    for (int row = 0; row < table->rowCount(); ++row) {
        auto *control = new ParaCon;
        control->header = table->CellText(row, kGroupCol);
        control->label = table->CellText(row, kEntityCol);
        control->value = table->CellText(row, kValueCol);
        control->sel_idx = qMax(0, entity->values.indexOf(table->CellText(row, kPresValueCol)));
        control->act_type = table->CellText(row, kTypeCol);
        entity->para_con.append(control);
    }
    return entity;
}

void ModParameterDlg::on_add_entity_clicked()
{
    if (!CheckEntityForm())
        return;
    ParaEntity *entity = ReadEntityForm(true);
    if (!entity)
        return;
    cur_group->para_entity.append(entity);
    QTreeWidgetItem *item = ui->tree->currentItem();
    QTreeWidgetItem *group_item = item && item->parent() ? item->parent() : item;
    if (group_item) {
        new QTreeWidgetItem(group_item, {entity->label});
        group_item->setExpanded(true);
    }
}

void ModParameterDlg::on_edit_entity_clicked()
{
    if (!cur_entity || !CheckEntityForm())
        return;
    ParaEntity *entity = ReadEntityForm(false);
    if (!entity)
        return;
    entity->ovrds = cur_entity->ovrds;
    cur_entity->ovrds.clear();
    for (ParaOvrd *ovrd : entity->ovrds)
        ovrd->owner = entity;
    const int index = cur_group->para_entity.indexOf(cur_entity);
    cur_group->para_entity[index] = entity;
    FreeParaEntity(cur_entity);
    cur_entity = entity;
    if (QTreeWidgetItem *item = ui->tree->currentItem())
        item->setText(0, entity->label);
}

void ModParameterDlg::on_del_entity_clicked()
{
    if (!cur_entity || !cur_group)
        return;
    ParaGroup *group = cur_group;
    ParaEntity *entity = cur_entity;
    QTreeWidgetItem *item = ui->tree->currentItem();
    group->para_entity.removeOne(entity);
    FreeParaEntity(entity);
    DropTreeItem(item);
}

void ModParameterDlg::DropTreeItem(QTreeWidgetItem *item)
{
    ui->tree->setCurrentItem(nullptr);
    delete item;
    cur_group = nullptr;
    cur_entity = nullptr;
    ClearForm();
}

bool ModParameterDlg::CheckGroupName(const QString &header)
{
    if (!IsValidIdentifier(header)) {
        Prompt::Critical(this, QStringLiteral("Group name has invalid characters."));
        return false;
    }
    // Deliberate: only the hidden root's empty text is compared, so a duplicate name passes here
    // and is left to the validation.
    if (header == ui->tree->invisibleRootItem()->text(0)) {
        Prompt::Critical(this, QStringLiteral("Group name already exits."));
        return false;
    }
    return true;
}

void ModParameterDlg::on_header_add_clicked()
{
    if (!data)
        return;
    const QString header = ui->header->text().trimmed();
    if (!CheckGroupName(header))
        return;
    auto *group = new ParaGroup;
    group->header = header;
    group->helpfile = ui->header_helpfile_edit->text();
    data->para_grp.append(group);
    auto *item = new QTreeWidgetItem(ui->tree, {header});
    ui->tree->setCurrentItem(item);
}

void ModParameterDlg::on_header_edit_clicked()
{
    QTreeWidgetItem *item = ui->tree->currentItem();
    if (!item || item->parent() || !cur_group)
        return;
    const QString header = ui->header->text().trimmed();
    if (!CheckGroupName(header))
        return;
    item->setText(0, header);
    cur_group->header = header;
    cur_group->helpfile = ui->header_helpfile_edit->text();
}

void ModParameterDlg::on_header_del_clicked()
{
    QTreeWidgetItem *item = ui->tree->currentItem();
    if (!item || item->parent() || !cur_group)
        return;
    if (!Prompt::Question(this, QStringLiteral("Press OK to continue deletion."),
                          QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok))
        return;
    ParaGroup *group = cur_group;
    data->para_grp.removeOne(group);
    FreeParaGroup(group);
    DropTreeItem(item);
}

void ModParameterDlg::on_header_helpfile_pb_clicked()
{
    if (!cur_group)
        return;
    const QString file = Prompt::OpenFileName(this, QStringLiteral("Select Entity Group Description File"),
                                              block_dir,
                                              QStringLiteral("HTML-Files (*.htm *.html);;All Files (*)"));
    if (file.isEmpty())
        return;
    const QString name = QFileInfo(file).fileName();
    ui->header_helpfile_edit->setText(name);
    cur_group->helpfile = name;
}

void ModParameterDlg::on_header_up_clicked()
{
    MoveTreeItem(true);
}

void ModParameterDlg::on_header_dn_clicked()
{
    MoveTreeItem(false);
}

void ModParameterDlg::MoveTreeItem(bool up)
{
    QTreeWidget *tree = ui->tree;
    QTreeWidgetItem *item = tree->currentItem();
    if (!item || !data)
        return;
    const int step = up ? -1 : 1;
    QTreeWidgetItem *parent_item = item->parent();
    if (!parent_item) {
        const int row = tree->indexOfTopLevelItem(item);
        const int to = row + step;
        if (to < 0 || to >= tree->topLevelItemCount() || to >= data->para_grp.size())
            return;
        const bool expanded = item->isExpanded();
        data->para_grp.swapItemsAt(row, to);
        tree->takeTopLevelItem(row);
        tree->insertTopLevelItem(to, item);
        item->setExpanded(expanded);
        tree->setCurrentItem(item);
        return;
    }

    const int group_row = tree->indexOfTopLevelItem(parent_item);
    ParaGroup *group = data->para_grp.value(group_row);
    if (!group)
        return;
    const int row = parent_item->indexOfChild(item);
    const int to = row + step;
    if (to >= 0 && to < parent_item->childCount()) {
        group->para_entity.swapItemsAt(row, to);
        parent_item->takeChild(row);
        parent_item->insertChild(to, item);
        tree->setCurrentItem(item);
        return;
    }
    // At either end of its group an entity crosses into the neighbouring group.
    QTreeWidgetItem *next_item = tree->topLevelItem(group_row + step);
    ParaGroup *next = group_row + step >= 0 ? data->para_grp.value(group_row + step) : nullptr;
    if (!next_item || !next)
        return;
    ParaEntity *entity = group->para_entity.takeAt(row);
    parent_item->takeChild(row);
    if (up) {
        next->para_entity.append(entity);
        next_item->addChild(item);
    } else {
        next->para_entity.prepend(entity);
        next_item->insertChild(0, item);
    }
    next_item->setExpanded(true);
    tree->setCurrentItem(item);
}

void ModParameterDlg::FillComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->en_ctrl_table;
    // Where there is nothing to choose from, the cell gets no editor and keeps its text.
    auto no_editor = [table, cbox] {
        delete cbox;
        table->CommitCell(-1, false);
    };
    switch (col) {
    case kGroupCol:
        if (data)
            for (const ParaGroup *group : data->para_grp)
                cbox->addItem(group->header);
        table->AttachCombo(cbox, true);
        return;
    case kEntityCol:
    case kValueCol: {
        const ParaGroup *group = FindGroup(data, table->CellText(row, kGroupCol));
        if (!group) {
            no_editor();
            return;
        }
        if (col == kEntityCol) {
            for (const ParaEntity *entity : group->para_entity)
                if (entity != cur_entity)
                    cbox->addItem(entity->label);
            table->AttachCombo(cbox, true);
            return;
        }
        const ParaEntity *entity = FindEntityInGroup(group, table->CellText(row, kEntityCol));
        if (!entity) {
            no_editor();
            return;
        }
        if (entity->values.isEmpty()) {
            cbox->setEditable(true);
            const QString text = table->CellText(row, kValueCol);
            if (!text.isEmpty())
                cbox->addItem(text);
        } else {
            cbox->addItems(entity->values);
        }
        table->AttachCombo(cbox, false);
        return;
    }
    case kPresValueCol:
        if (ui->en_value_list->count() == 0) {
            no_editor();
            return;
        }
        for (int i = 0; i < ui->en_value_list->count(); ++i)
            cbox->addItem(ui->en_value_list->item(i)->text());
        table->AttachCombo(cbox, true);
        return;
    case kTypeCol:
        if (table->item(row, kEntityCol))
            cbox->addItem(QStringLiteral("SetValue"));
        cbox->addItems({"Disable", "Hide"});
        table->AttachCombo(cbox, false);
        return;
    default:
        no_editor();
    }
}

void ModParameterDlg::TableAddRow(TableWidget *table)
{
    if (table == ui->en_ctrl_table && ui->en_value_list->count() == 0) {
        Prompt::Critical(this, QStringLiteral("Cannot add entity connection. Entity value list is empty."));
        return;
    }
    table->AddEmptyRow();
}

void ModParameterDlg::TableRemoveRow(TableWidget *table)
{
    if (table)
        table->RemoveCurrentRow();
}
