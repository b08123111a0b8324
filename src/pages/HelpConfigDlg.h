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

    // With a block the page edits the block's record in place (making one there when it has
    // none); without one it reads, and owns, "blk_help.cfg" in `block_dir`.
    void LoadHelpData(const QString &block_dir, BlockData *block_data);
    void SyncHelpData();
    void SaveHelpData(const QString &block_dir, BlockData *block_data);
    void ValidateHelpData(ErrorList *error_list);

    BlkHelpData *data = nullptr;
    QString block_dir;
    quint8 hide_on_show = 0;
    std::unique_ptr<Ui::HelpConfigDlg> ui;
    quint8 own_data = 0;

public slots:
    void on_help_file_pb_clicked();
    void on_help_refresh_pb_clicked();
    // Always the fixed "doc/index.htm", whatever the help file field says.
    void on_help_webbrowser_pb_clicked();

protected:
    void showEvent(QShowEvent *event) override;
};
