#include "protocol/version.h"

#include <algorithm>

#include <QString>

#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

/// A text field; it ends at a zero byte.
QString TextAt(const QByteArray& frame, int position, int size)
{
    const QByteArray field = frame.mid(position, size);
    return QString::fromLatin1(field.constData());
}

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Four ASCII digits, or else four bytes that each are a decimal digit's value.
QString BuildNumber(const QByteArray& field)
{
    if (std::all_of(field.cbegin(), field.cend(), IsDigit)) {
        return QString::fromLatin1(field);
    }
    return QString::number(ByteAt(field, 0) * 1000 + ByteAt(field, 1) * 100 + ByteAt(field, 2) * 10 +
                           ByteAt(field, 3));
}

} // namespace

void DecodeVersion(const QByteArray& frame, TesterInformation& information)
{
    information.DeviceName = TextAt(frame, 0, 3);
    information.DeviceCode = TextAt(frame, 3, 3);
    information.SerialNumber = TextAt(frame, 6, 6);
    information.Version = TextAt(frame, 12, 1) + QLatin1Char('.') + TextAt(frame, 13, 2);
    information.VersionCode = TextAt(frame, 15, 2);
    information.RevisionCode = TextAt(frame, 17, 2);
    information.BuildNumber = BuildNumber(frame.mid(19, 4));
}

} // namespace Vesmar
