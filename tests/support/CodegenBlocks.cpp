// In-memory blocks, each named after the options of the template texts it shows. Apart from the
// one marked unsound, their generated code is meant to compile against the runtime stand-ins.
#include "CodegenBlocks.h"

#include "PageWindow.h"
#include "app/BlockData.h"
#include "codegen/CodeNames.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

namespace {

struct PortShape {
    const char *name;
    const char *kind;          // null: the port is missing from the presentation's table
    const char *data_name;
    const char *data_type;
    QList<qint32> dims;
    const char *mem_type = "Cacheable";
};

struct EntityShape {
    const char *label;
    const char *para_var;
    const char *val_type;
    const char *val_size;
    const char *sel_val;
    qint32 var_type = 0;
    const char *sel_val_expr = "";
};

void SetCombo(BlockData *block, const char *header, const char *label, const char *value)
{
    ParaEntity *entity = FindEntity(block->config, QLatin1String(header), QLatin1String(label));
    entity->sel_val = QLatin1String(value);
    entity->sel_idx = entity->values.indexOf(entity->sel_val);
}

void SetText(BlockData *block, const char *header, const char *label, const QString &value)
{
    FindEntity(block->config, QLatin1String(header), QLatin1String(label))->sel_val = value;
}

BlockData *NewBlock(const QString &name, quint32 id)
{
    BlockData *block = PageWindow::NewBlockRecord(name);
    block->block_id = id;
    SetText(block, "Basic", "Block ID", QString::number(id));
    // What the save routine fills in for a block that is not intrinsic.
    const QString class_name = BlockClassName(block->config);
    SetText(block, "Code-Basic", "Header File Name", class_name + ".h");
    for (const char *kind : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
        FindEntity(block->config, QStringLiteral("Code-Basic"),
                   QStringLiteral("Class/Structure Name (%1)").arg(QLatin1String(kind)))->sel_val = class_name;
    return block;
}

QString Placement(const QString &kind)
{
    if (kind == QLatin1String("Input"))
        return QStringLiteral("Left");
    if (kind == QLatin1String("Output"))
        return QStringLiteral("Right");
    return kind == QLatin1String("Physical") ? QStringLiteral("Top") : QStringLiteral("Bottom");
}

void AddPorts(BlockData *block, const QList<PortShape> &ports)
{
    for (const PortShape &port_shape : ports) {
        auto *code = new BlkCodePort;
        code->port_name = QLatin1String(port_shape.name);
        code->data_name = QLatin1String(port_shape.data_name);
        code->data_type = QLatin1String(port_shape.data_type);
        code->mem_type = QLatin1String(port_shape.mem_type);
        code->mem_alloc = QStringLiteral("0");
        for (qint32 size : port_shape.dims) {
            auto *dim = new BlkPortDim;
            dim->para1 = QString::number(size);
            dim->array_size = size;
            code->dims.append(dim);
        }
        block->code->ports.append(code);
        if (!port_shape.kind)
            continue;
        auto *port = new BlkPort;
        port->name = code->port_name;
        port->dis_text = code->port_name;
        port->type = QLatin1String(port_shape.kind);
        port->placement = Placement(port->type);
        port->per_distance = 50.0f;
        port->conn_req = 1;
        block->pres->ports.append(port);
    }
}

void AddElement(BlockData *block, const char *port1, const char *port2, const char *el_name)
{
    auto *element = new BlkPhyElement;
    element->port1 = QLatin1String(port1);
    element->port2 = QLatin1String(port2);
    element->el_name = QLatin1String(el_name);
    element->el_mf = QStringLiteral("0");
    block->code->elements.append(element);
}

void AddGroup(BlkParaData *set, const char *header, const QList<EntityShape> &entities)
{
    auto *group = new ParaGroup;
    group->header = QLatin1String(header);
    for (const EntityShape &shape : entities) {
        auto *entity = new ParaEntity(QLatin1String(shape.label));
        entity->para_var = QLatin1String(shape.para_var);
        entity->val_type = QLatin1String(shape.val_type);
        entity->val_size = QLatin1String(shape.val_size);
        entity->sel_val = QLatin1String(shape.sel_val);
        entity->var_type = shape.var_type;
        entity->sel_val_expr = QLatin1String(shape.sel_val_expr);
        group->para_entity.append(entity);
    }
    set->para_grp.append(group);
}

// Class form with every signal port option on, and member declarations of each shape.
CodegenCase ClassSignalPorts()
{
    BlockData *block = NewBlock(QStringLiteral("Signal Gain"), 101);
    SetCombo(block, "Code-Signal Ports", "Generate code for signal ports dimension & size", "Yes");
    SetCombo(block, "Code-Signal Ports", "Call pointer to Run method instead of Run method", "Yes");
    SetCombo(block, "Advanced", "Other block object dependency", "Yes");
    SetCombo(block, "Code-Basic", "Block Path Variable Required", "Yes");
    AddPorts(block, {
        {"x", "Input", "x", "Real64", {1}},
        {"y", "Output", "y", "Real32", {3}},
        {"count", "Output", "count", "Integer64", {}},
        {"enable", "Input", "enable", "Byte", {}},
        {"aux", nullptr, "aux", "Integer16", {}},
    });
    AddGroup(block->params, "Gains", {
        {"Gain", "gain", "Real", "1", "1.0"},
        {"Weights", "weights", "Real64", "3", "1,2,3"},
        {"Label", "label", "String", "", "gain"},
        {"Names", "names", "String", "3", "a,b,c"},
        {"Order", "order", "Integer", "", "2", 1},
        {"Title", "title", "String", "1", "t", 1},
        {"Unnamed", "", "Real", "", "0"},
        {"Taps", "taps", "Integer32_Boolean", "", "4", 1},
        {"History", "history", "Real", "[Gains#Taps]", "0,0,0,0"},
        {"Offset", "offset", "Gains#Weights", "", "0.5"},
    });
    AddGroup(block->initconds, "States", {
        {"State", "state", "Real64", "2", "0,0"},
        {"Start", "start", "Integer16", "", "0", 1},
    });
    return {QStringLiteral("class_signal_ports"), block, true};
}

// Everything that yields text a compiler refuses: a static class whose methods use members,
// undeclared port sizes, a macro named by its value, a module path named with blanks.
CodegenCase StaticClassUnsound()
{
    BlockData *block = NewBlock(QStringLiteral("low pass (2)"), 117);
    SetCombo(block, "Code-Basic", "Class or Structure/Function", "Static Class");
    SetCombo(block, "Code-Basic", "Embeds other language code", "Embeds Python Code");
    SetCombo(block, "Code-Signal Ports", "Generate code for signal ports", "No");
    SetCombo(block, "Code-Signal Ports", "Generate code for signal ports dimension & size", "Yes");
    SetText(block, "Additional Memory Requirement", "Cacheable Memory (Bytes)", QStringLiteral("0"));
    AddPorts(block, {
        {"in", "Input", "u", "Real", {}},
        {"out", "Output", "y", "Real", {2, 2}},
        {"pin", "Physical", "v", "Real", {}},
    });
    AddGroup(block->params, "Filter", {
        {"Order", "order", "Integer32_Boolean", "", "3", 1},
        {"Cutoff", "cutoff", "Real", "", "10"},
        {"Unit", "unit", "String", "", "Hz"},
        {"Five", "", "Integer", "", "5", 2},
    });
    // Sized against Initial Conditions for its member, against Parameters for Python.
    AddGroup(block->initconds, "Start", {
        {"Level", "level", "Real", "[Filter#Order]", "0"},
        {"Kind", "kind", "Filter#Order", "", "1"},
    });
    return {QStringLiteral("static_class_unsound"), block, false};
}

// Structure form of a purely physical block: elements with a shared name, decoupling, and both
// memory arguments (a number and a script).
CodegenCase StructurePhysical()
{
    BlockData *block = NewBlock(QStringLiteral("Resistor Net"), 202);
    SetCombo(block, "Code-Basic", "Class or Structure/Function", "Structure/Function");
    SetCombo(block, "Code-Physical Ports", "Supports Decoupling", "Yes");
    SetCombo(block, "Code-Signal Ports", "Call pointer to Run method instead of Run method", "Yes");
    SetCombo(block, "Advanced", "Other block object dependency", "Yes");
    SetCombo(block, "Code-Basic", "Block Path Variable Required", "Yes");
    SetText(block, "Additional Memory Requirement", "Cacheable Memory (Bytes)", QStringLiteral(" 64 "));
    SetText(block, "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)",
            QStringLiteral("[Net#Nodes]*8"));
    AddPorts(block, {
        {"p", "Physical", "p", "Real", {}},
        {"n", "Phy.Ref.", "n", "Real", {}},
    });
    AddElement(block, "p", "n", "g_r");
    AddElement(block, "p", "n", "g_r");
    AddElement(block, "p", "n", "i_src");
    AddGroup(block->params, "Net", {
        {"Resistance", "r", "Real", "", "1000"},
        {"Nodes", "nodes", "Integer", "", "2"},
    });
    return {QStringLiteral("structure_physical"), block, true};
}

// Class form of a physical block without signal ports: empty argument lists, a worker thread.
CodegenCase ClassPhysicalWorker()
{
    BlockData *block = NewBlock(QStringLiteral("Diode"), 305);
    SetCombo(block, "Code-Physical Ports", "Supports Decoupling", "Yes");
    SetCombo(block, "Code-Basic", "Add Worker Thread Function Code", "Yes");
    AddPorts(block, {
        {"a", "Physical", "a", "Real", {}},
        {"k", "Physical", "k", "Real", {}},
    });
    AddElement(block, "a", "k", "g_d");
    AddElement(block, "a", "k", "i_d");
    AddGroup(block->params, "Diode", {
        {"Saturation Current", "i_s", "Real64", "", "1e-12"},
    });
    return {QStringLiteral("class_physical_worker"), block, true};
}

// Python start-up with ports of several dimensions, parameters of each size form, a script
// memory argument and a worker thread. The start-up names ports by port name, so here the
// port names are the argument names.
CodegenCase PythonEmbedded()
{
    BlockData *block = NewBlock(QStringLiteral("PyFilter"), 4711);
    SetCombo(block, "Code-Basic", "Embeds other language code", "Embeds Python Code");
    SetCombo(block, "Code-Basic", "Add Worker Thread Function Code", "Yes");
    SetCombo(block, "Code-Basic", "Block Path Variable Required", "Yes");
    SetText(block, "Additional Memory Requirement", "Cacheable Memory (Bytes)",
            QStringLiteral("[Filter#Order]*4"));
    AddPorts(block, {
        {"xin", "Input", "xin", "Real64", {2, 3}},
        {"yout", "Output", "yout", "Real64", {4}},
        {"trig", "Input", "trig", "Integer32_Boolean", {}},
    });
    AddGroup(block->params, "Filter", {
        {"Name", "name", "String", "", "lowpass"},
        {"Gain", "gain", "Real", "", "1"},
        {"Order", "order", "Integer32_Boolean", "", "3", 1},
        {"Coefficients", "coeffs", "Real32", "[Filter#Order]", "1,2,3"},
        {"Scale", "scale", "Filter#Coefficients", "0", "1"},
        {"Window", "window", "Integer", "", "4", 2},
    });
    AddGroup(block->initconds, "Start", {
        {"Level", "level", "Real64", "", "0"},
    });
    return {QStringLiteral("python_embedded"), block, true};
}

// Structure form calling Fortran subroutines, with a non-cacheable memory argument only.
CodegenCase FortranStructure()
{
    BlockData *block = NewBlock(QStringLiteral("Integrator"), 808);
    SetCombo(block, "Code-Basic", "Class or Structure/Function", "Structure/Function");
    SetCombo(block, "Code-Basic", "Embeds other language code", "Embeds Fortran Code");
    SetText(block, "Additional Memory Requirement", "Cacheable Memory (Bytes)", QStringLiteral("0"));
    SetText(block, "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)", QStringLiteral("128"));
    AddPorts(block, {
        {"in", "Input", "xin", "Real64", {}, "Non-Cacheable"},
        {"out", "Output", "yout", "Real64", {}},
    });
    AddGroup(block->params, "Integrator", {
        {"Gain", "k", "Real64", "", "1"},
    });
    return {QStringLiteral("fortran_structure"), block, true};
}

// Class form with signal ports commented out, Fortran calls inside the comment, and a reference
// port that does not make the block physical.
CodegenCase ClassSignalOffFortran()
{
    BlockData *block = NewBlock(QStringLiteral("Counter"), 909);
    SetCombo(block, "Code-Basic", "Embeds other language code", "Embeds Fortran Code");
    SetCombo(block, "Code-Signal Ports", "Generate code for signal ports", "No");
    SetText(block, "Additional Memory Requirement", "Cacheable Memory (Bytes)",
            QStringLiteral("[Counter#Limit] > 10"));
    AddPorts(block, {
        {"clk", "Input", "clk", "Integer", {}},
        {"q", "Output", "q", "Integer", {}},
        {"gnd", "Phy.Ref.", "gnd", "Real", {}},
    });
    AddGroup(block->params, "Counter", {
        {"Limit", "limit", "Integer", "", "100", 1},
    });
    return {QStringLiteral("class_signal_off_fortran"), block, true};
}

// Definitions of every value rule: arrays padded and kept long, expressions, strings, indices,
// a type by reference, a name with a blank.
CodegenCase PreprocessorDefinitions()
{
    BlockData *block = NewBlock(QStringLiteral("Defines"), 33);
    AddGroup(block->params, "Defs", {
        {"Max Gain", "max gain", "Real32", "3", "1.5,2", 2},
        {"Scale", "scale", "Real64", "", "1.25", 2, "u*2"},
        {"Limit", "limit", "Integer16", "", "7", 2, "u+1"},
        {"Taps", "taps", "Integer32_Boolean", "2", "3,4,5", 2},
        {"Big", "big", "Integer64", "", "123456789012", 2},
        {"Enabled", "enabled", "Byte", "", "3", 2, "u > 2"},
        {"Mask", "mask", "Byte", "", "255", 2},
        {"Rounded", "rounded", "Real64", "", "2.6", 2, "Math.round(u)"},
        {"Raw", "raw", "Real", "", "0.5", 2, "u*100"},
        {"Tag", "tag", "String", "", "abc", 2},
        {"Mode", "mode", "Selected Index", "", "c", 2},
        {"Bare", "bare", "Selected Index", "", "", 2},
        {"Width", "width", "Defs#Limit", "", "12", 2},
        {"Copy", "copy", "Nowhere#Missing", "", "x", 2},
        {"Gain", "gain", "Real", "", "1"},
    });
    ParaEntity *mode = FindEntity(block->params, QStringLiteral("Defs"), QStringLiteral("Mode"));
    mode->values = QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    mode->sel_idx = 2;
    FindEntity(block->params, QStringLiteral("Defs"), QStringLiteral("Bare"))->sel_idx = 3;
    AddGroup(block->initconds, "Start", {
        {"Depth", "depth", "Integer", "", "2", 2},
    });
    return {QStringLiteral("preprocessor_definitions"), block, true};
}

// The root block: a fixed class name, no ports, no parameters, Python embedded.
CodegenCase RootNoPorts()
{
    BlockData *block = NewBlock(QStringLiteral("Source"), 0);
    SetCombo(block, "Code-Basic", "Embeds other language code", "Embeds Python Code");
    return {QStringLiteral("root_no_ports"), block, true};
}

} // namespace

QList<CodegenCase> CodegenCases()
{
    return {ClassSignalPorts(), StaticClassUnsound(), StructurePhysical(), ClassPhysicalWorker(),
            PythonEmbedded(), FortranStructure(), ClassSignalOffFortran(),
            PreprocessorDefinitions(), RootNoPorts()};
}

void FreeCodegenCases(QList<CodegenCase> &cases)
{
    for (CodegenCase &c : cases)
        FreeBlockData(c.block);
    cases.clear();
}
