// The "Parameter Models" tab: tables in which the choice of one entity fills others.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>

class ErrorList;
class QAction;
class QComboBox;
struct BlkParaData;

namespace Ui { class ModelParameterDlg; }

class ModelParameterDlg : public QFrame
{
    Q_OBJECT
public:
    // `para_data` is the Parameters page's record; the page works on copies of its models.
    explicit ModelParameterDlg(BlkParaData *para_data, QWidget *parent = nullptr);
    ~ModelParameterDlg() override;

    // The save step: the models have no file of their own and go with the Parameters.
    void SaveModels(const QString &block_dir);
    void SyncModels();
    void ValidateModels(ErrorList *error_list);

    quint8 hide_on_show = 0;
    qint32 cur_model = -1;
    BlkParaData *para_data = nullptr;
    std::unique_ptr<Ui::ModelParameterDlg> ui;
    QString block_dir;

public slots:
    void FillComboBoxData(int row, int col, QComboBox *cbox);
};
