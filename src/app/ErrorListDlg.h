// The error list as a dialog: the numbered messages of a validation or a file operation.
#pragma once

#include "app/ErrorList.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

class ErrorListDlg : public QDialog, public ErrorList
{
    Q_OBJECT
public:
    ErrorListDlg(const QString &title, const QString &label_text, const QString &log_path,
                 quint8 no_show, QWidget *parent = nullptr);

    void ClearMessages() override;
    void SetTexts(const QString &title, const QString &label_text);
    // Fills the list, logs, and runs the dialog unless no_show; the messages stay until cleared.
    void ShowMessages();

    QString log_path;
    quint8 no_show = 0;
    QListWidget *list = nullptr;
    QPushButton *ok_button = nullptr;
    QLabel *label = nullptr;

private slots:
    void OnOkButtonPressed();
};
