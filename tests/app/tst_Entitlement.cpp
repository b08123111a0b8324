// The licence token and the block signature: what is accepted, what is refused, and how a block
// is brought back in line before it is saved.
#include "TestRegistry.h"
#include "app/Entitlement.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QCryptographicHash>
#include <QtTest>
#include <memory>

namespace {

using Config = std::unique_ptr<BlkParaData, void (*)(BlkParaData *)>;

// Computed here from the documented form, not through the code under test.
QString Check(const QString &body)
{
    return QCryptographicHash::hash(("ZEMA-LICENCE;" + body).toUtf8(), QCryptographicHash::Sha256)
        .toHex()
        .left(16);
}

Config Signed(const QString &name, const QString &key, const QString &signature)
{
    Config config(BuildConfigurationEntities(0), FreeBlkParaData);
    FindEntity(config.get(), "Basic", "Block Name")->sel_val = name;
    FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[0])->sel_val = key;
    FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[1])->sel_val = signature;
    return config;
}

QString Signature(const BlkParaData *config)
{
    return FindEntity(config, AuthGroupHeader(), AuthEntityLabels()[1])->sel_val;
}

} // namespace

class tst_Entitlement : public QObject
{
    Q_OBJECT

private slots:
    void licenceToken_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<bool>("valid");

        const QString body = "3.1;1;7;20300101";
        QTest::newRow("accepted") << body + ";" + Check(body) << true;
        QTest::newRow("no expiry") << "3.1;2;0;0;" + Check("3.1;2;0;0") << true;
        QTest::newRow("last day") << "3.1;1;7;20240615;" + Check("3.1;1;7;20240615") << true;
        QTest::newRow("expired") << "3.1;1;7;20240614;" + Check("3.1;1;7;20240614") << false;
        QTest::newRow("wrong check") << "3.1;2;7;20300101;" + Check(body) << false;
        QTest::newRow("check in upper case") << body + ";" + Check(body).toUpper() << false;
        QTest::newRow("four fields") << body << false;
        QTest::newRow("six fields") << "3.1;1;7;20300101;" + Check(body) + ";x" << false;
        QTest::newRow("level not a number") << "3.1;one;7;0;" + Check("3.1;one;7;0") << false;
        QTest::newRow("expiry not a number") << "3.1;1;7;soon;" + Check("3.1;1;7;soon") << false;
        QTest::newRow("not given") << "" << false;
    }

    void licenceToken()
    {
        QFETCH(QString, token);
        QFETCH(bool, valid);

        const LicenceToken read = ReadLicenceToken(token, QDate(2024, 6, 15));
        QCOMPARE(read.valid, valid);
        QCOMPARE(read.given, !token.isEmpty());
        if (valid)
            QCOMPARE(read.product_version + ";" + QString::number(read.level) + ";" + QString::number(read.modules)
                         + ";" + QString::number(read.expiry) + ";",
                     token.left(token.lastIndexOf(';') + 1));
        else
            QCOMPARE(read.level + read.modules + read.expiry, 0);
        // Only a token that was handed over and refused marks the title.
        QCOMPARE(LicenceTitleSuffix(read),
                 read.given && !valid ? QString(" (licence not verified)") : QString());
    }

    void madeTokenIsAccepted()
    {
        const QString token = MakeLicenceToken("4.0", 2, 3, 0);
        QCOMPARE(token, "4.0;2;3;0;" + Check("4.0;2;3;0"));
        QCOMPARE(ReadLicenceToken(token).level, 2);
    }

    void blockAuthentication_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("signature");
        QTest::addColumn<bool>("passes");

        const QString fitting = QString::fromLatin1(
            QCryptographicHash::hash("author & key|Blk", QCryptographicHash::Sha256).toHex().left(16));
        QTest::newRow("both empty") << "Blk" << "" << "" << true;
        QTest::newRow("signature fits") << "Blk" << "author & key" << fitting << true;
        QTest::newRow("renamed block") << "Other" << "author & key" << fitting << false;
        QTest::newRow("other key") << "Blk" << "author" << fitting << false;
        QTest::newRow("key without signature") << "Blk" << "author & key" << "" << false;
        QTest::newRow("signature without key") << "Blk" << "" << fitting << false;
    }

    void blockAuthentication()
    {
        QFETCH(QString, name);
        QFETCH(QString, key);
        QFETCH(QString, signature);
        QFETCH(bool, passes);

        const Config config = Signed(name, key, signature);
        QString reason = "untouched";
        QCOMPARE(AuthenticateBlock(config.get(), &reason), passes);
        QCOMPARE(reason, passes ? QString("untouched")
                                : QString("Block authentication failed. The block signature does not "
                                          "match its author key."));
        // Signing brings every block in line: with a key it passes, without one it is cleared.
        SignBlock(config.get());
        QVERIFY(AuthenticateBlock(config.get()));
        QCOMPARE(Signature(config.get()).isEmpty(), key.isEmpty());
    }

    void nullConfigPasses()
    {
        QVERIFY(AuthenticateBlock(nullptr));
        SignBlock(nullptr);
    }
};

ZEMA_TEST(tst_Entitlement)
#include "tst_Entitlement.moc"
