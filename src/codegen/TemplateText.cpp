// The literal texts of a block's starting code. Every fragment is part of the behaviour: blocks in
// the field were generated from these exact strings, and authors diff against them.
#include "codegen/TemplateText.h"

#include "codegen/CodeNames.h"
#include "codegen/TemplateContext.h"
#include "pages/BlkCodeData.h"
#include "params/BlkParaData.h"

#include <QStringList>
#include <QtMath>

namespace {

const QString kRun = QStringLiteral("Run");

QString Off(bool on) { return on ? QString() : QStringLiteral("//"); }

bool IsStructure(const TemplateContext &context) { return context.options.class_form == 2; }

QList<BlkCodePort *> Ports(const TemplateContext &context)
{
    return context.inputs.code ? context.inputs.code->ports : QList<BlkCodePort *>();
}

QList<BlkPhyElement *> Elements(const TemplateContext &context)
{
    return context.inputs.code ? context.inputs.code->elements : QList<BlkPhyElement *>();
}

QString KindOf(const TemplateContext &context, const BlkCodePort *port)
{
    return context.inputs.port_kind ? context.inputs.port_kind(port->port_name) : QString();
}

QString CtorArgs(const TemplateContext &context)
{
    QStringList args;
    for (const auto &pair : context.ctor_pairs)
        args.append(pair.first + QLatin1Char(' ') + pair.second + QStringLiteral("_arg"));
    return args.join(QStringLiteral(", "));
}

QString CtorInits(const TemplateContext &context)
{
    QStringList inits;
    for (const auto &pair : context.ctor_pairs)
        inits.append(pair.second + QLatin1Char('(') + pair.second + QStringLiteral("_arg)"));
    const QString joined = inits.join(QStringLiteral(", "));
    return joined.isEmpty() ? joined : QLatin1Char(':') + joined;
}

void StructureForm(const TemplateContext &context, QString &text)
{
    const QString &name = context.class_name;
    const QString &args = context.method_args;
    const bool sig = context.options.signal_ports;
    const bool phy = context.has_physical;

    text += QStringLiteral("\nstruct ") + name + QStringLiteral("\n{");
    text += context.member_body;
    text += QStringLiteral("\n};");
    if (!sig)
        text += QStringLiteral("\n/*");
    text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, const volatile BLOCK_CONSTRUCTOR_PARAM_STRUCT *arg);")
                .arg(name, QStringLiteral("Initialize"));
    text += QStringLiteral("\nvoid* %1_%2(volatile %1 *obj, int port_idx, int size, void** input_ports);")
                .arg(name, QStringLiteral("AllocPortMemory"));
    text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, const volatile GLOBAL_PRERUN_PARAM_STRUCT *arg%3);")
                .arg(name, QStringLiteral("PreRun"), args);
    text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, const volatile GLOBAL_RUN_PARAM_STRUCT *arg%3);")
                .arg(name, kRun, args);
    text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, const volatile GLOBAL_POSTRUN_PARAM_STRUCT *arg%3);")
                .arg(name, QStringLiteral("PostRun"), args);
    if (!sig)
        text += QStringLiteral("\n*/");
    if (!phy)
        text += QStringLiteral("\n/*");
    text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, volatile SIM_PHY_EN_STRUCT *entities, int en_idx, int index);")
                .arg(name, QStringLiteral("ElInit"));
    for (const char *method : {"CalG", "CalI"})
        text += QStringLiteral("\nvoid %1_%2(volatile %1 *obj, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h%3);")
                    .arg(name, QLatin1String(method), args);
    text += QStringLiteral("\n#ifndef _BUILD_ARCH_FPGA");
    for (const char *method : {"CalG_Batch", "CalI_Batch"})
        text += QStringLiteral("\nvoid %1_%2(%1 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h);")
                    .arg(name, QLatin1String(method));
    text += QStringLiteral("\n#endif");
    if (!phy)
        text += QStringLiteral("\n*/");
}

