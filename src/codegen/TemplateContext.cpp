// Derives, once per generation run, every name, argument list and member text the template files
// are assembled from, so that the text builders only join strings.
#include "codegen/TemplateContext.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/ScriptEval.h"
#include "codegen/CodeNames.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

#include <QJSEngine>
#include <QStringList>
#include <QtMath>
#include <memory>

TemplateInputs TemplateInputsOf(const BlockData *block)
{
    TemplateInputs inputs;
    if (!block)
        return inputs;
    inputs.config = block->config;
    inputs.params = block->params;
    inputs.initconds = block->initconds;
    inputs.code = block->code;
    const BlkPresData *pres = block->pres;
    inputs.port_kind = [pres](const QString &name) {
        if (pres)
            for (const BlkPort *port : pres->ports)
                if (port->name == name)
                    return port->type;
        return QString();
    };
    return inputs;
}

namespace {

const ParaEntity *ConfigEntity(const BlkParaData *config, const char *header, const char *label)
{
    return FindEntity(config, QLatin1String(header), QLatin1String(label));
}

int SelectedIndex(const BlkParaData *config, const char *header, const char *label)
{
    const ParaEntity *entity = ConfigEntity(config, header, label);
    return entity ? entity->sel_idx : 0;
}

bool IsYes(const BlkParaData *config, const char *header, const char *label)
{
    const ParaEntity *entity = ConfigEntity(config, header, label);
    return entity && entity->sel_val == QLatin1String("Yes");
}

// The memory entities are known by their place in the group, not by their labels.
QString MemoryText(const BlkParaData *config, int position)
{
    const ParaGroup *group = FindGroup(config, QStringLiteral("Additional Memory Requirement"));
    if (!group || position >= group->para_entity.size())
        return QString();
    return group->para_entity.at(position)->sel_val.trimmed();
}

// A script counts even when it would evaluate to nothing: its value is only known at run time.
bool MemoryPresent(const QString &text)
{
    bool is_number = false;
    const double value = text.toDouble(&is_number);
    return is_number ? value > 0 : !text.isEmpty();
}

void AddArgument(QString &args, const QString &argument)
{
    if (!args.isEmpty())
        args += QStringLiteral(", ");
    args += argument;
}

QString WithPrefix(const QString &args)
{
    return args.isEmpty() ? args : QStringLiteral(", ") + args;
}

int SizeNumber(const QString &size)
{
    const double value = size.toDouble();
    return qIsFinite(value) ? int(value) : 0;
}

// The parts of a definition's value text after its expression, one engine per context build.
class DefineValues
{
public:
    QString Value(const ParaEntity *entity, const QString &type, const BlkParaData *set)
    {
        if (type == QLatin1String("String"))
            return QLatin1Char('"') + entity->sel_val + QLatin1Char('"');
        if (type == QLatin1String("Selected Index"))
            return entity->values.isEmpty() ? QStringLiteral("0") : QString::number(entity->sel_idx);

        QStringList parts = entity->sel_val.split(QLatin1Char(','));
        const int size = qMax(1, SizeNumber(ResolveSize(entity, set)));
        while (parts.size() < size)
            parts.append(QString());
        for (QString &part : parts)
            part = Part(part, entity->sel_val_expr, type, set);
        const QString joined = parts.join(QLatin1Char(','));
        return parts.size() > 1 ? QLatin1Char('{') + joined + QLatin1Char('}') : joined;
    }

private:
    QString Part(const QString &part, const QString &expression, const QString &type,
                 const BlkParaData *set)
    {
        QJSValue value;
        bool evaluated = false;
        if (!expression.isEmpty()) {
            // Every letter u stands for the part, also inside a function name: the format says so.
            QString program = expression;
            program.replace(QLatin1Char('u'), part);
            if (!engine)
                engine = std::make_unique<QJSEngine>();
            value = engine->evaluate(ScriptEval(program, set));
            evaluated = !value.isUndefined() && !value.isError();
        }
        if (type == QLatin1String("Real32"))
            return QString::number(evaluated ? value.toNumber() : double(part.toFloat()), 'f', 6);
        if (type == QLatin1String("Real64"))
            return QString::number(evaluated ? value.toNumber() : part.toDouble(), 'f', 6);
        if (type == QLatin1String("Integer16") || type == QLatin1String("Integer32_Boolean")
            || type == QLatin1String("Integer64")) {
            if (!evaluated)
                return QString::number(part.toLongLong());
            const double number = value.toNumber();
            return QString::number(qIsFinite(number) ? qint64(number) : 0);
        }
        if (type == QLatin1String("Byte"))
            return evaluated ? QString::number(value.toBool() ? 1 : 0)
                             : QString::number(part.toUShort());
        return part;
    }

