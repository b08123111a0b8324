// The fixed Configuration table, its authentication values and the accessors that read it.
#include "TestRegistry.h"

#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>
#include <memory>

using BoolAccessor = bool (*)(const BlkParaData *);
Q_DECLARE_METATYPE(BoolAccessor)

namespace {

struct ConfigDeleter {
    void operator()(BlkParaData *data) const { FreeBlkParaData(data); }
};
using Config = std::unique_ptr<BlkParaData, ConfigDeleter>;

Config Build(int licence_level = 0)
{
    return Config(BuildConfigurationEntities(licence_level));
}

ParaEntity *Entity(const Config &config, const QString &header, const QString &label)
{
    ParaEntity *entity = FindEntity(config.get(), header, label);
    if (!entity)
        qWarning("no entity %s / %s", qPrintable(header), qPrintable(label));
    return entity;
}

const QStringList kNoYes = {"No", "Yes"};
const QStringList kYesNo = {"Yes", "No"};

} // namespace

class tst_Configuration : public QObject
{
    Q_OBJECT
private slots:
    void groupsInOrder();
    void groupSizes_data();
    void groupSizes();
    void entities_data();
    void entities();
    void typesAndDefaultsAgree();
    void primarySecondaryControls();
    void blockId();
    void licenceLevel();
    void authenticationGroup();
    void authenticationRoundTrip_data();
    void authenticationRoundTrip();
    void authenticationTolerance();
    void accessorDefaults();
    void boolAccessors_data();
    void boolAccessors();
    void customBlockType_data();
    void customBlockType();
    void valueAccessors();
    void neutralAnswers();
};

void tst_Configuration::groupsInOrder()
{
    const Config config = Build();
    QCOMPARE(config->title, QString("Configuration"));
    QStringList headers;
    for (const ParaGroup *group : config->para_grp) {
        headers << group->header;
        QVERIFY(group->helpfile.isEmpty());
    }
    QCOMPARE(headers, QStringList({"Basic", "Advanced", "Supported Platforms", "Code-Basic",
                                   "Code-Physical Ports", "Code-Signal Ports",
                                   "Additional Memory Requirement", AuthGroupHeader(),
                                   "Vendor Specific"}));
    QVERIFY(config->model_cat.isEmpty());
}

void tst_Configuration::groupSizes_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<int>("count");
    QTest::newRow("Basic") << "Basic" << "Block ID" << "Zero Crossing Detection" << 11;
    QTest::newRow("Advanced") << "Advanced" << "Simulation Panel Block"
                              << "Allow only single block instance" << 9;
    QTest::newRow("Supported Platforms") << "Supported Platforms" << "8-bit/16-bit Microcontrollers"
                                         << "Native Hardware" << 8;
    QTest::newRow("Code-Basic") << "Code-Basic" << "Embeds other language code"
                                << "Class/Structure Name (Real64)" << 11;
    QTest::newRow("Code-Physical Ports") << "Code-Physical Ports"
                                         << "Element update method batch execution supported"
                                         << "Supports Decoupling" << 3;
    QTest::newRow("Code-Signal Ports") << "Code-Signal Ports"
                                       << "Call pointer to Run method instead of Run method"
                                       << "Generate code for signal ports dimension & size" << 3;
    QTest::newRow("Additional Memory Requirement") << "Additional Memory Requirement"
                                                   << "Cacheable Memory (Bytes)"
                                                   << "Non-Cacheable Memory (Bytes)" << 2;
    QTest::newRow("Vendor Specific") << "Vendor Specific" << "Custom Block Type"
                                     << "Prefer Encrypting Code Files" << 7;
}

void tst_Configuration::groupSizes()
{
    QFETCH(QString, header);
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(int, count);
    const Config config = Build();
    const ParaGroup *group = FindGroup(config.get(), header);
    QVERIFY(group);
    QCOMPARE(group->para_entity.size(), count);
    QCOMPARE(group->para_entity.first()->label, first);
    QCOMPARE(group->para_entity.last()->label, last);
}

