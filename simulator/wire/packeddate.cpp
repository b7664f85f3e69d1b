#include "simulator/wire/packeddate.h"

#include <array>

namespace Simulator
{

namespace
{

constexpr int FieldCount = 6;
constexpr int Century = 2000;

char PackedField(int value)
{
    return static_cast<char>((value / 10) << 4 | value % 10);
}

std::optional<int> UnpackedField(char field)
{
    const int tens = static_cast<unsigned char>(field) >> 4;
    const int units = static_cast<unsigned char>(field) & 0x0F;
    if (tens > 9 || units > 9) {
        return std::nullopt;
    }
    return tens * 10 + units;
}

} // namespace

QByteArray PackDate(const QDateTime& date)
{
    QByteArray data;
    data.append(PackedField(date.date().year() % 100));
    data.append(PackedField(date.date().month()));
    data.append(PackedField(date.date().day()));
    data.append(PackedField(date.time().hour()));
    data.append(PackedField(date.time().minute()));
    data.append(PackedField(date.time().second()));
    return data;
}

std::optional<QDateTime> UnpackDate(const QByteArray& data)
{
    if (data.size() != FieldCount) {
        return std::nullopt;
    }
    std::array<int, FieldCount> fields{};
    for (int index = 0; index < FieldCount; ++index) {
        const std::optional<int> field = UnpackedField(data[index]);
        if (!field) {
            return std::nullopt;
        }
        fields[static_cast<std::size_t>(index)] = *field;
    }
    const QDate date(Century + fields[0], fields[1], fields[2]);
    const QTime time(fields[3], fields[4], fields[5]);
    if (!date.isValid() || !time.isValid()) {
        return std::nullopt;
    }
    return QDateTime(date, time, Qt::UTC);
}

} // namespace Simulator
