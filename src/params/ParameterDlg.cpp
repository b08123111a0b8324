#include "params/ParameterDlg.h"

#include "app/BlockData.h"
#include "app/ErrorListDlg.h"
#include "app/ScriptEval.h"
#include "help/HelpWnd.h"
#include "pages/BlkMiscData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"
#include "params/Para_ComboBox.h"
#include "params/Para_LineEdit.h"
#include "schematics/WspData.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

ParameterDlg::ParameterDlg(bool modal, BlkParaData *data, bool unlocked, bool own_data,
                           bool view_only, const QString &path, const QString &title_suffix,
                           const QString &help_name, void *owner, WSP_BLK_ITEM_STRUCT *wsp_item,
                           QWidget *parent)
    : QDialog(parent), path(path), data(data), modal(modal), own_data(own_data),
      unlocked(unlocked), view_only(view_only), owner(owner), wsp_item(wsp_item),
      help_name(help_name)
{
    setModal(modal);
    if (modal) {
        body = this;
    } else {
        auto *frame = new QFrame(this);
        frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        auto *outer = new QVBoxLayout(this);
        outer->setContentsMargins(0, 0, 0, 0);
        outer->setSpacing(0);
        outer->addWidget(frame);
        body = frame;
    }

    ApplyModelDefaults();
    ResolveControls();
    BuildForm();
    if (data)
        for (ParaGroup *group : data->para_grp)
            for (ParaEntity *entity : group->para_entity)
                ApplyEntityControls(entity);
    help_wnd->SetFile(path + "/doc/" + help_name, false, true);
    ready = 1;

    QString title = data ? data->title : QString();
    if (wsp_item)
        title += QString(" (Ref.Id:%1 Id:%2)").arg(wsp_item->ref_id).arg(wsp_item->id);
    setWindowTitle(title + " " + title_suffix);
    hide();
}

ParameterDlg::~ParameterDlg()
{
    // The focus may leave a field while the widgets go; by then its text is in the record already.
    for (Para_LineEdit *edit : findChildren<Para_LineEdit *>())
        edit->dialog = nullptr;
    for (Para_ComboBox *combo : findChildren<Para_ComboBox *>())
        combo->dialog = nullptr;
    // Editors and captions keep pointing at the widgets: the next form over the record resets them.
    if (own_data)
        FreeBlkParaData(data);
}

ParaEntity *ParameterDlg::EntityAt(int group, int entity) const
{
    if (!data || group < 0 || group >= data->para_grp.size())
        return nullptr;
    const QList<ParaEntity *> &entities = data->para_grp[group]->para_entity;
    return entity >= 0 && entity < entities.size() ? entities[entity] : nullptr;
}

void ParameterDlg::ApplyModelDefaults()
{
    if (!data)
        return;
    for (ModelCat *cat : data->model_cat) {
        for (int i = 0; i < cat->subcats.size(); ++i) {
            const ModelSubCat *sub = cat->subcats[i];
            ParaEntity *entity = FindEntity(data, sub->group, sub->entity);
            if (!entity)
                continue;
            // Dependents lose their lists: the model fills them, so they become line edits.
            entity->values.clear();
            if (i != 0)
                continue;
            entity->values = sub->vals;
            if (entity->values.isEmpty())
                continue;
            if (entity->sel_idx < 0 || entity->sel_idx >= entity->values.size())
                entity->sel_idx = 0;
            entity->sel_val = entity->values[entity->sel_idx];
            ApplyModelSelection(entity->sel_idx, sub->group, sub->entity, false);
        }
    }
}

void ParameterDlg::ApplyModelSelection(int index, const QString &group, const QString &entity,
                                       bool update_editors)
{
    if (index < 0 || !data)
        return;
    for (const ModelCat *cat : data->model_cat) {
        if (cat->subcats.isEmpty())
            continue;
        const ModelSubCat *selector = cat->subcats.first();
        if (selector->group != group || selector->entity != entity)
            continue;
        for (int i = 1; i < cat->subcats.size(); ++i) {
            const ModelSubCat *sub = cat->subcats[i];
            ParaEntity *dependent = FindEntity(data, sub->group, sub->entity);
            if (!dependent)
                continue;
            dependent->sel_val = sub->vals.value(index);
            dependent->sel_idx = index;
            if (update_editors)
                if (auto *edit = qobject_cast<QLineEdit *>(dependent->editor))
                    edit->setText(dependent->sel_val);
        }
        return;
    }
}

void ParameterDlg::ResolveControls()
{
    if (!data)
        return;
    for (ParaGroup *group : data->para_grp) {
        for (ParaEntity *entity : group->para_entity) {
            entity->editor = nullptr;
            entity->caption = nullptr;
            for (int i = entity->para_con.size() - 1; i >= 0; --i) {
                ParaCon *con = entity->para_con[i];
                con->target_group = nullptr;
                con->target_entity = nullptr;
                if (ParaGroup *target = FindGroup(data, con->header)) {
                    if (con->label.isEmpty())
                        con->target_group = target;
                    else
                        con->target_entity = FindEntityInGroup(target, con->label);
                }
                // Dropped for good: the next save no longer carries it.
                if (!con->target_group && !con->target_entity)
                    delete entity->para_con.takeAt(i);
            }
        }
    }
}

