// One HTML help page of a block, shown inside the tool. The program's own manual is not shown
// here (see ShowManualTopic).
#pragma once

#include <QString>
#include <QTextBrowser>

class QAction;
class QMenu;
struct WSP_BLK_ITEM_STRUCT;

class HelpWnd : public QTextBrowser
{
    Q_OBJECT
public:
    explicit HelpWnd(QWidget *parent = nullptr);

    void ClearFile();
    // The menu that a right click pops up, owned by the caller; `position` in viewport coordinates.
    QMenu *BuildContextMenu(const QPoint &position = QPoint());
    // Hides the entries that make no sense for a block's page and adds ours around "Reload".
    void AdjustContextMenu(QMenu *menu);

    QString current_file;
    QAction *home_act = nullptr;
    QAction *zoom_in_act = nullptr;
    QAction *zoom_out_act = nullptr;

signals:
    void Signal_ShowHome();
    void Signal_SetFile(const WSP_BLK_ITEM_STRUCT *data, bool append, bool load_invisible);
    void Signal_SetFile(QString fname, bool append, bool load_invisible);

public slots:
    void ShowHome();
    void ZoomIn();
    void ZoomOut();
    void Back();
    void Forward();
    void Reload();
    void SetFile(const WSP_BLK_ITEM_STRUCT *data, bool append = false, bool load_invisible = false);
    void SetFile(const QString &fname, bool append = false, bool load_invisible = false);
    void UrlChanged(const QUrl &url);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
};
