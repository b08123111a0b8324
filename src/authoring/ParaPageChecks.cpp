// The whole-record checks of the Parameters and Initial Conditions pages. Editing has checked each
// entity alone; what spans entities, or the block's ports, is found here.
#include "authoring/ParaPageChecks.h"

#include "app/ErrorList.h"
#include "codegen/CodeNames.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

namespace {

// "<prefix>: <group>-><entity>: <text>", as an Error.
void EntityError(ErrorList *list, const QString &prefix, const ParaGroup *group,
                 const ParaEntity *entity, const QString &text)
{
    list->AddMessage(ErrorList::Error, QStringLiteral("%1: %2->%3: %4")
                                           .arg(prefix, group->header, entity->label, text));
}

void CheckSignalling(const ParaPageContext &context, const ParaGroup *group,
                     const ParaEntity *entity, ErrorList *list)
{
    const QString &prefix = context.prefix;
    if (!entity->para_var.isEmpty())
        EntityError(list, prefix, group, entity,
                    QStringLiteral("Entity internal variable name shall be empty when parameter signaling is enabled"));
    if (entity->port_var.isEmpty())
        EntityError(list, prefix, group, entity,
                    QStringLiteral("Entity port name cannot be empty when parameter signaling is enabled"));
    // An empty port name fails the identifier test too, so it is reported twice on purpose.
    if (!IsValidIdentifier(entity->port_var, QStringLiteral(" ")))
        EntityError(list, prefix, group, entity, QStringLiteral("Entity port name has invalid characters"));
}

void CheckNames(const ParaPageContext &context, const ParaGroup *group, const ParaEntity *entity,
                ErrorList *list)
{
    const QString &prefix = context.prefix;
    if (!entity->para_var.isEmpty() && !IsValidIdentifier(entity->para_var, QStringLiteral(" ")))
        EntityError(list, prefix, group, entity,
                    QStringLiteral("Entity internal variable name has invalid characters"));
    if (!IsMappedDataType(entity->val_type) && !context.port_names.contains(entity->val_type))
        EntityError(list, prefix, group, entity,
                    QStringLiteral("Entity data type %1 is invalid").arg(entity->val_type));
    if (entity->port_var.isEmpty())
        return;
    if (!IsValidIdentifier(entity->port_var, QStringLiteral(" "))) {
        EntityError(list, prefix, group, entity, QStringLiteral("Entity port name has invalid characters"));
        return;
    }
    if (!context.port_names.contains(entity->port_var))
        EntityError(list, prefix, group, entity, QStringLiteral("Entity port name does not exists"));
    if (entity->para_var.isEmpty())
        EntityError(list, prefix, group, entity,
                    QStringLiteral("Entity internal variable name cannot be empty when port name is specified"));
}

void CheckControls(const ParaPageContext &context, const ParaGroup *group, const ParaEntity *entity,
                   ErrorList *list)
{
    for (const ParaCon *control : entity->para_con) {
        if (!FindGroup(context.data, control->header)) {
            list->AddMessage(ErrorList::Error,
                             QStringLiteral("%1: Other Entity Control group header '%2' referred by %3-%4 does not exists")
                                 .arg(context.prefix, control->header, group->header, entity->label));
        } else if (control->act_type.isEmpty()) {
            list->AddMessage(ErrorList::Error,
                             context.prefix + QStringLiteral(": One or more of other entities has got unassigned control type"));
        }
    }
}

} // namespace

void ValidateParaData(const ParaPageContext &context, ErrorList *error_list)
{
    if (!context.data)
        return;
    for (const ParaGroup *group : context.data->para_grp) {
        for (ParaEntity *entity : group->para_entity) {
            entity->editor = nullptr;
            const qint32 size = CheckParaArraySize(entity->val_size, context.data, group, entity,
                                                   error_list, context.prefix);
            if (size < 0)
                continue;
            if (size >= 2 && entity->var_type == 1) {
                EntityError(error_list, context.prefix, group, entity,
                            QStringLiteral("Entity array size is invalid for selected variable type"));
                continue;
            }
            if (entity->sigpara)
                CheckSignalling(context, group, entity, error_list);
            else
                CheckNames(context, group, entity, error_list);
            CheckControls(context, group, entity, error_list);
        }
    }
}

qint32 CheckParaArraySize(const QString &text, const BlkParaData *data, const ParaGroup *group,
                          const ParaEntity *entity, ErrorList *error_list, const QString &prefix)
{
    if (IsNumericText(text, true)) {
        const qint32 size = text.toInt();
        if (size < 0)
            EntityError(error_list, prefix, group, entity, QStringLiteral("Entity array size is invalid"));
        return size;
    }
    if (!text.isEmpty()) {
        const int depth = text.count(QLatin1Char('[')) - text.count(QLatin1Char(']'));
        if (depth != 0) {
            EntityError(error_list, prefix, group, entity,
                        QStringLiteral("Entity array size script field has missing square braces"));
            return -1;
        }
    }
    QStringList tokens;
    ExtractBetween(text, QStringLiteral("["), QStringLiteral("]"), tokens);
    for (const QString &token : tokens) {
        // A third part is allowed here and not looked at.
        const QStringList parts = token.split(QLatin1Char('#'));
        if (parts.size() < 2)
            EntityError(error_list, prefix, group, entity,
                        QStringLiteral("Entity array size script field has invalid syntax related to #"));
        else if (!FindEntity(data, parts[0], parts[1]))
            EntityError(error_list, prefix, group, entity,
                        QStringLiteral("Entity array script field entity is invalid"));
    }
    // Deliberate: a script field counts as one element whatever was found in it.
    return 1;
}
