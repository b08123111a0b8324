#include "drawing/ImgEditFileIO.h"

#include "app/XmlText.h"
#include "drawing/ImgDataRec.h"

#include <QColor>
#include <QXmlStreamWriter>

namespace {

// "r,g,b,a"; any other number of parts leaves the colour as it was.
void ReadColor(const QString &text, QColor &color)
{
    const QStringList parts = text.split(',');
    if (parts.size() != 4)
        return;
    auto part = [&](int i) { return qBound(0, parts[i].trimmed().toInt(), 255); };
    color = QColor(part(0), part(1), part(2), part(3));
}

QString ColorText(const QColor &color)
{
    return QStringLiteral("%1,%2,%3,%4")
        .arg(color.red()).arg(color.green()).arg(color.blue()).arg(color.alpha());
}

void ReadPen(QXmlStreamReader *reader, QPen &pen)
{
    const QString style = Attr(reader, "style");
    const QString width = Attr(reader, "width");
    const QString color = Attr(reader, "color");
    bool ok = false;
    // Styles the pen cannot take (custom dash needs a pattern we do not store) keep the default.
    const uint style_value = style.toUInt(&ok);
    if (ok && style_value <= Qt::CustomDashLine)
        pen.setStyle(Qt::PenStyle(style_value));
    const int width_value = width.toInt(&ok);
    if (ok && width_value >= 0)
        pen.setWidth(width_value);
    if (!color.isEmpty()) {
        QColor value = pen.color();
        ReadColor(color, value);
        pen.setColor(value);
    }
}

void ReadBrush(QXmlStreamReader *reader, QBrush &brush)
{
    const QString style = Attr(reader, "style");
    const QString color = Attr(reader, "color");
    bool ok = false;
    // Gradient and texture styles need data a drawing does not carry.
    const uint style_value = style.toUInt(&ok);
    if (ok && style_value <= Qt::DiagCrossPattern)
        brush.setStyle(Qt::BrushStyle(style_value));
    if (!color.isEmpty()) {
        QColor value = brush.color();
        ReadColor(color, value);
        brush.setColor(value);
    }
}

// "x,y"; an empty number is 0. Parsed as float on purpose: the drawings were made that way.
void ReadPoint(const QString &text, QList<QPointF> &points)
{
    const QStringList parts = text.split(',');
    if (parts.size() != 2)
        return;
    points.append(QPointF(double(parts[0].toFloat()), double(parts[1].toFloat())));
}

void ReadPoints(QXmlStreamReader *reader, QList<QPointF> &points)
{
    while (NextInside(reader, "points"))
        if (IsStart(reader, "point"))
            ReadPoint(ElementText(reader), points);
}

void ReadTextAttrs(QXmlStreamReader *reader, ImgItemRec *item)
{
    const QString t = Attr(reader, "t");
    const QString f = Attr(reader, "f");
    const QString h = Attr(reader, "h");
    const QString w = Attr(reader, "w");
    const QString a = Attr(reader, "a");
    if (!t.isEmpty()) item->text = t;
    if (!f.isEmpty()) item->font = f;
    if (!h.isEmpty()) item->h = h.toFloat();
    if (!w.isEmpty()) item->w = w.toFloat();
    if (!a.isEmpty()) item->a = a.toFloat();
}

// Every point within 1.0 of the first one on both axes: nothing worth drawing.
bool IsDegenerate(const QList<QPointF> &points)
{
    const QPointF first = points.first();
    for (const QPointF &point : points)
        if (!(qAbs(point.x() - first.x()) < 1.0 && qAbs(point.y() - first.y()) < 1.0))
            return false;
    return true;
}

void ReadItem(QXmlStreamReader *reader, ImgDataRec *data)
{
    auto *item = new ImgItemRec;
    while (NextInside(reader, "item")) {
        if (!reader->isStartElement())
            continue;
        const QStringRef name = reader->name();
        if (name == QLatin1String("id")) {
            const QString text = ElementText(reader);
            if (!text.isEmpty()) item->id = text.toUInt();
        } else if (name == QLatin1String("z")) {
            const QString text = ElementText(reader);
            if (!text.isEmpty()) item->z = text.toFloat();
        } else if (name == QLatin1String("type")) {
            const QString text = ElementText(reader);
            if (!text.isEmpty()) item->type = text.toInt();
        } else if (name == QLatin1String("pen")) {
            ReadPen(reader, item->pen);
        } else if (name == QLatin1String("brush")) {
            ReadBrush(reader, item->brush);
        } else if (name == QLatin1String("points")) {
            ReadPoints(reader, item->points);
        } else if (name == QLatin1String("text")) {
            ReadTextAttrs(reader, item);
        }
        // anything else is passed over
    }
    // Invalid and degenerate primitives are dropped without a message; the drawing survives.
    if (reader->hasError() || item->type == 0 || item->points.isEmpty() ||
        IsDegenerate(item->points))
        FreeImgItemRec(item);
    else
        data->items.append(item);
}

} // namespace

