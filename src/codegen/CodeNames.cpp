#include "codegen/CodeNames.h"

#include "app/BlockAccessors.h"

QString BlockClassName(const BlkParaData *config)
{
    const quint32 id = BlockIdOf(config);
    if (id == 0)
        return QStringLiteral("RootSignalClass");
    QString name = BlockNameOf(config);
    name.remove(' ').remove('(').remove(')');
    if (!name.isEmpty())
        name[0] = name[0].toUpper();
    return name + QString::number(id);
}
