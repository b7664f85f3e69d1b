#include "link/crc16.h"

namespace Vesmar
{

namespace
{

constexpr int TableSize = 256;
constexpr int Polynomial = 0x1021;
constexpr int ChecksumSize = 2;

int TableEntry(int index)
{
    int crc = 0;
    int value = index << 8;
    for (int bit = 0; bit < 8; ++bit) {
        const bool isBitSet = ((value ^ crc) & 0x8000) != 0;
        crc = (crc << 1) & 0xFFFF;
        if (isBitSet) {
            crc ^= Polynomial;
        }
        value = (value << 1) & 0xFFFF;
    }
    return crc;
}

char LowByte(int crc)
{
    return static_cast<char>(crc & 0xFF);
}

char HighByte(int crc)
{
    return static_cast<char>(crc >> 8);
}

} // namespace

CRC16::CRC16(QObject* parent) : QObject(parent), _table(TableSize)
{
    for (int index = 0; index < TableSize; ++index) {
        _table[index] = TableEntry(index);
    }
}

int CRC16::Calculate(const QByteArray& data) const
{
    const int crc = Sum(data.constData(), data.size());
    return ((crc << 8) & 0xFFFF) + (crc >> 8);
}

void CRC16::AddCRC(QByteArray& frame) const
{
    const int exchanged = Calculate(frame);
    frame.append(HighByte(exchanged));
    frame.append(LowByte(exchanged));
}

bool CRC16::Check(const QByteArray& frame) const
{
    if (frame.size() <= ChecksumSize) {
        return false;
    }
    const int dataSize = frame.size() - ChecksumSize;
    const int crc = Sum(frame.constData(), dataSize);
    return frame.at(dataSize) == LowByte(crc) && frame.at(dataSize + 1) == HighByte(crc);
}

int CRC16::Sum(const char* data, int size) const
{
    const int* table = _table.constData();
    int crc = 0;
    for (int position = 0; position < size; ++position) {
        const auto byte = static_cast<unsigned char>(data[position]);
        crc = table[byte ^ (crc >> 8)] ^ ((crc << 8) & 0xFFFF);
    }
    return crc;
}

} // namespace Vesmar
