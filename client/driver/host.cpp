#include "client/driver/host.h"

#include <thread>

#include <QThread>

#include "client/catalogue/conversions.h"
#include "client/driver/failures.h"
#include "client/guard/guard.h"
#include "client/line/diagnosis.h"
#include "client/values/dates.h"

namespace VesmarClient
{

using Vesmar::Tester;

namespace
{

constexpr std::chrono::milliseconds TimeBetweenReopenings{2000};
/// After so long, no answer comes any more to a request that the driver's end has cut short.
constexpr std::chrono::milliseconds QuietTime{1000};

/// Whether a run in this phase has a function at the instrument that is its own.
bool IsMeasuring(Phase phase)
{
    switch (phase) {
    case Phase::Preparing:
    case Phase::Checking:
    case Phase::AwaitingMains:
    case Phase::Starting:
    case Phase::Running:
    case Phase::Stopping:
    case Phase::CleaningUp:
    case Phase::Confirming:
        return true;
    default:
        return false;
    }
}

bool IsActive(Vesmar::MeasurementType function)
{
    return function != Vesmar::MeasurementType::None && function != Vesmar::MeasurementType::Monitoring;
}

} // namespace

Host::Host()
{
    _reopening.setParent(this); // moves to the driver's thread with the host
    _reopening.setInterval(TimeBetweenReopenings);
    connect(&_reopening, &QTimer::timeout, this, &Host::ReopenReplacedDevice);
}

Host::~Host() = default;

void Host::Open()
{
    if (_isClosing) {
        _isOpenedAgain = true;
    }
    if (_tester) {
        return;
    }
    const Failure failure = _line.Take();
    if (failure.isFailure()) {
        Q_EMIT OpenFailed(failure);
        return;
    }
    StartDriver();
    _reopening.start();
}

void Host::StartDriver()
{
    _tester.reset(Tester::Instance());
    _link = {};
    WatchTester();
    WatchLink();
    TellNothingKnown();
    TellLinkState();
    AwaitQuietLine();
    EnableDriver(*_tester);
}

void Host::StopDriver()
{
    _tester->disconnect(this);
    _tester.reset();
    _sinceStop.start();
    TellNothingKnown();
}

/// A late answer would count as one to the first request.
void Host::AwaitQuietLine() const
{
    if (_sinceStop.isValid() && !_sinceStop.hasExpired(QuietTime.count())) {
        std::this_thread::sleep_for(QuietTime - std::chrono::milliseconds(_sinceStop.elapsed()));
    }
}

/// Of what is known of the instrument, this holds only while the driver watches it.
void Host::TellNothingKnown()
{
    Q_EMIT ErrorChanged(Error::NoErrors);
    Q_EMIT FunctionStateChanged(FunctionState::Unknown);
    Q_EMIT StartTestResultChanged(StartTestResult::Unknown);
    Q_EMIT ActiveFunctionChanged(Function::None);
    TellUnattended();
}

void Host::Close()
{
    _isOpenedAgain = false;
    if (!_tester || _isClosing) {
        return;
    }
    _isClosing = true;
    Await(nullptr);
    if (_run) {
        _run->AbortInTime();
    } else {
        EndClosing();
    }
}

void Host::Quit()
{
    _isQuitting = true;
    Close();
    if (!_tester) {
        thread()->quit();
    }
}

void Host::Begin(std::unique_ptr<Run> run)
{
    if (_isGoingOn && !_isClosing) {
        Await(std::move(run));
        return;
    }
    if (_isClosing || !run->MayBegin(State())) {
        Q_EMIT run->Finished(Outcome::Failed, NotConnected(_isClosing ? LinkState::Closed : State()));
        return;
    }
    _run = std::move(run);
    Watch(*_run);
    _run->BeginUnlessAborted();
}

void Host::BeginAfterAbort(std::unique_ptr<Run> run)
{
    if (!_run || _isClosing) {
        Begin(std::move(run));
        return;
    }
    Await(std::move(run));
    _run->AbortInTime();
}

/// One that has waited until now never begins.
void Host::Await(std::unique_ptr<Run> next)
{
    if (_next) {
        Q_EMIT _next->Finished(Outcome::Aborted, {});
    }
    _next = std::move(next);
}

void Host::Watch(Run& run)
{
    _phase = Phase::Waiting;
    connect(&run, &Run::PhaseChanged, this, [this](Phase phase) {
        _phase = phase;
        TellUnattended();
    });
    connect(&run, &Run::Finished, this, &Host::EndRun);
    TellUnattended();
}

/// What comes next does not come in the middle of a signal, which may be one of the tester's.
void Host::EndRun()
{
    _run.release()->deleteLater();
    _phase = Phase::Finished;
    TellUnattended();
    _isGoingOn = true;
    QMetaObject::invokeMethod(this, &Host::GoOn, Qt::QueuedConnection);
}

void Host::GoOn()
{
    _isGoingOn = false;
    if (_isClosing) {
        EndClosing();
        return;
    }
    if (_line.IsTaken() && !_tester->IsEnabled()) { // the run has left requests behind that must not be met
        StopDriver();
        StartDriver();
    }
    if (_next) {
        Begin(std::move(_next));
    }
}

void Host::EndClosing()
{
    _reopening.stop();
    StopDriver();
    Guard::OfThisProcess().Release();
    _line.GiveBack();
    _isClosing = false;
    TellLinkState();
    if (_isQuitting) {
        thread()->quit();
    } else if (_isOpenedAgain) {
        _isOpenedAgain = false;
        Open();
    }
}

/// The driver opens the device only when it is enabled. A run that waits for a stop and its proof gets them
/// only over the new device; no other run is disturbed.
void Host::ReopenReplacedDevice()
{
    const bool isDisturbed = _run && _phase != Phase::Confirming && _phase != Phase::AwaitingIdle;
    if (isDisturbed || !IsLinkError(_tester->ErrorCode()) || !_line.IsReplaced()) {
        return;
    }
    _tester->Disable();
    _line.GiveBack();
    if (!_line.Take().isFailure()) {
        EnableDriver(*_tester);
    }
}

LinkState Host::State() const
{
    return _tester ? _link.State() : LinkState::Closed;
}

void Host::WatchTester()
{
    const Tester* tester = _tester.get();
    connect(tester, &Tester::CurrentDateTimeChanged, this, &Host::TellClock);
    connect(tester, &Tester::CalibrationDateTimeChanged, this, &Host::TellCalibrationDate);
    connect(tester, &Tester::TestResultsChanged, this, [this](Vesmar::MeasurementResults* results) {
        if (results->GetMeasurementType() == Vesmar::MeasurementType::Monitoring) {
            Q_EMIT MainsChanged(ResultOf(*results, QDateTime::currentDateTime()));
        }
    });
    connect(tester, &Tester::StartTestStatusChanged, this, [this](Vesmar::StartTestResult result) {
        Q_EMIT StartTestResultChanged(static_cast<StartTestResult>(result));
    });
    connect(tester, &Tester::MeasurementFunctionStatusChanged, this, &Host::TellFunctionState);
    connect(tester, &Tester::CurrentMeasurementTypeChanged, this, [this](Vesmar::MeasurementType function) {
        TellFunctionState();
        Q_EMIT ActiveFunctionChanged(FunctionOf(function));
        TellUnattended();
    });
}

void Host::WatchLink()
{
    const Tester* tester = _tester.get();
    connect(tester, &Tester::DeviceInformationChanged, this, &Host::ReceiveIdentity);
    connect(tester, &Tester::TesterModeChanged, this, [this](Vesmar::OperationMode mode) {
        Q_EMIT ModeChanged(ModeOf(mode));
        const bool hasLeftUpdateMode =
            State() == LinkState::UpdateMode && mode == Vesmar::OperationMode::Normal;
        if (hasLeftUpdateMode && !_run) {
            _tester->RestartTester(); // nothing else leads the driver out of waiting for firmware
        }
        _link.ModeChanged(mode);
        TellLinkState();
    });
    connect(tester, &Tester::ErrorCodeChanged, this, [this](Vesmar::Error error) {
        Q_EMIT ErrorChanged(ErrorOf(error));
        _link.ErrorChanged(error);
        TellLinkState();
    });
}

void Host::ReceiveIdentity()
{
    Q_EMIT IdentityChanged(IdentityOf(*_tester->DeviceInformation()));
    if (_link.IdentityRead(_tester->TesterMode()) == LinkSession::Action::AskForIdentity) {
        _tester->RetrieveDeviceInformation();
    }
    TellLinkState();
}

void Host::TellLinkState()
{
    if (State() == _told) {
        return;
    }
    _told = State();
    if (_told == LinkState::Up) {
        TellClock();
        TellCalibrationDate();
    }
    Q_EMIT LinkStateChanged(_told);
}

void Host::TellClock()
{
    if (AreDatesRead()) {
        Q_EMIT ClockChanged(AsWallClock(_tester->CurrentDateTime()));
    }
}

void Host::TellCalibrationDate()
{
    if (AreDatesRead()) {
        Q_EMIT CalibrationDateChanged(AsWallClock(_tester->CalibrationDateTime()));
    }
}

/// While a date is being set, the driver shows what it is set to.
bool Host::AreDatesRead() const
{
    return State() == LinkState::Up && _phase != Phase::Writing;
}

/// The driver keeps the state of the function that was active last.
void Host::TellFunctionState()
{
    const bool isActive = IsActive(_tester->CurrentMeasurementType());
    Q_EMIT FunctionStateChanged(isActive ? static_cast<FunctionState>(_tester->MeasurementFunctionStatus())
                                         : FunctionState::Unknown);
}

void Host::TellUnattended()
{
    const bool isUnattended =
        _tester && IsActive(_tester->CurrentMeasurementType()) && !(_run && IsMeasuring(_phase));
    if (isUnattended != _isUnattended) {
        _isUnattended = isUnattended;
        Q_EMIT UnattendedChanged(isUnattended);
    }
}

} // namespace VesmarClient
