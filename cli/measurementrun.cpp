#include "cli/measurementrun.h"

#include "cli/exitstatus.h"

namespace Cli
{

using Vesmar::Tester;

MeasurementRun::MeasurementRun(Link& link, MeasurementView& view, const MeasureFunction& function,
                               const MeasureLimits& limits)
    : _link(link),
      _tester(link.Instrument()),
      _view(view),
      _function(function),
      _limits(limits),
      _readiness(link),
      _session(function.settings->GetMeasurementType(), function.continuous == nullptr, function.Seconds())
{
    WatchInstrument();
    connect(&_readiness, &ReadinessWatch::Ready, this, &MeasurementRun::Begin);
    connect(&_readiness, &ReadinessWatch::FoundInUpdateMode, this,
            [this] { _link.Fail(ExitStatus::NotDone, InUpdateMode()); });
    connect(&link, &Link::Interrupted, this, &MeasurementRun::Interrupt);
    connect(&view, &MeasurementView::OutputLost, this,
            [this] { Abort(QStringLiteral("nobody reads the output")); });
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { CarryOut(_session.TimeOver()); });
}

/// Everything that a session decides by is looked at whenever any of it changes.
void MeasurementRun::WatchInstrument()
{
    const Tester* tester = &_tester;
    connect(tester, &Tester::DeviceInformationChanged, this, &MeasurementRun::FollowIdentity);
    connect(tester, &Tester::TestResultsChanged, this,
            [this](const Vesmar::MeasurementResults* results) { FollowResults(*results); });
    connect(tester, &Tester::TesterModeChanged, this, &MeasurementRun::Follow);
    connect(tester, &Tester::ErrorCodeChanged, this, [this](Vesmar::Error error) {
        _view.ShowError(error);
        Follow();
    });
    connect(tester, &Tester::MeasurementStatusChanged, this, [this](Vesmar::MeasurementState status) {
        _view.ShowStatus(status);
        Follow();
    });
    connect(tester, &Tester::MeasurementFunctionStatusChanged, this, &MeasurementRun::Follow);
    connect(tester, &Tester::CurrentMeasurementTypeChanged, this, &MeasurementRun::Follow);
    connect(tester, &Tester::IsMeasurementRunningChanged, this, &MeasurementRun::Follow);
    connect(tester, &Tester::MeasurementTimeChanged, this, &MeasurementRun::Follow);
}

MeasurementPicture MeasurementRun::Picture() const
{
    const bool hasResult =
        _tester.TestResults()->GetMeasurementType() == _function.settings->GetMeasurementType();
    return {_tester.ErrorCode(),
            _tester.MeasurementStatus(),
            _tester.MeasurementFunctionStatus(),
            _tester.CurrentMeasurementType(),
            _tester.MeasurementTime(),
            hasResult,
            _tester.GetIsMeasurementModeActive()};
}

void MeasurementRun::Begin()
{
    _limit.start(_limits.stop);
    Follow();
}

void MeasurementRun::Follow()
{
    if (_link.IsUp()) {
        CarryOut(_session.Follow(Picture()));
    }
}

/// Said once, however often it is lost.
void MeasurementRun::NoteLoss()
{
    if (_session.CurrentOutcome() == MeasurementSession::Outcome::LinkLost && !_isLossNoted) {
        _isLossNoted = true;
        _view.Say(
            QStringLiteral("Link lost, the state of the instrument is unknown; trying to get it back and "
                           "to stop the measurement."));
    }
}

void MeasurementRun::FollowIdentity()
{
    if (_link.IsUp()) {
        CarryOut(_session.IdentityRead(Picture()));
    }
}

void MeasurementRun::FollowResults(const Vesmar::MeasurementResults& results)
{
    if (results.GetMeasurementType() == _function.settings->GetMeasurementType()) {
        _view.ShowResults(results);
    }
}

void MeasurementRun::Interrupt(int signalNumber)
{
    if (_link.IsUp()) {
        Abort(QStringLiteral("signal %1").arg(signalNumber));
    } else {
        _link.Finish(ExitStatus::Signalled + signalNumber);
    }
}

/// What is to be done comes before what is to be said.
void MeasurementRun::Abort(const QString& reason)
{
    const Action action = _session.Abort();
    CarryOut(action);
    if (action == Action::None) {
        _view.Say(QStringLiteral("The measurement is being ended already (%1); waiting until the instrument "
                                 "is confirmed to have stopped.")
                      .arg(reason));
    } else {
        _view.Say(
            QStringLiteral("Aborting the measurement (%1); waiting until the instrument is confirmed to "
                           "have stopped.")
                .arg(reason));
    }
}

void MeasurementRun::CarryOut(Action action)
{
    NotePhase();
    switch (action) {
    case Action::None:
        break;
    case Action::Prepare:
        _tester.PrepareMeasurement(*_function.settings);
        _tester.SetIsMeasurementModeActive(true);
        break;
    case Action::Start:
        _tester.StartMeasurement();
        break;
    case Action::Abort:
        _tester.AbortMeasurement();
        Leave();
        break;
    case Action::Leave:
        Leave();
        NoteLoss();
        break;
    case Action::Finish:
        _limit.stop();
        _view.ShowEnd(_session);
        _link.Finish(_session.ExitStatus());
        break;
    }
}

void MeasurementRun::Leave()
{
    _tester.SetIsMeasurementModeActive(false);
    _tester.RetrieveDeviceInformation();
}

/// Each phase has a time of its own, but for the measurement itself.
void MeasurementRun::NotePhase()
{
    const Phase phase = _session.CurrentPhase();
    if (phase == _notedPhase) {
        return;
    }
    _notedPhase = phase;
    switch (phase) {
    case Phase::Preparing:
    case Phase::Starting:
        _limit.start(_limits.prepare);
        break;
    case Phase::Running:
        _limit.stop();
        _view.BeginTime();
        break;
    case Phase::AwaitingIdle:
    case Phase::Stopping:
    case Phase::Leaving:
        _limit.start(_limits.stop);
        break;
    case Phase::Ended:
        break;
    }
}

} // namespace Cli
