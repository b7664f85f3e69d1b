#pragma once

#include <QDateTime>

#include <Vesmar/error.h>
#include <Vesmar/measurementresults.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/testerinformation.h>

#include <VesmarClient/identity.h>
#include <VesmarClient/result.h>

/// The driver's values as the client's own, which can be kept and sent to any thread. The enumerators have
/// the same numbers on both sides.
namespace VesmarClient
{

constexpr Error ErrorOf(Vesmar::Error error)
{
    return static_cast<Error>(error);
}

constexpr Mode ModeOf(Vesmar::OperationMode mode)
{
    return static_cast<Mode>(mode);
}

/// A function without a name keeps the number that the instrument has reported.
constexpr Function FunctionOf(Vesmar::MeasurementType type)
{
    return static_cast<Function>(type);
}

constexpr Vesmar::MeasurementType TypeOf(Function function)
{
    return static_cast<Vesmar::MeasurementType>(function);
}

Identity IdentityOf(const Vesmar::TesterInformation& information);

/// The readings of the results, with the units that are known for them. Empty for a function without readings
/// and for the placeholder that the driver has at first.
Result ResultOf(const Vesmar::MeasurementResults& results, const QDateTime& when);

} // namespace VesmarClient
