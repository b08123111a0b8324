// The Configuration's merge of stored values, its two roads to a file, and every message of its
// checks with the exact text and order.
#include "SampleBlock.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/Entitlement.h"
#include "app/ErrorList.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationChecks.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>
#include <memory>

namespace {

using Config = std::unique_ptr<BlkParaData, void (*)(BlkParaData *)>;

Config Own(BlkParaData *data) { return Config(data, FreeBlkParaData); }

ParaEntity *Entity(BlkParaData *config, const QString &path)
{
    const QStringList parts = path.split('|');
    return FindEntity(config, parts.value(0), parts.value(1));
}

// "Header|Label=value"; a combo also takes the index of the value, as the form would.
void Apply(BlkParaData *config, const QStringList &settings)
{
    for (const QString &setting : settings) {
        const int eq = setting.indexOf('=');
        ParaEntity *entity = Entity(config, setting.left(eq));
        QVERIFY2(entity, qPrintable(setting));
        entity->sel_val = setting.mid(eq + 1);
        if (!entity->values.isEmpty())
            entity->sel_idx = entity->values.indexOf(entity->sel_val);
    }
}

BlkParaData *OneGroup(const QString &title, qint32 var_type)
{
    auto *gain = new ParaEntity("Gain");
    gain->var_type = var_type;
    auto *limit = new ParaEntity("Limit");
    limit->var_type = 2;
    return new BlkParaData{title, {new ParaGroup{"Gains", "", {limit, gain}}}, {}};
}

// Both records list the ports in the same order; "name:type" with an empty type has no
// presentation port at all.
struct Ports {
    BlkCodeData code;
    BlkPresData pres;
    explicit Ports(const QStringList &specs)
    {
        for (const QString &spec : specs) {
            const QString name = spec.section(':', 0, 0), type = spec.section(':', 1);
            code.ports.append(new BlkCodePort{});
            code.ports.last()->port_name = name;
            if (type.isEmpty())
                continue;
            pres.ports.append(new BlkPort{});
            pres.ports.last()->name = name;
            pres.ports.last()->type = type;
        }
    }
    ~Ports()
    {
        for (BlkCodePort *port : code.ports)
            FreeBlkCodePort(port);
        qDeleteAll(pres.ports);
    }
};

QStringList Messages(const ErrorList &list) { return list.NumberedMessages(); }

QString AuthKey(BlkParaData *config)
{
    return FindEntity(config, AuthGroupHeader(), AuthEntityLabels()[0])->sel_val;
}

const QStringList kClassNames = {
    "Code-Basic|Class/Structure Name (Integer16)=Blk", "Code-Basic|Class/Structure Name (Integer32)=Blk",
    "Code-Basic|Class/Structure Name (Integer64)=Blk", "Code-Basic|Class/Structure Name (Real32)=Blk",
    "Code-Basic|Class/Structure Name (Real64)=Blk"};

} // namespace

