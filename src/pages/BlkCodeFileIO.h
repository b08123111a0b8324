// Reader and writer of the blk_code_data section: the file blk_code.cfg and the same element
// inside a block definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkCodeData;

class BlkCodeFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkCodeFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                  QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkCodeData *LoadFile(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveFile(const QString &path, const BlkCodeData *data, const QString &title);

    // Skips tokens to the next blk_code_data; null when there is none or the reader has an error.
    static BlkCodeData *ReadCodeData(QXmlStreamReader *reader);
    // A null record writes nothing at all.
    static void WriteCodeData(QXmlStreamWriter *writer, const BlkCodeData *data);
};
