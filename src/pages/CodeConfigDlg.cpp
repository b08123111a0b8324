// The code page: one form per port, found by name, and the two tables about the code as a whole.
#include "pages/CodeConfigDlg.h"

#include "ui_CodeConfigDlg.h"

#include "app/AppSettings.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "codegen/CodeFileConversion.h"
#include "codegen/PythonModule.h"
#include "codegen/TemplateGenerator.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkCodeFileIO.h"
#include "pages/BlkPresData.h"
#include "pages/CodeChecks.h"
#include "pages/PresentationDlg.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "params/ParameterDlg.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QUrl>

namespace {

enum PhyColumn { kPort1, kPort2, kElName, kElType, kElMf, kElenGrp, kElenEn, kElenVal, kElvalGrp, kElvalEn };
enum FuncColumn { kFuncName, kParaGrp, kParaEn, kParaVal, kFuncPort, kFuncDim, kFuncSize };

const QStringList kGeneralDataTypes = {"Real", "Real32", "Real64", "Integer", "Integer16",
                                       "Integer32_Boolean", "Integer64", "Byte", "Depends"};
const QStringList kPhysicalDataTypes = {"Real", "Real32", "Real64"};
const QStringList kGeneralMemTypes = {"Cacheable", "Non-Cacheable", "Depends"};
const QStringList kPhysicalMemTypes = {"Cacheable"};
const int kMaxDims = 4;

// Ends the edit without writing, so a cell that offers no choice keeps its text.
void ShowNoCombo(TableWidget *table)
{
    table->CommitCell(-1, false);
}

// The stored value is selected; one outside the list is added so that it survives.
void FillTypeCombo(QComboBox *cbox, const QStringList &items, const QString &value)
{
    cbox->addItems(items);
    if (value.isEmpty()) {
        cbox->setCurrentIndex(0);
        return;
    }
    int index = cbox->findText(value, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) {
        cbox->addItem(value);
        index = cbox->count() - 1;
    }
    cbox->setCurrentIndex(index);
}

void SelectText(QComboBox *cbox, const QString &text)
{
    const int index = cbox->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index >= 0)
        cbox->setCurrentIndex(index);
}

QStringList GroupHeaders(const BlkParaData *data)
{
    QStringList headers;
    if (data)
        for (const ParaGroup *group : data->para_grp)
            headers << group->header;
    return headers;
}

QStringList EntityLabels(const ParaGroup *group)
{
    QStringList labels;
    for (const ParaEntity *entity : group->para_entity)
        labels << entity->label;
    return labels;
}

BlkCodePort *NewDefaultPort(const QString &name, bool primary)
{
    auto *port = new BlkCodePort;
    port->port_name = name;
    port->data_name = name;
    port->domain = QStringLiteral("Number");
    port->data_type = QStringLiteral("Real");
    port->mem_type = QStringLiteral("Cacheable");
    port->dim_dependency = primary ? QStringLiteral("Script") : QStringLiteral("Child Port");
    return port;
}

BlkCodePort *PortOfItem(const QListWidgetItem *item)
{
    return item ? static_cast<BlkCodePort *>(item->data(Qt::UserRole).value<void *>()) : nullptr;
}

} // namespace

