// The Miscellaneous page. Its record is rebuilt from the widgets on every sync; its checks over
// the record live in MiscChecks and look up names in the Parameters and the code page's ports.
#include "pages/MiscConfigDlg.h"

#include "app/AppSettings.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "authoring/ModParameterDlg.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkMiscFileIO.h"
#include "pages/CodeConfigDlg.h"
#include "pages/MiscChecks.h"
#include "params/BlkParaData.h"

#include "ui_MiscConfigDlg.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHeaderView>

namespace {

const char kMiscFile[] = "/blk_misc.cfg";
const char kTitle[] = "ZEMA";

QStringList ListTexts(const QListWidget *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts.append(list->item(i)->text());
    return texts;
}

QString RootDir()
{
    const AppSettings *settings = GlobalSettings();
    return settings ? settings->root_dir : QString();
}

} // namespace

MiscConfigDlg::MiscConfigDlg(MainWindow *main_window, QWidget *parent)
    : QFrame(parent), main_window(main_window), ui(new Ui::MiscConfigDlg)
{
    ui->setupUi(this);

    TableWidget *vars = ui->code_intrins_var_table;
    vars->ColumnKinds({1, 2}, {});
    vars->setRowCount(2);
    vars->SetCellText(0, 0, QStringLiteral("_SimStepSize"));
    vars->SetCellText(1, 0, QStringLiteral("_ZeroCrossing"));
    vars->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    vars->setMaximumHeight(vars->horizontalHeader()->sizeHint().height() + vars->verticalHeader()->length()
                           + 2 * vars->frameWidth() + 4);
    connect(vars, &TableWidget::FillComboBox, this, &MiscConfigDlg::FillIntrinsVarComboBoxData);

    TableWidget *conds = ui->para_cond_table;
    conds->ColumnKinds({}, {0, 1});
    conds->menu_enabled = 1;
    conds->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connect(conds, &TableWidget::FillComboBox, this, &MiscConfigDlg::FillPortsComboBoxData);
    connect(conds, &TableWidget::AddRowSignal, this, &MiscConfigDlg::TableAddRow);
    connect(conds, &TableWidget::RemoveRowSignal, this, &MiscConfigDlg::TableRemoveRow);
}

MiscConfigDlg::~MiscConfigDlg()
{
    if (own_data)
        FreeBlkMiscData(data);
}

void MiscConfigDlg::LoadMiscData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    if (own_data)
        FreeBlkMiscData(data);
    data = nullptr;
    own_data = 0;
    if (block_data) {
        if (!block_data->misc)
            block_data->misc = new BlkMiscData;
        data = block_data->misc;
    } else {
        // A directory without the file is a new one, not a failure worth a box.
        if (!block_dir.isEmpty() && QFileInfo::exists(block_dir + QLatin1String(kMiscFile))) {
            BlkMiscFileIO io(QString(), nullptr, 0);
            data = io.LoadFile(block_dir + QLatin1String(kMiscFile), QLatin1String(kTitle));
        }
        if (!data)
            data = new BlkMiscData;
        own_data = 1;
    }
    FillForm();
}

void MiscConfigDlg::FillForm()
{
    TableWidget *vars = ui->code_intrins_var_table;
    // A variable that has no fixed row is dropped from the page, and so from the next sync.
    for (const BlkCharVar *var : data->char_vars) {
        for (int row = 0; row < vars->rowCount(); ++row) {
            if (vars->CellText(row, 0) != var->char_var_name)
                continue;
            vars->SetCellText(row, 1, var->para_grp);
            vars->SetCellText(row, 2, var->para_entity);
            break;
        }
    }
    TableWidget *conds = ui->para_cond_table;
    conds->setRowCount(0);
    for (const QString &entry : data->para_cond) {
        const QStringList parts = entry.split(QLatin1Char('$'));
        const int row = conds->rowCount();
        conds->insertRow(row);
        conds->SetCellText(row, 0, parts[0]);
        if (parts.size() > 1)
            conds->SetCellText(row, 1, parts[1]);
    }
    ui->eb_cpu_ops->setText(data->cpu_ops);
    ui->dev_remarks->setPlainText(data->dev_rem);
    ui->lb_depend_blk->clear();
    ui->lb_depend_blk->addItems(data->blk_depends);
    ui->lb_depend_code->clear();
    ui->lb_depend_code->addItems(data->cpp_depends);
}

void MiscConfigDlg::SyncMiscData()
{
    if (!data)
        return;
    TableWidget *vars = ui->code_intrins_var_table;
    TableWidget *conds = ui->para_cond_table;
    vars->CommitCell(-1, true);
    conds->CommitCell(-1, true);

    qDeleteAll(data->char_vars);
    data->char_vars.clear();
    // A row stays in the record even with no parameter chosen.
    for (int row = 0; row < vars->rowCount(); ++row) {
        if (!vars->item(row, 0))
            continue;
        data->char_vars.append(new BlkCharVar{vars->CellText(row, 0), vars->CellText(row, 1), vars->CellText(row, 2)});
    }
    data->blk_depends = ListTexts(ui->lb_depend_blk);
    data->cpp_depends = ListTexts(ui->lb_depend_code);
    data->para_cond.clear();
    for (int row = 0; row < conds->rowCount(); ++row) {
        if (!conds->item(row, 0))
            continue;
        QString entry = conds->CellText(row, 0).trimmed();
        if (conds->item(row, 1))
            entry += QLatin1Char('$') + conds->CellText(row, 1).trimmed();
        data->para_cond.append(entry);
    }
    data->cpu_ops = ui->eb_cpu_ops->text();
    data->dev_rem = ui->dev_remarks->toPlainText();
}

