#include "params/Para_LineEdit.h"

#include "params/BlkParaData.h"
#include "params/ParameterDlg.h"

#include <QFocusEvent>

Para_LineEdit::Para_LineEdit(ParameterDlg *dialog, int group, int entity, QWidget *parent)
    : QLineEdit(parent), dialog(dialog), group(group), entity(entity)
{
    connect(this, &QLineEdit::textChanged, this, &Para_LineEdit::TextChanged);
    connect(this, &QLineEdit::returnPressed, this, &Para_LineEdit::ReturnPressed);
}

void Para_LineEdit::TextChanged(const QString &newtext)
{
    if (!edited || !dialog || !dialog->ready)
        return;
    if (ParaEntity *target = dialog->EntityAt(group, entity))
        target->sel_val = newtext;
}

void Para_LineEdit::ReturnPressed()
{
    if (!edited)
        return;
    CopyTextToEntity();
    edited = false;
}

void Para_LineEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    edited = true;
}

void Para_LineEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (!edited)
        return;
    CopyTextToEntity();
    edited = false;
}

void Para_LineEdit::CopyTextToEntity()
{
    // A dialog on its way out clears `dialog`, since its record may already be gone.
    if (ParaEntity *target = dialog ? dialog->EntityAt(group, entity) : nullptr)
        target->sel_val = text();
}
