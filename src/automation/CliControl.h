// The command interface: a parent application drives the tool through lines on standard input
// and reads one reply a line on standard output.
#pragma once

#include "automation/CThread.h"

#include <QList>
#include <QString>
#include <QStringList>

class MainWindow;
struct BlkCodePort;
struct BlkParaData;

class CliControl : public CThread
{
    Q_OBJECT
public:
    // Starts the worker at once; it speaks only after its start-up sleep.
    explicit CliControl(MainWindow *main_window);
    // Ends the worker first, even when it still waits in its read.
    ~CliControl() override;

    // Asks the loop to end; false, with the request withdrawn, when it has not ended in time.
    bool FinishControl(int timeout_ms);

    volatile quint8 busy = 0;
    MainWindow *main_window = nullptr;
    // Touched by the worker only.
    qint64 last_activity = 0;
    qint32 loop_delay = 10;
    // The block being defined; touched on the main thread only.
    quint8 overwrite = 0;
    QString block_name;        // non-empty: a block is open
    QString block_title;
    QString parent_dir;
    QList<BlkCodePort *> ports;     // owned
    QList<quint8> port_dirs;        // parallel to ports: 0 input, 1 output
    BlkParaData *params = nullptr;  // owned; one group "Basic"
    qint32 other_language = -1;     // 0 Python, 1 Fortran, 2 Verilog
    QString reply_prefix = QStringLiteral("ZEMABE");

public slots:
    void ProcInputCmd(const QString &cmd);

protected:
    void ThreadBegin() override;
    void ThreadLoop() override;
    void ThreadEnd() override;

private:
    // One line on standard output, Latin-1, flushed at once: the parent reads line by line.
    static void WriteLine(const QString &text);
    void Reply(const QString &text) const;

    // Each gives its reply text.
    QString OpenCmd(const QStringList &args);
    QString HelpPythonCmd();
    QString AddPortCmd(const QStringList &args);
    QString AddParaCmd(QStringList args);
    QString OtherLanguageCmd(const QStringList &args);
    QString SaveCmd();
    QString ShowDirCmd();
    bool CreateBlock();
    QString BlockPath() const;
};
