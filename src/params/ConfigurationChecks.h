// The Configuration of an open block: brought in from its stored values, given back on saving,
// and checked. The main window calls these on its Configuration page's data.
#pragma once

#include <QString>

class ErrorList;
struct BlkCodeData;
struct BlkParaData;
struct BlkPresData;
struct BlockData;

// What the checks look at besides the Configuration itself. Any record may be null: a page that
// is not there yet has nothing to check.
struct ConfigurationContext {
    BlkParaData *config = nullptr;          // the page's data; the checks may touch it
    const BlkParaData *params = nullptr;    // Parameters
    const BlkParaData *initconds = nullptr; // Initial Conditions
    const BlkCodeData *code = nullptr;      // the code page's ports
    const BlkPresData *pres = nullptr;      // port types of the presentation
    QString block_parent;
    QString block_name;                     // empty until the first save
};

// The fixed table with the stored values merged in; a new record owned by the caller. The stored
// values are taken out of `block.config` (left null), or without a block read from
// "blk_config.cfg" in `path`. An empty path gives the table as it is.
BlkParaData *LoadConfigurationData(const QString &path, BlockData *block, int licence_level);
// With `renamed` "Block ID" gets a new random number. With a block, `block.config` becomes
// `config` (the block does not own it until the page lets go); without one, "blk_config.cfg" is
// written in `path`. False only when that file could not be written.
bool SaveConfigurationData(const QString &path, bool renamed, BlockData *block, BlkParaData *config,
                           ErrorList *error_list);
void ValidateConfigurationData(const ConfigurationContext &context, ErrorList *error_list);
void ValidateMemoryEntitiesData(const ConfigurationContext &context, ErrorList *error_list);
