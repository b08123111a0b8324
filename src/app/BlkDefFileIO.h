// The block definition file: one compressed, scrambled XML document that nests every section.
#pragma once

#include "app/AbstractFileHandling.h"

struct BlkDefData;
struct BlockData;

class BlkDefFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    BlkDefFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                 QObject *parent = nullptr);

    // Leaves the reader just after wsp_mod_files, ready for the sections that follow.
    static BlkDefData *ReadDefData(QXmlStreamReader *reader);
    static void WriteDefData(QXmlStreamWriter *writer, const BlkDefData *data);
    static void WriteDefStart(QXmlStreamWriter *writer);
};

// Reads every section of the block's definition file into `block`, whose path is set.
// False leaves the block without a file; the caller frees it.
bool LoadBlockData(BlockData *block, const QString &name_hint, ErrorList *error_list,
                   const QString &title, bool silent);
// Writes every section into the block's definition file (the first "*.bdef" of its directory,
// or one named after the directory). False when the file could not be opened.
bool SaveBlockData(BlockData *block, ErrorList *error_list, const QString &title, bool silent);
