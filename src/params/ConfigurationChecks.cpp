// The Configuration is rebuilt from the program's table at every open and only stored values are
// merged in, so a file can neither add an entity nor change how one behaves.
#include "params/ConfigurationChecks.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/Entitlement.h"
#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "params/ConfigurationEntities.h"
#include "params/TextChecks.h"

#include <QFileInfo>
#include <QRandomGenerator>

namespace {

const char kConfigFile[] = "/blk_config.cfg";
const char kTitle[] = "ZEMA";

void MergeControls(ParaEntity *entity, const ParaEntity *stored)
{
    for (const ParaCon *from : stored->para_con)
        for (ParaCon *to : entity->para_con)
            if (to->header == from->header && to->label == from->label && to->sel_idx == from->sel_idx)
                to->value = from->value;
}

void MergeEntity(ParaEntity *entity, const ParaEntity *stored)
{
    if (entity->values.isEmpty()) {
        entity->sel_val = stored->sel_val;
    } else {
        const int index =
            stored->sel_val.isEmpty() ? stored->sel_idx : entity->values.indexOf(stored->sel_val);
        if (index >= 0 && index < entity->values.size()) {
            entity->sel_idx = index;
            entity->sel_val = entity->values.at(index);
        }
    }
    MergeControls(entity, stored);
}

void MergeStored(BlkParaData *table, const BlkParaData *stored)
{
    for (ParaGroup *group : table->para_grp) {
        const ParaGroup *stored_group = FindGroup(stored, group->header);
        if (!stored_group)
            continue;
        for (ParaEntity *entity : group->para_entity)
            if (const ParaEntity *from = FindEntityInGroup(stored_group, entity->label))
                MergeEntity(entity, from);
    }
}

BlkParaData *ReadConfigFile(const QString &path)
{
    const QString file = path + QLatin1String(kConfigFile);
    if (!QFileInfo::exists(file))
        return nullptr;
    BlkParaFileIO io(QString(), nullptr, 0, 1);
    return io.LoadFile(file, QLatin1String(kTitle));
}

QString Prefixed(const char *text)
{
    return QStringLiteral("Configuration: ") + QLatin1String(text);
}

bool AnyNotPreprocessor(const BlkParaData *data)
{
    if (!data)
        return false;
    for (const ParaGroup *group : data->para_grp)
        for (const ParaEntity *entity : group->para_entity)
            if (entity->var_type != 2)
                return true;
    return false;
}

const BlkPort *FindPresPort(const BlkPresData *pres, const QString &name)
{
    if (!pres)
        return nullptr;
    for (const BlkPort *port : pres->ports)
        if (port->name == name)
            return port;
    return nullptr;
}

void CheckBlockName(const BlkParaData *config, ErrorList *list)
{
    const QString name = BlockNameOf(config);
    if (name.isEmpty()) {
        list->AddMessage(ErrorList::Error, Prefixed("Value at entity 'Block Name' is empty"));
        return;
    }
    if (name.contains(QLatin1Char(' ')))
        list->AddMessage(ErrorList::Error, Prefixed("Value at entity 'Block Name' has white spaces"));
    if (!IsValidIdentifier(name))
        list->AddMessage(ErrorList::Error, Prefixed("Value at entity 'Block Name' has invalid characters"));
}

void CheckHeaderFile(const ConfigurationContext &context, ErrorList *list)
{
    const BlkParaData *config = context.config;
    if (!IsPrimaryBlock(config) || (IsBlockIntrinsic(config) && IsBlockLinear(config)))
        return;
    const QString header = HeaderFileNameOf(config);
    if (header.isEmpty()) {
        list->AddMessage(ErrorList::Warning, Prefixed("Code header file field cannot be empty"));
        return;
    }
    const QString file = context.block_parent + "/" + context.block_name + "/src/" + header;
    if (!QFileInfo::exists(file)) {
        // A block that was never saved has no src folder to look in.
        if (!context.block_name.isEmpty())
            list->AddMessage(ErrorList::Warning, Prefixed("Specified code header file does not exists"));
        return;
    }
    // "Integre" in the first two texts is deliberate: the messages are fixed as shown.
    static const char *const kClassNames[][2] = {
        {"Class/Structure Name (Integer16)", "Class/Structure Name (Integre16)"},
        {"Class/Structure Name (Integer32)", "Class/Structure Name (Integre32)"},
        {"Class/Structure Name (Integer64)", "Class/Structure Name (Integer64)"},
        {"Class/Structure Name (Real32)", "Class/Structure Name (Real32)"},
        {"Class/Structure Name (Real64)", "Class/Structure Name (Real64)"},
    };
    for (const auto &names : kClassNames) {
        const ParaEntity *entity =
            FindEntity(config, QStringLiteral("Code-Basic"), QLatin1String(names[0]));
        if (!entity || entity->sel_val.isEmpty())
            list->AddMessage(ErrorList::Error, QStringLiteral("Configuration:Code: %1 field cannot be empty")
                                                   .arg(QLatin1String(names[1])));
    }
}

void CheckStaticClass(const ConfigurationContext &context, ErrorList *list)
{
    const BlkParaData *config = context.config;
    if (!IsStaticClass(config))
        return;
    if (CallsRunByPointer(config))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Configuration:Code-Signal Ports: Call pointer to Run method instead "
                                        "of Run method field is invalid for Static Class block"));
    if (HasPrivateData(config))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Configuration:Code-Basic: Static class type block cannot have "
                                        "private data"));
    if (!InsertsCodeFromFiles(config))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Configuration:Code-Basic: Insert code from files shall be enabled "
                                        "for static class type block"));
    if (HasDynamicMemory(config))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Configuration:Advanced: Dynamically allocated memory shall be "
                                        "disabled for static class type block"));
    if (AnyNotPreprocessor(context.params))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Block Parameters: All entities variable type shall be of "
                                        "pre-processor definition for static class type block"));
    if (AnyNotPreprocessor(context.initconds))
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Block Initial Conditions: All entities variable type shall be of "
                                        "pre-processor definition for static class type block"));
    if (!context.code)
        return;
    for (const BlkCodePort *code_port : context.code->ports) {
        const BlkPort *port = FindPresPort(context.pres, code_port->port_name);
        if (port && (port->type == QLatin1String("Physical") || port->type == QLatin1String("Phy.Ref.")))
            list->AddMessage(ErrorList::Error,
                             QStringLiteral("Block Ports: Static class type block cannot have physical ports"));
    }
}

