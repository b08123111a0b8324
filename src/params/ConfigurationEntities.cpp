// The Configuration table is rebuilt at every open, so a new entity needs no file conversion.
//
// Authentication: a group "Authentication" with the line edits "Author Key" and "Block Signature",
// empty by default, of the value type "Protected_String" (masked on the form). Header, labels,
// defaults and type name are base64 literals decoded while the table is built. In a file the
// values are base64 of their UTF-8 text; in memory they are plain text.
//
// Licence level: below kVendorLicenceLevel the entities reserved to the vendor keep `enable` 0:
// "ZEMA Block/User Block", "Class or Structure/Function" and the whole "Vendor Specific" group.
// At the vendor level they become editable; the hidden licence entities stay hidden.
#include "params/ConfigurationEntities.h"

#include "params/BlkParaData.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <iterator>

namespace {

const char kAuthHeader[] = "QXV0aGVudGljYXRpb24=";
const char *const kAuthLabels[] = {"QXV0aG9yIEtleQ==", "QmxvY2sgU2lnbmF0dXJl"};
const char *const kAuthDefaults[] = {"", ""};
const char kAuthType[] = "UHJvdGVjdGVkX1N0cmluZw==";

QString Decode(const char *literal)
{
    return QString::fromUtf8(QByteArray::fromBase64(QByteArray(literal)));
}

const QStringList kNoYes = {QStringLiteral("No"), QStringLiteral("Yes")};
const QStringList kYesNo = {QStringLiteral("Yes"), QStringLiteral("No")};

ParaGroup *AddGroup(BlkParaData *data, const QString &header)
{
    auto *group = new ParaGroup;
    group->header = header;
    data->para_grp.append(group);
    return group;
}

ParaEntity *AddEdit(ParaGroup *group, const QString &label, const QString &value = QString())
{
    auto *entity = new ParaEntity(label);
    entity->val_type = QStringLiteral("String");
    entity->sel_val = value;
    group->para_entity.append(entity);
    return entity;
}

ParaEntity *AddCombo(ParaGroup *group, const QString &label, const QStringList &values, int index)
{
    ParaEntity *entity = AddEdit(group, label, values.value(index));
    entity->values = values;
    entity->sel_idx = index;
    return entity;
}

void AddControl(ParaEntity *owner, int index, const QString &header, const QString &label,
                const QString &value)
{
    auto *con = new ParaCon;
    con->header = header;
    con->label = label;
    con->value = value;
    con->act_type = QStringLiteral("Disable");
    con->sel_idx = index;
    owner->para_con.append(con);
}

void AddBasic(BlkParaData *data, bool vendor)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Basic"));
    ParaEntity *id = AddEdit(g, QStringLiteral("Block ID"),
                             QString::number(QRandomGenerator::global()->generate()));
    id->val_type = QStringLiteral("Integer32_Boolean");
    id->readonly = 1;
    AddEdit(g, QStringLiteral("Block Name"));
    AddEdit(g, QStringLiteral("Block Version"), QStringLiteral("1.0"));
    AddEdit(g, QStringLiteral("ZEMA Version"));
    AddCombo(g, QStringLiteral("ZEMA Block/User Block"),
             {QStringLiteral("ZEMA"), QStringLiteral("User")}, 1)->enable = vendor;
    ParaEntity *kind = AddCombo(g, QStringLiteral("Block Primary/Secondary"),
                                {QStringLiteral("Primary"), QStringLiteral("Secondary")}, 0);
    AddCombo(g, QStringLiteral("Simulation Type"),
             {QStringLiteral("Time Domain"), QStringLiteral("2D Space"),
              QStringLiteral("2D Space Time"), QStringLiteral("3D Space"),
              QStringLiteral("3D Space Time"), QStringLiteral("Any")}, 0);
    AddCombo(g, QStringLiteral("Linear/Non-Linear Block"),
             {QStringLiteral("Linear"), QStringLiteral("Non-Linear")}, 0);
    AddCombo(g, QStringLiteral("Has Private Data"), kYesNo, 0);
    AddCombo(g, QStringLiteral("Hardware Block"), kYesNo, 1);
    AddCombo(g, QStringLiteral("Zero Crossing Detection"),
             {QStringLiteral("Disable"), QStringLiteral("Enable")}, 0);

