#include "pages/BlkCodeData.h"

BlkCodePort *FindCodePort(const BlkCodeData *data, const QString &port_name)
{
    if (!data || port_name.isEmpty())
        return nullptr;
    for (BlkCodePort *port : data->ports)
        if (port->port_name == port_name)
            return port;
    return nullptr;
}

void LinkPhyElements(BlkCodeData *data)
{
    if (!data)
        return;
    for (BlkPhyElement *element : data->elements) {
        element->cport1 = FindCodePort(data, element->port1);
        element->cport2 = FindCodePort(data, element->port2);
    }
}

void FreeBlkCodePort(BlkCodePort *port)
{
    if (!port)
        return;
    qDeleteAll(port->dims);
    delete port;
}

void FreeBlkCodeData(BlkCodeData *data)
{
    if (!data)
        return;
    for (BlkCodePort *port : data->ports)
        FreeBlkCodePort(port);
    qDeleteAll(data->funcs);
    qDeleteAll(data->elements);
    delete data;
}
