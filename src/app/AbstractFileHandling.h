// The one base of every reader and writer of the program's XML files: it owns the file, the
// whole-file buffer, the stream over that buffer, the optional encoding and the error routing.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>

class ErrorList;
class QXmlStreamReader;
class QXmlStreamWriter;

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
