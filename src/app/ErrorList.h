// The message store behind the error list: every validation and file failure lands here.
#pragma once

#include <QString>
#include <QStringList>

class ErrorList
{
public:
    enum Kind { Error = 1, Warning = 2, Information = 3 };

    virtual ~ErrorList() = default;

    // An empty text is dropped; any kind outside 1..3 lands among the infos without a prefix.
    void AddMessage(int kind, const QString &text);
    bool HasErrors() const { return !errors.isEmpty(); }
    bool HasWarnings() const { return !warnings.isEmpty(); }
    bool IsEmpty() const { return errors.isEmpty() && warnings.isEmpty() && infos.isEmpty(); }
    virtual void ClearMessages();

    // "1. Error: ..." numbered in one run through errors, warnings, infos.
    QStringList NumberedMessages() const;
    // Appends an empty line, a time-stamped head line and the numbered rows; a log that
    // cannot be opened is dropped silently.
    void AppendToLog(const QString &log_path, const QString &title, const QString &label) const;

    QStringList errors;
    QStringList warnings;
    QStringList infos;
};
