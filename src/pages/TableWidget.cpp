// The table of every authoring page, with its in-place editors and its right-button menu.
#include "pages/TableWidget.h"

#include "app/CellEditKeys.h"

#include <QAction>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QStyledItemDelegate>

namespace {

// Combo and edit columns take only the table's own editors: the default one would bypass the
// page's list, or be overwritten by the commit. Other columns keep it, as the page sets them up.
class DefaultEditorDelegate : public QStyledItemDelegate
{
public:
    explicit DefaultEditorDelegate(TableWidget *table) : QStyledItemDelegate(table), table(table) {}

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override
    {
        if (table->combo_columns.contains(index.column())
            || table->edit_columns.contains(index.column()))
            return nullptr;
        return QStyledItemDelegate::createEditor(parent, option, index);
    }

private:
    TableWidget *table;
};

} // namespace

TableWidget::TableWidget(QWidget *parent) : QTableWidget(parent)
{
    setItemDelegate(new DefaultEditorDelegate(this));
    menu = new QMenu("Add/Remove Row Menu");
    add_row_action = new QAction("Add Row", menu);
    add_row_action->setToolTip("Add Row");
    add_row_action->setStatusTip("Add Row");
    remove_row_action = new QAction("Remove Selected Row", menu);
    remove_row_action->setToolTip("Remove Selected Row");
    remove_row_action->setStatusTip("Remove Selected Row");
    menu->addAction(add_row_action);
    menu->addAction(remove_row_action);

    connect(this, &QTableWidget::cellClicked, this, &TableWidget::CellClicked);
    connect(this, &QTableWidget::cellDoubleClicked, this, &TableWidget::CellDoubleClicked);
    connect(add_row_action, &QAction::triggered, this, &TableWidget::AddRowAct);
    connect(remove_row_action, &QAction::triggered, this, &TableWidget::RemoveRowAct);
}

TableWidget::~TableWidget()
{
    delete menu;
}

void TableWidget::ColumnKinds(const QList<qint32> &combo_columns, const QList<qint32> &edit_columns)
{
    this->combo_columns = combo_columns;
    this->edit_columns = edit_columns;
}

void TableWidget::CellClicked(int row, int col)
{
    if (row == last_row && col == last_col)
        return;
    CommitCell(-1, true);
    last_row = row;
    last_col = col;
}

void TableWidget::CellDoubleClicked(int row, int col)
{
    CommitCell(-1, true);
    // Only the row counts: a double click elsewhere in the row already edits.
    if (row != last_row) {
        last_row = row;
        last_col = col;
        return;
    }
    combo = nullptr;
    edit = nullptr;
    if (combo_columns.contains(col)) {
        combo = new QComboBox(this);
        combo->setFocus(Qt::OtherFocusReason);
        edit_row = row;
        edit_col = col;
        edit_index = model()->index(row, col);
        emit FillComboBox(row, col, combo);
        last_row = row;
        last_col = col;
        return;
    }
    if (edit_columns.contains(col)) {
        edit = new QLineEdit(this);
        edit->installEventFilter(this);
        edit_row = row;
        edit_col = col;
        edit_index = model()->index(row, col);
        // A cell without an item keeps the editor off the screen; a commit still writes it.
        if (QTableWidgetItem *cell = item(row, col)) {
            edit->setText(cell->text());
            setCellWidget(row, col, edit);
            edit->setFocus(Qt::OtherFocusReason);
        }
    }
    last_row = row;
    last_col = col;
}

