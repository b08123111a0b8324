// One block in memory: its identity and the records of every section of its definition file.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct BlkParaData;
struct BlkPresData;
struct BlkSchemeData;
struct BlkCodeData;
struct BlkMiscData;
struct BlkHelpData;
struct ImgDataRec;

struct BlkDefData {
    qint32 param_changed = 0;   // set when a new block starts without a file
    QStringList wsp_mod_files;  // workspace files, relative to the block's directory
};

struct BlockData {
    quint32 block_id = 0;       // copy of "Block ID"
    QString path;               // the block's directory
    QString version;            // copy of "Block Version" after loading
    QString tool_version;       // copy of "ZEMA Version" after loading
    BlkParaData *config = nullptr;
    BlkParaData *params = nullptr;
    BlkParaData *initconds = nullptr;
    BlkDefData *def_data = nullptr;
    BlkPresData *pres = nullptr;
    BlkSchemeData *scheme = nullptr;
    BlkCodeData *code = nullptr;
    BlkMiscData *misc = nullptr;
    BlkHelpData *help = nullptr;
    QList<ImgDataRec *> *images = nullptr; // null: the block has no drawings
    // Kept for the block's users; nothing in the file fills them.
    QStringList src_files;
    QStringList doc_files;
    QStringList img_files;
    QStringList wsp_files;
    QStringList dep_blocks;
    QStringList dep_files;
};

// Frees every record the block owns, then the block; null is allowed.
void FreeBlockData(BlockData *block);
void FreeImageList(QList<ImgDataRec *> *images);
