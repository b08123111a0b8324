#include "codegen/PyInterfaceFiles.h"

// Placeholder until the substitution is written.
QString WritePyInterfaceFiles(const QString &, const QString &, const QString &, const QString &,
                              int, int, QStringList *)
{
    return {};
}
