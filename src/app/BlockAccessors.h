// Questions about a block answered from its Configuration, so that no caller needs the names of
// the entities. A null record or a missing entity gives the neutral answer: false, empty or 0.
#pragma once

#include <QString>

struct BlkParaData;
struct BlockData;

quint32 BlockIdOf(const BlkParaData *config);
QString BlockNameOf(const BlkParaData *config);
QString BlockVersionOf(const BlkParaData *config);
QString ToolVersionOf(const BlkParaData *config);
bool IsBlockLinear(const BlkParaData *config);
bool UsesStdLibraries(const BlkParaData *config);
bool SupportsDecoupling(const BlkParaData *config);
bool HasObjectDependency(const BlkParaData *config);
bool PrefersEncryptedCode(const BlkParaData *config);
bool EmbedsFortran(const BlkParaData *config);
bool EmbedsPython(const BlkParaData *config);
bool GeneratesPortDimensions(const BlkParaData *config);
bool GeneratesSignalPorts(const BlkParaData *config);
bool IsBlockIntrinsic(const BlkParaData *config);
bool CallsRunByPointer(const BlkParaData *config);
bool IsSimulationPanel(const BlkParaData *config);
bool IsWorkspaceBlock(const BlkParaData *config);
// -1 when the entity is missing or holds no number.
qint32 CustomBlockType(const BlkParaData *config);
bool HasWorkerThread(const BlkParaData *config);
bool NeedsPathVariable(const BlkParaData *config);
bool IsStructure(const BlkParaData *config);
bool IsStaticClass(const BlkParaData *config);
// which: 0 the cacheable, 1 the non-cacheable memory; the raw text, a number or a script field.
QString MemoryRequirement(const BlkParaData *config, int which);
// Custom block types 341 to 344 are drawn without a resize handle.
bool HasNoResizeHandle(const BlkParaData *config);
bool IsPrimaryBlock(const BlkParaData *config);
bool HasPrivateData(const BlkParaData *config);
bool InsertsCodeFromFiles(const BlkParaData *config);
bool HasDynamicMemory(const BlkParaData *config);
QString HeaderFileNameOf(const BlkParaData *config);

quint32 BlockIdOf(const BlockData *block);
QString BlockNameOf(const BlockData *block);
QString BlockVersionOf(const BlockData *block);
QString ToolVersionOf(const BlockData *block);
bool IsBlockLinear(const BlockData *block);
bool UsesStdLibraries(const BlockData *block);
bool SupportsDecoupling(const BlockData *block);
bool HasObjectDependency(const BlockData *block);
bool PrefersEncryptedCode(const BlockData *block);
bool EmbedsFortran(const BlockData *block);
bool EmbedsPython(const BlockData *block);
bool GeneratesPortDimensions(const BlockData *block);
bool GeneratesSignalPorts(const BlockData *block);
bool IsBlockIntrinsic(const BlockData *block);
bool CallsRunByPointer(const BlockData *block);
bool IsSimulationPanel(const BlockData *block);
bool IsWorkspaceBlock(const BlockData *block);
qint32 CustomBlockType(const BlockData *block);
bool HasWorkerThread(const BlockData *block);
bool NeedsPathVariable(const BlockData *block);
bool IsStructure(const BlockData *block);
bool IsStaticClass(const BlockData *block);
QString MemoryRequirement(const BlockData *block, int which);
bool HasNoResizeHandle(const BlockData *block);
bool IsPrimaryBlock(const BlockData *block);
bool HasPrivateData(const BlockData *block);
bool InsertsCodeFromFiles(const BlockData *block);
bool HasDynamicMemory(const BlockData *block);
QString HeaderFileNameOf(const BlockData *block);
