// The Parameters and Initial Conditions tabs: the author's editor of entity groups and entities,
// with each entity's type, value list, range, flags and its control over other entities.
#pragma once

#include <QFrame>
#include <QString>
#include <QStringList>
#include <memory>

class ErrorList;
class QComboBox;
class QListWidgetItem;
class QTreeWidgetItem;
class TableWidget;
struct BlkParaData;
struct BlockData;
struct ParaEntity;
struct ParaGroup;

namespace Ui { class ModParameterDlg; }

class ModParameterDlg : public QFrame
{
    Q_OBJECT
public:
    // kind 2: Parameters; kind 1: Initial Conditions.
    explicit ModParameterDlg(int kind, QWidget *parent = nullptr);
    ~ModParameterDlg() override;

    // With a block the page edits the block's record in place (making one there when it has
    // none); without one it reads, and owns, the section file in `block_dir`.
    void LoadParaPage(const QString &block_dir, BlockData *block_data);
    void SaveParaPage(const QString &block_dir, BlockData *block_data);
    void ValidateParaPage(ErrorList *error_list);
    // The array size of a text: the number itself, 1 for any script field, -1 for bad braces.
    qint32 CheckArraySize(const QString &text, BlkParaData *data, ParaGroup *group, ParaEntity *entity,
                          ErrorList *error_list, const QString &prefix);
    // The entity on the form as a new record owned by the caller; null after a box, or without a
    // current group.
    ParaEntity *ReadEntityForm(bool is_new);
    // The group of that name, made at the end when there is none; for the creation of a block.
    ParaGroup *AddParameterGroup(const QString &header);
    // A Non-Constant entity at the end of the group; a value list selects its first value.
    ParaEntity *AddParameter(const QString &header, const QString &label, const QString &para_var,
                             const QString &sel_val, const QStringList &values,
                             const QString &val_type);

    qint32 kind = 2;
    quint8 hide_on_show = 0;
    BlkParaData *data = nullptr;
    ParaEntity *cur_entity = nullptr;
    ParaGroup *cur_group = nullptr;
    std::unique_ptr<Ui::ModParameterDlg> ui;
    QString block_dir;
    quint8 own_data = 0;

public slots:
    void FillComboBoxData(int row, int col, QComboBox *cbox);
    void TableAddRow(TableWidget *table);
    void TableRemoveRow(TableWidget *table);

private slots:
    void on_tree_currentItemChanged(QTreeWidgetItem *current, QTreeWidgetItem *previous);
    void on_header_add_clicked();
    void on_header_edit_clicked();
    void on_header_del_clicked();
    void on_header_up_clicked();
    void on_header_dn_clicked();
    void on_header_helpfile_pb_clicked();
    void on_en_value_label_editb_clicked();
    void on_en_value_add_clicked();
    void on_en_value_del_clicked();
    void on_en_value_up_clicked();
    void on_en_value_dn_clicked();
    void on_add_entity_clicked();
    void on_del_entity_clicked();
    void on_edit_entity_clicked();
    void on_en_value_edit_pb_clicked();
    void on_en_value_list_currentItemChanged(QListWidgetItem *current, QListWidgetItem *previous);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void ClearForm();
    // The record behind `item` is already freed; the tree and the form forget it.
    void DropTreeItem(QTreeWidgetItem *item);
    bool CheckGroupName(const QString &header);
    void FillTree();
    void ShowEntity(const ParaEntity *entity);
    // The checks "Add Entity" and "Edit Entity" share; false after a box.
    bool CheckEntityForm();
    // A value for the value list: false after a box. `skip` is left out of the duplicate test.
    bool CheckValueText(const QString &text, const QListWidgetItem *skip);
    void MoveTreeItem(bool up);
    void FreeOwnedData();
};
