// The Python module of a block and the identifier rule behind its name.
#include "codegen/PythonModule.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

#include <QFile>
#include <QTextStream>

namespace {

const char kSeparators[] = " ()[]{}+-*/^%&$@=<>?.,|:;'";

// Keywords and the builtins a module name must not shadow; matched whole and case-sensitively.
const char *const kPythonWords[] = {
    "None", "True", "False", "Ellipsis", "NotImplemented", "quit", "exit", "help", "copyright",
    "credits", "license", "class", "in", "and", "or", "not", "is", "if", "elif", "else", "for",
    "while", "break", "continue", "pass", "def", "return", "lambda", "yield", "try", "except",
    "finally", "raise", "assert", "global", "nonlocal", "del", "import", "from", "as", "with",
    "async", "await", "match", "case", "type"};

void WriteParameterPass(QTextStream &out, const BlkParaData *data, const char *heading,
                        const char *call)
{
    out << "\n" << heading;
    if (!data || data->para_grp.isEmpty())
        return;
    out << "    ---\n";
    for (const ParaGroup *group : data->para_grp) {
        out << "    \"" << group->header << "\"\n";
        for (const ParaEntity *entity : group->para_entity) {
            // One pass of arg, so a "%1" inside a name or value stays as it is.
            out << "        " << QString::fromLatin1(call).arg(group->header, entity->label, entity->sel_val);
            for (const QString &value : entity->values)
                out << "            \"" << value << "\"\n";
        }
    }
}

} // namespace

QString MakeIdentifier(const QString &name, bool to_upper, bool to_lower, bool with_underscore)
{
    QString text = name;
    for (const char *sep = kSeparators; *sep; ++sep) {
        const QChar separator = QLatin1Char(*sep);
        if (with_underscore) {
            text.replace(separator, QLatin1Char('_'));
            continue;
        }
        int at = 0;
        while ((at = text.indexOf(separator, at)) >= 0) {
            if (at + 1 < text.size())
                text[at + 1] = text[at + 1].toUpper();
            text.remove(at, 1);
        }
    }
    if (!text.isEmpty() && text[0].isDigit())
        text.prepend(QLatin1Char('_'));
    if (to_upper)
        text = text.toUpper();
    if (to_lower)
        text = text.toLower();
    return text;
}

QString MakePythonName(const QString &name)
{
    const QString text = MakeIdentifier(name, false, false, false);
    for (const char *word : kPythonWords)
        if (text == QLatin1String(word))
            return QLatin1Char('_') + text;
    return text;
}

QString WritePythonModule(const BlockData *block, const QString &directory, const QString &extension)
{
    const QString block_name = BlockNameOf(block);
    if (!block || block_name.isEmpty())
        return QString();
    const QString py_name = MakePythonName(block_name);
    const QString id = QString::number(BlockIdOf(block));
    const QString path = directory + "/" + py_name + id + extension;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return QString();
    QTextStream out(&file);
    out.setCodec("UTF-8");

    out << QStringLiteral("\"\"\"! Python module for ZEMA block: %1 [%2].\n")
               .arg(block_name + id, block->pres ? block->pres->title : QString());
    out << "\nTo use this module with the block related functions from 'zema.py', please add the "
           "following code at appropriate locations in your script:\n"
        << "\n";
    out << "1. Ensure ZEMA module is imported\n"
        << "    import zema\n"
        << "\n";
    out << "2. Add the following line on top of your script to import this module:\n"
        << "    " << QStringLiteral("from blks import %1 as %2\n").arg(py_name + id, py_name) << "\n";
    out << "3. To add this block, use zema.BlockAdd(...) as shown below. Save the returned 'block id' "
           "for later use.\n"
        << "    " << QStringLiteral("blk0 = zema.BlockAdd(%1.path, \"some_name0\")\n").arg(py_name);

    WriteParameterPass(out, block->params,
                       "4. To set block parameters, use zema.BlockParaSet(<blk_id>, <para_name>, "
                       "<para_value>) as shown below along with appropriate value strings. Replace "
                       "'blk0' with actual block id.\n",
                       "zema.BlockParaSet(blk0, \"%1$%2\", \"%3\")\n");
    WriteParameterPass(out, block->initconds,
                       "5. To set block initial conditions, use zema.BlockInitConditionSet(<blk_id>, "
                       "<init_name>, <init_value>) as shown below along with appropriate value "
                       "strings. Replace 'blk0' with actual block id.\n",
                       "zema.BlockInitConditionSet(blk0, \"%1$%2\", \"%3\")\n");

    out << "\n"
        << "6. To connect block ports, use zema.BlockPortsConnect(<blk1_id>, <blk1_port>, "
           "<blk2_id>, <blk2_port>) as shown below. Replace 'blk0' with actual block id.\n";
    if (block->pres)
        for (const BlkPort *port : block->pres->ports)
            out << "    " << QStringLiteral("zema.BlockPortsConnect(blk0, \"%1\", ..., ...)\n").arg(port->name);
    out << "\n"
        << "Please refer examples from 'pyzema/examples' directory for further details on how to "
           "use block modules.\n"
        << "\"\"\"\n"
        << "\n";

    out << "\"\"\"! block Id\"\"\"" << "\n" << "id = \"" << id << "\"" << "\n" << "\n";
    out << "\"\"\"! block path: indicates current location of the block\"\"\"" << "\n"
        << "\"\"\"! if the block is shifted to some other directory by the user, this value shall be "
           "manually edited to reflect the new location of the block.\"\"\""
        << "\n" << "path = \"" << block->path << "\"" << "\n" << "\n";
    out << "\"\"\"! block version\"\"\"" << "\n" << "version = \"" << ToolVersionOf(block) << "\""
        << "\n" << "\n";
    return path;
}