void MiscConfigDlg::SaveMiscData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    SyncMiscData();
    if (block_data) {
        if (block_data->misc != data) {
            FreeBlkMiscData(block_data->misc);
            block_data->misc = data;
        }
        own_data = 0;
        return;
    }
    BlkMiscFileIO io(QString(), nullptr, 0);
    io.SaveFile(block_dir + QLatin1String(kMiscFile), data, QLatin1String(kTitle));
}

MiscCheckContext MiscConfigDlg::CheckContext() const
{
    MiscCheckContext context;
    context.misc = data;
    if (main_window && main_window->param_page)
        context.params = main_window->param_page->data;
    if (main_window && main_window->code_page)
        context.code = main_window->code_page->data;
    return context;
}

void MiscConfigDlg::ValidateMiscData(ErrorList *error_list)
{
    if (!data)
        return;
    SyncMiscData();
    ValidateCharVars(error_list);
    ValidateCpuOps(error_list);
    ValidateParaConds(error_list);
}

void MiscConfigDlg::ValidateCharVars(ErrorList *error_list)
{
    ValidateMiscCharVars(CheckContext(), error_list);
}

void MiscConfigDlg::ValidateCpuOps(ErrorList *error_list)
{
    ValidateMiscCpuOps(CheckContext(), error_list);
}

void MiscConfigDlg::ValidateParaConds(ErrorList *error_list)
{
    ValidateMiscParaConds(CheckContext(), error_list);
}

// The conditions table has no combo column, so this is never asked; it only places the box.
void MiscConfigDlg::FillPortsComboBoxData(int, int, QComboBox *cbox)
{
    ui->para_cond_table->AttachCombo(cbox, false);
}

void MiscConfigDlg::FillIntrinsVarComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *vars = ui->code_intrins_var_table;
    const BlkParaData *params = CheckContext().params;
    if (col == 1) {
        if (params)
            for (const ParaGroup *group : params->para_grp)
                cbox->addItem(group->header);
    } else if (col == 2) {
        const QTableWidgetItem *group_item = vars->item(row, 1);
        const ParaGroup *group = group_item ? FindGroup(params, group_item->text()) : nullptr;
        if (!group) {
            // No group chosen: no editor, and the cell keeps what it has.
            vars->CommitCell(-1, false);
            return;
        }
        for (const ParaEntity *entity : group->para_entity)
            cbox->addItem(entity->label);
    }
    vars->AttachCombo(cbox, true);
}

void MiscConfigDlg::TableAddRow(TableWidget *table)
{
    if (table)
        table->AddEmptyRow();
}

void MiscConfigDlg::TableRemoveRow(TableWidget *table)
{
    if (table)
        table->RemoveCurrentRow();
}

bool MiscConfigDlg::AddBelowRoot(QListWidget *list, const QString &path, const QString &refusal)
{
    const QString rel = RelativeToRoot(RootDir(), path);
    // The installed directory itself adds nothing and says nothing.
    if (rel.isEmpty())
        return false;
    if (rel == path) {
        Prompt::Warning(this, refusal.arg(path));
        return false;
    }
    list->addItem(rel);
    return true;
}

void MiscConfigDlg::on_pb_blk_depend_add_clicked()
{
    const QString dir = Prompt::ExistingDirectory(this, QStringLiteral("Select dependency block directory"), RootDir());
    if (!dir.isEmpty())
        AddBelowRoot(ui->lb_depend_blk, dir,
                     QStringLiteral("Selected block directory %1 shall be within program installed directory."));
}

void MiscConfigDlg::on_pb_blk_depend_rem_clicked()
{
    if (ui->lb_depend_blk->currentRow() >= 0)
        delete ui->lb_depend_blk->takeItem(ui->lb_depend_blk->currentRow());
}

void MiscConfigDlg::on_pb_cdepend_add_clicked()
{
    const QStringList files = Prompt::OpenFileNames(this, QStringLiteral("Select files to add"), RootDir(),
                                                    QStringLiteral("Files (*.c *.cpp *.*)"));
    // The first refusal ends the loop; the files before it stay added.
    for (const QString &file : files)
        if (!AddBelowRoot(ui->lb_depend_code, file,
                          QStringLiteral("Selected file directory %1 shall be within program installed directory.")))
            break;
}

void MiscConfigDlg::on_pb_cdepend_add_dir_clicked()
{
    const QString dir = Prompt::ExistingDirectory(this, QStringLiteral("Select directory to add"), RootDir());
    if (!dir.isEmpty())
        AddBelowRoot(ui->lb_depend_code, dir,
                     QStringLiteral("Selected directory %1 shall be within program installed directory."));
}

void MiscConfigDlg::on_pb_cdepend_rem_clicked()
{
    if (ui->lb_depend_code->currentRow() >= 0)
        delete ui->lb_depend_code->takeItem(ui->lb_depend_code->currentRow());
}

void MiscConfigDlg::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (hide_on_show)
        hide();
}
