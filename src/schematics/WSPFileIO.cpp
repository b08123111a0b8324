#include "schematics/WSPFileIO.h"

#include "app/AppSettings.h"
#include "app/XmlText.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "schematics/WspData.h"

namespace {

bool FlagText(const QString &text)
{
    return text.toInt() != 0;
}

// Numbers of positions are read as floats: deliberate, the files hold no more precision.
void ReadPoint(const QString &text, QPointF *point)
{
    const QStringList parts = text.split(',', Qt::SkipEmptyParts);
    if (parts.size() == 2)
        *point = QPointF(parts[0].toFloat(), parts[1].toFloat());
}

void ReadRect(const QString &text, QRectF *rect)
{
    const QStringList parts = text.split(',', Qt::SkipEmptyParts);
    if (parts.size() == 4)
        *rect = QRectF(parts[0].toFloat(), parts[1].toFloat(), parts[2].toFloat(),
                       parts[3].toFloat());
}

// "x,y;x,y;...": a part with fewer than two numbers is dropped, extra numbers are ignored.
QList<QPointF> ReadPoints(const QString &text)
{
    QList<QPointF> points;
    for (const QString &part : text.split(';', Qt::SkipEmptyParts)) {
        const QStringList numbers = part.split(',', Qt::SkipEmptyParts);
        if (numbers.size() >= 2)
            points.append(QPointF(numbers[0].toFloat(), numbers[1].toFloat()));
    }
    return points;
}

// An empty value stays empty rather than becoming the first search directory, so that an
// old-style item with an empty ref_path is still recognised below.
QString ResolveRef(const QStringList &search_dirs, const QString &value)
{
    return value.isEmpty() ? value : ResolvePath(search_dirs, value);
}

// Files written in the old manner held the block's full path in ref_name.
void SplitOldStyleRef(WSP_BLK_ITEM_STRUCT *item)
{
    if (item->ref_path.size() >= item->ref_name.size())
        return;
    item->ref_path = item->ref_name;
    const QString last = item->ref_name.mid(item->ref_name.lastIndexOf('/') + 1);
    if (!last.isEmpty())
        item->ref_name = last;
}

} // namespace

WSPFileIO::WSPFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                     QObject *parent)
    : AbstractFileHandling(root_dir, error_list, silent, 1, 1, 0, parent)
{
}

WspData *WSPFileIO::LoadWsp(const QString &root, const QString &path,
                            const QStringList &search_dirs, const QString &title)
{
    QXmlStreamReader *stream = OpenForRead(path, title);
    if (!stream)
        return nullptr;
    WspData *data = ReadWsp(stream, RelativeToRoot(root, path), search_dirs);
    if (!CloseRead(path, title)) {
        FreeWsp(data);
        return nullptr;
    }
    return data;
}

WspData *WSPFileIO::ReadWsp(QXmlStreamReader *reader, const QString &wsp_path,
                            const QStringList &search_dirs)
{
    while (!reader->atEnd() && !reader->isStartElement())
        reader->readNext();
    if (reader->hasError())
        return nullptr;
    auto *data = new WspData;
    // Any other root is not a workspace: an empty schematic, not an error.
    if (!IsStart(reader, "wsp_data"))
        return data;
    while (NextInside(reader, "wsp_data")) {
        if (IsStart(reader, "enabled")) {
            data->enabled = FlagText(ElementText(reader));
        } else if (IsStart(reader, "bitem")) {
            if (WSP_BLK_ITEM_STRUCT *item = ReadBlkItem(reader, wsp_path, search_dirs))
                data->bitems.append(item);
        } else if (IsStart(reader, "citem")) {
            if (WspConnectRec *item = ReadConnect(reader))
                data->citems.append(item);
        } else if (IsStart(reader, "titem")) {
            if (WspTextRec *item = ReadText(reader))
                data->titems.append(item);
        } else if (IsStart(reader, "node")) {
            if (WspNodeRec *node = ReadNode(reader))
                data->nodes.append(node);
        }
        // other elements are passed over token by token, their children with them
    }
    if (reader->hasError()) {
        FreeWsp(data);
        return nullptr;
    }
    return data;
}

