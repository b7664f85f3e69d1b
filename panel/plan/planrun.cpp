#include "panel/plan/planrun.h"

namespace Panel
{

using VesmarClient::Outcome;

namespace
{

StepState stateOf(const StepRecord& step)
{
    const Outcome outcome = step.record->outcome;
    if (outcome != Outcome::Completed && outcome != Outcome::Interrupted) {
        return StepState::NotMeasured;
    }
    if (step.step.criteria.isEmpty()) {
        return StepState::Measured;
    }
    return step.misses.isEmpty() ? StepState::Passed : StepState::Failed;
}

} // namespace

PlanRun::PlanRun(Session& session, const Plan& plan, QObject* parent)
    : QObject(parent), _session(session), _plan(plan)
{
    _record.name = plan.name;
    for (const PlanStep& step : plan.steps) {
        _record.steps.append({step, StepState::Waiting, {}, {}});
    }
    connect(&session, &Session::measurementEnded, this, &PlanRun::end);
}

void PlanRun::start()
{
    _record.begun = QDateTime::currentDateTime();
    begin(0);
}

void PlanRun::begin(int step)
{
    _present = step;
    if (_plan.steps.at(step).isDangerous()) {
        enter(StepState::AwaitingHold);
    } else {
        measure();
    }
}

void PlanRun::hold()
{
    if (_present >= 0 && _record.steps.at(_present).state == StepState::AwaitingHold) {
        measure();
    }
}

/// The button may be released late: when its step is over.
void PlanRun::release()
{
    if (!_measured.isNull() && _plan.steps.at(_present).isDangerous()) {
        _session.stop();
    }
}

void PlanRun::measure()
{
    _session.measure(_plan.steps.at(_present).settings);
    _measured = _session.record();
    _record.steps[_present].record = _measured;
    enter(StepState::Running);
}

void PlanRun::stop()
{
    if (!_measured.isNull()) {
        _session.stop();
    } else if (_present >= 0) {
        finish();
    }
}

/// Other measurements may end as well: those that were begun by hand.
void PlanRun::end(const RecordPointer& record)
{
    if (_measured.isNull() || record != _measured) {
        return;
    }
    _measured.reset();
    StepRecord& step = _record.steps[_present];
    step.misses = missesOf(step.step, record->latest);
    const StepState state = stateOf(step);
    enter(state);
    const bool goesOn =
        state != StepState::NotMeasured && (state != StepState::Failed || _plan.goesOnAfterFailedStep);
    if (goesOn && record->isStopConfirmed && _present + 1 < _plan.steps.size()) {
        begin(_present + 1);
    } else {
        finish();
    }
}

void PlanRun::enter(StepState state)
{
    _record.steps[_present].state = state;
    Q_EMIT stepChanged(_present);
}

void PlanRun::finish()
{
    _present = -1;
    _record.ended = QDateTime::currentDateTime();
    Q_EMIT finished();
}

} // namespace Panel
