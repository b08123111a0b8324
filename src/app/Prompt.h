// All message boxes, questions, file dialogs and modal runs of our own dialogs pass here, so that
// tests, the companion and the command interface can answer them without a person.
#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QDialog;

class Answerer
{
public:
    virtual ~Answerer() = default;
    virtual QMessageBox::StandardButton Box(QWidget *parent, QMessageBox::Icon icon,
                                            const QString &title, const QString &text,
                                            QMessageBox::StandardButtons buttons,
                                            QMessageBox::StandardButton default_button) = 0;
    // Empty when cancelled.
    virtual QStringList Files(QWidget *parent, const QString &title, const QString &start,
                              const QString &filter, bool directory, bool many) = 0;
    // Runs a dialog of ours modally; `texts` says what it shows, for headless runs.
    virtual int Exec(QDialog *dialog, const QStringList &texts) = 0;
};

// Shows the real Qt dialogs.
class DialogAnswerer : public Answerer
{
public:
    QMessageBox::StandardButton Box(QWidget *parent, QMessageBox::Icon icon, const QString &title,
                                    const QString &text, QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton default_button) override;
    QStringList Files(QWidget *parent, const QString &title, const QString &start,
                      const QString &filter, bool directory, bool many) override;
    int Exec(QDialog *dialog, const QStringList &texts) override;
};

// Records every text and answers from its script, else with the box's default; with `echo`
// each text also goes to standard error (never standard output, which carries the protocol).
class ScriptedAnswerer : public Answerer
{
public:
    explicit ScriptedAnswerer(bool echo = false) : echo(echo) {}
    QMessageBox::StandardButton Box(QWidget *parent, QMessageBox::Icon icon, const QString &title,
                                    const QString &text, QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton default_button) override;
    QStringList Files(QWidget *parent, const QString &title, const QString &start,
                      const QString &filter, bool directory, bool many) override;
    int Exec(QDialog *dialog, const QStringList &texts) override;

    // When set, runs each of our dialogs in place of a person (e.g. fills a wizard and finalizes
    // it) and gives its result; otherwise a dialog is accepted untouched.
    std::function<int(QDialog *)> exec_script;
    QList<QMessageBox::StandardButton> buttons; // next answers, taken from the front
    QList<QStringList> choices;                 // next file or directory choices
    QStringList texts;                          // everything shown, in order
    bool echo = false;
};

namespace Prompt {
void Critical(QWidget *parent, const QString &text, const QString &title = QStringLiteral("ZEMA"));
void Warning(QWidget *parent, const QString &text, const QString &title = QStringLiteral("ZEMA"));
void Information(QWidget *parent, const QString &text, const QString &title = QStringLiteral("ZEMA"));
QMessageBox::StandardButton Ask(QWidget *parent, const QString &text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton default_button);
// True when the answer is `yes`.
bool Question(QWidget *parent, const QString &text, QMessageBox::StandardButtons buttons,
              QMessageBox::StandardButton yes);
QString ExistingDirectory(QWidget *parent, const QString &title, const QString &start);
QString OpenFileName(QWidget *parent, const QString &title, const QString &start, const QString &filter);
QStringList OpenFileNames(QWidget *parent, const QString &title, const QString &start, const QString &filter);
int Exec(QDialog *dialog, const QStringList &texts = {});

void SetAnswerer(std::unique_ptr<Answerer> answerer);
Answerer *CurrentAnswerer();
// Routes the core's file failure reports to Critical boxes.
void InstallFileReportHook();
} // namespace Prompt
