// The checks of a block's code records: port fields and sizes, the class run method calling
// table and the physical port elements. The code page runs them on its record.
#pragma once

#include <QString>
#include <functional>

class ErrorList;
struct BlkCodeData;
struct BlkCodePort;
struct BlkParaData;

struct CodeCheckContext {
    BlkCodeData *code = nullptr;            // repaired in place: domain, array sizes, trimmed fields
    const BlkParaData *params = nullptr;    // Parameters, for group and entity names
    const BlkParaData *config = nullptr;    // the kind of block: linear, intrinsic
    // The presentation's type of a port by name; empty for an unknown port or without a lookup.
    std::function<QString(const QString &)> port_type;
};

void ValidateCodePortFields(const CodeCheckContext &context, ErrorList *error_list);
// Also sets array_size of every numeric dimension of a "Script" port.
void ValidateCodePortSizes(const CodeCheckContext &context, BlkCodePort *port, ErrorList *error_list);
void ValidateCodeFuncTable(const CodeCheckContext &context, ErrorList *error_list);
// Also points each element at the records of its two ports.
void ValidateCodePhyTable(const CodeCheckContext &context, ErrorList *error_list);
