// The About box: the tool's name, its version and one line on what it is for.
#pragma once

#include <QDialog>
#include <QStringList>

class AboutDlg : public QDialog
{
    Q_OBJECT
public:
    explicit AboutDlg(const QString &tool_version, QWidget *parent = nullptr);

    // The lines the box shows, for runs where nobody sees it.
    QStringList Texts() const;

private:
    QStringList texts;
};
