// The table of every authoring page: plain text cells at rest, and one live editor (a combo box
// or a line edit) only in the cell being edited. The owning page fills combo boxes on request and
// hears about every committed edit and every use of the right-button menu.
#pragma once

#include <QList>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableWidget>

class QAction;
class QComboBox;
class QLineEdit;
class QMenu;

class TableWidget : public QTableWidget
{
    Q_OBJECT
public:
    explicit TableWidget(QWidget *parent = nullptr);
    ~TableWidget() override;

    // A column listed in both gets the combo box.
    void ColumnKinds(const QList<qint32> &combo_columns, const QList<qint32> &edit_columns);
    // Every handler of FillComboBox ends here, once the box is filled.
    void AttachCombo(QComboBox *cbox, bool with_select);
    // Ends the edit in progress; `index` is not used. Pages call CommitCell(-1, true) before they
    // add, remove or read rows.
    void CommitCell(int index, bool commit);

    // Empty for a cell without an item.
    QString CellText(int row, int col) const;
    void SetCellText(int row, int col, const QString &text);
    // A row at the bottom with an item in every column, the given texts first.
    void AppendRow(const QStringList &texts = {});
    // The add and remove of the right-button menu that the pages share: the edit in progress is
    // committed first.
    void AddEmptyRow();
    void RemoveCurrentRow();
    // Exchanges the items of two rows, for the Up and Down buttons of any table.
    static void SwapRows(QTableWidget *table, int row, int other);

    QList<qint32> edit_columns;
    QList<qint32> combo_columns;
    QPointer<QComboBox> combo;
    QPointer<QLineEdit> edit;
    QMenu *menu = nullptr;
    QAction *add_row_action = nullptr;
    QAction *remove_row_action = nullptr;
    qint32 last_row = -1;
    qint32 last_col = -1;
    qint32 edit_row = -1;
    qint32 edit_col = -1;
    quint8 menu_enabled = 0;
    qint32 prev_index = -1;   // never written: every activation signals, the same item again too

signals:
    void FillComboBox(int row, int col, QComboBox *cbox);
    void ComboBoxSelectionChanged(int row, int col, int cur_index, int prev_index);
    void EditBoxTextAccepted(int row, int col);
    void RightMouseButtonClicked(TableWidget *wgt, QMouseEvent *event);
    void AddRowSignal(TableWidget *wgt);
    void RemoveRowSignal(TableWidget *wgt);

public slots:
    void CellClicked(int row, int col);
    void CellDoubleClicked(int row, int col);
    void OnComboBoxSelectionChanged(int index);
    void AddRowAct();
    void RemoveRowAct();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool HandleEditKey(QKeyEvent *event);

    // Follows the edited cell when rows move, and goes invalid when its row is removed.
    QPersistentModelIndex edit_index;
};
