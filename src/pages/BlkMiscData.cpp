#include "pages/BlkMiscData.h"

void FreeBlkMiscData(BlkMiscData *data)
{
    if (!data)
        return;
    qDeleteAll(data->char_vars);
    delete data;
}