    std::unique_ptr<QJSEngine> engine;
};

// One pass over the entities of a parameter set: declarations, definitions, constructor pairs
// and the Python parameters, in file order.
void EntityPass(const BlkParaData *set, TemplateContext &context, DefineValues &defines)
{
    if (!set)
        return;
    for (const ParaGroup *group : set->para_grp) {
        for (const ParaEntity *entity : group->para_entity) {
            const QString type = ResolveType(entity, set);
            if (entity->var_type == 2) {
                const QString value = defines.Value(entity, type, set);
                if (entity->para_var.isEmpty()) {
                    // A definition without a name defines its value: kept as the format has it.
                    context.preproc_block += QStringLiteral("\n#ifndef %1\n#define %1\n#endif").arg(value);
                } else {
                    const QString name = entity->para_var.toUpper().replace(QLatin1Char(' '), QLatin1Char('_'));
                    context.preproc_block += QStringLiteral("\n#ifndef %1\n#define %1 %2\n#endif")
                                                 .arg(name, value);
                }
                continue;
            }
            if ((entity->var_type != 0 && entity->var_type != 1) || entity->para_var.isEmpty())
                continue;
            QString declaration = CTypeName(type, entity->var_type) + QLatin1Char(' ') + entity->para_var;
            const QString size = ResolveSize(entity, set);
            if (size.toDouble() > 1)
                declaration += QLatin1Char('[') + size + QLatin1Char(']');
            if (type == QLatin1String("String") && entity->var_type == 0)
                declaration += QStringLiteral("[MAXIMUM_CHAR_VAR_SIZE]");
            context.member_body += QStringLiteral("\n\t") + declaration + QLatin1Char(';');
            if (entity->var_type == 1)
                context.ctor_pairs.append({CTypeName(type, 1), entity->para_var});
            else
                context.python_params.append(entity);
        }
    }
}

void BuildMemberBody(TemplateContext &context)
{
    const TemplateOptions &options = context.options;
    const bool structure = options.class_form == 2;
    const QString ptr = options.run_pointer ? QString() : QStringLiteral("//");
    QString &body = context.member_body;

    if (!structure)
        body += QStringLiteral("\npublic:");
    body += QStringLiteral("\n#ifdef _BUILD_ARCH_OS");
    if (structure) {
        body += QStringLiteral("\n\t") + ptr
                + QStringLiteral("void (*%1_PtrTo%2)(volatile %1 *obj, const volatile GLOBAL_RUN_PARAM_STRUCT*%3);")
                      .arg(context.class_name, QStringLiteral("Run"), context.arg_types);
        body += QStringLiteral("\n\t") + ptr;
    } else {
        body += QStringLiteral("\n\t") + ptr + QStringLiteral("void (") + context.class_name
                + QStringLiteral("::*PtrToRun)(const volatile GLOBAL_RUN_PARAM_STRUCT*%1);").arg(context.arg_types);
    }
    body += QStringLiteral("\n#endif");
    body += QStringLiteral("\n\t%1char* _dependent_obj;").arg(options.dependency ? QString() : QStringLiteral("//"));
    body += QStringLiteral("\n\t%1char m_blk_path[SIM_BLK_PATH_MAX_SIZE];")
                .arg(options.block_path ? QString() : QStringLiteral("//"));
    body += QStringLiteral("\n\t//port variable declaration");
    if (context.has_blk_mem)
        body += QStringLiteral("\n\t_BYTE *m_blk_mem;");
    if (context.has_blk_vmem)
        body += QStringLiteral("\n\tvolatile _BYTE *m_blk_vmem;");

    const QList<BlkPhyElement *> elements = context.inputs.code ? context.inputs.code->elements
                                                                : QList<BlkPhyElement *>();
    if (!elements.isEmpty()) {
        body += QStringLiteral("\n\t//physical elements variable declaration");
        QStringList declared;
        for (const BlkPhyElement *element : elements) {
            if (declared.contains(element->el_name))
                continue;
            declared.append(element->el_name);
            body += QStringLiteral("\n\tint ") + element->el_name + QLatin1Char(';');
        }
    }

    DefineValues defines;
    body += QStringLiteral("\n\t//block internal parameter variable declaration");
    EntityPass(context.inputs.params, context, defines);
    body += QStringLiteral("\n\t//block internal initial condition variable declaration");
    EntityPass(context.inputs.initconds, context, defines);

    if (options.worker)
        body += QStringLiteral("\n\tvolatile bool m_exit;//worker thread related");
    if (!structure) {
        body += QStringLiteral("\nprivate:");
        body += QStringLiteral("\n\t//add your member functions declaration code here");
    }
    body += QStringLiteral("\n\t//for internal use");
    if (options.python)
        body += QStringLiteral("\n\tvoid *m_pycomm;");
    if (options.worker)
        body += QStringLiteral("\n\tvoid *m_wth;//worker thread pointer");
    body += QStringLiteral("\n\t_BYTE m_prerun_count;");
    body += QStringLiteral("\n\t//_UINT32 m_blk_id;");
    body += QStringLiteral("\n\t//add your%1variables declaration code here")
                .arg(structure ? QStringLiteral(" ") : QStringLiteral(" member "));
}

} // namespace

