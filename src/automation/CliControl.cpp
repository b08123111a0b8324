#include "automation/CliControl.h"

// Placeholder until the command interface is written.
CliControl::CliControl(MainWindow *main_window) : main_window(main_window) {}
CliControl::~CliControl() = default;
bool CliControl::FinishControl(int) { return true; }
void CliControl::ProcInputCmd(const QString &) {}
void CliControl::ThreadBegin() {}
void CliControl::ThreadLoop() {}
void CliControl::ThreadEnd() {}
