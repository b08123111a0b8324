// Nothing here stops at the first finding: every image, text and port is looked at.
#include "pages/PresChecks.h"

#include "app/BlockAccessors.h"
#include "app/ErrorList.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

namespace {

// Bad sizes are set back to this on the record.
constexpr qint32 kDefaultSize = 40;

void Report(ErrorList *error_list, const QString &text, int kind = ErrorList::Error)
{
    error_list->AddMessage(kind, QStringLiteral("Presentation: ") + text);
}

} // namespace

bool IsNonPrimaryBlock(const BlkParaData *config)
{
    const ParaEntity *kind =
        FindEntity(config, QStringLiteral("Basic"), QStringLiteral("Block Primary/Secondary"));
    return kind && kind->sel_val != QLatin1String("Primary");
}

void ValidatePresHeaderData(const PresCheckContext &context, ErrorList *error_list)
{
    BlkPresData *data = context.data;
    if (!data)
        return;
    if (data->title.trimmed().isEmpty())
        Report(error_list, QStringLiteral("Block title field is empty"), ErrorList::Warning);
    if (data->hsize < 1) {
        Report(error_list, QStringLiteral("Block horizontal size value is invalid"));
        data->hsize = kDefaultSize;
    }
    if (data->vsize < 1) {
        Report(error_list, QStringLiteral("Block vertical size value is invalid"));
        data->vsize = kDefaultSize;
    }
}

void ValidatePresImagesData(const PresCheckContext &context, ErrorList *error_list)
{
    if (!context.data)
        return;
    int defaults = 0;
    for (const BlkImage *image : context.data->images) {
        if (image->para_grp.isEmpty())
            ++defaults;
        if (!context.image_names.contains(image->name))
            Report(error_list, QStringLiteral("Image file '%1' does not exists").arg(image->name));
    }
    // None at all is fine: the block is then drawn without an image.
    if (defaults > 1)
        Report(error_list, QStringLiteral("More than one default image files exists"));

    for (BlkImage *image : context.data->images) {
        if (image->para_grp.isEmpty()) {
            image->para_entity.clear();
            image->para_value.clear();
            continue;
        }
        const ParaGroup *group = FindGroup(context.para_data, image->para_grp);
        const ParaEntity *entity = FindEntityInGroup(group, image->para_entity);
        if (!group)
            Report(error_list, QStringLiteral("Parameter group name '%1' for image file '%2' does not exists")
                                   .arg(image->para_grp, image->name));
        else if (!entity)
            Report(error_list, QStringLiteral("Parameter entity name '%1' for image file '%2' does not exists")
                                   .arg(image->para_entity, image->name));
        else if (!entity->values.contains(image->para_value))
            Report(error_list, QStringLiteral("Parameter entity value '%1' for image file '%2' does not exists")
                                   .arg(image->para_value, image->name));
    }
}

void ValidatePresTextsData(const PresCheckContext &context, ErrorList *error_list)
{
    if (!context.data)
        return;
    for (const BlkImageText *text : context.data->texts)
        if (!context.image_names.contains(text->img_name))
            Report(error_list, QStringLiteral("Text image file '%1' does not exists").arg(text->img_name));

    for (BlkImageText *text : context.data->texts) {
        if (text->para_grp.isEmpty()) {
            Report(error_list, QStringLiteral("Parameter group name is empty for text image '%1'")
                                   .arg(text->img_name));
            text->para_entity.clear();
            continue;
        }
        const ParaGroup *group = FindGroup(context.para_data, text->para_grp);
        if (!group)
            Report(error_list, QStringLiteral("Parameter group name '%1' for text image file '%2' does not exists")
                                   .arg(text->para_grp, text->img_name));
        else if (!FindEntityInGroup(group, text->para_entity))
            Report(error_list, QStringLiteral("Parameter entity name '%1' for text image file '%2' does not exists")
                                   .arg(text->para_entity, text->img_name));
    }
}

// "charater", "Occurences" and "instrinsic" are spelt as the messages have always been: deliberate.
void ValidatePresPortsData(const PresCheckContext &context, ErrorList *error_list)
{
    if (!context.data)
        return;
    const QList<BlkPort *> &ports = context.data->ports;
    const bool secondary = IsNonPrimaryBlock(context.config);
    const bool intrinsic = IsBlockIntrinsic(context.config);
    for (int i = 0; i < ports.size(); ++i) {
        const BlkPort *port = ports.at(i);
        const QString &name = port->name;
        if (!IsValidIdentifier(name, QStringLiteral("- "))) {
            Report(error_list, QStringLiteral("One of the port names has invalid characters"));
            continue;
        }
        if (IsNumericText(name.left(1), false)) {
            Report(error_list, QStringLiteral("One of the port names starts with a numeric charater"));
            continue;
        }
        for (int j = i + 1; j < ports.size(); ++j) {
            if (ports.at(j)->name == name) {
                Report(error_list, QStringLiteral("Duplicate port names exists"));
                break;
            }
        }
        // Only an empty type is a finding; an unknown word passes.
        if (port->type.isEmpty())
            Report(error_list, QStringLiteral("Port '%1' has invalid type field").arg(name));
        if (port->placement.isEmpty())
            Report(error_list, QStringLiteral("Port '%1' has invalid placement field").arg(name));
        if (port->per_distance < 0.0f || port->per_distance > 100.0f)
            Report(error_list, QStringLiteral("Port '%1' has invalid percentage distance field").arg(name));

        if (port->type == QLatin1String("Phy.Ref.")) {
            if (port->vport_para != 1)
                Report(error_list, QStringLiteral("Physical reference port '%1' shall be selected as invisible port")
                                       .arg(name));
            if (port->conn_req > 0)
                Report(error_list, QStringLiteral("Connection required shall be selected as 'No' for physical reference port '%1'")
                                       .arg(name));
        }

        if (port->vport_para == 2) {
            const ParaGroup *group = FindGroup(context.para_data, port->vport_grp);
            if (!group) {
                Report(error_list, QStringLiteral("Visibility Parameter group name '%1' for port '%2' does not exists")
                                       .arg(port->vport_grp, name));
                continue;
            }
            const ParaEntity *entity = FindEntityInGroup(group, port->vport_entity);
            if (!entity) {
                Report(error_list, QStringLiteral("Visibility Parameter entity name '%1' for port '%2' does not exists")
                                       .arg(port->vport_entity, name));
                continue;
            }
            if (!entity->values.contains(port->vport_value))
                Report(error_list, QStringLiteral("Visibility Parameter entity value '%1' for port '%2' does not exists")
                                       .arg(port->vport_value, name));
        }

        if (port->mport_para) {
            if (secondary) {
                Report(error_list, QStringLiteral("Multiple Port Occurences assigned for port '%1' will not work for non-primary blocks.")
                                       .arg(name));
                continue;
            }
            if (!intrinsic)
                Report(error_list, QStringLiteral("Multiple Port Occurences assigned for port '%1' for non-instrinsic block.")
                                       .arg(name), ErrorList::Warning);
            // Both are told: the entity is looked for only in the named group.
            const ParaGroup *group = FindGroup(context.para_data, port->mport_grp);
            if (!group)
                Report(error_list, QStringLiteral("Multiple Occurences Parameter group name '%1' for port '%2' does not exists")
                                       .arg(port->mport_grp, name));
            if (!FindEntityInGroup(group, port->mport_entity))
                Report(error_list, QStringLiteral("Multiple Occurences Parameter entity name '%1' for port '%2' does not exists")
                                       .arg(port->mport_entity, name));
        }
    }
}