void ClassForm(const TemplateContext &context, QString &text)
{
    const QString &name = context.class_name;
    const QString &args = context.method_args;
    const QString s = context.options.class_form == 1 ? QStringLiteral("static ") : QString();
    const bool sig = context.options.signal_ports;
    const bool phy = context.has_physical;

    text += QStringLiteral("\nclass SHARED_LIB_TYPE ") + name + QStringLiteral("\n{\npublic:");
    text += QStringLiteral("\n\t%1(%2);").arg(name, CtorArgs(context));
    text += QStringLiteral("\n\t~") + name + QStringLiteral("();");
    if (!sig)
        text += QStringLiteral("\n\t/*");
    text += QStringLiteral("\n\t%1void ").arg(s) + QStringLiteral("Initialize")
            + QStringLiteral("(const volatile BLOCK_CONSTRUCTOR_PARAM_STRUCT *arg);");
    text += QStringLiteral("\n\t%1void* ").arg(s) + QStringLiteral("AllocPortMemory")
            + QStringLiteral("(int port_idx, int size, void** input_ports);");
    text += QStringLiteral("\n\t%1void ").arg(s) + QStringLiteral("PreRun")
            + QStringLiteral("(const volatile GLOBAL_PRERUN_PARAM_STRUCT *arg%1);").arg(args);
    text += QStringLiteral("\n\t%1void ").arg(s) + kRun
            + QStringLiteral("(const volatile GLOBAL_RUN_PARAM_STRUCT *arg%1);").arg(args);
    text += QStringLiteral("\n\t%1void ").arg(s) + QStringLiteral("PostRun")
            + QStringLiteral("(const volatile GLOBAL_POSTRUN_PARAM_STRUCT *arg%1);").arg(args);
    if (!sig)
        text += QStringLiteral("\n\t*/");
    if (context.options.decoupling) {
        text += QStringLiteral("\n\tvoid ResetDCError(_BOOLEAN set_zero);");
        text += QStringLiteral("\n\tvoid CalDCError();");
        text += QStringLiteral("\n\t_BOOLEAN IsDCErrorPresent();");
    }
    if (!phy)
        text += QStringLiteral("\n\t/*");
    text += QStringLiteral("\n\t%1void ").arg(s) + QStringLiteral("ElInit")
            + QStringLiteral("(volatile SIM_PHY_EN_STRUCT *entities, int en_idx, int index);");
    for (const char *method : {"CalG", "CalI"})
        text += QStringLiteral("\n\t%1void ").arg(s) + QLatin1String(method)
                + QStringLiteral("(volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h%1);")
                      .arg(args);
    text += QStringLiteral("\n#ifndef _BUILD_ARCH_FPGA");
    // Static in every class form: a batch call has no single object to run on.
    for (const char *method : {"CalG_Batch", "CalI_Batch"})
        text += QStringLiteral("\n\tstatic void %1(%2 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h);")
                    .arg(QLatin1String(method), name);
    text += QStringLiteral("\n#endif");
    if (!phy)
        text += QStringLiteral("\n\t*/");
    text += context.member_body;
    text += QStringLiteral("\n};");
}

