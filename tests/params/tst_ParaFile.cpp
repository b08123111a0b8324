// The blk_para grammar: round trips and the deliberate losses on the way back.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/ErrorList.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"

#include <QtTest>

namespace {

// Every field away from its default, so a field the writer or reader forgets shows in the bytes.
BlkParaData *SampleData()
{
    auto *entity = new ParaEntity("Gain \"K\"", "V/s");
    entity->para_var = "k_gain";
    entity->port_var = "in1";
    entity->val_type = "Real64";
    entity->val_size = "[Gains#N]";
    entity->values = QStringList{"Low", "High", ""};
    entity->ivalues = QStringList{"0", "1", "2"};
    entity->sel_val = "1,2,3";
    entity->sel_val_gt = "0";
    entity->sel_val_lt = "10.5";
    entity->sel_val_expr = "a<b && c>d";
    entity->visible = entity->enable = entity->usr_enable = entity->usr_visible = 0;
    entity->license = entity->readonly = entity->sigpara = 1;
    entity->var_type = 2;
    entity->para_con = {new ParaCon{"Gains", "", "", "Disable", 1}, new ParaCon{"Other", "Mode", "Fast", "SetValue", 0}};
    entity->ovrds = {new ParaOvrd{"ws/top.wsp", 4000000000u, "Gains", "7", entity}};
    auto *data = new BlkParaData{"Parameters & <more>", {new ParaGroup{"Gains", "gains.htm", {entity, new ParaEntity("N")}}}, {}};
    auto *cat = new ModelCat;
    cat->subcats = {new ModelSubCat{"Gains", "Gain \"K\"", {"Low", "High"}}, new ModelSubCat{"Gains", "N", {"1", "", "3"}}};
    data->model_cat.append(cat);
    return data;
}

QByteArray Written(const BlkParaData *data, qint32 full = 1)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    BlkParaFileIO::WriteBlkPara(&writer, data, full);
    return bytes;
}

BlkParaData *Read(const QByteArray &bytes)
{
    QXmlStreamReader reader(bytes);
    return BlkParaFileIO::ReadBlkPara(&reader, true);
}

} // namespace

