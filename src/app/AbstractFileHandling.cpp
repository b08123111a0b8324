#include "app/AbstractFileHandling.h"

#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "app/FileReport.h"

#include <QSaveFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

AbstractFileHandling::AbstractFileHandling(const QString &, ErrorList *error_list, qint32 silent,
                                           quint8 compress_on_write, quint8 decompress_on_read,
                                           qint32 key, QObject *parent)
    : QObject(parent), error_list(error_list), silent(silent), key(key),
      compress_on_write(compress_on_write), decompress_on_read(decompress_on_read)
{
}

AbstractFileHandling::~AbstractFileHandling()
{
    delete writer;
    delete reader;
}

void AbstractFileHandling::Report(const QString &title, const QString &text)
{
    if (error_list)
        error_list->AddMessage(ErrorList::Error, text);
    if (!silent)
        ShowFileFailure(title, text);
}

bool AbstractFileHandling::OpenDevice(bool for_read, const QString &path, const QString &title)
{
    if (file.isOpen())
        file.close();
    file.setFileName(path);
    // Writing opens without truncating: the content goes in at CloseWrite through a save file,
    // so a failure on the way never leaves a half-written or emptied file behind.
    const QIODevice::OpenMode mode =
        for_read ? QIODevice::ReadOnly : (QIODevice::WriteOnly | QIODevice::Append);
    if (file.open(mode))
        return true;
    // The whole path on reading, the bare name on writing: both texts are the product's own.
    if (for_read)
        Report(title, QStringLiteral("Cannot open file: ") + path + " " + file.errorString());
    else
        Report(title, QStringLiteral("Cannot write file: ") + QFileInfo(path).fileName() + " " +
                          file.errorString());
    return false;
}

QXmlStreamReader *AbstractFileHandling::OpenForRead(const QString &path, const QString &title)
{
    if (!OpenDevice(true, path, title))
        return nullptr;
    buffer = file.readAll();
    if (decompress_on_read)
        EncodeBuffer(buffer, false, key);
    file.seek(0);
    delete reader;
    reader = new QXmlStreamReader(buffer);
    return reader;
}

bool AbstractFileHandling::CloseRead(const QString &path, const QString &title)
{
    if (!reader)
        return true;
    const bool failed = reader->hasError();
    if (failed)
        Report(title, QFileInfo(path).fileName() + ": File Loading Error: " + reader->errorString());
    reader->clear();
    delete reader;
    reader = nullptr;
    file.close();
    return !failed;
}

QXmlStreamWriter *AbstractFileHandling::OpenForWrite(const QString &path, const QString &title)
{
    delete writer;
    writer = nullptr;
    if (!OpenDevice(false, path, title))
        return nullptr;
    buffer.clear();
    writer = new QXmlStreamWriter(&buffer);
    writer->setAutoFormatting(true);
    writer->writeStartDocument();
    return writer;
}

void AbstractFileHandling::CloseWrite()
{
    if (!writer)
        return;
    writer->writeEndDocument();
    if (compress_on_write)
        EncodeBuffer(buffer, true, key);
    delete writer;
    writer = nullptr;
    file.close();
    // A failure of the write itself is not reported; the old file then stays as it was.
    QSaveFile target(file.fileName());
    if (target.open(QIODevice::WriteOnly) && target.write(buffer) == buffer.size())
        target.commit();
}
