// The combo box cell of the parameter page: hands its changes to its dialog.
#pragma once

#include <QComboBox>

class ParameterDlg;

class Para_ComboBox : public QComboBox
{
    Q_OBJECT
public:
    Para_ComboBox(ParameterDlg *dialog, int group, int entity, QWidget *parent = nullptr);

    ParameterDlg *dialog = nullptr;
    int group = -1;
    int entity = -1;

public slots:
    void SelectionChanged(int index);
};
