// The one packed command-line argument a parent application hands over: "#mode#root#third#token".
#pragma once

#include <QString>
#include <QStringList>

struct PackedArgument {
    bool cli_on = false;
    QString root_dir;
    QString third_dir;
    QString licence_token;  // checked by the entitlement code, not here
};

// Goes through every argument (the program's own name included, which never matches); the last
// that matches wins. A malformed argument is ignored without a word.
PackedArgument ReadPackedArguments(const QStringList &arguments, const QString &default_root);
