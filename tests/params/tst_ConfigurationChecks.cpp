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
#include <deque>
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

// A Parameters or Initial Conditions record: a pre-processor entity, then one of `var_type`.
Config Gains(qint32 var_type)
{
    auto *limit = new ParaEntity("Limit"), *gain = new ParaEntity("Gain");
    limit->var_type = 2;
    gain->var_type = var_type;
    return Own(new BlkParaData{"", {new ParaGroup{"Gains", "", {limit, gain}}}, {}});
}

// The five class name entities, all set to `value`.
QStringList ClassNames(const QString &value)
{
    QStringList settings;
    for (const char *type : {"Integer16", "Integer32", "Integer64", "Real32", "Real64"})
        settings << QString("Code-Basic|Class/Structure Name (%1)=%2").arg(type, value);
    return settings;
}

} // namespace

class tst_ConfigurationChecks : public QObject
{
    Q_OBJECT

private slots:
    void mergesStoredValuesIntoTable()
    {
        Config stored = Own(BuildConfigurationEntities(0));
        Apply(stored.get(), {"Basic|Block Name=Blk", "Basic|Simulation Type=3D Space", "Basic|Linear/Non-Linear Block=",
                             "Basic|Hardware Block=", "Basic|ZEMA Block/User Block=ZEMA"});
        Entity(stored.get(), "Basic|Simulation Type")->sel_idx = 0;         // the text wins over the index
        Entity(stored.get(), "Basic|Linear/Non-Linear Block")->sel_idx = 1;  // empty text: the index counts
        Entity(stored.get(), "Basic|Hardware Block")->sel_idx = 7;           // unless out of range
        // Attributes never move: the stored owner is disabled (level 0), its values reversed.
        Entity(stored.get(), "Basic|ZEMA Block/User Block")->values = QStringList{"User", "ZEMA"};
        ParaGroup *basic = FindGroup(stored.get(), "Basic");
        FreeParaEntity(basic->para_entity.takeAt(basic->para_entity.indexOf(Entity(stored.get(), "Basic|Block Version"))));
        basic->para_entity.append(new ParaEntity("Colour"));
        for (ParaCon *con : Entity(stored.get(), "Basic|Block Primary/Secondary")->para_con)
            con->value = con->label == "Hardware Block" ? QString("Yes") : con->value;
        Entity(stored.get(), kKey)->sel_val = QString::fromLatin1(QByteArray("k & <k>").toBase64());

        BlockData block;
        block.config = stored.release();
        const Config config = Own(LoadConfigurationData("/some/block", &block, kVendorLicenceLevel));
        QVERIFY(!block.config);
        QStringList seen;
        for (const QString &path : QStringList{"Basic|Block Name", "Basic|Block Version", "Basic|Simulation Type",
                                               "Basic|Linear/Non-Linear Block", "Basic|Hardware Block",
                                               "Basic|ZEMA Block/User Block", kKey}) {
            const ParaEntity *e = Entity(config.get(), path);
            seen << QString("%1 %2 %3").arg(e->sel_val).arg(e->sel_idx).arg(e->enable);
        }
        QCOMPARE(seen, (QStringList{"Blk -1 1", "1.0 -1 1", "3D Space 3 1", "Non-Linear 1 1", "No 1 1", "ZEMA 0 1",
                                    "k & <k> -1 1"}));
        QCOMPARE(Entity(config.get(), "Basic|ZEMA Block/User Block")->values, (QStringList{"ZEMA", "User"}));
        QVERIFY(!Entity(config.get(), "Basic|Colour"));
        for (const ParaCon *con : Entity(config.get(), "Basic|Block Primary/Secondary")->para_con)
            QCOMPARE(con->value == "Yes", con->label == "Hardware Block");  // controls merge by their keys

        // An empty path leaves the block alone.
        block.config = config.get();
        QVERIFY(BlockNameOf(Own(LoadConfigurationData(QString(), &block, 0)).get()).isEmpty());
        QCOMPARE(block.config, config.get());
    }

    void roundTripsKeepWorkingForm()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("Blk");
        QVERIFY(WriteSampleBlock(path));
        // Through the block file, twice: a value decoded twice or never would show on the second pass.
        for (const char *key : {"author & key", "ключ ; <b>"}) {
            auto *block = new BlockData;
            block->path = path;
            QVERIFY(LoadBlockData(block, QString(), nullptr, "ZEMA", true));
            BlkParaData *config = LoadConfigurationData(path, block, 0);
            QCOMPARE(Entity(config, kKey)->sel_val, QString::fromUtf8(key));
            Apply(config, {kKey + "=ключ ; <b>"});
            QVERIFY(SaveConfigurationData(path, false, block, config, nullptr));
            QVERIFY(SaveBlockData(block, nullptr, "ZEMA", true));
            FreeBlockData(block);
        }
        QVERIFY(!DecodedDefinition(path + "/Blk.bdef").contains("ключ"));

