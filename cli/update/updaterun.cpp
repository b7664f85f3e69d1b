#include "cli/update/updaterun.h"

namespace Cli
{

using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::Tester;

UpdateRun::UpdateRun(Link& link, UpdateView& view, const UpdateFiles& files, const UpdateOptions& options)
    : _link(link),
      _tester(link.Instrument()),
      _view(view),
      _files(files),
      _options(options),
      _session(files.Sectors(), options.isOffline)
{
    constexpr std::chrono::milliseconds UntilALossShows{1000};
    WatchInstrument();
    connect(&link, &Link::Interrupted, this, &UpdateRun::Interrupt);
    if (options.isOffline) {
        link.TolerateSilence();
        connect(&link, &Link::TimeOver, this, [this] { Begin(QString()); });
    }
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] {
        _session.TimeOver(_tester.OperationStatus());
        EnterPhase();
    });
    _modeCheck.setSingleShot(true);
    _modeCheck.setInterval(UntilALossShows);
    connect(&_modeCheck, &QTimer::timeout, this, [this] {
        _session.CheckMode(Picture());
        EnterPhase();
    });
}

/// While the library sends on this thread, only its signals give the program a chance to do anything else.
void UpdateRun::WatchInstrument()
{
    const Tester* tester = &_tester;
    connect(tester, &Tester::DeviceInformationChanged, this, &UpdateRun::ReceiveIdentity);
    connect(tester, &Tester::OperationStatusChanged, this, [this](OperationState status) {
        _link.EmitPendingSignals();
        _view.ShowStatus(status);
        ObserveInstrument();
    });
    connect(tester, &Tester::ErrorCodeChanged, this, [this](Vesmar::Error error) {
        if (!_link.IsFinished()) {
            _view.ShowError(error);
        }
        ObserveInstrument();
    });
    connect(tester, &Tester::OperationProgressChanged, this, [this] {
        _link.EmitPendingSignals();
        ObserveInstrument();
    });
    connect(tester, &Tester::TesterModeChanged, this, &UpdateRun::ObserveInstrument);
}

VesmarClient::UpdatePicture UpdateRun::Picture() const
{
    return {_tester.ErrorCode(), _tester.OperationStatus(), _tester.OperationProgress(),
            _tester.TesterMode()};
}

/// In a mode other than these two, the library restarts the instrument and reads its identity again.
void UpdateRun::ReceiveIdentity()
{
    if (_link.IsFinished()) {
        return;
    }
    const QString version = _tester.DeviceInformation()->Version;
    const OperationMode mode = _tester.TesterMode();
    if (_session.CurrentPhase() == Phase::Restarting) {
        _versionAfter = version;
        _session.IdentityRead(mode);
        EnterPhase();
    } else if (!_link.IsUp() && (mode == OperationMode::Normal || mode == OperationMode::Update)) {
        Begin(version);
    }
}

void UpdateRun::Begin(const QString& version)
{
    _link.ConfirmUp();
    _view.ShowVersionBefore(version);
    if (_options.isOffline) {
        // Not while the instrument's signal is being emitted.
        QMetaObject::invokeMethod(this, &UpdateRun::LeaveMachine, Qt::QueuedConnection);
        return;
    }
    _session.Begin();
    EnterPhase();
    _tester.UpdateTester(_files.image, _files.confirmation);
}

/// The end of the machine cuts an exchange short, whose late answer must not count as one of the update's.
void UpdateRun::LeaveMachine()
{
    constexpr std::chrono::milliseconds UntilTheLineIsQuiet{1000};
    _tester.Disable();
    QTimer::singleShot(UntilTheLineIsQuiet, this, &UpdateRun::UpdateOffline);
}

void UpdateRun::UpdateOffline()
{
    _session.Begin();
    EnterPhase();
    _limit.stop();
    _tester.UpdateTester(_files.image, _files.confirmation);
    ObserveInstrument();
    if (_session.CurrentPhase() != Phase::Ended) {
        _tester.Enable();
    }
}

void UpdateRun::ObserveInstrument()
{
    _session.Observe(Picture());
    EnterPhase();
    AwaitMode();
}

/// Each phase has a time limit of its own, except the sending.
void UpdateRun::EnterPhase()
{
    _view.Show(_session);
    if (_session.CurrentPhase() == _phase) {
        return;
    }
    _phase = _session.CurrentPhase();
    switch (_phase) {
    case Phase::ChangingMode:
    case Phase::Restarting:
        _limit.start(_options.confirmTimeout);
        break;
    case Phase::Initializing:
    case Phase::Sending:
        _limit.stop();
        break;
    case Phase::Ended:
        _link.EndWork(ExitStatusOf(_session));
        break;
    case Phase::Connecting:
        break;
    }
}

/// The library has left the update. Unless the link is lost, the instrument then reports the mode that it
/// stays in.
void UpdateRun::AwaitMode()
{
    if (_session.CurrentPhase() == Phase::Restarting && _tester.OperationStatus() == OperationState::Idle &&
        !_modeCheck.isActive()) {
        _modeCheck.start();
    }
}

void UpdateRun::Interrupt(int signalNumber)
{
    if (!HasBegun()) {
        _link.Finish(EndedBySignal(signalNumber));
    } else if (_session.Interrupt(_tester.OperationStatus(), signalNumber)) {
        EnterPhase();
    } else {
        _view.Say(UpdateGoesOnMessage(signalNumber));
    }
}

int UpdateRun::Conclude()
{
    _session.LinkClosed(Picture());
    _view.ShowEnd(_session, _versionAfter, _tester.ErrorCode());
    return ExitStatusOf(_session);
}

} // namespace Cli
