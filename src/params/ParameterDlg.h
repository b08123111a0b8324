// A parameter set as a form: a combo box of its groups, and one page of labelled controls for each
// group. Embedded it is the Configuration tab; modal it edits a workspace item's parameters. It is
// the one place where entity controls (set, disable, hide) are carried out.
#pragma once

#include <QDialog>
#include <QString>

class QComboBox;
class QFrame;
class QPushButton;
class QStackedWidget;
class HelpWnd;
struct BlkParaData;
struct ParaEntity;
struct WSP_BLK_ITEM_STRUCT;

class ParameterDlg : public QDialog
{
    Q_OBJECT
public:
    // With own_data the dialog deletes `data`; otherwise the caller keeps it.
    ParameterDlg(bool modal, BlkParaData *data, bool unlocked, bool own_data, bool view_only,
                 const QString &path, const QString &title_suffix, const QString &help_name,
                 void *owner = nullptr, WSP_BLK_ITEM_STRUCT *wsp_item = nullptr,
                 QWidget *parent = nullptr);
    ~ParameterDlg() override;

    // True when acceptable; otherwise `message` says what is out of range.
    bool CheckEntityRange(int group, int entity, QString &message);
    void ApplyEntityControls(ParaEntity *entity);
    void ApplyModelSelection(int index, const QString &group, const QString &entity,
                             bool update_editors);
    // Handling of a combo box change of the entity at (group, entity).
    void EntitySelectionChanged(int group, int entity, int index);
    // The entity at (group, entity) of `data`, or null when there is none (or no data).
    ParaEntity *EntityAt(int group, int entity) const;

    QString path;
    BlkParaData *data = nullptr;
    quint8 modal = 0;
    quint8 own_data = 0;
    quint8 ready = 0;
    quint8 unlocked = 0;
    quint8 view_only = 0;
    quint8 help_shown = 0;
    QWidget *body = nullptr;
    QComboBox *header_combo = nullptr;
    QStackedWidget *stack = nullptr;
    void *owner = nullptr;
    WSP_BLK_ITEM_STRUCT *wsp_item = nullptr;
    HelpWnd *help_wnd = nullptr;
    QString help_name;
    QWidget *help_panel = nullptr;
    QPushButton *help_button = nullptr;
    QPushButton *ok_button = nullptr;
    QPushButton *cancel_button = nullptr;

public slots:
    void HeaderSelectionChanged(int index);
    void OKPressed();
    void CancelPressed();
    void HelpPressed();

private:
    void ApplyModelDefaults();
    void ResolveControls();
    void BuildForm();
    bool EditorMayEnable(const ParaEntity *entity) const;
    void UndoEffect(ParaEntity *entity);
    void ApplyAction(ParaEntity *entity, const QString &act_type);
};