        // Through blk_config.cfg: stored form in the file, working form in memory on both sides.
        const Config config = Own(LoadConfigurationData(QString(), nullptr, 0));
        Apply(config.get(), {kKey + "=a & <b>"});
        const quint32 id = BlockIdOf(config.get());
        QVERIFY(SaveConfigurationData(dir.path(), true, nullptr, config.get(), nullptr));
        QVERIFY(BlockIdOf(config.get()) != id);
        QCOMPARE(Entity(config.get(), kKey)->sel_val, QString("a & <b>"));
        QVERIFY(ReadBytes(dir.filePath("blk_config.cfg")).contains(QByteArray("a & <b>").toBase64()));
        const Config loaded = Own(LoadConfigurationData(dir.path(), nullptr, 0));
        QCOMPARE(Entity(loaded.get(), kKey)->sel_val, QString("a & <b>"));
        QCOMPARE(BlockIdOf(loaded.get()), BlockIdOf(config.get()));
        // A block without a record does not fall back to the file.
        BlockData empty;
        QVERIFY(Entity(Own(LoadConfigurationData(dir.path(), &empty, 0)).get(), kKey)->sel_val.isEmpty());

        ErrorList list;
        QVERIFY(!SaveConfigurationData(dir.filePath("missing"), false, nullptr, config.get(), &list));
        QVERIFY(list.errors.value(0).startsWith("Error: Cannot write file: blk_config.cfg"));
    }

    void checks_data()
    {
        QTest::addColumn<QStringList>("settings");
        QTest::addColumn<QStringList>("messages");  // errors, then warnings
        QTest::addColumn<int>("saved");             // 0 never, 1 without src/Blk.h, 2 with it
        QTest::addColumn<QPoint>("var_types");      // of one entity in Parameters, in Initial Conditions
        QTest::addColumn<QStringList>("ports");     // "name:type"; a name alone has no presentation port
        auto row = [](const char *name, const QStringList &settings, const QStringList &messages, int saved = 2,
                      QPoint vars = {}, const QStringList &ports = {"in:Input", "out:Output"}) {
            QTest::newRow(name) << settings << messages << saved << vars << ports;
        };
        const QString name = "Error: Configuration: Value at entity 'Block Name' ";
        const QString no_header = "Warning: Configuration: Code header file field cannot be empty";
        const QString cls = "Error: Configuration:Code: Class/Structure Name (%1) field cannot be empty";
        const QString basic = "Error: Configuration:Code-Basic: ";
        const QString statics = "Code-Basic|Class or Structure/Function=Static Class";
        const QString worker = "Code-Basic|Add Worker Thread Function Code=Yes";
        const QString not_pre = "Error: Block %1: All entities variable type shall be of pre-processor "
                                "definition for static class type block";
        const QString physical = "Error: Block Ports: Static class type block cannot have physical ports";
        const QStringList no_header_field{"Code-Basic|Header File Name="};

        row("clean, blank version", {"Basic|Block Version= "}, {});
        row("name empty, nothing more", {"Basic|Block Name="}, {name + "is empty"});
        row("header file missing, class names unchecked", ClassNames(""),
            {"Warning: Configuration: Specified code header file does not exists"}, 1);
        row("never saved", {}, {}, 0);
        row("class names empty", ClassNames(""),
            {cls.arg("Integre16"), cls.arg("Integre32"), cls.arg("Integer64"), cls.arg("Real32"), cls.arg("Real64")});
        row("secondary has no header", QStringList{"Basic|Block Primary/Secondary=Secondary"} + no_header_field, {});
        row("intrinsic linear has no header", QStringList{"Vendor Specific|Instrinsic Block=Yes"} + no_header_field, {});
        row("intrinsic non-linear needs header",
            QStringList{"Vendor Specific|Instrinsic Block=Yes", "Basic|Linear/Non-Linear Block=Non-Linear"} + no_header_field,
            {no_header});
        row("static class clean", {statics, "Code-Basic|Insert Code From Files=Yes", "Basic|Has Private Data=No"}, {},
            2, {2, 2});
        row("static class, every fault",
            {statics, "Code-Signal Ports|Call pointer to Run method instead of Run method=Yes",
             "Advanced|Has Dynamically Allocated Memory=Yes"},
            {"Error: Configuration:Code-Signal Ports: Call pointer to Run method instead of Run method field is invalid for Static Class block",
             basic + "Static class type block cannot have private data",
             basic + "Insert code from files shall be enabled for static class type block",
             "Error: Configuration:Advanced: Dynamically allocated memory shall be disabled for static class type block",
             not_pre.arg("Parameters"), not_pre.arg("Initial Conditions"), physical, physical},
            2, {1, 0}, {"a:Physical", "b:Input", "c:Phy.Ref.", "d"});
        row("physical port of a plain class", {}, {}, 2, {1, 1}, {"a:Physical"});
        row("worker thread in sim panel", {worker, "Advanced|Simulation Panel Block=Yes"}, {});
        row("worker thread with std libraries", {worker, "Advanced|Uses C++ Standard Libraries=Yes"}, {});
        row("faults of every step keep their order", QStringList{"Basic|Block Name=a .b", statics, worker} + no_header_field,
            {name + "has white spaces", name + "has invalid characters",
             basic + "Static class type block cannot have private data",
             basic + "Insert code from files shall be enabled for static class type block",
             not_pre.arg("Initial Conditions"),
             "Error: 'Add Worker Thread Function' feature requires either SimPanel block or std::cpp library support enabled.",
             no_header},
            2, {2, 1});

        const QString cache = "Additional Memory Requirement|Cacheable Memory (Bytes)=";
        const QString non_cache = "Additional Memory Requirement|Non-Cacheable Memory (Bytes)=";
        const QString c = "Error: Configuration: Additional Memory Requirement: Cacheable Memory (Bytes): Value ";
        const QString n = "Error: Configuration: Additional Memory Requirement: Non-Cacheable Memory (Bytes): Value ";
        const QString other = "Error: Configuration: %1: %2: Value has non-matching variable '%3'";
        row("memory: negative numbers", {cache + "-1", non_cache + "-2"},
            {c + "cannot be less than zero", n + "cannot be less than zero"});
        row("memory: only the balance of braces counts", {cache + "[in*2", non_cache + "]a["}, {c + "has missing square braces"});
        row("memory: each token checked", {cache + "[gain]+[in]+[a#b#c]", non_cache + "2*[]+[in#]"},
            {c + "has invalid string 'gain'", c + "has invalid syntax related to #", n + "has invalid string ''",
             other.arg("in", "", "in#")});
        // Text outside the brackets is free, a name may contain a run-time constant, a port has properties 1 to 4.
        row("memory: port property out of range, unknown entity",
            {cache + "x*[out#0]+[out#1]*[out#4]+[out#5]", non_cache + "[Gains#Loss]*[Gains#Gain]*[_SimStepSizeX]*[x_PointerSize]"},
            {other.arg("out", "0", "out#0"), other.arg("out", "5", "out#5"), other.arg("Gains", "Loss", "Gains#Loss")});
    }

    void checks()
    {
        QFETCH(QStringList, settings);
        QFETCH(QStringList, messages);
        QFETCH(int, saved);
        QFETCH(QPoint, var_types);
        QFETCH(QStringList, ports);

        QTemporaryDir dir;
        if (saved == 2)
            QVERIFY(WriteBytes(dir.filePath("Blk/src/Blk.h"), "#pragma once\n"));
        const Config config = Own(BuildConfigurationEntities(0));
        Apply(config.get(), QStringList{"Basic|Block Name=Blk", "Code-Basic|Header File Name=Blk.h", kKey + "=key"}
                                + ClassNames("Blk") + settings);
        const QString version = BlockVersionOf(config.get());
        const Config params = Gains(var_types.x()), initconds = Gains(var_types.y());
        std::deque<BlkCodePort> code_ports;  // the records below point into these
        std::deque<BlkPort> pres_ports;
        BlkCodeData code;
        BlkPresData pres;
        for (const QString &port : ports) {
            code.ports << &code_ports.emplace_back();
            code.ports.last()->port_name = port.section(':', 0, 0);
            if (!port.contains(':'))
                continue;
            pres.ports << &pres_ports.emplace_back();
            pres.ports.last()->name = port.section(':', 0, 0);
            pres.ports.last()->type = port.section(':', 1);
        }
        const ConfigurationContext context{config.get(), params.get(), initconds.get(), &code, &pres, dir.path(),
                                           saved ? "Blk" : ""};
        ErrorList list;
        ValidateConfigurationData(context, &list);
        ValidateMemoryEntitiesData(context, &list);
        QCOMPARE(list.errors + list.warnings, messages);
        QCOMPARE(BlockVersionOf(config.get()), version.trimmed().isEmpty() ? QString("1.0") : version);
        QVERIFY(AuthenticateBlock(config.get()));  // the configuration check signs the block
    }
};

ZEMA_TEST(tst_ConfigurationChecks)
#include "tst_ConfigurationChecks.moc"
