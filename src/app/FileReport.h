// Where a file failure that must also be shown goes. The widget library installs a hook that
// shows the box; without it (core tests, tools) the text goes to standard error.
#pragma once

#include <QString>
#include <functional>

using FileReportHook = std::function<void(const QString &title, const QString &text)>;

void SetFileReportHook(FileReportHook hook);
void ShowFileFailure(const QString &title, const QString &text);
