// Converting code files to and from ".enc", file by file and over a copied tree.
#include "codegen/CodeFileConversion.h"

#include "app/EncodeBuffer.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

// Fixed data of the product, like the key tables of the container: the code page's files were
// never meant to come back, so this table is none of those.
const quint8 kOneWayTable[16] = {0x9d, 0x42, 0xe7, 0x1c, 0x6b, 0xd0, 0x35, 0x8a,
                                 0xf3, 0x58, 0x2e, 0xb1, 0x07, 0xc6, 0x7d, 0x64};

bool WriteAll(const QString &path, const QByteArray &bytes)
{
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return out.write(bytes) == bytes.size();
}

} // namespace

bool TakesFile(const QString &file, const ConversionSettings &settings)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix.isEmpty())
        return false;
    if (settings.decrypt)
        return suffix == QLatin1String("enc");
    if (settings.all_types || settings.single_file)
        return true;
    for (const char *code : {"c", "cpp", "cc", "cl", "hpp"})
        if (suffix == QLatin1String(code))
            return true;
    if (settings.fortran && (suffix == QLatin1String("f") || suffix.contains(QLatin1String("f9")) ||
                             suffix.contains(QLatin1String("f0")) || suffix.contains(QLatin1String("f1"))))
        return true;
    return settings.python && suffix.contains(QLatin1String("py"));
}

QString ConvertedPath(const QString &file, bool decrypt)
{
    if (!decrypt)
        return file + ".enc";
    return file.left(file.lastIndexOf(QLatin1Char('.')));
}

QString ConversionTarget(const QString &dir, bool decrypt)
{
    // A trailing separator would put the target inside the tree it copies.
    return QDir::cleanPath(QDir::fromNativeSeparators(dir)) + (decrypt ? "_dec" : "_enc");
}

bool CopyTreeForConversion(const QString &from, const QString &to)
{
    const QDir source(from);
    const QString target_prefix = QDir::cleanPath(QDir(to).absolutePath()) + "/";
    if (!QDir().mkpath(to))
        return false;
    bool ok = true;
    QDirIterator it(from, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        // Only a source that holds its own target reaches here; copying that would never end.
        if ((QDir::cleanPath(QFileInfo(path).absoluteFilePath()) + "/").startsWith(target_prefix))
            continue;
        const QString copy = to + "/" + source.relativeFilePath(path);
        if (it.fileInfo().isDir()) {
            ok = QDir().mkpath(copy) && ok;
            continue;
        }
        if (QFileInfo::exists(copy))
            QFile::remove(copy);
        ok = QFile::copy(path, copy) && ok;
    }
    return ok;
}

QStringList FilesIn(const QString &dir, bool subdirs, const QStringList &filters)
{
    QStringList files;
    QDirIterator it(dir, filters, QDir::Files | QDir::Hidden,
                    subdirs ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

int CountEntries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size();
}

bool ConvertFileList(const QStringList &files, const ConversionSettings &settings, bool remove_inputs)
{
    bool ok = true;
    for (const QString &file : files) {
        if (!TakesFile(file, settings))
            continue;
        QFile in(file);
        if (!in.open(QIODevice::ReadOnly)) {
            ok = false;
            continue;
        }
        QFile out(ConvertedPath(file, settings.decrypt));
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            ok = false;
            continue;
        }
        QByteArray data = in.readAll();
        EncodeBuffer(data, !settings.decrypt, settings.key);
        const bool written = out.write(data) == data.size() && out.flush();
        out.close();
        in.close();
        if (!written) {
            // The input stays: it is the only copy of the content in the target.
            ok = false;
            continue;
        }
        if (remove_inputs)
            QFile::remove(file);
    }
    return ok;
}

ConversionMessage ClosingMessage(bool failed, const QString &source_dir, const QString &target_dir)
{
    if (failed)
        return {2, QStringLiteral("Encrypt/Decrypt"), QStringLiteral("Encrypt/Decrypt Failed")};
    if (!target_dir.isEmpty() && CountEntries(source_dir) != CountEntries(target_dir))
        return {2, QStringLiteral("Encrypt/Decrypt Directory"),
                QStringLiteral("Number of files in source and destination directories are unequal")};
    return {3, QStringLiteral("Encrypt/Decrypt Directory"), QStringLiteral("Encrypt/Decrypt Completed")};
}

bool EncodeFilesOneWay(const QStringList &files)
{
    bool ok = true;
    for (const QString &file : files) {
        QFile in(file);
        if (!in.open(QIODevice::ReadOnly)) {
            ok = false;
            continue;
        }
        QByteArray data = in.readAll();
        // qCompress gives four bytes for nothing; an empty file stays empty.
        if (!data.isEmpty())
            data = qCompress(data, -1);
        char *bytes = data.data();
        for (int i = 0; i < data.size(); ++i)
            bytes[i] = static_cast<char>(quint8(quint8(bytes[i]) + kOneWayTable[i & 15]));
        ok = WriteAll(file + ".enc", data) && ok;
    }
    return ok;
}
