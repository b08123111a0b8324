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

Config Build(int licence_level = 0) { return Config(BuildConfigurationEntities(licence_level)); }

} // namespace

class tst_Configuration : public QObject
{
    Q_OBJECT
private slots:
    void tableShape();
    void primarySecondaryControls();
    void blockIdFreshAndReadOnly();
    void authenticationRoundTrip();
    void accessorReadsIndexOrValue_data();
    void accessorReadsIndexOrValue();
    void otherAccessors();
};

void tst_Configuration::tableShape()
{
    const Config config = Build();
    QCOMPARE(config->title, QString("Configuration"));
    const QList<QPair<QString, int>> shape = {
        {"Basic", 11}, {"Advanced", 9}, {"Supported Platforms", 8}, {"Code-Basic", 11},
        {"Code-Physical Ports", 3}, {"Code-Signal Ports", 3}, {"Additional Memory Requirement", 2},
        {AuthGroupHeader(), AuthEntityLabels().size()}, {"Vendor Specific", 7}};
    const QStringList index_only = {"Instrinsic Block", "Prefer Encrypting Code Files"};
    QCOMPARE(config->para_grp.size(), shape.size());
    for (int g = 0; g < shape.size(); ++g) {
        const ParaGroup *group = config->para_grp[g];
        QCOMPARE(group->header, shape[g].first);
        QCOMPARE(group->para_entity.size(), shape[g].second);
        for (const ParaEntity *entity : group->para_entity) {
            if (!entity->values.isEmpty() && !index_only.contains(entity->label))
                QVERIFY2(entity->sel_val == entity->values.value(entity->sel_idx), qPrintable(entity->label));
        }
    }
    QCOMPARE(FindEntity(config.get(), "Basic", "Block ID")->val_type, QString("Integer32_Boolean"));
    QCOMPARE(FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[0])->val_type, AuthValueType());
    // The misspellings are the keys that stored files carry.
    QVERIFY(FindEntity(config.get(), "Advanced", "Prefer Seperate Thread")
            && FindEntity(config.get(), "Vendor Specific", "Instrinsic Block"));
    // Both combos show an index but hold an empty value, which the accessors read as false.
    QVERIFY(!IsBlockIntrinsic(config.get()));
    QVERIFY(!PrefersEncryptedCode(config.get()));
    for (int level : {kVendorLicenceLevel - 1, kVendorLicenceLevel})
        QCOMPARE(bool(FindEntity(Build(level).get(), "Vendor Specific", "Custom Block Type")->enable),
                 level >= kVendorLicenceLevel);
}

void tst_Configuration::primarySecondaryControls()
{
    const Config config = Build();
    QStringList got;
    for (const ParaCon *con : FindEntity(config.get(), "Basic", "Block Primary/Secondary")->para_con) {
        QCOMPARE(con->act_type, QString("Disable"));
        got << QString("%1|%2|%3|%4").arg(con->sel_idx).arg(con->header, con->label, con->value);
        // A target missing from the table would make the form drop the control.
        QVERIFY2(con->label.isEmpty() ? FindGroup(config.get(), con->header) != nullptr
                                      : FindEntity(config.get(), con->header, con->label) != nullptr,
                 qPrintable(got.last()));
    }
    QCOMPARE(got.join(";"), QString("0|Advanced|Is Workspace Block|No;1|Basic|Linear/Non-Linear Block|Linear;"
                                    "1|Basic|Zero Crossing Detection|Disable;"
                                    "1|Code-Physical Ports|Step DeltaG Detection|Not Required;"
                                    "1|Code-Physical Ports|Supports Decoupling|No;"
                                    "1|Basic|Has Private Data|No;1|Basic|Hardware Block|No;"
                                    "1|Code-Basic||;1|Code-Physical Ports||;1|Code-Signal Ports||"));
}

void tst_Configuration::blockIdFreshAndReadOnly()
{
    const Config first = Build();
    const ParaEntity *id = FindEntity(first.get(), "Basic", "Block ID");
    QVERIFY(id && id->values.isEmpty() && id->readonly);
    bool ok = false;
    QVERIFY2(QString::number(id->sel_val.toUInt(&ok)) == id->sel_val && ok, qPrintable(id->sel_val));
    QVERIFY(FindEntity(Build().get(), "Basic", "Block ID")->sel_val != id->sel_val);
}

