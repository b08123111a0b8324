// The Presentation tab: the form against the block's BlkPresData, the combo lists of its five
// tables, and the ports table that every other page takes the block's ports from.
#include "pages/PresentationDlg.h"
#include "ui_PresentationDlg.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/MainWindow.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkPresData.h"
#include "pages/BlkPresFileIO.h"
#include "pages/PresChecks.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"
#include "params/ParameterDlg.h"
#include "schematics/BlkSchemeData.h"
#include "schematics/WspBlockIterator.h"
#include "schematics/WspData.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>

namespace {

const char kPresFile[] = "/blk_pres.cfg";
const char kTitle[] = "ZEMA";
const char kParameterBased[] = "Parameter Based";

enum PortColumn {
    kPortName, kPortText, kPortType, kPortPlacement, kPortPosition, kPortTextOffset,
    kPortConnReq, kPortVisibility, kPortMultiple
};

// The port blocks inside a composite block's schematic have this custom block type.
constexpr qint32 kPortBlockType = 343;

// The words of the coded columns, at the index of the stored number.
const QStringList &ConnReqWords()
{
    static const QStringList words{"No", "Yes", "Yes (code dependent)"};
    return words;
}

const QStringList &VisibilityWords()
{
    static const QStringList words{"Visible", "Invisible", kParameterBased};
    return words;
}

const QStringList &MultipleWords()
{
    static const QStringList words{"No", kParameterBased};
    return words;
}

QString WordOf(const QStringList &words, int index)
{
    return words.value(index, words.first());
}

MainWindow *Window()
{
    AppSettings *settings = GlobalSettings();
    return settings ? settings->main_window : nullptr;
}

const BlkParaData *ConfigData()
{
    MainWindow *window = Window();
    return window && window->config_page ? window->config_page->data : nullptr;
}

ErrorList *WindowErrorList()
{
    MainWindow *window = Window();
    return window ? window->error_list : nullptr;
}

// The dependent tables know a port by its name up to the first comma.
QString PortKey(const QString &name)
{
    return name.section(QLatin1Char(','), 0, 0).trimmed();
}

int FindKeyRow(const TableWidget *table, const QString &key)
{
    for (int row = 0; row < table->rowCount(); ++row)
        if (PortKey(table->CellText(row, 0)) == key)
            return row;
    return -1;
}

// The box the table made is dropped unseen and the cell keeps its text.
void NoEditor(TableWidget *table)
{
    table->CommitCell(-1, false);
}

// A group, entity or value column, after the group column `group_col`. False: no editor, as the
// group or entity to the left is missing.
bool AddParameterItems(const BlkParaData *para_data, const TableWidget *table, int row, int col,
                       int group_col, QComboBox *cbox)
{
    if (col == group_col) {
        if (para_data)
            for (const ParaGroup *group : para_data->para_grp)
                cbox->addItem(group->header);
        return true;
    }
    const ParaGroup *group = FindGroup(para_data, table->CellText(row, group_col));
    if (!group)
        return false;
    if (col == group_col + 1) {
        for (const ParaEntity *entity : group->para_entity)
            cbox->addItem(entity->label);
        return true;
    }
    const ParaEntity *entity = FindEntityInGroup(group, table->CellText(row, group_col + 1));
    if (!entity)
        return false;
    cbox->addItems(entity->values);
    return true;
}

} // namespace

