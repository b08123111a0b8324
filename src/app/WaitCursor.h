// The wait cursor for the length of a scope, only where a GUI application runs.
#pragma once

#include <QCursor>
#include <QGuiApplication>

class WaitCursor
{
public:
    WaitCursor() : active(qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr)
    {
        if (active)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
    ~WaitCursor() { Restore(); }
    void Restore()
    {
        if (active)
            QGuiApplication::restoreOverrideCursor();
        active = false;
    }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    bool active;
};
