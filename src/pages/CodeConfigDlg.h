// The "Code" tab: what each port of the block means to the block's code, the physical port
// elements and the calling table of the class's run methods.
#pragma once

#include <QFrame>
#include <QString>
#include <QStringList>
#include <memory>

class ErrorList;
class MainWindow;
class QComboBox;
class QListWidgetItem;
class TableWidget;
struct BlkCodeData;
struct BlkCodePort;
struct BlkParaData;
struct BlockData;
struct CodeCheckContext;

namespace Ui { class CodeConfigDlg; }

class CodeConfigDlg : public QFrame
{
    Q_OBJECT
public:
    CodeConfigDlg(MainWindow *main_window, BlkParaData *para_data, BlkParaData *initcond_data,
                  QWidget *parent = nullptr);
    ~CodeConfigDlg() override;

    void LoadCodeData(const QString &block_dir, BlockData *block_data);
    // Ports follow the presentation's ports table; the two tables are read into the record.
    void SyncCodeData();
    void SaveCodeData(const QString &block_dir, BlockData *block_data);
    void ValidateCodeData(ErrorList *error_list);
    void ValidatePortFields(ErrorList *error_list);
    void ValidatePortSizes(BlkCodePort *port, ErrorList *error_list);
    void ValidateFuncTable(ErrorList *error_list);
    void ValidatePhyTable(ErrorList *error_list);
    void UpdatePrimaryFlag();
    void SetPortForm(int row, const QString &data_type, int size);
    // The body of "Save Port Data".
    void SavePortData();

    BlkCodeData *data = nullptr;
    MainWindow *main_window = nullptr;
    BlkParaData *para_data = nullptr;
    BlkParaData *initcond_data = nullptr;
    QListWidgetItem *cur_item = nullptr;
    quint8 hide_on_show = 0;
    quint8 primary = 0;
    QString block_dir;
    QStringList el_types;
    QStringList generated;         // the files the last generation wrote
    std::unique_ptr<Ui::CodeConfigDlg> ui;
    quint8 own_data = 0;

public slots:
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);
    void FillFunctionComboBoxData(int row, int col, QComboBox *cbox);
    void FillPhyPortTableComboBoxData(int row, int col, QComboBox *cbox);
    void PhyPortTableCBoxSelChanged(int row, int col, int cur_index, int prev_index);
    // The code page's generation, also run by the wizard, the command interface and the companion.
    void on_pb_gen_tmpl_code_clicked();

private slots:
    void on_ports_lb_itemSelectionChanged();
    void on_cb_port_dim_depend_currentIndexChanged(const QString &arg1);
    void on_pb_port_data_save_clicked();
    void on_pb_encodefiles_clicked();
    void on_pb_python_code_clicked();

protected:
    void showEvent(QShowEvent *event) override;
    // The port columns of the elements table follow the table's own width.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CodeCheckContext CheckContext() const;
    QString PortTypeOf(const QString &name) const;
    void FillForm();
    void FillPortList();
};
