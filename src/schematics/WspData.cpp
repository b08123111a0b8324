#include "schematics/WspData.h"

#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

void FreeWorkingPorts(WSP_BLK_ITEM_STRUCT *item)
{
    qDeleteAll(item->ports);
    item->ports.clear();
}

void FreeBlkItem(WSP_BLK_ITEM_STRUCT *item)
{
    if (!item)
        return;
    FreeBlkParaData(item->para);
    FreeBlkParaData(item->ic);
    FreeWorkingPorts(item);
    delete item;
}

void FreeWsp(WspData *data)
{
    if (!data)
        return;
    for (WSP_BLK_ITEM_STRUCT *item : qAsConst(data->bitems))
        FreeBlkItem(item);
    qDeleteAll(data->citems);
    qDeleteAll(data->titems);
    qDeleteAll(data->nodes);
    delete data;
}

WSP_BLK_ITEM_STRUCT *CopyBlkItem(const WSP_BLK_ITEM_STRUCT *item)
{
    if (!item)
        return nullptr;
    auto *copy = new WSP_BLK_ITEM_STRUCT(*item);
    copy->para = CopyBlkParaData(item->para);
    copy->ic = CopyBlkParaData(item->ic);
    copy->ports.clear();
    for (const BlkPort *port : item->ports) {
        auto *port_copy = new BlkPort(*port);
        port_copy->owner = copy;
        copy->ports.append(port_copy);
    }
    return copy;
}
