#include "pages/BlkPresData.h"

#include "pages/BlkCodeData.h"

BlkPresData *NewDefaultPresData()
{
    auto *data = new BlkPresData;
    data->hsize = 40;
    data->vsize = 40;
    data->border = 1;
    data->aspect = 0;
    return data;
}

void LinkPortsToCode(BlkPresData *pres, BlkCodeData *code)
{
    if (!pres)
        return;
    for (BlkPort *port : pres->ports)
        port->code_port = FindCodePort(code, port->name);
}

void FreeBlkPresData(BlkPresData *data)
{
    if (!data)
        return;
    qDeleteAll(data->images);
    qDeleteAll(data->texts);
    qDeleteAll(data->ports);
    delete data;
}
