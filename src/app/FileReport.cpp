#include "app/FileReport.h"

#include <cstdio>

static FileReportHook &Hook()
{
    static FileReportHook hook;
    return hook;
}

void SetFileReportHook(FileReportHook hook)
{
    Hook() = std::move(hook);
}

void ShowFileFailure(const QString &title, const QString &text)
{
    if (Hook()) {
        Hook()(title, text);
        return;
    }
    std::fprintf(stderr, "%s: %s\n", qPrintable(title), qPrintable(text));
}