bool HasRunTimeConstant(const QString &token)
{
    for (const char *constant : {"_SimStepSize", "_PlotStepSize", "_PrecisionBytes", "_PointerSize"})
        if (token.contains(QLatin1String(constant)))
            return true;
    return false;
}

void CheckMemoryToken(const ConfigurationContext &context, const QString &token, const QString &header,
                      const QString &label, ErrorList *list)
{
    if (!token.contains(QLatin1Char('#'))) {
        if (FindCodePort(context.code, token) || HasRunTimeConstant(token))
            return;
        list->AddMessage(ErrorList::Error, QStringLiteral("Configuration: %1: %2: Value has invalid string '%3'")
                                               .arg(header, label, token));
        return;
    }
    const QStringList parts = token.split(QLatin1Char('#'), Qt::KeepEmptyParts);
    if (parts.size() != 2) {
        list->AddMessage(ErrorList::Error,
                         QStringLiteral("Configuration: %1: %2: Value has invalid syntax related to #")
                             .arg(header, label));
        return;
    }
    if (FindEntity(context.params, parts[0], parts[1]))
        return;
    bool ok = false;
    const int property = parts[1].toInt(&ok);
    if (FindCodePort(context.code, parts[0]) && ok && property >= 1 && property <= 4)
        return;
    // Unlike the other texts, this one names the token's two parts, not the group and entity.
    list->AddMessage(ErrorList::Error,
                     QStringLiteral("Configuration: %1: %2: Value has non-matching variable '%3'")
                         .arg(parts[0], parts[1], token));
}

