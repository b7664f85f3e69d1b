#include "client/driver/updaterun.h"

#include "client/driver/updatefailure.h"
#include "client/line/diagnosis.h"
#include "client/line/serialline.h"

namespace VesmarClient
{

using Vesmar::OperationState;
using Vesmar::Tester;

namespace
{

constexpr std::chrono::milliseconds UntilTheLineIsQuiet{1000};
constexpr std::chrono::milliseconds UntilALossShows{1000};

std::unique_ptr<QTimer> SingleShot(std::chrono::milliseconds time)
{
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    timer->setInterval(time);
    return timer;
}

Phase PhaseOf(UpdateSession::Phase phase)
{
    switch (phase) {
    case UpdateSession::Phase::Connecting:
        return Phase::Waiting;
    case UpdateSession::Phase::ChangingMode:
        return Phase::ChangingMode;
    case UpdateSession::Phase::Initializing:
        return Phase::Initializing;
    case UpdateSession::Phase::Sending:
        return Phase::Sending;
    case UpdateSession::Phase::Restarting:
        return Phase::Restarting;
    case UpdateSession::Phase::Ended:
        break;
    }
    return Phase::Finished;
}

Outcome OutcomeOf(UpdateSession::Outcome outcome)
{
    switch (outcome) {
    case UpdateSession::Outcome::Updated:
        return Outcome::Completed;
    case UpdateSession::Outcome::Interrupted:
        return Outcome::Aborted;
    case UpdateSession::Outcome::LinkLost:
    case UpdateSession::Outcome::NotBack:
        return Outcome::LinkLost;
    default:
        return Outcome::Failed;
    }
}

} // namespace

UpdateRun::UpdateRun(QByteArray image, QByteArray confirmation, std::chrono::milliseconds limit, Way way)
    : _image(std::move(image)),
      _confirmation(std::move(confirmation)),
      _timeLimit(limit),
      _way(way),
      _session(_image.size() / SectorSize, way == Way::Blind)
{
}

bool UpdateRun::MayBegin(LinkState state) const
{
    return state == LinkState::Up || state == LinkState::UpdateMode ||
           (_way == Way::Blind && state != LinkState::Closed);
}

void UpdateRun::Begin()
{
    _limit = SingleShot(_timeLimit);
    connect(_limit.get(), &QTimer::timeout, this, [this] {
        _session.TimeOver(Instrument().OperationStatus());
        EnterPhase();
    });
    _modeCheck = SingleShot(UntilALossShows);
    connect(_modeCheck.get(), &QTimer::timeout, this, [this] {
        _session.CheckMode(Picture());
        EnterPhase();
    });
    WatchInstrument();
    if (_way == Way::Blind) {
        LeaveMachine();
        return;
    }
    _session.Begin();
    EnterPhase();
    Instrument().UpdateTester(_image, _confirmation);
}

/// The end of the machine cuts an exchange short, whose late answer must not count as one of the update's.
void UpdateRun::LeaveMachine()
{
    Instrument().Disable();
    QTimer::singleShot(UntilTheLineIsQuiet, this, &UpdateRun::SendBlindly);
}

/// The driver sends on this thread, and returns when it is done.
void UpdateRun::SendBlindly()
{
    _session.Begin();
    EnterPhase();
    _limit->stop();
    Instrument().UpdateTester(_image, _confirmation);
    ObserveInstrument();
    if (_session.CurrentPhase() != SessionPhase::Ended) {
        EnableDriver(Instrument());
    }
}

void UpdateRun::WatchInstrument()
{
    const Tester* tester = &Instrument();
    connect(tester, &Tester::DeviceInformationChanged, this, &UpdateRun::ReceiveIdentity);
    connect(tester, &Tester::OperationStatusChanged, this, &UpdateRun::ObserveInstrument);
    connect(tester, &Tester::ErrorCodeChanged, this, &UpdateRun::ObserveInstrument);
    connect(tester, &Tester::OperationProgressChanged, this, &UpdateRun::ObserveInstrument);
    connect(tester, &Tester::TesterModeChanged, this, &UpdateRun::ObserveInstrument);
}

UpdatePicture UpdateRun::Picture() const
{
    const Tester& tester = Instrument();
    return {tester.ErrorCode(), tester.OperationStatus(), tester.OperationProgress(), tester.TesterMode()};
}

void UpdateRun::ReceiveIdentity()
{
    if (_session.CurrentPhase() == SessionPhase::Restarting) {
        Q_EMIT VersionAfter(Instrument().DeviceInformation()->Version);
        _session.IdentityRead(Instrument().TesterMode());
        EnterPhase();
    }
}

void UpdateRun::ObserveInstrument()
{
    _session.Observe(Picture());
    if (_session.ConfirmedSectors() != _sectors) {
        _sectors = _session.ConfirmedSectors();
        Q_EMIT Progressed(_sectors);
    }
    EnterPhase();
    AwaitMode();
}

/// Each phase has a time limit of its own, except the sending.
void UpdateRun::EnterPhase()
{
    if (_session.CurrentPhase() == _phase) {
        return;
    }
    _phase = _session.CurrentPhase();
    if (_phase == SessionPhase::Ended) {
        End();
        return;
    }
    Q_EMIT PhaseChanged(PhaseOf(_phase));
    if (_phase == SessionPhase::ChangingMode || _phase == SessionPhase::Restarting) {
        _limit->start();
    } else {
        _limit->stop();
    }
}

/// The driver has left the update. Unless the link is lost, the instrument then reports the mode that it
/// stays in.
void UpdateRun::AwaitMode()
{
    if (_session.CurrentPhase() == SessionPhase::Restarting &&
        Instrument().OperationStatus() == OperationState::Idle && !_modeCheck->isActive()) {
        _modeCheck->start();
    }
}

void UpdateRun::Abort()
{
    if (_session.Interrupt(Instrument().OperationStatus())) {
        EnterPhase();
    }
}

/// The driver keeps the request of an update that has not begun, and would carry it out once it can: it is
/// disabled, and the host begins with a new one. Not in the middle of a signal of its own.
void UpdateRun::End()
{
    _limit->stop();
    _modeCheck->stop();
    Instrument().disconnect(this);
    if (_session.EndedIn() == SessionPhase::ChangingMode) {
        QMetaObject::invokeMethod(this, &UpdateRun::WithdrawRequest, Qt::QueuedConnection);
    } else if (_session.CurrentOutcome() == UpdateSession::Outcome::Updated) {
        AwaitReadiness();
    } else if (_session.CurrentOutcome() == UpdateSession::Outcome::Failed) {
        AwaitLink();
    } else {
        Conclude();
    }
}

/// After a failure, the driver brings back the link. Once it has, the firmware can be sent again.
void UpdateRun::AwaitLink()
{
    _limit = SingleShot(_timeLimit);
    connect(_limit.get(), &QTimer::timeout, this, &UpdateRun::Conclude);
    _limit->start();
    _linkCheck = std::make_unique<QTimer>();
    connect(_linkCheck.get(), &QTimer::timeout, this, [this] {
        if (!IsLinkError(Instrument().ErrorCode())) {
            Conclude();
        }
    });
    _linkCheck->start(UntilALossShows);
}

/// The instrument is back. Once its clocks have been read, too, it can be asked for the next job.
void UpdateRun::AwaitReadiness()
{
    _limit = SingleShot(_timeLimit);
    connect(_limit.get(), &QTimer::timeout, this, &UpdateRun::Conclude);
    _limit->start();
    _readiness = std::make_unique<Readiness>(Instrument());
    connect(_readiness.get(), &Readiness::Ready, this, &UpdateRun::Conclude);
    connect(_readiness.get(), &Readiness::FoundInUpdateMode, this, &UpdateRun::Conclude);
    Instrument().RetrieveDeviceInformation();
}

void UpdateRun::WithdrawRequest()
{
    Instrument().Disable();
    _session.LinkClosed(Picture());
    Conclude();
}

void UpdateRun::Conclude()
{
    _limit->stop();
    if (_linkCheck) {
        _linkCheck->stop();
    }
    if (_readiness) {
        _readiness->Stop();
    }
    Q_EMIT Finished(OutcomeOf(_session.CurrentOutcome()), ReasonOf(_session, Instrument().ErrorCode()));
}

} // namespace VesmarClient
