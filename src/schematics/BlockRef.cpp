#include "schematics/BlockRef.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"
#include "params/BlockRegistry.h"
#include "schematics/WspData.h"

#include <QDir>
#include <QtMath>

namespace {

constexpr float kStubLen = 4.0f;

QString DefinitionFileName(const QString &block_path)
{
    return QDir(block_path).entryList({QStringLiteral("*.bdef")}, QDir::Files, QDir::Name).value(0);
}

bool IsQuarterTurn(float an)
{
    const float turn = qAbs(an);
    return qAbs(turn - 90.0f) < 0.0001f || qAbs(turn - 270.0f) < 0.0001f;
}

bool IsHorizontalSide(const QString &placement)
{
    return placement == QLatin1String("Top") || placement == QLatin1String("Bottom");
}

// The port's side length in the block's unturned state.
qreal EdgeLength(const WSP_BLK_ITEM_STRUCT *record, const QString &placement)
{
    const bool horizontal = IsHorizontalSide(placement) != IsQuarterTurn(record->an);
    return horizontal ? record->rt.width() : record->rt.height();
}

BlkPort *WorkingCopy(const BlkPort *port, WSP_BLK_ITEM_STRUCT *record, bool shown)
{
    auto *copy = new BlkPort(*port);
    copy->owner = record;
    copy->vport_para = shown ? 0 : 1;
    copy->stub_len = kStubLen;
    return copy;
}

void AddFlowTapPorts(WSP_BLK_ITEM_STRUCT *record, const BlkPort *port)
{
    const qreal edge = EdgeLength(record, port->placement);
    if (edge <= 0)
        return;
    for (int i = 1;; ++i) {
        const qreal distance = i * 10 * 100.0 / edge;
        if (distance > 97.0)
            break;
        BlkPort *copy = WorkingCopy(port, record, true);
        if (!copy->name.isEmpty())
            copy->name += "$" + QString::number(i);
        if (!copy->dis_text.isEmpty())
            copy->dis_text += QString::number(i);
        copy->per_distance = float(distance);
        record->ports.append(copy);
    }
}

bool PortShown(const WSP_BLK_ITEM_STRUCT *record, const BlkPort *port)
{
    if (port->vport_para != 2)
        return port->vport_para == 0;
    const ParaEntity *entity = FindEntity(record->para, port->vport_grp, port->vport_entity);
    return entity && entity->sel_val == port->vport_value;
}

void AddMultiplePorts(WSP_BLK_ITEM_STRUCT *record, const BlkPort *port, bool shown)
{
    const ParaEntity *entity = FindEntity(record->para, port->mport_grp, port->mport_entity);
    if (!entity)
        return;
    const int count = entity->sel_val.toInt();
    for (int i = 0; i < count; ++i) {
        BlkPort *copy = WorkingCopy(port, record, shown);
        if (!copy->name.isEmpty())
            copy->name += "$" + QString::number(i);
        if (copy->dis_text.isEmpty())
            copy->dis_text = QString::number(i);
        else if (copy->dis_text == QLatin1String("*") && i > 0)
            copy->dis_text.clear();
        copy->per_distance = shown ? float(100.0 / (count + 1.0) * (i + 1)) : 0.0f;
        record->ports.append(copy);
    }
    if (!shown)
        return;
    // Room for every copy; the block is never shrunk back here.
    const qreal minimum = (count + 1) * 12;
    QRectF &rt = record->rt;
    if (IsHorizontalSide(port->placement) != IsQuarterTurn(record->an)) {
        if (rt.width() < minimum)
            rt.setWidth(minimum);
    } else if (rt.height() < minimum) {
        rt.setHeight(minimum);
    }
}

int SideIndex(const QString &placement)
{
    if (placement == QLatin1String("Top"))
        return 0;
    if (placement == QLatin1String("Bottom"))
        return 1;
    if (placement == QLatin1String("Left"))
        return 2;
    return 3;
}

bool Unplaced(const BlkPort *port)
{
    return port->vport_para == 0 && qAbs(port->per_distance) < 0.0001f;
}

// Shown ports without a position share their side evenly, in list order.
void SpreadUnplacedPorts(QList<BlkPort *> &ports)
{
    int totals[4] = {0, 0, 0, 0};
    for (const BlkPort *port : ports)
        if (Unplaced(port))
            ++totals[SideIndex(port->placement)];
    int taken[4] = {0, 0, 0, 0};
    for (BlkPort *port : ports) {
        if (!Unplaced(port))
            continue;
        const int side = SideIndex(port->placement);
        port->per_distance = float(100.0 / (totals[side] + 1) * ++taken[side]);
    }
}

} // namespace