CodeConfigDlg::CodeConfigDlg(MainWindow *main_window, BlkParaData *para_data, BlkParaData *initcond_data,
                             QWidget *parent)
    : QFrame(parent), main_window(main_window), para_data(para_data), initcond_data(initcond_data),
      ui(std::make_unique<Ui::CodeConfigDlg>())
{
    el_types = QStringList{"Through(Const.)", "Through(Var.)", "Cross/Through(Const.)",
                           "Cross/Through(Var.)", "Measuring"};
    ui->setupUi(this);

    TableWidget *phy = ui->phy_para_table;
    phy->setColumnCount(10);
    phy->setHorizontalHeaderLabels({"Port1", "Port2", "Var.Name", "Type", "Mul.Factor (x10^n)",
                                    "Para. Grp.(El. Enable)", "Para. En.(El. Enable)",
                                    "Entity Val.(El. Enable)", "Para. Grp (El. Val.)",
                                    "Para. Entity (El. Val.)"});
    phy->ColumnKinds({kPort1, kPort2, kElName, kElType, kElenGrp, kElenEn, kElenVal, kElvalGrp, kElvalEn},
                     {kElMf});
    phy->menu_enabled = 1;
    phy->installEventFilter(this);

    TableWidget *func = ui->code_func_table;
    func->setColumnCount(7);
    func->setHorizontalHeaderLabels({"Function Name", "Para. Group", "Para. Entity Name",
                                     "Para. Entity Value", "Port Name", "Port Dimension", "Port Dim. Size"});
    func->ColumnKinds({kParaGrp, kParaEn, kParaVal, kFuncPort}, {kFuncName, kFuncDim, kFuncSize});
    func->menu_enabled = 1;
    func->horizontalHeader()->setStretchLastSection(true);
    // Wide enough for every header; the port columns of the elements follow the table's width.
    phy->horizontalHeader()->resizeSections(QHeaderView::ResizeToContents);
    func->horizontalHeader()->resizeSections(QHeaderView::ResizeToContents);
    phy->setColumnWidth(kElType, phy->fontMetrics().horizontalAdvance(el_types.value(2)) + 24);
    ui->port_dim_table->horizontalHeader()->setStretchLastSection(true);
    ui->port_dim_table->verticalHeader()->hide();

    for (TableWidget *table : {phy, func}) {
        connect(table, &TableWidget::AddRowSignal, this, &CodeConfigDlg::TableAddRow);
        connect(table, &TableWidget::RemoveRowSignal, this, &CodeConfigDlg::TableRemoveRow);
    }
    connect(func, &TableWidget::FillComboBox, this, &CodeConfigDlg::FillFunctionComboBoxData);
    connect(phy, &TableWidget::FillComboBox, this, &CodeConfigDlg::FillPhyPortTableComboBoxData);
    connect(phy, &TableWidget::ComboBoxSelectionChanged, this, &CodeConfigDlg::PhyPortTableCBoxSelChanged);
}

CodeConfigDlg::~CodeConfigDlg()
{
    if (own_data)
        FreeBlkCodeData(data);
}

QString CodeConfigDlg::PortTypeOf(const QString &name) const
{
    if (!main_window || !main_window->pres_page)
        return QString();
    return main_window->pres_page->PortTypeOf(name);
}

CodeCheckContext CodeConfigDlg::CheckContext() const
{
    CodeCheckContext context;
    context.code = data;
    context.params = para_data;
    if (main_window && main_window->config_page)
        context.config = main_window->config_page->data;
    context.port_type = [this](const QString &name) { return PortTypeOf(name); };
    return context;
}

void CodeConfigDlg::UpdatePrimaryFlag()
{
    const BlkParaData *config = nullptr;
    if (main_window && main_window->config_page)
        config = main_window->config_page->data;
    primary = IsPrimaryBlock(config) ? 1 : 0;
}

void CodeConfigDlg::showEvent(QShowEvent *event)
{
    if (hide_on_show)
        hide();
    UpdatePrimaryFlag();
    for (QPushButton *button : {ui->pb_port_data_save, ui->pb_gen_tmpl_code, ui->pb_encodefiles})
        button->setEnabled(primary);
    QFrame::showEvent(event);
}

bool CodeConfigDlg::eventFilter(QObject *watched, QEvent *event)
{
    // The table, not the page: a page resized while hidden lays out its children only later.
    if (watched == ui->phy_para_table && event->type() == QEvent::Resize) {
        const int width = ui->phy_para_table->width() / 12;
        ui->phy_para_table->setColumnWidth(kPort1, width);
        ui->phy_para_table->setColumnWidth(kPort2, width);
    }
    return QFrame::eventFilter(watched, event);
}