TemplateOptions ReadTemplateOptions(const BlkParaData *config)
{
    TemplateOptions options;
    options.class_form = SelectedIndex(config, "Code-Basic", "Class or Structure/Function");
    const int embeds = SelectedIndex(config, "Code-Basic", "Embeds other language code");
    options.python = embeds == 1;
    options.fortran = embeds == 2;
    options.worker = SelectedIndex(config, "Code-Basic", "Add Worker Thread Function Code") != 0;
    options.block_path = SelectedIndex(config, "Code-Basic", "Block Path Variable Required") != 0;
    options.dependency = IsYes(config, "Advanced", "Other block object dependency");
    options.signal_ports = IsYes(config, "Code-Signal Ports", "Generate code for signal ports");
    options.port_dims = IsYes(config, "Code-Signal Ports", "Generate code for signal ports dimension & size");
    options.run_pointer = IsYes(config, "Code-Signal Ports", "Call pointer to Run method instead of Run method");
    options.decoupling = IsYes(config, "Code-Physical Ports", "Supports Decoupling");
    options.cacheable_mem = MemoryText(config, 0);
    options.noncacheable_mem = MemoryText(config, 1);
    return options;
}

TemplateContext BuildTemplateContext(const TemplateInputs &inputs)
{
    TemplateContext context;
    context.inputs = inputs;
    context.options = ReadTemplateOptions(inputs.config);
    context.class_name = BlockClassName(inputs.config);
    context.pyintf_name = PyIntfClassName(inputs.config);
    context.block_name = BlockNameOf(inputs.config);
    context.block_id = BlockIdOf(inputs.config);

    if (inputs.code) {
        for (const BlkCodePort *port : inputs.code->ports) {
            const QString kind = inputs.port_kind ? inputs.port_kind(port->port_name) : QString();
            if (kind == QLatin1String("Physical"))
                context.has_physical = true;
            if (kind != QLatin1String("Input") && kind != QLatin1String("Output"))
                continue;
            const QString type = CTypeName(port->data_type);
            AddArgument(context.method_args, type + QStringLiteral(" *") + port->data_name);
            AddArgument(context.call_args, port->data_name);
            AddArgument(context.arg_types, type + QLatin1Char('*'));
        }
    }
    context.has_blk_mem = MemoryPresent(context.options.cacheable_mem);
    if (context.has_blk_mem) {
        AddArgument(context.method_args, QStringLiteral("_BYTE *blk_mem"));
        AddArgument(context.call_args, QStringLiteral("blk_mem"));
        AddArgument(context.arg_types, QStringLiteral("_BYTE*"));
    }
    context.has_blk_vmem = MemoryPresent(context.options.noncacheable_mem);
    if (context.has_blk_vmem) {
        AddArgument(context.method_args, QStringLiteral("volatile _BYTE *blk_vmem"));
        AddArgument(context.call_args, QStringLiteral("blk_vmem"));
        AddArgument(context.arg_types, QStringLiteral("volatile _BYTE*"));
    }
    context.method_args = WithPrefix(context.method_args);
    context.call_args = WithPrefix(context.call_args);
    context.arg_types = WithPrefix(context.arg_types);

    BuildMemberBody(context);
    return context;
}

QString WithoutPrefix(const QString &args) { return args.size() > 1 ? args.mid(2) : args; }

QString ResolveType(const ParaEntity *entity, const BlkParaData *set)
{
    if (!entity)
        return QString();
    if (!entity->val_type.contains(QLatin1Char('#')))
        return entity->val_type;
    const QStringList parts = entity->val_type.split(QLatin1Char('#'));
    const ParaEntity *target = FindEntity(set, parts.at(0), parts.at(1));
    return target ? target->val_type : QString();
}

QString ResolveSize(const ParaEntity *entity, const BlkParaData *set)
{
    return entity ? ScriptEval(entity->val_size, set) : QString();
}
