// The whole-record checks of the Parameters and Initial Conditions pages, on small blocks that a
// hidden main window opens and validates.
#include "TestRegistry.h"

#include "PageWindow.h"
#include "app/BlockData.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "params/BlkParaData.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

struct Entity {
    QString val_size;
    qint32 var_type = 0;
    quint8 sigpara = 0;
    QString para_var;
    QString port_var;
    QString val_type = QStringLiteral("Real");
    QString ctrl_header;       // empty: no control
    QString ctrl_label;
    QString ctrl_type;
};

} // namespace
Q_DECLARE_METATYPE(Entity)

// Entity "E" of group "G" beside a clean group "H" with entity "F", on the page of `kind`. The
// presentation has the port "in1"; the code record alone has "cp".
static QStringList Rows(const QString &root, int kind, const Entity &spec)
{
    PageWindow w(root);
    BlockData *block = PageWindow::NewBlockRecord("blk");
    auto *port = new BlkPort;
    port->name = "in1";
    port->type = "Input";
    port->placement = "Left";
    block->pres->ports.append(port);
    for (const char *name : {"in1", "cp"}) {
        auto *code_port = new BlkCodePort;
        code_port->port_name = name;
        code_port->data_name = name;
        code_port->data_type = "Real";
        block->code->ports.append(code_port);
    }

    auto *entity = new ParaEntity("E");
    entity->val_size = spec.val_size;
    entity->var_type = spec.var_type;
    entity->sigpara = spec.sigpara;
    entity->para_var = spec.para_var;
    entity->port_var = spec.port_var;
    entity->val_type = spec.val_type;
    if (!spec.ctrl_header.isEmpty())
        entity->para_con.append(new ParaCon{spec.ctrl_header, spec.ctrl_label, "1", spec.ctrl_type, 0});
    auto *other = new ParaEntity("F");
    other->val_type = "Real";
    BlkParaData *section = kind == 1 ? block->initconds : block->params;
    section->para_grp = {new ParaGroup{"G", QString(), {entity}}, new ParaGroup{"H", QString(), {other}}};

    QStringList rows{"block did not open"};
    if (w.OpenBlock(block, root, "blk"))
        rows = w.ValidationRows();
    FreeBlockData(block);
    // The pages after these two may have their say on the ports; only these pages' rows count.
    const QRegularExpression ours("^\\d+\\. Error: (Parameters|Initial Conditions): ");
    return rows.filter(ours);
}

class tst_ParaPageChecks : public QObject
{
    Q_OBJECT
private slots:
    void entities_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Entity>("entity");
        QTest::addColumn<QStringList>("messages");
        const QString e = "1. Error: Parameters: G->E: ";
        auto with = [](auto change) { Entity entity; change(entity); return entity; };

        QTest::newRow("clean entity") << 2 << Entity() << QStringList();
        QTest::newRow("negative size skips the rest")
            << 2 << with([](Entity &x) { x.val_size = "-1"; x.val_type = "Bogus"; })
            << QStringList{e + "Entity array size is invalid"};
        QTest::newRow("constant array skips the rest")
            << 2 << with([](Entity &x) { x.val_size = "3"; x.var_type = 1; x.val_type = "Bogus"; })
            << QStringList{e + "Entity array size is invalid for selected variable type"};
        QTest::newRow("constant with script size passes")
            << 2 << with([](Entity &x) { x.val_size = "2*[H#F#i]"; x.var_type = 1; }) << QStringList();
        QTest::newRow("missing square brace skips the rest")
            << 2 << with([](Entity &x) { x.val_size = "[H#F"; x.val_type = "Bogus"; })
            << QStringList{e + "Entity array size script field has missing square braces"};
        QTest::newRow("script without # goes on")
            << 2 << with([](Entity &x) { x.val_size = "[HF]"; x.val_type = "Bogus"; })
            << QStringList{e + "Entity array size script field has invalid syntax related to #",
                           "2. Error: Parameters: G->E: Entity data type Bogus is invalid"};
        QTest::newRow("script names no entity")
            << 2 << with([](Entity &x) { x.val_size = "[H#X]"; })
            << QStringList{e + "Entity array script field entity is invalid"};
        QTest::newRow("signalling without port")
            << 2 << with([](Entity &x) { x.sigpara = 1; })
            << QStringList{e + "Entity port name cannot be empty when parameter signaling is enabled",
                           "2. Error: Parameters: G->E: Entity port name has invalid characters"};
        QTest::newRow("signalling with internal name and bad port")
            << 2 << with([](Entity &x) { x.sigpara = 1; x.para_var = "v"; x.port_var = "a b"; })
            << QStringList{e + "Entity internal variable name shall be empty when parameter signaling is enabled",
                           "2. Error: Parameters: G->E: Entity port name has invalid characters"};
        QTest::newRow("signalling port need not exist")
            << 2 << with([](Entity &x) { x.sigpara = 1; x.port_var = "nowhere"; x.val_type = "Bogus"; })
            << QStringList();
        QTest::newRow("internal name with blank")
            << 2 << with([](Entity &x) { x.para_var = "a b"; })
            << QStringList{e + "Entity internal variable name has invalid characters"};
        QTest::newRow("port name as data type") << 2 << with([](Entity &x) { x.val_type = "in1"; }) << QStringList();
        QTest::newRow("bad port name")
            << 2 << with([](Entity &x) { x.para_var = "v"; x.port_var = "a.b"; })
            << QStringList{e + "Entity port name has invalid characters"};
        QTest::newRow("port only in the code record")
            << 2 << with([](Entity &x) { x.para_var = "v"; x.port_var = "cp"; })
            << QStringList{e + "Entity port name does not exists"};
        QTest::newRow("port without internal name")
            << 2 << with([](Entity &x) { x.port_var = "in1"; })
            << QStringList{e + "Entity internal variable name cannot be empty when port name is specified"};
        QTest::newRow("initial conditions prefix")
            << 1 << with([](Entity &x) { x.val_type = QString(); })
            << QStringList{"1. Error: Initial Conditions: G->E: Entity data type  is invalid"};
        QTest::newRow("control on a missing group")
            << 2 << with([](Entity &x) { x.ctrl_header = "Nope"; x.ctrl_type = "Hide"; })
            << QStringList{"1. Error: Parameters: Other Entity Control group header 'Nope' referred by G-E does not exists"};
        QTest::newRow("control without type")
            << 1 << with([](Entity &x) { x.ctrl_header = "H"; x.ctrl_label = "F"; })
            << QStringList{"1. Error: Initial Conditions: One or more of other entities has got unassigned control type"};
        QTest::newRow("control on a missing entity passes")
            << 2 << with([](Entity &x) { x.ctrl_header = "H"; x.ctrl_label = "Nope"; x.ctrl_type = "Hide"; })
            << QStringList();
    }

    void entities()
    {
        QFETCH(int, kind);
        QFETCH(Entity, entity);
        QFETCH(QStringList, messages);
        QTemporaryDir tmp;
        QCOMPARE(Rows(tmp.path(), kind, entity), messages);
    }
};

ZEMA_TEST(tst_ParaPageChecks)
#include "tst_ParaPageChecks.moc"
