// Names the generated code of a block is built from.
#pragma once

#include <QString>

struct BlkParaData;

// "RootSignalClass" for "Block ID" 0; otherwise "Block Name" without blanks and parentheses,
// first letter upper-cased, with "Block ID" appended.
QString BlockClassName(const BlkParaData *config);

// One of the eleven data type names the generator maps to a C type and a type code.
bool IsMappedDataType(const QString &type);
