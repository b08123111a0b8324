#include "params/Para_ComboBox.h"

#include "params/ParameterDlg.h"

Para_ComboBox::Para_ComboBox(ParameterDlg *dialog, int group, int entity, QWidget *parent)
    : QComboBox(parent), dialog(dialog), group(group), entity(entity)
{
    // Any change of the current item counts, also one made by a control of another entity.
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &Para_ComboBox::SelectionChanged);
}

void Para_ComboBox::SelectionChanged(int index)
{
    if (index < 0 || !dialog)
        return;
    dialog->EntitySelectionChanged(group, entity, index);
}
