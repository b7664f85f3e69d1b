#pragma once

#include <QByteArray>
#include <QVector>

/// The checksum that closes every frame: CRC-16/XMODEM (polynomial 0x1021, initial value 0), low byte first.
namespace Vesmar
{

constexpr int ChecksumSize = 2; ///< In bytes.

/// The checksums of the 256 single bytes. The functions below compute with this table.
QVector<int> ChecksumTable();

/// The checksum of the first `size` bytes.
int Checksum(const QVector<int>& table, const QByteArray& bytes, int size);

/// Whether the last two bytes of a frame are the checksum of the others; false where there are no others.
bool EndsWithChecksum(const QVector<int>& table, const QByteArray& frame);

} // namespace Vesmar
