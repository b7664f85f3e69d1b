#pragma once

#include "panel/plan/planrecord.h"
#include "panel/session/session.h"

namespace Panel
{

/// Measures by a plan, one step after the other. A step that was not measured, or is not known to have
/// stopped, ends it; one that fails its criteria does too, unless the plan says otherwise.
class PlanRun : public QObject
{
    Q_OBJECT

public:
    PlanRun(Session& session, const Plan& plan, QObject* parent = nullptr);

    const PlanRecord& record() const { return _record; }
    bool isFinished() const { return _record.ended.isValid(); }
    /// The number of the step that is under way, or that waits for somebody to hold the button; -1 before the
    /// first one, and once it is finished.
    int present() const { return _present; }

public Q_SLOTS:
    void start();
    /// Begins the step that waits for it. It is aborted unless `Session::keepAlive` is called in time.
    void hold();
    /// Ends the step that `hold` has begun, and with it the plan.
    void release();
    /// Ends the step under way, and with it the plan.
    void stop();

Q_SIGNALS:
    void stepChanged(int step);
    void finished();

private:
    void begin(int step);
    void measure();
    void end(const RecordPointer& record);
    void enter(StepState state);
    void finish();

    Session& _session;
    Plan _plan;
    PlanRecord _record;
    int _present = -1;
    RecordPointer _measured; ///< The record of the step that is under way; null between two steps.
};

} // namespace Panel
