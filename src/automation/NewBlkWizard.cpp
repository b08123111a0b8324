#include "automation/NewBlkWizard.h"

#include "ui_NewBlkWizard.h"

// Placeholder until the wizard is written.
NewBlkWizard::NewBlkWizard(QWidget *parent) : QWizard(parent), ui(std::make_unique<Ui::NewBlkWizard>())
{
    ui->setupUi(this);
}
NewBlkWizard::~NewBlkWizard() = default;
void NewBlkWizard::FillSample() {}
QString NewBlkWizard::GetBlockName() const { return {}; }
QString NewBlkWizard::GetBlockTitle() const { return {}; }
QString NewBlkWizard::GetBlockLocation() const { return {}; }
int NewBlkWizard::GetOtherLanguageIndex() const { return 0; }
QString NewBlkWizard::GetOtherLanguageText() const { return {}; }
bool NewBlkWizard::GetParameter(int, QString &, QString &, QString &, QStringList &, QString &) const { return false; }
bool NewBlkWizard::GetPort(int, QString &, QString &, QString &, QString &, int &) const { return false; }