void CodeConfigDlg::on_ports_lb_itemSelectionChanged()
{
    // Whatever the form held and was not saved is dropped here.
    ui->port_dataname_eb->clear();
    ui->port_datatype_cb->clear();
    ui->port_memtype_cb->clear();
    ui->port_domain_cb->setCurrentIndex(0);
    ui->port_memalloc_cb->setCurrentIndex(0);
    ui->port_units_eb->clear();
    ui->cb_port_dim_depend->clear();
    ui->port_add_size->clear();
    ui->port_offset_idx->clear();

    cur_item = ui->ports_lb->currentItem();
    BlkCodePort *port = PortOfItem(cur_item);
    if (!port)
        return;
    FillForm();
}

void CodeConfigDlg::FillForm()
{
    BlkCodePort *port = PortOfItem(cur_item);
    const QString type = PortTypeOf(port->port_name);
    const bool physical = type == QLatin1String("Physical") || type == QLatin1String("Phy.Ref.");
    QStringList depends;
    if (!primary)
        depends << QStringLiteral("Child Port");
    else if (physical || type == QLatin1String("Output"))
        depends << QStringLiteral("Script");
    else if (type == QLatin1String("Input"))
        depends << QStringLiteral("Script") << QStringLiteral("Connected Port");
    else
        depends << QStringLiteral("Connected Port");
    ui->cb_port_dim_depend->addItems(depends);
    const bool restricted = primary && physical;

    ui->port_dataname_eb->setText(port->data_name);
    if (port->domain.isEmpty())
        port->domain = QStringLiteral("Number");
    SelectText(ui->port_domain_cb, port->domain);
    const int alloc = port->mem_alloc.toInt();
    if (alloc >= 0 && alloc < ui->port_memalloc_cb->count())
        ui->port_memalloc_cb->setCurrentIndex(alloc);
    FillTypeCombo(ui->port_datatype_cb, restricted ? kPhysicalDataTypes : kGeneralDataTypes, port->data_type);
    FillTypeCombo(ui->port_memtype_cb, restricted ? kPhysicalMemTypes : kGeneralMemTypes, port->mem_type);
    ui->port_units_eb->setText(port->units);
    if (port->dim_dependency.isEmpty())
        port->dim_dependency = QStringLiteral("Script");
    SelectText(ui->cb_port_dim_depend, port->dim_dependency);
    ui->port_add_size->setText(port->mem_extra);
    ui->port_offset_idx->setText(port->mem_offset);
    on_cb_port_dim_depend_currentIndexChanged(ui->cb_port_dim_depend->currentText());
}

void CodeConfigDlg::on_cb_port_dim_depend_currentIndexChanged(const QString &arg1)
{
    TableWidget *table = ui->port_dim_table;
    table->CommitCell(-1, true);
    table->clear();
    table->setRowCount(0);
    table->setColumnCount(0);
    // Any other dependency takes the size from elsewhere and stores no dimension.
    if (arg1 != QLatin1String("Script"))
        return;
    table->setRowCount(kMaxDims);
    table->setColumnCount(2);
    table->setHorizontalHeaderLabels({"Dim.", "Script"});
    table->ColumnKinds({}, {1});
    table->setColumnWidth(0, 50);
    const BlkCodePort *port = PortOfItem(cur_item);
    const bool own_dims = port && port->dim_dependency == arg1;
    for (int row = 0; row < kMaxDims; ++row) {
        auto *number = new QTableWidgetItem(QString::number(row + 1));
        number->setFlags(number->flags() & ~Qt::ItemIsEditable);
        table->setItem(row, 0, number);
        const QString text = own_dims && row < port->dims.size() ? port->dims.at(row)->para1 : QString();
        table->setItem(row, 1, new QTableWidgetItem(text));
    }
}

void CodeConfigDlg::on_pb_port_data_save_clicked()
{
    SavePortData();
}

