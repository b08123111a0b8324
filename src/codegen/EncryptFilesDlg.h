// The dialog of a code file conversion run: what to convert, in which direction, with which key.
#pragma once

#include "codegen/CodeFileConversion.h"

#include <QDialog>
#include <memory>

namespace Ui { class EncryptFilesDlg; }

class EncryptFilesDlg : public QDialog
{
    Q_OBJECT
public:
    EncryptFilesDlg(const QString &start_dir, QWidget *parent = nullptr);
    ~EncryptFilesDlg() override;

    // The texts a headless run reports in place of showing the dialog.
    QStringList Texts() const;

    ConversionSettings settings;   // filled on Start
    QString start_dir;             // where Browse starts; the parent of the last choice
    std::unique_ptr<Ui::EncryptFilesDlg> ui;

private slots:
    void on_pb_brw_file_enc_clicked();
    void on_pb_start_clicked();
    void on_pb_cancel_clicked();
};
