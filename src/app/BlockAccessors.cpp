// The accessors read `sel_val` or `sel_idx` as each question needs; the two may disagree (an
// index with an empty value), and which one a question reads is part of its answer.
#include "app/BlockAccessors.h"

#include "app/BlockData.h"
#include "params/BlkParaData.h"

namespace {

QString Value(const BlkParaData *config, const char *header, const char *label)
{
    const ParaEntity *entity = FindEntity(config, QLatin1String(header), QLatin1String(label));
    return entity ? entity->sel_val : QString();
}

bool ValueIs(const BlkParaData *config, const char *header, const char *label, const char *value)
{
    const ParaEntity *entity = FindEntity(config, QLatin1String(header), QLatin1String(label));
    return entity && entity->sel_val == QLatin1String(value);
}

bool IndexIs(const BlkParaData *config, const char *header, const char *label, qint32 index)
{
    const ParaEntity *entity = FindEntity(config, QLatin1String(header), QLatin1String(label));
    return entity && entity->sel_idx == index;
}

bool IndexNotZero(const BlkParaData *config, const char *header, const char *label)
{
    const ParaEntity *entity = FindEntity(config, QLatin1String(header), QLatin1String(label));
    return entity && entity->sel_idx != 0;
}

const BlkParaData *ConfigOf(const BlockData *block)
{
    return block ? block->config : nullptr;
}

} // namespace

quint32 BlockIdOf(const BlkParaData *config)
{
    return Value(config, "Basic", "Block ID").toUInt();
}

QString BlockNameOf(const BlkParaData *config)
{
    return Value(config, "Basic", "Block Name");
}

QString BlockVersionOf(const BlkParaData *config)
{
    return Value(config, "Basic", "Block Version");
}

QString ToolVersionOf(const BlkParaData *config)
{
    return Value(config, "Basic", "ZEMA Version");
}

bool IsBlockLinear(const BlkParaData *config)
{
    return ValueIs(config, "Basic", "Linear/Non-Linear Block", "Linear");
}

bool UsesStdLibraries(const BlkParaData *config)
{
    return IndexIs(config, "Advanced", "Uses C++ Standard Libraries", 1);
}

bool SupportsDecoupling(const BlkParaData *config)
{
    return IndexIs(config, "Code-Physical Ports", "Supports Decoupling", 1);
}

bool HasObjectDependency(const BlkParaData *config)
{
    return ValueIs(config, "Advanced", "Other block object dependency", "Yes");
}

bool PrefersEncryptedCode(const BlkParaData *config)
{
    return ValueIs(config, "Vendor Specific", "Prefer Encrypting Code Files", "Yes");
}

bool EmbedsFortran(const BlkParaData *config)
{
    return IndexIs(config, "Code-Basic", "Embeds other language code", 2);
}

bool EmbedsPython(const BlkParaData *config)
{
    return IndexIs(config, "Code-Basic", "Embeds other language code", 1);
}

bool GeneratesPortDimensions(const BlkParaData *config)
{
    return ValueIs(config, "Code-Signal Ports", "Generate code for signal ports dimension & size", "Yes");
}

bool GeneratesSignalPorts(const BlkParaData *config)
{
    return ValueIs(config, "Code-Signal Ports", "Generate code for signal ports", "Yes");
}

bool IsBlockIntrinsic(const BlkParaData *config)
{
    return ValueIs(config, "Vendor Specific", "Instrinsic Block", "Yes");
}

bool CallsRunByPointer(const BlkParaData *config)
{
    return ValueIs(config, "Code-Signal Ports", "Call pointer to Run method instead of Run method", "Yes");
}

bool IsSimulationPanel(const BlkParaData *config)
{
    return IndexNotZero(config, "Advanced", "Simulation Panel Block");
}

bool IsWorkspaceBlock(const BlkParaData *config)
{
    return IndexIs(config, "Advanced", "Is Workspace Block", 1);
}

qint32 CustomBlockType(const BlkParaData *config)
{
    const ParaEntity *entity = FindEntity(config, QStringLiteral("Vendor Specific"),
                                          QStringLiteral("Custom Block Type"));
    if (!entity)
        return -1;
    bool ok = false;
    const qint32 type = entity->sel_val.trimmed().toInt(&ok);
    return ok ? type : -1;
}

bool HasWorkerThread(const BlkParaData *config)
{
    return IndexNotZero(config, "Code-Basic", "Add Worker Thread Function Code");
}

bool NeedsPathVariable(const BlkParaData *config)
{
    return IndexNotZero(config, "Code-Basic", "Block Path Variable Required");
}

