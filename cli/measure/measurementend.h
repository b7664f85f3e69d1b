#pragma once

#include <QJsonObject>
#include <QVector>

#include <VesmarClient/failure.h>
#include <VesmarClient/gap.h>
#include <VesmarClient/result.h>

#include "cli/output/event.h"

namespace Cli
{

/// How a measurement has ended.
struct MeasurementEnd {
    VesmarClient::Outcome outcome = VesmarClient::Outcome::None;
    bool isStopConfirmed = false;
    VesmarClient::Failure failure;
    QVector<VesmarClient::Gap> gaps; ///< Their times count from the beginning of the measurement.
    VesmarClient::Phase lastPhase =
        VesmarClient::Phase::Waiting; ///< The one before the instrument was told to stop.
};

/// The end for people and for programs, with a message of a few sentences.
Ending EndingOf(const QString& function, const MeasurementEnd& end);

/// What the result in JSON has besides the ending. The readings are the last ones.
QJsonObject ResultFields(const QString& function, const MeasurementEnd& end,
                         const QVector<VesmarClient::Reading>& readings);

} // namespace Cli