void CodeConfigDlg::SavePortData()
{
    BlkCodePort *port = PortOfItem(cur_item);
    if (!port)
        return;
    port->port_name = cur_item->text();
    port->data_name = ui->port_dataname_eb->text();
    port->data_type = ui->port_datatype_cb->currentText();
    port->mem_type = ui->port_memtype_cb->currentText();
    port->mem_alloc = QString::number(ui->port_memalloc_cb->currentIndex());
    port->domain = ui->port_domain_cb->currentText();
    port->units = ui->port_units_eb->text();
    port->dim_dependency = ui->cb_port_dim_depend->currentText();
    port->mem_extra = ui->port_add_size->text();
    port->mem_offset = ui->port_offset_idx->text();

    qDeleteAll(port->dims);
    port->dims.clear();
    TableWidget *table = ui->port_dim_table;
    table->CommitCell(-1, true);
    if (port->dim_dependency == QLatin1String("Script")) {
        // Empty rows are skipped, so a gap between two sizes closes up.
        for (int row = 0; row < table->rowCount(); ++row) {
            const QString text = table->CellText(row, 1);
            if (text.isEmpty())
                continue;
            auto *dim = new BlkPortDim;
            dim->para1 = text;
            port->dims.append(dim);
        }
    }

    ErrorListDlg *shown = main_window ? main_window->error_list : nullptr;
    ErrorList local;
    ErrorList *list = shown ? static_cast<ErrorList *>(shown) : &local;
    list->ClearMessages();
    ValidatePortSizes(port, list);
    if (list->IsEmpty())
        return;
    if (shown)
        shown->ShowMessages();
    // A port with a bad size keeps no dimension at all; the form keeps what was typed.
    qDeleteAll(port->dims);
    port->dims.clear();
}

void CodeConfigDlg::SetPortForm(int row, const QString &data_type, int size)
{
    ui->ports_lb->setCurrentRow(row);
    on_ports_lb_itemSelectionChanged();
    if (ui->port_dim_table->rowCount() > 0)
        ui->port_dim_table->SetCellText(0, 1, QString::number(size));
    SelectText(ui->port_datatype_cb, data_type);
    SavePortData();
}

void CodeConfigDlg::TableAddRow(TableWidget *table)
{
    if (table)
        table->AddEmptyRow();
}

void CodeConfigDlg::TableRemoveRow(TableWidget *table)
{
    if (table)
        table->RemoveCurrentRow();
}

void CodeConfigDlg::FillFunctionComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->code_func_table;
    if (table->CellText(row, kFuncName).isEmpty()) {
        ShowNoCombo(table);
        return;
    }
    switch (col) {
    case kParaGrp:
        cbox->addItems(GroupHeaders(para_data));
        break;
    case kParaEn: {
        const ParaGroup *group = FindGroup(para_data, table->CellText(row, kParaGrp));
        if (!group) {
            ShowNoCombo(table);
            return;
        }
        cbox->addItems(EntityLabels(group));
        break;
    }
    case kParaVal: {
        const ParaGroup *group = FindGroup(para_data, table->CellText(row, kParaGrp));
        const ParaEntity *entity = group ? FindEntityInGroup(group, table->CellText(row, kParaEn)) : nullptr;
        if (!entity) {
            ShowNoCombo(table);
            return;
        }
        cbox->setEditable(true);
        const QString text = table->CellText(row, col);
        if (!text.isEmpty())
            cbox->addItem(text);
        for (const QString &value : entity->values)
            if (value != text)
                cbox->addItem(value);
        break;
    }
    case kFuncPort:
        if (data)
            for (const BlkCodePort *port : data->ports)
                cbox->addItem(port->port_name);
        break;
    default:
        break;
    }
    table->AttachCombo(cbox, true);
}

