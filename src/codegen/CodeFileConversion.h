// Conversion of a block's code files to and from ".enc": the settings of one run, the suffix rule
// and the conversion of a work list. The tree walk over blocks lives in the main window.
#pragma once

#include <QString>
#include <QStringList>

struct ConversionSettings {
    QString path;
    qint32 key = 0;
    bool decrypt = false;
    bool subdirs = false;
    bool single_file = false;
    bool fortran = false;
    bool python = false;
    bool all_types = false;
};

// The box that closes a run; `kind` as in the error list: 2 Warning, 3 Information.
struct ConversionMessage {
    int kind = 3;
    QString title;
    QString text;
};

// Whether a run with `settings` converts `file`, judged by its lower-cased last suffix alone.
bool TakesFile(const QString &file, const ConversionSettings &settings);
// Where a converted file goes: the path less its last suffix, or with ".enc" added.
QString ConvertedPath(const QString &file, bool decrypt);
// The sibling a directory run works in: `dir` + "_dec" or "_enc".
QString ConversionTarget(const QString &dir, bool decrypt);
// Copies every file below `from` into `to`, replacing files of the same name and keeping any
// others; false when a file could not be copied.
bool CopyTreeForConversion(const QString &from, const QString &to);
// The files of `dir` (hidden ones too), of its subdirectories with `subdirs`, matching `filters`
// when given.
QStringList FilesIn(const QString &dir, bool subdirs, const QStringList &filters = {});
// The entries of `dir` itself, files and directories, without "." and "..".
int CountEntries(const QString &dir);

// Converts each file the suffix rule takes, beside itself; with `remove_inputs`, each input goes
// once its result is written. True when no file failed; failures never stop the list.
bool ConvertFileList(const QStringList &files, const ConversionSettings &settings, bool remove_inputs);
// The closing box of a run; a directory run also compares the entry counts of source and target.
ConversionMessage ClosingMessage(bool failed, const QString &source_dir, const QString &target_dir);

// The code page's one-way encoding: each file to "<file>.enc" with a table of its own that no key
// of a conversion run reproduces, the source kept. True when every file was written.
bool EncodeFilesOneWay(const QStringList &files);
