// The fixed Configuration table, its authentication values and the accessors that read it.
#include "TestRegistry.h"

#include "app/BlockAccessors.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QtTest>
#include <memory>

using Config = std::unique_ptr<BlkParaData, void (*)(BlkParaData *)>;

static Config Build() { return Config(BuildConfigurationEntities(0), FreeBlkParaData); }

class tst_Configuration : public QObject
{
    Q_OBJECT
private slots:
    void tableShape()
    {
        const Config config = Build();
        QStringList shape;
        for (const ParaGroup *group : config->para_grp) {
            shape << QString("%1 %2").arg(group->header).arg(group->para_entity.size());
            for (const ParaEntity *entity : group->para_entity)
                if (!entity->values.isEmpty() && entity->sel_val != entity->values.value(entity->sel_idx))
                    shape << "mismatch: " + entity->label;
        }
        // Only these two combos show an index but hold an empty value, which the accessors read as false.
        // Their misspelt labels are the keys that stored files carry.
        QCOMPARE(shape, (QStringList{"Basic 11", "Advanced 9", "Supported Platforms 8", "Code-Basic 11",
                                     "Code-Physical Ports 3", "Code-Signal Ports 3", "Additional Memory Requirement 2",
                                     QString("%1 %2").arg(AuthGroupHeader()).arg(AuthEntityLabels().size()),
                                     "Vendor Specific 7", "mismatch: Instrinsic Block",
                                     "mismatch: Prefer Encrypting Code Files"}));
        QVERIFY(!IsBlockIntrinsic(config.get()) && !PrefersEncryptedCode(config.get())
                && FindEntity(config.get(), "Advanced", "Prefer Seperate Thread"));
        // A new block gets a fresh decimal id.
        const QString id = FindEntity(config.get(), "Basic", "Block ID")->sel_val;
        QVERIFY(QString::number(id.toUInt()) == id && FindEntity(Build().get(), "Basic", "Block ID")->sel_val != id);
    }

    void primarySecondaryControls()
    {
        const Config config = Build();
        QStringList got;
        for (const ParaCon *con : FindEntity(config.get(), "Basic", "Block Primary/Secondary")->para_con) {
            got << QString("%1|%2|%3|%4").arg(con->sel_idx).arg(con->header, con->label, con->value);
            // A target missing from the table would make the form drop the control.
            const bool found = con->label.isEmpty() ? FindGroup(config.get(), con->header) != nullptr
                                                    : FindEntity(config.get(), con->header, con->label) != nullptr;
            QVERIFY2(found && con->act_type == "Disable", qPrintable(got.last()));
        }
        QCOMPARE(got.join(";"),
                 QString("0|Advanced|Is Workspace Block|No;1|Basic|Linear/Non-Linear Block|Linear;"
                         "1|Basic|Zero Crossing Detection|Disable;"
                         "1|Code-Physical Ports|Step DeltaG Detection|Not Required;"
                         "1|Code-Physical Ports|Supports Decoupling|No;1|Basic|Has Private Data|No;"
                         "1|Basic|Hardware Block|No;1|Code-Basic||;1|Code-Physical Ports||;1|Code-Signal Ports||"));
    }

    void authenticationRoundTrip()
    {
        const Config config = Build();
        ParaEntity *auth = FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[0]);
        ParaEntity *edited = FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[1]);
        ParaEntity *name = FindEntity(config.get(), "Basic", "Block Name");
        auth->sel_val = name->sel_val = QString::fromUtf8("ключ <a & 'b'>");
        // Only the authentication group changes form.
        AuthValuesToStored(config.get());
        QCOMPARE(auth->sel_val, QString::fromLatin1(name->sel_val.toUtf8().toBase64()));
        // A hand-edited file may hold a value that never was base64: it is kept, not garbled.
        edited->sel_val = "not base64!";
        AuthValuesToWorking(config.get());
        QCOMPARE(auth->sel_val + edited->sel_val, name->sel_val + "not base64!");
    }

    void accessorsReadIndexOrValue()
    {
        // Index and value disagree for every entity, so the result tells which one the accessor read.
        const Config config = Build();
        const BlkParaData *c = config.get();
        for (const auto &[label, index] : {std::pair<QString, int>{"Instrinsic Block", 0},
                                           {"Uses C++ Standard Libraries", 1}, {"Simulation Panel Block", 5},
                                           {"Embeds other language code", 2}}) {
            FindEntity(config.get(), QString(), label)->sel_idx = index;
            FindEntity(config.get(), QString(), label)->sel_val = index ? "No" : "Yes";
        }
        // Python is index 1 only, so the Fortran index leaves it off.
        QCOMPARE((QList<bool>{IsBlockIntrinsic(c), UsesStdLibraries(c), IsSimulationPanel(c), EmbedsFortran(c),
                              EmbedsPython(c)}), (QList<bool>{true, true, true, true, false}));
    }

    void otherAccessors()
    {
        const Config config = Build();
        for (const QString value : {"340", "341", "344", "345", "abc"}) {
            FindEntity(config.get(), "Vendor Specific", "Custom Block Type")->sel_val = value;
            QCOMPARE(CustomBlockType(config.get()), value == "abc" ? -1 : value.toInt());
            QCOMPARE(HasNoResizeHandle(config.get()), value == "341" || value == "344");
        }
        // Half of all ids lie above the signed range.
        FindEntity(config.get(), "Basic", "Block ID")->sel_val = "4000000000";
        QCOMPARE(BlockIdOf(config.get()), 4000000000u);
        FindEntity(config.get(), "Additional Memory Requirement", "Non-Cacheable Memory (Bytes)")->sel_val = "[G#E]*4";
        QCOMPARE(MemoryRequirement(config.get(), 1) + "|" + MemoryRequirement(config.get(), 2), QString("[G#E]*4|"));
    }
};

ZEMA_TEST(tst_Configuration)
#include "tst_Configuration.moc"
