#include "pages/BlkHelpFileIO.h"

#include "app/XmlText.h"
#include "pages/BlkHelpData.h"

#include <QXmlStreamWriter>

BlkHelpFileIO::BlkHelpFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

BlkHelpData *BlkHelpFileIO::LoadFile(const QString &path, const QString &title)
{
    return LoadSection<BlkHelpData>(path, title, BlkHelpFileIO::ReadHelpData, FreeBlkHelpData);
}

bool BlkHelpFileIO::SaveFile(const QString &path, const BlkHelpData *data, const QString &title)
{
    return SaveSection(path, data, title, BlkHelpFileIO::WriteHelpData);
}

BlkHelpData *BlkHelpFileIO::ReadHelpData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_help_data"))
        return nullptr;
    auto *data = new BlkHelpData;
    while (NextInside(reader, "blk_help_data")) {
        if (IsStart(reader, "h_inst")) {
            data->h_inst = ElementText(reader);
        } else if (IsStart(reader, "file_name")) {
            const QString name = ElementText(reader);
            if (!name.isEmpty())
                data->file_name.append(name);
        }
        // other elements are passed over
    }
    if (reader->hasError()) {
        FreeBlkHelpData(data);
        return nullptr;
    }
    return data;
}

void BlkHelpFileIO::WriteHelpData(QXmlStreamWriter *writer, const BlkHelpData *data)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("blk_help_data"));
    writer->writeTextElement(QStringLiteral("h_inst"), data->h_inst);
    for (const QString &name : data->file_name)
        writer->writeTextElement(QStringLiteral("file_name"), name);
    writer->writeEndElement();
}
