// The new block wizard: a pre-filled sample, its tables, the value panel of the parameters, and
// the check before the main window builds the block from the answers.
#include "automation/NewBlkWizard.h"
#include "ui_NewBlkWizard.h"

#include "app/AppSettings.h"
#include "app/ErrorListDlg.h"
#include "app/Prompt.h"
#include "pages/TableWidget.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QListWidget>
#include <algorithm>

namespace {

enum PortColumn { kPortName, kPortVisible, kPortDirection, kPortType, kPortSize };

const QStringList &PortDirections()
{
    static const QStringList words{"Input", "Output"};
    return words;
}

const QStringList &PortTypes()
{
    static const QStringList words{"Real", "Real32", "Real64", "Integer", "Integer16",
                                   "Integer32_Boolean", "Integer64", "Byte"};
    return words;
}

QString CellText(const QTableWidget *table, int row, int col)
{
    const QTableWidgetItem *cell = table->item(row, col);
    return cell ? cell->text() : QString();
}

// A stored index outside the list falls back to the first entry rather than a blank box.
void SetComboIndex(QComboBox *combo, const QString &index_text)
{
    const int index = index_text.toInt();
    combo->setCurrentIndex(index >= 0 && index < combo->count() ? index : 0);
}

// Once per pair of equal names, so three equal names give three messages.
void AddDuplicates(ErrorList *list, const QStringList &names, const QString &text)
{
    for (int i = 0; i < names.size(); ++i)
        for (int j = i + 1; j < names.size(); ++j)
            if (!names[i].isEmpty() && names[i] == names[j])
                list->AddMessage(ErrorList::Error, text.arg(names[i]));
}

} // namespace

NewBlkWizard::NewBlkWizard(QWidget *parent) : QWizard(parent), ui(std::make_unique<Ui::NewBlkWizard>())
{
    ui->setupUi(this);
    if (const AppSettings *settings = GlobalSettings(); settings && !settings->user_dir.isEmpty())
        base_dir = settings->user_dir + "/blocks";
    error_list = new ErrorListDlg(QStringLiteral("Block Creation Errors"),
                                  QStringLiteral("Following errors/warnings are found"), QString(), 0,
                                  this);

    TableWidget *ports = ui->table_ports;
    ports->ColumnKinds({kPortDirection, kPortType}, {});
    connect(ports, &TableWidget::FillComboBox, this, &NewBlkWizard::FillPortsComboBoxData);
    // Room for the widest type's combo box while a cell is edited.
    ports->setColumnWidth(kPortName, 130);
    ports->setColumnWidth(kPortVisible, 130);
    ports->setColumnWidth(kPortDirection, 110);
    ports->setColumnWidth(kPortType, 160);
    // The sample's names are long; the variable names are short but their header is not.
    ui->table_para->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    ui->table_para->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    ui->gb_single->setEnabled(false);
    ui->gb_multiple->setEnabled(false);
}

NewBlkWizard::~NewBlkWizard() = default;

void NewBlkWizard::FillSample()
{
    ui->eb_blk_name->setText(QStringLiteral("SampleMathBlock"));
    ui->eb_blk_title->setText(QStringLiteral("Sample Math Block"));

    ui->cb_location->clear();
    const AppSettings *settings = GlobalSettings();
    if (settings && !settings->third_dir.isEmpty())
        ui->cb_location->addItem(settings->third_dir + "/blocks");
    if (!base_dir.isEmpty() && ui->cb_location->findText(base_dir) < 0)
        ui->cb_location->addItem(base_dir);
    ui->cb_location->setCurrentIndex(0);

    QTableWidget *paras = ui->table_para;
    para_item = nullptr;
    paras->setRowCount(0);
    const QString sv_type = ui->cb_sv_type->itemText(0);
    const QString mv_type = ui->cb_mv_type->itemText(0);
    const QStringList sample[] = {
        // "Substraction" is the sample's own spelling.
        {"Select Operation (for example)", "sel_op",
         "mv#Addition|Substraction|Multiplication|Division#0#" + mv_type},
        {"Enter Offset (for example)", "offset", "sv#0.0#0#" + sv_type},
    };
    for (const QStringList &texts : sample) {
        const int row = paras->rowCount();
        paras->insertRow(row);
        paras->setItem(row, 0, new QTableWidgetItem(texts[0]));
        paras->setItem(row, 1, new QTableWidgetItem(texts[1]));
        paras->item(row, 0)->setData(Qt::UserRole, texts[2]);
    }
    paras->selectRow(0);

    TableWidget *ports = ui->table_ports;
    ports->CommitCell(-1, true);
    ports->setRowCount(0);
    ports->AppendRow({"in0", "i0", "Input", "Real", "1"});
    ports->AppendRow({"in1", "i1", "Input", "Real", "1"});
    ports->AppendRow({"out0", "", "Output", "Real", "1"});

    ui->cb_other_lang->setCurrentIndex(0);
}

