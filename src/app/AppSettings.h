// The process-wide settings record and the handling of relative block paths.
#pragma once

#include <QString>
#include <QStringList>

class MainWindow;

struct AppSettings {
    QStringList dirs;              // from the settings file, made absolute
    QStringList pyinc_dirs;
    QStringList pylib_files;
    QStringList pylib_search_dirs;
    QString root_dir;
    QString thw_path;              // falls back to root_dir
    QString bin_dir;               // root_dir + "/bin_win"
    QString qtc_path;              // empty unless the installation is really there
    QString user_dir;
    QString third_dir;             // handed on to child tools
    quint8 accel_2d = 0;
    quint8 html_help = 0;
    quint8 script_en = 1;
    MainWindow *main_window = nullptr;
    QString search_block;          // block path the search list was last built for
    QStringList search_dirs;
    qint32 licence_level = 0;      // 0: no valid token
    qint32 licence_modules = 0;
    qint32 licence_expiry = 0;
    QString licence_token;         // as handed over, for child tools and the title
    QStringList extra_lists[2];
    QString extra_texts[2];
};

// Made once, never freed; null before CreateAppSettings.
AppSettings *GlobalSettings();
AppSettings *CreateAppSettings(MainWindow *main_window);

// An absolute path comes back as it is; otherwise the first directory under which it exists.
QString ResolvePath(const QStringList &dirs, const QString &path);
// The directories for relative paths of a block's files, rebuilt when the block changes.
QStringList SearchDirs(AppSettings *settings, const QString &block_path);
// With `root` anywhere in `path`: every occurrence taken out, then one leading "/". Otherwise
// `path` unchanged, which callers take as "outside". A path that merely holds the root's text
// somewhere inside counts as inside.
QString RelativeToRoot(const QString &root, const QString &path);
// The same, for a stored path against one of the search directories.
QString MakeRelative(const QString &dir, const QString &path);
// The per-user data directory with its "blocks" and "temp", created when absent.
QString PrepareUserDir(AppSettings *settings);
