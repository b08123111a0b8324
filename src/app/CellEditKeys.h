// The keys that end an in-place cell edit, shared by the table and the tree widget.
#pragma once

#include <QKeyEvent>

enum class CellEditKey { None, Commit, Drop };

// Return and Enter keep the typed text, Escape drops it; every other key is the editor's.
inline CellEditKey CellEditKeyOf(const QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return CellEditKey::Commit;
    case Qt::Key_Escape:
        return CellEditKey::Drop;
    default:
        return CellEditKey::None;
    }
}
