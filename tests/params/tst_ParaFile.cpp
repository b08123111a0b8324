// The blk_para grammar: round trips and the deliberate losses on the way back.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/ErrorList.h"
#include "params/BlkParaData.h"
#include "params/BlkParaFileIO.h"

#include <QtTest>

namespace {

BlkParaData *SampleData()
{
    auto *data = new BlkParaData;
    data->title = "Parameters & <more>";
    auto *group = new ParaGroup;
    group->header = "Gains";
    group->helpfile = "gains.htm";
    auto *entity = new ParaEntity("Gain \"K\"", "V/s");
    entity->para_var = "k_gain";
    entity->port_var = "in1";
    entity->val_type = "Real64";
    entity->val_size = "[Gains#N]";
    entity->values = QStringList{"Low", "High", ""};
    entity->ivalues = QStringList{"0", "1", "2"};
    entity->sel_val = "1,2,3";
    entity->sel_idx = -1;
    entity->sel_val_gt = "0";
    entity->sel_val_lt = "10.5";
    entity->sel_val_expr = "a<b && c>d";
    entity->visible = 0;
    entity->enable = 0;
    entity->license = 1;
    entity->readonly = 1;
    entity->sigpara = 1;
    entity->usr_enable = 0;
    entity->usr_visible = 0;
    entity->var_type = 2;
    entity->para_con.append(new ParaCon{"Gains", "", "", "Disable", 1});
    entity->para_con.append(new ParaCon{"Other", "Mode", "Fast", "SetValue", 0});
    auto *ovrd = new ParaOvrd{"ws/top.wsp", 4000000000u, "Gains", "7", entity};
    entity->ovrds.append(ovrd);
    group->para_entity.append(entity);
    group->para_entity.append(new ParaEntity("N"));
    data->para_grp.append(group);
    auto *cat = new ModelCat;
    cat->subcats.append(new ModelSubCat{"Gains", "Gain \"K\"", {"Low", "High"}});
    cat->subcats.append(new ModelSubCat{"Gains", "N", {"1", "", "3"}});
    data->model_cat.append(cat);
    return data;
}

QByteArray Written(const BlkParaData *data, qint32 full = 1)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    BlkParaFileIO::WriteBlkPara(&writer, data, full);
    writer.writeEndDocument();
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
    void roundTripKeepsEveryField()
    {
        BlkParaData *data = SampleData();
        const QByteArray first = Written(data);
        BlkParaData *back = Read(first);
        QVERIFY(back);
        QCOMPARE(Written(back), first);
        const ParaEntity *e = back->para_grp[0]->para_entity[0];
        QCOMPARE(e->sel_idx, -1);
        QCOMPARE(e->para_con[0]->label, QString()); // a whole-group control is kept
        QCOMPARE(e->ovrds[0]->owner, e);
        FreeBlkParaData(data);
        FreeBlkParaData(back);
    }

    void elementOrderAsWritten()
    {
        BlkParaData *data = SampleData();
        const QString xml = QString::fromUtf8(Written(data));
        const QStringList order{"<label>", "<para_var>", "<port_var>", "<unit>", "<values>", "<ivalues>",
                                "<val_type>", "<val_size>", "<var_type>", "<visible>", "<enable>",
                                "<license>", "<readonly>", "<sigpara>", "<usr_visible>", "<usr_enable>",
                                "<sel_val>", "<sel_idx>", "<sel_val_gt>", "<sel_val_lt>",
                                "<sel_val_expr>", "<para_con ", "<ovrds>"};
        int at = 0;
        for (const QString &tag : order) {
            const int next = xml.indexOf(tag, at);
            QVERIFY2(next >= at, qPrintable(tag));
            at = next;
        }
        QVERIFY(xml.contains("<para_con header=\"Gains\" label=\"\" value=\"\" sel_idx=\"1\" act_type=\"Disable\"/>"));
        QVERIFY(xml.contains("<ovrds>ws/top.wsp*4000000000*Gains*7</ovrds>"));
        QVERIFY(xml.contains("<vals>Low,High</vals>"));
        FreeBlkParaData(data);
    }

