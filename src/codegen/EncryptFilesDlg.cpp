#include "codegen/EncryptFilesDlg.h"

#include "ui_EncryptFilesDlg.h"

EncryptFilesDlg::EncryptFilesDlg(const QString &start_dir, QWidget *parent)
    : QDialog(parent), start_dir(start_dir), ui(std::make_unique<Ui::EncryptFilesDlg>())
{
    ui->setupUi(this);
}

EncryptFilesDlg::~EncryptFilesDlg() = default;