void tst_Configuration::entities_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<int>("sel_idx");
    QTest::addColumn<QString>("sel_val");
    QTest::addColumn<int>("visible");
    QTest::addColumn<int>("enable");

    QTest::newRow("version default") << "Basic" << "Block Version" << QStringList() << -1 << "1.0" << 1 << 1;
    QTest::newRow("user block, locked") << "Basic" << "ZEMA Block/User Block"
                                        << QStringList({"ZEMA", "User"}) << 1 << "User" << 1 << 0;
    QTest::newRow("hardware block No") << "Basic" << "Hardware Block" << kYesNo << 1 << "No" << 1 << 1;
    QTest::newRow("misspelt thread key") << "Advanced" << "Prefer Seperate Thread" << kNoYes << 0 << "No" << 1 << 1;
    QTest::newRow("dynamic memory No") << "Advanced" << "Has Dynamically Allocated Memory" << kYesNo << 1 << "No" << 1 << 1;
    QTest::newRow("android Yes") << "Supported Platforms" << "Android Device" << kNoYes << 1 << "Yes" << 1 << 1;
    QTest::newRow("other language") << "Code-Basic" << "Embeds other language code"
                                    << QStringList({"None", "Embeds Python Code", "Embeds Fortran Code",
                                                    "Embeds Verilog Code"}) << 0 << "None" << 1 << 1;
    QTest::newRow("class kind, locked") << "Code-Basic" << "Class or Structure/Function"
                                        << QStringList({"Class", "Static Class", "Structure/Function"})
                                        << 0 << "Class" << 1 << 0;
    QTest::newRow("port dimensions No") << "Code-Signal Ports" << "Generate code for signal ports dimension & size"
                                        << kYesNo << 1 << "No" << 1 << 1;
    QTest::newRow("custom type") << "Vendor Specific" << "Custom Block Type" << QStringList() << -1 << "0" << 1 << 0;
    QTest::newRow("misspelt intrinsic, empty value") << "Vendor Specific" << "Instrinsic Block" << kNoYes
                                                     << 0 << "" << 1 << 0;
    QTest::newRow("licence entity hidden") << "Vendor Specific" << "Created License" << QStringList()
                                           << -1 << "" << 0 << 0;
    QTest::newRow("encrypting, index without value") << "Vendor Specific" << "Prefer Encrypting Code Files"
                                                     << kNoYes << 1 << "" << 0 << 0;
}

void tst_Configuration::entities()
{
    QFETCH(QString, header);
    QFETCH(QString, label);
    QFETCH(QStringList, values);
    QFETCH(int, sel_idx);
    QFETCH(QString, sel_val);
    QFETCH(int, visible);
    QFETCH(int, enable);
    const Config config = Build();
    const ParaEntity *entity = Entity(config, header, label);
    QVERIFY(entity);
    QCOMPARE(entity->values, values);
    QCOMPARE(entity->sel_idx, sel_idx);
    QCOMPARE(entity->sel_val, sel_val);
    QCOMPARE(int(entity->visible), visible);
    QCOMPARE(int(entity->enable), enable);
    QCOMPARE(int(entity->readonly), 0);
}

void tst_Configuration::typesAndDefaultsAgree()
{
    const Config config = Build();
    const QStringList index_only = {"Instrinsic Block", "Prefer Encrypting Code Files"};
    for (const ParaGroup *group : config->para_grp) {
        for (const ParaEntity *entity : group->para_entity) {
            const QString where = group->header + "/" + entity->label;
            QString type = "String";
            if (entity->label == "Block ID")
                type = "Integer32_Boolean";
            else if (group->header == AuthGroupHeader())
                type = AuthValueType();
            QVERIFY2(entity->val_type == type, qPrintable(where));
            QVERIFY2(entity->val_size.isEmpty() && entity->unit.isEmpty() && entity->para_var.isEmpty()
                         && entity->sel_val_gt.isEmpty() && entity->sel_val_lt.isEmpty(),
                     qPrintable(where));
            if (entity->values.isEmpty()) {
                QVERIFY2(entity->sel_idx == -1, qPrintable(where));
            } else if (!index_only.contains(entity->label)) {
                QVERIFY2(entity->sel_val == entity->values.value(entity->sel_idx), qPrintable(where));
            }
        }
    }
}

