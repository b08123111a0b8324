#include "params/BlkParaData.h"

ParaGroup *FindGroup(const BlkParaData *data, const QString &header)
{
    if (!data || header.isEmpty())
        return nullptr;
    for (ParaGroup *group : data->para_grp)
        if (group->header == header)
            return group;
    return nullptr;
}

ParaEntity *FindEntityInGroup(const ParaGroup *group, const QString &label)
{
    if (!group || label.isEmpty())
        return nullptr;
    for (ParaEntity *entity : group->para_entity)
        if (entity->label == label)
            return entity;
    return nullptr;
}

ParaEntity *FindEntity(const BlkParaData *data, const QString &header, const QString &label)
{
    if (!data || label.isEmpty())
        return nullptr;
    if (!header.isEmpty())
        return FindEntityInGroup(FindGroup(data, header), label);
    for (const ParaGroup *group : data->para_grp)
        if (ParaEntity *entity = FindEntityInGroup(group, label))
            return entity;
    return nullptr;
}

void FreeParaEntity(ParaEntity *entity)
{
    if (!entity)
        return;
    qDeleteAll(entity->para_con);
    qDeleteAll(entity->ovrds);
    delete entity;
}

void FreeParaGroup(ParaGroup *group)
{
    if (!group)
        return;
    for (ParaEntity *entity : group->para_entity)
        FreeParaEntity(entity);
    delete group;
}

void FreeModelCat(ModelCat *cat)
{
    if (!cat)
        return;
    qDeleteAll(cat->subcats);
    delete cat;
}

void FreeBlkParaData(BlkParaData *data)
{
    if (!data)
        return;
    for (ParaGroup *group : data->para_grp)
        FreeParaGroup(group);
    for (ModelCat *cat : data->model_cat)
        FreeModelCat(cat);
    delete data;
}

ParaEntity *CopyParaEntity(const ParaEntity *entity)
{
    auto *copy = new ParaEntity(*entity);
    copy->editor = nullptr;
    copy->caption = nullptr;
    copy->para_con.clear();
    copy->ovrds.clear();
    for (const ParaCon *con : entity->para_con) {
        auto *c = new ParaCon(*con);
        c->target_group = nullptr;
        c->target_entity = nullptr;
        copy->para_con.append(c);
    }
    for (const ParaOvrd *ovrd : entity->ovrds) {
        auto *o = new ParaOvrd(*ovrd);
        o->owner = copy;
        copy->ovrds.append(o);
    }
    return copy;
}

BlkParaData *CopyBlkParaData(const BlkParaData *data)
{
    if (!data)
        return nullptr;
    auto *copy = new BlkParaData;
    copy->title = data->title;
    for (const ParaGroup *group : data->para_grp) {
        auto *g = new ParaGroup;
        g->header = group->header;
        g->helpfile = group->helpfile;
        for (const ParaEntity *entity : group->para_entity)
            g->para_entity.append(CopyParaEntity(entity));
        copy->para_grp.append(g);
    }
    for (const ModelCat *cat : data->model_cat)
        copy->model_cat.append(CopyModelCat(cat));
    return copy;
}

ModelCat *CopyModelCat(const ModelCat *cat)
{
    auto *copy = new ModelCat;
    for (const ModelSubCat *sub : cat->subcats)
        copy->subcats.append(new ModelSubCat(*sub));
    return copy;
}

QList<ParaGroup *> CopyGroupList(const QList<ParaGroup *> &groups)
{
    QList<ParaGroup *> copy;
    for (const ParaGroup *group : groups)
        copy.append(new ParaGroup(*group));
    return copy;
}

void FreeShallowGroups(QList<ParaGroup *> &groups)
{
    qDeleteAll(groups);
    groups.clear();
}
