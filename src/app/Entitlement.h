// Entitlement: the licence token a parent application hands over, and the authentication of a
// block by its author key. Neither is a lock: the token is a consistency check of what the parent
// says, and a block whose authentication values are empty always opens.
#pragma once

#include <QDate>
#include <QString>

struct BlkParaData;

struct LicenceToken {
    bool given = false;        // a token was handed over at all
    bool valid = false;
    QString product_version;   // the running product's version, from a valid token
    qint32 level = 0;          // 0 without a valid token
    qint32 modules = 0;
    qint32 expiry = 0;         // yyyymmdd, 0 for none
};

// Levels: 0 none, 1 a licensed product, 2 the vendor.
constexpr int kLicensedLevel = 1;

// "version;level;modules;expiry;check"; an expired token or a wrong check is not valid.
LicenceToken ReadLicenceToken(const QString &token, const QDate &today = QDate::currentDate());
// A token that ReadLicenceToken accepts, for parents and tests.
QString MakeLicenceToken(const QString &version, int level, int modules, int expiry);
// The window title's suffix: non-empty only when a token was handed over and not accepted.
QString LicenceTitleSuffix(const LicenceToken &token);

// The signature that goes with an author key for a block of that name.
QString BlockSignatureFor(const QString &author_key, const QString &block_name);
// Passes when both authentication values are empty or the signature fits the key and the name.
// On a refusal `reason` says why.
bool AuthenticateBlock(const BlkParaData *config, QString *reason = nullptr);
// Brings the signature in line before a save: signed with a key, cleared without one.
void SignBlock(BlkParaData *config);