void tst_Configuration::primarySecondaryControls()
{
    const Config config = Build();
    const ParaEntity *kind = Entity(config, "Basic", "Block Primary/Secondary");
    QVERIFY(kind);
    QCOMPARE(kind->values, QStringList({"Primary", "Secondary"}));
    QCOMPARE(kind->sel_val, QString("Primary"));

    QStringList got;
    for (const ParaCon *con : kind->para_con) {
        QCOMPARE(con->act_type, QString("Disable"));
        got << QString("%1|%2|%3|%4").arg(con->sel_idx).arg(con->header, con->label, con->value);
        // Every target must exist in the table, or the form would drop the control.
        QVERIFY2(FindGroup(config.get(), con->header), qPrintable(got.last()));
        if (!con->label.isEmpty())
            QVERIFY2(FindEntity(config.get(), con->header, con->label), qPrintable(got.last()));
    }
    QCOMPARE(got, QStringList({"0|Advanced|Is Workspace Block|No",
                               "1|Basic|Linear/Non-Linear Block|Linear",
                               "1|Basic|Zero Crossing Detection|Disable",
                               "1|Code-Physical Ports|Step DeltaG Detection|Not Required",
                               "1|Code-Physical Ports|Supports Decoupling|No",
                               "1|Basic|Has Private Data|No",
                               "1|Basic|Hardware Block|No",
                               "1|Code-Basic||",
                               "1|Code-Physical Ports||",
                               "1|Code-Signal Ports||"}));

    int others = 0;
    for (const ParaGroup *group : config->para_grp)
        for (const ParaEntity *entity : group->para_entity)
            others += entity != kind && !entity->para_con.isEmpty();
    QCOMPARE(others, 0);
}

void tst_Configuration::blockId()
{
    const Config first = Build();
    const Config second = Build();
    const ParaEntity *id = Entity(first, "Basic", "Block ID");
    QVERIFY(id);
    QVERIFY(id->values.isEmpty());
    QCOMPARE(int(id->readonly), 1);
    QCOMPARE(int(id->enable), 1);
    bool ok = false;
    const quint32 number = id->sel_val.toUInt(&ok);
    QVERIFY2(ok, qPrintable(id->sel_val));
    QCOMPARE(id->sel_val, QString::number(number));
    QCOMPARE(BlockIdOf(first.get()), number);
    QVERIFY(Entity(second, "Basic", "Block ID")->sel_val != id->sel_val);
}

void tst_Configuration::licenceLevel()
{
    const QStringList vendor_only = {"ZEMA Block/User Block", "Class or Structure/Function"};
    for (int level : {0, kVendorLicenceLevel - 1, kVendorLicenceLevel, kVendorLicenceLevel + 1}) {
        const bool vendor = level >= kVendorLicenceLevel;
        const Config config = Build(level);
        const Config plain = Build();
        for (int g = 0; g < config->para_grp.size(); ++g) {
            const ParaGroup *group = config->para_grp[g];
            for (int e = 0; e < group->para_entity.size(); ++e) {
                const ParaEntity *entity = group->para_entity[e];
                const QString where = QString("level %1: %2").arg(level).arg(entity->label);
                const bool gated = group->header == "Vendor Specific" || vendor_only.contains(entity->label);
                QVERIFY2(entity->enable == (gated ? vendor : true), qPrintable(where));
                QVERIFY2(entity->visible == plain->para_grp[g]->para_entity[e]->visible, qPrintable(where));
            }
        }
    }
}

void tst_Configuration::authenticationGroup()
{
    const QStringList labels = AuthEntityLabels();
    QVERIFY(labels.size() >= 2 && labels.size() <= 3);
    QVERIFY(!AuthGroupHeader().isEmpty());
    QVERIFY(!AuthValueType().isEmpty());
    QVERIFY(AuthValueType() != "String");

    const Config config = Build();
    const ParaGroup *group = FindGroup(config.get(), AuthGroupHeader());
    QVERIFY(group);
    QStringList got;
    for (const ParaEntity *entity : group->para_entity) {
        got << entity->label;
        QVERIFY(entity->values.isEmpty());
        QVERIFY(entity->sel_val.isEmpty());
        QCOMPARE(entity->val_type, AuthValueType());
    }
    QCOMPARE(got, labels);
}

void tst_Configuration::authenticationRoundTrip_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << "";
    QTest::newRow("ascii") << "key-0042";
    QTest::newRow("non-latin") << QString::fromUtf8("schlüssel ключ 鍵");
    QTest::newRow("xml specials") << "<a & 'b'>";
}

void tst_Configuration::authenticationRoundTrip()
{
    QFETCH(QString, value);
    const Config config = Build();
    const QStringList labels = AuthEntityLabels();
    ParaEntity *first = Entity(config, AuthGroupHeader(), labels[0]);
    ParaEntity *second = Entity(config, AuthGroupHeader(), labels[1]);
    first->sel_val = value;
    second->sel_val = "other";
    ParaEntity *name = Entity(config, "Basic", "Block Name");
    name->sel_val = "Gain";

    AuthValuesToStored(config.get());
    QCOMPARE(first->sel_val, QString::fromLatin1(value.toUtf8().toBase64()));
    QCOMPARE(second->sel_val, QString("b3RoZXI="));
    QCOMPARE(name->sel_val, QString("Gain"));

    AuthValuesToWorking(config.get());
    QCOMPARE(first->sel_val, value);
    QCOMPARE(second->sel_val, QString("other"));
    QCOMPARE(name->sel_val, QString("Gain"));
}

