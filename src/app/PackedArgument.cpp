#include "app/PackedArgument.h"

#include <QDir>
#include <QFileInfo>

static QString CanonicalRoot(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    // A root that is not there yet keeps its cleaned form rather than becoming empty.
    return canonical.isEmpty() ? QDir::cleanPath(QFileInfo(path).absoluteFilePath()) : canonical;
}

PackedArgument ReadPackedArguments(const QStringList &arguments, const QString &default_root)
{
    PackedArgument packed;
    packed.root_dir = default_root;
    for (QString argument : arguments) {
        argument = argument.trimmed();
        if (argument.startsWith('-'))
            argument.remove(0, 1);
        if (!argument.startsWith('#'))
            continue;
        const QStringList fields = argument.mid(1).split('#');
        if (fields.value(0) == QLatin1String("cli_on"))
            packed.cli_on = true;
        if (fields.size() > 1 && fields[1].size() >= 2)
            packed.root_dir = CanonicalRoot(fields[1].startsWith('.') ? default_root + "/" + fields[1]
                                                                      : fields[1]);
        if (fields.size() > 2)
            packed.third_dir = fields[2];
        if (fields.size() > 3)
            packed.licence_token = fields[3];
    }
    return packed;
}
