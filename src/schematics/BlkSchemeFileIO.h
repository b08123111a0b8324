// Reader and writer of the blk_scheme_data section: the file blk_scheme.cfg and the same element
// inside a block definition file.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkSchemeData;

class BlkSchemeFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkSchemeFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                    QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkSchemeData *LoadScheme(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveScheme(const QString &path, const BlkSchemeData *record, const QString &title);

    // Skips tokens to the next blk_scheme_data; null when there is none or the reader has an error.
    static BlkSchemeData *ReadSchemeData(QXmlStreamReader *reader);
    // A null record writes nothing at all.
    static void WriteSchemeData(QXmlStreamWriter *writer, const BlkSchemeData *record);
};