    void partialFormLeavesAuthorFieldsOut()
    {
        BlkParaData *data = SampleData();
        const QString xml = QString::fromUtf8(Written(data, 0));
        QVERIFY(!xml.contains("<helpfile>"));
        QVERIFY(!xml.contains("<para_var>"));
        QVERIFY(!xml.contains("<para_con"));
        QVERIFY(!xml.contains("<ovrds>"));
        QVERIFY(xml.contains("<usr_visible>0</usr_visible>"));
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

    void numbersAndFlagsNeverFail_data()
    {
        QTest::addColumn<QByteArray>("element");
        QTest::addColumn<int>("visible");
        QTest::addColumn<int>("sel_idx");
        QTest::addColumn<int>("var_type");
        QTest::newRow("flag 2 is set") << QByteArray("<visible>2</visible>") << 1 << -1 << 0;
        QTest::newRow("flag text clears") << QByteArray("<visible>yes</visible>") << 0 << -1 << 0;
        QTest::newRow("bad index reads 0") << QByteArray("<sel_idx>x</sel_idx>") << 1 << 0 << 0;
    }
    void numbersAndFlagsNeverFail()
    {
        QFETCH(QByteArray, element);
        BlkParaData *data = Read("<blk_para><para_grp><header>G</header><para_entity><label>E</label>" +
                                 element + "</para_entity></para_grp></blk_para>");
        QVERIFY(data);
        const ParaEntity *e = data->para_grp[0]->para_entity[0];
        QTEST(int(e->visible), "visible");
        QTEST(e->sel_idx, "sel_idx");
        QTEST(e->var_type, "var_type");
        FreeBlkParaData(data);
    }

    void noSectionAndNullSection()
    {
        QXmlStreamReader reader(XmlDocument("<other><title>x</title></other>"));
        QVERIFY(!BlkParaFileIO::ReadBlkPara(&reader, true));
        QVERIFY(!reader.hasError());
        QVERIFY(!Written(nullptr).contains("blk_para"));
    }

    void sectionsFollowOneAnother()
    {
        QXmlStreamReader reader("<doc><blk_para><title>a</title></blk_para><x/><blk_para><title>b</title></blk_para></doc>");
        BlkParaData *a = BlkParaFileIO::ReadBlkPara(&reader, true);
        BlkParaData *b = BlkParaFileIO::ReadBlkPara(&reader, true);
        BlkParaData *c = BlkParaFileIO::ReadBlkPara(&reader, true);
        QVERIFY(a && b && !c);
        QCOMPARE(a->title, QString("a"));
        QCOMPARE(b->title, QString("b"));
        FreeBlkParaData(a);
        FreeBlkParaData(b);
    }

    void fileRoundTripAndFailures()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("blk_param.cfg");
        BlkParaData *data = SampleData();
        ErrorList errors;
        BlkParaFileIO io(QString(), &errors, 1, 1);
        QVERIFY(io.SaveFile(path, data, "ZEMA"));
        BlkParaData *back = io.LoadFile(path, "ZEMA");
        QVERIFY(back);
        QCOMPARE(Written(back), Written(data));
        QVERIFY(!io.SaveFile(dir.filePath("none/x.cfg"), data, "ZEMA"));
        QVERIFY(errors.errors.value(0).startsWith("Error: Cannot write file: x.cfg"));
        FreeBlkParaData(data);
        FreeBlkParaData(back);
    }

    void lookups()
    {
        BlkParaData *data = SampleData();
        QVERIFY(!FindGroup(data, ""));
        QVERIFY(!FindEntity(data, "Gains", ""));
        QCOMPARE(FindEntity(data, "", "N"), data->para_grp[0]->para_entity[1]);
        QVERIFY(!FindEntity(data, "Other", "N"));
        BlkParaData *copy = CopyBlkParaData(data);
        QCOMPARE(Written(copy), Written(data));
        QVERIFY(copy->para_grp[0]->para_entity[0] != data->para_grp[0]->para_entity[0]);
        QList<ParaGroup *> shallow = CopyGroupList(data->para_grp);
        QCOMPARE(shallow[0]->para_entity[0], data->para_grp[0]->para_entity[0]);
        FreeShallowGroups(shallow);
        FreeBlkParaData(copy);
        FreeBlkParaData(data);
    }
};

ZEMA_TEST(tst_ParaFile)
#include "tst_ParaFile.moc"
