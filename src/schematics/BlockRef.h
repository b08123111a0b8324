// Attaching a workspace block instance to its block definition: the parameter merge and the
// instance's working port list.
#pragma once

#include <QString>

class ErrorList;
struct BlkParaData;
struct WSP_BLK_ITEM_STRUCT;

// Attaches the block of `ref_id` (loaded through the process's registry on a miss), merges the
// stored parameters into the block's current ones and rebuilds the working ports. `flag` is
// the silent flag of a parameter section that still has to be read; `word` its error title.
// False leaves `blockdef` null, or set when only the parameter section failed.
bool LoadBlockRef(WSP_BLK_ITEM_STRUCT *record, ErrorList *error_list, const QString &word,
                  bool flag, bool merge_values);

// A copy of `fresh` carrying the stored values where they still fit; `stored` is consumed.
// Without `fresh` the stored list is given back as it is.
BlkParaData *MergeParaData(BlkParaData *stored, const BlkParaData *fresh, bool merge_values);

// Frees the record's working ports and builds them again from the block's presentation, the
// record's `rt`, `an`, `custom_type` and merged `para`. May enlarge `rt` to fit multiple ports.
void RebuildWorkingPorts(WSP_BLK_ITEM_STRUCT *record);

// Flow-tap blocks have no fixed ports; their port rows are generated from the block's size.
bool IsFlowTapType(qint32 block_type);
