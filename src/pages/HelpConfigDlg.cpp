// The Help page. The installation text and the choice of another entry file stay hidden and
// disabled; their code is kept so that they can be offered again.
#include "pages/HelpConfigDlg.h"

#include "app/BlockData.h"
#include "app/ErrorList.h"
#include "app/Prompt.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkHelpFileIO.h"

#include "ui_HelpConfigDlg.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace {
const char kHelpFile[] = "/blk_help.cfg";
const char kTitle[] = "ZEMA";
} // namespace

HelpConfigDlg::HelpConfigDlg(QWidget *parent) : QFrame(parent), ui(new Ui::HelpConfigDlg)
{
    ui->setupUi(this);
    ui->gb_help_install->hide();
    ui->help_file_edit->setText(QStringLiteral("index.htm"));
    ui->help_file_edit->setReadOnly(true);
    ui->help_file_pb->setEnabled(false);
}

HelpConfigDlg::~HelpConfigDlg()
{
    if (own_data)
        FreeBlkHelpData(data);
}

void HelpConfigDlg::LoadHelpData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    if (own_data)
        FreeBlkHelpData(data);
    data = nullptr;
    own_data = 0;
    if (block_data) {
        if (!block_data->help)
            block_data->help = new BlkHelpData;
        data = block_data->help;
    } else {
        // A directory without the file is a new one, not a failure worth a box.
        if (!block_dir.isEmpty() && QFileInfo::exists(block_dir + QLatin1String(kHelpFile))) {
            BlkHelpFileIO io(QString(), nullptr, 0);
            data = io.LoadFile(block_dir + QLatin1String(kHelpFile), QLatin1String(kTitle));
        }
        if (!data)
            data = new BlkHelpData;
        own_data = 1;
    }
    // The stored entry files are not shown: the field keeps "index.htm".
    ui->help_install->setPlainText(data->h_inst);
    on_help_refresh_pb_clicked();
}

void HelpConfigDlg::SyncHelpData()
{
    if (!data)
        return;
    data->h_inst = ui->help_install->toPlainText();
    data->file_name.clear();
    const QString file = ui->help_file_edit->text().trimmed();
    if (!file.isEmpty())
        data->file_name.append(file);
}

void HelpConfigDlg::SaveHelpData(const QString &block_dir, BlockData *block_data)
{
    this->block_dir = block_dir;
    SyncHelpData();
    if (block_data) {
        if (block_data->help != data) {
            FreeBlkHelpData(block_data->help);
            block_data->help = data;
        }
        own_data = 0;
        return;
    }
    BlkHelpFileIO io(QString(), nullptr, 0);
    io.SaveFile(block_dir + QLatin1String(kHelpFile), data, QLatin1String(kTitle));
}

void HelpConfigDlg::ValidateHelpData(ErrorList *error_list)
{
    if (!data)
        return;
    SyncHelpData();
    // The text ends in a blank, as it always has.
    for (const QString &file : data->file_name)
        if (!QFileInfo::exists(block_dir + "/doc/" + file))
            error_list->AddMessage(ErrorList::Warning,
                                   QStringLiteral("Help: Specified file %1 does not exists in /%2 directory ")
                                       .arg(file, QStringLiteral("doc")));
}

void HelpConfigDlg::on_help_file_pb_clicked()
{
    const QString file = Prompt::OpenFileName(this, QStringLiteral("Select Help File"), block_dir,
                                              QStringLiteral("HTML-Files (*.htm *.html);;All Files (*)"));
    ui->help_file_edit->setText(QFileInfo(file).fileName());
    on_help_refresh_pb_clicked();
}

void HelpConfigDlg::on_help_refresh_pb_clicked()
{
    ui->help_file_viewer->ClearFile();
    ui->help_file_viewer->clear();
    if (block_dir.isEmpty())
        return;
    // The page loads while its tab is still hidden, so the view must take the file regardless.
    ui->help_file_viewer->SetFile(block_dir + "/doc/" + ui->help_file_edit->text(), false, true);
}

void HelpConfigDlg::on_help_webbrowser_pb_clicked()
{
    const QString path = block_dir + "/doc/index.htm";
    if (QFileInfo::exists(path))
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void HelpConfigDlg::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (hide_on_show)
        hide();
}
