// Runs the built companion program, for the suites that test it end to end.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

struct CompanionRun {
    int exit_code = -1;        // -1: it did not finish within a minute
    QByteArray out;
    QString err;
};

CompanionRun RunCompanion(const QStringList &args);
