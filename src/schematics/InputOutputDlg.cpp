#include "schematics/InputOutputDlg.h"

InputOutputDlg::InputOutputDlg(int mode, const QString &block_dir, QWidget *parent)
    : QFrame(parent), mode(mode), block_dir(block_dir) {}
void InputOutputDlg::SetBlockDir(const QString &dir) { block_dir = dir; }
void InputOutputDlg::FillComboBoxData(QTreeWidgetItem *, int, QComboBox *) {}