PresentationDlg::PresentationDlg(BlkParaData *para_data, QWidget *parent)
    : QFrame(parent), para_data(para_data), ui(std::make_unique<Ui::PresentationDlg>())
{
    ui->setupUi(this);
    ui->imgs_table->ColumnKinds({0, 1, 2, 3}, {});
    ui->txts_table->ColumnKinds({0, 2, 3}, {1});
    ui->ports_table->ColumnKinds({kPortName, kPortType, kPortPlacement, kPortConnReq,
                                  kPortVisibility, kPortMultiple},
                                 {kPortText, kPortPosition, kPortTextOffset});
    // The port names of the last two come from "Update" alone.
    ui->vports_table->ColumnKinds({1, 2, 3}, {});
    ui->mulports_table->ColumnKinds({1, 2}, {});

    for (TableWidget *table : {ui->imgs_table, ui->txts_table, ui->ports_table}) {
        table->menu_enabled = 1;
        connect(table, &TableWidget::AddRowSignal, this, &PresentationDlg::TableAddRow);
        connect(table, &TableWidget::RemoveRowSignal, this, &PresentationDlg::TableRemoveRow);
    }
    // Narrow columns elide their header; the tool tip keeps the whole text.
    for (TableWidget *table : {ui->imgs_table, ui->txts_table, ui->ports_table, ui->vports_table,
                               ui->mulports_table}) {
        table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        table->horizontalHeader()->setTextElideMode(Qt::ElideRight);
        for (int col = 0; col < table->columnCount(); ++col)
            if (QTableWidgetItem *header = table->horizontalHeaderItem(col))
                header->setToolTip(header->text());
    }
    // Image and port names are short: their column gives its room to the parameter columns.
    for (TableWidget *table : {ui->imgs_table, ui->txts_table, ui->vports_table, ui->mulports_table})
        table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    connect(ui->imgs_table, &TableWidget::FillComboBox, this,
            &PresentationDlg::FillImagesImgTableComboBoxData);
    connect(ui->txts_table, &TableWidget::FillComboBox, this,
            &PresentationDlg::FillImagesTextTableComboBoxData);
    connect(ui->ports_table, &TableWidget::FillComboBox, this, &PresentationDlg::FillPortsComboBoxData);
    connect(ui->vports_table, &TableWidget::FillComboBox, this, &PresentationDlg::FillVPortsComboBoxData);
    connect(ui->mulports_table, &TableWidget::FillComboBox, this,
            &PresentationDlg::FillMPortsComboBoxData);
}

PresentationDlg::~PresentationDlg()
{
    if (own_data)
        FreeBlkPresData(data);
}

void PresentationDlg::Adopt(BlkPresData *record, BlockData *block_data)
{
    if (own_data && data != record)
        FreeBlkPresData(data);
    data = record;
    if (block_data) {
        if (block_data->pres != record) {
            FreeBlkPresData(block_data->pres);
            block_data->pres = record;
        }
        own_data = 0;
        block = block_data;
    } else {
        own_data = 1;
        block = nullptr;
    }
}

void PresentationDlg::ReplaceData(BlkPresData *record)
{
    BlkPresData *old = data;
    data = record;
    if (own_data) {
        FreeBlkPresData(old);
    } else if (block && block->pres == old) {
        block->pres = record;
        FreeBlkPresData(old);
    } else {
        // A page that was never loaded: nobody else holds the new record.
        own_data = 1;
    }
}

void PresentationDlg::LoadPresData(const QString &block_dir, BlockData *block_data)
{
    BlkPresData *record = nullptr;
    if (block_dir.isEmpty()) {
        record = NewDefaultPresData();
    } else {
        this->block_dir = block_dir;
        if (block_data) {
            record = block_data->pres;
        } else {
            BlkPresFileIO io(QString(), WindowErrorList(), 0);
            record = io.LoadFile(block_dir + QLatin1String(kPresFile), QLatin1String(kTitle));
        }
        if (!record)
            record = new BlkPresData;
    }
    Adopt(record, block_data);
    FillForm();
}

void PresentationDlg::FillForm()
{
    ui->blk_title->setText(data->title);
    SetBlockSize(data->hsize, data->vsize);
    ui->blk_aspect_ratio->setChecked(data->aspect);
    ui->blk_hasborder->setChecked(data->border);
    RefreshImageList();

    for (TableWidget *table : {ui->imgs_table, ui->txts_table, ui->ports_table, ui->vports_table,
                               ui->mulports_table}) {
        table->CommitCell(-1, false);
        table->setRowCount(0);
    }
    for (const BlkImage *image : data->images)
        ui->imgs_table->AppendRow({image->name, image->para_grp, image->para_entity, image->para_value});
    for (const BlkImageText *text : data->texts)
        ui->txts_table->AppendRow({text->img_name, text->text, text->para_grp, text->para_entity});
    for (const BlkPort *port : data->ports) {
        ui->ports_table->AppendRow(
                  {port->name, port->dis_text, port->type, port->placement,
                   QString::number(port->per_distance),
                   QString::number(port->text_dx) + "," + QString::number(port->text_dy),
                   WordOf(ConnReqWords(), port->conn_req), WordOf(VisibilityWords(), port->vport_para),
                   WordOf(MultipleWords(), port->mport_para)});
        if (port->mport_para)
            ui->mulports_table->AppendRow({PortKey(port->name), port->mport_grp, port->mport_entity});
        if (port->vport_para > 1)
            ui->vports_table->AppendRow({PortKey(port->name), port->vport_grp, port->vport_entity,
                                         port->vport_value});
    }
}

