// The blk_para grammar: round trips and the deliberate losses on the way back.
#include "TestFiles.h"
#include "TestRegistry.h"
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
    BlkParaFileIO::WriteBlkPara(&writer, data, full);
    return bytes;
}

// Each entity as "header/label visible,enable,sel_idx,overrides", then the number of models.
QString Summary(const BlkParaData *data)
{
    QString text;
    for (const ParaGroup *group : data->para_grp)
        for (const ParaEntity *e : group->para_entity)
            text += QString("%1/%2 %3,%4,%5,%6 ").arg(group->header, e->label).arg(e->visible)
                        .arg(e->enable).arg(e->sel_idx).arg(e->ovrds.size());
    return text + QString::number(data->model_cat.size());
}

} // namespace

class tst_ParaFile : public QObject
{
    Q_OBJECT

private slots:
    // Through the file and through a copy every field comes back, each override pointing at its
    // own entity; the writer keeps its order and forms, and the partial form only what a
    // workspace changes.
    void roundTripAndForms()
    {
        QTemporaryDir dir;
        BlkParaData *data = SampleData();
        BlkParaFileIO io(QString(), nullptr, 1, 1);
        QVERIFY(io.SaveFile(dir.filePath("blk_param.cfg"), data, "ZEMA"));
        BlkParaData *back = io.LoadFile(dir.filePath("blk_param.cfg"), "ZEMA");
        BlkParaData *copy = CopyBlkParaData(data);
        QVERIFY(back);
        const QByteArray xml = Written(data);
        for (const BlkParaData *other : {back, copy}) {
            QCOMPARE(Written(other), xml);
            const ParaEntity *e = other->para_grp[0]->para_entity[0];
            QCOMPARE(e->ovrds[0]->owner, e);
        }
        int at = 0;
        for (const char *tag : {"<label>", "<unit>", "<values>", "<var_type>", "<usr_enable>", "<sel_idx>-1<",
                                "<para_con header=\"Gains\" label=\"\" value=\"\" sel_idx=\"1\" act_type=\"Disable\"/>",
                                "<ovrds>ws/top.wsp*4000000000*Gains*7</ovrds>", "<vals>Low,High</vals>"}) {
            at = xml.indexOf(tag, at);
            QVERIFY2(at >= 0, tag);
        }
        const QByteArray partial = Written(data, 0);
        for (const char *tag : {"<helpfile>", "<para_var>", "<para_con", "<ovrds>"})
            QVERIFY2(!partial.contains(tag), tag);
        QVERIFY(partial.contains("<usr_visible>0</usr_visible>"));
        // An empty header looks in every group; an empty header or label alone finds nothing.
        QVERIFY(!FindGroup(data, "") && !FindEntity(data, "Gains", "") && !FindEntity(data, "Other", "N"));
        QCOMPARE(FindEntity(data, "", "N"), data->para_grp[0]->para_entity[1]);
        for (BlkParaData *each : {data, back, copy})
            FreeBlkParaData(each);
    }

    // Unknown elements are passed over; numbers and flags take a value whatever the text.
    void lossesOnReading_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("summary");
        QTest::newRow("group without header")
            << QByteArray("<para_grp><helpfile>x</helpfile><para_entity><label>E</label></para_entity></para_grp>") << "0";
        QTest::newRow("override with empty piece")
            << QByteArray("<para_grp><header>G</header><para_entity><label>E</label>"
                          "<ovrds>a*1*g*v|b**g*v|c*2*g|*|d*3*h*w</ovrds></para_entity></para_grp>") << "G/E 1,1,-1,2 0";
        QTest::newRow("model without sub-categories") << QByteArray("<model_cat/><model_cat><x/></model_cat>") << "0";
        QTest::newRow("unknown elements, odd numbers")
            << QByteArray("<zz><header>no</header></zz><para_grp><header>G</header><q>1</q><para_entity>"
                          "<label>E</label><visible>2</visible><enable>yes</enable><sel_idx>x</sel_idx>"
                          "</para_entity></para_grp>") << "G/E 1,0,0,0 0";
    }
    void lossesOnReading()
    {
        QFETCH(QByteArray, body);
        QXmlStreamReader reader(XmlDocument("<blk_para><title>t</title>" + body + "</blk_para>"));
        BlkParaData *data = BlkParaFileIO::ReadBlkPara(&reader, true);
        QVERIFY(data);
        QTEST(Summary(data), "summary");
        FreeBlkParaData(data);
    }

    void sectionsFollowOneAnother()
    {
        QXmlStreamReader reader("<doc><blk_para><title>a</title></blk_para><x/><blk_para><title>b</title></blk_para></doc>");
        BlkParaData *a = BlkParaFileIO::ReadBlkPara(&reader, true);
        BlkParaData *b = BlkParaFileIO::ReadBlkPara(&reader, true);
        QVERIFY(a && b && a->title + b->title == "ab" && !BlkParaFileIO::ReadBlkPara(&reader, true));
        QVERIFY(!reader.hasError()); // no section left is not an error
        FreeBlkParaData(a);
        FreeBlkParaData(b);
    }
};

ZEMA_TEST(tst_ParaFile)
#include "tst_ParaFile.moc"
