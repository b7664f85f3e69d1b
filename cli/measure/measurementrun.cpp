#include "cli/measure/measurementrun.h"

#include <Vesmar/rcdresults.h>

#include <VesmarClient/functions.h>

#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "client/guard/guard.h"
#include "client/sessions/rcdsession.h"
#include "client/words/readings.h"

namespace Cli
{

namespace
{

using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::RCDResults;
using Vesmar::RCDSettings;
using Vesmar::Tester;
using VesmarClient::Guard;
using VesmarClient::MeasurementPicture;
using VesmarClient::MeasurementSession;
using VesmarClient::RcdMode;
using VesmarClient::RcdModeOf;
using VesmarClient::RcdSession;

/// Enough for the library to check the object under test several times.
constexpr std::chrono::milliseconds ObjectCheckTime{2000};

/// The settings of the measurement with the mode of a Ub/Re test.
std::unique_ptr<RCDSettings> ReSettings(const MeasureFunction& function)
{
    if (!function.isReMeasured) {
        return nullptr;
    }
    auto settings = std::make_unique<RCDSettings>(static_cast<RCDSettings&>(*function.settings));
    settings->SetMode(RCDSettings::RCDMode::UbRe);
    return settings;
}

std::unique_ptr<MeasurementSession> SessionFor(const MeasureFunction& function,
                                               const MeasurementSettings& settings)
{
    if (const RcdMode* mode = RcdModeOf(settings)) {
        return std::make_unique<RcdSession>(mode->test);
    }
    return std::make_unique<MeasurementSession>(settings.GetMeasurementType(), function.continuous == nullptr,
                                                function.Seconds());
}

} // namespace

MeasurementRun::MeasurementRun(Link& link, MeasurementView& view, const MeasureFunction& function,
                               const MeasureLimits& limits)
    : _link(link),
      _tester(link.Instrument()),
      _view(view),
      _function(function),
      _limits(limits),
      _reSettings(ReSettings(function))
{
    BeginTest(_reSettings ? *_reSettings : *function.settings);
    link.AwaitReadiness();
    WatchInstrument();
    connect(&link, &Link::Ready, this, &MeasurementRun::Begin);
    connect(&link, &Link::Interrupted, this, &MeasurementRun::Interrupt);
    connect(&view, &MeasurementView::OutputLost, this,
            [this] { Abort(QStringLiteral("nobody reads the output")); });
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { CarryOut(_session->TimeOver()); });
}

/// The session observes the whole picture whenever any part of it changes.
void MeasurementRun::WatchInstrument()
{
    const Tester* tester = &_tester;
    connect(tester, &Tester::DeviceInformationChanged, this, &MeasurementRun::ReceiveIdentity);
    connect(tester, &Tester::TestResultsChanged, this, &MeasurementRun::ObserveInstrument);
    connect(tester, &Tester::TesterModeChanged, this, &MeasurementRun::ObserveInstrument);
    connect(tester, &Tester::ErrorCodeChanged, this, [this](Vesmar::Error error) {
        if (!_link.IsFinished()) {
            _view.ShowError(error);
        }
        ObserveInstrument();
    });
    connect(tester, &Tester::MeasurementStatusChanged, this, [this](Vesmar::MeasurementState status) {
        if (!_link.IsFinished()) {
            _view.ShowStatus(status);
        }
        ObserveInstrument();
    });
    connect(tester, &Tester::MeasurementFunctionStatusChanged, this, &MeasurementRun::ObserveInstrument);
    connect(tester, &Tester::CurrentMeasurementTypeChanged, this, &MeasurementRun::ObserveInstrument);
    connect(tester, &Tester::IsMeasurementRunningChanged, this, &MeasurementRun::ObserveInstrument);
    connect(tester, &Tester::MeasurementTimeChanged, this, &MeasurementRun::ObserveInstrument);
}

/// The function is read first: while it is another one, nothing is measured. The status is read next: the
/// library writes it after everything that it ends.
MeasurementPicture MeasurementRun::Picture()
{
    const Vesmar::MeasurementType function = _tester.CurrentMeasurementType();
    const Vesmar::MeasurementState status = _tester.MeasurementStatus();
    AcceptResults();
    return {_tester.ErrorCode(),       status,     _tester.MeasurementFunctionStatus(), function,
            _tester.MeasurementTime(), _hasResult, _tester.GetIsMeasurementModeActive()};
}

void MeasurementRun::Begin()
{
    const auto function = static_cast<VesmarClient::Function>(_settings->GetMeasurementType());
    if (VesmarClient::Functions::find(function).isDangerous) {
        const VesmarClient::Failure failure = Guard::OfThisProcess().Watch();
        if (failure.isFailure()) {
            _link.Fail(ExitStatus::NotDone, FailureOf(failure));
            return;
        }
    }
    _limit.start(_limits.stop);
    ObserveInstrument();
}

