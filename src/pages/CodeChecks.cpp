// Checks of the code records; every finding goes to the error list and none stops the others.
#include "pages/CodeChecks.h"

#include "app/BlockAccessors.h"
#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

namespace {

const QString kPhyTable = QStringLiteral("Code: Physical Port Elements Table: ");

QString TypeOf(const CodeCheckContext &context, const QString &name)
{
    return context.port_type ? context.port_type(name) : QString();
}

bool IsPhysicalType(const QString &type)
{
    return type == QLatin1String("Physical") || type == QLatin1String("Phy.Ref.");
}

void AddError(ErrorList *list, const QString &text)
{
    list->AddMessage(ErrorList::Error, text);
}

// "2.0" and "1e3" are numbers to IsNumericText, so the integer comes by way of a double.
int IntegerOf(const QString &text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? value : static_cast<int>(text.toDouble());
}

// A script variable "A#B" is an entity B of the parameter group A, or dimension B of port A.
bool IsKnownVariable(const CodeCheckContext &context, const QStringList &parts)
{
    if (FindEntity(context.params, parts[0], parts[1]))
        return true;
    bool ok = false;
    const int dim = parts[1].toInt(&ok);
    return FindCodePort(context.code, parts[0]) && ok && dim >= 1 && dim <= 4;
}

void CheckScriptField(const CodeCheckContext &context, const QString &port_name, const QString &field,
                      const QString &value, ErrorList *list)
{
    // Only the balance counts, so "][" passes here.
    if (value.count(QLatin1Char('[')) != value.count(QLatin1Char(']'))) {
        AddError(list, QStringLiteral("Code: Port '%1' %2script field has missing square braces")
                           .arg(port_name, field));
        return;
    }
    QStringList variables;
    ExtractBetween(value, QStringLiteral("["), QStringLiteral("]"), variables);
    for (const QString &variable : variables) {
        const QStringList parts = variable.split(QLatin1Char('#'), Qt::KeepEmptyParts);
        if (parts.size() < 2)
            AddError(list, QStringLiteral("Code: Port '%1' %2script field has invalid syntax related to #")
                               .arg(port_name, field));
        else if (!IsKnownVariable(context, parts))
            AddError(list, QStringLiteral("Code: Port '%1' %2script field has non-matching variable '%3'")
                               .arg(port_name, field, variable));
    }
}

// A memory field of an output port: a number from `minimum` up, or a script field.
void CheckMemoryField(const CodeCheckContext &context, const QString &port_name, const QString &field,
                      const QString &value, int minimum, ErrorList *list)
{
    if (IsNumericText(value, true)) {
        if (IntegerOf(value) < minimum)
            AddError(list, QStringLiteral("Code: Port '%1' %2size is invalid").arg(port_name, field));
        return;
    }
    CheckScriptField(context, port_name, field, value, list);
}

bool TakesSizeElsewhere(const BlkCodePort *port)
{
    return port->dim_dependency == QLatin1String("Connected Port")
        || port->dim_dependency == QLatin1String("Child Port");
}

// The first finding on a port end of an element; the link is stored on the way.
void CheckElementPort(const CodeCheckContext &context, int which, const QString &name,
                      BlkCodePort *&link, bool intrinsic, bool &empty_found, ErrorList *list)
{
    link = nullptr;
    if (name.isEmpty()) {
        // The double blank is deliberate: the text is fixed.
        AddError(list, kPhyTable + QStringLiteral(" One of the Port%1 field value is empty").arg(which));
        empty_found = true;
        return;
    }
    link = FindCodePort(context.code, name);
    if (!link) {
        AddError(list, kPhyTable + QStringLiteral("Port%1 '%2' does not exists").arg(which).arg(name));
        return;
    }
    if (!IsPhysicalType(TypeOf(context, name))) {
        AddError(list, kPhyTable + QStringLiteral("Port%1 '%2' is not a physical port").arg(which).arg(name));
        return;
    }
    if (intrinsic)
        return;
    if (link->dim_dependency != QLatin1String("Script"))
        AddError(list, kPhyTable + QStringLiteral("Port%1 '%2' shall have dimension dependency as script")
                                       .arg(which).arg(name));
    else if (link->dims.size() != 1)
        AddError(list, kPhyTable + QStringLiteral("Port%1 '%2' shall have only one dimension").arg(which).arg(name));
    else if (link->dims.first()->array_size != 1)
        AddError(list, kPhyTable + QStringLiteral("Port%1 '%2' shall have dimension size as one")
                                       .arg(which).arg(name));
}

void CheckElementParameters(const CodeCheckContext &context, const BlkPhyElement *element, ErrorList *list)
{
    if (!element->elval_para_grp.isEmpty()) {
        const ParaGroup *group = FindGroup(context.params, element->elval_para_grp);
        if (!group)
            AddError(list, kPhyTable + QStringLiteral("Element value parameter group name '%1' does not exists")
                                           .arg(element->elval_para_grp));
        else if (!FindEntityInGroup(group, element->elval_para_en))
            AddError(list, kPhyTable + QStringLiteral("Element value parameter entity name '%1' does not exists")
                                           .arg(element->elval_para_en));
    }
    if (element->elen_para_grp.isEmpty())
        return;
    const ParaGroup *group = FindGroup(context.params, element->elen_para_grp);
    const ParaEntity *entity = group ? FindEntityInGroup(group, element->elen_para_en) : nullptr;
    if (!group)
        AddError(list, kPhyTable + QStringLiteral("Element enable parameter group name '%1' does not exists")
                                       .arg(element->elen_para_grp));
    else if (!entity)
        AddError(list, kPhyTable + QStringLiteral("Element enable parameter entity name '%1' does not exists")
                                       .arg(element->elen_para_en));
    else if (element->elen_para_en_val.isEmpty())
        AddError(list, kPhyTable + QStringLiteral("Element enable parameter entity '%1' value cannot be empty")
                                       .arg(element->elen_para_en));
    else if (!entity->values.contains(element->elen_para_en_val))
        AddError(list, kPhyTable + QStringLiteral("Element enable parameter entity value '%1' does not exists")
                                       .arg(element->elen_para_en_val));
}

// A compare field of the calling table: "=", "<" or ">" and a number other than 0.
void CheckCompareField(const QString &value, const QString &field, ErrorList *list)
{
    const QString head = QStringLiteral("Code: %1 field in class method calling table ").arg(field);
    if (value.isEmpty())
        AddError(list, head + QStringLiteral("cannot be empty"));
    else if (!QStringLiteral("=<>").contains(value.at(0)))
        AddError(list, head + QStringLiteral("has invalid compare parameter"));
    else if (value.mid(1).toInt() == 0)
        AddError(list, head + QStringLiteral("has invalid numeric value"));
}

} // namespace

