// The in-tool view of a block's help page. Requests arrive as file paths or as workspace block
// items; the page itself is (re)loaded only through Signal_ShowHome, so a request from another
// thread or object lands on this one's thread.
#include "help/HelpWnd.h"

#include "app/AppIcons.h"
#include "app/BlockData.h"
#include "pages/BlkHelpData.h"
#include "schematics/WspData.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QIcon>
#include <QMenu>
#include <QMetaType>

Q_DECLARE_METATYPE(const WSP_BLK_ITEM_STRUCT *)

namespace {
QAction *MakeAction(QObject *parent, const char *icon, const QString &text, const QString &tip)
{
    auto *action = new QAction(QIcon(QString::fromLatin1(icon)), text, parent);
    action->setToolTip(tip);
    action->setStatusTip(tip);
    return action;
}
} // namespace

HelpWnd::HelpWnd(QWidget *parent) : QTextBrowser(parent)
{
    InitIcons();
    qRegisterMetaType<const WSP_BLK_ITEM_STRUCT *>("const WSP_BLK_ITEM_STRUCT*");

    home_act = MakeAction(this, ":/icon-home", tr("Home"), tr("Start Page"));
    zoom_in_act = MakeAction(this, ":/icon-zoom-in", tr("Zoom In"), tr("Zoom In"));
    zoom_out_act = MakeAction(this, ":/icon-zoom-out", tr("Zoom Out"), tr("Zoom Out"));
    connect(home_act, &QAction::triggered, this, &HelpWnd::ShowHome);
    connect(zoom_in_act, &QAction::triggered, this, &HelpWnd::ZoomIn);
    connect(zoom_out_act, &QAction::triggered, this, &HelpWnd::ZoomOut);

    connect(this, &HelpWnd::Signal_ShowHome, this, &HelpWnd::ShowHome);
    connect(this, qOverload<const WSP_BLK_ITEM_STRUCT *, bool, bool>(&HelpWnd::Signal_SetFile), this,
            qOverload<const WSP_BLK_ITEM_STRUCT *, bool, bool>(&HelpWnd::SetFile));
    connect(this, qOverload<QString, bool, bool>(&HelpWnd::Signal_SetFile), this,
            qOverload<const QString &, bool, bool>(&HelpWnd::SetFile));
    connect(this, &QTextBrowser::sourceChanged, this, &HelpWnd::UrlChanged);
}

void HelpWnd::ClearFile() { current_file.clear(); }

void HelpWnd::ShowHome()
{
    if (current_file.isEmpty()) {
        clear();
        return;
    }
    // setSource skips a URL equal to the current one, but an appended request must reload it.
    const QUrl url = QUrl::fromLocalFile(current_file);
    if (url == source())
        reload();
    else
        setSource(url);
}

// Zooming is offered in the menu but deliberately does nothing.
void HelpWnd::ZoomIn() {}
void HelpWnd::ZoomOut() {}

void HelpWnd::Back() { backward(); }
void HelpWnd::Forward() { forward(); }
void HelpWnd::Reload() { reload(); }

void HelpWnd::SetFile(const WSP_BLK_ITEM_STRUCT *data, bool append, bool load_invisible)
{
    const BlkHelpData *help = data && data->blockdef ? data->blockdef->help : nullptr;
    if (!help || help->file_name.isEmpty()) {
        current_file.clear();
        clear();
        return;
    }
    SetFile(data->ref_path + "/doc/" + help->file_name.first(), append, load_invisible);
}

void HelpWnd::SetFile(const QString &fname, bool append, bool load_invisible)
{
    // A hidden view forgets the request, so showing it later loads nothing stale.
    if ((!isVisible() && !load_invisible) || fname.isEmpty() || !QFileInfo(fname).isFile()) {
        current_file.clear();
        clear();
        return;
    }
    if (fname == current_file)
        return;
    if (!append)
        current_file.clear();
    // With append, a page already shown stays and is only reloaded.
    if (current_file.isEmpty())
        current_file = fname;
    emit Signal_ShowHome();
}

void HelpWnd::UrlChanged(const QUrl &) {}

QMenu *HelpWnd::BuildContextMenu(const QPoint &position)
{
    QMenu *menu = createStandardContextMenu(position);
    AdjustContextMenu(menu);
    return menu;
}

void HelpWnd::AdjustContextMenu(QMenu *menu)
{
    QAction *reload_entry = nullptr;
    for (QAction *action : menu->actions()) {
        const QString text = action->text();
        if (text.contains(QLatin1String("Save page")) || text.contains(QLatin1String("source")))
            action->setVisible(false);
        if (!reload_entry && text.contains(QLatin1String("Reload")))
            reload_entry = action;
    }
    if (!reload_entry)
        return;
    menu->insertAction(reload_entry, home_act);
    menu->addAction(zoom_in_act);
    menu->addAction(zoom_out_act);
}

void HelpWnd::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = BuildContextMenu(event->pos());
    menu->exec(event->globalPos());
    delete menu;
}
