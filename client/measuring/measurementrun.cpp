#include "client/measuring/measurementrun.h"

#include "client/catalogue/conversions.h"
#include "client/guard/guard.h"
#include "client/measuring/measurementend.h"

namespace VesmarClient
{

using Vesmar::MeasurementResults;

MeasurementRun::MeasurementRun(MeasurementOrder order)
    : _order(std::move(order)), _reSettings(ReSettingsOf(_order)), _gaps(_order.time, this), _keepAlive(this)
{
    connect(&_gaps, &GapMonitor::Changed, this, &MeasurementRun::GapsChanged);
    _keepAlive.setSingleShot(true);
    _keepAlive.setTimerType(Qt::PreciseTimer);
    connect(&_keepAlive, &QTimer::timeout, this, &MeasurementRun::MissKeepAlive);
}

void MeasurementRun::Begin()
{
    if (_order.isGuarded) {
        const Failure failure = Guard::OfThisProcess().Watch();
        if (failure.isFailure()) {
            Q_EMIT Finished(Outcome::Failed, failure);
            return;
        }
    }
    if (_keepAlive.interval() > 0) {
        _keepAlive.start();
    }
    BeginTest(_reSettings ? *_reSettings : *_order.settings);
}

void MeasurementRun::BeginTest(Vesmar::MeasurementSettings& settings)
{
    if (_test) {
        _test.release()->deleteLater(); // It tells its end just now.
    }
    _test =
        std::make_unique<SessionRunner>(settings, _order.limits, [this](const MeasurementResults& results) {
            return ReceiveResults(results);
        });
    connect(_test.get(), &SessionRunner::PhaseEntered, this, &MeasurementRun::EnterPhase);
    connect(_test.get(), &SessionRunner::Ended, this, &MeasurementRun::EndTest);
    _test->Begin();
}

void MeasurementRun::EndTest()
{
    const MeasurementSession& session = _test->Session();
    const bool isDone =
        session.CurrentOutcome() == MeasurementSession::Outcome::Completed && session.IsStopConfirmed();
    if (IsReTest() && isDone && !_isAborted) {
        BeginTest(*_order.settings);
    } else {
        Finish();
    }
}

void MeasurementRun::Finish()
{
    _keepAlive.stop();
    _gaps.End();
    const MeasurementSession& session = _test->Session();
    Outcome outcome = OutcomeOf(session, !_gaps.Gaps().isEmpty());
    if (outcome == Outcome::Completed && IsReTest()) {
        outcome = _isAborted ? Outcome::Aborted : Outcome::Failed; // the test that was to follow has not run
    }
    Failure failure = FailureOf(session, Vesmar::Tester::Instance()->ErrorCode());
    if (_isKeepAliveMissed && outcome == Outcome::Aborted && !failure.isFailure()) {
        failure = KeepAliveMissed();
    }
    if (session.FailureReason() == MeasurementSession::Reason::FunctionLost) {
        Q_EMIT ResultsWithdrawn();
    }
    if (session.IsStopConfirmed()) {
        Guard::OfThisProcess().Release();
        Q_EMIT StopConfirmed();
    }
    Q_EMIT Finished(outcome, failure);
}

/// False if the test has no result by these.
bool MeasurementRun::ReceiveResults(const MeasurementResults& results)
{
    const bool isResult = !IsReTest() || AdoptRe(results, _order);
    _gaps.AcceptReading();
    Q_EMIT ResultRead(ResultOf(results, QDateTime::currentDateTime()), _order.time.elapsed());
    return isResult;
}

/// A test that is ending already is the last one then. After an abort, a missed keep-alive is no failure.
void MeasurementRun::Abort()
{
    _isAborted = true;
    _keepAlive.stop();
    _test->Abort();
}

void MeasurementRun::SetKeepAliveInterval(int milliseconds)
{
    _keepAlive.setInterval(milliseconds);
    if (milliseconds > 0 && _test && !_isAborted) {
        _keepAlive.start();
    } else {
        _keepAlive.stop();
    }
}

void MeasurementRun::KeepAlive()
{
    if (_keepAlive.isActive()) {
        _keepAlive.start();
    }
}

void MeasurementRun::MissKeepAlive()
{
    _isKeepAliveMissed = true;
    Abort();
}

void MeasurementRun::EnterPhase(MeasurementSession::Phase phase)
{
    if (phase == MeasurementSession::Phase::Running) {
        BeginTime();
    } else if (_test->Session().CurrentOutcome() == MeasurementSession::Outcome::LinkLost) {
        _gaps.LoseLink();
    } else {
        _gaps.End();
    }
    Q_EMIT PhaseChanged(PhaseOf(phase));
}

void MeasurementRun::BeginTime()
{
    if (!IsContinuous(_test->Settings())) {
        return;
    }
    _gaps.Begin();
    if (const auto time = TimeOf(_test->Settings())) {
        Q_EMIT TimeBegan(_order.time.elapsed() + time->count());
    }
}

} // namespace VesmarClient