class tst_ParaFile : public QObject
{
    Q_OBJECT

private slots:
    void fileRoundTripKeepsEveryField()
    {
        QTemporaryDir dir;
        BlkParaData *data = SampleData();
        BlkParaFileIO io(QString(), nullptr, 1, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_param.cfg"), data, "ZEMA"));
        BlkParaData *back = io.LoadFile(dir.filePath("blk_param.cfg"), "ZEMA");
        QVERIFY(back);
        QCOMPARE(Written(back), Written(data));
        const ParaEntity *e = back->para_grp[0]->para_entity[0];
        QCOMPARE(e->sel_idx, -1);
        QCOMPARE(e->ovrds[0]->owner, e);
        FreeBlkParaData(data);
        FreeBlkParaData(back);
    }

    void writerOrderAndForms()
    {
        BlkParaData *data = SampleData();
        const QString xml = QString::fromUtf8(Written(data));
        const QStringList order{"<label>", "<para_var>", "<port_var>", "<unit>", "<values>", "<ivalues>",
                                "<val_type>", "<val_size>", "<var_type>", "<visible>", "<enable>",
                                "<license>", "<readonly>", "<sigpara>", "<usr_visible>", "<usr_enable>",
                                "<sel_val>", "<sel_idx>-1<", "<sel_val_gt>", "<sel_val_lt>",
                                "<sel_val_expr>", "<para_con header=\"Gains\" label=\"\" value=\"\" sel_idx=\"1\" act_type=\"Disable\"/>",
                                "<ovrds>ws/top.wsp*4000000000*Gains*7</ovrds>", "<vals>Low,High</vals>"};
        int at = 0;
        for (const QString &tag : order) {
            at = xml.indexOf(tag, at);
            QVERIFY2(at >= 0, qPrintable(tag));
        }
        // Without the full form only what a workspace changes is written.
        const QString partial = QString::fromUtf8(Written(data, 0));
        for (const char *tag : {"<helpfile>", "<para_var>", "<para_con", "<ovrds>"})
            QVERIFY2(!partial.contains(tag), tag);
        QVERIFY(partial.contains("<usr_visible>0</usr_visible>"));
        QVERIFY(Written(nullptr).isEmpty());
        FreeBlkParaData(data);
    }

    void lossesOnReading_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("groups");
        QTest::addColumn<int>("overrides");
        QTest::addColumn<int>("models");
        QTest::newRow("group without header") << QByteArray("<para_grp><helpfile>x</helpfile></para_grp>") << 0 << 0 << 0;
        QTest::newRow("override with empty piece")
            << QByteArray("<para_grp><header>G</header><para_entity><label>E</label>"
                          "<ovrds>a*1*g*v|b**g*v|c*2*g|*|d*3*h*w</ovrds></para_entity></para_grp>") << 1 << 2 << 0;
        QTest::newRow("model without sub-categories") << QByteArray("<model_cat/><model_cat><x/></model_cat>") << 0 << 0 << 0;
        QTest::newRow("unknown elements passed over")
            << QByteArray("<zz><header>no</header></zz><para_grp><header>G</header><q>1</q></para_grp>") << 1 << 0 << 0;
    }
    void lossesOnReading()
    {
        QFETCH(QByteArray, body);
        BlkParaData *data = Read(XmlDocument("<blk_para><title>t</title>" + body + "</blk_para>"));
        QVERIFY(data);
        QTEST(int(data->para_grp.size()), "groups");
        const int overrides = data->para_grp.isEmpty() || data->para_grp[0]->para_entity.isEmpty()
                                  ? 0 : data->para_grp[0]->para_entity[0]->ovrds.size();
        QTEST(overrides, "overrides");
        QTEST(int(data->model_cat.size()), "models");
        FreeBlkParaData(data);
    }

    void numbersAndFlagsNeverFail()
    {
        BlkParaData *data = Read("<blk_para><para_grp><header>G</header><para_entity><label>E</label>"
                                 "<visible>2</visible><enable>yes</enable><sel_idx>x</sel_idx>"
                                 "</para_entity></para_grp></blk_para>");
        QVERIFY(data);
        const ParaEntity *e = data->para_grp[0]->para_entity[0];
        QCOMPARE(int(e->visible), 1);
        QCOMPARE(int(e->enable), 0);
        QCOMPARE(e->sel_idx, 0);
        FreeBlkParaData(data);
    }

    void sectionsFollowOneAnother()
    {
        QXmlStreamReader reader("<doc><blk_para><title>a</title></blk_para><x/><blk_para><title>b</title></blk_para></doc>");
        BlkParaData *a = BlkParaFileIO::ReadBlkPara(&reader, true);
        BlkParaData *b = BlkParaFileIO::ReadBlkPara(&reader, true);
        QVERIFY(a && b && a->title == "a" && b->title == "b");
        QVERIFY(!BlkParaFileIO::ReadBlkPara(&reader, true));
        QVERIFY(!reader.hasError()); // no section left is not an error
        FreeBlkParaData(a);
        FreeBlkParaData(b);
    }

    void lookupsAndCopies()
    {
        BlkParaData *data = SampleData();
        QVERIFY(!FindGroup(data, "") && !FindEntity(data, "Gains", "") && !FindEntity(data, "Other", "N"));
        QCOMPARE(FindEntity(data, "", "N"), data->para_grp[0]->para_entity[1]);
        BlkParaData *copy = CopyBlkParaData(data);
        QCOMPARE(Written(copy), Written(data));
        QList<ParaGroup *> shallow = CopyGroupList(data->para_grp);
        QCOMPARE(shallow[0]->para_entity[0], data->para_grp[0]->para_entity[0]);
        FreeShallowGroups(shallow);
        FreeBlkParaData(copy);
        FreeBlkParaData(data);
    }
};

ZEMA_TEST(tst_ParaFile)
#include "tst_ParaFile.moc"
