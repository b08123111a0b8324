#include "app/AppSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

static AppSettings *global_settings = nullptr;

AppSettings *GlobalSettings()
{
    return global_settings;
}

AppSettings *CreateAppSettings(MainWindow *main_window)
{
    // Made once for the process; a second call starts the same record afresh.
    if (!global_settings)
        global_settings = new AppSettings;
    else
        *global_settings = AppSettings();
    global_settings->main_window = main_window;
    return global_settings;
}

QString ResolvePath(const QStringList &dirs, const QString &path)
{
    if (path.size() >= 2 && (path.contains(':') || path.startsWith('/')))
        return path;
    for (const QString &dir : dirs) {
        const QString candidate = path.isEmpty() ? dir : dir + "/" + path;
        if (QFileInfo::exists(candidate))
            return candidate;
    }
    return path;
}

QStringList SearchDirs(AppSettings *settings, const QString &block_path)
{
    if (block_path == settings->search_block)
        return settings->search_dirs;
    settings->search_dirs.clear();
    if (!block_path.isEmpty()) {
        const QString blocks = block_path + "/blocks";
        settings->search_dirs.append(QFileInfo(blocks).isDir() ? blocks : block_path);
    }
    settings->search_dirs.append(settings->dirs);
    settings->search_block = block_path;
    return settings->search_dirs;
}

QString RelativeToRoot(const QString &root, const QString &path)
{
    if (!path.contains(root))
        return path;
    QString rel = path;
    rel.remove(root);
    if (rel.startsWith('/'))
        rel.remove(0, 1);
    return rel;
}

QString MakeRelative(const QString &dir, const QString &path)
{
    return dir.isEmpty() ? path : RelativeToRoot(dir, path);
}

QString PrepareUserDir(AppSettings *settings)
{
    settings->user_dir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                         "/zema_user_data";
    QDir dir;
    dir.mkpath(settings->user_dir + "/blocks");
    dir.mkpath(settings->user_dir + "/temp");
    return settings->user_dir;
}
