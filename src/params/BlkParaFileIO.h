// Reader and writer of the blk_para section: a Configuration, Parameters or Initial Conditions.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkParaData;

class BlkParaFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkParaFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent, qint32 full,
                  QObject *parent = nullptr);

    // The new record, owned by the caller, or null.
    BlkParaData *LoadFile(const QString &path, const QString &title);
    // True unless the file could not be opened.
    bool SaveFile(const QString &path, const BlkParaData *data, const QString &title);

    // With seek_root, tokens are skipped to the next blk_para; otherwise the reader stands on it.
    static BlkParaData *ReadBlkPara(QXmlStreamReader *reader, bool seek_root);
    // A null record writes nothing at all.
    static void WriteBlkPara(QXmlStreamWriter *writer, const BlkParaData *data, qint32 full);

    qint32 full = 1;
};