ImgEditFileIO::ImgEditFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                             QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 0, 0, 0, parent)
{
}

ImgDataRec *ImgEditFileIO::LoadImgFile(const QString &path, const QString &title)
{
    return LoadSection<ImgDataRec>(path, title, ImgEditFileIO::ReadImgData, FreeImgDataRec);
}

ImgDataRec *ImgEditFileIO::ReadImgData(QXmlStreamReader *reader)
{
    if (!SeekStart(reader, "imgdata"))
        return nullptr;
    auto *data = new ImgDataRec;
    while (NextInside(reader, "imgdata")) {
        if (IsStart(reader, "img_name"))
            data->img_name = ElementText(reader).remove(QStringLiteral(".vimg"));
        else if (IsStart(reader, "item"))
            ReadItem(reader, data);
    }
    if (reader->hasError()) {
        FreeImgDataRec(data);
        return nullptr;
    }
    return data;
}

void ImgEditFileIO::WriteImgData(QXmlStreamWriter *writer, const ImgDataRec *data)
{
    if (!data)
        return;
    writer->writeStartElement(QStringLiteral("imgdata"));
    writer->writeTextElement(QStringLiteral("img_name"), data->img_name);
    for (const ImgItemRec *item : data->items) {
        writer->writeStartElement(QStringLiteral("item"));
        writer->writeTextElement(QStringLiteral("id"), QString::number(item->id));
        writer->writeTextElement(QStringLiteral("z"), QString::number(item->z, 'f', 2));
        writer->writeTextElement(QStringLiteral("type"), QString::number(item->type));
        writer->writeEmptyElement(QStringLiteral("pen"));
        writer->writeAttribute(QStringLiteral("style"), QString::number(int(item->pen.style())));
        writer->writeAttribute(QStringLiteral("width"), QString::number(item->pen.width()));
        writer->writeAttribute(QStringLiteral("color"), ColorText(item->pen.color()));
        writer->writeEmptyElement(QStringLiteral("brush"));
        writer->writeAttribute(QStringLiteral("style"), QString::number(int(item->brush.style())));
        writer->writeAttribute(QStringLiteral("color"), ColorText(item->brush.color()));
        writer->writeStartElement(QStringLiteral("points"));
        for (const QPointF &point : item->points)
            writer->writeTextElement(QStringLiteral("point"),
                                     QString::number(point.x(), 'g', 6) + ',' +
                                         QString::number(point.y(), 'g', 6));
        writer->writeEndElement();
        writer->writeEmptyElement(QStringLiteral("text"));
        writer->writeAttribute(QStringLiteral("t"), item->text);
        writer->writeAttribute(QStringLiteral("f"), item->font);
        writer->writeAttribute(QStringLiteral("h"), QString::number(item->h, 'f', 1));
        writer->writeAttribute(QStringLiteral("w"), QString::number(item->w, 'f', 1));
        writer->writeAttribute(QStringLiteral("a"), QString::number(item->a, 'f', 1));
        writer->writeEndElement();
    }
    writer->writeEndElement();
}