void tst_Configuration::authenticationTolerance()
{
    AuthValuesToStored(nullptr);
    AuthValuesToWorking(nullptr);

    // A hand-edited file may hold a value that never was base64: it is kept, not garbled.
    const Config config = Build();
    ParaEntity *first = Entity(config, AuthGroupHeader(), AuthEntityLabels()[0]);
    first->sel_val = "not base64!";
    AuthValuesToWorking(config.get());
    QCOMPARE(first->sel_val, QString("not base64!"));

    // A table from a file without the group is left alone.
    Config bare(new BlkParaData);
    auto *group = new ParaGroup;
    group->header = "Basic";
    group->para_entity << new ParaEntity(AuthEntityLabels()[0]);
    group->para_entity[0]->sel_val = "abc";
    bare->para_grp << group;
    AuthValuesToStored(bare.get());
    QCOMPARE(group->para_entity[0]->sel_val, QString("abc"));
}

void tst_Configuration::accessorDefaults()
{
    const Config config = Build();
    const BlkParaData *c = config.get();
    QVERIFY(IsBlockLinear(c));
    QVERIFY(GeneratesSignalPorts(c));
    QVERIFY(!GeneratesPortDimensions(c));
    // Both read their value, which the table leaves empty though the index says otherwise.
    QVERIFY(!IsBlockIntrinsic(c));
    QVERIFY(!PrefersEncryptedCode(c));
    QVERIFY(!UsesStdLibraries(c));
    QVERIFY(!SupportsDecoupling(c));
    QVERIFY(!HasObjectDependency(c));
    QVERIFY(!EmbedsFortran(c));
    QVERIFY(!EmbedsPython(c));
    QVERIFY(!CallsRunByPointer(c));
    QVERIFY(!IsSimulationPanel(c));
    QVERIFY(!IsWorkspaceBlock(c));
    QVERIFY(!HasWorkerThread(c));
    QVERIFY(!NeedsPathVariable(c));
    QVERIFY(!IsStructure(c));
    QVERIFY(!IsStaticClass(c));
    QCOMPARE(CustomBlockType(c), 0);
    QVERIFY(!HasNoResizeHandle(c));
    QCOMPARE(BlockVersionOf(c), QString("1.0"));
    QCOMPARE(BlockNameOf(c), QString());
}

void tst_Configuration::boolAccessors_data()
{
    QTest::addColumn<BoolAccessor>("accessor");
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("sel_idx");
    QTest::addColumn<QString>("sel_val");
    QTest::addColumn<bool>("expected");

    const BoolAccessor intrinsic = IsBlockIntrinsic;
    const BoolAccessor encrypted = PrefersEncryptedCode;
    const BoolAccessor linear = IsBlockLinear;
    const BoolAccessor std_libs = UsesStdLibraries;
    const BoolAccessor panel = IsSimulationPanel;
    const BoolAccessor fortran = EmbedsFortran;
    const BoolAccessor python = EmbedsPython;
    const BoolAccessor structure = IsStructure;
    const BoolAccessor static_class = IsStaticClass;
    const BoolAccessor dims = GeneratesPortDimensions;

    QTest::newRow("intrinsic by value") << intrinsic << "Vendor Specific" << "Instrinsic Block" << 0 << "Yes" << true;
    QTest::newRow("intrinsic ignores index") << intrinsic << "Vendor Specific" << "Instrinsic Block" << 1 << "" << false;
    QTest::newRow("encrypted by value") << encrypted << "Vendor Specific" << "Prefer Encrypting Code Files" << 0 << "Yes" << true;
    QTest::newRow("non-linear") << linear << "Basic" << "Linear/Non-Linear Block" << 1 << "Non-Linear" << false;
    QTest::newRow("std libraries by index") << std_libs << "Advanced" << "Uses C++ Standard Libraries" << 1 << "" << true;
    QTest::newRow("std libraries ignores value") << std_libs << "Advanced" << "Uses C++ Standard Libraries" << 0 << "Yes" << false;
    QTest::newRow("panel any index but 0") << panel << "Advanced" << "Simulation Panel Block" << 5 << "" << true;
    QTest::newRow("fortran at 2") << fortran << "Code-Basic" << "Embeds other language code" << 2 << "" << true;
    QTest::newRow("python at 1") << python << "Code-Basic" << "Embeds other language code" << 1 << "" << true;
    QTest::newRow("structure at 2") << structure << "Code-Basic" << "Class or Structure/Function" << 2 << "" << true;
    QTest::newRow("static class at 1") << static_class << "Code-Basic" << "Class or Structure/Function" << 1 << "" << true;
    QTest::newRow("port dimensions") << dims << "Code-Signal Ports"
                                     << "Generate code for signal ports dimension & size" << 0 << "Yes" << true;
}

