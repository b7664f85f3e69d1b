#pragma once

#include <QJsonObject>
#include <QVector>

#include <VesmarClient/enumerations.h>

namespace Cli
{

/// How far a measurement is, as events tell it: the numbers are those of the driver's `MeasurementStatus`.
enum class MeasurementStatus : int {
    Preparing = 1,
    Prepared = 2,
    Starting = 3,
    Running = 4,
    Measuring = 5, ///< There is a reading.
    Stopping = 6,
    Stopped = 7 ///< The instrument is confirmed to have stopped.
};

/// What a measurement comes to with this phase, in order.
QVector<MeasurementStatus> StatusesOf(VesmarClient::Phase phase);

QJsonObject Json(MeasurementStatus status);

} // namespace Cli
