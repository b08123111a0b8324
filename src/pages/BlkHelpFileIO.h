// Reader and writer of the blk_help_data section: the file blk_help.cfg and the same element
// inside a block definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkHelpData;

class BlkHelpFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkHelpFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                  QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkHelpData *LoadFile(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveFile(const QString &path, const BlkHelpData *data, const QString &title);

    // Skips tokens to the next blk_help_data; null when there is none or the reader has an error.
    static BlkHelpData *ReadHelpData(QXmlStreamReader *reader);
    // A null record writes nothing at all.
    static void WriteHelpData(QXmlStreamWriter *writer, const BlkHelpData *data);
};
