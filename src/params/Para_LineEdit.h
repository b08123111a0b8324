// The line edit cell of the parameter page. Only text the user typed writes back to the record:
// `edited` is set by focus, so text set by the program never does.
#pragma once

#include <QLineEdit>

class ParameterDlg;

class Para_LineEdit : public QLineEdit
{
    Q_OBJECT
public:
    Para_LineEdit(ParameterDlg *dialog, int group, int entity, QWidget *parent = nullptr);

    ParameterDlg *dialog = nullptr;
    int group = -1;
    int entity = -1;
    bool edited = false;

public slots:
    void TextChanged(const QString &newtext);
    void ReturnPressed();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void CopyTextToEntity();
};
