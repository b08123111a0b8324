#include "codegen/PythonModule.h"

// Placeholder until the module writer is written.
QString MakeIdentifier(const QString &name, bool, bool, bool) { return name; }
QString MakePythonName(const QString &name) { return name; }
QString WritePythonModule(const BlockData *, const QString &, const QString &) { return {}; }