QString NewBlkWizard::GetBlockName() const
{
    return ui->eb_blk_name->text().trimmed();
}

QString NewBlkWizard::GetBlockTitle() const
{
    return ui->eb_blk_title->text();
}

QString NewBlkWizard::GetBlockLocation() const
{
    return QDir::fromNativeSeparators(ui->cb_location->currentText().trimmed());
}

int NewBlkWizard::GetOtherLanguageIndex() const
{
    return ui->cb_other_lang->currentIndex();
}

QString NewBlkWizard::GetOtherLanguageText() const
{
    return ui->cb_other_lang->currentText();
}

bool NewBlkWizard::GetParameter(int index, QString &name, QString &variable, QString &value,
                                QStringList &values, QString &type) const
{
    const QTableWidget *paras = ui->table_para;
    if (index < 0 || index >= paras->rowCount())
        return false;
    name = CellText(paras, index, 0).trimmed();
    variable = CellText(paras, index, 1).trimmed();
    value.clear();
    values.clear();
    type.clear();
    const QTableWidgetItem *cell = paras->item(index, 0);
    const QStringList fields = cell ? cell->data(Qt::UserRole).toString().split('#') : QStringList();
    if (fields.size() < 4)
        return true;
    if (fields[0] == QLatin1String("sv"))
        value = fields[1];
    else
        values = fields[1].split('|', Qt::SkipEmptyParts);
    type = fields[3];
    return true;
}

bool NewBlkWizard::GetPort(int index, QString &name, QString &visible, QString &direction,
                           QString &type, int &size) const
{
    const TableWidget *ports = ui->table_ports;
    if (index < 0 || index >= ports->rowCount())
        return false;
    name = ports->CellText(index, kPortName).trimmed();
    visible = ports->CellText(index, kPortVisible);
    direction = ports->CellText(index, kPortDirection);
    type = ports->CellText(index, kPortType);
    bool ok = false;
    size = ports->CellText(index, kPortSize).toInt(&ok);
    if (!ok)
        size = 1;
    return true;
}

bool NewBlkWizard::ValidateInput(bool finalizing)
{
    ui->table_ports->CommitCell(-1, true);
    error_list->ClearMessages();

    const QString raw_name = ui->eb_blk_name->text();
    const QString name = raw_name.trimmed();
    if (name.isEmpty())
        error_list->AddMessage(ErrorList::Error, QStringLiteral("Block name is empty"));
    else if (std::any_of(raw_name.cbegin(), raw_name.cend(), [](QChar c) { return c.isSpace(); }))
        error_list->AddMessage(ErrorList::Error, QStringLiteral("Block name contains white spaces"));
    if (ui->eb_blk_title->text().isEmpty())
        error_list->AddMessage(ErrorList::Error, QStringLiteral("Block title is empty"));
    const QString location = GetBlockLocation();
    if (!name.isEmpty() && !location.isEmpty() && QFileInfo(location + "/" + name).isDir())
        error_list->AddMessage(ErrorList::Warning,
                               QStringLiteral("Block already exist. It will be overwritten."));

    QStringList para_names;
    for (int row = 0; row < ui->table_para->rowCount(); ++row)
        para_names.append(CellText(ui->table_para, row, 0).trimmed());
    if (para_names.contains(QString()))
        error_list->AddMessage(ErrorList::Error, QStringLiteral("One of the parameter name is empty"));
    AddDuplicates(error_list, para_names, QStringLiteral("Duplicate parameter name '%1' found"));

    const TableWidget *ports = ui->table_ports;
    QStringList port_names;
    for (int row = 0; row < ports->rowCount(); ++row)
        port_names.append(ports->CellText(row, kPortName).trimmed());
    if (port_names.contains(QString()))
        error_list->AddMessage(ErrorList::Error, QStringLiteral("One of the port name is empty"));
    AddDuplicates(error_list, port_names, QStringLiteral("Duplicate port name '%1' found"));
    for (int row = 0; row < ports->rowCount(); ++row) {
        bool ok = false;
        const int size = ports->CellText(row, kPortSize).toInt(&ok);
        if (!ok || size < 1)
            error_list->AddMessage(ErrorList::Error,
                                   QStringLiteral("Port '%1' data size is invalid").arg(port_names[row]));
    }

    if (error_list->IsEmpty())
        return true;
    if (!finalizing || error_list->HasErrors())
        error_list->ShowMessages();
    return !error_list->HasErrors();
}

