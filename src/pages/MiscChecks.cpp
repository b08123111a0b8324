// A bracketed variable of the operation count or of a condition is "group#entity" of the
// Parameters, or "port#n" for dimension n of a port; bare words name the run-time constants.
#include "pages/MiscChecks.h"

#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkMiscData.h"
#include "params/BlkParaData.h"
#include "params/TextChecks.h"

namespace {

bool IsKnownVariable(const MiscCheckContext &context, const QString &a, const QString &b)
{
    if (FindEntityInGroup(FindGroup(context.params, a), b))
        return true;
    bool ok = false;
    const int dim = b.toInt(&ok);
    return ok && dim >= 1 && dim <= 4 && FindCodePort(context.code, a);
}

void Error(ErrorList *error_list, const QString &text)
{
    error_list->AddMessage(ErrorList::Error, text);
}

} // namespace

void ValidateMiscCharVars(const MiscCheckContext &context, ErrorList *error_list)
{
    if (!context.misc)
        return;
    // These two speak as the code page and say "instrinsic"; both are the messages' own wording.
    for (const BlkCharVar *var : context.misc->char_vars) {
        if (var->para_grp.isEmpty())
            continue;
        const ParaGroup *group = FindGroup(context.params, var->para_grp);
        if (!group)
            Error(error_list, QStringLiteral("Code: Parameter group name '%1' mentioned in instrinsic variable table does not exists")
                                  .arg(var->para_grp));
        else if (!FindEntityInGroup(group, var->para_entity))
            Error(error_list, QStringLiteral("Code: Parameter entity name '%1' mentioned in instrinsic variable table does not exists")
                                  .arg(var->para_entity));
    }
}

void ValidateMiscCpuOps(const MiscCheckContext &context, ErrorList *error_list)
{
    if (!context.misc)
        return;
    const QString &ops = context.misc->cpu_ops;
    if (ops.isEmpty() || IsNumericText(ops, true))
        return;
    if (ops.count(QLatin1Char('[')) != ops.count(QLatin1Char(']'))) {
        Error(error_list, QStringLiteral("Miscellaneous: CPU operation required field has missing square braces"));
        return;
    }
    QStringList variables;
    ExtractBetween(ops, QStringLiteral("["), QStringLiteral("]"), variables);
    static const char *const constants[] = {"_SimStepSize", "_PlotStepSize", "_PrecisionBytes", "_PointerSize"};
    for (const QString &variable : variables) {
        if (variable.contains(QLatin1Char('#'))) {
            const QStringList parts = variable.split(QLatin1Char('#'));
            if (parts.size() != 2) {
                Error(error_list, QStringLiteral("Miscellaneous: CPU operation required field has invalid syntax related to #"));
                return;
            }
            if (!IsKnownVariable(context, parts[0], parts[1]))
                Error(error_list, QStringLiteral("Miscellaneous: CPU operation required field has non-matching variable '%1'")
                                      .arg(variable));
            continue;
        }
        // A substring test: a longer word holding a constant's name passes.
        bool known = false;
        for (const char *name : constants)
            known = known || variable.contains(QLatin1String(name));
        if (!known)
            Error(error_list, QStringLiteral("Miscellaneous: CPU operation required field has invalid string %1").arg(variable));
    }
}

void ValidateMiscParaConds(const MiscCheckContext &context, ErrorList *error_list)
{
    if (!context.misc)
        return;
    const QStringList &entries = context.misc->para_cond;
    for (int row = 0; row < entries.size(); ++row) {
        const QStringList parts = entries[row].split(QLatin1Char('$'));
        const QString &condition = parts[0];
        const QString prefix = QStringLiteral("Miscellaneous: Parameter conditions at row %1 ").arg(row);
        if (condition.isEmpty()) {
            Error(error_list, prefix + QStringLiteral("has empty Condition field"));
            continue;
        }
        if (condition.count(QLatin1Char('[')) != condition.count(QLatin1Char(']'))) {
            Error(error_list, prefix + QStringLiteral("has invalid syntax related to '[]'"));
            continue;
        }
        if (condition.count(QLatin1Char('(')) != condition.count(QLatin1Char(')'))) {
            Error(error_list, prefix + QStringLiteral("has invalid syntax related to '()'"));
            continue;
        }
        QStringList variables;
        ExtractBetween(condition, QStringLiteral("["), QStringLiteral("]"), variables);
        for (const QString &variable : variables) {
            const QStringList pieces = variable.split(QLatin1Char('#'));
            if (pieces.size() < 2)
                Error(error_list, prefix + QStringLiteral("has invalid syntax related to #"));
            else if (!IsKnownVariable(context, pieces[0], pieces[1]))
                Error(error_list, prefix + QStringLiteral("has non-matching variable '%1'").arg(variable));
        }
        if (parts.value(1).isEmpty())
            Error(error_list, prefix + QStringLiteral("has empty Error Text field"));
    }
}
