// The parameter model page. It edits working copies of the models, one per item of the model
// combo, and hands copies of them to the Parameters record only when it is synced.
#include "authoring/ModelParameterDlg.h"

#include "app/ErrorList.h"
#include "app/Prompt.h"
#include "params/BlkParaData.h"

#include "ui_ModelParameterDlg.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QResizeEvent>
#include <QScrollBar>

namespace {

QTableWidgetItem *LoadedItem(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setToolTip(text);
    return item;
}

} // namespace

ModelParameterDlg::ModelParameterDlg(BlkParaData *para_data, QWidget *parent)
    : QFrame(parent), para_data(para_data), ui(new Ui::ModelParameterDlg)
{
    ui->setupUi(this);
    ui->tb_header->setRowCount(2);
    connect(ui->tb_header, &TableWidget::FillComboBox, this, &ModelParameterDlg::FillComboBoxData);

    context_menu = new QMenu(this);
    auto add = [this](const QString &text, const QString &tip, void (ModelParameterDlg::*slot)()) {
        auto *action = new QAction(text, this);
        action->setStatusTip(tip);
        connect(action, &QAction::triggered, this, slot);
        context_menu->addAction(action);
        return action;
    };
    add_col_act = add("Add Column", "Add column at right", &ModelParameterDlg::AddColAct);
    insert_col_act = add("Insert Column", "Insert column left of selected item", &ModelParameterDlg::InsertColAct);
    add_row_act = add("Add Row", "Add row at bottom", &ModelParameterDlg::AddRowAct);
    insert_row_act = add("Insert Row", "Insert row above selected item", &ModelParameterDlg::InsertRowAct);
    context_menu->addSeparator();
    shift_col_left_act = add("Shift Column Left", "Shift selected item column to left", &ModelParameterDlg::ShiftColLeftAct);
    shift_col_right_act = add("Shift Column Right", "Shift selected item column to right", &ModelParameterDlg::ShiftColRightAct);
    shift_row_up_act = add("Shift Row Up", "Shift selected item row up", &ModelParameterDlg::ShiftRowUpAct);
    shift_row_down_act = add("Shift Row Down", "Shift selected item row down", &ModelParameterDlg::ShiftRowDownAct);
    context_menu->addSeparator();
    del_col_act = add("Delete Column", "Delete selected item column", &ModelParameterDlg::DelColAct);
    del_row_act = add("Delete Row", "Delete selected item row", &ModelParameterDlg::DelRowAct);

    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ModelParameterDlg::ShowContextMenu);

    LoadModels();
    if (ui->cb_models->count() > 0)
        on_cb_models_currentIndexChanged(0);
}

ModelParameterDlg::~ModelParameterDlg()
{
    // The widgets go after this body; nothing they emit on the way may reach the page.
    for (QObject *child : {static_cast<QObject *>(ui->cb_models), static_cast<QObject *>(ui->tb_header),
                           static_cast<QObject *>(ui->tb_data)})
        child->blockSignals(true);
    for (int i = 0; i < ui->cb_models->count(); ++i)
        FreeModelCat(ModelAt(i));
}

void ModelParameterDlg::LoadModels()
{
    if (!para_data)
        return;
    // The constructor loads the first model itself, once every item is in.
    const QSignalBlocker blocker(ui->cb_models);
    for (const ModelCat *cat : para_data->model_cat)
        ui->cb_models->addItem(QStringLiteral("Model%1").arg(ui->cb_models->count() + 1),
                               QVariant::fromValue(static_cast<void *>(CopyModelCat(cat))));
}

ModelCat *ModelParameterDlg::ModelAt(int index) const
{
    if (index < 0 || index >= ui->cb_models->count())
        return nullptr;
    return static_cast<ModelCat *>(ui->cb_models->itemData(index).value<void *>());
}

void ModelParameterDlg::SaveModels(const QString &block_dir)
{
    this->block_dir = block_dir;
    SyncModels();
}

void ModelParameterDlg::SyncModels()
{
    if (para_data) {
        for (ModelCat *cat : para_data->model_cat)
            FreeModelCat(cat);
        para_data->model_cat.clear();
    }
    on_cb_models_currentIndexChanged(cur_model);
    if (!para_data)
        return;
    for (int i = 0; i < ui->cb_models->count(); ++i)
        para_data->model_cat.append(CopyModelCat(ModelAt(i)));
}

