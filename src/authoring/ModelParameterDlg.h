// The "Parameter Models" tab: tables in which the choice of one entity fills others.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>

class ErrorList;
class QAction;
class QComboBox;
class QMenu;
class QTableWidgetItem;
struct BlkParaData;
struct ModelCat;

namespace Ui { class ModelParameterDlg; }

class ModelParameterDlg : public QFrame
{
    Q_OBJECT
public:
    // `para_data` is the Parameters page's record; the page works on copies of its models.
    explicit ModelParameterDlg(BlkParaData *para_data, QWidget *parent = nullptr);
    ~ModelParameterDlg() override;

    // The save step: the models have no file of their own and go with the Parameters.
    void SaveModels(const QString &block_dir);
    // Replaces the models of `para_data` by copies of the page's working models.
    void SyncModels();
    void ValidateModels(ErrorList *error_list);
    // Writes the two tables into the working model of `cur_model`.
    void StoreCurrentModel();
    // The working model behind an item of `cb_models`, null for none.
    ModelCat *ModelAt(int index) const;
    // Enables the context menu's actions for the current cell of `tb_data`.
    void UpdateActionStates();
    void SetColumnWidths();

    quint8 hide_on_show = 0;
    qint32 cur_model = -1;
    BlkParaData *para_data = nullptr;
    std::unique_ptr<Ui::ModelParameterDlg> ui;
    QString block_dir;
    QAction *add_col_act = nullptr;
    QAction *insert_col_act = nullptr;
    QAction *add_row_act = nullptr;
    QAction *insert_row_act = nullptr;
    QAction *shift_col_left_act = nullptr;
    QAction *shift_col_right_act = nullptr;
    QAction *shift_row_up_act = nullptr;
    QAction *shift_row_down_act = nullptr;
    QAction *del_col_act = nullptr;
    QAction *del_row_act = nullptr;
    QMenu *context_menu = nullptr;

public slots:
    void FillComboBoxData(int row, int col, QComboBox *cbox);
    void on_cb_models_currentIndexChanged(int index);
    void on_pb_addmodel_clicked();
    void on_pb_delmodel_clicked();
    void on_tb_header_currentItemChanged(QTableWidgetItem *current, QTableWidgetItem *previous);
    void on_tb_data_currentItemChanged(QTableWidgetItem *current, QTableWidgetItem *previous);
    void ShowContextMenu(const QPoint &point);
    void AddColAct();
    void InsertColAct();
    void AddRowAct();
    void InsertRowAct();
    void ShiftColLeftAct();
    void ShiftColRightAct();
    void ShiftRowUpAct();
    void ShiftRowDownAct();
    void DelColAct();
    void DelRowAct();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void LoadModels();
    void MakeHeaderCombos();
    void SwapColumns(int a, int b);
    void SwapRows(int a, int b);
    void AfterColumnChange();
};
