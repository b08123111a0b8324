// The "Hardware I/O" tab: in this version an empty table with its three columns.
#pragma once

#include <QFrame>
#include <QString>

class QComboBox;
class QTreeWidgetItem;
class TreeWidget;

class InputOutputDlg : public QFrame
{
    Q_OBJECT
public:
    InputOutputDlg(int mode, const QString &block_dir, QWidget *parent = nullptr);

    void SetBlockDir(const QString &dir);

    qint32 mode = 0;
    QString block_dir;
    TreeWidget *tree = nullptr;

public slots:
    void FillComboBoxData(QTreeWidgetItem *item, int col, QComboBox *cbox);
};
