#include "schematics/BlkSchemeFileIO.h"

#include "app/XmlText.h"
#include "schematics/BlkSchemeData.h"

#include <QXmlStreamWriter>

namespace {

QStringList SplitList(const QString &text)
{
    return text.split('|', Qt::SkipEmptyParts);
}

} // namespace

BlkSchemeFileIO::BlkSchemeFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                                 QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

BlkSchemeData *BlkSchemeFileIO::LoadScheme(const QString &path, const QString &title)
{
    return LoadSection<BlkSchemeData>(path, title, ReadSchemeData, FreeBlkSchemeData);
}

bool BlkSchemeFileIO::SaveScheme(const QString &path, const BlkSchemeData *record,
                                 const QString &title)
{
    return SaveSection(path, record, title, WriteSchemeData);
}

BlkSchemeData *BlkSchemeFileIO::ReadSchemeData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_scheme_data"))
        return nullptr;
    auto *record = new BlkSchemeData;
    while (NextInside(reader, "blk_scheme_data")) {
        if (IsStart(reader, "root_file"))
            record->root_file = ElementText(reader);
        else if (IsStart(reader, "plots"))
            record->plots = SplitList(ElementText(reader));
        else if (IsStart(reader, "controls"))
            record->controls = SplitList(ElementText(reader));
        else if (IsStart(reader, "hw_ios"))
            record->hw_ios = SplitList(ElementText(reader));
        else if (IsStart(reader, "gp_blks"))
            record->gp_blks = SplitList(ElementText(reader));
        // other elements are passed over
    }
    if (reader->hasError()) {
        FreeBlkSchemeData(record);
        return nullptr;
    }
    return record;
}

void BlkSchemeFileIO::WriteSchemeData(QXmlStreamWriter *writer, const BlkSchemeData *record)
{
    if (!record)
        return;
    writer->writeStartElement(QStringLiteral("blk_scheme_data"));
    writer->writeTextElement(QStringLiteral("root_file"), record->root_file);
    writer->writeTextElement(QStringLiteral("plots"), record->plots.join('|'));
    writer->writeTextElement(QStringLiteral("controls"), record->controls.join('|'));
    writer->writeTextElement(QStringLiteral("hw_ios"), record->hw_ios.join('|'));
    writer->writeTextElement(QStringLiteral("gp_blks"), record->gp_blks.join('|'));
    writer->writeEndElement();
}