void TableWidget::AttachCombo(QComboBox *cbox, bool with_select)
{
    if (!cbox)
        return;
    if (cbox->completer())
        cbox->completer()->setCaseSensitivity(Qt::CaseSensitive);
    if (with_select)
        cbox->insertItem(0, "<Select>");
    if (edit_row >= 0 && edit_col >= 0)
        setCellWidget(edit_row, edit_col, cbox);

    int current = -1;
    QTableWidgetItem *cell = item(edit_row, edit_col);
    if (cell && !cell->text().isEmpty() && cbox->count() > 0)
        current = cbox->findText(cell->text(), Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (current < 0)
        current = with_select ? 0 : -1;
    // Set even when found at 0: inserting "<Select>" has moved the box's own choice.
    cbox->setCurrentIndex(current);

    // Wired last, so that filling the box never counts as a selection.
    connect(cbox, QOverload<int>::of(&QComboBox::activated), this,
            &TableWidget::OnComboBoxSelectionChanged, Qt::UniqueConnection);
}

void TableWidget::CommitCell(int index, bool commit)
{
    Q_UNUSED(index)
    if (edit_row < 0 || edit_col < 0) {
        combo = nullptr;
        edit = nullptr;
        return;
    }
    // The state is cleared before anything is emitted, so a handler may call CommitCell again.
    const QPersistentModelIndex cell_index = edit_index;
    QComboBox *const cbox = combo;
    QLineEdit *const line = edit;
    // A removed row takes its cell along; nothing is left to write to.
    const int row = cell_index.isValid() ? cell_index.row() : edit_row;
    const int col = cell_index.isValid() ? cell_index.column() : edit_col;
    edit_row = -1;
    edit_col = -1;
    edit_index = QPersistentModelIndex();
    combo = nullptr;
    edit = nullptr;

    if (commit && cell_index.isValid()) {
        QString text;
        if (cbox) {
            text = cbox->currentText();
            if (text == "<Select>")
                text.clear();
        } else if (line) {
            text = line->text();
        }
        if (QTableWidgetItem *cell = item(row, col))
            cell->setText(text);
        else
            setItem(row, col, new QTableWidgetItem(text));
        if (line)
            emit EditBoxTextAccepted(row, col);
    }

    QWidget *placed = nullptr;
    if (cell_index.isValid()) {
        placed = cellWidget(row, col);
        removeCellWidget(row, col);
    }
    // An editor that never reached its cell would otherwise stay a hidden child for good.
    for (QWidget *editor : {static_cast<QWidget *>(cbox), static_cast<QWidget *>(line)}) {
        if (editor && editor != placed)
            editor->deleteLater();
    }
}

void TableWidget::OnComboBoxSelectionChanged(int index)
{
    const int row = edit_row;
    const int col = edit_col;
    CommitCell(index, true);
    if (index != prev_index)
        emit ComboBoxSelectionChanged(row, col, index, prev_index);
}

void TableWidget::AddRowAct()
{
    emit AddRowSignal(this);
}

void TableWidget::RemoveRowAct()
{
    emit RemoveRowSignal(this);
}

bool TableWidget::HandleEditKey(QKeyEvent *event)
{
    const CellEditKey key = CellEditKeyOf(event);
    if (!edit || key == CellEditKey::None)
        return false;
    CommitCell(-1, key == CellEditKey::Commit);
    return true;
}

void TableWidget::keyPressEvent(QKeyEvent *event)
{
    if (HandleEditKey(event))
        event->accept();
    else
        QTableWidget::keyPressEvent(event);
}

// The live line edit holds the focus, so its keys are taken here before it can swallow them or
// pass Escape and Return on to a dialog around the table.
bool TableWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (edit && watched == edit && event->type() == QEvent::KeyPress)
        return HandleEditKey(static_cast<QKeyEvent *>(event));
    return QTableWidget::eventFilter(watched, event);
}

void TableWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        if (menu_enabled)
            menu->popup(event->globalPos());
        emit RightMouseButtonClicked(this, event);
    }
    QTableWidget::mousePressEvent(event);
}

void TableWidget::hideEvent(QHideEvent *event)
{
    // Leaving a page must not lose an open editor.
    CommitCell(-1, true);
    QTableWidget::hideEvent(event);
}

QString TableWidget::CellText(int row, int col) const
{
    const QTableWidgetItem *cell = item(row, col);
    return cell ? cell->text() : QString();
}

void TableWidget::SetCellText(int row, int col, const QString &text)
{
    if (QTableWidgetItem *cell = item(row, col))
        cell->setText(text);
    else
        setItem(row, col, new QTableWidgetItem(text));
}

void TableWidget::SwapRows(QTableWidget *table, int row, int other)
{
    for (int col = 0; col < table->columnCount(); ++col) {
        QTableWidgetItem *first = table->takeItem(row, col);
        QTableWidgetItem *second = table->takeItem(other, col);
        if (second)
            table->setItem(row, col, second);
        if (first)
            table->setItem(other, col, first);
    }
}

void TableWidget::AppendRow(const QStringList &texts)
{
    const int row = rowCount();
    insertRow(row);
    for (int col = 0; col < columnCount(); ++col)
        setItem(row, col, new QTableWidgetItem(texts.value(col)));
}

void TableWidget::AddEmptyRow()
{
    CommitCell(-1, true);
    AppendRow();
}

void TableWidget::RemoveCurrentRow()
{
    CommitCell(-1, true);
    if (currentIndex().isValid())
        removeRow(currentIndex().row());
}