void PresentationDlg::SyncPresData()
{
    for (TableWidget *table : {ui->imgs_table, ui->txts_table, ui->ports_table, ui->vports_table,
                               ui->mulports_table})
        table->CommitCell(-1, true);

    auto *record = new BlkPresData;
    record->title = ui->blk_title->text().trimmed();
    if (para_data)
        para_data->title = record->title;
    const QStringList size = ui->blk_persize->text().split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (size.size() == 2) {
        record->hsize = size.at(0).trimmed().toInt(nullptr, 10);
        record->vsize = size.at(1).trimmed().toInt(nullptr, 10);
    }
    record->border = ui->blk_hasborder->isChecked() ? 1 : 0;
    record->aspect = ui->blk_aspect_ratio->isChecked() ? 1 : 0;

    const TableWidget *imgs = ui->imgs_table;
    for (int row = 0; row < imgs->rowCount(); ++row) {
        if (!imgs->item(row, 0))
            continue;
        auto *image = new BlkImage;
        image->name = imgs->CellText(row, 0);
        image->para_grp = imgs->CellText(row, 1);
        image->para_entity = imgs->CellText(row, 2);
        image->para_value = imgs->CellText(row, 3);
        record->images.append(image);
    }
    const TableWidget *txts = ui->txts_table;
    for (int row = 0; row < txts->rowCount(); ++row) {
        if (!txts->item(row, 0))
            continue;
        auto *text = new BlkImageText;
        text->img_name = txts->CellText(row, 0);
        text->text = txts->CellText(row, 1);
        text->para_grp = txts->CellText(row, 2);
        text->para_entity = txts->CellText(row, 3);
        record->texts.append(text);
    }

    const TableWidget *ports = ui->ports_table;
    const TableWidget *vports = ui->vports_table;
    const TableWidget *mulports = ui->mulports_table;
    for (int row = 0; row < ports->rowCount(); ++row) {
        if (!ports->item(row, kPortName))
            continue;
        auto *port = new BlkPort;
        port->name = ports->CellText(row, kPortName).trimmed();
        port->dis_text = ports->CellText(row, kPortText).trimmed();
        port->type = ports->CellText(row, kPortType);
        port->placement = ports->CellText(row, kPortPlacement);
        port->per_distance = ports->CellText(row, kPortPosition).toFloat();
        const QStringList offset = ports->CellText(row, kPortTextOffset).trimmed().split(QLatin1Char(','));
        if (offset.size() == 2) {
            port->text_dx = offset.at(0).toFloat();
            port->text_dy = offset.at(1).toFloat();
        }
        const QString conn_req = ports->CellText(row, kPortConnReq);
        port->conn_req = conn_req == ConnReqWords().at(1) ? 1 : conn_req == ConnReqWords().at(2) ? 2 : 0;

        // "Parameter Based" counts only once "Update" has given the port its row.
        const QString key = PortKey(port->name);
        const QString visibility = ports->CellText(row, kPortVisibility);
        if (visibility == VisibilityWords().at(1)) {
            port->vport_para = 1;
        } else if (visibility == QLatin1String(kParameterBased)) {
            const int vrow = FindKeyRow(vports, key);
            if (vrow >= 0) {
                port->vport_para = 2;
                port->vport_grp = vports->CellText(vrow, 1);
                port->vport_entity = vports->CellText(vrow, 2);
                port->vport_value = vports->CellText(vrow, 3);
            }
        }
        if (ports->CellText(row, kPortMultiple) == QLatin1String(kParameterBased)) {
            const int mrow = FindKeyRow(mulports, key);
            if (mrow >= 0) {
                port->mport_para = 1;
                port->mport_grp = mulports->CellText(mrow, 1);
                port->mport_entity = mulports->CellText(mrow, 2);
            }
        }
        record->ports.append(port);
    }
    ReplaceData(record);
}

void PresentationDlg::SavePresData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    SyncPresData();
    if (block_data) {
        Adopt(data, block_data);
        return;
    }
    BlkPresFileIO io(QString(), WindowErrorList(), 0);
    io.SaveFile(block_dir + QLatin1String(kPresFile), data, QLatin1String(kTitle));
}

void PresentationDlg::ValidatePresData(ErrorList *error_list)
{
    if (!data)
        return;
    SyncPresData();
    ValidatePresHeaderData(CheckContext(), error_list);
    ValidatePresImages(error_list);
    ValidatePresTexts(error_list);
    ValidatePresPorts(error_list);
}

