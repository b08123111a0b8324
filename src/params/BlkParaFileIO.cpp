#include "params/BlkParaFileIO.h"

#include "app/XmlText.h"
#include "params/BlkParaData.h"

#include <QXmlStreamWriter>

namespace {

bool FlagText(const QString &text)
{
    return text.toUShort() != 0;
}

QString FlagString(quint8 flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

// "file*item_id*group*value|..."; a part without exactly four non-empty pieces is dropped, so an
// override with an empty piece is written but lost on the way back.
void ReadOverrides(const QString &text, ParaEntity *entity)
{
    for (const QString &part : text.split('|', Qt::SkipEmptyParts)) {
        const QStringList pieces = part.split('*', Qt::SkipEmptyParts);
        if (pieces.size() != 4)
            continue;
        auto *ovrd = new ParaOvrd;
        ovrd->file = pieces[0];
        ovrd->item_id = pieces[1].toUInt();
        ovrd->group = pieces[2];
        ovrd->value = pieces[3];
        ovrd->owner = entity;
        entity->ovrds.append(ovrd);
    }
}

void ReadControl(QXmlStreamReader *reader, ParaEntity *entity)
{
    auto *con = new ParaCon;
    con->header = Attr(reader, "header");
    con->label = Attr(reader, "label");
    con->value = Attr(reader, "value");
    con->sel_idx = Attr(reader, "sel_idx").toInt();
    con->act_type = Attr(reader, "act_type");
    if (SkipToEnd(reader, "para_con"))
        entity->para_con.append(con);
    else
        delete con;
}

ParaEntity *ReadEntity(QXmlStreamReader *reader)
{
    auto *entity = new ParaEntity;
    while (NextInside(reader, "para_entity")) {
        if (!reader->isStartElement())
            continue;
        const QStringRef name = reader->name();
        if (name == QLatin1String("label")) entity->label = ElementText(reader);
        else if (name == QLatin1String("para_var")) entity->para_var = ElementText(reader);
        else if (name == QLatin1String("port_var")) entity->port_var = ElementText(reader);
        else if (name == QLatin1String("unit")) entity->unit = ElementText(reader);
        else if (name == QLatin1String("values")) entity->values.append(ElementText(reader));
        else if (name == QLatin1String("ivalues")) entity->ivalues.append(ElementText(reader));
        else if (name == QLatin1String("val_type")) entity->val_type = ElementText(reader);
        else if (name == QLatin1String("val_size")) entity->val_size = ElementText(reader);
        else if (name == QLatin1String("var_type")) entity->var_type = ElementText(reader).toInt();
        else if (name == QLatin1String("visible")) entity->visible = FlagText(ElementText(reader));
        else if (name == QLatin1String("enable")) entity->enable = FlagText(ElementText(reader));
        else if (name == QLatin1String("license")) entity->license = FlagText(ElementText(reader));
        else if (name == QLatin1String("readonly")) entity->readonly = FlagText(ElementText(reader));
        else if (name == QLatin1String("sigpara")) entity->sigpara = FlagText(ElementText(reader));
        else if (name == QLatin1String("usr_visible")) entity->usr_visible = FlagText(ElementText(reader));
        else if (name == QLatin1String("usr_enable")) entity->usr_enable = FlagText(ElementText(reader));
        else if (name == QLatin1String("sel_val")) entity->sel_val = ElementText(reader);
        else if (name == QLatin1String("sel_idx")) entity->sel_idx = ElementText(reader).toInt();
        else if (name == QLatin1String("sel_val_gt")) entity->sel_val_gt = ElementText(reader);
        else if (name == QLatin1String("sel_val_lt")) entity->sel_val_lt = ElementText(reader);
        else if (name == QLatin1String("sel_val_expr")) entity->sel_val_expr = ElementText(reader);
        else if (name == QLatin1String("para_con")) ReadControl(reader, entity);
        else if (name == QLatin1String("ovrds")) ReadOverrides(ElementText(reader), entity);
        // anything else is passed over
    }
    return entity;
}

void ReadGroup(QXmlStreamReader *reader, BlkParaData *data)
{
    auto *group = new ParaGroup;
    while (NextInside(reader, "para_grp")) {
        if (IsStart(reader, "header"))
            group->header = ElementText(reader);
        else if (IsStart(reader, "helpfile"))
            group->helpfile = ElementText(reader);
        else if (IsStart(reader, "para_entity"))
            group->para_entity.append(ReadEntity(reader));
    }
    // A group without a header has no key and is dropped.
    if (group->header.isEmpty() || reader->hasError())
        FreeParaGroup(group);
    else
        data->para_grp.append(group);
}

ModelSubCat *ReadSubCat(QXmlStreamReader *reader)
{
    auto *sub = new ModelSubCat;
    while (NextInside(reader, "model_subcat")) {
        if (IsStart(reader, "group"))
            sub->group = ElementText(reader);
        else if (IsStart(reader, "entity"))
            sub->entity = ElementText(reader);
        else if (IsStart(reader, "vals"))
            sub->vals = ElementText(reader).split(',');
    }
    return sub;
}

void ReadModelCat(QXmlStreamReader *reader, BlkParaData *data)
{
    auto *cat = new ModelCat;
    while (NextInside(reader, "model_cat"))
        if (IsStart(reader, "model_subcat"))
            cat->subcats.append(ReadSubCat(reader));
    // A category without sub-categories selects nothing and is dropped.
    if (cat->subcats.isEmpty() || reader->hasError())
        FreeModelCat(cat);
    else
        data->model_cat.append(cat);
}

void WriteEntity(QXmlStreamWriter *writer, const ParaEntity *entity, qint32 full)
{
    writer->writeStartElement(QStringLiteral("para_entity"));
    writer->writeTextElement(QStringLiteral("label"), entity->label);
    if (full) {
        writer->writeTextElement(QStringLiteral("para_var"), entity->para_var);
        writer->writeTextElement(QStringLiteral("port_var"), entity->port_var);
        writer->writeTextElement(QStringLiteral("unit"), entity->unit);
        for (const QString &value : entity->values)
            writer->writeTextElement(QStringLiteral("values"), value);
        for (const QString &value : entity->ivalues)
            writer->writeTextElement(QStringLiteral("ivalues"), value);
        writer->writeTextElement(QStringLiteral("val_type"), entity->val_type);
        writer->writeTextElement(QStringLiteral("val_size"), entity->val_size);
        writer->writeTextElement(QStringLiteral("var_type"), QString::number(entity->var_type));
        writer->writeTextElement(QStringLiteral("visible"), FlagString(entity->visible));
        writer->writeTextElement(QStringLiteral("enable"), FlagString(entity->enable));
        writer->writeTextElement(QStringLiteral("license"), FlagString(entity->license));
        writer->writeTextElement(QStringLiteral("readonly"), FlagString(entity->readonly));
        writer->writeTextElement(QStringLiteral("sigpara"), FlagString(entity->sigpara));
    }
    writer->writeTextElement(QStringLiteral("usr_visible"), FlagString(entity->usr_visible));
    writer->writeTextElement(QStringLiteral("usr_enable"), FlagString(entity->usr_enable));
    writer->writeTextElement(QStringLiteral("sel_val"), entity->sel_val);
    writer->writeTextElement(QStringLiteral("sel_idx"), QString::number(entity->sel_idx));
    writer->writeTextElement(QStringLiteral("sel_val_gt"), entity->sel_val_gt);
    writer->writeTextElement(QStringLiteral("sel_val_lt"), entity->sel_val_lt);
    writer->writeTextElement(QStringLiteral("sel_val_expr"), entity->sel_val_expr);
    if (full) {
        for (const ParaCon *con : entity->para_con) {
            writer->writeEmptyElement(QStringLiteral("para_con"));
            writer->writeAttribute(QStringLiteral("header"), con->header);
            writer->writeAttribute(QStringLiteral("label"), con->label);
            writer->writeAttribute(QStringLiteral("value"), con->value);
            writer->writeAttribute(QStringLiteral("sel_idx"), QString::number(con->sel_idx));
            writer->writeAttribute(QStringLiteral("act_type"), con->act_type);
        }
        QStringList ovrds;
        for (const ParaOvrd *ovrd : entity->ovrds)
            ovrds.append(QStringList{ovrd->file, QString::number(ovrd->item_id), ovrd->group,
                                     ovrd->value}.join('*'));
        writer->writeTextElement(QStringLiteral("ovrds"), ovrds.join('|'));
    }
    writer->writeEndElement();
}

} // namespace

BlkParaFileIO::BlkParaFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             qint32 full, QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent), full(full)
{
}

