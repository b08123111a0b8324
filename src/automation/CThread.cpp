#include "automation/CThread.h"

// Placeholder until the loop is written.
void CThread::Stop() {}
bool CThread::IsRunning() const { return running; }
void CThread::StartAndWait() {}
void CThread::run() {}
