// Names and type mappings the generated code of a block is built from.
#pragma once

#include <QString>

struct BlkParaData;

// "RootSignalClass" for "Block ID" 0; otherwise "Block Name" without blanks and parentheses,
// first letter upper-cased, with "Block ID" appended.
QString BlockClassName(const BlkParaData *config);
// "PyIntf" and the class name: the C++ class that drives the block's Python class.
QString PyIntfClassName(const BlkParaData *config);

// One of the eleven data type names the generator maps to a C type and a type code.
bool IsMappedDataType(const QString &type);

// The number written into the Python interface calls; 0 for an unknown name.
int TypeCode(const QString &type);
// mode 0 the plain C type, 1 its constant form, 2 "#define". `unknown_flag`, when given, is
// cleared on entry and set when the name was recognised (the name is kept from the original).
QString CTypeName(const QString &type, int mode = 0, bool *unknown_flag = nullptr);
// The memory pool of a port's data; `pool_index` gets its number, 0 to 8.
QString MemoryPoolName(const QString &type, const QString &mem_type, int *pool_index = nullptr);