BlkParaData *BlkParaFileIO::LoadFile(const QString &path, const QString &title)
{
    return LoadSection<BlkParaData>(
        path, title, [](QXmlStreamReader *reader) { return ReadBlkPara(reader, true); }, FreeBlkParaData);
}

bool BlkParaFileIO::SaveFile(const QString &path, const BlkParaData *data, const QString &title)
{
    return SaveSection(path, data, title, [this](QXmlStreamWriter *writer, const BlkParaData *section) {
        WriteBlkPara(writer, section, full);
    });
}

BlkParaData *BlkParaFileIO::ReadBlkPara(QXmlStreamReader *reader, bool seek_root)
{
    if (seek_root && !SeekStart(reader, "blk_para"))
        return nullptr;
    auto *data = new BlkParaData;
    while (NextInside(reader, "blk_para")) {
        if (IsStart(reader, "title"))
            data->title = ElementText(reader);
        else if (IsStart(reader, "para_grp"))
            ReadGroup(reader, data);
        else if (IsStart(reader, "model_cat"))
            ReadModelCat(reader, data);
    }
    if (reader->hasError()) {
        FreeBlkParaData(data);
        return nullptr;
    }
    return data;
}

void BlkParaFileIO::WriteBlkPara(QXmlStreamWriter *writer, const BlkParaData *data, qint32 full)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("blk_para"));
    writer->writeTextElement(QStringLiteral("title"), data->title);
    for (const ParaGroup *group : data->para_grp) {
        writer->writeStartElement(QStringLiteral("para_grp"));
        writer->writeTextElement(QStringLiteral("header"), group->header);
        if (full)
            writer->writeTextElement(QStringLiteral("helpfile"), group->helpfile);
        for (const ParaEntity *entity : group->para_entity)
            WriteEntity(writer, entity, full);
        writer->writeEndElement();
    }
    for (const ModelCat *cat : data->model_cat) {
        writer->writeStartElement(QStringLiteral("model_cat"));
        for (const ModelSubCat *sub : cat->subcats) {
            writer->writeStartElement(QStringLiteral("model_subcat"));
            writer->writeTextElement(QStringLiteral("group"), sub->group);
            writer->writeTextElement(QStringLiteral("entity"), sub->entity);
            writer->writeTextElement(QStringLiteral("vals"), sub->vals.join(','));
            writer->writeEndElement();
        }
        writer->writeEndElement();
    }
    writer->writeEndElement();
}
