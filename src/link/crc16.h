#pragma once

#include <QByteArray>
#include <QObject>
#include <QVector>

namespace Vesmar
{

/// Computes, appends and checks the checksum that closes every frame. It never changes after its
/// construction, so that any thread may use it.
class CRC16 : public QObject
{
    Q_OBJECT

public:
    explicit CRC16(QObject* parent);

    /// Returns the checksum with its two bytes exchanged: its low byte stands in bits 8 to 15.
    int Calculate(const QByteArray& data) const;

    /// Appends the checksum of all bytes, low byte first.
    void AddCRC(QByteArray& frame) const;

    /// Returns whether the last two bytes are the checksum of the others; false if there are no others.
    bool Check(const QByteArray& frame) const;

private:
    QVector<int> _table;
};

} // namespace Vesmar
