#include "BenchBlocks.h"

#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "drawing/ImgDataRec.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkHelpData.h"
#include "pages/BlkMiscData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"
#include "schematics/BlkSchemeData.h"

#include <QDir>

namespace {

BlkParaData *MakeParameters(const QString &title, int entities)
{
    auto *data = new BlkParaData;
    data->title = title;
    ParaGroup *group = nullptr;
    for (int i = 0; i < entities; ++i) {
        if (i % 50 == 0) {
            group = new ParaGroup;
            group->header = QStringLiteral("Group %1").arg(i / 50);
            data->para_grp.append(group);
        }
        auto *entity = new ParaEntity(QStringLiteral("Entity %1").arg(i), QStringLiteral("m/s"));
        entity->para_var = QStringLiteral("p_%1").arg(i);
        entity->val_type = QStringLiteral("Real64");
        entity->val_size = QStringLiteral("1");
        entity->sel_val = QString::number(i * 0.5);
        entity->sel_val_gt = QStringLiteral("-1000");
        if (i % 10 == 0) {
            entity->values = QStringList{"Off", "On", "Auto"};
            entity->ivalues = QStringList{"0", "1", "2"};
            entity->sel_idx = 1;
            entity->sel_val = QStringLiteral("On");
            entity->para_con.append(new ParaCon{group->header, QStringLiteral("Entity %1").arg(i + 1),
                                                QStringLiteral("0"), QStringLiteral("Disable"), 0});
        }
        group->para_entity.append(entity);
    }
    return data;
}

void AddPorts(BlockData *block, int ports)
{
    block->pres = NewDefaultPresData();
    block->pres->title = QStringLiteral("Bench");
    block->code = new BlkCodeData;
    static const char *placements[] = {"Left", "Right", "Top", "Bottom"};
    for (int i = 0; i < ports; ++i) {
        auto *port = new BlkPort;
        port->name = QStringLiteral("port%1").arg(i);
        port->dis_text = QStringLiteral("P%1").arg(i);
        port->type = i % 2 ? QStringLiteral("Output") : QStringLiteral("Input");
        port->placement = QLatin1String(placements[i % 4]);
        port->per_distance = float(100.0 * (i / 4 + 1) / (ports / 4 + 2));
        port->conn_req = 1;
        block->pres->ports.append(port);
        auto *code = new BlkCodePort;
        code->port_name = port->name;
        code->data_name = QStringLiteral("d_port%1").arg(i);
        code->data_type = QStringLiteral("Real64");
        code->mem_type = QStringLiteral("Cacheable");
        code->mem_alloc = QStringLiteral("0");
        code->domain = QStringLiteral("Number");
        code->dim_dependency = QStringLiteral("Script");
        auto *dim = new BlkPortDim;
        dim->para1 = QStringLiteral("1");
        dim->array_size = 1;
        code->dims.append(dim);
        block->code->ports.append(code);
    }
}

ImgDataRec *MakeDrawing()
{
    auto *image = new ImgDataRec;
    image->img_name = QStringLiteral("default");
    for (int i = 0; i < 8; ++i) {
        auto *item = new ImgItemRec;
        item->id = quint32(i + 1);
        item->type = 1 + i % 2;
        item->points = {QPointF(0, 0), QPointF(40, 0), QPointF(40, 40 + i), QPointF(0, 40)};
        image->items.append(item);
    }
    return image;
}

} // namespace

BlockData *MakeBenchBlock(const QString &path, const QString &name, int entities, int ports)
{
    auto *block = new BlockData;
    block->path = path;
    block->def_data = new BlkDefData;
    block->config = BuildConfigurationEntities();
    FindEntity(block->config, "Basic", "Block Name")->sel_val = name;
    FindEntity(block->config, "Code-Basic", "Header File Name")->sel_val = name + ".h";
    block->params = MakeParameters(QStringLiteral("Parameters"), entities);
    block->initconds = MakeParameters(QStringLiteral("Initial Conditions"), entities / 10);
    AddPorts(block, ports);
    block->scheme = new BlkSchemeData;
    block->misc = new BlkMiscData;
    block->misc->cpu_ops = QStringLiteral("[_SimStepSize]*4");
    block->help = new BlkHelpData;
    block->help->file_name = QStringList{"index.htm"};
    block->images = new QList<ImgDataRec *>{MakeDrawing()};
    return block;
}

static bool WriteBenchBlock(const QString &path, const QString &name, int entities, int ports)
{
    QDir().mkpath(path + "/src");
    QDir().mkpath(path + "/doc");
    BlockData *block = MakeBenchBlock(path, name, entities, ports);
    const bool saved = SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true);
    FreeBlockData(block);
    return saved;
}

bool MakeLibrary(const QString &dir, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("block_%1").arg(i, 4, 10, QLatin1Char('0'));
        if (!WriteBenchBlock(dir + "/" + name, name, 20 + i % 40, 2 + i % 8))
            return false;
    }
    return true;
}

bool MakeLargeBlock(const QString &dir)
{
    return WriteBenchBlock(dir + "/large_block", QStringLiteral("large_block"), 2000, 500);
}