PresCheckContext PresentationDlg::CheckContext() const
{
    PresCheckContext context;
    context.data = data;
    context.para_data = para_data;
    context.config = ConfigData();
    context.image_names = ImageNames();
    return context;
}

void PresentationDlg::ValidatePresImages(ErrorList *error_list)
{
    ValidatePresImagesData(CheckContext(), error_list);
}

void PresentationDlg::ValidatePresTexts(ErrorList *error_list)
{
    ValidatePresTextsData(CheckContext(), error_list);
}

void PresentationDlg::ValidatePresPorts(ErrorList *error_list)
{
    ValidatePresPortsData(CheckContext(), error_list);
}

QString PresentationDlg::PortTypeOf(const QString &name) const
{
    const TableWidget *ports = ui->ports_table;
    for (int row = 0; row < ports->rowCount(); ++row)
        if (ports->CellText(row, kPortName).trimmed() == name)
            return ports->CellText(row, kPortType);
    return QString();
}

QStringList PresentationDlg::ImageNames() const
{
    QStringList names;
    if (block_dir.isEmpty())
        return names;
    for (int row = 0; row < ui->lb_imgs->count(); ++row)
        names.append(ui->lb_imgs->item(row)->text());
    return names;
}

void PresentationDlg::AddPortRow(const QString &name, const QString &text, const QString &type)
{
    const QString placement = type == QLatin1String("Input") ? QStringLiteral("Left") : QStringLiteral("Right");
    // Every cell gets an item, so that the line edits of the row open.
    ui->ports_table->AppendRow({name, text, type, placement, QString(), QString(), QString(),
                                QString(), QString()});
}

void PresentationDlg::SetBlockTitle(const QString &text)
{
    ui->blk_title->setText(text);
}

void PresentationDlg::SetBlockSize(int w, int h)
{
    ui->blk_persize->setText(QString::number(w) + "," + QString::number(h));
}

void PresentationDlg::RefreshImageList()
{
    ui->lb_imgs->clear();
    if (block_dir.isEmpty())
        return;
    QStringList names;
    // Silent: a block not yet saved has no definition file, and its drawing files still count.
    auto *scratch = new BlockData;
    scratch->path = block_dir;
    if (LoadBlockData(scratch, QString(), nullptr, QLatin1String(kTitle), true) && scratch->images)
        for (const ImgDataRec *image : *scratch->images)
            names.append(image->img_name);
    FreeBlockData(scratch);
    if (names.isEmpty()) {
        const QStringList files =
            QDir(block_dir).entryList({QStringLiteral("*.vimg")}, QDir::Files, QDir::Name);
        for (const QString &file : files)
            names.append(QFileInfo(file).completeBaseName());
    }
    ui->lb_imgs->addItems(names);
}

void PresentationDlg::on_pb_refresh_img_clicked()
{
    RefreshImageList();
}

void PresentationDlg::on_refresh_portnames_pb_clicked()
{
    MainWindow *window = Window();
    if (!window || !window->scheme_page)
        return;
    // The Schematics page edits the block's own scheme record.
    const BlkSchemeData *scheme = window->block ? window->block->scheme : nullptr;
    if (!scheme)
        return;
    child_port_names.clear();
    WspBlockIterator items(scheme->root_file, block_dir, window->error_list);
    while (const WSP_BLK_ITEM_STRUCT *item = items.NextBlock())
        if (CustomBlockType(item->blockdef) == kPortBlockType)
            child_port_names.append(item->name);
}

void PresentationDlg::on_preview_pb_clicked()
{
}

void PresentationDlg::FillPortsComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->ports_table;
    if (col == kPortName) {
        cbox->setEditable(true);
        const QString own = table->CellText(row, col);
        if (!own.isEmpty())
            cbox->addItem(own);
        // The ports of a secondary block are those of its inner schematic: pick, never type.
        if (IsNonPrimaryBlock(ConfigData())) {
            cbox->clear();
            cbox->setEditable(false);
            cbox->addItems(child_port_names);
        }
        table->AttachCombo(cbox, false);
        return;
    }
    if (table->CellText(row, kPortName).trimmed().isEmpty()) {
        NoEditor(table);
        return;
    }
    switch (col) {
    case kPortType:
        cbox->addItems({"Input", "Output", "Physical", "Phy.Ref.", "Any"});
        break;
    case kPortPlacement:
        cbox->addItems({"Top", "Left", "Bottom", "Right"});
        break;
    case kPortConnReq:
        cbox->addItems(ConnReqWords());
        break;
    case kPortVisibility:
        cbox->addItems(VisibilityWords());
        break;
    case kPortMultiple:
        cbox->addItems(MultipleWords());
        break;
    default:
        break;
    }
    table->AttachCombo(cbox, false);
}

