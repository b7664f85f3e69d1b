#include "protocol/dates.h"

#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

constexpr int FirstYear = 2000;

int DecimalAt(const QByteArray& bytes, int position)
{
    const unsigned byte = ByteAt(bytes, position);
    return static_cast<int>((byte >> 4U) * 10 + (byte & 0x0FU));
}

char Decimal(int value)
{
    return static_cast<char>((static_cast<unsigned>(value / 10) << 4U) | static_cast<unsigned>(value % 10));
}

} // namespace

QDate DecodeDate(const QByteArray& bytes)
{
    return {FirstYear + DecimalAt(bytes, 0), DecimalAt(bytes, 1), DecimalAt(bytes, 2)};
}

QTime DecodeTime(const QByteArray& bytes)
{
    return {DecimalAt(bytes, 3), DecimalAt(bytes, 4), DecimalAt(bytes, 5)};
}

QByteArray EncodeDate(QDate date)
{
    QByteArray bytes;
    bytes.append(date.year() > FirstYear ? Decimal(date.year() - FirstYear) : '\0');
    bytes.append(Decimal(date.month()));
    bytes.append(Decimal(date.day()));
    return bytes;
}

QByteArray EncodeTime(QTime time)
{
    QByteArray bytes;
    bytes.append(Decimal(time.hour()));
    bytes.append(Decimal(time.minute()));
    bytes.append(Decimal(time.second()));
    return bytes;
}

QString DateText(const QDateTime& dateTime)
{
    return dateTime.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"));
}

} // namespace Vesmar
