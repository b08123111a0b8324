#include "pages/MiscConfigDlg.h"

namespace Ui { class MiscConfigDlg {}; }

MiscConfigDlg::MiscConfigDlg(MainWindow *main_window, QWidget *parent) : QFrame(parent), main_window(main_window) {}
MiscConfigDlg::~MiscConfigDlg() = default;
void MiscConfigDlg::LoadMiscData(const QString &, BlockData *) {}
void MiscConfigDlg::SyncMiscData() {}
void MiscConfigDlg::SaveMiscData(const QString &, BlockData *) {}
void MiscConfigDlg::ValidateMiscData(ErrorList *) {}
void MiscConfigDlg::TableAddRow(TableWidget *) {}
void MiscConfigDlg::TableRemoveRow(TableWidget *) {}
