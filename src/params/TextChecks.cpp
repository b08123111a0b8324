// Text tests shared by the validations of every page.
#include "params/TextChecks.h"

#include <cmath>

bool IsNumericText(const QString &text, bool allow_negative)
{
    if (text.isEmpty())
        return false;
    if (!allow_negative && text.startsWith(QLatin1Char('-')))
        return false;
    if (text == QLatin1String("0"))
        return true;
    // Deliberate: any other spelling of zero counts as "not a number", so "0.0" fails.
    if (text.toInt() != 0)
        return true;
    const double value = text.toDouble();
    return std::isfinite(value) && std::fabs(value) >= 0.0001;
}

void ExtractBetween(const QString &text, const QString &open, const QString &close, QStringList &out)
{
    if (open.isEmpty() || close.isEmpty())
        return;
    int pos = 0;
    for (;;) {
        const int start = text.indexOf(open, pos);
        if (start < 0)
            return;
        const int from = start + open.size();
        const int end = text.indexOf(close, from);
        if (end < 0)
            return;
        out.append(text.mid(from, end - from));
        pos = end + close.size();
    }
}

bool IsValidIdentifier(const QString &text, const QString &extra)
{
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|.%;'#$^");
    if (text.isEmpty())
        return false;
    for (const QChar c : text)
        if (forbidden.contains(c) || extra.contains(c))
            return false;
    return true;
}
