// The "Miscellaneous" tab: operation count, intrinsic variable links, dependencies, parameter
// conditions and the developer's remarks.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>

class ErrorList;
class MainWindow;
class QComboBox;
class TableWidget;
struct BlkMiscData;
struct BlockData;

namespace Ui { class MiscConfigDlg; }

class MiscConfigDlg : public QFrame
{
    Q_OBJECT
public:
    explicit MiscConfigDlg(MainWindow *main_window, QWidget *parent = nullptr);
    ~MiscConfigDlg() override;

    void LoadMiscData(const QString &block_dir, BlockData *block_data);
    void SyncMiscData();
    void SaveMiscData(const QString &block_dir, BlockData *block_data);
    void ValidateMiscData(ErrorList *error_list);

    BlkMiscData *data = nullptr;
    MainWindow *main_window = nullptr;
    quint8 hide_on_show = 0;
    std::unique_ptr<Ui::MiscConfigDlg> ui;
    QString block_dir;
    quint8 own_data = 0;

public slots:
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);
};
