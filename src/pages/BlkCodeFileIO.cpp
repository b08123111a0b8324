#include "pages/BlkCodeFileIO.h"

#include "app/XmlText.h"
#include "pages/AttrElement.h"
#include "pages/BlkCodeData.h"

#include <QXmlStreamWriter>

namespace {

void ReadDim(QXmlStreamReader *reader, BlkCodePort *port)
{
    auto *dim = new BlkPortDim;
    port->dims.append(dim);
    QString para2;
    ReadAttrElement(reader, "blk_dim", [&](QXmlStreamReader *r) {
        dim->array_size = Attr(r, "array_size").toInt();
        dim->para1 = Attr(r, "para1");
        para2 = Attr(r, "para2");
    });
    // Older files kept a group and an entity apart; together they are one script field.
    if (!para2.isEmpty())
        dim->para1 = "[" + dim->para1 + "#" + para2 + "]";
}

void ReadPort(QXmlStreamReader *reader, BlkCodeData *data)
{
    auto *port = new BlkCodePort;
    port->mem_type = QStringLiteral("Cacheable"); // older files may leave it out
    data->ports.append(port);
    while (NextInside(reader, "blk_cport")) {
        if (!reader->isStartElement())
            continue;
        const QStringRef name = reader->name();
        if (name == QLatin1String("port_name")) port->port_name = ElementText(reader);
        else if (name == QLatin1String("data_name")) port->data_name = ElementText(reader);
        else if (name == QLatin1String("data_type")) port->data_type = ElementText(reader);
        else if (name == QLatin1String("mem_type")) port->mem_type = ElementText(reader);
        else if (name == QLatin1String("mem_alloc")) port->mem_alloc = ElementText(reader);
        else if (name == QLatin1String("domain")) port->domain = ElementText(reader);
        else if (name == QLatin1String("units")) port->units = ElementText(reader);
        else if (name == QLatin1String("dim_dependency")) port->dim_dependency = ElementText(reader);
        else if (name == QLatin1String("mem_extra")) port->mem_extra = ElementText(reader);
        else if (name == QLatin1String("mem_offset")) port->mem_offset = ElementText(reader);
        else if (name == QLatin1String("blk_dim")) ReadDim(reader, port);
        // anything else is passed over
    }
}

void ReadFunc(QXmlStreamReader *reader, BlkCodeData *data)
{
    auto *func = new BlkCodeFunc;
    data->funcs.append(func);
    ReadAttrElement(reader, "blk_func", [func](QXmlStreamReader *r) {
        func->func_name = Attr(r, "func_name");
        func->para_grp = Attr(r, "para_grp");
        func->para_en_name = Attr(r, "para_en_name");
        func->para_en_val = Attr(r, "para_en_val");
        func->port = Attr(r, "port");
        func->dim = Attr(r, "dim");
        func->size = Attr(r, "size");
    });
}

void ReadPhyElement(QXmlStreamReader *reader, BlkCodeData *data)
{
    auto *element = new BlkPhyElement;
    data->elements.append(element);
    ReadAttrElement(reader, "blk_phy_el", [element](QXmlStreamReader *r) {
        element->port1 = Attr(r, "port1");
        element->port2 = Attr(r, "port2");
        element->el_name = Attr(r, "el_name");
        element->el_type = Attr(r, "el_type").toInt();
        element->el_mf = Attr(r, "el_mf");
        element->elval_para_grp = Attr(r, "elval_para_grp");
        element->elval_para_en = Attr(r, "elval_para_en");
        element->elen_para_grp = Attr(r, "elen_para_grp");
        element->elen_para_en = Attr(r, "elen_para_en");
        element->elen_para_en_val = Attr(r, "elen_para_en_val");
    });
}

} // namespace

BlkCodeFileIO::BlkCodeFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

BlkCodeData *BlkCodeFileIO::LoadFile(const QString &path, const QString &title)
{
    return LoadSection<BlkCodeData>(path, title, BlkCodeFileIO::ReadCodeData, FreeBlkCodeData);
}

bool BlkCodeFileIO::SaveFile(const QString &path, const BlkCodeData *data, const QString &title)
{
    return SaveSection(path, data, title, BlkCodeFileIO::WriteCodeData);
}

