// Reader and writer of the blk_misc_data section: the file blk_misc.cfg and the same element
// inside a block definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkMiscData;

class BlkMiscFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkMiscFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                  QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkMiscData *LoadFile(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveFile(const QString &path, const BlkMiscData *data, const QString &title);

    // Skips tokens to the next blk_misc_data; null when there is none or the reader has an error.
    static BlkMiscData *ReadMiscData(QXmlStreamReader *reader);
    // A null record writes nothing at all.
    static void WriteMiscData(QXmlStreamWriter *writer, const BlkMiscData *data);
};
