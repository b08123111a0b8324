#include "automation/CThread.h"

void CThread::run()
{
    ThreadBegin();
    running = 1;
    while (!stop_request) {
        if (pause_request) {
            paused = 1;
            msleep(1);
        } else {
            paused = 0;
            ThreadLoop();
        }
    }
    ThreadEnd();
    running = 0;
    stop_request = 0;
}

void CThread::Stop()
{
    stop_request = 1;
    while (running)
        msleep(1);
}

bool CThread::IsRunning() const
{
    return running;
}

void CThread::StartAndWait()
{
    start(QThread::LowPriority);
    while (!running && !isFinished())
        msleep(1);
}
