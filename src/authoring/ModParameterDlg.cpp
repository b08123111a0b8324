#include "authoring/ModParameterDlg.h"

namespace Ui { class ModParameterDlg {}; }

ModParameterDlg::ModParameterDlg(int kind, QWidget *parent) : QFrame(parent), kind(kind) {}
ModParameterDlg::~ModParameterDlg() = default;
void ModParameterDlg::LoadParaPage(const QString &, BlockData *) {}
void ModParameterDlg::SaveParaPage(const QString &, BlockData *) {}
void ModParameterDlg::ValidateParaPage(ErrorList *) {}
qint32 ModParameterDlg::CheckArraySize(const QString &, BlkParaData *, ParaGroup *, ParaEntity *, ErrorList *, const QString &) { return 1; }
void ModParameterDlg::FillComboBoxData(int, int, QComboBox *) {}
void ModParameterDlg::TableAddRow(TableWidget *) {}
void ModParameterDlg::TableRemoveRow(TableWidget *) {}
