// A hidden main window for the page suites, with every box answered by a script. Pages reach each
// other through the settings' main window, so each suite works on a real window with a block open.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

class MainWindow;
class ScriptedAnswerer;
struct BlockData;

class PageWindow
{
public:
    // Fresh settings rooted at `root`, a scripted answerer, and a window past its late start.
    explicit PageWindow(const QString &root);
    ~PageWindow();

    MainWindow *operator->() const { return window.get(); }
    MainWindow *get() const { return window.get(); }

    // A new block, as File > New gives it.
    void NewBlock();
    // Saves `block` (kept by the caller) as `dir`/`name`/`name`.bdef with "src" and "doc", and
    // opens it; false when the window refused it.
    bool OpenBlock(BlockData *block, const QString &dir, const QString &name);
    // A block with the default Configuration, named `name`, and empty records for every page.
    // OpenBlock writes its header file and help page, so as it is it validates without a message.
    static BlockData *NewBlockRecord(const QString &name);
    // Validates silently and gives the error list's numbered rows.
    QStringList ValidationRows() const;

    std::unique_ptr<MainWindow> window;
    ScriptedAnswerer *answers = nullptr;
};

// Types into a line edit of the Configuration page as a user would: only edited text writes back.
// False when the entity has no line edit.
bool TypeIntoConfiguration(MainWindow *window, const QString &header, const QString &label,
                           const QString &text);