void tst_Configuration::boolAccessors()
{
    QFETCH(BoolAccessor, accessor);
    QFETCH(QString, header);
    QFETCH(QString, label);
    QFETCH(int, sel_idx);
    QFETCH(QString, sel_val);
    QFETCH(bool, expected);
    const Config config = Build();
    ParaEntity *entity = Entity(config, header, label);
    QVERIFY(entity);
    entity->sel_idx = sel_idx;
    entity->sel_val = sel_val;
    QCOMPARE(accessor(config.get()), expected);
}

void tst_Configuration::customBlockType_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("no_resize");
    QTest::newRow("below the range") << "340" << 340 << false;
    QTest::newRow("first without handle") << "341" << 341 << true;
    QTest::newRow("last without handle") << "344" << 344 << true;
    QTest::newRow("above the range") << "345" << 345 << false;
    QTest::newRow("plot") << "101" << 101 << false;
    QTest::newRow("empty") << "" << -1 << false;
    QTest::newRow("not a number") << "abc" << -1 << false;
}

void tst_Configuration::customBlockType()
{
    QFETCH(QString, value);
    QFETCH(int, type);
    QFETCH(bool, no_resize);
    const Config config = Build();
    Entity(config, "Vendor Specific", "Custom Block Type")->sel_val = value;
    BlockData block;
    block.config = config.get();
    QCOMPARE(CustomBlockType(&block), type);
    QCOMPARE(HasNoResizeHandle(&block), no_resize);
}

void tst_Configuration::valueAccessors()
{
    const Config config = Build();
    Entity(config, "Basic", "Block ID")->sel_val = "4000000000";
    Entity(config, "Basic", "Block Name")->sel_val = "Gain";
    Entity(config, "Basic", "ZEMA Version")->sel_val = "3.2";
    Entity(config, "Additional Memory Requirement", "Cacheable Memory (Bytes)")->sel_val = "[G#E]*4";
    Entity(config, "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)")->sel_val = "128";
    BlockData block;
    block.config = config.get();
    QCOMPARE(BlockIdOf(&block), 4000000000u);
    QCOMPARE(BlockNameOf(&block), QString("Gain"));
    QCOMPARE(ToolVersionOf(&block), QString("3.2"));
    QCOMPARE(MemoryRequirement(&block, 0), QString("[G#E]*4"));
    QCOMPARE(MemoryRequirement(&block, 1), QString("128"));
    QCOMPARE(MemoryRequirement(&block, 2), QString());
    QCOMPARE(MemoryRequirement(&block, -1), QString());

    Entity(config, "Basic", "Block ID")->sel_val = "not a number";
    QCOMPARE(BlockIdOf(&block), 0u);
}

void tst_Configuration::neutralAnswers()
{
    const BlkParaData *no_config = nullptr;
    const BlockData *no_block = nullptr;
    BlockData empty_block;
    BlkParaData empty_config;
    QCOMPARE(BlockIdOf(no_config), 0u);
    QCOMPARE(BlockIdOf(no_block), 0u);
    QCOMPARE(BlockNameOf(&empty_block), QString());
    QCOMPARE(CustomBlockType(no_config), -1);
    QCOMPARE(CustomBlockType(&empty_config), -1);
    QCOMPARE(MemoryRequirement(&empty_config, 0), QString());
    QVERIFY(!IsSimulationPanel(&empty_config));
    QVERIFY(!HasWorkerThread(&empty_block));
    QVERIFY(!IsBlockLinear(no_block));
    QVERIFY(!HasNoResizeHandle(no_config));
}

ZEMA_TEST(tst_Configuration)
#include "tst_Configuration.moc"
