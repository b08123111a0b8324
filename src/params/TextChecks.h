// The text tests every validation shares: numbers, bracketed tokens and identifiers.
#pragma once

#include <QString>
#include <QStringList>

// "0" is numeric, other zeros such as "0.0" are not; "abc", "" and non-finite values are not.
bool IsNumericText(const QString &text, bool allow_negative);
// Appends each piece between an open delimiter and the next close delimiter, left to right.
void ExtractBetween(const QString &text, const QString &open, const QString &close, QStringList &out);
// False for empty text and for text holding / \ : * ? " < > | . % ; ' # $ ^ or a character of extra.
bool IsValidIdentifier(const QString &text, const QString &extra = QString());