// Starts the block's Python class on the second pre-run call and hands it the ports and the
// Non-Constant parameters.
void PythonStartup(const TemplateContext &context, QString &text)
{
    const QString &p = context.pyintf_name;
    const QString &name = context.class_name;

    text += QStringLiteral("\n\tif(m_pycomm == 0)\n\t{\n\t\t//initialize python interface");
    // The name as it stands, blanks included: the path macro is named by the runtime that way.
    text += QStringLiteral("\n\t\tconst char *py_module_path = _%1%2_SrcPath;")
                .arg(context.block_name, QString::number(context.block_id));
    text += QStringLiteral("\n\t\tm_pycomm = new %1(py_module_path, \"%2\", \"Py%2\");").arg(p, name);
    text += QStringLiteral("\n\t\t//setup python objects for block ports");
    const QList<BlkCodePort *> ports = Ports(context);
    for (int i = 0; i < ports.size(); ++i) {
        const BlkCodePort *port = ports.at(i);
        const int rows = port->dims.isEmpty() ? 1 : port->dims.size();
        const int size = port->dims.isEmpty() ? 1 : port->dims.first()->array_size;
        text += QStringLiteral("\n\t\t((%1*)m_pycomm)->SetPortObject(%2, %3, %4, %5, %6);")
                    .arg(p, port->port_name, QString::number(rows), QString::number(size),
                         QString::number(TypeCode(port->data_type)), QString::number(i));
    }
    text += QStringLiteral("\n\t\t//setup python objects for block parameters");
    // Initial conditions are resolved against the Parameters too, as the format always did.
    const BlkParaData *params = context.inputs.params;
    for (int i = 0; i < context.python_params.size(); ++i) {
        const ParaEntity *entity = context.python_params.at(i);
        const QString type = ResolveType(entity, params);
        int size = 256;
        bool by_address = false;
        if (type != QLatin1String("String")) {
            const double resolved = ResolveSize(entity, params).toDouble();
            size = qIsFinite(resolved) ? qMax(1, int(resolved)) : 1;
            by_address = size == 1;
        }
        text += QStringLiteral("\n\t\t((%1*)m_pycomm)->SetParaObject(%2%3, %4, %5, %6, %7);")
                    .arg(p, by_address ? QStringLiteral("&") : QString(), entity->para_var,
                         QStringLiteral("1"), QString::number(size),
                         QString::number(TypeCode(type)), QString::number(i));
    }
    text += QStringLiteral("\n\t\t//set python class methods");
    text += QStringLiteral("\n\t\tSim_ProcessEvents();//comment this line if the program crashes unexpectedly");
    text += QStringLiteral("\n\t\t((%1*)m_pycomm)->SetMethods();").arg(p);
    text += QStringLiteral("\n\t\t//instantiate python attributes (variables) related to ports/parameter values");
    // The trailing blank on these two lines is in every generated file: kept deliberately.
    text += QStringLiteral("\n\t\tSim_ProcessEvents();//comment this line if the program crashes unexpectedly ");
    text += QStringLiteral("\n\t\t((%1*)m_pycomm)->InitPortAttributes();").arg(p);
    text += QStringLiteral("\n\t\tSim_ProcessEvents();//comment this line if the program crashes unexpectedly ");
    text += QStringLiteral("\n\t\t((%1*)m_pycomm)->InitParaAttributes();").arg(p);
    text += QStringLiteral("\n\t\t//");
    text += QStringLiteral("\n\t\tif(((%1*)m_pycomm)->GetStatus() == PY_INTF_VALID)            "
                           "\n\t\t{                "
                           "\n\t\t\tchar str[2048];                "
                           "\n\t\t\tsnprintf(str, 2047, \"SimPy initialized. Path: %s, Module: %s, Class: %s.\", py_module_path, \"%2\", \"Py%2\");                "
                           "\n\t\t\tSim_DisplayMsg(str, SIM_MSG_TYPE_INFO, 0, 0);            "
                           "\n\t\t}")
                .arg(p, name);
    text += QStringLiteral("\n\t}");
    text += QStringLiteral("\n\t((%1*)m_pycomm)->Prerun();").arg(p);
}

