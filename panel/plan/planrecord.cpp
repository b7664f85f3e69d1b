#include "panel/plan/planrecord.h"

#include <algorithm>

#include <QCoreApplication>

namespace Panel
{

using VesmarClient::Functions;
using VesmarClient::Outcome;
using VesmarClient::Reading;
using VesmarClient::ReadingInfo;
using VesmarClient::Result;

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Panel::Plan)
};

bool meets(const Criterion& criterion, const Reading& reading)
{
    return reading.isPresent && (!criterion.minimum || reading.value >= *criterion.minimum) &&
           (!criterion.maximum || reading.value <= *criterion.maximum);
}

QString textOf(Reading reading, double value)
{
    reading.value = value;
    reading.isPresent = true;
    return reading.text();
}

} // namespace

Verdict PlanRecord::verdict() const
{
    const auto hasAny = [this](StepState state) {
        return std::any_of(steps.cbegin(), steps.cend(),
                           [state](const StepRecord& step) { return step.state == state; });
    };
    if (hasAny(StepState::Failed)) {
        return Verdict::Failed;
    }
    if (!ended.isValid()) {
        return Verdict::None;
    }
    if (hasAny(StepState::NotMeasured) || hasAny(StepState::Waiting) || hasAny(StepState::AwaitingHold)) {
        return Verdict::Incomplete;
    }
    return hasAny(StepState::Passed) ? Verdict::Passed : Verdict::None;
}

QString rangeOf(const Criterion& criterion, const Reading& reading)
{
    if (criterion.minimum && criterion.maximum) {
        return Texts::tr("%1 to %2")
            .arg(textOf(reading, *criterion.minimum), textOf(reading, *criterion.maximum));
    }
    return criterion.minimum ? Texts::tr("at least %1").arg(textOf(reading, *criterion.minimum))
                             : Texts::tr("at most %1").arg(textOf(reading, criterion.maximum.value_or(0)));
}

QStringList missesOf(const PlanStep& step, const Result& result)
{
    QStringList misses;
    for (const ReadingInfo& info : Functions::find(step.settings.function()).readings) {
        const Reading reading = result.reading(info.identifier);
        for (const Criterion& criterion : step.criteria) {
            if (criterion.reading == info.identifier && !meets(criterion, reading)) {
                const QString value = reading.isPresent ? reading.text() : Texts::tr("missing");
                misses.append(Texts::tr("%1 is %2 and has to be %3.")
                                  .arg(info.title, value, rangeOf(criterion, reading)));
            }
        }
    }
    return misses;
}

PlanRecord planRecordOf(const RecordPointer& record)
{
    const bool isMeasured = record->outcome == Outcome::Completed || record->outcome == Outcome::Interrupted;
    const QString title = record->function().title.remove(QChar(QChar::SoftHyphen));
    const StepRecord step{
        {title, record->settings, {}}, isMeasured ? StepState::Measured : StepState::NotMeasured, record, {}};
    return {title, record->begun, QDateTime::currentDateTime(), {step}};
}

} // namespace Panel
