// The start-up steps the program and its companion share: from the packed argument to a main
// window whose late initialisation has run.
#pragma once

struct PackedArgument;
class MainWindow;

// Needs the QApplication. The window is not shown; the caller owns it.
MainWindow *StartUp(const PackedArgument &packed);
