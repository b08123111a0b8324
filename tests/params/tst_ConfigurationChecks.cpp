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

ParaEntity *Entity(const BlkParaData *config, const QString &path)
{
    return FindEntity(config, path.section('|', 0, 0), path.section('|', 1));
}

const QString kKey = AuthGroupHeader() + "|" + AuthEntityLabels()[0];

// "Header|Label=value"; a combo also takes the index of the value, as the form would.
void Apply(BlkParaData *config, const QStringList &settings)
{
    for (const QString &setting : settings) {
        ParaEntity *entity = Entity(config, setting.section('=', 0, 0));
        QVERIFY2(entity, qPrintable(setting));
        entity->sel_val = setting.section('=', 1);
        if (!entity->values.isEmpty())
            entity->sel_idx = entity->values.indexOf(entity->sel_val);
    }
}

BlkParaData *Gains(const QString &title, qint32 var_type)
{
    auto *gain = new ParaEntity("Gain");
    gain->var_type = var_type;
    auto *limit = new ParaEntity("Limit");
    limit->var_type = 2;
    return new BlkParaData{title, {new ParaGroup{"Gains", "", {limit, gain}}}, {}};
}

// "name:type"; an empty type gives a code port without a presentation port.
struct Ports {
    BlkCodeData code;
    BlkPresData pres;
    explicit Ports(const QStringList &specs)
    {
        for (const QString &spec : specs) {
            code.ports.append(new BlkCodePort{});
            code.ports.last()->port_name = spec.section(':', 0, 0);
            if (spec.section(':', 1).isEmpty())
                continue;
            pres.ports.append(new BlkPort{});
            pres.ports.last()->name = spec.section(':', 0, 0);
            pres.ports.last()->type = spec.section(':', 1);
        }
    }
    ~Ports()
    {
        for (BlkCodePort *port : code.ports)
            FreeBlkCodePort(port);
        qDeleteAll(pres.ports);
    }
};

void CompareNumbered(const ErrorList &list, QStringList expected)
{
    for (int i = 0; i < expected.size(); ++i)
        expected[i] = QString("%1. %2").arg(i + 1).arg(expected[i]);
    QCOMPARE(list.NumberedMessages(), expected);
}

} // namespace

class tst_ConfigurationChecks : public QObject
{
    Q_OBJECT

private slots:
    void mergesStoredValuesIntoTable()
    {
        Config stored = Own(BuildConfigurationEntities(0));
        Apply(stored.get(), {"Basic|Block Name=Blk", "Basic|Simulation Type=3D Space",
                             "Advanced|Simulation Panel Block=Maybe", "Basic|ZEMA Block/User Block=ZEMA"});
        Entity(stored.get(), "Basic|Simulation Type")->sel_idx = 0;     // the text wins over the index
        for (const auto &[path, index] : {std::pair<QString, int>{"Basic|Linear/Non-Linear Block", 1},
                                          {"Basic|Hardware Block", 7}}) {  // empty text: the index counts
            Entity(stored.get(), path)->sel_val.clear();
            Entity(stored.get(), path)->sel_idx = index;
        }
        ParaEntity *owner = Entity(stored.get(), "Basic|ZEMA Block/User Block");
        owner->enable = 1;                                              // attributes never move
        owner->values = QStringList{"User", "ZEMA"};
        ParaGroup *basic = FindGroup(stored.get(), "Basic");
        ParaEntity *version = Entity(stored.get(), "Basic|Block Version");
        basic->para_entity.removeOne(version);
        FreeParaEntity(version);
        basic->para_entity.append(new ParaEntity("Colour"));
        stored->para_grp.append(new ParaGroup{"Extras", "", {new ParaEntity("Block Name")}});
        ParaEntity *kind = Entity(stored.get(), "Basic|Block Primary/Secondary");
        for (ParaCon *con : kind->para_con)
            if (con->label == "Hardware Block")
                con->value = "Yes";
        kind->para_con.append(new ParaCon{"Basic", "Block Name", "x", "Disable", 1});
        Entity(stored.get(), kKey)->sel_val = QString::fromLatin1(QByteArray("k & <k>").toBase64());

        BlockData block;
        block.config = stored.release();
        const Config config = Own(LoadConfigurationData("/some/block", &block, 0));
        QVERIFY(!block.config);
        QStringList seen;
        for (const char *path : {"Basic|Block Name", "Basic|Block Version", "Basic|Simulation Type",
                                 "Basic|Linear/Non-Linear Block", "Basic|Hardware Block",
                                 "Advanced|Simulation Panel Block", "Basic|ZEMA Block/User Block"}) {
            const ParaEntity *e = Entity(config.get(), path);
            seen << QString("%1 %2 %3").arg(e->sel_val).arg(e->sel_idx).arg(e->enable);
        }
        QCOMPARE(seen, (QStringList{"Blk -1 1", "1.0 -1 1", "3D Space 3 1", "Non-Linear 1 1", "No 1 1", "No 0 1",
                                    "ZEMA 0 0"}));
        QCOMPARE(Entity(config.get(), "Basic|ZEMA Block/User Block")->values, (QStringList{"ZEMA", "User"}));
        QVERIFY(!Entity(config.get(), "Basic|Colour") && !FindGroup(config.get(), "Extras"));
        QStringList controls;
        for (const ParaCon *con : Entity(config.get(), "Basic|Block Primary/Secondary")->para_con)
            controls << con->label + "=" + con->value;
        QCOMPARE(controls.mid(5, 3), (QStringList{"Has Private Data=No", "Hardware Block=Yes", "="}));
        QCOMPARE(controls.size(), 10);
        QCOMPARE(Entity(config.get(), kKey)->sel_val, QString("k & <k>"));

        // An empty path leaves the block alone; a block without a record does not fall back to a file.
        block.config = config.get();
        Config fresh = Own(LoadConfigurationData(QString(), &block, kVendorLicenceLevel));
        QVERIFY(block.config == config.get() && BlockNameOf(fresh.get()).isEmpty());
        QCOMPARE(Entity(fresh.get(), "Vendor Specific|Custom Block Type")->enable, quint8(1));
        QTemporaryDir dir;
        QVERIFY(SaveConfigurationData(dir.path(), false, nullptr, config.get(), nullptr));
        block.config = nullptr;
        fresh = Own(LoadConfigurationData(dir.path(), &block, 0));
        QVERIFY(BlockNameOf(fresh.get()).isEmpty());
    }

