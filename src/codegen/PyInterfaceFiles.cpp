// A block's Python interface pair, made from the reference pair of the application tree by plain
// text substitution; the reference files carry the markers replaced here.
#include "codegen/PyInterfaceFiles.h"

#include <QFile>

namespace {

// Null when the file cannot be read or is empty: an empty reference is as useless as a missing one.
QByteArray ReadReference(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool WriteWhole(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// ", m_port_objs[0], m_port_objs[1]" and so on, one entry per object, or nothing.
QString ObjectList(const QString &array, int count)
{
    QString list;
    for (int i = 0; i < count; ++i)
        list += QStringLiteral(", %1[%2]").arg(array).arg(i);
    return list;
}

} // namespace

QString WritePyInterfaceFiles(const QString &root_dir, const QString &src_dir,
                              const QString &class_name, const QString &pyintf_name, int nports,
                              int nparams, QStringList *written)
{
    const QString reference = root_dir + "/source/src_py/py_interface_template";
    const QString target = src_dir + (src_dir.endsWith('/') ? "" : "/") + pyintf_name;
    const QString upper = class_name.toUpper();
    const QString ports = "PYINTF_" + upper + "_NPORTS";
    const QString para = "PYINTF_" + upper + "_NPARA";

    // Latin-1 both ways, so bytes beyond ASCII in the reference pass through unchanged. The order
    // of the replacements matters: each one must not see the text a later one looks for.
    const QByteArray header_ref = ReadReference(reference + ".h");
    if (header_ref.isEmpty())
        return QStringLiteral(
            "Cannot create python interface header file. Failed to read reference file data.");
    QString header = QString::fromLatin1(header_ref);
    header.replace(QLatin1String("PY_INTERFACE_TEMPLATE_H"), "PY_INTF_" + upper + "_H");
    header.replace(QLatin1String("PyIntf"), pyintf_name);
    header.replace(QLatin1String("PYINTF_NPORTS 1"), ports + " " + QString::number(nports));
    header.replace(QLatin1String("PYINTF_NPORTS"), ports);
    header.replace(QLatin1String("PYINTF_NPARA 1"), para + " " + QString::number(nparams));
    header.replace(QLatin1String("PYINTF_NPARA"), para);
    if (!WriteWhole(target + ".h", header.toLatin1()))
        return QStringLiteral("Cannot create python interface header file. Failed to write file data.");
    if (written)
        written->append(target + ".h");

    const QByteArray source_ref = ReadReference(reference + ".cpp");
    if (source_ref.isEmpty())
        return QStringLiteral(
            "Cannot create python interface cpp file. Failed to read reference file data.");
    QString source = QString::fromLatin1(source_ref);
    source.replace(QLatin1String("PyIntf"), pyintf_name);
    source.replace(QLatin1String("py_interface_template.h"), pyintf_name + ".h");
    source.replace(QLatin1String("PYINTF_NPORTS"), ports);
    source.replace(QLatin1String("PYINTF_NPARA"), para);
    source.replace(QLatin1String(", m_port_objs[-1]"), ObjectList(QStringLiteral("m_port_objs"), nports));
    source.replace(QLatin1String(", m_para_objs[-1]"), ObjectList(QStringLiteral("m_para_objs"), nparams));
    if (!WriteWhole(target + ".cpp", source.toLatin1()))
        return QStringLiteral("Cannot create python interface cpp file. Failed to write file data.");
    if (written)
        written->append(target + ".cpp");
    return {};
}