void MeasurementRun::BeginTest(MeasurementSettings& settings)
{
    const RcdMode* mode = RcdModeOf(settings);
    _view.BeginTest(mode != nullptr ? QString::fromLatin1(mode->name) : QString());
    _settings = &settings;
    _session = SessionFor(_function, settings);
    _phase = Phase::AwaitingIdle;
    _hasResult = false;
}

void MeasurementRun::EndTest()
{
    if (_settings == _reSettings.get() && IsDone(*_session)) {
        BeginTest(*_function.settings);
        Begin();
        return;
    }
    _limit.stop();
    Guard::OfThisProcess().Release();
    _link.EndWork(_view.ShowEnd(*_session, _tester.ErrorCode()));
}

void MeasurementRun::ObserveInstrument()
{
    if (_link.IsUp()) {
        CarryOut(_session->Observe(Picture()));
    }
}

/// Reports the loss of the link once, however often the link is lost.
void MeasurementRun::ReportLoss()
{
    if (_session->CurrentOutcome() == MeasurementSession::Outcome::LinkLost && !_isLossReported) {
        _isLossReported = true;
        _view.Say(
            QStringLiteral("Link lost, the state of the instrument is unknown; trying to get it back and "
                           "to stop the measurement."));
    }
}

void MeasurementRun::ReceiveIdentity()
{
    if (_link.IsUp()) {
        CarryOut(_session->IdentityRead(Picture()));
    }
}

void MeasurementRun::AcceptResults()
{
    MeasurementResults* results = _tester.TestResults();
    if (results == _accepted || results->GetMeasurementType() != _settings->GetMeasurementType()) {
        return;
    }
    _accepted = results;
    if (!IsMeasured(results->GetMeasurementType())) {
        return;
    }
    _hasResult = _settings != _reSettings.get() || AdoptRe(*results);
    _view.ShowResults(*results);
}

/// Results that are read while another function is active only look like results of this one. The tests of
/// residual-current devices send theirs by themselves, and the status may not show them any more.
bool MeasurementRun::IsMeasured(Vesmar::MeasurementType results) const
{
    const bool isRcd = results == Vesmar::MeasurementType::RCD || results == Vesmar::MeasurementType::RCDIEC;
    return isRcd || _tester.CurrentMeasurementType() == _session->ActiveFunction();
}

/// Puts the measured Re into the settings of the measurement. False if there is no Re.
bool MeasurementRun::AdoptRe(const MeasurementResults& results)
{
    const float resistance = static_cast<const RCDResults&>(results)._re;
    static_cast<RCDSettings&>(*_function.settings).SetRe(resistance);
    return VesmarClient::IsPresent(resistance);
}

void MeasurementRun::Interrupt(int signalNumber)
{
    if (_link.IsUp()) {
        Abort(QStringLiteral("signal %1").arg(signalNumber));
    } else {
        _link.Finish(EndedBySignal(signalNumber));
    }
}

/// The abort comes first, and the message about it after that.
void MeasurementRun::Abort(const QString& reason)
{
    const Action action = _session->Abort();
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
    EnterPhase();
    switch (action) {
    case Action::None:
        break;
    case Action::Prepare:
        _tester.PrepareMeasurement(*_settings);
        _tester.SetIsMeasurementModeActive(true);
        break;
    case Action::PrepareAndStart:
        _tester.StartMeasurement(*_settings);
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
        ReportLoss();
        break;
    case Action::Finish:
        EndTest();
        break;
    }
}

void MeasurementRun::Leave()
{
    _tester.SetIsMeasurementModeActive(false);
    _tester.RetrieveDeviceInformation();
}

/// Each phase has a time limit of its own, except the measurement itself.
void MeasurementRun::EnterPhase()
{
    const Phase phase = _session->CurrentPhase();
    if (phase == _phase) {
        return;
    }
    _phase = phase;
    _view.ShowPhase(phase);
    switch (phase) {
    case Phase::Preparing:
    case Phase::Starting:
        _limit.start(_limits.prepare);
        break;
    case Phase::Checking:
        _limit.start(ObjectCheckTime);
        break;
    case Phase::AwaitingMains:
        _limit.stop();
        _view.Say(Show(Vesmar::Error::RCDCheckObjectULNIECInvalid).text +
                  QStringLiteral("; waiting until it does. Ctrl-C aborts the measurement."));
        break;
    case Phase::CleaningUp:
        _limit.start(_limits.cleanUp);
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