void ValidateCodePortFields(const CodeCheckContext &context, ErrorList *error_list)
{
    if (!context.code)
        return;
    for (BlkCodePort *port : context.code->ports) {
        const QString &name = port->port_name;
        const QString type = TypeOf(context, name);
        if (port->data_name.isEmpty())
            AddError(error_list, QStringLiteral("Code: Port '%1' internal pointer variable name is empty").arg(name));
        if (port->domain.isEmpty()) {
            error_list->AddMessage(ErrorList::Warning,
                                   QStringLiteral("Code: Port '%1' domain is empty. Assigning default type.").arg(name));
            port->domain = QStringLiteral("Number");
        }
        port->units = port->units.trimmed();
        if (!port->units.isEmpty()) {
            if (IsPhysicalType(type)) {
                AddError(error_list, QStringLiteral("Code: Units cannot be assigned to physical port '%1'.").arg(name));
            } else if (port->units.startsWith(QLatin1Char('$'))) {
                const QString source = port->units.mid(1);
                if (type != QLatin1String("Output"))
                    AddError(error_list, QStringLiteral("Code: Cannot prefix unit field with '$' to non-output type port '%1'.")
                                             .arg(name));
                else if (!FindCodePort(context.code, source))
                    AddError(error_list, QStringLiteral("Code: Port '%1' unit field has invalid dependency port name.")
                                             .arg(name));
                else if (TypeOf(context, source) != QLatin1String("Input"))
                    AddError(error_list, QStringLiteral("Code: Dependent port specified in port '%1' unit field shall "
                                                        "be of input port type.").arg(name));
            }
        }
        ValidateCodePortSizes(context, port, error_list);
        if (port->mem_alloc.toInt() != 0) {
            if (type != QLatin1String("Output"))
                AddError(error_list, QStringLiteral("Code: Port '%1' invalid memory allocation type for non-output port.")
                                         .arg(name));
            // The double blank and the missing verb are the fixed text.
            if (port->dims.size() > 1)
                AddError(error_list, QStringLiteral("Code: Port '%1' cannot  memory allocation type for multi "
                                                    "dimensional array.").arg(name));
        }
    }
}