bool IsStructure(const BlkParaData *config)
{
    return IndexIs(config, "Code-Basic", "Class or Structure/Function", 2);
}

bool IsStaticClass(const BlkParaData *config)
{
    return IndexIs(config, "Code-Basic", "Class or Structure/Function", 1);
}

QString MemoryRequirement(const BlkParaData *config, int which)
{
    const ParaGroup *group = FindGroup(config, QStringLiteral("Additional Memory Requirement"));
    if (!group || which < 0 || which > 1 || which >= group->para_entity.size())
        return QString();
    return group->para_entity.at(which)->sel_val;
}

bool HasNoResizeHandle(const BlkParaData *config)
{
    const qint32 type = CustomBlockType(config);
    return type >= 341 && type <= 344;
}

bool IsPrimaryBlock(const BlkParaData *config)
{
    return ValueIs(config, "Basic", "Block Primary/Secondary", "Primary");
}

bool HasPrivateData(const BlkParaData *config)
{
    return ValueIs(config, "Basic", "Has Private Data", "Yes");
}

bool InsertsCodeFromFiles(const BlkParaData *config)
{
    return ValueIs(config, "Code-Basic", "Insert Code From Files", "Yes");
}

bool HasDynamicMemory(const BlkParaData *config)
{
    return ValueIs(config, "Advanced", "Has Dynamically Allocated Memory", "Yes");
}

QString HeaderFileNameOf(const BlkParaData *config)
{
    return Value(config, "Code-Basic", "Header File Name");
}

quint32 BlockIdOf(const BlockData *block) { return BlockIdOf(ConfigOf(block)); }
QString BlockNameOf(const BlockData *block) { return BlockNameOf(ConfigOf(block)); }
QString BlockVersionOf(const BlockData *block) { return BlockVersionOf(ConfigOf(block)); }
QString ToolVersionOf(const BlockData *block) { return ToolVersionOf(ConfigOf(block)); }
bool IsBlockLinear(const BlockData *block) { return IsBlockLinear(ConfigOf(block)); }
bool UsesStdLibraries(const BlockData *block) { return UsesStdLibraries(ConfigOf(block)); }
bool SupportsDecoupling(const BlockData *block) { return SupportsDecoupling(ConfigOf(block)); }
bool HasObjectDependency(const BlockData *block) { return HasObjectDependency(ConfigOf(block)); }
bool PrefersEncryptedCode(const BlockData *block) { return PrefersEncryptedCode(ConfigOf(block)); }
bool EmbedsFortran(const BlockData *block) { return EmbedsFortran(ConfigOf(block)); }
bool EmbedsPython(const BlockData *block) { return EmbedsPython(ConfigOf(block)); }
bool GeneratesPortDimensions(const BlockData *block) { return GeneratesPortDimensions(ConfigOf(block)); }
bool GeneratesSignalPorts(const BlockData *block) { return GeneratesSignalPorts(ConfigOf(block)); }
bool IsBlockIntrinsic(const BlockData *block) { return IsBlockIntrinsic(ConfigOf(block)); }
bool CallsRunByPointer(const BlockData *block) { return CallsRunByPointer(ConfigOf(block)); }
bool IsSimulationPanel(const BlockData *block) { return IsSimulationPanel(ConfigOf(block)); }
bool IsWorkspaceBlock(const BlockData *block) { return IsWorkspaceBlock(ConfigOf(block)); }
qint32 CustomBlockType(const BlockData *block) { return CustomBlockType(ConfigOf(block)); }
bool HasWorkerThread(const BlockData *block) { return HasWorkerThread(ConfigOf(block)); }
bool NeedsPathVariable(const BlockData *block) { return NeedsPathVariable(ConfigOf(block)); }
bool IsStructure(const BlockData *block) { return IsStructure(ConfigOf(block)); }
bool IsStaticClass(const BlockData *block) { return IsStaticClass(ConfigOf(block)); }
QString MemoryRequirement(const BlockData *block, int which) { return MemoryRequirement(ConfigOf(block), which); }
bool HasNoResizeHandle(const BlockData *block) { return HasNoResizeHandle(ConfigOf(block)); }
bool IsPrimaryBlock(const BlockData *block) { return IsPrimaryBlock(ConfigOf(block)); }
bool HasPrivateData(const BlockData *block) { return HasPrivateData(ConfigOf(block)); }
bool InsertsCodeFromFiles(const BlockData *block) { return InsertsCodeFromFiles(ConfigOf(block)); }
bool HasDynamicMemory(const BlockData *block) { return HasDynamicMemory(ConfigOf(block)); }
QString HeaderFileNameOf(const BlockData *block) { return HeaderFileNameOf(ConfigOf(block)); }