    // A Primary block cannot be a workspace block; a Secondary one has no code of its own.
    AddControl(kind, 0, QStringLiteral("Advanced"), QStringLiteral("Is Workspace Block"),
               QStringLiteral("No"));
    AddControl(kind, 1, QStringLiteral("Basic"), QStringLiteral("Linear/Non-Linear Block"),
               QStringLiteral("Linear"));
    AddControl(kind, 1, QStringLiteral("Basic"), QStringLiteral("Zero Crossing Detection"),
               QStringLiteral("Disable"));
    AddControl(kind, 1, QStringLiteral("Code-Physical Ports"), QStringLiteral("Step DeltaG Detection"),
               QStringLiteral("Not Required"));
    AddControl(kind, 1, QStringLiteral("Code-Physical Ports"), QStringLiteral("Supports Decoupling"),
               QStringLiteral("No"));
    AddControl(kind, 1, QStringLiteral("Basic"), QStringLiteral("Has Private Data"),
               QStringLiteral("No"));
    AddControl(kind, 1, QStringLiteral("Basic"), QStringLiteral("Hardware Block"),
               QStringLiteral("No"));
    AddControl(kind, 1, QStringLiteral("Code-Basic"), QString(), QString());
    AddControl(kind, 1, QStringLiteral("Code-Physical Ports"), QString(), QString());
    AddControl(kind, 1, QStringLiteral("Code-Signal Ports"), QString(), QString());
}