void InitializeMethod(const TemplateContext &context, QString &text)
{
    const QString &name = context.class_name;
    const bool structure = IsStructure(context);
    const QString member = structure ? QStringLiteral("obj->") : QString();
    const QString method = structure ? name + QLatin1Char('_') : name + QStringLiteral("::");
    const QString obj_arg = structure ? QStringLiteral("volatile ") + name + QStringLiteral(" *obj, ") : QString();
    const QString ptr = Off(context.options.run_pointer);

    text += QStringLiteral("\nvoid %1%2(%3const volatile BLOCK_CONSTRUCTOR_PARAM_STRUCT *arg){")
                .arg(method, QStringLiteral("Initialize"), obj_arg);
    text += QStringLiteral("\n\t//this method is called once before calling PreRun(..) method.");
    text += QStringLiteral("\n#ifdef _BUILD_ARCH_OS");
    if (structure) {
        text += QStringLiteral("\n\t") + ptr;
        text += QStringLiteral("obj->%1_PtrTo%2 = &%1_%2;").arg(name, kRun);
        text += QStringLiteral("\n\t") + ptr;
    } else {
        text += QStringLiteral("\n\t%3PtrTo%2 = &%1::%2;").arg(name, kRun, ptr);
    }
    text += QStringLiteral("\n#endif");
    text += QStringLiteral("\n\t%1%2_dependent_obj = NULL;").arg(Off(context.options.dependency), member);
    text += QStringLiteral("\n\t%1%2m_blk_path[0] = 0;").arg(Off(context.options.block_path), member);
    text += QStringLiteral("\n\t//%1m_blk_id = arg->blk_id;").arg(member);
    text += QStringLiteral("\n\t%1m_prerun_count = 0;").arg(member);

    const QList<BlkCodePort *> ports = Ports(context);
    if (context.options.port_dims) {
        text += QStringLiteral("\n\t//port dimension and size");
        // Without signal ports the loop below names variables nobody declares: the format has it so.
        if (context.options.signal_ports)
            for (const BlkCodePort *port : ports)
                text += QStringLiteral("\n\tBLOCK_PORT_DIM_SIZE ") + port->data_name + QStringLiteral("_dimsize;");
        text += QStringLiteral("\n\tfor(int i=0; i<arg->nport_data; ++i){");
        text += QStringLiteral("\n\t\tBLOCK_PORT_DIM_SIZE *dim = NULL;");
        for (int k = 0; k < ports.size(); ++k) {
            text += (k == 0 ? QStringLiteral("\n\t\tif(i == ") : QStringLiteral("\n\t\telse if(i == "))
                    + QString::number(k) + QLatin1Char(')');
            text += QStringLiteral("\n\t\t\tdim = &%1%2_dimsize;").arg(member, ports.at(k)->data_name);
        }
        text += QStringLiteral("\n\t\tdim->ndim = arg->port_data[i].ndim;");
        text += QStringLiteral("\n\t\tfor(int j=0; j<MAXIMUM_PORT_DIMENSIONS; ++j)");
        text += QStringLiteral("\n\t\t\tdim->dim_size[j] = arg->port_data[i].dim_size[j];");
        text += QStringLiteral("\n\t}");
    }
    for (const BlkCodePort *port : ports) {
        if (KindOf(context, port) != QLatin1String("Output"))
            continue;
        // The pool of an output is computed and dropped: the text has no place for it yet.
        MemoryPoolName(port->data_type, port->mem_type);
        if (!context.options.port_dims)
            continue;
        text += QStringLiteral("\n\t{");
        text += QStringLiteral("\n\t\tint array_size = 1;");
        text += QStringLiteral("\n\t\tfor(int i=0; i<%1%2_dimsize.ndim; ++i)").arg(member, port->data_name);
        text += QStringLiteral("\n\t\t\tarray_size *= %1%2_dimsize.dim_size[i];").arg(member, port->data_name);
        text += QStringLiteral("\n\t}");
    }
    const QList<BlkPhyElement *> elements = Elements(context);
    if (!elements.isEmpty()) {
        text += QStringLiteral("\n\t//");
        for (const BlkPhyElement *element : elements)
            text += QStringLiteral("\n\t%1%2 = -1;").arg(member, element->el_name);
    }
    text += QStringLiteral("\n\t//add your initialization code here...");
    text += QStringLiteral("\n}");
}

} // namespace

QString TemplateBanner()
{
    return QStringLiteral(
        "/************************ZEMA_COPYRIGHT**********************************\n"
        " * Copyright (c) ZEMA. All rights reserved.\n"
        " * This code was generated by ZEMA as the template of a block.\n"
        " * Its use, copying and distribution are permitted only under the\n"
        " * terms of the licence agreement with ZEMA.\n"
        " ***********************************************************************/\n");
}

QString TemplateHeaderText(const TemplateContext &context)
{
    const QString guard = context.class_name.toUpper() + QStringLiteral("_H");
    QString text = TemplateBanner();
    text += QStringLiteral("#ifndef ") + guard;
    text += QStringLiteral("\n#define ") + guard;
    text += QStringLiteral("\n\n#include \"sim_common_definitions.h\"");
    // The marker stays in the file: later tools insert definitions below it.
    text += QStringLiteral("\n\n//BLOCK_PREPROC_DEFS_HERE\n");
    if (!context.preproc_block.isEmpty())
        text += context.preproc_block + QLatin1Char('\n');
    if (IsStructure(context))
        StructureForm(context, text);
    else
        ClassForm(context, text);
    text += QStringLiteral("\n\n#endif\n");
    return text;
}

