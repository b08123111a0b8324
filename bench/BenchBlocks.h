// Generated block libraries for the benchmarks: many ordinary blocks, and one very large block.
#pragma once

#include <QString>

struct BlockData;

// A complete block in memory: Configuration, `entities` parameters in groups of 50, as many
// initial conditions as a tenth of them, `ports` ports with code data, a drawing.
BlockData *MakeBenchBlock(const QString &path, const QString &name, int entities, int ports);
// Writes `count` blocks under `dir`, named block_0000...; false when a save failed.
bool MakeLibrary(const QString &dir, int count);
// Writes one block of 2,000 entities and 500 ports at `dir`/large_block.
bool MakeLargeBlock(const QString &dir);
