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

// Entity "E" of group "G", of type "Real" unless `fields` ("name=value") say otherwise, beside a
// clean group "H" with entity "F", on the page of `kind`. The presentation has the port "in1";
// the code record alone has "cp". "control=header,label,act_type" adds a control.
static QStringList Rows(const QString &root, int kind, const QStringList &fields)
{
    PageWindow w(root);
    BlockData *block = PageWindow::NewBlockRecord("blk");
    auto *port = new BlkPort;
    port->name = "in1";
    port->type = "Input";
    port->placement = "Left";
    block->pres->ports.append(port);
    auto *code_port = new BlkCodePort;
    code_port->port_name = "cp";
    block->code->ports.append(code_port);

    auto *entity = new ParaEntity("E");
    entity->val_type = "Real";
    for (const QString &field : fields) {
        const QString name = field.section('=', 0, 0), value = field.section('=', 1);
        if (name == "val_size") entity->val_size = value;
        else if (name == "var_type") entity->var_type = value.toInt();
        else if (name == "sigpara") entity->sigpara = 1;
        else if (name == "para_var") entity->para_var = value;
        else if (name == "port_var") entity->port_var = value;
        else if (name == "val_type") entity->val_type = value;
        else if (name == "control")
            entity->para_con << new ParaCon{value.section(',', 0, 0), value.section(',', 1, 1), "1",
                                            value.section(',', 2, 2), 0};
        else
            qFatal("unknown field %s", qPrintable(name));
    }
    auto *other = new ParaEntity("F");
    other->val_type = "Real";
    BlkParaData *section = kind == 1 ? block->initconds : block->params;
    section->para_grp = {new ParaGroup{"G", QString(), {entity}}, new ParaGroup{"H", QString(), {other}}};

    QStringList rows{"block did not open"};
    if (w.OpenBlock(block, root, "blk"))
        rows = w.ValidationRows();
    FreeBlockData(block);
    // The pages after these two may have their say on the ports; only these pages' rows count.
    return rows.filter(QRegularExpression("^\\d+\\. Error: (Parameters|Initial Conditions): "));
}

class tst_ParaPageChecks : public QObject
{
    Q_OBJECT
private slots:
    void entities_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QStringList>("messages");
        const QString e1 = "1. Error: Parameters: G->E: ", e2 = "2. Error: Parameters: G->E: ";

        QTest::newRow("clean entity") << 2 << QStringList() << QStringList();
        QTest::newRow("negative size skips the rest")
            << 2 << QStringList{"val_size=-1", "val_type=Bogus"} << QStringList{e1 + "Entity array size is invalid"};
        QTest::newRow("constant array skips the rest")
            << 2 << QStringList{"val_size=3", "var_type=1", "val_type=Bogus"}
            << QStringList{e1 + "Entity array size is invalid for selected variable type"};
        QTest::newRow("constant with script size passes")
            << 2 << QStringList{"val_size=2*[H#F#i]", "var_type=1"} << QStringList();
        QTest::newRow("missing square brace skips the rest")
            << 2 << QStringList{"val_size=[H#F", "val_type=Bogus"}
            << QStringList{e1 + "Entity array size script field has missing square braces"};
        QTest::newRow("script without # goes on")
            << 2 << QStringList{"val_size=[HF]", "val_type=Bogus"}
            << QStringList{e1 + "Entity array size script field has invalid syntax related to #",
                           e2 + "Entity data type Bogus is invalid"};
        QTest::newRow("script names no entity")
            << 2 << QStringList{"val_size=[H#X]"} << QStringList{e1 + "Entity array script field entity is invalid"};
        QTest::newRow("signalling without port")
            << 2 << QStringList{"sigpara"}
            << QStringList{e1 + "Entity port name cannot be empty when parameter signaling is enabled",
                           e2 + "Entity port name has invalid characters"};
        QTest::newRow("signalling with internal name and bad port")
            << 2 << QStringList{"sigpara", "para_var=v", "port_var=a b"}
            << QStringList{e1 + "Entity internal variable name shall be empty when parameter signaling is enabled",
                           e2 + "Entity port name has invalid characters"};
        QTest::newRow("signalling port need not exist")
            << 2 << QStringList{"sigpara", "port_var=nowhere", "val_type=Bogus"} << QStringList();
        QTest::newRow("internal name with blank")
            << 2 << QStringList{"para_var=a b"} << QStringList{e1 + "Entity internal variable name has invalid characters"};
        QTest::newRow("port name as data type") << 2 << QStringList{"val_type=in1"} << QStringList();
        QTest::newRow("bad port name")
            << 2 << QStringList{"para_var=v", "port_var=a.b"} << QStringList{e1 + "Entity port name has invalid characters"};
        QTest::newRow("port only in the code record")
            << 2 << QStringList{"para_var=v", "port_var=cp"} << QStringList{e1 + "Entity port name does not exists"};
        QTest::newRow("port without internal name")
            << 2 << QStringList{"port_var=in1"}
            << QStringList{e1 + "Entity internal variable name cannot be empty when port name is specified"};
        QTest::newRow("initial conditions, no type")
            << 1 << QStringList{"val_type="}
            << QStringList{"1. Error: Initial Conditions: G->E: Entity data type  is invalid"};
        QTest::newRow("control on a missing group")
            << 2 << QStringList{"control=Nope,,Hide"}
            << QStringList{"1. Error: Parameters: Other Entity Control group header 'Nope' referred by G-E does not exists"};
        QTest::newRow("control without type")
            << 1 << QStringList{"control=H,F,"}
            << QStringList{"1. Error: Initial Conditions: One or more of other entities has got unassigned control type"};
        QTest::newRow("control on a missing entity passes") << 2 << QStringList{"control=H,Nope,Hide"} << QStringList();
    }

    void entities()
    {
        QFETCH(int, kind);
        QFETCH(QStringList, fields);
        QFETCH(QStringList, messages);
        QTemporaryDir tmp;
        QCOMPARE(Rows(tmp.path(), kind, fields), messages);
    }
};

ZEMA_TEST(tst_ParaPageChecks)
#include "tst_ParaPageChecks.moc"