QString TemplateSourceText(const TemplateContext &context)
{
    const TemplateOptions &options = context.options;
    const QString &name = context.class_name;
    const QString &p = context.pyintf_name;
    const QString lower = name.toLower();
    const bool structure = IsStructure(context);
    const QString obj_arg = structure ? QStringLiteral("volatile ") + name + QStringLiteral(" *obj, ") : QString();
    const QString member = structure ? QStringLiteral("obj->") : QString();
    const QString method = structure ? name + QLatin1Char('_') : name + QStringLiteral("::");
    const QString &args = context.method_args;
    const QString call = WithoutPrefix(context.call_args);

    QString text = TemplateBanner();
    text += QStringLiteral("#include \"") + name + QStringLiteral(".h\"");
    text += QStringLiteral("\n#include \"simcode.h\"");
    if (options.python) {
        text += QStringLiteral("\n#include \"") + p + QStringLiteral(".h\"");
        text += QStringLiteral("\n#include <string.h>");
    }
    if (options.worker) {
        text += QStringLiteral("\n#include <thread>");
        text += QStringLiteral("\n#include <chrono>");
        text += QStringLiteral("\n");
        text += QStringLiteral("\nvoid %1_Thread(%1 *obj)").arg(name);
        text += QStringLiteral("\n{");
        text += QStringLiteral("\n\twhile(1)\n\t{");
        text += QStringLiteral("\n\t\tif(obj->m_exit)\n\t\t{");
        text += QStringLiteral("\n\t\t\tobj->m_exit = false;\n\t\t\tbreak;\n\t\t}");
        text += QStringLiteral("\n\t\tdelay(1);\n\t\t//add your code here\n\t}");
        text += QStringLiteral("\n}");
    }
    if (options.fortran) {
        const QString m = WithoutPrefix(args);
        text += QStringLiteral("\n\nextern \"C\" void %1_prerun_sub_(%2);//fortran pre-run sub-routine declaration").arg(lower, m);
        text += QStringLiteral("\nextern \"C\" void %1_run_sub_(%2);//fortran run sub-routine declaration").arg(lower, m);
        text += QStringLiteral("\nextern \"C\" void %1_postrun_sub_(%2);//fortran post-run sub-routine declaration").arg(lower, m);
    }
    if (!structure) {
        text += QStringLiteral("\n\n%1::%1(%2)%3{").arg(name, CtorArgs(context), CtorInits(context));
        if (options.python)
            text += QStringLiteral("\n\tm_pycomm = 0;");
        text += QStringLiteral("\n\t//add your constructor code here");
        text += QStringLiteral("\n}");
        text += QStringLiteral("\n\n") + name + QStringLiteral("::~") + name + QStringLiteral("(){");
        if (options.python)
            text += QStringLiteral("\n\tif(m_pycomm) delete (%1*)m_pycomm;//comment this if any delays are present while closing SimPanel").arg(p);
        text += QStringLiteral("\n\t//add your destructor code here");
        text += QStringLiteral("\n}");
    }
    text += QStringLiteral("\n");
    if (!options.signal_ports)
        text += QStringLiteral("\n/*");

    InitializeMethod(context, text);

    text += QStringLiteral("\n\nvoid* %1%2(%3int port_idx, int size, void** input_ports){")
                .arg(method, QStringLiteral("AllocPortMemory"), obj_arg);
    text += QStringLiteral("\n\t//this method is optionally called once after Initialize(..) method is called and before calling PreRun(..) method.");
    text += QStringLiteral("\n\t//add your input ports memory allocation code here...");
    text += QStringLiteral("\n\treturn malloc(size);");
    text += QStringLiteral("\n}");

    text += QStringLiteral("\n\nvoid %1%2(%3const volatile GLOBAL_PRERUN_PARAM_STRUCT *arg%4){")
                .arg(method, QStringLiteral("PreRun"), obj_arg, args);
    text += QStringLiteral("\n\t//this method is called twice before starting the simulation.");
    text += QStringLiteral("\n\tif(%1m_prerun_count++ != 1) return;").arg(member);
    text += QStringLiteral("\n\t//add your pre-run code here...");
    if (options.python)
        PythonStartup(context, text);
    else if (options.fortran)
        text += QStringLiteral("\n\t%1_prerun_sub_(%2);//calling fortran pre-run sub-routine").arg(lower, call);
    if (options.worker)
        text += QStringLiteral("\n\t//\n\tm_exit = false;\n\tm_wth = new std::thread(%1_Thread, this);").arg(name);
    text += QStringLiteral("\n}");

    QString run_tail;
    if (options.fortran)
        run_tail = QStringLiteral("\n\t%1_run_sub_(%2);//calling fortran run sub-routine").arg(lower, call);
    else if (options.python)
        run_tail = QStringLiteral("\n\t((%1*)m_pycomm)->Run();").arg(p);
    text += QStringLiteral("\n\nvoid %1%2(%3const volatile GLOBAL_RUN_PARAM_STRUCT *arg%4){")
                .arg(method, kRun, obj_arg, args);
    text += QStringLiteral("\n\t//add your run code here. this method is called once every (or multiples of) simulation time step.");
    text += run_tail;
    text += QStringLiteral("\n}");

    text += QStringLiteral("\n\nvoid %1%2(%3const volatile GLOBAL_POSTRUN_PARAM_STRUCT *arg%4){")
                .arg(method, QStringLiteral("PostRun"), obj_arg, args);
    text += QStringLiteral("\n\t//this method is called once after simulation is stopped and just before calling the class's destructor.");
    if (options.worker) {
        text += QStringLiteral("\n\t//worker thread related code\n\tm_exit = true;");
        text += QStringLiteral("\n\twhile(m_exit)\n\t\tdelay(10);//wait till thread exits");
        text += QStringLiteral("\n\t((std::thread*)m_wth)->join();");
        text += QStringLiteral("\n\tdelete (std::thread*)m_wth;");
    }
    if (options.python)
        text += QStringLiteral("\n\t((%1*)m_pycomm)->Postrun();").arg(p);
    else if (options.fortran)
        text += QStringLiteral("\n\t%1_postrun_sub_(%2);//calling fortran post-run sub-routine").arg(lower, call);
    text += QStringLiteral("\n\t//add your post-run code here...");
    text += QStringLiteral("\n}");
    if (!options.signal_ports)
        text += QStringLiteral("\n*/");

    if (options.decoupling) {
        text += QStringLiteral("\n\nvoid %1ResetDCError(_BOOLEAN set_zero){\n}").arg(method);
        text += QStringLiteral("\n\nvoid %1CalDCError(){\n}").arg(method);
        text += QStringLiteral("\n\n_BOOLEAN %1IsDCErrorPresent(){\n\treturn 0;\n}").arg(method);
    }
    text += QStringLiteral("\n");
    if (!context.has_physical)
        text += QStringLiteral("\n/*");

    text += QStringLiteral("\nvoid %1%2(%3volatile SIM_PHY_EN_STRUCT *entities, int en_idx, int index){")
                .arg(method, QStringLiteral("ElInit"), obj_arg);
    const QList<BlkPhyElement *> elements = Elements(context);
    for (int k = 0; k < elements.size(); ++k)
        text += (k == 0 ? QStringLiteral("\n\tif(index == %1) %2%3 = en_idx;")
                        : QStringLiteral("\n\telse if(index == %1) %2%3 = en_idx;"))
                    .arg(QString::number(k), member, elements.at(k)->el_name);
    text += QStringLiteral("\n\tentities[en_idx].g_mf = 1;//-1 for source, else 1");
    text += QStringLiteral("\n\tentities[en_idx].i_mf = -1;//1 for source, else -1");
    text += QStringLiteral("\n\tentities[en_idx].isen_mf = 1;");
    text += QStringLiteral("\n}");
    for (const char *name_of : {"CalG", "CalI"})
        text += QStringLiteral("\n\nvoid %1%2(%3volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h%4){\n}")
                    .arg(method, QLatin1String(name_of), obj_arg, args);

    QStringList batch;
    for (const BlkCodePort *port : Ports(context)) {
        const QString kind = KindOf(context, port);
        if (kind != QLatin1String("Physical") && kind != QLatin1String("Phy.Ref."))
            batch.append(QStringLiteral("obj[i]->m_%1").arg(port->data_name));
    }
    if (context.has_blk_mem)
        batch.append(QStringLiteral("obj[i]->m_blk_mem"));
    if (context.has_blk_vmem)
        batch.append(QStringLiteral("obj[i]->m_blk_vmem"));
    QString batch_args = batch.join(QStringLiteral(", "));
    if (!batch_args.isEmpty())
        batch_args.prepend(QStringLiteral(", "));

    text += QStringLiteral("\n\n#ifndef _BUILD_ARCH_FPGA");
    if (structure) {
        text += QStringLiteral("\nvoid %2_%1(%2 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h){\n\tfor(int i=0; i<nobjs; ++i) %2_CalG(obj[i], entities, arg, h%3);\n}")
                    .arg(QStringLiteral("CalG_Batch"), name, batch_args);
        text += QStringLiteral("\nvoid %2_%1(%2 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h){\n\tfor(int i=0; i<nobjs; ++i) %2_CalI(obj[i], entities, arg, h%3);\n}")
                    .arg(QStringLiteral("CalI_Batch"), name, batch_args);
    } else {
        text += QStringLiteral("\nvoid %2::%1(%2 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h){\n\tfor(int i=0; i<nobjs; ++i) obj[i]->CalG(entities, arg, h%3);\n}")
                    .arg(QStringLiteral("CalG_Batch"), name, batch_args);
        text += QStringLiteral("\nvoid %2::%1(%2 **obj, int nobjs, volatile SIM_PHY_EN_STRUCT *entities, const volatile GLOBAL_RUN_PARAM_STRUCT *arg, _FXDPT_FLOAT h){\n\tfor(int i=0; i<nobjs; ++i) obj[i]->CalI(entities, arg, h%3);\n}")
                    .arg(QStringLiteral("CalI_Batch"), name, batch_args);
    }
    text += QStringLiteral("\n#endif");
    if (!context.has_physical)
        text += QStringLiteral("\n*/");
    return text;
}

