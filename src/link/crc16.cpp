#include "link/crc16.h"

#include "protocol/checksum.h"

namespace Vesmar
{

CRC16::CRC16(QObject* parent) : QObject(parent), _table(ChecksumTable()) {}

int CRC16::Calculate(const QByteArray& data) const
{
    const int crc = Checksum(_table, data, data.size());
    return ((crc << 8) & 0xFFFF) + (crc >> 8);
}

void CRC16::AddCRC(QByteArray& frame) const
{
    const int exchanged = Calculate(frame);
    frame.append(static_cast<char>(exchanged >> 8));
    frame.append(static_cast<char>(exchanged & 0xFF));
}

bool CRC16::Check(const QByteArray& frame) const
{
    return EndsWithChecksum(_table, frame);
}

} // namespace Vesmar
