// The command interface: a parent application drives the tool through lines on standard input
// and reads one reply a line on standard output.
#pragma once

#include "automation/CThread.h"

#include <QString>

class MainWindow;

class CliControl : public CThread
{
    Q_OBJECT
public:
    explicit CliControl(MainWindow *main_window);
    ~CliControl() override;

    // Asks the loop to end; false, with the request withdrawn, when it has not ended in time.
    bool FinishControl(int timeout_ms);

    volatile quint8 busy = 0;
    MainWindow *main_window = nullptr;

public slots:
    void ProcInputCmd(const QString &cmd);

protected:
    void ThreadBegin() override;
    void ThreadLoop() override;
    void ThreadEnd() override;
};
