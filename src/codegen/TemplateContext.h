// Everything the template texts are built from, derived once from a block's records before the
// first byte is written.
#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <functional>

struct BlkCodeData;
struct BlockData;
struct BlkParaData;
struct ParaEntity;

// The read-only inputs of one generation run.
struct TemplateInputs {
    const BlkParaData *config = nullptr;
    const BlkParaData *params = nullptr;
    const BlkParaData *initconds = nullptr;
    const BlkCodeData *code = nullptr;
    // The kind of a port by its name ("Input", "Output", "Physical", "Phy.Ref."), empty when the
    // presentation's ports table has no such row.
    std::function<QString(const QString &port_name)> port_kind;
};

// The inputs as a saved block gives them: port kinds from its presentation record.
TemplateInputs TemplateInputsOf(const BlockData *block);

// The Configuration switches the texts depend on.
struct TemplateOptions {
    int class_form = 0;            // 0 "Class", 1 "Static Class", 2 "Structure/Function"
    bool python = false;           // "Embeds Python Code"
    bool fortran = false;          // "Embeds Fortran Code"
    bool worker = false;
    bool block_path = false;
    bool dependency = false;
    bool signal_ports = false;
    bool port_dims = false;
    bool run_pointer = false;
    bool decoupling = false;
    QString cacheable_mem;         // trimmed value texts
    QString noncacheable_mem;
};
TemplateOptions ReadTemplateOptions(const BlkParaData *config);

struct TemplateContext {
    TemplateInputs inputs;
    TemplateOptions options;
    QString class_name;            // BlockClassName
    QString pyintf_name;           // PyIntfClassName
    QString block_name;            // "Block Name" as it stands
    quint32 block_id = 0;
    // The argument strings, each with ", " in front when not empty.
    QString method_args;
    QString call_args;
    QString arg_types;
    bool has_physical = false;
    bool has_blk_mem = false;
    bool has_blk_vmem = false;
    QString member_body;
    QString preproc_block;
    QList<QPair<QString, QString>> ctor_pairs;      // constant type, para_var
    QList<const ParaEntity *> python_params;        // Non-Constant entities, in pass order
};

// Null inputs read as empty records.
TemplateContext BuildTemplateContext(const TemplateInputs &inputs);

// A copy of an argument string without its ", " prefix, for the lists that stand alone.
QString WithoutPrefix(const QString &args);
// The type of an entity: a type name as it stands, or the type of the `group#entity` it refers to
// within `set`; empty when the reference does not resolve.
QString ResolveType(const ParaEntity *entity, const BlkParaData *set);
// The evaluated `val_size` of an entity, references resolved within `set`.
QString ResolveSize(const ParaEntity *entity, const BlkParaData *set);
