#include "pages/CodeConfigDlg.h"

namespace Ui { class CodeConfigDlg {}; }

CodeConfigDlg::CodeConfigDlg(MainWindow *main_window, BlkParaData *para_data, BlkParaData *initcond_data, QWidget *parent)
    : QFrame(parent), main_window(main_window), para_data(para_data), initcond_data(initcond_data) {}
CodeConfigDlg::~CodeConfigDlg() = default;
void CodeConfigDlg::LoadCodeData(const QString &, BlockData *) {}
void CodeConfigDlg::SyncCodeData() {}
void CodeConfigDlg::SaveCodeData(const QString &, BlockData *) {}
void CodeConfigDlg::ValidateCodeData(ErrorList *) {}
void CodeConfigDlg::ValidatePortSizes(BlkCodePort *, ErrorList *) {}
void CodeConfigDlg::UpdatePrimaryFlag() {}
void CodeConfigDlg::SetPortForm(int, const QString &, int) {}
void CodeConfigDlg::TableAddRow(TableWidget *) {}
void CodeConfigDlg::TableRemoveRow(TableWidget *) {}
