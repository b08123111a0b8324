#include "SampleBlock.h"

#include "TestFiles.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/Entitlement.h"
#include "app/EncodeBuffer.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"
#include "schematics/BlkSchemeData.h"

#include <QDir>

static BlkParaData *SampleParameters(const QString &title)
{
    auto *data = new BlkParaData;
    data->title = title;
    auto *group = new ParaGroup{"Gains & <Limits>", "gains.htm", {}};
    auto *gain = new ParaEntity("Gain", "V/s");
    gain->val_type = "Real64";
    gain->val_size = "2";
    gain->sel_val = "1.5,\"2\"";
    gain->sel_val_gt = "0";
    gain->para_con.append(new ParaCon{"Gains & <Limits>", "Mode", "Fast", "SetValue", 1});
    gain->ovrds.append(new ParaOvrd{"ws/top.wsp", 17, "g", "3", gain});
    auto *mode = new ParaEntity("Mode");
    mode->val_type = "Selected Index";
    mode->values = QStringList{"Slow", "Fast"};
    mode->ivalues = QStringList{"0", "1"};
    mode->sel_idx = 0;
    mode->sel_val = "Slow";
    group->para_entity = {gain, mode};
    data->para_grp.append(group);
    auto *cat = new ModelCat;
    cat->subcats = {new ModelSubCat{group->header, "Mode", {"Slow", "Fast"}},
                    new ModelSubCat{group->header, "Gain", {"1", "2"}}};
    data->model_cat.append(cat);
    return data;
}

static ImgDataRec *SampleImage(const QString &name, int shift)
{
    auto *image = new ImgDataRec;
    image->img_name = name;
    auto *rect = new ImgItemRec;
    rect->id = 11;
    rect->z = 1.25f;
    rect->type = 2;
    rect->points = {QPointF(0, 0), QPointF(40 + shift, 0), QPointF(40 + shift, 40), QPointF(0, 40)};
    rect->pen = QPen(QColor(10, 20, 30, 255), 2);
    auto *text = new ImgItemRec;
    text->type = 6;
    text->points = {QPointF(3, 3), QPointF(30.3333, 12)};
    text->text = "K <gain>";
    text->font = "Sans";
    text->h = 8.5f;
    image->items = {rect, text};
    return image;
}

BlockData *MakeSampleBlock(const QString &path)
{
    auto *block = new BlockData;
    block->path = path;
    block->def_data = new BlkDefData{1, {}};
    block->config = BuildConfigurationEntities();
    FindEntity(block->config, "Basic", "Block Name")->sel_val = QDir(path).dirName();
    FindEntity(block->config, "Basic", "ZEMA Version")->sel_val = "3.1";
    // Signed as the tool signs, so that the block opens in a window too.
    FindEntity(block->config, AuthGroupHeader(), AuthEntityLabels().value(0))->sel_val = "author & key";
    FindEntity(block->config, AuthGroupHeader(), AuthEntityLabels().value(1))->sel_val =
        BlockSignatureFor("author & key", QDir(path).dirName());
    block->params = SampleParameters("Parameters");
    block->initconds = SampleParameters("Initial Conditions");

    block->pres = NewDefaultPresData();
    block->pres->title = "Sample \"block\"";
    block->pres->images.append(new BlkImage{"default", "", "", ""});
    block->pres->images.append(new BlkImage{"fast", "Gains & <Limits>", "Mode", "Fast"});
    block->pres->texts.append(new BlkImageText{"default", "k", "Gains & <Limits>", "Gain"});
    for (const char *name : {"in", "out"}) {
        auto *port = new BlkPort;
        port->name = name;
        port->dis_text = QString(name).toUpper();
        port->type = port->name == "in" ? "Input" : "Output";
        port->placement = port->name == "in" ? "Left" : "Right";
        port->per_distance = 33.3333f;
        port->text_dx = -1.5f;
        block->pres->ports.append(port);
        auto *code = new BlkCodePort;
        code->port_name = name;
        code->data_name = QString("p_") + name;
        code->data_type = "Real64";
        code->mem_type = "Cacheable";
        code->mem_alloc = "1";
        code->domain = "Number";
        code->dim_dependency = "Script";
        code->dims.append(new BlkPortDim{"[Gains & <Limits>#Gain]", 0});
        if (!block->code)
            block->code = new BlkCodeData;
        block->code->ports.append(code);
    }
    block->code->create_inst = 1;
    block->code->funcs.append(new BlkCodeFunc{"RunFast", "Gains & <Limits>", "Mode", "Fast", "", "", ""});
    block->code->elements.append(new BlkPhyElement{"in", "out", "p_in_p_out", 1, "-3", "", "", "", "", "", nullptr, nullptr});

    block->scheme = new BlkSchemeData{"top.wsp", {"plots.wsp"}, {}, {"io.wsp"}, {"a.wsp", "b.wsp"}};
    block->misc = new BlkMiscData;
    block->misc->cpu_ops = "[_SimStepSize]*2";
    block->misc->dev_rem = "line 1\nline 2 & <more>";
    block->misc->char_vars.append(new BlkCharVar{"_SimStepSize", "Gains & <Limits>", "Gain"});
    block->misc->para_cond = QStringList{"[Gains & <Limits>#Gain]>3$Gain too large"};
    block->misc->blk_depends = QStringList{"blocks/other"};
    block->help = new BlkHelpData{"Copy doc/ next to the block.", {"index.htm"}};
    block->images = new QList<ImgDataRec *>{SampleImage("default", 0), SampleImage("fast", 8)};
    return block;
}

bool WriteSampleBlock(const QString &path)
{
    QDir().mkpath(path + "/src");
    QDir().mkpath(path + "/doc");
    BlockData *block = MakeSampleBlock(path);
    const bool saved = SaveBlockData(block, nullptr, "ZEMA", true);
    FreeBlockData(block);
    return saved;
}

QByteArray DecodedDefinition(const QString &bdef_path)
{
    QByteArray bytes = ReadBytes(bdef_path);
    EncodeBuffer(bytes, false, 0);
    return bytes;
}