void ValidateCodePortSizes(const CodeCheckContext &context, BlkCodePort *port, ErrorList *error_list)
{
    const QString &name = port->port_name;
    const bool output = TypeOf(context, name) == QLatin1String("Output");
    if (port->dims.isEmpty() && !TakesSizeElsewhere(port))
        AddError(error_list, QStringLiteral("Code: Port '%1' size and dimension are not specified").arg(name));

    if (port->dim_dependency == QLatin1String("Script")) {
        for (BlkPortDim *dim : port->dims) {
            // No bound on a dimension: "-3" passes.
            if (IsNumericText(dim->para1, true))
                dim->array_size = IntegerOf(dim->para1);
            else
                CheckScriptField(context, name, QString(), dim->para1, error_list);
        }
    }

    const QString extra = port->mem_extra.trimmed();
    if (!extra.isEmpty() && extra != QLatin1String("0") && !output)
        AddError(error_list, QStringLiteral("Code: Port '%1': Additional memory option is only applicable for "
                                            "output ports").arg(name));
    // "0" passes the rule above yet fails here: additional memory starts at 1.
    CheckMemoryField(context, name, QStringLiteral("additional memory "), extra, 1, error_list);

    const QString offset = port->mem_offset.trimmed();
    if (!offset.isEmpty() && offset != QLatin1String("0") && !output)
        AddError(error_list, QStringLiteral("Code: Port '%1': Memory offset option is only applicable for "
                                            "output ports").arg(name));
    CheckMemoryField(context, name, QStringLiteral("memory offset "), offset, 0, error_list);
}

void ValidateCodeFuncTable(const CodeCheckContext &context, ErrorList *error_list)
{
    if (!context.code)
        return;
    for (BlkCodeFunc *func : context.code->funcs) {
        func->func_name = func->func_name.trimmed();
        func->para_en_val = func->para_en_val.trimmed();
        func->dim = func->dim.trimmed();
        func->size = func->size.trimmed();
        if (func->func_name.isEmpty())
            continue;
        if (!func->para_grp.isEmpty()) {
            const ParaGroup *group = FindGroup(context.params, func->para_grp);
            if (!group)
                AddError(error_list, QStringLiteral("Code: Parameter group name '%1' mentioned in class method "
                                                    "calling table does not exists").arg(func->para_grp));
            else if (!FindEntityInGroup(group, func->para_en_name))
                AddError(error_list, QStringLiteral("Code: Parameter entity name '%1' mentioned in class method "
                                                    "calling table does not exists").arg(func->para_en_name));
            else if (func->para_en_val.isEmpty())
                AddError(error_list, QStringLiteral("Code: Parameter value in class method calling table cannot "
                                                    "be empty"));
        }
        // The port's name itself is not looked up.
        if (func->port.isEmpty())
            continue;
        CheckCompareField(func->dim, QStringLiteral("Port Dimension"), error_list);
        CheckCompareField(func->size, QStringLiteral("Port Size"), error_list);
    }
}

void ValidateCodePhyTable(const CodeCheckContext &context, ErrorList *error_list)
{
    if (!context.code)
        return;
    const QList<BlkPhyElement *> &elements = context.code->elements;
    const bool intrinsic = IsBlockIntrinsic(context.config);
    bool empty_found = false;
    for (BlkPhyElement *element : elements) {
        CheckElementPort(context, 1, element->port1, element->cport1, intrinsic, empty_found, error_list);
        CheckElementPort(context, 2, element->port2, element->cport2, intrinsic, empty_found, error_list);
        if (element->el_name.isEmpty())
            AddError(error_list, kPhyTable + QStringLiteral("One of the 'Element Variable' field is empty"));
        CheckElementParameters(context, element, error_list);
    }

    const bool linear = IsBlockLinear(context.config);
    for (const BlkPhyElement *element : elements) {
        if (!element->cport1 || !element->cport2)
            continue;
        if (element->cport1->data_type != element->cport2->data_type)
            AddError(error_list, kPhyTable + QStringLiteral("Element '%1' ports shall have same data type")
                                                 .arg(element->el_name));
        if (element->cport1->mem_type != element->cport2->mem_type)
            AddError(error_list, kPhyTable + QStringLiteral("Element '%1' ports shall have same memory type")
                                                 .arg(element->el_name));
        // The "Var." types are the ones that make a block non-linear.
        if (linear && (element->el_type == 1 || element->el_type == 3))
            AddError(error_list, kPhyTable + QStringLiteral("Block type should be non-linear based on selected "
                                                            "physical elements"));
    }

    if (empty_found)
        return;
    for (int i = 0; i < elements.size(); ++i) {
        const BlkPhyElement *element = elements.at(i);
        if (element->port1 == element->port2) {
            AddError(error_list, kPhyTable + QStringLiteral("Port1 '%1' and Port2 '%2' names shall be different")
                                                 .arg(element->port1, element->port2));
            continue;
        }
        for (int j = i + 1; j < elements.size(); ++j) {
            const BlkPhyElement *other = elements.at(j);
            // Two elements between the same two ports may share a name.
            const bool same_ports = (other->port1 == element->port1 && other->port2 == element->port2)
                || (other->port1 == element->port2 && other->port2 == element->port1);
            if (!same_ports && other->el_name == element->el_name)
                AddError(error_list, kPhyTable + QStringLiteral("Duplicate element variable names found"));
        }
    }
}
