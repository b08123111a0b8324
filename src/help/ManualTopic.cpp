// Opens the program's manual: the system's help viewer where there is one, else our HTML pages.
#include "help/ManualTopic.h"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextStream>

void ShowManualTopic(const QString &root, int map_id, const QString &topic)
{
    Q_UNUSED(topic); // the viewer finds the page by its number alone
    const QString viewer = QStandardPaths::findExecutable(QStringLiteral("hh"));
    if (!viewer.isEmpty()) {
        QProcess::startDetached(viewer, {QStringLiteral("-mapid"), QString::number(map_id),
                                         root + "/help/ZEMA_Documentation.chm"});
        return;
    }
    QDesktopServices::openUrl(ManualTopicUrl(root, map_id));
}

QUrl ManualTopicUrl(const QString &root, int map_id)
{
    const QString help_dir = root + "/help/";
    // topics.map: one "number page" a line, '#' starts a comment.
    QFile map(help_dir + "topics.map");
    if (map.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&map);
        while (!in.atEnd()) {
            const QString line = in.readLine().section(QLatin1Char('#'), 0, 0).trimmed();
            const QStringList parts = line.split(QRegularExpression(QStringLiteral("\\s+")),
                                                 Qt::SkipEmptyParts);
            bool ok = false;
            if (parts.size() == 2 && parts[0].toInt(&ok) == map_id && ok)
                return QUrl::fromLocalFile(help_dir + parts[1]);
        }
    }
    return QUrl::fromLocalFile(help_dir + "index.html");
}
