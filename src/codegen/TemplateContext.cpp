#include "codegen/TemplateContext.h"

#include "app/BlockData.h"
#include "pages/BlkPresData.h"

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

// Placeholder until the builder is written.
TemplateOptions ReadTemplateOptions(const BlkParaData *) { return {}; }
TemplateContext BuildTemplateContext(const TemplateInputs &inputs)
{
    TemplateContext context;
    context.inputs = inputs;
    return context;
}
QString WithoutPrefix(const QString &args) { return args.size() > 1 ? args.mid(2) : args; }
QString ResolveType(const ParaEntity *, const BlkParaData *) { return {}; }
QString ResolveSize(const ParaEntity *, const BlkParaData *) { return {}; }
