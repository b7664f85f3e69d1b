#pragma once

#include "panel/plan/plan.h"
#include "panel/session/record.h"

namespace Panel
{

/// What has become of a step.
enum class StepState {
    Waiting,      ///< Its turn has not come, or never came.
    AwaitingHold, ///< It has a dangerous voltage: it begins when somebody holds the button.
    Running,
    Measured,   ///< It was measured, and has no criteria.
    Passed,     ///< It was measured, and meets all of its criteria.
    Failed,     ///< It was measured, and misses a criterion at the least.
    NotMeasured ///< Its measurement was not completed: its record tells why.
};

struct StepRecord {
    PlanStep step;
    StepState state = StepState::Waiting;
    RecordPointer record; ///< Null before it was measured.
    QStringList misses;   ///< A sentence for each criterion that it misses.
};

/// What has become of a plan.
enum class Verdict {
    None,      ///< It is under way, or none of its steps has criteria.
    Passed,    ///< All steps were measured, and meet all of their criteria.
    Failed,    ///< A step misses a criterion.
    Incomplete ///< A step was not measured, and none misses a criterion.
};

/// A plan with all that was measured by it. A single measurement is a plan of one step.
struct PlanRecord {
    QString name;
    QDateTime begun;
    QDateTime ended; ///< Invalid while it is under way.
    QVector<StepRecord> steps;

    Verdict verdict() const;
};

/// A sentence for each criterion of the step that the result misses. A reading that has no value misses it.
QStringList missesOf(const PlanStep& step, const VesmarClient::Result& result);

/// "0.1 to 0.3 Ω", "at most 0.3 Ω", with the unit and the decimals of the reading.
QString rangeOf(const Criterion& criterion, const VesmarClient::Reading& reading);

/// A single measurement as a plan's record.
PlanRecord planRecordOf(const RecordPointer& record);

} // namespace Panel
