#include "help/HelpWnd.h"

HelpWnd::HelpWnd(QWidget *parent) : QTextBrowser(parent) {}
void HelpWnd::ClearFile() { current_file.clear(); }
void HelpWnd::ShowHome() {}
void HelpWnd::ZoomIn() {}
void HelpWnd::ZoomOut() {}
void HelpWnd::Back() {}
void HelpWnd::Forward() {}
void HelpWnd::Reload() {}
void HelpWnd::SetFile(const WSP_BLK_ITEM_STRUCT *, bool, bool) {}
void HelpWnd::SetFile(const QString &, bool, bool) {}
void HelpWnd::UrlChanged(const QUrl &) {}
void HelpWnd::contextMenuEvent(QContextMenuEvent *event) { QTextBrowser::contextMenuEvent(event); }