void ModelParameterDlg::ValidateModels(ErrorList *error_list)
{
    SyncModels();
    if (!para_data)
        return;
    // Names are not looked up: the parameter page passes over what it cannot find.
    for (int m = 0; m < para_data->model_cat.size(); ++m) {
        const QList<ModelSubCat *> &subcats = para_data->model_cat[m]->subcats;
        for (int i = 0; i < subcats.size(); ++i) {
            const ModelSubCat *col = subcats[i];
            if (col->group.isEmpty() || col->entity.isEmpty())
                continue;
            for (int j = i + 1; j < subcats.size(); ++j) {
                if (subcats[j]->group == col->group && subcats[j]->entity == col->entity)
                    error_list->AddMessage(ErrorList::Error,
                                           QStringLiteral("Parameter Models: Model%1: Duplicate group:%2/entity:%3 fields exists")
                                               .arg(m + 1).arg(col->group, col->entity));
            }
        }
        if (subcats.isEmpty())
            continue;
        const QStringList &vals = subcats[0]->vals;
        for (int i = 0; i < vals.size(); ++i) {
            if (vals[i].isEmpty())
                continue;
            for (int j = i + 1; j < vals.size(); ++j) {
                // "exits" is the message's own wording.
                if (vals[j] == vals[i])
                    error_list->AddMessage(ErrorList::Error,
                                           QStringLiteral("Parameter Models: Model%1: Duplicate value %2 exits at column 1")
                                               .arg(m + 1).arg(vals[i]));
            }
        }
    }
}

void ModelParameterDlg::StoreCurrentModel()
{
    ModelCat *model = ModelAt(cur_model);
    if (!model)
        return;
    ui->tb_header->CommitCell(-1, true);
    qDeleteAll(model->subcats);
    model->subcats.clear();
    for (int col = 0; col < ui->tb_header->columnCount(); ++col) {
        auto *sub = new ModelSubCat;
        sub->group = ui->tb_header->CellText(0, col);
        sub->entity = ui->tb_header->CellText(1, col);
        // A cell without an item is skipped, so the values below it move up.
        for (int row = 0; row < ui->tb_data->rowCount(); ++row)
            if (const QTableWidgetItem *item = ui->tb_data->item(row, col))
                sub->vals.append(item->text());
        model->subcats.append(sub);
    }
}

void ModelParameterDlg::FillComboBoxData(int row, int col, QComboBox *cbox)
{
    if (para_data && row == 0) {
        for (const ParaGroup *group : para_data->para_grp)
            cbox->addItem(group->header);
    } else if (para_data && row == 1 && ui->tb_header->item(0, col)) {
        // The first column selects among choices; a dependent column must have no list of its own.
        if (const ParaGroup *group = FindGroup(para_data, ui->tb_header->item(0, col)->text())) {
            for (const ParaEntity *entity : group->para_entity)
                if (col == 0 || entity->values.isEmpty())
                    cbox->addItem(entity->label);
        }
    }
    ui->tb_header->AttachCombo(cbox, false);
}

void ModelParameterDlg::on_cb_models_currentIndexChanged(int index)
{
    if (cur_model >= 0 && cur_model < ui->cb_models->count())
        StoreCurrentModel();
    if (index < 0) {
        cur_model = index;
        return;
    }
    if (index == cur_model)
        return;

    ui->tb_header->CommitCell(-1, false);
    ui->tb_header->clearContents();
    ui->tb_data->clearContents();
    const ModelCat *model = ModelAt(index);
    const int cols = model ? model->subcats.size() : 0;
    const int rows = cols > 0 ? model->subcats[0]->vals.size() : 0;
    ui->tb_header->setColumnCount(cols);
    ui->tb_data->setColumnCount(cols);
    ui->tb_data->setRowCount(rows);
    for (int col = 0; col < cols; ++col) {
        const ModelSubCat *sub = model->subcats[col];
        ui->tb_header->setItem(0, col, LoadedItem(sub->group));
        ui->tb_header->setItem(1, col, LoadedItem(sub->entity));
        // Values beyond the first column's length have no row to stand in.
        for (int row = 0; row < rows && row < sub->vals.size(); ++row)
            ui->tb_data->setItem(row, col, LoadedItem(sub->vals[row]));
    }
    cur_model = index;
    MakeHeaderCombos();
    SetColumnWidths();
}

void ModelParameterDlg::on_pb_addmodel_clicked()
{
    const int count = ui->cb_models->count();
    ui->cb_models->addItem(QStringLiteral("Model%1").arg(count + 1),
                           QVariant::fromValue(static_cast<void *>(new ModelCat)));
    ui->cb_models->setCurrentIndex(count);
}

void ModelParameterDlg::on_pb_delmodel_clicked()
{
    const int index = ui->cb_models->currentIndex();
    if (index < 0)
        return;
    if (!Prompt::Question(this, QStringLiteral("Do you want to delete selected model"),
                          QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok))
        return;
    ui->tb_header->CommitCell(-1, false);
    ui->tb_header->setColumnCount(0);
    ui->tb_data->setRowCount(0);
    ui->tb_data->setColumnCount(0);
    FreeModelCat(ModelAt(index));
    // cur_model stays deliberately: the index change that follows stores the emptied tables
    // into the model that moves into this place, and the other items keep their names.
    ui->cb_models->removeItem(index);
}

void ModelParameterDlg::on_tb_header_currentItemChanged(QTableWidgetItem *, QTableWidgetItem *) {}
void ModelParameterDlg::on_tb_data_currentItemChanged(QTableWidgetItem *, QTableWidgetItem *) {}

