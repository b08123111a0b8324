#include "app/EncodeBuffer.h"

namespace {

// Fixed data of the product: changing any value makes every keyed code file unreadable.
const quint8 key_tables[3][16] = {
    {0x3a, 0x91, 0x0f, 0xc4, 0x5d, 0x27, 0xe8, 0x76, 0x1b, 0xa3, 0x62, 0xd9, 0x48, 0xf0, 0x8c, 0x35},
    {0xb7, 0x14, 0x6e, 0x2c, 0xfa, 0x83, 0x59, 0x0d, 0xc1, 0x7f, 0x36, 0xe2, 0x95, 0x4b, 0xa8, 0x1e},
    {0x5c, 0xe6, 0x21, 0x9f, 0x73, 0x08, 0xbd, 0x44, 0xd2, 0x6a, 0x17, 0x8e, 0xf5, 0x30, 0xc9, 0x02},
};

void Scramble(QByteArray &buffer, qint32 key, bool add)
{
    int table_index = 0;
    char *bytes = buffer.data();
    const int size = buffer.size();
    for (int i = 0; i < size; ++i) {
        const quint8 delta = ScrambleByte(key, table_index);
        if (key >= 1 && key <= 3 && ++table_index == 16)
            table_index = 0;
        const quint8 byte = static_cast<quint8>(bytes[i]);
        bytes[i] = static_cast<char>(add ? quint8(byte + delta) : quint8(byte - delta));
    }
}

// zlib cannot expand more than about 1032 to 1, so a larger length in front is damage; without
// this check a scrambled or foreign file could make qUncompress reserve gigabytes.
bool PlausiblyCompressed(const QByteArray &buffer)
{
    if (buffer.size() < 4)
        return buffer.isEmpty();
    const auto *b = reinterpret_cast<const quint8 *>(buffer.constData());
    const quint64 claimed = (quint64(b[0]) << 24) | (quint64(b[1]) << 16) | (quint64(b[2]) << 8) | b[3];
    return claimed <= quint64(buffer.size()) * 1100 + 4096;
}

} // namespace

quint8 ScrambleByte(qint32 key, int table_index)
{
    if (key == 0)
        return 7;
    if (key >= 1 && key <= 3)
        return key_tables[key - 1][table_index & 15];
    return static_cast<quint8>(key & 0xff);
}

void EncodeBuffer(QByteArray &buffer, bool encode, qint32 key)
{
    if (encode) {
        // qCompress gives four bytes for nothing; an empty file must stay empty.
        if (buffer.isEmpty())
            return;
        buffer = qCompress(buffer, -1);
        if (buffer.isEmpty())
            return;
        Scramble(buffer, key, true);
        return;
    }
    if (buffer.isEmpty())
        return; // what qUncompress would give, without its warning
    Scramble(buffer, key, false);
    buffer = PlausiblyCompressed(buffer) ? qUncompress(buffer) : QByteArray();
}