void NewBlkWizard::StoreParaPanel()
{
    if (!para_item)
        return;
    QString text;
    if (ui->list_values->count() == 0) {
        text = "sv#" + ui->eb_value->text() + "#" + QString::number(ui->cb_sv_type->currentIndex())
               + "#" + ui->cb_sv_type->currentText();
    } else {
        QStringList values;
        for (int i = 0; i < ui->list_values->count(); ++i)
            values.append(ui->list_values->item(i)->text());
        text = "mv#" + values.join('|') + "#" + QString::number(ui->cb_mv_type->currentIndex())
               + "#" + ui->cb_mv_type->currentText();
    }
    para_item->setData(Qt::UserRole, text);
}

void NewBlkWizard::LoadParaPanel(const QTableWidgetItem *item)
{
    const QStringList fields = item->data(Qt::UserRole).toString().split('#');
    if (fields.size() >= 3 && fields[0] == QLatin1String("sv")) {
        ui->eb_value->setText(fields[1]);
        SetComboIndex(ui->cb_sv_type, fields[2]);
        return;
    }
    SetComboIndex(ui->cb_mv_type, fields.value(2));
    for (const QString &value : fields.value(1).split('|', Qt::SkipEmptyParts)) {
        auto *entry = new QListWidgetItem(value, ui->list_values);
        entry->setFlags(entry->flags() | Qt::ItemIsEditable);
    }
}

QStringList NewBlkWizard::Texts() const
{
    return {windowTitle()};
}

void NewBlkWizard::done(int result)
{
    if (!finalized
        && !Prompt::Question(this, QStringLiteral("Block is still not finalized. Do you really want to close the wizard"),
                             QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes))
        return;
    QWizard::done(result);
}

void NewBlkWizard::FillPortsComboBoxData(int, int col, QComboBox *cbox)
{
    if (col == kPortDirection)
        cbox->addItems(PortDirections());
    else if (col == kPortType)
        cbox->addItems(PortTypes());
    ui->table_ports->AttachCombo(cbox, false);
}

void NewBlkWizard::on_table_para_itemSelectionChanged()
{
    QTableWidget *paras = ui->table_para;
    if (paras->rowCount() == 0)
        return;
    StoreParaPanel();
    ui->list_values->clear();
    ui->eb_value->clear();
    const QModelIndexList selected = paras->selectionModel()->selectedIndexes();
    para_item = selected.isEmpty() ? nullptr : paras->item(selected.first().row(), 0);
    if (para_item)
        LoadParaPanel(para_item);
    ui->gb_single->setEnabled(para_item != nullptr);
    ui->gb_multiple->setEnabled(para_item != nullptr);
}

void NewBlkWizard::on_pb_browse_loc_clicked()
{
    const QString dir = QDir::fromNativeSeparators(
        Prompt::ExistingDirectory(this, QStringLiteral("Select block location"), base_dir));
    if (dir.isEmpty())
        return;
    base_dir = dir;
    int index = ui->cb_location->findText(dir);
    if (index < 0) {
        ui->cb_location->addItem(dir);
        index = ui->cb_location->count() - 1;
    }
    ui->cb_location->setCurrentIndex(index);
}

void NewBlkWizard::on_pb_en_add_clicked()
{
    QTableWidget *paras = ui->table_para;
    const int row = paras->rowCount();
    const QString name = QStringLiteral("SamplePara%1").arg(row + 1);
    paras->insertRow(row);
    paras->setItem(row, 0, new QTableWidgetItem(name));
    paras->setItem(row, 1, new QTableWidgetItem(name.toLower().replace(' ', '_')));
    paras->selectRow(row);
}

