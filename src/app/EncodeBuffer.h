// The compress-and-scramble step of block definition and workspace files, also used to convert
// code files.
#pragma once

#include <QByteArray>

// Encoding compresses (qCompress, default level) and then adds the key's byte to every byte;
// decoding subtracts and uncompresses. Key 0 adds 7, keys 1 to 3 cycle through a 16-byte table,
// any other key adds its own low byte. An empty buffer stays empty in both directions.
void EncodeBuffer(QByteArray &buffer, bool encode, qint32 key);

// The scramble byte for a position of the walk; exposed for the code page's own loop.
quint8 ScrambleByte(qint32 key, int table_index);