void ModelParameterDlg::UpdateActionStates()
{
    const int r = ui->tb_data->currentRow();
    const int c = ui->tb_data->currentColumn();
    const int rows = ui->tb_data->rowCount();
    const int cols = ui->tb_data->columnCount();
    add_col_act->setEnabled(true);
    insert_col_act->setEnabled(c >= 0);
    add_row_act->setEnabled(true);
    insert_row_act->setEnabled(r >= 0);
    shift_col_left_act->setEnabled(c >= 1);
    shift_col_right_act->setEnabled(c >= 0 && c < cols - 1);
    shift_row_up_act->setEnabled(r >= 1);
    shift_row_down_act->setEnabled(r >= 0 && r < rows - 1);
    del_col_act->setEnabled(c >= 0);
    del_row_act->setEnabled(r >= 0);
}

void ModelParameterDlg::ShowContextMenu(const QPoint &point)
{
    if (!ModelAt(cur_model) || !ui->tb_data->hasFocus())
        return;
    UpdateActionStates();
    context_menu->popup(mapToGlobal(point));
}

void ModelParameterDlg::AddRowAct()
{
    ui->tb_data->insertRow(ui->tb_data->rowCount());
}

void ModelParameterDlg::InsertRowAct()
{
    const int r = ui->tb_data->currentRow();
    if (r >= 0)
        ui->tb_data->insertRow(r);
}

void ModelParameterDlg::DelRowAct()
{
    const int r = ui->tb_data->currentRow();
    if (r >= 0)
        ui->tb_data->removeRow(r);
}

void ModelParameterDlg::AddColAct()
{
    ui->tb_header->CommitCell(-1, true);
    ui->tb_header->insertColumn(ui->tb_header->columnCount());
    ui->tb_data->insertColumn(ui->tb_data->columnCount());
    AfterColumnChange();
}

void ModelParameterDlg::InsertColAct()
{
    const int c = ui->tb_data->currentColumn();
    if (c < 0)
        return;
    ui->tb_header->CommitCell(-1, true);
    ui->tb_header->insertColumn(c);
    ui->tb_data->insertColumn(c);
    AfterColumnChange();
}

void ModelParameterDlg::DelColAct()
{
    const int c = ui->tb_data->currentColumn();
    if (c < 0)
        return;
    ui->tb_header->CommitCell(-1, true);
    ui->tb_header->removeColumn(c);
    ui->tb_data->removeColumn(c);
    AfterColumnChange();
}

void ModelParameterDlg::ShiftColLeftAct()
{
    const int c = ui->tb_data->currentColumn();
    if (c >= 1)
        SwapColumns(c, c - 1);
}

void ModelParameterDlg::ShiftColRightAct()
{
    const int c = ui->tb_data->currentColumn();
    if (c >= 0 && c < ui->tb_data->columnCount() - 1)
        SwapColumns(c, c + 1);
}

void ModelParameterDlg::ShiftRowUpAct()
{
    const int r = ui->tb_data->currentRow();
    if (r >= 1)
        SwapRows(r, r - 1);
}

void ModelParameterDlg::ShiftRowDownAct()
{
    const int r = ui->tb_data->currentRow();
    if (r >= 0 && r < ui->tb_data->rowCount() - 1)
        SwapRows(r, r + 1);
}

void ModelParameterDlg::SwapColumns(int from, int to)
{
    ui->tb_header->CommitCell(-1, true);
    for (TableWidget *table : {ui->tb_header, ui->tb_data}) {
        for (int row = 0; row < table->rowCount(); ++row) {
            QTableWidgetItem *a = table->takeItem(row, from);
            QTableWidgetItem *b = table->takeItem(row, to);
            table->setItem(row, from, b);
            table->setItem(row, to, a);
        }
        table->setCurrentCell(qMax(table->currentRow(), 0), to);
    }
}

void ModelParameterDlg::SwapRows(int from, int to)
{
    TableWidget *table = ui->tb_data;
    const int col = table->currentColumn();
    for (int c = 0; c < table->columnCount(); ++c) {
        QTableWidgetItem *a = table->takeItem(from, c);
        QTableWidgetItem *b = table->takeItem(to, c);
        table->setItem(from, c, b);
        table->setItem(to, c, a);
    }
    table->setCurrentCell(to, col);
}

void ModelParameterDlg::AfterColumnChange()
{
    MakeHeaderCombos();
    SetColumnWidths();
}

void ModelParameterDlg::MakeHeaderCombos()
{
    QList<qint32> columns;
    for (int col = 0; col < ui->tb_header->columnCount(); ++col)
        columns.append(col);
    ui->tb_header->ColumnKinds(columns, {});
}

void ModelParameterDlg::SetColumnWidths()
{
    const int cols = ui->tb_header->columnCount();
    if (cols == 0)
        return;
    const int width = (this->width() - 15) / cols;
    for (int col = 0; col < cols; ++col) {
        ui->tb_header->setColumnWidth(col, width);
        ui->tb_data->setColumnWidth(col, width);
    }
}

void ModelParameterDlg::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (hide_on_show)
        hide();
}

void ModelParameterDlg::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    SetColumnWidths();
    QScrollBar *bar = ui->tb_header->horizontalScrollBar();
    ui->tb_header->setFixedHeight(2 * ui->tb_header->rowHeight(0) + 5
                                  + (bar->isVisible() ? bar->height() : 0));
}
