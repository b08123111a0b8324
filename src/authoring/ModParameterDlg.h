// The Parameters and Initial Conditions tabs: the author's editor of entity groups and entities,
// with each entity's type, value list, range, flags and its control over other entities.
#pragma once

#include <QFrame>
#include <QString>
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
};
