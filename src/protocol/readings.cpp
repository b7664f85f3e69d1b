#include "protocol/readings.h"

#include <algorithm>

#include <QtEndian>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

const std::array<ReadingsKind, 11> Kinds{{
    {MeasurementType::Monitoring,
     {"ULN: ", " UNPE: ", " f: "},
     [](const Readings& r) -> MeasurementResults* { return new MonitoringResults(r[0], r[1], r[2]); }},
    {MeasurementType::RLN,
     {"Resistance: ", " Voltage: ", " Current: ", " IsubVoltage: ", " IsubCurrent: "},
     [](const Readings& r) -> MeasurementResults* { return new RLNResults(r[0], r[1], r[2], r[3], r[4]); }},
    {MeasurementType::RPE,
     {"Resistance: ", " Voltage: ", " Current: "},
     [](const Readings& r) -> MeasurementResults* { return new RPEResults(r[0], r[1], r[2]); }},
    {MeasurementType::RISO,
     {"Resistance: ", " Voltage: ", " Current: "},
     [](const Readings& r) -> MeasurementResults* { return new RISOResults(r[0], r[1], r[2]); }},
    {MeasurementType::ISUB,
     {"Current: ", " Voltage: "},
     [](const Readings& r) -> MeasurementResults* { return new ISUBResults(r[0], r[1]); }},
    {MeasurementType::IPE,
     {"Current: ", " Voltage: "},
     [](const Readings& r) -> MeasurementResults* { return new IPEResults(r[0], r[1]); }},
    {MeasurementType::IDELTA,
     {"Current: ", " Voltage: "},
     [](const Readings& r) -> MeasurementResults* { return new IDELTAResults(r[0], r[1]); }},
    {MeasurementType::IT,
     {"Current: "},
     [](const Readings& r) -> MeasurementResults* { return new ITResults(r[0]); }},
    {MeasurementType::POWER,
     {"Energy: ", " Power: ", " Current: ", " Voltage: ", " PF: ", " S: "},
     [](const Readings& r) -> MeasurementResults* {
         return new POWERResults(r[0], r[1], r[2], r[3], r[4], r[5]);
     }},
    {MeasurementType::HVTest,
     {"MaxVoltage: ", " Voltage: ", " Current: ", " ULN: ", " UPRI: ", " PWM: "},
     [](const Readings& r) -> MeasurementResults* {
         return new HVTestResults(r[0], r[1], r[2], r[3], r[4], r[5]);
     }},
    {MeasurementType::IEC,
     {"Result: ", " Voltage: ", " ULN: ", " Step: ", " Delay: "},
     [](const Readings& r) -> MeasurementResults* { return new IECResults(r[0], r[1], r[2], r[3], r[4]); }},
}};

/// A reading in ten-thousandths, low byte first.
float FixedPointAt(const QByteArray& frame, int position)
{
    constexpr unsigned NoReading = 0xEEEE;
    const unsigned value = WordAt(frame, position);
    return value == NoReading ? MeasurementResults::NoValue : static_cast<float>(value) / 10000.0F;
}

} // namespace

const ReadingsKind* FindReadingsKind(MeasurementType function)
{
    const auto* const kind =
        std::find_if(Kinds.cbegin(), Kinds.cend(),
                     [function](const ReadingsKind& candidate) { return candidate.function == function; });
    return kind != Kinds.cend() ? kind : nullptr;
}

Readings DecodeReadings(const QByteArray& frame)
{
    Readings readings{};
    qFromLittleEndian<float>(frame.constData(), static_cast<int>(readings.size()), readings.data());
    return readings;
}

float DecodeRe(const QByteArray& frame)
{
    return qFromLittleEndian<float>(frame.left(4).leftJustified(4, '\0').constData());
}

IaTa DecodeIaTa(const QByteArray& frame)
{
    return {FixedPointAt(frame, 4), FixedPointAt(frame, 6)};
}

} // namespace Vesmar
