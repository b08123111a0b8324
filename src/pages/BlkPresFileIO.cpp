#include "pages/BlkPresFileIO.h"

#include "app/XmlText.h"
#include "pages/AttrElement.h"
#include "pages/BlkPresData.h"

#include <QXmlStreamWriter>

namespace {

const QString image_ext = QStringLiteral(".vimg");

QString FloatText(float value)
{
    return QString::number(value, 'g', 6);
}

QString FlagString(quint8 flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

void ReadImage(QXmlStreamReader *reader, BlkPresData *data)
{
    auto *image = new BlkImage;
    data->images.append(image);
    ReadAttrElement(reader, "blk_img", [image](QXmlStreamReader *r) {
        image->name = Attr(r, "name");
        image->para_grp = Attr(r, "para_grp");
        image->para_entity = Attr(r, "para_entity");
        image->para_value = Attr(r, "para_value");
    });
    // Older files kept the extension; it is never written back.
    image->name.remove(image_ext, Qt::CaseSensitive);
}

void ReadImageText(QXmlStreamReader *reader, BlkPresData *data)
{
    auto *text = new BlkImageText;
    data->texts.append(text);
    ReadAttrElement(reader, "blk_img_text", [text](QXmlStreamReader *r) {
        text->img_name = Attr(r, "img_name");
        text->text = Attr(r, "text");
        text->para_grp = Attr(r, "para_grp");
        text->para_entity = Attr(r, "para_entity");
    });
    text->img_name.remove(image_ext, Qt::CaseSensitive);
}

void ReadPort(QXmlStreamReader *reader, BlkPresData *data)
{
    auto *port = new BlkPort;
    data->ports.append(port);
    ReadAttrElement(reader, "blk_port", [port](QXmlStreamReader *r) {
        port->name = Attr(r, "name");
        port->dis_text = Attr(r, "dis_text");
        port->type = Attr(r, "type");
        port->placement = Attr(r, "placement");
        port->per_distance = Attr(r, "per_distance").toFloat();
        port->text_dx = Attr(r, "text_dx").toFloat();
        port->text_dy = Attr(r, "text_dy").toFloat();
        port->conn_req = Attr(r, "conn_req").toInt();
        port->vport_para = Attr(r, "vport_para").toInt();
        port->vport_grp = Attr(r, "vport_grp");
        port->vport_entity = Attr(r, "vport_entity");
        port->vport_value = Attr(r, "vport_value");
        port->mport_para = Attr(r, "mport_para").toInt() != 0;
        port->mport_grp = Attr(r, "mport_grp");
        port->mport_entity = Attr(r, "mport_entity");
    });
    port->stub_len = 4.0f;
}

} // namespace

BlkPresFileIO::BlkPresFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

BlkPresData *BlkPresFileIO::LoadFile(const QString &path, const QString &title)
{
    return LoadSection<BlkPresData>(path, title, BlkPresFileIO::ReadPresData, FreeBlkPresData);
}

bool BlkPresFileIO::SaveFile(const QString &path, const BlkPresData *data, const QString &title)
{
    return SaveSection(path, data, title, BlkPresFileIO::WritePresData);
}

BlkPresData *BlkPresFileIO::ReadPresData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_pres_data"))
        return nullptr;
    auto *data = new BlkPresData;
    while (NextInside(reader, "blk_pres_data")) {
        if (IsStart(reader, "title"))
            data->title = ElementText(reader);
        else if (IsStart(reader, "hsize"))
            data->hsize = ElementText(reader).toInt();
        else if (IsStart(reader, "vsize"))
            data->vsize = ElementText(reader).toInt();
        else if (IsStart(reader, "aspect"))
            data->aspect = ElementText(reader).toInt() != 0;
        else if (IsStart(reader, "border"))
            data->border = ElementText(reader).toInt() != 0;
        else if (IsStart(reader, "blk_img"))
            ReadImage(reader, data);
        else if (IsStart(reader, "blk_img_text"))
            ReadImageText(reader, data);
        else if (IsStart(reader, "blk_port"))
            ReadPort(reader, data);
        // other elements are passed over; their children still come through this loop
    }
    if (reader->hasError()) {
        FreeBlkPresData(data);
        return nullptr;
    }
    return data;
}

void BlkPresFileIO::WritePresData(QXmlStreamWriter *writer, const BlkPresData *data)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("blk_pres_data"));
    writer->writeTextElement(QStringLiteral("title"), data->title);
    writer->writeTextElement(QStringLiteral("hsize"), QString::number(data->hsize));
    writer->writeTextElement(QStringLiteral("vsize"), QString::number(data->vsize));
    writer->writeTextElement(QStringLiteral("aspect"), FlagString(data->aspect));
    writer->writeTextElement(QStringLiteral("border"), FlagString(data->border));
    for (const BlkImage *image : data->images) {
        writer->writeEmptyElement(QStringLiteral("blk_img"));
        writer->writeAttribute(QStringLiteral("name"), image->name);
        writer->writeAttribute(QStringLiteral("para_grp"), image->para_grp);
        writer->writeAttribute(QStringLiteral("para_entity"), image->para_entity);
        writer->writeAttribute(QStringLiteral("para_value"), image->para_value);
    }
    for (const BlkImageText *text : data->texts) {
        writer->writeEmptyElement(QStringLiteral("blk_img_text"));
        writer->writeAttribute(QStringLiteral("img_name"), text->img_name);
        writer->writeAttribute(QStringLiteral("text"), text->text);
        writer->writeAttribute(QStringLiteral("para_grp"), text->para_grp);
        writer->writeAttribute(QStringLiteral("para_entity"), text->para_entity);
    }
    for (const BlkPort *port : data->ports) {
        writer->writeEmptyElement(QStringLiteral("blk_port"));
        writer->writeAttribute(QStringLiteral("name"), port->name);
        writer->writeAttribute(QStringLiteral("dis_text"), port->dis_text);
        writer->writeAttribute(QStringLiteral("type"), port->type);
        writer->writeAttribute(QStringLiteral("placement"), port->placement);
        writer->writeAttribute(QStringLiteral("per_distance"), FloatText(port->per_distance));
        writer->writeAttribute(QStringLiteral("text_dx"), FloatText(port->text_dx));
        writer->writeAttribute(QStringLiteral("text_dy"), FloatText(port->text_dy));
        writer->writeAttribute(QStringLiteral("conn_req"), QString::number(port->conn_req));
        writer->writeAttribute(QStringLiteral("vport_para"), QString::number(port->vport_para));
        writer->writeAttribute(QStringLiteral("vport_grp"), port->vport_grp);
        writer->writeAttribute(QStringLiteral("vport_entity"), port->vport_entity);
        writer->writeAttribute(QStringLiteral("vport_value"), port->vport_value);
        writer->writeAttribute(QStringLiteral("mport_para"), QString::number(port->mport_para));
        writer->writeAttribute(QStringLiteral("mport_grp"), port->mport_grp);
        writer->writeAttribute(QStringLiteral("mport_entity"), port->mport_entity);
    }
    writer->writeEndElement();
}
