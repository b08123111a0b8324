#include "pages/PresentationDlg.h"

namespace Ui { class PresentationDlg {}; }

PresentationDlg::PresentationDlg(BlkParaData *para_data, QWidget *parent) : QFrame(parent), para_data(para_data) {}
PresentationDlg::~PresentationDlg() = default;
void PresentationDlg::LoadPresData(const QString &, BlockData *) {}
void PresentationDlg::SyncPresData() {}
void PresentationDlg::SavePresData(const QString &, BlockData *) {}
void PresentationDlg::ValidatePresData(ErrorList *) {}
QString PresentationDlg::PortTypeOf(const QString &) const { return QString(); }
QStringList PresentationDlg::ImageNames() const { return {}; }
void PresentationDlg::AddPortRow(const QString &, const QString &, const QString &) {}
void PresentationDlg::SetBlockTitle(const QString &) {}
void PresentationDlg::SetBlockSize(int, int) {}
void PresentationDlg::on_refresh_portnames_pb_clicked() {}
void PresentationDlg::TableAddRow(TableWidget *) {}
void PresentationDlg::TableRemoveRow(TableWidget *) {}