void CodeConfigDlg::FillPhyPortTableComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->phy_para_table;
    bool with_select = false;
    switch (col) {
    case kPort1:
    case kPort2:
        if (data)
            for (const BlkCodePort *port : data->ports)
                if (!port->data_name.isEmpty())
                    cbox->addItem(port->port_name);
        break;
    case kElName: {
        cbox->setEditable(true);
        const QString text = table->CellText(row, col);
        if (!text.isEmpty())
            cbox->addItem(text);
        break;
    }
    case kElType:
        cbox->addItems(el_types);
        break;
    case kElenGrp:
    case kElvalGrp:
        cbox->addItems(GroupHeaders(para_data));
        with_select = true;
        break;
    case kElenEn:
    case kElvalEn: {
        const ParaGroup *group = FindGroup(para_data, table->CellText(row, col - 1));
        if (!group) {
            ShowNoCombo(table);
            return;
        }
        cbox->addItems(EntityLabels(group));
        break;
    }
    case kElenVal: {
        const ParaEntity *entity = nullptr;
        if (const ParaGroup *group = FindGroup(para_data, table->CellText(row, kElenGrp)))
            entity = FindEntityInGroup(group, table->CellText(row, kElenEn));
        if (!entity) {
            ShowNoCombo(table);
            return;
        }
        cbox->addItems(entity->values);
        break;
    }
    default:
        break;
    }
    table->AttachCombo(cbox, with_select);
}

void CodeConfigDlg::PhyPortTableCBoxSelChanged(int row, int col, int cur_index, int prev_index)
{
    if (col > kPort2)
        return;
    TableWidget *table = ui->phy_para_table;
    const QString port1 = table->CellText(row, kPort1);
    const QString port2 = table->CellText(row, kPort2);
    if (port1.isEmpty() || port2.isEmpty())
        return;
    const BlkCodePort *code1 = FindCodePort(data, port1);
    const BlkCodePort *code2 = FindCodePort(data, port2);
    const QString name1 = code1 ? code1->data_name : QString();
    const QString name2 = code2 ? code2->data_name : QString();
    // Overwrites a name typed by hand: the element is named after its ports each time.
    if (!name1.isEmpty() && !name2.isEmpty())
        table->SetCellText(row, kElName, name1 + "_" + name2);
    if (!primary) {
        table->SetCellText(row, kElType, el_types.value(4));
        table->SetCellText(row, kElMf, QString());
        table->SetCellText(row, kElenGrp, QString());
    }
}

void CodeConfigDlg::FillPortList()
{
    ui->ports_lb->clear();
    if (!data)
        return;
    for (BlkCodePort *port : data->ports) {
        auto *item = new QListWidgetItem(port->port_name);
        item->setData(Qt::UserRole, QVariant::fromValue<void *>(port));
        ui->ports_lb->addItem(item);
    }
}

