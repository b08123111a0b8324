// The checks of the Miscellaneous page over its record: the links to intrinsic variables, the
// operation count and the parameter conditions. The page syncs its record, then calls these.
#pragma once

class ErrorList;
struct BlkCodeData;
struct BlkMiscData;
struct BlkParaData;

// Any record may be null: a page that is not there has no names to offer.
struct MiscCheckContext {
    const BlkMiscData *misc = nullptr;
    const BlkParaData *params = nullptr; // Parameters
    const BlkCodeData *code = nullptr;   // the code page's ports
};

void ValidateMiscCharVars(const MiscCheckContext &context, ErrorList *error_list);
void ValidateMiscCpuOps(const MiscCheckContext &context, ErrorList *error_list);
void ValidateMiscParaConds(const MiscCheckContext &context, ErrorList *error_list);
