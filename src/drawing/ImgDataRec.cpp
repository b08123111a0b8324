#include "drawing/ImgDataRec.h"

#include <QColor>

ImgItemRec::ImgItemRec()
{
    brush.setColor(QColor(0, 0, 0, 0));
}

void FreeImgItemRec(ImgItemRec *item)
{
    delete item;
}

void FreeImgDataRec(ImgDataRec *data)
{
    if (!data)
        return;
    qDeleteAll(data->items);
    delete data;
}

ImgItemRec *CopyImgItemRec(const ImgItemRec *item)
{
    return item ? new ImgItemRec(*item) : nullptr;
}

ImgDataRec *CopyImgDataRec(const ImgDataRec *data)
{
    if (!data)
        return nullptr;
    auto *copy = new ImgDataRec;
    copy->img_name = data->img_name;
    for (const ImgItemRec *item : data->items)
        copy->items.append(CopyImgItemRec(item));
    return copy;
}
