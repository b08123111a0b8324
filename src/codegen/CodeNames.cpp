#include "codegen/CodeNames.h"

#include "app/BlockAccessors.h"

#include <QStringList>

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

bool IsMappedDataType(const QString &type)
{
    static const QStringList names = {
        QStringLiteral("String"),    QStringLiteral("Real"),      QStringLiteral("Real32"),
        QStringLiteral("Real64"),    QStringLiteral("Integer"),   QStringLiteral("Integer16"),
        QStringLiteral("Integer32_Boolean"), QStringLiteral("Integer64"), QStringLiteral("Byte"),
        QStringLiteral("Selected Index"),    QStringLiteral("Preprocessor Definition")};
    return names.contains(type);
}
