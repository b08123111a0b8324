#include "pages/HelpConfigDlg.h"

namespace Ui { class HelpConfigDlg {}; }

HelpConfigDlg::HelpConfigDlg(QWidget *parent) : QFrame(parent) {}
HelpConfigDlg::~HelpConfigDlg() = default;
void HelpConfigDlg::LoadHelpData(const QString &, BlockData *) {}
void HelpConfigDlg::SyncHelpData() {}
void HelpConfigDlg::SaveHelpData(const QString &, BlockData *) {}
void HelpConfigDlg::ValidateHelpData(ErrorList *) {}
