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

    ConversionSettings settings;
    QString start_dir;
    std::unique_ptr<Ui::EncryptFilesDlg> ui;
};