BlkCodeData *BlkCodeFileIO::ReadCodeData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "blk_code_data"))
        return nullptr;
    auto *data = new BlkCodeData;
    while (NextInside(reader, "blk_code_data")) {
        if (IsStart(reader, "create_inst"))
            data->create_inst = ElementText(reader).toUInt() != 0;
        else if (IsStart(reader, "blk_cport"))
            ReadPort(reader, data);
        else if (IsStart(reader, "blk_func"))
            ReadFunc(reader, data);
        else if (IsStart(reader, "blk_phy_el"))
            ReadPhyElement(reader, data);
        // other elements are passed over; their children still come through this loop
    }
    if (reader->hasError()) {
        FreeBlkCodeData(data);
        return nullptr;
    }
    LinkPhyElements(data);
    return data;
}

void BlkCodeFileIO::WriteCodeData(QXmlStreamWriter *writer, const BlkCodeData *data)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("blk_code_data"));
    writer->writeTextElement(QStringLiteral("create_inst"),
                             data->create_inst ? QStringLiteral("1") : QStringLiteral("0"));
    for (const BlkCodePort *port : data->ports) {
        writer->writeStartElement(QStringLiteral("blk_cport"));
        writer->writeTextElement(QStringLiteral("port_name"), port->port_name);
        writer->writeTextElement(QStringLiteral("data_name"), port->data_name);
        writer->writeTextElement(QStringLiteral("data_type"), port->data_type);
        writer->writeTextElement(QStringLiteral("mem_type"), port->mem_type);
        writer->writeTextElement(QStringLiteral("mem_alloc"), port->mem_alloc);
        writer->writeTextElement(QStringLiteral("domain"), port->domain);
        writer->writeTextElement(QStringLiteral("units"), port->units);
        writer->writeTextElement(QStringLiteral("dim_dependency"), port->dim_dependency);
        writer->writeTextElement(QStringLiteral("mem_extra"), port->mem_extra);
        writer->writeTextElement(QStringLiteral("mem_offset"), port->mem_offset);
        for (const BlkPortDim *dim : port->dims) {
            // para2 is never written: the reader has already folded it into para1.
            writer->writeEmptyElement(QStringLiteral("blk_dim"));
            writer->writeAttribute(QStringLiteral("array_size"), QString::number(dim->array_size));
            writer->writeAttribute(QStringLiteral("para1"), dim->para1);
        }
        writer->writeEndElement();
    }
    // Rows without a method name or with a port missing are deliberately dropped here only.
    for (const BlkCodeFunc *func : data->funcs) {
        if (func->func_name.isEmpty())
            continue;
        writer->writeEmptyElement(QStringLiteral("blk_func"));
        writer->writeAttribute(QStringLiteral("func_name"), func->func_name);
        writer->writeAttribute(QStringLiteral("para_grp"), func->para_grp);
        writer->writeAttribute(QStringLiteral("para_en_name"), func->para_en_name);
        writer->writeAttribute(QStringLiteral("para_en_val"), func->para_en_val);
        writer->writeAttribute(QStringLiteral("port"), func->port);
        writer->writeAttribute(QStringLiteral("dim"), func->dim);
        writer->writeAttribute(QStringLiteral("size"), func->size);
    }
    for (const BlkPhyElement *element : data->elements) {
        if (element->port1.isEmpty() || element->port2.isEmpty())
            continue;
        writer->writeEmptyElement(QStringLiteral("blk_phy_el"));
        writer->writeAttribute(QStringLiteral("port1"), element->port1);
        writer->writeAttribute(QStringLiteral("port2"), element->port2);
        writer->writeAttribute(QStringLiteral("el_name"), element->el_name);
        writer->writeAttribute(QStringLiteral("el_type"), QString::number(element->el_type));
        writer->writeAttribute(QStringLiteral("el_mf"), element->el_mf);
        writer->writeAttribute(QStringLiteral("elval_para_grp"), element->elval_para_grp);
        writer->writeAttribute(QStringLiteral("elval_para_en"), element->elval_para_en);
        writer->writeAttribute(QStringLiteral("elen_para_grp"), element->elen_para_grp);
        writer->writeAttribute(QStringLiteral("elen_para_en"), element->elen_para_en);
        writer->writeAttribute(QStringLiteral("elen_para_en_val"), element->elen_para_en_val);
    }
    writer->writeEndElement();
}
