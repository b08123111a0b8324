// The Python module of a block: ready-made calls through which user scripts add, set and
// connect this very block, and the identifier rule that makes a name Python-safe.
#pragma once

#include <QString>

struct BlockData;

QString MakeIdentifier(const QString &name, bool to_upper, bool to_lower, bool with_underscore);
// MakeIdentifier with every option off, and "_" in front of a Python keyword or builtin name.
QString MakePythonName(const QString &name);
// The path written, or empty when there is no block name or the file cannot be opened.
QString WritePythonModule(const BlockData *block, const QString &directory, const QString &extension);