void tst_Configuration::authenticationRoundTrip()
{
    const Config config = Build();
    ParaEntity *first = FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[0]);
    ParaEntity *second = FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[1]);
    ParaEntity *name = FindEntity(config.get(), "Basic", "Block Name");
    const QString value = QString::fromUtf8("ключ <a & 'b'>");
    first->sel_val = value;
    name->sel_val = "Gain";
    AuthValuesToStored(config.get());
    QCOMPARE(first->sel_val, QString::fromLatin1(value.toUtf8().toBase64()));
    AuthValuesToWorking(config.get());
    QCOMPARE(first->sel_val, value);
    QCOMPARE(name->sel_val, QString("Gain"));
    // A hand-edited file may hold a value that never was base64: it is kept, not garbled.
    second->sel_val = "not base64!";
    AuthValuesToWorking(config.get());
    QCOMPARE(second->sel_val, QString("not base64!"));
}

void tst_Configuration::accessorReadsIndexOrValue_data()
{
    QTest::addColumn<BoolAccessor>("accessor");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("sel_idx");
    QTest::addColumn<QString>("sel_val");
    QTest::addColumn<bool>("expected");
    const BoolAccessor intrinsic = IsBlockIntrinsic, std_libs = UsesStdLibraries, panel = IsSimulationPanel,
                       fortran = EmbedsFortran, python = EmbedsPython, static_class = IsStaticClass;
    QTest::newRow("intrinsic by value") << intrinsic << "Instrinsic Block" << 0 << "Yes" << true;
    QTest::newRow("intrinsic ignores index") << intrinsic << "Instrinsic Block" << 1 << "" << false;
    QTest::newRow("std libraries by index") << std_libs << "Uses C++ Standard Libraries" << 1 << "" << true;
    QTest::newRow("std libraries ignores value") << std_libs << "Uses C++ Standard Libraries" << 0 << "Yes" << false;
    QTest::newRow("panel: any index but 0") << panel << "Simulation Panel Block" << 5 << "" << true;
    QTest::newRow("fortran at 2") << fortran << "Embeds other language code" << 2 << "" << true;
    QTest::newRow("python only at 1") << python << "Embeds other language code" << 2 << "" << false;
    QTest::newRow("static class at 1") << static_class << "Class or Structure/Function" << 1 << "" << true;
}

void tst_Configuration::accessorReadsIndexOrValue()
{
    QFETCH(BoolAccessor, accessor);
    QFETCH(QString, label);
    QFETCH(int, sel_idx);
    QFETCH(QString, sel_val);
    const Config config = Build();
    ParaEntity *entity = FindEntity(config.get(), QString(), label);
    QVERIFY(entity);
    entity->sel_idx = sel_idx;
    entity->sel_val = sel_val;
    QTEST(accessor(config.get()), "expected");
}

void tst_Configuration::otherAccessors()
{
    const Config config = Build();
    BlockData block;
    block.config = config.get();
    ParaEntity *type = FindEntity(config.get(), "Vendor Specific", "Custom Block Type");
    for (const QString value : {"340", "341", "344", "345"}) {
        type->sel_val = value;
        QCOMPARE(CustomBlockType(&block), value.toInt());
        QCOMPARE(HasNoResizeHandle(&block), value == "341" || value == "344");
    }
    type->sel_val = "abc";
    QCOMPARE(CustomBlockType(&block), -1);
    ParaEntity *id = FindEntity(config.get(), "Basic", "Block ID");
    id->sel_val = "4000000000";
    QCOMPARE(BlockIdOf(&block), 4000000000u);
    id->sel_val = "not a number";
    QCOMPARE(BlockIdOf(&block), 0u);
    FindEntity(config.get(), "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)")->sel_val = "[G#E]*4";
    QCOMPARE(MemoryRequirement(&block, 1), QString("[G#E]*4"));
    QCOMPARE(MemoryRequirement(&block, 2), QString());
    BlkParaData empty_config;
    QCOMPARE(BlockIdOf(static_cast<const BlockData *>(nullptr)), 0u);
    QCOMPARE(CustomBlockType(&empty_config), -1);
}

ZEMA_TEST(tst_Configuration)
#include "tst_Configuration.moc"
