#include "CodegenBlocks.h"

#include "app/BlockData.h"

// Placeholder until the cases are written.
QList<CodegenCase> CodegenCases() { return {}; }
void FreeCodegenCases(QList<CodegenCase> &cases)
{
    for (CodegenCase &c : cases)
        FreeBlockData(c.block);
    cases.clear();
}