QString FortranTemplateText(const TemplateContext &context)
{
    const QString lower = context.class_name.toLower();
    const QString a = WithoutPrefix(context.call_args);
    const char *const stages[] = {"prerun", "run", "postrun"};
    const char *const comments[] = {
        "\n    !this subroutine is called before starting simulation",
        "\n    !this subroutine is called once every (or multiples of) simulation time step",
        "\n    !this subroutine is called after simulation is stopped",
    };
    QString text = QStringLiteral("!ZEMA generated fortran template code\n");
    for (int i = 0; i < 3; ++i) {
        text += QStringLiteral("\nsubroutine %1_%2_sub(%3)").arg(lower, QLatin1String(stages[i]), a);
        text += QLatin1String(comments[i]);
        text += QStringLiteral("\n    !define arguments data type and size here...");
        text += QStringLiteral("\n    !IMPLICIT NONE");
        text += QStringLiteral("\n    !real*4 %1 !this code is only indicative").arg(a);
        text += QStringLiteral("\n\n    !add your logic here...\n");
        text += QStringLiteral("\nend\n");
    }
    return text;
}

QString PythonTemplateText(const TemplateContext &context)
{
    const QString ports = WithoutPrefix(context.call_args);
    const QString port_list = ports.isEmpty() ? ports : QStringLiteral(", ") + ports;
    QString para_list;
    for (const ParaEntity *entity : context.python_params)
        para_list += QStringLiteral(", ") + entity->para_var;

    QString text = QStringLiteral("#ZEMA generated python template code\n\nimport numpy");
    text += QStringLiteral("\n\nclass Py%1:").arg(context.class_name);
    text += QStringLiteral("\n    #add class attributes code here...\n    pass\n");
    text += QStringLiteral("\n    def __init__(self):");
    text += QStringLiteral("\n        #add constructor code here...\n        pass\n");
    text += QStringLiteral("\n    def method_init_ports(self%1):").arg(port_list);
    // Every port gets an attribute, also those that are not arguments: the two lists differ on purpose.
    text += QStringLiteral("\n        #defining class instance attributes for block ports...");
    for (const BlkCodePort *port : Ports(context))
        text += QStringLiteral("\n        self.%1 = %1").arg(port->data_name);
    text += QStringLiteral("\n        #add your initialization code here...\n        pass\n");
    text += QStringLiteral("\n    def method_init_para(self%1):").arg(para_list);
    text += QStringLiteral("\n        #defining class instance attributes for block parameters...");
    for (const ParaEntity *entity : context.python_params)
        text += QStringLiteral("\n        self.%1 = %1").arg(entity->para_var);
    text += QStringLiteral("\n        #add your initialization code here...\n        pass\n");
    text += QStringLiteral("\n    def method_prerun(self):");
    text += QStringLiteral("\n        #add pre-run code here...\n        pass\n");
    text += QStringLiteral("\n    def method_run(self):");
    text += QStringLiteral("\n        #sample code on how to modify class attribute value that reflects on c++ side");
    text += QStringLiteral("\n        #for i in range(len(self.in)):");
    text += QStringLiteral("\n            #self.out[i] = self.in[i]");
    text += QStringLiteral("\n        #add run code here...\n        pass\n");
    text += QStringLiteral("\n    def method_postrun(self):");
    text += QStringLiteral("\n        #add post-run code here...\n        pass\n");
    return text;
}
