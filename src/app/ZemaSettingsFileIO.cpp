#include "app/ZemaSettingsFileIO.h"

#include "app/AppSettings.h"
#include "app/XmlText.h"

#include <QFileInfo>

ZemaSettingsFileIO::ZemaSettingsFileIO(const QString &root_dir, ErrorList *error_list,
                                       qint32 silent, QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

static QStringList Entries(QXmlStreamReader *reader)
{
    return ElementText(reader).split('|', Qt::SkipEmptyParts);
}

bool ZemaSettingsFileIO::ReadSettings(AppSettings *settings, const QString &title)
{
    const QString path = settings->bin_dir + "/ZEMA.cfg";
    const QStringList root{settings->root_dir};
    settings->thw_path = settings->root_dir;
    QXmlStreamReader *stream = OpenForRead(path, title);
    if (!stream)
        return false;
    if (SeekStart(stream, "zema_settings_data")) {
        while (NextInside(stream, "zema_settings_data")) {
            if (IsStart(stream, "dirs")) {
                for (const QString &entry : Entries(stream))
                    settings->dirs.append(ResolvePath(root, entry));
            } else if (IsStart(stream, "pyinc_dirs")) {
                settings->pyinc_dirs = Entries(stream);
            } else if (IsStart(stream, "pylib_files")) {
                settings->pylib_files = Entries(stream);
            } else if (IsStart(stream, "pylib_search_dirs")) {
                settings->pylib_search_dirs = Entries(stream);
            } else if (IsStart(stream, "accel_2d")) {
                settings->accel_2d = ElementText(stream).toInt() != 0;
            } else if (IsStart(stream, "html_help")) {
                settings->html_help = ElementText(stream).toInt() != 0;
            } else if (IsStart(stream, "thw_path")) {
                const QString thw = ResolvePath(root, ElementText(stream));
                settings->thw_path = QFileInfo::exists(thw) ? thw : settings->root_dir;
            } else if (IsStart(stream, "qtc_path")) {
                const QString qtc = ElementText(stream);
                settings->qtc_path = QFileInfo::exists(qtc + "/bin/qtcreator.exe") ? qtc : QString();
            } else if (IsStart(stream, "script_en")) {
                settings->script_en = ElementText(stream).toUInt() != 0;
            }
        }
    }
    settings->search_dirs = settings->dirs;
    return CloseRead(path, title);
}