WSP_BLK_ITEM_STRUCT *WSPFileIO::ReadBlkItem(QXmlStreamReader *reader, const QString &wsp_path,
                                            const QStringList &search_dirs)
{
    auto *item = new WSP_BLK_ITEM_STRUCT;
    item->wsp_path = wsp_path;
    int para_count = 0;
    while (NextInside(reader, "bitem")) {
        if (!reader->isStartElement())
            continue;
        const QStringRef name = reader->name();
        if (name == QLatin1String("id")) item->id = ElementText(reader).toUInt();
        else if (name == QLatin1String("ref_id")) item->ref_id = ElementText(reader).toUInt();
        else if (name == QLatin1String("ref_name"))
            item->ref_name = ResolveRef(search_dirs, ElementText(reader));
        else if (name == QLatin1String("ref_path"))
            item->ref_path = ResolveRef(search_dirs, ElementText(reader));
        else if (name == QLatin1String("ver")) item->ver = ElementText(reader);
        else if (name == QLatin1String("custom_type")) item->custom_type = ElementText(reader).toInt();
        else if (name == QLatin1String("ui_grp")) item->ui_grp = ElementText(reader).toInt();
        else if (name == QLatin1String("ui_wnd")) item->ui_wnd = ElementText(reader).toInt();
        else if (name == QLatin1String("ord_type")) item->ord_type = ElementText(reader).toInt();
        else if (name == QLatin1String("ord_id")) item->ord_id = ElementText(reader).toUInt();
        else if (name == QLatin1String("name")) item->name = ElementText(reader);
        else if (name == QLatin1String("linkid")) item->linkid = ElementText(reader).toUInt();
        else if (name == QLatin1String("pos")) ReadPoint(ElementText(reader), &item->pos);
        else if (name == QLatin1String("enable")) item->enable = FlagText(ElementText(reader));
        else if (name == QLatin1String("hf")) item->hf = FlagText(ElementText(reader));
        else if (name == QLatin1String("vf")) item->vf = FlagText(ElementText(reader));
        else if (name == QLatin1String("an")) item->an = ElementText(reader).toFloat();
        else if (name == QLatin1String("sx")) item->sx = ElementText(reader).toFloat();
        else if (name == QLatin1String("sy")) item->sy = ElementText(reader).toFloat();
        else if (name == QLatin1String("rt")) ReadRect(ElementText(reader), &item->rt);
        else if (name == QLatin1String("blk_para")) {
            // Parameters, then initial conditions; further lists are skipped whole, so that
            // their entities' elements are not taken for the item's own.
            if (para_count == 0)
                item->para = BlkParaFileIO::ReadBlkPara(reader, false);
            else if (para_count == 1)
                item->ic = BlkParaFileIO::ReadBlkPara(reader, false);
            else
                reader->skipCurrentElement();
            ++para_count;
        }
        // anything else is passed over
    }
    if (reader->hasError() || !item->para) {
        FreeBlkItem(item);
        return nullptr;
    }
    SplitOldStyleRef(item);
    return item;
}

WspConnectRec *WSPFileIO::ReadConnect(QXmlStreamReader *reader)
{
    auto *item = new WspConnectRec;
    while (NextInside(reader, "citem")) {
        if (IsStart(reader, "id")) {
            item->id = ElementText(reader).toUInt();
        } else if (IsStart(reader, "cl")) {
            item->cl = ElementText(reader).toUInt();
            if ((item->cl & 0xff000000u) == 0)
                item->cl |= 0xc8000000u; // a colour without alpha is drawn at 200
        } else if (IsStart(reader, "wd")) {
            item->wd = ElementText(reader).toInt();
        } else if (IsStart(reader, "st")) {
            item->st = ElementText(reader).toInt();
        } else if (IsStart(reader, "pos")) {
            ReadPoint(ElementText(reader), &item->pos);
        } else if (IsStart(reader, "pts")) {
            item->pts = ReadPoints(ElementText(reader));
        }
    }
    if (reader->hasError() || item->pts.isEmpty()) {
        delete item;
        return nullptr;
    }
    return item;
}

WspTextRec *WSPFileIO::ReadText(QXmlStreamReader *reader)
{
    auto *item = new WspTextRec;
    while (NextInside(reader, "titem")) {
        if (IsStart(reader, "id"))
            item->id = ElementText(reader).toUInt();
        else if (IsStart(reader, "pos"))
            ReadPoint(ElementText(reader), &item->pos);
        else if (IsStart(reader, "text"))
            item->text = ElementText(reader);
    }
    if (reader->hasError() || item->text.isEmpty()) {
        delete item;
        return nullptr;
    }
    return item;
}

WspNodeRec *WSPFileIO::ReadNode(QXmlStreamReader *reader)
{
    auto *node = new WspNodeRec;
    while (NextInside(reader, "node")) {
        if (IsStart(reader, "blks")) {
            for (const QString &part : ElementText(reader).split(',', Qt::SkipEmptyParts))
                node->blks.append(part.toUInt());
        } else if (IsStart(reader, "ports")) {
            node->ports = ElementText(reader).split(',', Qt::SkipEmptyParts);
        }
    }
    if (reader->hasError()) {
        delete node;
        return nullptr;
    }
    return node;
}
