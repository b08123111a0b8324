// The value of a script field: bracketed entity tokens replaced, the rest run as a script.
#pragma once

#include <QString>

struct BlkParaData;

// Empty text gives empty; a plain number comes back as written. A script that throws, or runs
// longer than two seconds, gives the error's text ("ReferenceError: ...", which reads as 0 to
// numeric callers) and clears *ok. Safe on any thread; config may be null.
QString ScriptEval(const QString &text, const BlkParaData *config, bool *ok = nullptr);
