#include "schematics/BlkSchemeData.h"

void FreeBlkSchemeData(BlkSchemeData *data)
{
    delete data;
}
