#pragma once

#include <QByteArray>
#include <QObject>
#include <QVector>

namespace Vesmar
{

/// The checksum that closes every frame: CRC-16/XMODEM (polynomial 0x1021, initial value 0), low byte first.
///
/// Stateless after construction, so any thread may use it. It sees a frame as bytes and never modifies it
/// beyond appending the checksum.
class CRC16 : public QObject
{
    Q_OBJECT

public:
    explicit CRC16(QObject* parent);

    /// The checksum with its two bytes exchanged: its low byte in bits 8 to 15.
    int Calculate(const QByteArray& data) const;

    /// Appends the checksum of all bytes, low byte first.
    void AddCRC(QByteArray& frame) const;

    /// Whether the last two bytes are the checksum of the others; false where there are no others.
    bool Check(const QByteArray& frame) const;

private:
    int Sum(const char* data, int size) const;

    QVector<int> _table;
};

} // namespace Vesmar
