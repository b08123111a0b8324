// The licence token from a parent application and the author signature of a block. Both are
// consistency checks over SHA-256, cut to 16 hex digits so a person can still copy them.
#include "app/Entitlement.h"

#include "app/BlockAccessors.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationEntities.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QStringList>

namespace {

// Kept encoded so the text is not lying in the binary for a search to find.
const char kUnverifiedSuffix[] = "IChsaWNlbmNlIG5vdCB2ZXJpZmllZCk=";

QString ShortHash(const QString &text)
{
    const QByteArray digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex().left(16));
}

QString TokenCheck(const QString &body)
{
    return ShortHash(QStringLiteral("ZEMA-LICENCE;") + body);
}

ParaEntity *AuthEntity(const BlkParaData *config, int which)
{
    return FindEntity(config, AuthGroupHeader(), AuthEntityLabels().value(which));
}

QString AuthValue(const BlkParaData *config, int which)
{
    const ParaEntity *entity = AuthEntity(config, which);
    return entity ? entity->sel_val : QString();
}

} // namespace

LicenceToken ReadLicenceToken(const QString &token, const QDate &today)
{
    LicenceToken result;
    result.given = !token.isEmpty();
    const QStringList fields = token.split(QLatin1Char(';'));
    if (fields.size() != 5)
        return result;
    bool level_ok = false, modules_ok = false, expiry_ok = false;
    const qint32 level = fields[1].toInt(&level_ok);
    const qint32 modules = fields[2].toInt(&modules_ok);
    const qint32 expiry = fields[3].toInt(&expiry_ok);
    if (!level_ok || !modules_ok || !expiry_ok)
        return result;
    if (fields[4] != TokenCheck(QStringList(fields.mid(0, 4)).join(QLatin1Char(';'))))
        return result;
    const qint32 today_number = today.year() * 10000 + today.month() * 100 + today.day();
    if (expiry != 0 && today_number > expiry)
        return result;
    result.valid = true;
    result.product_version = fields[0];
    result.level = level;
    result.modules = modules;
    result.expiry = expiry;
    return result;
}

QString MakeLicenceToken(const QString &version, int level, int modules, int expiry)
{
    const QString body = QStringLiteral("%1;%2;%3;%4").arg(version).arg(level).arg(modules).arg(expiry);
    return body + QLatin1Char(';') + TokenCheck(body);
}

QString LicenceTitleSuffix(const LicenceToken &token)
{
    if (!token.given || token.valid)
        return QString();
    return QString::fromUtf8(QByteArray::fromBase64(QByteArray(kUnverifiedSuffix)));
}

QString BlockSignatureFor(const QString &author_key, const QString &block_name)
{
    return ShortHash(author_key + QLatin1Char('|') + block_name);
}

bool AuthenticateBlock(const BlkParaData *config, QString *reason)
{
    if (!config)
        return true;
    const QString key = AuthValue(config, 0);
    const QString signature = AuthValue(config, 1);
    if (key.isEmpty() && signature.isEmpty())
        return true;
    if (!key.isEmpty() && signature == BlockSignatureFor(key, BlockNameOf(config)))
        return true;
    if (reason)
        *reason = QStringLiteral("Block authentication failed. The block signature does not match "
                                 "its author key.");
    return false;
}

void SignBlock(BlkParaData *config)
{
    ParaEntity *signature = AuthEntity(config, 1);
    if (!signature)
        return;
    const QString key = AuthValue(config, 0);
    signature->sel_val = key.isEmpty() ? QString() : BlockSignatureFor(key, BlockNameOf(config));
}