void CodeConfigDlg::SyncCodeData()
{
    if (!data)
        return;
    data->create_inst = 0;
    if (para_data)
        for (const ParaGroup *group : para_data->para_grp)
            for (const ParaEntity *entity : group->para_entity)
                if (entity->var_type == 2)
                    data->create_inst = 1;

    // Without a presentation there is no master list, and the ports stay as they are.
    BlkPresData *pres = main_window && main_window->pres_page ? main_window->pres_page->data : nullptr;
    if (pres) {
        QList<BlkCodePort *> old_ports = data->ports;
        data->ports.clear();
        for (const BlkPort *pres_port : pres->ports) {
            BlkCodePort *port = nullptr;
            for (int i = 0; i < old_ports.size() && !port; ++i)
                if (old_ports.at(i)->port_name == pres_port->name)
                    port = old_ports.takeAt(i);
            // A renamed port starts again from the defaults.
            data->ports.append(port ? port : NewDefaultPort(pres_port->name, primary));
        }
        for (BlkCodePort *port : old_ports)
            FreeBlkCodePort(port);
    }

    cur_item = nullptr;
    ui->ports_lb->setCurrentRow(-1);
    on_cb_port_dim_depend_currentIndexChanged(QString());
    FillPortList();
    cur_item = nullptr;

    qDeleteAll(data->funcs);
    data->funcs.clear();
    TableWidget *func_table = ui->code_func_table;
    func_table->CommitCell(-1, true);
    for (int row = 0; row < func_table->rowCount(); ++row) {
        if (!func_table->item(row, kFuncName))
            continue;
        auto *func = new BlkCodeFunc;
        func->func_name = func_table->CellText(row, kFuncName);
        func->para_grp = func_table->CellText(row, kParaGrp);
        func->para_en_name = func_table->CellText(row, kParaEn);
        func->para_en_val = func_table->CellText(row, kParaVal);
        func->port = func_table->CellText(row, kFuncPort);
        func->dim = func_table->CellText(row, kFuncDim);
        func->size = func_table->CellText(row, kFuncSize);
        data->funcs.append(func);
    }

    qDeleteAll(data->elements);
    data->elements.clear();
    TableWidget *phy_table = ui->phy_para_table;
    phy_table->CommitCell(-1, true);
    for (int row = 0; row < phy_table->rowCount(); ++row) {
        if (!phy_table->item(row, kPort1))
            continue;
        auto *element = new BlkPhyElement;
        element->port1 = phy_table->CellText(row, kPort1).trimmed();
        element->port2 = phy_table->CellText(row, kPort2).trimmed();
        element->el_name = phy_table->CellText(row, kElName).trimmed();
        element->el_type = qMin(int(el_types.indexOf(phy_table->CellText(row, kElType))), 4);
        element->el_mf = phy_table->CellText(row, kElMf);
        element->elen_para_grp = phy_table->CellText(row, kElenGrp);
        element->elen_para_en = phy_table->CellText(row, kElenEn);
        element->elen_para_en_val = phy_table->CellText(row, kElenVal);
        element->elval_para_grp = phy_table->CellText(row, kElvalGrp);
        element->elval_para_en = phy_table->CellText(row, kElvalEn);
        if (element->elval_para_grp.isEmpty())
            element->elval_para_en.clear();
        if (element->elen_para_grp.isEmpty()) {
            element->elen_para_en.clear();
            element->elen_para_en_val.clear();
        }
        // A block that is not primary only measures.
        if (!primary) {
            element->el_type = 4;
            element->elval_para_grp.clear();
            element->elval_para_en.clear();
            element->elen_para_grp.clear();
            element->elen_para_en.clear();
            element->elen_para_en_val.clear();
        }
        data->elements.append(element);
    }
    LinkPhyElements(data);
    // The presentation's ports must not keep pointing at records dropped here.
    LinkPortsToCode(pres, data);
}

void CodeConfigDlg::LoadCodeData(const QString &block_dir, BlockData *block_data)
{
    if (own_data)
        FreeBlkCodeData(data);
    data = nullptr;
    own_data = 0;
    UpdatePrimaryFlag();
    if (!block_dir.isEmpty())
        this->block_dir = block_dir;
    if (block_data) {
        if (!block_data->code)
            block_data->code = new BlkCodeData;
        data = block_data->code;
    } else {
        if (!block_dir.isEmpty()) {
            BlkCodeFileIO io(QString(), main_window ? main_window->error_list : nullptr, 0);
            data = io.LoadFile(block_dir + "/blk_code.cfg", QStringLiteral("ZEMA"));
        }
        if (!data)
            data = new BlkCodeData;
        own_data = 1;
    }

    FillPortList();
    ui->code_func_table->setRowCount(0);
    for (const BlkCodeFunc *func : data->funcs)
        ui->code_func_table->AppendRow({func->func_name, func->para_grp, func->para_en_name,
                                        func->para_en_val, func->port, func->dim, func->size});
    ui->phy_para_table->setRowCount(0);
    for (const BlkPhyElement *element : data->elements)
        ui->phy_para_table->AppendRow({element->port1, element->port2, element->el_name,
                                       el_types.value(element->el_type), element->el_mf,
                                       element->elen_para_grp, element->elen_para_en,
                                       element->elen_para_en_val, element->elval_para_grp,
                                       element->elval_para_en});
    ui->ports_lb->setCurrentRow(-1);
    cur_item = nullptr;
}

