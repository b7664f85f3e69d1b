#pragma once

#include <QByteArray>
#include <QVector>

/// The checksum that closes every frame: CRC-16/XMODEM (polynomial 0x1021, initial value 0), low byte first.
namespace Vesmar
{

constexpr int ChecksumSize = 2; ///< In bytes.

/// Returns the checksums of the 256 single bytes. The functions below compute with this table.
QVector<int> ChecksumTable();

/// Returns the checksum of the first `size` bytes.
int Checksum(const QVector<int>& table, const QByteArray& bytes, int size);

/// Returns whether the last two bytes of a frame are the checksum of the others; false if there are no
/// others.
bool EndsWithChecksum(const QVector<int>& table, const QByteArray& frame);

} // namespace Vesmar
