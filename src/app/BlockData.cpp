#include "app/BlockData.h"

#include "drawing/ImgDataRec.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "schematics/BlkSchemeData.h"

void FreeImageList(QList<ImgDataRec *> *images)
{
    if (!images)
        return;
    for (ImgDataRec *image : *images)
        FreeImgDataRec(image);
    delete images;
}

void FreeBlockData(BlockData *block)
{
    if (!block)
        return;
    FreeBlkParaData(block->config);
    FreeBlkParaData(block->params);
    FreeBlkParaData(block->initconds);
    delete block->def_data;
    FreeBlkPresData(block->pres);
    FreeBlkSchemeData(block->scheme);
    FreeBlkCodeData(block->code);
    FreeBlkMiscData(block->misc);
    FreeBlkHelpData(block->help);
    FreeImageList(block->images);
    delete block;
}
