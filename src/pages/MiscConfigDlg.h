// The "Miscellaneous" tab: operation count, intrinsic variable links, dependencies, parameter
// conditions and the developer's remarks.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>

class ErrorList;
class MainWindow;
class QComboBox;
class QListWidget;
class TableWidget;
struct BlkMiscData;
struct BlockData;
struct MiscCheckContext;

namespace Ui { class MiscConfigDlg; }

class MiscConfigDlg : public QFrame
{
    Q_OBJECT
public:
    explicit MiscConfigDlg(MainWindow *main_window, QWidget *parent = nullptr);
    ~MiscConfigDlg() override;

    // With a block the page edits the block's record in place (making one there when it has
    // none); without one it reads, and owns, "blk_misc.cfg" in `block_dir`.
    void LoadMiscData(const QString &block_dir, BlockData *block_data);
    void SyncMiscData();
    void SaveMiscData(const QString &block_dir, BlockData *block_data);
    void ValidateMiscData(ErrorList *error_list);
    void ValidateCharVars(ErrorList *error_list);
    void ValidateCpuOps(ErrorList *error_list);
    void ValidateParaConds(ErrorList *error_list);

    BlkMiscData *data = nullptr;
    MainWindow *main_window = nullptr;
    quint8 hide_on_show = 0;
    std::unique_ptr<Ui::MiscConfigDlg> ui;
    QString block_dir;
    quint8 own_data = 0;

public slots:
    void FillPortsComboBoxData(int row, int col, QComboBox *cbox);
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);
    void FillIntrinsVarComboBoxData(int row, int col, QComboBox *cbox);
    void on_pb_blk_depend_add_clicked();
    void on_pb_blk_depend_rem_clicked();
    void on_pb_cdepend_add_clicked();
    void on_pb_cdepend_add_dir_clicked();
    void on_pb_cdepend_rem_clicked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    MiscCheckContext CheckContext() const;
    void FillForm();
    // Appends `path` to `list` when it lies below the installed directory; false when the
    // caller's loop is to end.
    bool AddBelowRoot(QListWidget *list, const QString &path, const QString &refusal);
};