    void roundTripsKeepWorkingForm()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("Blk");
        QVERIFY(WriteSampleBlock(path));
        QString id;
        // Through the block file, twice: a value decoded twice or never would show on the second pass.
        for (const char *key : {"author & key", "ключ ; <b>"}) {
            auto *block = new BlockData;
            block->path = path;
            QVERIFY(LoadBlockData(block, QString(), nullptr, "ZEMA", true));
            BlkParaData *config = LoadConfigurationData(path, block, 0);
            QCOMPARE(Entity(config, kKey)->sel_val, QString::fromUtf8(key));
            QVERIFY(id.isEmpty() || Entity(config, "Basic|Block ID")->sel_val == id);
            Apply(config, {kKey + "=ключ ; <b>"});
            QVERIFY(SaveConfigurationData(path, id.isEmpty(), block, config, nullptr));
            QCOMPARE(block->config, config);
            id = Entity(config, "Basic|Block ID")->sel_val;
            QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
            FreeBlockData(block);
        }
        QVERIFY(!DecodedDefinition(path + "/Blk.bdef").contains("ключ"));

        // Through blk_config.cfg: stored form in the file, working form in memory on both sides.
        const Config config = Own(LoadConfigurationData(QString(), nullptr, 0));
        Apply(config.get(), {"Basic|Simulation Type=Any", kKey + "=a & <b>"});
        id = Entity(config.get(), "Basic|Block ID")->sel_val;
        QVERIFY(SaveConfigurationData(dir.path(), true, nullptr, config.get(), nullptr));
        QVERIFY(Entity(config.get(), "Basic|Block ID")->sel_val != id);
        QCOMPARE(Entity(config.get(), kKey)->sel_val, QString("a & <b>"));
        QVERIFY(ReadBytes(dir.filePath("blk_config.cfg")).contains(QByteArray("a & <b>").toBase64()));
        const Config loaded = Own(LoadConfigurationData(dir.path(), nullptr, 0));
        QCOMPARE(Entity(loaded.get(), kKey)->sel_val, QString("a & <b>"));
        QCOMPARE(BlockIdOf(loaded.get()), BlockIdOf(config.get()));
        QCOMPARE(Entity(loaded.get(), "Basic|Simulation Type")->sel_idx, 5);

