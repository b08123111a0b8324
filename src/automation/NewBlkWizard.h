// The four steps that make a new block with generated code: name and place, ports, parameters,
// and the other language.
#pragma once

#include <QString>
#include <QStringList>
#include <QWizard>
#include <memory>

class QComboBox;
class QTableWidgetItem;

namespace Ui { class NewBlkWizard; }

class NewBlkWizard : public QWizard
{
    Q_OBJECT
public:
    explicit NewBlkWizard(QWidget *parent = nullptr);
    ~NewBlkWizard() override;

    void FillSample();
    QString GetBlockName() const;
    QString GetBlockTitle() const;
    QString GetBlockLocation() const;
    int GetOtherLanguageIndex() const;
    QString GetOtherLanguageText() const;
    // False when `index` is out of range.
    bool GetParameter(int index, QString &name, QString &variable, QString &value,
                      QStringList &values, QString &type) const;
    bool GetPort(int index, QString &name, QString &visible, QString &direction, QString &type,
                 int &size) const;

    QString base_dir;
    int next_item = 0;
    QTableWidgetItem *para_item = nullptr;
    quint8 finalized = 0;
    std::unique_ptr<Ui::NewBlkWizard> ui;
};
