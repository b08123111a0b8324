#include "app/ErrorList.h"

#include <QDateTime>
#include <QFile>
#include <QTextStream>

void ErrorList::AddMessage(int kind, const QString &text)
{
    if (text.isEmpty())
        return;
    switch (kind) {
    case Error: errors.append(QStringLiteral("Error: ") + text); break;
    case Warning: warnings.append(QStringLiteral("Warning: ") + text); break;
    case Information: infos.append(QStringLiteral("Information: ") + text); break;
    default: infos.append(text); break;
    }
}

void ErrorList::ClearMessages()
{
    errors.clear();
    warnings.clear();
    infos.clear();
}

QStringList ErrorList::NumberedMessages() const
{
    QStringList rows;
    int number = 1;
    for (const QStringList *kind : {&errors, &warnings, &infos})
        for (const QString &text : *kind)
            rows.append(QStringLiteral("%1. %2").arg(number++).arg(text));
    return rows;
}

void ErrorList::AppendToLog(const QString &log_path, const QString &title, const QString &label) const
{
    if (log_path.isEmpty())
        return;
    QFile log(log_path);
    if (!log.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return;
    QTextStream out(&log);
    out << "\n";
    out.flush();
    out << QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"))
        << ": " << title << ": " << label << "\n";
    out.flush();
    for (const QString &row : NumberedMessages()) {
        out << row << "\n";
        out.flush();
    }
}
