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
    void ValidatePortSizes(BlkCodePort *port, ErrorList *error_list);
    void UpdatePrimaryFlag();
    void SetPortForm(int row, const QString &data_type, int size);

    BlkCodeData *data = nullptr;
    MainWindow *main_window = nullptr;
    BlkParaData *para_data = nullptr;
    BlkParaData *initcond_data = nullptr;
    QListWidgetItem *cur_item = nullptr;
    quint8 hide_on_show = 0;
    quint8 primary = 0;
    QString block_dir;
    QStringList el_types;
    std::unique_ptr<Ui::CodeConfigDlg> ui;
    quint8 own_data = 0;

public slots:
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);
};