void CodeConfigDlg::SaveCodeData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    SyncCodeData();
    if (!data)
        return;
    if (block_data) {
        if (block_data->code != data) {
            FreeBlkCodeData(block_data->code);
            block_data->code = data;
        }
        own_data = 0;
        return;
    }
    BlkCodeFileIO io(QString(), main_window ? main_window->error_list : nullptr, 0);
    io.SaveFile(block_dir + "/blk_code.cfg", data, QStringLiteral("ZEMA"));
}

void CodeConfigDlg::ValidateCodeData(ErrorList *error_list)
{
    if (!data)
        return;
    UpdatePrimaryFlag();
    SyncCodeData();
    // The ports of a block that is not primary take their sizes from inside and are not checked.
    if (primary)
        ValidatePortFields(error_list);
    ValidateFuncTable(error_list);
    ValidatePhyTable(error_list);
}

void CodeConfigDlg::ValidatePortFields(ErrorList *error_list)
{
    ValidateCodePortFields(CheckContext(), error_list);
}

void CodeConfigDlg::ValidatePortSizes(BlkCodePort *port, ErrorList *error_list)
{
    if (port)
        ValidateCodePortSizes(CheckContext(), port, error_list);
}

void CodeConfigDlg::ValidateFuncTable(ErrorList *error_list)
{
    ValidateCodeFuncTable(CheckContext(), error_list);
}

void CodeConfigDlg::ValidatePhyTable(ErrorList *error_list)
{
    ValidateCodePhyTable(CheckContext(), error_list);
}

void CodeConfigDlg::on_pb_gen_tmpl_code_clicked()
{
    generated.clear();
    if (!main_window || !main_window->validated) {
        Prompt::Critical(this, QStringLiteral("Cannot generate template code without validating block."));
        return;
    }
    // A new block always carries the Warning that its header is missing, and generation is what
    // writes that header: only an Error refuses.
    if (main_window->error_list && main_window->error_list->HasErrors()) {
        Prompt::Critical(this, QStringLiteral("Cannot generate template code. Errors found during previous block validation."));
        return;
    }
    if (block_dir.isEmpty()) {
        Prompt::Critical(this, QStringLiteral("Cannot generate template code. Block directory cannot be empty."));
        return;
    }
    TemplateInputs inputs;
    inputs.config = main_window->config_page ? main_window->config_page->data : nullptr;
    inputs.params = para_data;
    inputs.initconds = initcond_data;
    inputs.code = data;
    PresentationDlg *pres = main_window->pres_page;
    inputs.port_kind = [pres](const QString &name) { return pres ? pres->PortTypeOf(name) : QString(); };
    const TemplateOutcome outcome = GenerateTemplateCode(
        inputs, block_dir, GlobalSettings() ? GlobalSettings()->root_dir : QString(), [this](const QString &question) {
            return Prompt::Question(this, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
        });
    generated = outcome.written;
    if (!outcome.message.isEmpty())
        Prompt::Critical(this, outcome.message);
}

void CodeConfigDlg::on_pb_encodefiles_clicked()
{
    if (block_dir.isEmpty())
        return;
    const QStringList files = Prompt::OpenFileNames(
        this, QStringLiteral("Select Files To Encode (Please note that encrypted files cannot be decrypted back)"),
        GlobalSettings() ? GlobalSettings()->root_dir : QString(), QString());
    if (files.isEmpty())
        return;
    if (!EncodeFilesOneWay(files))
        Prompt::Critical(this, QStringLiteral("One or more file conversion failed."));
}

void CodeConfigDlg::on_pb_python_code_clicked()
{
    if (!main_window || !main_window->block_open || !main_window->block)
        return;
    const QString temp_dir = (GlobalSettings() ? GlobalSettings()->user_dir : QString()) + "/temp";
    const BlockData *block = main_window->block;
    WritePythonModule(block, temp_dir, QStringLiteral(".py"));
    // Deliberately the raw name, not the Python name the module was written under: a name that
    // differs opens nothing, without a message.
    QDesktopServices::openUrl(QUrl::fromLocalFile(
        temp_dir + "/" + BlockNameOf(block) + QString::number(BlockIdOf(block)) + ".py"));
}
