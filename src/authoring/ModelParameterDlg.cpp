#include "authoring/ModelParameterDlg.h"

namespace Ui { class ModelParameterDlg {}; }

ModelParameterDlg::ModelParameterDlg(BlkParaData *para_data, QWidget *parent) : QFrame(parent), para_data(para_data) {}
ModelParameterDlg::~ModelParameterDlg() = default;
void ModelParameterDlg::SaveModels(const QString &) {}
void ModelParameterDlg::SyncModels() {}
void ModelParameterDlg::ValidateModels(ErrorList *) {}
void ModelParameterDlg::FillComboBoxData(int, int, QComboBox *) {}