        ErrorList list;
        QVERIFY(!SaveConfigurationData(dir.filePath("missing"), false, nullptr, config.get(), &list));
        QVERIFY(list.errors.value(0).startsWith("Error: Cannot write file: blk_config.cfg"));
    }

    void validateConfiguration_data()
    {
        QTest::addColumn<QStringList>("settings");
        QTest::addColumn<bool>("header_file");  // src/Blk.h exists
        QTest::addColumn<bool>("saved");        // block_name is set
        QTest::addColumn<int>("param_var");     // var_type of one entity in Parameters
        QTest::addColumn<int>("ic_var");        // and in Initial Conditions
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QStringList>("messages");

        const QString name = "Error: Configuration: Value at entity 'Block Name' ";
        const QString no_header = "Warning: Configuration: Code header file field cannot be empty";
        const QString cls = "Error: Configuration:Code: Class/Structure Name (%1) field cannot be empty";
        const QString basic = "Error: Configuration:Code-Basic: ";
        const QString worker = "Code-Basic|Add Worker Thread Function Code=Yes";
        const QString worker_msg = "Error: 'Add Worker Thread Function' feature requires either SimPanel "
                                   "block or std::cpp library support enabled.";
        QStringList no_classes;
        for (const char *type : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
            no_classes << QString("Code-Basic|Class/Structure Name (%1)=").arg(type);
        const QStringList none;
        auto row = [](const char *name, const QStringList &settings, bool file, bool saved,
                      std::pair<int, int> vars, const QStringList &ports, const QStringList &messages) {
            QTest::newRow(name) << settings << file << saved << vars.first << vars.second << ports << messages;
        };

        row("clean, blank version", {"Basic|Block Version= "}, true, true, {0, 0}, none, none);
        row("name empty", {"Basic|Block Name="}, true, true, {0, 0}, none, {name + "is empty"});
        row("name with blank", {"Basic|Block Name=my block"}, true, true, {0, 0}, none, {name + "has white spaces"});
        row("name with dot", {"Basic|Block Name=my.block"}, true, true, {0, 0}, none, {name + "has invalid characters"});
        row("header field empty", {"Code-Basic|Header File Name="}, true, true, {0, 0}, none, {no_header});
        row("header file missing, class names unchecked", no_classes, false, true, {0, 0}, none,
            {"Warning: Configuration: Specified code header file does not exists"});
        row("never saved", none, false, false, {0, 0}, none, none);
        row("class names empty", no_classes, true, true, {0, 0}, none,
            {cls.arg("Integre16"), cls.arg("Integre32"), cls.arg("Integer64"), cls.arg("Real32"), cls.arg("Real64")});
        row("secondary has no header", {"Basic|Block Primary/Secondary=Secondary", "Code-Basic|Header File Name="},
            true, true, {0, 0}, none, none);
        row("intrinsic linear has no header", {"Vendor Specific|Instrinsic Block=Yes", "Code-Basic|Header File Name="},
            true, true, {0, 0}, none, none);
        row("intrinsic non-linear needs header",
            {"Vendor Specific|Instrinsic Block=Yes", "Basic|Linear/Non-Linear Block=Non-Linear",
             "Code-Basic|Header File Name="}, true, true, {0, 0}, none, {no_header});

        const QString static_class = "Code-Basic|Class or Structure/Function=Static Class";
        const QString physical = "Error: Block Ports: Static class type block cannot have physical ports";
        row("static class clean",
            {static_class, "Code-Basic|Insert Code From Files=Yes", "Basic|Has Private Data=No"}, true, true, {2, 2},
            {"in:Input", "out:Output", "free:"}, none);
        row("static class, every fault",
            {static_class, "Code-Signal Ports|Call pointer to Run method instead of Run method=Yes",
             "Advanced|Has Dynamically Allocated Memory=Yes"}, true, true, {1, 0},
            {"a:Physical", "b:Input", "c:Phy.Ref.", "d:"},
            {"Error: Configuration:Code-Signal Ports: Call pointer to Run method instead of Run method field is invalid for Static Class block",
             basic + "Static class type block cannot have private data",
             basic + "Insert code from files shall be enabled for static class type block",
             "Error: Configuration:Advanced: Dynamically allocated memory shall be disabled for static class type block",
             "Error: Block Parameters: All entities variable type shall be of pre-processor definition for static class type block",
             "Error: Block Initial Conditions: All entities variable type shall be of pre-processor definition for static class type block",
             physical, physical});
        row("physical port of a plain class", none, true, true, {1, 1}, {"a:Physical"}, none);

        row("worker thread alone", {worker}, true, true, {0, 0}, none, {worker_msg});
        row("worker thread in sim panel", {worker, "Advanced|Simulation Panel Block=Yes"}, true, true, {0, 0}, none, none);
        row("worker thread with std libraries", {worker, "Advanced|Uses C++ Standard Libraries=Yes"}, true, true,
            {0, 0}, none, none);
        row("faults of every step keep their order",
            {"Basic|Block Name=a .b", "Code-Basic|Header File Name=", static_class, worker}, true, true, {2, 1}, none,
            {name + "has white spaces", name + "has invalid characters",
             basic + "Static class type block cannot have private data",
             basic + "Insert code from files shall be enabled for static class type block",
             "Error: Block Initial Conditions: All entities variable type shall be of pre-processor definition for static class type block",
             worker_msg, no_header});
    }

    void validateConfiguration()
    {
        QFETCH(QStringList, settings);
        QFETCH(bool, header_file);
        QFETCH(bool, saved);
        QFETCH(int, param_var);
        QFETCH(int, ic_var);
        QFETCH(QStringList, ports);
        QFETCH(QStringList, messages);

        QTemporaryDir dir;
        if (header_file)
            QVERIFY(WriteBytes(dir.filePath("Blk/src/Blk.h"), "#pragma once\n"));
        const Config config = Own(BuildConfigurationEntities(0));
        QStringList base{"Basic|Block Name=Blk", "Code-Basic|Header File Name=Blk.h", kKey + "=key"};
        for (const char *type : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
            base << QString("Code-Basic|Class/Structure Name (%1)=Blk").arg(type);
        Apply(config.get(), base + settings);
        const QString version = BlockVersionOf(config.get());
        const Config params = Own(Gains("Parameters", param_var));
        const Config initconds = Own(Gains("Initial Conditions", ic_var));
        const Ports records(ports);
        ConfigurationContext context{config.get(), params.get(), initconds.get(), &records.code,
                                     &records.pres, dir.path(), saved ? "Blk" : ""};
        ErrorList list;
        ValidateConfigurationData(context, &list);
        CompareNumbered(list, messages);
        QCOMPARE(BlockVersionOf(config.get()), version.trimmed().isEmpty() ? QString("1.0") : version);
        QVERIFY(AuthenticateBlock(config.get()));  // the last step signs the block
    }

    void memoryEntities_data()
    {
        QTest::addColumn<QString>("cacheable");
        QTest::addColumn<QString>("non_cacheable");
        QTest::addColumn<QStringList>("messages");

        const QString c = "Error: Configuration: Additional Memory Requirement: Cacheable Memory (Bytes): Value ";
        const QString n = "Error: Configuration: Additional Memory Requirement: Non-Cacheable Memory (Bytes): Value ";
        const QString other = "Error: Configuration: %1: %2: Value has non-matching variable '%3'";
        QTest::newRow("empty and number") << "" << "1024" << QStringList{};
        QTest::newRow("negative") << "-1" << "-2"
                                  << QStringList{c + "cannot be less than zero", n + "cannot be less than zero"};
        QTest::newRow("text outside brackets") << "abc*2" << "" << QStringList{};
        QTest::newRow("missing brace") << "[in*2" << "" << QStringList{c + "has missing square braces"};
        QTest::newRow("braces reversed") << "]a[" << "" << QStringList{};
        QTest::newRow("port") << "[in]*4" << "" << QStringList{};
        QTest::newRow("constant as substring") << "[_SimStepSizeX]*[x_PointerSize]" << "" << QStringList{};
        QTest::newRow("unknown name") << "[gain]" << "2*[]"
                                      << QStringList{c + "has invalid string 'gain'", n + "has invalid string ''"};
        QTest::newRow("entity value and port property") << "[Gains#Gain]" << "[out#1]+[out#4]" << QStringList{};
        QTest::newRow("three parts") << "[a#b#c]" << "" << QStringList{c + "has invalid syntax related to #"};
        QTest::newRow("port property out of range") << "[out#5]" << "" << QStringList{other.arg("out", "5", "out#5")};
        QTest::newRow("unknown entity") << "[Gains#Loss]" << "" << QStringList{other.arg("Gains", "Loss", "Gains#Loss")};
        QTest::newRow("empty part kept") << "[in#]" << "" << QStringList{other.arg("in", "", "in#")};
        QTest::newRow("each token checked") << "[gain]+[in]+[a#b#c]" << ""
                                            << QStringList{c + "has invalid string 'gain'",
                                                           c + "has invalid syntax related to #"};
    }

    void memoryEntities()
    {
        QFETCH(QString, cacheable);
        QFETCH(QString, non_cacheable);
        QFETCH(QStringList, messages);

        const Config config = Own(BuildConfigurationEntities(0));
        Apply(config.get(), {"Additional Memory Requirement|Cacheable Memory (Bytes)=" + cacheable,
                             "Additional Memory Requirement|Non-Cacheable Memory (Bytes)=" + non_cacheable});
        const Config params = Own(Gains("Parameters", 0));
        const Ports records({"in:Input", "out:Output"});
        ConfigurationContext context{config.get(), params.get(), nullptr, &records.code, &records.pres, {}, {}};
        ErrorList list;
        ValidateMemoryEntitiesData(context, &list);
        CompareNumbered(list, messages);
    }
};

ZEMA_TEST(tst_ConfigurationChecks)
#include "tst_ConfigurationChecks.moc"