bool ParameterDlg::EditorMayEnable(const ParaEntity *entity) const
{
    return entity->enable && !(entity->license && !unlocked);
}

void ParameterDlg::BuildForm()
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    body->setWindowTitle(data ? data->title : QString());

    header_combo = new QComboBox(body);
    header_combo->setMinimumWidth(450);
    stack = new QStackedWidget(body);

    const QList<ParaGroup *> groups = data ? data->para_grp : QList<ParaGroup *>();
    for (int g = 0; g < groups.size(); ++g) {
        const ParaGroup *group = groups[g];
        header_combo->addItem(group->header);
        auto *scroll = new QScrollArea(stack);
        scroll->setWidgetResizable(true);
        auto *page = new QWidget(scroll);
        auto *column = new QVBoxLayout(page);
        column->setAlignment(Qt::AlignTop);
        column->setContentsMargins(7, 7, 7, 7);
        column->setSpacing(7);
        auto *grid = new QGridLayout;
        grid->setContentsMargins(7, 7, 7, 7);
        grid->setSpacing(7);
        column->addLayout(grid);

        for (int e = 0; e < group->para_entity.size(); ++e) {
            ParaEntity *entity = group->para_entity[e];
            QString caption_text = entity->label;
            if (!entity->unit.isEmpty())
                caption_text += " (" + entity->unit + ")";
            auto *caption = new QLabel(caption_text, page);
            caption->setWordWrap(true);
            caption->setMinimumWidth(215);
            caption->setVisible(entity->visible);
            entity->caption = caption;

            QWidget *editor = nullptr;
            if (entity->values.isEmpty()) {
                auto *edit = new Para_LineEdit(this, g, e, page);
                edit->setText(entity->sel_val);
                if (entity->val_type == AuthValueType())
                    edit->setEchoMode(QLineEdit::Password);
                if (entity->enable)
                    edit->setReadOnly(entity->readonly);
                editor = edit;
            } else {
                auto *combo = new Para_ComboBox(this, g, e, page);
                combo->addItems(entity->values);
                combo->setCurrentIndex(entity->sel_idx);
                editor = combo;
            }
            editor->setMinimumWidth(210);
            editor->setEnabled(EditorMayEnable(entity));
            editor->setVisible(entity->visible);
            entity->editor = editor;
            if (entity->visible) {
                grid->addWidget(caption, e, 0);
                grid->addWidget(editor, e, 1);
            }
        }
        scroll->setWidget(page);
        stack->addWidget(scroll);
    }

    help_panel = new QWidget(body);
    auto *help_layout = new QVBoxLayout(help_panel);
    help_layout->setContentsMargins(0, 0, 0, 0);
    help_wnd = new HelpWnd(help_panel);
    help_wnd->setSearchPaths(QStringList{path + "/doc"});
    help_layout->addWidget(help_wnd);
    help_panel->hide();

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->setContentsMargins(0, 0, 0, 0);
    ok_button = new QPushButton(QStringLiteral("OK"), body);
    cancel_button = new QPushButton(QStringLiteral("Cancel"), body);
    help_button = new QPushButton(QStringLiteral("Help"), body);
    for (QPushButton *button : {ok_button, cancel_button, help_button}) {
        buttons->addWidget(button);
        if (!modal)
            button->hide();
    }
    ok_button->setEnabled(!view_only);
    connect(ok_button, &QPushButton::clicked, this, &ParameterDlg::OKPressed);
    connect(cancel_button, &QPushButton::clicked, this, &ParameterDlg::CancelPressed);
    connect(help_button, &QPushButton::clicked, this, &ParameterDlg::HelpPressed);

    auto *column = new QVBoxLayout;
    column->setAlignment(Qt::AlignHCenter);
    column->setSpacing(7);
    column->addWidget(header_combo);
    column->addWidget(stack);
    column->addLayout(buttons);
    auto *row = new QHBoxLayout(body);
    row->setContentsMargins(7, 7, 7, 7);
    row->addLayout(column);
    row->addWidget(help_panel);

    connect(header_combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ParameterDlg::HeaderSelectionChanged);
}

void ParameterDlg::HeaderSelectionChanged(int index)
{
    stack->setCurrentIndex(index);
    // Nothing sets help_shown, so in practice only the page changes.
    if (!help_shown)
        return;
    help_panel->show();
    if (!data || index < 0 || index >= data->para_grp.size())
        return;
    help_wnd->SetFile(path + "/doc/" + data->para_grp[index]->helpfile, false, false);
}

void ParameterDlg::UndoEffect(ParaEntity *entity)
{
    entity->usr_enable = entity->enable;
    entity->usr_visible = entity->visible;
    if (entity->editor) {
        entity->editor->setEnabled(EditorMayEnable(entity));
        entity->editor->setVisible(entity->visible);
    }
    if (entity->caption)
        entity->caption->setVisible(entity->visible);
}

