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

// Both checks are computed here from the documented form, not through the code under test.
QString Hash(const QString &text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(16));
}

QString Token(const QString &body) { return body + ";" + Hash("ZEMA-LICENCE;" + body); }

} // namespace

class tst_Entitlement : public QObject
{
    Q_OBJECT

private slots:
    void licenceToken_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<bool>("valid");

        QTest::newRow("last day") << Token("3.1;1;7;20240615") << true;
        QTest::newRow("made, no expiry") << MakeLicenceToken("4.0", 2, 3, 0) << true;
        QTest::newRow("expired") << Token("3.1;1;7;20240614") << false;
        QTest::newRow("check of another body") << "3.1;2;7;0;" + Hash("ZEMA-LICENCE;3.1;1;7;0") << false;
        QTest::newRow("four fields") << "3.1;1;7;0" << false;
        QTest::newRow("level not a number") << Token("3.1;one;7;0") << false;
        QTest::newRow("not given") << "" << false;
    }

    void licenceToken()
    {
        QFETCH(QString, token);
        QFETCH(bool, valid);

        const LicenceToken read = ReadLicenceToken(token, QDate(2024, 6, 15));
        QCOMPARE(read.valid, valid);
        // A valid token gives back every field; a refused one gives nothing.
        const QString fields =
            QString("%1;%2;%3;%4").arg(read.product_version).arg(read.level).arg(read.modules).arg(read.expiry);
        QCOMPARE(valid ? Token(fields) : fields, valid ? token : QString(";0;0;0"));
        // Only a token that was handed over and refused marks the title.
        QCOMPARE(LicenceTitleSuffix(read), !token.isEmpty() && !valid ? QString(" (licence not verified)") : QString());
    }

    void blockAuthentication_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("signature");
        QTest::addColumn<bool>("passes");

        QTest::newRow("both empty") << "" << "" << true;
        QTest::newRow("signature fits") << "author & key" << Hash("author & key|Blk") << true;
        QTest::newRow("signed under another name") << "author & key" << Hash("author & key|Other") << false;
        QTest::newRow("signature of an empty key") << "" << Hash("|Blk") << false;
    }

    void blockAuthentication()
    {
        QFETCH(QString, key);
        QFETCH(QString, signature);
        QFETCH(bool, passes);

        std::unique_ptr<BlkParaData, void (*)(BlkParaData *)> config(BuildConfigurationEntities(0), FreeBlkParaData);
        FindEntity(config.get(), "Basic", "Block Name")->sel_val = "Blk";
        FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[0])->sel_val = key;
        ParaEntity *stored = FindEntity(config.get(), AuthGroupHeader(), AuthEntityLabels()[1]);
        stored->sel_val = signature;
        QString reason;
        QCOMPARE(AuthenticateBlock(config.get(), &reason), passes);
        QCOMPARE(reason, passes ? QString()
                                : QString("Block authentication failed. The block signature does not match its author key."));
        // Signing brings every block in line: with a key it passes, without one it is cleared.
        SignBlock(config.get());
        QVERIFY(AuthenticateBlock(config.get()));
        QCOMPARE(stored->sel_val.isEmpty(), key.isEmpty());
        SignBlock(nullptr);  // a page not there yet has nothing to sign and always passes
        QVERIFY(AuthenticateBlock(nullptr));
    }
};

ZEMA_TEST(tst_Entitlement)
#include "tst_Entitlement.moc"