class tst_ConfigurationChecks : public QObject
{
    Q_OBJECT

private slots:
    void mergesStoredValuesIntoTable()
    {
        Config stored = Own(BuildConfigurationEntities(0));
        Apply(stored.get(), {"Basic|Block Name=Blk", "Basic|Simulation Type=3D Space",
                             "Advanced|Simulation Panel Block=Maybe"});
        Entity(stored.get(), "Basic|Simulation Type")->sel_idx = 0;            // the text wins
        ParaEntity *linear = Entity(stored.get(), "Basic|Linear/Non-Linear Block");
        linear->sel_val.clear();                                                // the index is used
        linear->sel_idx = 1;
        ParaEntity *hardware = Entity(stored.get(), "Basic|Hardware Block");
        hardware->sel_val.clear();
        hardware->sel_idx = 7;                                                  // invalid: default stays
        ParaEntity *owner = Entity(stored.get(), "Basic|ZEMA Block/User Block");
        owner->enable = 1;                                                      // attributes never move
        owner->values = QStringList{"User", "ZEMA"};
        owner->sel_val = "ZEMA";
        ParaGroup *basic = FindGroup(stored.get(), "Basic");
        ParaEntity *version = Entity(stored.get(), "Basic|Block Version");       // absent: default stays
        basic->para_entity.removeOne(version);
        FreeParaEntity(version);
        basic->para_entity.append(new ParaEntity("Colour"));                    // unknown: dropped
        stored->para_grp.append(new ParaGroup{"Extras", "", {new ParaEntity("Block Name")}});
        // A moved control takes its value; one the table lacks is not added.
        for (ParaCon *con : Entity(stored.get(), "Basic|Block Primary/Secondary")->para_con)
            if (con->label == "Hardware Block")
                con->value = "Yes";
        Entity(stored.get(), "Basic|Block Primary/Secondary")->para_con.append(
            new ParaCon{"Basic", "Block Name", "x", "Disable", 1});
        Entity(stored.get(), AuthGroupHeader() + "|" + AuthEntityLabels()[0])->sel_val =
            QString::fromLatin1(QByteArray("k & <k>").toBase64());

        BlockData block;
        block.config = stored.release();
        const Config config = Own(LoadConfigurationData("/some/block", &block, 0));
        QVERIFY(!block.config);
        BlkParaData *c = config.get();
        QStringList seen;
        for (const char *path : {"Basic|Block Name", "Basic|Block Version", "Basic|Simulation Type",
                                 "Basic|Linear/Non-Linear Block", "Basic|Hardware Block",
                                 "Advanced|Simulation Panel Block", "Basic|ZEMA Block/User Block"}) {
            const ParaEntity *e = Entity(c, path);
            seen << QString("%1 %2 %3").arg(e->sel_val).arg(e->sel_idx).arg(e->enable);
        }
        QCOMPARE(seen, (QStringList{"Blk -1 1", "1.0 -1 1", "3D Space 3 1", "Non-Linear 1 1", "No 1 1",
                                    "No 0 1", "ZEMA 0 0"}));
        QCOMPARE(Entity(c, "Basic|ZEMA Block/User Block")->values, (QStringList{"ZEMA", "User"}));
        QVERIFY(!Entity(c, "Basic|Colour") && !FindGroup(c, "Extras"));
        QStringList controls;
        for (const ParaCon *con : Entity(c, "Basic|Block Primary/Secondary")->para_con)
            if (con->sel_idx == 1 && !con->label.isEmpty())
                controls << con->label + "=" + con->value;
        QCOMPARE(controls, (QStringList{"Linear/Non-Linear Block=Linear", "Zero Crossing Detection=Disable",
                                        "Step DeltaG Detection=Not Required", "Supports Decoupling=No",
                                        "Has Private Data=No", "Hardware Block=Yes"}));
        QCOMPARE(AuthKey(c), QString("k & <k>"));
    }

    void loadWithoutStoredValues()
    {
        // An empty path leaves the block alone; a block without a record does not fall back to a file.
        BlockData block;
        block.config = BuildConfigurationEntities(0);
        Apply(block.config, {"Basic|Block Name=Kept"});
        Config fresh = Own(LoadConfigurationData(QString(), &block, kVendorLicenceLevel));
        QCOMPARE(BlockNameOf(block.config), QString("Kept"));
        QVERIFY(BlockNameOf(fresh.get()).isEmpty());
        QCOMPARE(Entity(fresh.get(), "Vendor Specific|Custom Block Type")->enable, quint8(1));
        FreeBlkParaData(block.config);
        block.config = nullptr;

        QTemporaryDir dir;
        Config file = Own(BuildConfigurationEntities(0));
        Apply(file.get(), {"Basic|Block Name=FromFile"});
        QVERIFY(SaveConfigurationData(dir.path(), false, nullptr, file.get(), nullptr));
        fresh = Own(LoadConfigurationData(dir.path(), &block, 0));
        QVERIFY(BlockNameOf(fresh.get()).isEmpty());
        fresh = Own(LoadConfigurationData(dir.path() + "/none", nullptr, 0));
        QVERIFY(fresh && BlockNameOf(fresh.get()).isEmpty());
    }

