// The four steps that make a new block with generated code: name and place, ports, parameters,
// and the other language.
#pragma once

#include <QString>
#include <QStringList>
#include <QWizard>
#include <memory>

class ErrorListDlg;
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

    // Collects the faults into `error_list`. While finalizing only errors are shown and count;
    // otherwise every message is shown. True when no error is listed.
    bool ValidateInput(bool finalizing);
    // Writes the value panel into the user data of `para_item` as "sv#..." or "mv#...".
    void StoreParaPanel();
    // What the wizard shows, for runs without a person.
    QStringList Texts() const;
    // Every way out but Finalize asks first.
    void done(int result) override;

    QString base_dir;
    int next_item = 0;
    QTableWidgetItem *para_item = nullptr;
    quint8 finalized = 0;
    std::unique_ptr<Ui::NewBlkWizard> ui;
    ErrorListDlg *error_list = nullptr;

public slots:
    void FillPortsComboBoxData(int row, int col, QComboBox *cbox);
    void on_table_para_itemSelectionChanged();
    void on_pb_browse_loc_clicked();
    void on_pb_en_add_clicked();
    void on_pb_en_rem_clicked();
    void on_pb_en_up_clicked();
    void on_pb_en_dn_clicked();
    void on_pb_env_add_clicked();
    void on_pb_env_rem_clicked();
    void on_pb_env_up_clicked();
    void on_pb_env_dn_clicked();
    void on_pb_port_add_clicked();
    void on_pb_port_rem_clicked();
    void on_pb_port_up_clicked();
    void on_pb_port_dn_clicked();
    void on_pb_validate_clicked();
    void on_pb_finalize_clicked();
    void on_NewBlkWizard_currentIdChanged(int id);

private:
    void LoadParaPanel(const QTableWidgetItem *item);
    void MoveParaRow(int step);
    void MovePortRow(int step);
    void MoveValue(int step);
};
