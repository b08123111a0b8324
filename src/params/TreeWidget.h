// A tree whose cells in chosen columns are edited in place: a combo box that the page fills on
// request, or a line edit. At rest every cell is plain text.
#pragma once

#include <QList>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidget>

class QComboBox;
class QLineEdit;

class TreeWidget : public QTreeWidget
{
    Q_OBJECT
public:
    explicit TreeWidget(QWidget *parent = nullptr);

    // Ends the edit in progress; without `commit` the editor's text is dropped.
    void CommitEdit(bool commit);

    QList<int> combo_cols;     // looked at before edit_cols
    QList<int> edit_cols;
    QPointer<QComboBox> combo;
    QPointer<QLineEdit> edit;
    QTreeWidgetItem *last_item = nullptr;   // only compared, never dereferenced
    int last_col = -1;
    QTreeWidgetItem *edit_item = nullptr;
    int edit_col = -1;
    int prev_index = -1;       // never written: every activation signals, the same item again too

signals:
    void FillComboBox(QTreeWidgetItem *item, int col, QComboBox *cbox);
    void ComboBoxSelectionChanged(QTreeWidgetItem *item, int col, int cur_index, int prev_index);
    void EditBoxTextAccepted(QTreeWidgetItem *item, int col);
    void RightButtonClicked(const QPoint &pos);

public slots:
    void ItemClicked(QTreeWidgetItem *item, int col);
    void ItemDoubleClicked(QTreeWidgetItem *item, int col);
    void OnComboBoxSelectionChanged(int index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void StartEdit(QTreeWidgetItem *item, int col);
    bool HandleEditKey(QKeyEvent *event);

    // Goes invalid when the edited item is deleted, so a commit never writes through a dead item.
    QPersistentModelIndex edit_index;
};
