// The records of a block's Configuration, Parameters and Initial Conditions.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;
struct ParaEntity;
struct ParaGroup;

// One control of an entity over another entity or a whole group.
struct ParaCon {
    QString header;            // field names are the XML names
    QString label;             // empty: the control acts on the whole group
    QString value;
    QString act_type;          // "Disable", "Hide", "SetValue" or empty
    qint32 sel_idx = -1;       // index of the owner's values at which the control acts
    ParaGroup *target_group = nullptr;    // resolved at run time, not stored
    ParaEntity *target_entity = nullptr;
};

// A value that a workspace item of a composite block holds for this entity.
struct ParaOvrd {
    QString file;              // workspace path, relative when inside a search directory
    quint32 item_id = 0;
    QString group;
    QString value;
    ParaEntity *owner = nullptr;
};

struct ParaEntity {
    ParaEntity(const QString &label = QString(), const QString &unit = QString())
        : label(label), unit(unit) {}

    QString label;
    QString para_var;
    QString port_var;
    QString unit;
    QString val_type;
    QString val_size;
    QStringList values;        // empty: a line edit
    QStringList ivalues;
    QString sel_val;
    qint32 sel_idx = -1;
    QString sel_val_gt;        // exclusive bounds, as numbers in text
    QString sel_val_lt;
    QString sel_val_expr;
    QWidget *editor = nullptr; // run time only
    QWidget *caption = nullptr;
    quint8 visible = 1;
    quint8 enable = 1;
    quint8 license = 0;
    quint8 readonly = 0;
    quint8 sigpara = 0;
    quint8 usr_enable = 1;
    quint8 usr_visible = 1;
    qint32 var_type = 0;       // 0 "Non-Constant", 1 "Constant", 2 "Preprocessor Definition"
    QList<ParaCon *> para_con; // owned
    QList<ParaOvrd *> ovrds;   // owned
};

struct ParaGroup {
    QString header;            // key of the group within its section
    QString helpfile;
    QList<ParaEntity *> para_entity; // owned, unless the group is a shallow copy
};

struct ModelSubCat {
    QString group;
    QString entity;
    QStringList vals;
};

// A model table: the first sub-category selects, the others follow the selection.
struct ModelCat {
    QList<ModelSubCat *> subcats; // owned
};

struct BlkParaData {
    QString title;
    QList<ParaGroup *> para_grp;  // owned
    QList<ModelCat *> model_cat;  // owned
};

// Null header or none found: null.
ParaGroup *FindGroup(const BlkParaData *data, const QString &header);
// Empty label: null. Empty header: the first entity of that label in any group.
ParaEntity *FindEntity(const BlkParaData *data, const QString &header, const QString &label);
ParaEntity *FindEntityInGroup(const ParaGroup *group, const QString &label);

// Each frees what it owns, then the record; null is allowed.
void FreeParaEntity(ParaEntity *entity);
void FreeParaGroup(ParaGroup *group);
void FreeModelCat(ModelCat *cat);
void FreeBlkParaData(BlkParaData *data);

// Deep copies: controls keep their stored fields, run-time pointers start null.
ParaEntity *CopyParaEntity(const ParaEntity *entity);
BlkParaData *CopyBlkParaData(const BlkParaData *data);
ModelCat *CopyModelCat(const ModelCat *cat);
// New groups that share the entity pointers of the source: free them with FreeShallowGroups.
QList<ParaGroup *> CopyGroupList(const QList<ParaGroup *> &groups);
void FreeShallowGroups(QList<ParaGroup *> &groups);