void PresentationDlg::FillImagesImgTableComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->imgs_table;
    if (col == 0) {
        // Each image can stand in one row only; the row's own name stays on offer.
        QStringList names = ImageNames();
        for (int other = 0; other < table->rowCount(); ++other)
            if (other != row)
                names.removeAll(table->CellText(other, 0));
        cbox->addItems(names);
    } else if (table->CellText(row, 0).isEmpty()
               || !AddParameterItems(para_data, table, row, col, 1, cbox)) {
        NoEditor(table);
        return;
    }
    table->AttachCombo(cbox, true);
}

void PresentationDlg::FillImagesTextTableComboBoxData(int row, int col, QComboBox *cbox)
{
    TableWidget *table = ui->txts_table;
    if (col == 0) {
        cbox->addItems(ImageNames());
    } else if (table->CellText(row, 0).isEmpty()
               || !AddParameterItems(para_data, table, row, col, 2, cbox)) {
        NoEditor(table);
        return;
    }
    table->AttachCombo(cbox, true);
}

void PresentationDlg::FillVPortsComboBoxData(int row, int col, QComboBox *cbox)
{
    if (!AddParameterItems(para_data, ui->vports_table, row, col, 1, cbox)) {
        NoEditor(ui->vports_table);
        return;
    }
    ui->vports_table->AttachCombo(cbox, true);
}

void PresentationDlg::FillMPortsComboBoxData(int row, int col, QComboBox *cbox)
{
    if (!AddParameterItems(para_data, ui->mulports_table, row, col, 1, cbox)) {
        NoEditor(ui->mulports_table);
        return;
    }
    ui->mulports_table->AttachCombo(cbox, true);
}

void PresentationDlg::TableAddRow(TableWidget *table)
{
    if (table)
        table->AddEmptyRow();
}

void PresentationDlg::TableRemoveRow(TableWidget *table)
{
    if (table)
        table->RemoveCurrentRow();
}

void PresentationDlg::on_ports_update_pb_clicked()
{
    ui->ports_table->CommitCell(-1, true);
    ui->mulports_table->CommitCell(-1, true);
    ui->vports_table->CommitCell(-1, true);
    UpdateDependentTable(ui->mulports_table, kPortMultiple);
    UpdateDependentTable(ui->vports_table, kPortVisibility);
}

// A row that stays keeps its parameter cells; a new one starts with the port's name alone.
void PresentationDlg::UpdateDependentTable(TableWidget *table, int deciding_col)
{
    const TableWidget *ports = ui->ports_table;
    for (int row = table->rowCount() - 1; row >= 0; --row)
        if (FindKeyRow(ports, PortKey(table->CellText(row, 0))) < 0)
            table->removeRow(row);
    for (int port = 0; port < ports->rowCount(); ++port) {
        const QString key = PortKey(ports->CellText(port, kPortName));
        const bool wanted = ports->CellText(port, deciding_col) == QLatin1String(kParameterBased);
        const int row = FindKeyRow(table, key);
        if (row >= 0 && !wanted) {
            table->removeRow(row);
        } else if (row < 0 && wanted) {
            const int end = table->rowCount();
            table->insertRow(end);
            table->setItem(end, 0, new QTableWidgetItem(key));
        }
    }
}

void PresentationDlg::on_pb_port_up_clicked()
{
    ui->ports_table->CommitCell(-1, true);
    const int row = ui->ports_table->currentRow();
    if (row > 0)
        SwapPortRows(row, row - 1);
}

void PresentationDlg::on_pb_port_dn_clicked()
{
    ui->ports_table->CommitCell(-1, true);
    const int row = ui->ports_table->currentRow();
    if (row >= 0 && row < ui->ports_table->rowCount() - 1)
        SwapPortRows(row, row + 1);
}

// The order of this table is the order of the block's ports, and of their code records.
void PresentationDlg::SwapPortRows(int row, int other)
{
    TableWidget *table = ui->ports_table;
    TableWidget::SwapRows(table, row, other);
    table->setCurrentCell(other, qMax(table->currentColumn(), 0));
}

void PresentationDlg::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (hide_on_show)
        hide();
}