void CheckMemoryEntity(const ConfigurationContext &context, const QString &header,
                       const ParaEntity *entity, ErrorList *list)
{
    const QString &value = entity->sel_val;
    if (IsNumericText(value, true)) {
        // Only the integer part counts here, as in the number test itself.
        if (value.toInt() < 0)
            list->AddMessage(ErrorList::Error, QStringLiteral("Configuration: %1: %2: Value cannot be less than zero")
                                                   .arg(header, entity->label));
        return;
    }
    // Only the balance of the braces counts, not their order.
    if (value.count(QLatin1Char('[')) != value.count(QLatin1Char(']'))) {
        list->AddMessage(ErrorList::Error, QStringLiteral("Configuration: %1: %2: Value has missing square braces")
                                               .arg(header, entity->label));
        return;
    }
    QStringList tokens;
    ExtractBetween(value, QStringLiteral("["), QStringLiteral("]"), tokens);
    for (const QString &token : tokens)
        CheckMemoryToken(context, token, header, entity->label, list);
}

} // namespace

BlkParaData *LoadConfigurationData(const QString &path, BlockData *block, int licence_level)
{
    BlkParaData *table = BuildConfigurationEntities(licence_level);
    if (path.isEmpty())
        return table;
    BlkParaData *stored = nullptr;
    if (block) {
        stored = block->config;
        block->config = nullptr;
    } else {
        stored = ReadConfigFile(path);
    }
    if (!stored)
        return table;
    // Stored values come from a file on both roads, so each is converted here and only here;
    // the table's own defaults are already in working form and must not be decoded.
    AuthValuesToWorking(stored);
    MergeStored(table, stored);
    FreeBlkParaData(stored);
    return table;
}

bool SaveConfigurationData(const QString &path, bool renamed, BlockData *block, BlkParaData *config,
                           ErrorList *error_list)
{
    if (renamed)
        if (ParaEntity *id = FindEntity(config, QStringLiteral("Basic"), QStringLiteral("Block ID")))
            id->sel_val = QString::number(QRandomGenerator::global()->generate());
    if (block) {
        // On an open block this already is the page's record, so nothing is replaced or freed.
        block->config = config;
        return true;
    }
    BlkParaFileIO io(QString(), error_list, 0, 1);
    AuthValuesToStored(config);
    const bool saved = io.SaveFile(path + QLatin1String(kConfigFile), config, QLatin1String(kTitle));
    AuthValuesToWorking(config);
    return saved;
}

void ValidateConfigurationData(const ConfigurationContext &context, ErrorList *error_list)
{
    BlkParaData *config = context.config;
    if (!config || !error_list)
        return;
    CheckBlockName(config, error_list);
    ParaEntity *version = FindEntity(config, QStringLiteral("Basic"), QStringLiteral("Block Version"));
    if (version && version->sel_val.trimmed().isEmpty())
        version->sel_val = QStringLiteral("1.0");
    CheckHeaderFile(context, error_list);
    CheckStaticClass(context, error_list);
    if (HasWorkerThread(config) && !IsSimulationPanel(config) && !UsesStdLibraries(config))
        error_list->AddMessage(ErrorList::Error,
                               QStringLiteral("'Add Worker Thread Function' feature requires either SimPanel "
                                              "block or std::cpp library support enabled."));
    SignBlock(config);
}

void ValidateMemoryEntitiesData(const ConfigurationContext &context, ErrorList *error_list)
{
    const ParaGroup *group = FindGroup(context.config, QStringLiteral("Additional Memory Requirement"));
    if (!group || !error_list)
        return;
    for (const ParaEntity *entity : group->para_entity)
        if (!entity->sel_val.isEmpty())
            CheckMemoryEntity(context, group->header, entity, error_list);
}
