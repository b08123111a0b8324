// Reader and writer of the blk_pres_data section: the file blk_pres.cfg and the same element
// inside a block definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkPresData;

class BlkPresFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkPresFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                  QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkPresData *LoadFile(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveFile(const QString &path, const BlkPresData *data, const QString &title);

    // Skips tokens to the next blk_pres_data; null when there is none or the reader has an error.
    static BlkPresData *ReadPresData(QXmlStreamReader *reader);
    // A null record writes nothing at all.
    static void WritePresData(QXmlStreamWriter *writer, const BlkPresData *data);
};
