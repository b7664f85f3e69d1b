#pragma once

#include <QVector>

#include <optional>

#include <VesmarClient/settings.h>

namespace Panel
{

/// What one reading of a step has to be, in the unit of the reading. Both ends belong to the range.
struct Criterion {
    QString reading; ///< Its identifier in the catalogue.
    std::optional<double> minimum;
    std::optional<double> maximum;
};

/// One measurement of a plan.
struct PlanStep {
    QString name;
    VesmarClient::Settings settings;
    QVector<Criterion> criteria; ///< In the order of the catalogue; at most one for a reading.

    bool isDangerous() const { return VesmarClient::Functions::find(settings.function()).isDangerous; }
};

/// Measurements that are made one after the other.
struct Plan {
    QString name;
    bool goesOnAfterFailedStep = false; ///< Only after one that was measured, and does not meet its criteria.
    QVector<PlanStep> steps;
};

} // namespace Panel
