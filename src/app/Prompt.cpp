#include "app/Prompt.h"

#include "app/FileReport.h"

#include <QDialog>
#include <QFileDialog>
#include <cstdio>

QMessageBox::StandardButton DialogAnswerer::Box(QWidget *parent, QMessageBox::Icon icon,
                                                const QString &title, const QString &text,
                                                QMessageBox::StandardButtons buttons,
                                                QMessageBox::StandardButton default_button)
{
    QMessageBox box(icon, title, text, buttons, parent);
    if (default_button != QMessageBox::NoButton)
        box.setDefaultButton(default_button);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QStringList DialogAnswerer::Files(QWidget *parent, const QString &title, const QString &start,
                                  const QString &filter, bool directory, bool many)
{
    if (directory) {
        const QString dir = QFileDialog::getExistingDirectory(parent, title, start);
        return dir.isEmpty() ? QStringList() : QStringList{dir};
    }
    if (many)
        return QFileDialog::getOpenFileNames(parent, title, start, filter);
    const QString file = QFileDialog::getOpenFileName(parent, title, start, filter);
    return file.isEmpty() ? QStringList() : QStringList{file};
}

int DialogAnswerer::Exec(QDialog *dialog, const QStringList &)
{
    return dialog->exec();
}

static void Echo(bool echo, const QString &text)
{
    if (echo)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

QMessageBox::StandardButton ScriptedAnswerer::Box(QWidget *, QMessageBox::Icon,
                                                  const QString &title, const QString &text,
                                                  QMessageBox::StandardButtons buttons,
                                                  QMessageBox::StandardButton default_button)
{
    texts.append(text);
    Echo(echo, title + ": " + text);
    if (!this->buttons.isEmpty())
        return this->buttons.takeFirst();
    if (default_button != QMessageBox::NoButton)
        return default_button;
    // A box without a named default answers with its first button, as a dialog would on Enter.
    for (QMessageBox::StandardButton b : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::Save})
        if (buttons & b)
            return b;
    return QMessageBox::Ok;
}

QStringList ScriptedAnswerer::Files(QWidget *, const QString &title, const QString &, const QString &,
                                    bool, bool)
{
    texts.append(title);
    Echo(echo, title);
    return choices.isEmpty() ? QStringList() : choices.takeFirst();
}

int ScriptedAnswerer::Exec(QDialog *dialog, const QStringList &shown)
{
    texts.append(shown);
    for (const QString &text : shown)
        Echo(echo, text);
    return exec_script ? exec_script(dialog) : int(QDialog::Accepted);
}

namespace {
std::unique_ptr<Answerer> &Current()
{
    static std::unique_ptr<Answerer> answerer(new DialogAnswerer);
    return answerer;
}
} // namespace

namespace Prompt {

void Critical(QWidget *parent, const QString &text, const QString &title)
{
    Current()->Box(parent, QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

void Warning(QWidget *parent, const QString &text, const QString &title)
{
    Current()->Box(parent, QMessageBox::Warning, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

void Information(QWidget *parent, const QString &text, const QString &title)
{
    Current()->Box(parent, QMessageBox::Information, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

QMessageBox::StandardButton Ask(QWidget *parent, const QString &text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton default_button)
{
    return Current()->Box(parent, QMessageBox::Question, QStringLiteral("ZEMA"), text, buttons,
                          default_button);
}

bool Question(QWidget *parent, const QString &text, QMessageBox::StandardButtons buttons,
              QMessageBox::StandardButton yes)
{
    return Ask(parent, text, buttons, yes) == yes;
}

QString ExistingDirectory(QWidget *parent, const QString &title, const QString &start)
{
    return Current()->Files(parent, title, start, QString(), true, false).value(0);
}

QString OpenFileName(QWidget *parent, const QString &title, const QString &start, const QString &filter)
{
    return Current()->Files(parent, title, start, filter, false, false).value(0);
}

QStringList OpenFileNames(QWidget *parent, const QString &title, const QString &start,
                          const QString &filter)
{
    return Current()->Files(parent, title, start, filter, false, true);
}

int Exec(QDialog *dialog, const QStringList &texts)
{
    return Current()->Exec(dialog, texts);
}

void SetAnswerer(std::unique_ptr<Answerer> answerer)
{
    Current() = answerer ? std::move(answerer) : std::make_unique<DialogAnswerer>();
}

Answerer *CurrentAnswerer()
{
    return Current().get();
}

void InstallFileReportHook()
{
    SetFileReportHook([](const QString &title, const QString &text) { Critical(nullptr, text, title); });
}

} // namespace Prompt
