// The "Help" tab: shows the block's help from its "doc" folder and records its entry file.
#pragma once

#include <QFrame>
#include <QString>
#include <memory>

class ErrorList;
struct BlkHelpData;
struct BlockData;

namespace Ui { class HelpConfigDlg; }

class HelpConfigDlg : public QFrame
{
    Q_OBJECT
public:
    explicit HelpConfigDlg(QWidget *parent = nullptr);
    ~HelpConfigDlg() override;

    void LoadHelpData(const QString &block_dir, BlockData *block_data);
    void SyncHelpData();
    void SaveHelpData(const QString &block_dir, BlockData *block_data);
    void ValidateHelpData(ErrorList *error_list);

    BlkHelpData *data = nullptr;
    QString block_dir;
    quint8 hide_on_show = 0;
    std::unique_ptr<Ui::HelpConfigDlg> ui;
    quint8 own_data = 0;
};
