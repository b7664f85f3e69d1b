#include "protocol/checksum.h"

#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

int TableEntry(int byte)
{
    constexpr int Polynomial = 0x1021;
    int crc = byte << 8;
    for (int bit = 0; bit < 8; ++bit) {
        const bool isBitSet = (crc & 0x8000) != 0;
        crc = (crc << 1) & 0xFFFF;
        if (isBitSet) {
            crc ^= Polynomial;
        }
    }
    return crc;
}

} // namespace

QVector<int> ChecksumTable()
{
    constexpr int Size = 256;
    QVector<int> table;
    table.reserve(Size);
    for (int byte = 0; byte < Size; ++byte) {
        table.append(TableEntry(byte));
    }
    return table;
}

int Checksum(const QVector<int>& table, const QByteArray& bytes, int size)
{
    const int* const entries = table.constData();
    unsigned crc = 0; // A signed index would be extended to a pointer's width for each byte.
    for (int position = 0; position < size; ++position) {
        const auto byte = static_cast<unsigned char>(bytes.at(position));
        crc = static_cast<unsigned>(entries[byte ^ (crc >> 8U)]) ^ ((crc << 8U) & 0xFFFFU);
    }
    return static_cast<int>(crc);
}

bool EndsWithChecksum(const QVector<int>& table, const QByteArray& frame)
{
    const int size = frame.size() - ChecksumSize;
    if (size <= 0) {
        return false;
    }
    return static_cast<unsigned>(Checksum(table, frame, size)) == WordAt(frame, size);
}

} // namespace Vesmar
