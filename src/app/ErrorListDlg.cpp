#include "app/ErrorListDlg.h"

#include "app/Prompt.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

ErrorListDlg::ErrorListDlg(const QString &title, const QString &label_text, const QString &log_path,
                           quint8 no_show, QWidget *parent)
    : QDialog(parent), log_path(log_path), no_show(no_show)
{
    list = new QListWidget(this);
    ok_button = new QPushButton(QStringLiteral("OK"), this);
    ok_button->setMaximumWidth(100);
    label = new QLabel(this);
    label->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(list);
    layout->addWidget(ok_button, 0, Qt::AlignHCenter);
    connect(ok_button, &QPushButton::pressed, this, &ErrorListDlg::OnOkButtonPressed);
    SetTexts(title, label_text);
}

void ErrorListDlg::ClearMessages()
{
    ErrorList::ClearMessages();
    list->clear();
}

void ErrorListDlg::SetTexts(const QString &title, const QString &label_text)
{
    setWindowTitle(title);
    label->setText(label_text);
}

static int HeightForRows(int rows)
{
    if (rows < 10)
        return 300;
    if (rows < 20)
        return 350;
    if (rows < 30)
        return 425;
    return 500;
}

void ErrorListDlg::ShowMessages()
{
    AppendToLog(log_path, windowTitle(), label->text());
    const QStringList rows = NumberedMessages();
    list->addItems(rows);
    if (no_show)
        return;
    resize(600, HeightForRows(list->count()));
    Prompt::Exec(this, QStringList{windowTitle() + ": " + label->text()} + rows);
}

void ErrorListDlg::OnOkButtonPressed()
{
    close();
}
