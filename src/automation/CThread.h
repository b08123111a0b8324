// A polled worker loop: begin, loop until asked to stop, end, with plain flags and short sleeps.
#pragma once

#include <QThread>

class CThread : public QThread
{
    Q_OBJECT
public:
    using QThread::QThread;

    void Stop();
    bool IsRunning() const;
    void StartAndWait();

    volatile quint8 stop_request = 0;
    volatile quint8 running = 0;
    volatile quint8 pause_request = 0;
    volatile quint8 paused = 0;

protected:
    void run() override;
    virtual void ThreadBegin() = 0;
    virtual void ThreadLoop() = 0;
    virtual void ThreadEnd() = 0;
};
