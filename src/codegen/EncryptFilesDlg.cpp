#include "codegen/EncryptFilesDlg.h"

#include "ui_EncryptFilesDlg.h"

#include "app/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QIntValidator>
#include <limits>

EncryptFilesDlg::EncryptFilesDlg(const QString &start_dir, QWidget *parent)
    : QDialog(parent), start_dir(start_dir), ui(std::make_unique<Ui::EncryptFilesDlg>())
{
    ui->setupUi(this);
    ui->eb_key->setValidator(new QIntValidator(std::numeric_limits<qint32>::min(),
                                               std::numeric_limits<qint32>::max(), ui->eb_key));
    // Options that cannot matter for the current choice are greyed, not reset: Start reads them all.
    connect(ui->chk_decrypt, &QCheckBox::toggled, this, [this](bool on) {
        for (QWidget *type : {ui->chk_fortran, ui->chk_python, ui->chk_all_types})
            type->setEnabled(!on);
    });
    connect(ui->chk_single_file, &QCheckBox::toggled, ui->chk_subdirs, &QWidget::setDisabled);
}

EncryptFilesDlg::~EncryptFilesDlg() = default;

QStringList EncryptFilesDlg::Texts() const
{
    return {windowTitle(), ui->lb_note->text()};
}

void EncryptFilesDlg::on_pb_brw_file_enc_clicked()
{
    const QString chosen = ui->chk_single_file->isChecked()
        ? Prompt::OpenFileName(this, QStringLiteral("Select File"), start_dir, QString())
        : Prompt::ExistingDirectory(this, QStringLiteral("Select Folder"), start_dir);
    if (chosen.isEmpty())
        return;
    ui->eb_path->setText(QDir::toNativeSeparators(chosen));
    start_dir = QFileInfo(chosen).path();
}

void EncryptFilesDlg::on_pb_start_clicked()
{
    settings.path = QDir::fromNativeSeparators(ui->eb_path->text().trimmed());
    settings.key = ui->eb_key->text().toInt();
    settings.decrypt = ui->chk_decrypt->isChecked();
    settings.subdirs = ui->chk_subdirs->isChecked();
    settings.single_file = ui->chk_single_file->isChecked();
    settings.fortran = ui->chk_fortran->isChecked();
    settings.python = ui->chk_python->isChecked();
    settings.all_types = ui->chk_all_types->isChecked();
    accept();
}

void EncryptFilesDlg::on_pb_cancel_clicked()
{
    reject();
}