void NewBlkWizard::on_pb_en_rem_clicked()
{
    QTableWidget *paras = ui->table_para;
    const int row = paras->currentRow();
    if (row < 0)
        return;
    // The panel belongs to the row going away: nothing is stored back into it.
    if (paras->item(row, 0) == para_item)
        para_item = nullptr;
    paras->removeRow(row);
    if (paras->rowCount() == 0) {
        para_item = nullptr;
        ui->list_values->clear();
        ui->eb_value->clear();
        ui->gb_single->setEnabled(false);
        ui->gb_multiple->setEnabled(false);
        return;
    }
    paras->selectRow(qMin(row, paras->rowCount() - 1));
}

void NewBlkWizard::MoveParaRow(int step)
{
    QTableWidget *paras = ui->table_para;
    const int row = paras->currentRow();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= paras->rowCount())
        return;
    TableWidget::SwapRows(paras, row, other);
    paras->selectRow(other);
}

void NewBlkWizard::on_pb_en_up_clicked()
{
    MoveParaRow(-1);
}

void NewBlkWizard::on_pb_en_dn_clicked()
{
    MoveParaRow(1);
}

void NewBlkWizard::on_pb_env_add_clicked()
{
    QListWidget *list = ui->list_values;
    ++next_item;
    auto *entry = new QListWidgetItem(QStringLiteral("itemv%1").arg(next_item));
    entry->setFlags(entry->flags() | Qt::ItemIsEditable);
    const int row = list->currentRow();
    list->insertItem(row >= 0 ? row + 1 : list->count(), entry);
    list->setCurrentItem(entry);
}

void NewBlkWizard::on_pb_env_rem_clicked()
{
    delete ui->list_values->takeItem(ui->list_values->currentRow());
}

void NewBlkWizard::MoveValue(int step)
{
    QListWidget *list = ui->list_values;
    const int row = list->currentRow();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= list->count())
        return;
    QListWidgetItem *entry = list->takeItem(row);
    list->insertItem(other, entry);
    list->setCurrentItem(entry);
}

void NewBlkWizard::on_pb_env_up_clicked()
{
    MoveValue(-1);
}

void NewBlkWizard::on_pb_env_dn_clicked()
{
    MoveValue(1);
}

void NewBlkWizard::on_pb_port_add_clicked()
{
    TableWidget *ports = ui->table_ports;
    ports->CommitCell(-1, true);
    ++next_item;
    const int current = ports->currentRow();
    const int row = current >= 0 ? current + 1 : ports->rowCount();
    ports->insertRow(row);
    const QStringList texts{QStringLiteral("port%1").arg(next_item), QString(), "Input", "Real", "1"};
    for (int col = 0; col < texts.size(); ++col)
        ports->setItem(row, col, new QTableWidgetItem(texts[col]));
    ports->setCurrentCell(row, kPortName);
}

void NewBlkWizard::on_pb_port_rem_clicked()
{
    TableWidget *ports = ui->table_ports;
    ports->CommitCell(-1, true);
    const int row = ports->currentRow();
    if (row >= 0)
        ports->removeRow(row);
}

void NewBlkWizard::MovePortRow(int step)
{
    TableWidget *ports = ui->table_ports;
    ports->CommitCell(-1, true);
    const int row = ports->currentRow();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= ports->rowCount())
        return;
    TableWidget::SwapRows(ports, row, other);
    ports->setCurrentCell(other, qMax(ports->currentColumn(), 0));
}

void NewBlkWizard::on_pb_port_up_clicked()
{
    MovePortRow(-1);
}

void NewBlkWizard::on_pb_port_dn_clicked()
{
    MovePortRow(1);
}

void NewBlkWizard::on_pb_validate_clicked()
{
    ValidateInput(false);
    if (QAbstractButton *finish = button(QWizard::FinishButton))
        finish->setEnabled(false);
}

void NewBlkWizard::on_pb_finalize_clicked()
{
    if (!ValidateInput(true))
        return;
    StoreParaPanel();
    finalized = 1;
    accept();
}

// Only Finalize may end the wizard on its last page.
void NewBlkWizard::on_NewBlkWizard_currentIdChanged(int id)
{
    if (id == 3)
        if (QAbstractButton *finish = button(QWizard::FinishButton))
            finish->hide();
}
