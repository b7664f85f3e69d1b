#include "cli/measure/measurementstatus.h"

#include <array>

namespace Cli
{

using VesmarClient::Phase;

QVector<MeasurementStatus> StatusesOf(Phase phase)
{
    switch (phase) {
    case Phase::Preparing:
        return {MeasurementStatus::Preparing};
    case Phase::Starting:
        return {MeasurementStatus::Prepared, MeasurementStatus::Starting};
    case Phase::Running:
        return {MeasurementStatus::Running};
    case Phase::Stopping:
    case Phase::Confirming:
        return {MeasurementStatus::Stopping};
    default:
        return {};
    }
}

QJsonObject Json(MeasurementStatus status)
{
    constexpr std::array<const char*, 8> Names{"Idle",    "Preparing", "Prepared", "Starting",
                                               "Running", "Measuring", "Stopping", "Stopped"};
    const auto number = static_cast<int>(status);
    return {{QStringLiteral("name"), QLatin1String(Names.at(static_cast<size_t>(number)))},
            {QStringLiteral("number"), number}};
}

} // namespace Cli