void ParameterDlg::ApplyAction(ParaEntity *entity, const QString &act_type)
{
    if (act_type == QLatin1String("Disable")) {
        if (entity->editor)
            entity->editor->setEnabled(false);
        entity->usr_enable = 0;
    } else if (act_type == QLatin1String("Hide")) {
        entity->usr_visible = 0;
        if (entity->editor)
            entity->editor->hide();
        if (entity->caption)
            entity->caption->hide();
    }
}

void ParameterDlg::EntitySelectionChanged(int group, int entity, int index)
{
    ParaEntity *changed = EntityAt(group, entity);
    if (!ready || !changed || index < 0)
        return;
    changed->sel_idx = index;
    changed->sel_val = changed->values.value(index);
    const QString kept = changed->sel_val;
    ApplyModelSelection(index, data->para_grp[group]->header, changed->label, true);

    for (const ParaCon *con : changed->para_con) {
        if (con->target_group) {
            for (ParaEntity *member : con->target_group->para_entity)
                UndoEffect(member);
        } else if (con->target_entity && con->target_entity->editor) {
            UndoEffect(con->target_entity);
        }
    }
    ApplyEntityControls(changed);
    // A chain of controls may have come back to this entity; its own choice stands.
    changed->sel_val = kept;
}

void ParameterDlg::ApplyEntityControls(ParaEntity *entity)
{
    if (!entity)
        return;
    // Index loop: a combo change below runs the target's handling, which never edits this list.
    for (int i = 0; i < entity->para_con.size(); ++i) {
        const ParaCon *con = entity->para_con[i];
        if (con->sel_idx != entity->sel_idx)
            continue;
        if (con->target_group) {
            for (ParaEntity *member : con->target_group->para_entity)
                ApplyAction(member, con->act_type);
            continue;
        }
        ParaEntity *target = con->target_entity;
        if (!target)
            continue;
        if (auto *combo = qobject_cast<QComboBox *>(target->editor)) {
            const int found = combo->findText(con->value, Qt::MatchExactly | Qt::MatchCaseSensitive);
            if (found >= 0)
                combo->setCurrentIndex(found);
        } else if (auto *edit = qobject_cast<QLineEdit *>(target->editor)) {
            if (!con->value.isEmpty()) {
                edit->setText(con->value);
                target->sel_val = con->value;
                target->sel_idx = -1;
            }
        }
        ApplyAction(target, con->act_type);
    }
}

bool ParameterDlg::CheckEntityRange(int group, int entity, QString &message)
{
    const ParaEntity *checked = EntityAt(group, entity);
    if (!checked || !checked->editor || !checked->editor->isEnabled() || !checked->enable
        || !checked->visible || checked->val_type == QLatin1String("String")
        || !checked->values.isEmpty())
        return true;

    QStringList entries = checked->sel_val.split(QLatin1Char(','));
    if (entries.isEmpty())
        entries.append(QString());
    const double size = ScriptEval(checked->val_size, data).toDouble();
    const int count = size >= entries.size() ? entries.size() : std::max(1, static_cast<int>(size));

    QString range;
    for (int i = 0; i < count; ++i) {
        const double value = entries[i].toDouble();
        // Deliberate: a later failing entry overwrites what an earlier one wrote.
        if (!checked->sel_val_gt.isEmpty() && value <= checked->sel_val_gt.toDouble())
            range = ">" + checked->sel_val_gt;
        if (!checked->sel_val_lt.isEmpty() && value >= checked->sel_val_lt.toDouble()) {
            if (range.isEmpty())
                range = "<" + checked->sel_val_lt;
            else
                range += " and <" + checked->sel_val_lt;
        }
    }
    if (range.isEmpty())
        return true;
    message = "Entered value of " + data->para_grp[group]->header + "->" + checked->label
              + " is out of range. Valid Range " + range;
    return false;
}

void ParameterDlg::OKPressed()
{
    ErrorListDlg errors(windowTitle(), QStringLiteral("Following errors are present"), QString(), 0,
                        this);
    if (data) {
        for (int g = 0; g < data->para_grp.size(); ++g) {
            for (int e = 0; e < data->para_grp[g]->para_entity.size(); ++e) {
                QString message;
                if (!CheckEntityRange(g, e, message))
                    errors.AddMessage(ErrorList::Error, message);
            }
        }
    }
    if (wsp_item && wsp_item->blockdef && wsp_item->blockdef->misc) {
        for (const QString &condition : wsp_item->blockdef->misc->para_cond) {
            const QStringList parts = condition.split(QLatin1Char('$'));
            if (parts.size() >= 2 && ScriptEval(parts[0], data).toDouble() != 0)
                errors.AddMessage(ErrorList::Error, parts[1]);
        }
    }
    if (!errors.HasErrors()) {
        accept();
        return;
    }
    errors.ShowMessages();
}

void ParameterDlg::CancelPressed()
{
    reject();
}

void ParameterDlg::HelpPressed()
{
    const QString file = path + "/doc/" + help_name + "/index.htm";
    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}
