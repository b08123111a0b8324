#include "pages/BlkHelpData.h"

void FreeBlkHelpData(BlkHelpData *data)
{
    delete data;
}
