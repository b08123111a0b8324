// A block with every section filled, with text that XML must escape, for round trips.
#pragma once

#include <QString>

struct BlockData;

BlockData *MakeSampleBlock(const QString &path);
// Writes the block's directory with "src" and "doc" and saves the sample block into it.
bool WriteSampleBlock(const QString &path);
// The plain XML of a block definition file.
QByteArray DecodedDefinition(const QString &bdef_path);
