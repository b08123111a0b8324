#include "pages/BlkMiscFileIO.h"

#include "app/XmlText.h"
#include "pages/AttrElement.h"
#include "pages/BlkMiscData.h"

#include <QXmlStreamWriter>

namespace {

void ReadCharVar(QXmlStreamReader *reader, BlkMiscData *data)
{
    auto *var = new BlkCharVar;
    data->char_vars.append(var);
    ReadAttrElement(reader, "blk_char_var", [var](QXmlStreamReader *r) {
        var->char_var_name = Attr(r, "char_var_name");
        var->para_grp = Attr(r, "para_grp");
        var->para_entity = Attr(r, "para_entity");
    });
}

} // namespace

BlkMiscFileIO::BlkMiscFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

BlkMiscData *BlkMiscFileIO::LoadFile(const QString &path, const QString &title)
{
    return LoadSection<BlkMiscData>(path, title, BlkMiscFileIO::ReadMiscData, FreeBlkMiscData);
}

bool BlkMiscFileIO::SaveFile(const QString &path, const BlkMiscData *data, const QString &title)
{
    return SaveSection(path, data, title, BlkMiscFileIO::WriteMiscData);
}

BlkMiscData *BlkMiscFileIO::ReadMiscData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_misc_data"))
        return nullptr;
    auto *data = new BlkMiscData;
    // A ";" typed inside a condition splits it on the way back; the page's header warns of it.
    while (NextInside(reader, "blk_misc_data")) {
        if (IsStart(reader, "blk_char_var"))
            ReadCharVar(reader, data);
        else if (IsStart(reader, "cpu_ops"))
            data->cpu_ops = ElementText(reader);
        else if (IsStart(reader, "para_cond"))
            data->para_cond = ElementText(reader).split(';', Qt::SkipEmptyParts);
        else if (IsStart(reader, "dev_rem"))
            data->dev_rem = ElementText(reader);
        else if (IsStart(reader, "blk_depends"))
            data->blk_depends = ElementText(reader).split('|', Qt::SkipEmptyParts);
        else if (IsStart(reader, "cpp_depends"))
            data->cpp_depends = ElementText(reader).split('|', Qt::SkipEmptyParts);
        // other elements are passed over
    }
    if (reader->hasError()) {
        FreeBlkMiscData(data);
        return nullptr;
    }
    return data;
}

void BlkMiscFileIO::WriteMiscData(QXmlStreamWriter *writer, const BlkMiscData *data)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("blk_misc_data"));
    // A link without a variable name is deliberately dropped here only; the reader keeps it.
    for (const BlkCharVar *var : data->char_vars) {
        if (var->char_var_name.isEmpty())
            continue;
        writer->writeEmptyElement(QStringLiteral("blk_char_var"));
        writer->writeAttribute(QStringLiteral("char_var_name"), var->char_var_name);
        writer->writeAttribute(QStringLiteral("para_grp"), var->para_grp);
        writer->writeAttribute(QStringLiteral("para_entity"), var->para_entity);
    }
    writer->writeTextElement(QStringLiteral("cpu_ops"), data->cpu_ops);
    writer->writeTextElement(QStringLiteral("para_cond"), data->para_cond.join(';'));
    writer->writeTextElement(QStringLiteral("dev_rem"), data->dev_rem);
    writer->writeTextElement(QStringLiteral("blk_depends"), data->blk_depends.join('|'));
    writer->writeTextElement(QStringLiteral("cpp_depends"), data->cpp_depends.join('|'));
    writer->writeEndElement();
}
