#include "codegen/CodeNames.h"

#include "app/BlockAccessors.h"

#include <QStringList>

namespace {

// Index + 1 is the type code.
const QStringList &MappedTypes()
{
    static const QStringList names = {
        QStringLiteral("String"),    QStringLiteral("Real"),      QStringLiteral("Real32"),
        QStringLiteral("Real64"),    QStringLiteral("Integer"),   QStringLiteral("Integer16"),
        QStringLiteral("Integer32_Boolean"), QStringLiteral("Integer64"), QStringLiteral("Byte"),
        QStringLiteral("Selected Index"),    QStringLiteral("Preprocessor Definition")};
    return names;
}

struct CType {
    const char *type;
    const char *plain;
};

const CType c_types[] = {
    {"String", "_CHAR"},           {"Integer16", "_INT16"},        {"Integer32_Boolean", "_INT32"},
    {"Integer64", "_INT64"},       {"Integer", "_INT"},            {"Real32", "_FXDPT_FLOAT32"},
    {"Real64", "_FXDPT_FLOAT64"},  {"Real", "_FXDPT_FLOAT"},       {"Byte", "_BYTE"},
    {"Selected Index", "_BYTE"},   {"Preprocessor Definition", "_BYTE"},
};

const char *const pool_suffixes[] = {"r", "r32", "r64", "i", "i16", "i32", "i64", "char"};
const char *const pool_types[] = {"Real",      "Real32",            "Real64",    "Integer",
                                  "Integer16", "Integer32_Boolean", "Integer64", "String"};

} // namespace

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

QString PyIntfClassName(const BlkParaData *config)
{
    return QStringLiteral("PyIntf") + BlockClassName(config);
}

bool IsMappedDataType(const QString &type)
{
    return MappedTypes().contains(type);
}

int TypeCode(const QString &type)
{
    return MappedTypes().indexOf(type) + 1;
}

QString CTypeName(const QString &type, int mode, bool *unknown_flag)
{
    if (unknown_flag)
        *unknown_flag = false;
    QString name = type;
    for (const CType &entry : c_types)
        if (type == QLatin1String(entry.type)) {
            name = QString::fromLatin1(entry.plain);
            if (unknown_flag)
                *unknown_flag = true;
            break;
        }
    if (mode == 2)
        return QStringLiteral("#define");
    if (mode == 1)
        return type == QLatin1String("String") ? QStringLiteral("const _CHAR*") : "const " + name;
    return name;
}

QString MemoryPoolName(const QString &type, const QString &mem_type, int *pool_index)
{
    int index = 8;
    for (int i = 0; i < 8; ++i)
        if (type == QLatin1String(pool_types[i])) {
            index = i;
            break;
        }
    if (pool_index)
        *pool_index = index;
    const QString suffix = index < 8 ? QString::fromLatin1(pool_suffixes[index]) : QStringLiteral("byte");
    const QString pool = mem_type == QLatin1String("Non-Cacheable") ? QStringLiteral("marg->vmem_pool_")
                                                                   : QStringLiteral("marg->mem_pool_");
    return pool + suffix;
}