    void roundTripThroughBlockKeepsWorkingForm()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("Blk");
        QVERIFY(WriteSampleBlock(path));
        QString id;
        for (int pass = 0; pass < 2; ++pass) {
            auto *block = new BlockData;
            block->path = path;
            QVERIFY(LoadBlockData(block, QString(), nullptr, "ZEMA", true));
            BlkParaData *config = LoadConfigurationData(path, block, 0);
            // Converted once: a second decoding would turn the key into garbage or keep base64.
            QCOMPARE(AuthKey(config), pass == 0 ? QString("author & key") : QString("ключ ; <b>"));
            if (pass == 1)
                QCOMPARE(FindEntity(config, "Basic", "Block ID")->sel_val, id);
            Apply(config, {AuthGroupHeader() + "|" + AuthEntityLabels()[0] + "=ключ ; <b>"});
            QVERIFY(SaveConfigurationData(path, pass == 0, block, config, nullptr));
            QCOMPARE(block->config, config);
            id = FindEntity(config, "Basic", "Block ID")->sel_val;
            QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
            QCOMPARE(AuthKey(config), QString("ключ ; <b>"));
            FreeBlockData(block);
        }
        QVERIFY(!DecodedDefinition(path + "/Blk.bdef").contains("ключ"));
    }

    void roundTripThroughConfigFile()
    {
        QTemporaryDir dir;
        Config config = Own(LoadConfigurationData(QString(), nullptr, 0));
        Apply(config.get(), {"Basic|Block Name=Blk", "Basic|Simulation Type=Any",
                             AuthGroupHeader() + "|" + AuthEntityLabels()[0] + "=a & <b>"});
        const QString id = FindEntity(config.get(), "Basic", "Block ID")->sel_val;
        QVERIFY(SaveConfigurationData(dir.path(), true, nullptr, config.get(), nullptr));
        QVERIFY(FindEntity(config.get(), "Basic", "Block ID")->sel_val != id);
        QCOMPARE(AuthKey(config.get()), QString("a & <b>"));
        const QByteArray bytes = ReadBytes(dir.filePath("blk_config.cfg"));
        QVERIFY(bytes.contains(QByteArray("a & <b>").toBase64()) && !bytes.contains("a &amp;"));

        const Config loaded = Own(LoadConfigurationData(dir.path(), nullptr, 0));
        QCOMPARE(AuthKey(loaded.get()), QString("a & <b>"));
        QCOMPARE(BlockIdOf(loaded.get()), BlockIdOf(config.get()));
        QCOMPARE(Entity(loaded.get(), "Basic|Simulation Type")->sel_idx, 5);
    }

    void saveFailureIsReported()
    {
        QTemporaryDir dir;
        const Config config = Own(BuildConfigurationEntities(0));
        ErrorList list;
        QVERIFY(!SaveConfigurationData(dir.filePath("missing"), false, nullptr, config.get(), &list));
        QCOMPARE(list.errors.size(), 1);
        QVERIFY(list.errors[0].startsWith("Error: Cannot write file: blk_config.cfg"));
    }

    void validateConfiguration_data()
    {
        QTest::addColumn<QStringList>("settings");
        QTest::addColumn<bool>("header_file");  // src/Blk.h exists
        QTest::addColumn<bool>("saved");        // block_name is set
        QTest::addColumn<int>("var_type");      // of one entity in Parameters and Initial Conditions
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QStringList>("messages");

        const QString name = "1. Error: Configuration: Value at entity 'Block Name' ";
        QTest::newRow("clean") << QStringList{} << true << true << 0 << QStringList{} << QStringList{};
        QTest::newRow("name empty") << QStringList{"Basic|Block Name="} << true << true << 0 << QStringList{}
                                    << QStringList{name + "is empty"};
        QTest::newRow("name with blank") << QStringList{"Basic|Block Name=my block"} << true << true << 0
                                         << QStringList{} << QStringList{name + "has white spaces"};
        QTest::newRow("name with dot") << QStringList{"Basic|Block Name=my.block"} << true << true << 0
                                       << QStringList{} << QStringList{name + "has invalid characters"};
        QTest::newRow("name with blank and dot")
            << QStringList{"Basic|Block Name=my .block"} << true << true << 0 << QStringList{}
            << QStringList{name + "has white spaces",
                           "2. Error: Configuration: Value at entity 'Block Name' has invalid characters"};
        QTest::newRow("blank version") << QStringList{"Basic|Block Version= "} << true << true << 0
                                       << QStringList{} << QStringList{};

        const QString no_header = "1. Warning: Configuration: Code header file field cannot be empty";
        QTest::newRow("header field empty") << QStringList{"Code-Basic|Header File Name="} << true << true
                                            << 0 << QStringList{} << QStringList{no_header};
        QTest::newRow("never saved, header field empty")
            << QStringList{"Code-Basic|Header File Name="} << false << false << 0 << QStringList{}
            << QStringList{no_header};
        QTest::newRow("header file missing") << QStringList{} << false << true << 0 << QStringList{}
                                             << QStringList{"1. Warning: Configuration: Specified code header file does not exists"};
        QTest::newRow("never saved") << QStringList{} << false << false << 0 << QStringList{} << QStringList{};
        QStringList no_classes;
        for (const QString &setting : kClassNames)
            no_classes << setting.left(setting.indexOf('=') + 1);
        QTest::newRow("class names empty")
            << no_classes << true << true << 0 << QStringList{}
            << QStringList{"1. Error: Configuration:Code: Class/Structure Name (Integre16) field cannot be empty",
                           "2. Error: Configuration:Code: Class/Structure Name (Integre32) field cannot be empty",
                           "3. Error: Configuration:Code: Class/Structure Name (Integer64) field cannot be empty",
                           "4. Error: Configuration:Code: Class/Structure Name (Real32) field cannot be empty",
                           "5. Error: Configuration:Code: Class/Structure Name (Real64) field cannot be empty"};
        QTest::newRow("class names unchecked without header file") << no_classes << false << false << 0
                                                                   << QStringList{} << QStringList{};
        QTest::newRow("secondary has no header")
            << QStringList{"Basic|Block Primary/Secondary=Secondary", "Code-Basic|Header File Name="} << true
            << true << 0 << QStringList{} << QStringList{};
        QTest::newRow("intrinsic linear has no header")
            << QStringList{"Vendor Specific|Instrinsic Block=Yes", "Code-Basic|Header File Name="} << true
            << true << 0 << QStringList{} << QStringList{};
        QTest::newRow("intrinsic non-linear needs header")
            << QStringList{"Vendor Specific|Instrinsic Block=Yes", "Basic|Linear/Non-Linear Block=Non-Linear",
                           "Code-Basic|Header File Name="}
            << true << true << 0 << QStringList{} << QStringList{no_header};

        const QStringList static_class{"Code-Basic|Class or Structure/Function=Static Class",
                                       "Code-Basic|Insert Code From Files=Yes", "Basic|Has Private Data=No"};
        QTest::newRow("static class clean")
            << static_class << true << true << 2 << QStringList{"in:Input", "out:Output", "free:"} << QStringList{};
        QTest::newRow("static class, every fault")
            << QStringList{"Code-Basic|Class or Structure/Function=Static Class",
                           "Code-Signal Ports|Call pointer to Run method instead of Run method=Yes",
                           "Advanced|Has Dynamically Allocated Memory=Yes"}
            << true << true << 1 << QStringList{"a:Physical", "b:Input", "c:Phy.Ref.", "d:"}
            << QStringList{"1. Error: Configuration:Code-Signal Ports: Call pointer to Run method instead of Run method field is invalid for Static Class block",
                           "2. Error: Configuration:Code-Basic: Static class type block cannot have private data",
                           "3. Error: Configuration:Code-Basic: Insert code from files shall be enabled for static class type block",
                           "4. Error: Configuration:Advanced: Dynamically allocated memory shall be disabled for static class type block",
                           "5. Error: Block Parameters: All entities variable type shall be of pre-processor definition for static class type block",
                           "6. Error: Block Initial Conditions: All entities variable type shall be of pre-processor definition for static class type block",
                           "7. Error: Block Ports: Static class type block cannot have physical ports",
                           "8. Error: Block Ports: Static class type block cannot have physical ports"};
        QTest::newRow("physical ports of a plain class")
            << QStringList{} << true << true << 1 << QStringList{"a:Physical"} << QStringList{};

        const QString worker = "Code-Basic|Add Worker Thread Function Code=Yes";
        QTest::newRow("worker thread alone")
            << QStringList{worker} << true << true << 0 << QStringList{}
            << QStringList{"1. Error: 'Add Worker Thread Function' feature requires either SimPanel block or std::cpp library support enabled."};
        QTest::newRow("worker thread in sim panel")
            << QStringList{worker, "Advanced|Simulation Panel Block=Yes"} << true << true << 0 << QStringList{}
            << QStringList{};
        QTest::newRow("worker thread with std libraries")
            << QStringList{worker, "Advanced|Uses C++ Standard Libraries=Yes"} << true << true << 0
            << QStringList{} << QStringList{};
        QTest::newRow("faults of every step keep their order")
            << QStringList{"Basic|Block Name=a b", "Code-Basic|Header File Name=",
                           "Code-Basic|Class or Structure/Function=Static Class", worker}
            << true << true << 2 << QStringList{}
            << QStringList{name + "has white spaces",
                           "2. Error: Configuration:Code-Basic: Static class type block cannot have private data",
                           "3. Error: Configuration:Code-Basic: Insert code from files shall be enabled for static class type block",
                           "4. Error: 'Add Worker Thread Function' feature requires either SimPanel block or std::cpp library support enabled.",
                           "5. Warning: Configuration: Code header file field cannot be empty"};
    }

    void validateConfiguration()
    {
        QFETCH(QStringList, settings);
        QFETCH(bool, header_file);
        QFETCH(bool, saved);
        QFETCH(int, var_type);
        QFETCH(QStringList, ports);
        QFETCH(QStringList, messages);

        QTemporaryDir dir;
        if (header_file)
            QVERIFY(WriteBytes(dir.filePath("Blk/src/Blk.h"), "#pragma once\n"));
        const Config config = Own(BuildConfigurationEntities(0));
        Apply(config.get(), QStringList{"Basic|Block Name=Blk", "Code-Basic|Header File Name=Blk.h"} + kClassNames
                                + settings);
        const QString version = BlockVersionOf(config.get());
        const Config params = Own(OneGroup("Parameters", var_type));
        const Config initconds = Own(OneGroup("Initial Conditions", var_type));
        const Ports records(ports);
        ConfigurationContext context{config.get(), params.get(), initconds.get(), &records.code,
                                     &records.pres, dir.path(), saved ? "Blk" : ""};
        ErrorList list;
        ValidateConfigurationData(context, &list);
        QCOMPARE(Messages(list), messages);
        QCOMPARE(BlockVersionOf(config.get()), version.trimmed().isEmpty() ? QString("1.0") : version);
    }

    void validationSignsTheBlock()
    {
        const Config config = Own(BuildConfigurationEntities(0));
        Apply(config.get(), {"Basic|Block Name=Blk", AuthGroupHeader() + "|" + AuthEntityLabels()[0] + "=key"});
        QVERIFY(!AuthenticateBlock(config.get()));
        ConfigurationContext context;
        context.config = config.get();
        ErrorList list;
        ValidateConfigurationData(context, &list);
        QVERIFY(AuthenticateBlock(config.get()));
        QCOMPARE(list.warnings.size() + list.errors.size(), 1); // only the missing header field
    }

    void memoryEntities_data()
    {
        QTest::addColumn<QString>("cacheable");
        QTest::addColumn<QString>("non_cacheable");
        QTest::addColumn<QStringList>("messages");

        const QString c = "1. Error: Configuration: Additional Memory Requirement: Cacheable Memory (Bytes): ";
        QTest::newRow("empty and number") << "" << "1024" << QStringList{};
        QTest::newRow("negative number") << "-1" << "" << QStringList{c + "Value cannot be less than zero"};
        QTest::newRow("negative in both")
            << "-2" << "-3"
            << QStringList{c + "Value cannot be less than zero",
                           "2. Error: Configuration: Additional Memory Requirement: Non-Cacheable Memory (Bytes): "
                           "Value cannot be less than zero"};
        QTest::newRow("text outside brackets") << "abc*2" << "" << QStringList{};
        QTest::newRow("missing brace") << "[in*2" << "" << QStringList{c + "Value has missing square braces"};
        QTest::newRow("braces unbalanced") << "[[in]" << "" << QStringList{c + "Value has missing square braces"};
        QTest::newRow("braces reversed") << "]a[" << "" << QStringList{};
        QTest::newRow("port") << "[in]*4" << "" << QStringList{};
        QTest::newRow("constant as substring") << "[_SimStepSizeX]*[x_PointerSize]" << "" << QStringList{};
        QTest::newRow("unknown name") << "[gain]" << "" << QStringList{c + "Value has invalid string 'gain'"};
        QTest::newRow("empty token") << "2*[]" << "" << QStringList{c + "Value has invalid string ''"};
        QTest::newRow("entity value") << "[Gains#Gain]" << "" << QStringList{};
        QTest::newRow("port property") << "[out#1]+[out#4]" << "" << QStringList{};
        QTest::newRow("three parts") << "[a#b#c]" << "" << QStringList{c + "Value has invalid syntax related to #"};
        const QString nonmatching = "1. Error: Configuration: %1: %2: Value has non-matching variable '%3'";
        QTest::newRow("port property out of range")
            << "[out#5]" << "" << QStringList{nonmatching.arg("out", "5", "out#5")};
        QTest::newRow("unknown entity") << "[Gains#Loss]" << "" << QStringList{nonmatching.arg("Gains", "Loss", "Gains#Loss")};
        QTest::newRow("empty part kept") << "[in#]" << "" << QStringList{nonmatching.arg("in", "", "in#")};
        QTest::newRow("each token checked")
            << "[gain]+[in]+[a#b#c]" << ""
            << QStringList{c + "Value has invalid string 'gain'",
                           "2. Error: Configuration: Additional Memory Requirement: Cacheable Memory (Bytes): "
                           "Value has invalid syntax related to #"};
    }

    void memoryEntities()
    {
        QFETCH(QString, cacheable);
        QFETCH(QString, non_cacheable);
        QFETCH(QStringList, messages);

        const Config config = Own(BuildConfigurationEntities(0));
        Apply(config.get(), {"Additional Memory Requirement|Cacheable Memory (Bytes)=" + cacheable,
                             "Additional Memory Requirement|Non-Cacheable Memory (Bytes)=" + non_cacheable});
        const Config params = Own(OneGroup("Parameters", 0));
        const Ports records({"in:Input", "out:Output"});
        ConfigurationContext context{config.get(), params.get(), nullptr, &records.code, &records.pres, {}, {}};
        ErrorList list;
        ValidateMemoryEntitiesData(context, &list);
        QCOMPARE(Messages(list), messages);
    }
};

ZEMA_TEST(tst_ConfigurationChecks)
#include "tst_ConfigurationChecks.moc"
