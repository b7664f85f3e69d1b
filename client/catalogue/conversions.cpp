#include "client/catalogue/conversions.h"

#include <array>
#include <charconv>

#include "client/catalogue/catalogue.h"
#include "client/words/readings.h"

namespace VesmarClient
{

namespace
{

/// The shortest decimal number that stands for this single, as it is read: 0.1, and not 0.10000000149.
double ShortestDecimal(float value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return QByteArray(buffer.data(), static_cast<int>(end.ptr - buffer.data())).toDouble();
}

} // namespace

Identity IdentityOf(const Vesmar::TesterInformation& information)
{
    return {information.DeviceName,  information.DeviceCode,   information.SerialNumber, information.Version,
            information.VersionCode, information.RevisionCode, information.BuildNumber};
}

Result ResultOf(const Vesmar::MeasurementResults& results, const QDateTime& when)
{
    const Function function = FunctionOf(results.GetMeasurementType());
    const QVector<ReadingInfo> known = ReadingInfosOf(function);
    QVector<Reading> readings;
    for (const DriverReading& given : ReadingsOf(results)) {
        const ReadingInfo& info = known.at(readings.size());
        const bool isPresent = IsPresent(given.value);
        readings.append({info.identifier, isPresent ? ShortestDecimal(given.value) : 0, isPresent, info.unit,
                         info.decimals});
    }
    return {function, readings, when};
}

} // namespace VesmarClient