bool IsFlowTapType(qint32 block_type)
{
    return block_type == 301 || block_type == 302;
}

void RebuildWorkingPorts(WSP_BLK_ITEM_STRUCT *record)
{
    FreeWorkingPorts(record);
    if (!record->para || record->custom_type < 0 || !record->blockdef || !record->blockdef->pres)
        return;
    const QList<BlkPort *> &ports = record->blockdef->pres->ports;
    if (IsFlowTapType(record->custom_type)) {
        for (const BlkPort *port : ports)
            AddFlowTapPorts(record, port);
        return;
    }
    for (const BlkPort *port : ports) {
        const bool shown = PortShown(record, port);
        if (port->mport_para)
            AddMultiplePorts(record, port, shown);
        else
            record->ports.append(WorkingCopy(port, record, shown));
    }
    SpreadUnplacedPorts(record->ports);
}

BlkParaData *MergeParaData(BlkParaData *stored, const BlkParaData *fresh, bool merge_values)
{
    if (!fresh)
        return stored;
    BlkParaData *merged = CopyBlkParaData(fresh);
    if (!stored)
        return merged;
    for (ParaGroup *group : merged->para_grp) {
        const ParaGroup *stored_group = FindGroup(stored, group->header);
        if (!stored_group)
            continue;
        for (ParaEntity *entity : group->para_entity) {
            const ParaEntity *old = FindEntityInGroup(stored_group, entity->label);
            if (!old)
                continue;
            entity->usr_visible = old->usr_visible;
            entity->usr_enable = old->usr_enable;
            if (entity->values.isEmpty()) {
                entity->sel_val = old->sel_val;
            } else if (entity->values.size() == 1 &&
                       entity->values.first().toLower() == QLatin1String("<select>")) {
                entity->sel_idx = old->sel_idx;
                entity->sel_val = old->sel_val;
            } else if (old->sel_idx >= 0 && old->sel_idx < entity->values.size()) {
                entity->sel_idx = old->sel_idx;
                entity->sel_val = entity->values.at(old->sel_idx);
            }
            if (merge_values)
                entity->sel_val = old->sel_val;
        }
    }
    FreeBlkParaData(stored);
    return merged;
}

bool LoadBlockRef(WSP_BLK_ITEM_STRUCT *record, ErrorList *error_list, const QString &word,
                  bool flag, bool merge_values)
{
    record->blockdef =
        FindBlock(Registry(), record->ref_id, record->ref_name, record->ref_path);
    BlockData *block = record->blockdef;
    if (!block)
        return false;
    record->ref_id = block->block_id;
    const QString file_name = DefinitionFileName(block->path);
    if (!file_name.isEmpty())
        record->ref_name = file_name;
    record->custom_type = CustomBlockType(block->config);
    if (!block->params) {
        BlkParaFileIO io(QString(), error_list, flag, 1);
        block->params = io.LoadFile(block->path + QStringLiteral("/blk_param.cfg"), word);
        if (!block->params)
            return false;
    }
    if (record->ver.isEmpty())
        record->ver = block->version;
    record->para = MergeParaData(record->para, block->params, merge_values);
    record->ic = MergeParaData(record->ic, block->initconds, merge_values);
    RebuildWorkingPorts(record);
    for (QVariantList &list : record->user_lists)
        list.clear();
    return true;
}
