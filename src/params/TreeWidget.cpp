// The tree with in-place cell editors; it behaves as the pages' table does, but opens an editor
// on a second click of the same cell as well as on a double click.
#include "params/TreeWidget.h"

#include "app/CellEditKeys.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

TreeWidget::TreeWidget(QWidget *parent) : QTreeWidget(parent)
{
    connect(this, &QTreeWidget::itemClicked, this, &TreeWidget::ItemClicked);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &TreeWidget::ItemDoubleClicked);
}

void TreeWidget::ItemClicked(QTreeWidgetItem *item, int col)
{
    if (edit_item && item == edit_item && col == edit_col)
        return;
    const bool again = item == last_item && col == last_col;
    CommitEdit(true);
    last_item = item;
    last_col = col;
    if (again)
        StartEdit(item, col);
}

void TreeWidget::ItemDoubleClicked(QTreeWidgetItem *item, int col)
{
    // The first click of the pair may already have opened this very editor.
    if (edit_item && item == edit_item && col == edit_col)
        return;
    const bool same_row = item == last_item;
    CommitEdit(true);
    last_item = item;
    last_col = col;
    if (same_row)
        StartEdit(item, col);
}

void TreeWidget::StartEdit(QTreeWidgetItem *item, int col)
{
    if (!item)
        return;
    if (combo_cols.contains(col)) {
        combo = new QComboBox(this);
        combo->setFocus(Qt::OtherFocusReason);
        edit_item = item;
        edit_col = col;
        edit_index = indexFromItem(item, col);
        emit FillComboBox(item, col, combo);
        // The page may have placed and wired the box itself; doing it again changes nothing.
        if (!combo || !edit_index.isValid())
            return;
        if (itemWidget(item, col) != combo)
            setItemWidget(item, col, combo);
        const QString text = item->text(col);
        combo->setCurrentIndex(combo->findText(text.isEmpty() ? QString("<Select>") : text,
                                               Qt::MatchExactly | Qt::MatchCaseSensitive));
        connect(combo, QOverload<int>::of(&QComboBox::activated), this,
                &TreeWidget::OnComboBoxSelectionChanged, Qt::UniqueConnection);
        return;
    }
    if (edit_cols.contains(col)) {
        edit = new QLineEdit(item->text(col), this);
        edit->installEventFilter(this);
        edit_item = item;
        edit_col = col;
        edit_index = indexFromItem(item, col);
        setItemWidget(item, col, edit);
        edit->setFocus(Qt::OtherFocusReason);
    }
}

void TreeWidget::CommitEdit(bool commit)
{
    if (!edit_item) {
        combo = nullptr;
        edit = nullptr;
        return;
    }
    // The state is cleared before anything is emitted, so a handler may start another edit.
    const QPersistentModelIndex cell_index = edit_index;
    QComboBox *const cbox = combo;
    QLineEdit *const line = edit;
    edit_item = nullptr;
    edit_col = -1;
    edit_index = QPersistentModelIndex();
    combo = nullptr;
    edit = nullptr;

    QTreeWidgetItem *item = cell_index.isValid() ? itemFromIndex(cell_index) : nullptr;
    const int col = cell_index.column();
    if (commit && item) {
        QString text;
        if (cbox) {
            text = cbox->currentText();
            if (text == "<Select>")
                text.clear();
        } else if (line) {
            text = line->text();
        }
        item->setText(col, text);
    }
    QWidget *placed = nullptr;
    if (item) {
        placed = itemWidget(item, col);
        removeItemWidget(item, col);
    }
    for (QWidget *editor : {static_cast<QWidget *>(cbox), static_cast<QWidget *>(line)}) {
        if (editor && editor != placed)
            editor->deleteLater();
    }
    if (commit && item && line)
        emit EditBoxTextAccepted(item, col);
}

void TreeWidget::OnComboBoxSelectionChanged(int index)
{
    // A box the page wired a second time calls in again after the edit has ended.
    if (!combo)
        return;
    QTreeWidgetItem *item = edit_index.isValid() ? itemFromIndex(edit_index) : nullptr;
    const int col = edit_col;
    CommitEdit(true);
    if (item && index != prev_index)
        emit ComboBoxSelectionChanged(item, col, index, prev_index);
}

bool TreeWidget::HandleEditKey(QKeyEvent *event)
{
    const CellEditKey key = CellEditKeyOf(event);
    if (!edit || key == CellEditKey::None)
        return false;
    CommitEdit(key == CellEditKey::Commit);
    return true;
}

void TreeWidget::keyPressEvent(QKeyEvent *event)
{
    if (HandleEditKey(event))
        event->accept();
    else
        QTreeWidget::keyPressEvent(event);
}

// The live line edit holds the focus; its Return and Escape must end the edit, not a dialog.
bool TreeWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (edit && watched == edit && event->type() == QEvent::KeyPress)
        return HandleEditKey(static_cast<QKeyEvent *>(event));
    return QTreeWidget::eventFilter(watched, event);
}

void TreeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        emit RightButtonClicked(event->pos());
    QTreeWidget::mousePressEvent(event);
}

void TreeWidget::hideEvent(QHideEvent *event)
{
    CommitEdit(true);
    QTreeWidget::hideEvent(event);
}
