// The one base of every reader and writer of the program's XML files: it owns the file, the
// whole-file buffer, the stream over that buffer, the optional encoding and the error routing.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

class ErrorList;

class AbstractFileHandling : public QObject
{
    Q_OBJECT
public:
    AbstractFileHandling(const QString &root_dir, ErrorList *error_list, qint32 silent,
                         quint8 compress_on_write, quint8 decompress_on_read, qint32 key,
                         QObject *parent = nullptr);
    ~AbstractFileHandling() override;

    // Null on failure, after reporting. The file stays open until CloseRead.
    QXmlStreamReader *OpenForRead(const QString &path, const QString &title);
    // False when the stream holds an error, after reporting it.
    bool CloseRead(const QString &path, const QString &title);
    // Null on failure, after reporting. Nothing reaches the file before CloseWrite.
    QXmlStreamWriter *OpenForWrite(const QString &path, const QString &title);
    void CloseWrite();
    bool OpenDevice(bool for_read, const QString &path, const QString &title);

    // The whole load of a one-section file: open, read, close; null (the partial record freed)
    // when any step failed.
    template <typename Record, typename Read, typename Free>
    Record *LoadSection(const QString &path, const QString &title, Read read, Free free_record)
    {
        QXmlStreamReader *stream = OpenForRead(path, title);
        if (!stream)
            return nullptr;
        Record *data = read(stream);
        if (!CloseRead(path, title)) {
            free_record(data);
            return nullptr;
        }
        return data;
    }
    // The whole save of a one-section file; false only when the file could not be opened.
    template <typename Record, typename Write>
    bool SaveSection(const QString &path, const Record *data, const QString &title, Write write)
    {
        QXmlStreamWriter *stream = OpenForWrite(path, title);
        if (!stream)
            return false;
        write(stream, data);
        CloseWrite();
        return true;
    }

    ErrorList *error_list = nullptr;
    qint32 silent = 0;
    qint32 key = 0;
    QFile file;
    QByteArray buffer;
    quint8 compress_on_write = 0;
    quint8 decompress_on_read = 0;
    QXmlStreamWriter *writer = nullptr;
    QXmlStreamReader *reader = nullptr;

protected:
    void Report(const QString &title, const QString &text);
};
