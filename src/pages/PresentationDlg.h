// The "Presentation" tab: how the block looks, and the master list of its ports.
#pragma once

#include <QFrame>
#include <QString>
#include <QStringList>
#include <memory>

class ErrorList;
class QComboBox;
class TableWidget;
struct BlkParaData;
struct BlkPresData;
struct BlockData;
struct PresCheckContext;

namespace Ui { class PresentationDlg; }

class PresentationDlg : public QFrame
{
    Q_OBJECT
public:
    explicit PresentationDlg(BlkParaData *para_data, QWidget *parent = nullptr);
    ~PresentationDlg() override;

    void LoadPresData(const QString &block_dir, BlockData *block_data);
    // Replaces `data` by the state of the form; pointers into the old record die here.
    void SyncPresData();
    void SavePresData(const QString &block_dir, BlockData *block_data);
    void ValidatePresData(ErrorList *error_list);
    void ValidatePresImages(ErrorList *error_list);
    void ValidatePresTexts(ErrorList *error_list);
    void ValidatePresPorts(ErrorList *error_list);

    // Read from the ports table, so unsaved rows count; empty when no row has the name.
    QString PortTypeOf(const QString &name) const;
    QStringList ImageNames() const;
    void AddPortRow(const QString &name, const QString &text, const QString &type);
    void SetBlockTitle(const QString &text);
    void SetBlockSize(int w, int h);
    // The names of the block's drawings: those of its definition file, else its "*.vimg" files.
    void RefreshImageList();

    quint8 hide_on_show = 0;
    BlkPresData *data = nullptr;
    BlkParaData *para_data = nullptr;
    std::unique_ptr<Ui::PresentationDlg> ui;
    QString block_dir;
    QStringList child_port_names;
    quint8 own_data = 0;
    BlockData *block = nullptr;   // the block whose record `data` is, when not owned

public slots:
    void on_refresh_portnames_pb_clicked();
    void FillImagesImgTableComboBoxData(int row, int col, QComboBox *cbox);
    void FillImagesTextTableComboBoxData(int row, int col, QComboBox *cbox);
    void FillPortsComboBoxData(int row, int col, QComboBox *cbox);
    void FillVPortsComboBoxData(int row, int col, QComboBox *cbox);
    void FillMPortsComboBoxData(int row, int col, QComboBox *cbox);
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);
    void on_preview_pb_clicked();
    void on_ports_update_pb_clicked();
    void on_pb_refresh_img_clicked();
    void on_pb_port_up_clicked();
    void on_pb_port_dn_clicked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    PresCheckContext CheckContext() const;
    void Adopt(BlkPresData *record, BlockData *block_data);
    void ReplaceData(BlkPresData *record);
    void FillForm();
    void UpdateDependentTable(TableWidget *table, int deciding_col);
    void SwapPortRows(int row, int other);
};