void AddAdvanced(BlkParaData *data)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Advanced"));
    AddCombo(g, QStringLiteral("Simulation Panel Block"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Prefer Seperate Thread"), kNoYes, 0);  // misspelt key, deliberate
    AddCombo(g, QStringLiteral("Is Workspace Block"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Has Dynamically Allocated Memory"), kYesNo, 1);
    AddCombo(g, QStringLiteral("Uses C++ Standard Libraries"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Fixed Point Math Supported"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Requires File System Support"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Other block object dependency"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Allow only single block instance"), kNoYes, 0);
}

void AddPlatforms(BlkParaData *data)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Supported Platforms"));
    AddCombo(g, QStringLiteral("8-bit/16-bit Microcontrollers"), kNoYes, 1);
    AddCombo(g, QStringLiteral("32-bit Microcontrollers (without FPU)"), kNoYes, 1);
    AddCombo(g, QStringLiteral("Microcontrollers (with FPU)"), kNoYes, 1);
    AddCombo(g, QStringLiteral("Programmable Logic Devices"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Hardware With Embedded OS"), kNoYes, 1);
    AddCombo(g, QStringLiteral("Android Device"), kNoYes, 1);
    AddCombo(g, QStringLiteral("Desktop/Server Processors"), kNoYes, 1);
    AddCombo(g, QStringLiteral("Native Hardware"), kNoYes, 1);
}

void AddCode(BlkParaData *data, bool vendor)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Code-Basic"));
    AddCombo(g, QStringLiteral("Embeds other language code"),
             {QStringLiteral("None"), QStringLiteral("Embeds Python Code"),
              QStringLiteral("Embeds Fortran Code"), QStringLiteral("Embeds Verilog Code")}, 0);
    AddCombo(g, QStringLiteral("Insert Code From Files"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Add Worker Thread Function Code"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Block Path Variable Required"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Class or Structure/Function"),
             {QStringLiteral("Class"), QStringLiteral("Static Class"),
              QStringLiteral("Structure/Function")}, 0)->enable = vendor;
    AddEdit(g, QStringLiteral("Header File Name"));
    AddEdit(g, QStringLiteral("Class/Structure Name (Integer16)"));
    AddEdit(g, QStringLiteral("Class/Structure Name (Integer32)"));
    AddEdit(g, QStringLiteral("Class/Structure Name (Integer64)"));
    AddEdit(g, QStringLiteral("Class/Structure Name (Real32)"));
    AddEdit(g, QStringLiteral("Class/Structure Name (Real64)"));

    g = AddGroup(data, QStringLiteral("Code-Physical Ports"));
    AddCombo(g, QStringLiteral("Element update method batch execution supported"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Step DeltaG Detection"),
             {QStringLiteral("Not Required"), QStringLiteral("Required")}, 0);
    AddCombo(g, QStringLiteral("Supports Decoupling"), kNoYes, 0);

    g = AddGroup(data, QStringLiteral("Code-Signal Ports"));
    AddCombo(g, QStringLiteral("Call pointer to Run method instead of Run method"), kNoYes, 0);
    AddCombo(g, QStringLiteral("Generate code for signal ports"), kYesNo, 0);
    AddCombo(g, QStringLiteral("Generate code for signal ports dimension & size"), kYesNo, 1);
}

void AddMemory(BlkParaData *data)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Additional Memory Requirement"));
    AddEdit(g, QStringLiteral("Cacheable Memory (Bytes)"));
    AddEdit(g, QStringLiteral("Non-Cacheable Memory (Bytes)"));
}

void AddAuthentication(BlkParaData *data)
{
    ParaGroup *g = AddGroup(data, AuthGroupHeader());
    const QString type = AuthValueType();
    for (size_t i = 0; i < std::size(kAuthLabels); ++i)
        AddEdit(g, Decode(kAuthLabels[i]), Decode(kAuthDefaults[i]))->val_type = type;
}

void AddVendor(BlkParaData *data, bool vendor)
{
    ParaGroup *g = AddGroup(data, QStringLiteral("Vendor Specific"));
    AddEdit(g, QStringLiteral("Custom Block Type"), QStringLiteral("0"));
    // Misspelt key, deliberate; its value stays empty until a file sets it, so it reads as "not".
    ParaEntity *intrinsic = AddCombo(g, QStringLiteral("Instrinsic Block"), kNoYes, 0);
    intrinsic->sel_val.clear();
    for (const char *label : {"Non-In-memory Compiler Support", "Applicable License Modules",
                              "Created License", "Apply License To"})
        AddEdit(g, QString::fromLatin1(label))->visible = 0;
    ParaEntity *encrypt = AddCombo(g, QStringLiteral("Prefer Encrypting Code Files"), kNoYes, 1);
    encrypt->sel_val.clear();  // deliberate: index "Yes" with an empty value reads as "No"
    encrypt->visible = 0;
    for (ParaEntity *entity : g->para_entity)
        entity->enable = vendor;
}

ParaGroup *AuthGroup(BlkParaData *config)
{
    return FindGroup(config, AuthGroupHeader());
}

} // namespace

QString AuthGroupHeader()
{
    return Decode(kAuthHeader);
}

QStringList AuthEntityLabels()
{
    QStringList labels;
    for (const char *label : kAuthLabels)
        labels.append(Decode(label));
    return labels;
}

QString AuthValueType()
{
    return Decode(kAuthType);
}

BlkParaData *BuildConfigurationEntities(int licence_level)
{
    const bool vendor = licence_level >= kVendorLicenceLevel;
    auto *data = new BlkParaData;
    data->title = QStringLiteral("Configuration");
    AddBasic(data, vendor);
    AddAdvanced(data);
    AddPlatforms(data);
    AddCode(data, vendor);
    AddMemory(data);
    AddAuthentication(data);
    AddVendor(data, vendor);
    return data;
}

void AuthValuesToStored(BlkParaData *config)
{
    ParaGroup *group = AuthGroup(config);
    if (!group)
        return;
    for (const QString &label : AuthEntityLabels())
        if (ParaEntity *entity = FindEntityInGroup(group, label))
            entity->sel_val = QString::fromLatin1(entity->sel_val.toUtf8().toBase64());
}

void AuthValuesToWorking(BlkParaData *config)
{
    ParaGroup *group = AuthGroup(config);
    if (!group)
        return;
    for (const QString &label : AuthEntityLabels()) {
        ParaEntity *entity = FindEntityInGroup(group, label);
        if (!entity)
            continue;
        const auto decoded = QByteArray::fromBase64Encoding(
            entity->sel_val.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        if (decoded)
            entity->sel_val = QString::fromUtf8(*decoded);
    }
}
