#include "client/driver/measurementrun.h"

#include <cmath>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/rcdresults.h>

#include "client/driver/measurementend.h"
#include "client/sessions/rcdsession.h"
#include "client/values/conversions.h"
#include "client/words/readings.h"

namespace VesmarClient
{

namespace
{

using std::chrono::milliseconds;
using Vesmar::ContinuousMeasurementSettings;
using Vesmar::HVTestSettings;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::RCDSettings;
using Vesmar::Tester;

/// The settings with the mode of a Ub/Re test.
std::unique_ptr<RCDSettings> ReSettings(const MeasurementOrder& order)
{
    if (!order.isReMeasured) {
        return nullptr;
    }
    auto settings = std::make_unique<RCDSettings>(static_cast<RCDSettings&>(*order.settings));
    settings->SetMode(RCDSettings::RCDMode::UbRe);
    return settings;
}

/// How long the function measures; nothing where that is not known.
std::optional<int> SecondsOf(const MeasurementSettings& settings)
{
    const auto* const continuous = dynamic_cast<const ContinuousMeasurementSettings*>(&settings);
    return continuous != nullptr && continuous->GetTime() >= 0 ? std::make_optional(continuous->GetTime())
                                                               : std::nullopt;
}

/// How much longer the first second lasts.
milliseconds OffsetOf(const MeasurementSettings& settings)
{
    const auto* const hvTest = dynamic_cast<const HVTestSettings*>(&settings);
    return milliseconds(hvTest != nullptr ? std::llround(hvTest->GetMeasurementTimeOffset() * 1000) : 0);
}

bool IsContinuous(const MeasurementSettings& settings)
{
    return dynamic_cast<const ContinuousMeasurementSettings*>(&settings) != nullptr;
}

std::unique_ptr<MeasurementSession> SessionFor(const MeasurementSettings& settings)
{
    if (const RcdMode* mode = RcdModeOf(settings)) {
        return std::make_unique<RcdSession>(mode->test);
    }
    return std::make_unique<MeasurementSession>(settings.GetMeasurementType(), !IsContinuous(settings),
                                                SecondsOf(settings));
}

bool IsDone(const MeasurementSession& session)
{
    return session.CurrentOutcome() == MeasurementSession::Outcome::Completed && session.IsStopConfirmed();
}

} // namespace

MeasurementRun::MeasurementRun(MeasurementOrder order)
    : _order(std::move(order)),
      _reSettings(ReSettings(_order)),
      _limit(this),
      _silence(this),
      _keepAlive(this)
{
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { CarryOut(_session->TimeOver()); });
    _silence.setInterval(GapWatch::Limit);
    _silence.setTimerType(Qt::PreciseTimer);
    connect(&_silence, &QTimer::timeout, this, [this] { TellGaps(_gaps.Advance(_order.time.elapsed())); });
    _keepAlive.setSingleShot(true);
    _keepAlive.setTimerType(Qt::PreciseTimer);
    connect(&_keepAlive, &QTimer::timeout, this, &MeasurementRun::MissKeepAlive);
}

MeasurementRun::~MeasurementRun() = default;

void MeasurementRun::Begin()
{
    _tester = Tester::Instance();
    _results.emplace(*_tester);
    WatchTester();
    SetKeepAliveInterval(_keepAlive.interval());
    BeginTest(_reSettings ? *_reSettings : *_order.settings);
}

/// The session observes the whole picture whenever any part of it changes.
void MeasurementRun::WatchTester()
{
    connect(_tester, &Tester::DeviceInformationChanged, this,
            [this] { CarryOut(_session->IdentityRead(Picture())); });
    connect(_tester, &Tester::TestResultsChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::TesterModeChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::ErrorCodeChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::MeasurementStatusChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::MeasurementFunctionStatusChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::CurrentMeasurementTypeChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::IsMeasurementRunningChanged, this, &MeasurementRun::Observe);
    connect(_tester, &Tester::MeasurementTimeChanged, this, &MeasurementRun::Observe);
}

/// The function is read first: while it is another one, nothing is measured. The status is read next: the
/// driver writes it after everything that it ends.
MeasurementPicture MeasurementRun::Picture()
{
    const Vesmar::MeasurementType function = _tester->CurrentMeasurementType();
    const Vesmar::MeasurementState status = _tester->MeasurementStatus();
    AcceptResults();
    return {_tester->ErrorCode(),       status,     _tester->MeasurementFunctionStatus(), function,
            _tester->MeasurementTime(), _hasResult, _tester->GetIsMeasurementModeActive()};
}

void MeasurementRun::BeginTest(MeasurementSettings& settings)
{
    _settings = &settings;
    _session = SessionFor(settings);
    _hasResult = false;
    Observe();
}

void MeasurementRun::EndTest()
{
    if (_settings == _reSettings.get() && IsDone(*_session)) {
        BeginTest(*_order.settings);
    } else {
        Finish();
    }
}

void MeasurementRun::Finish()
{
    _tester->disconnect(this);
    for (QTimer* timer : {&_limit, &_silence, &_keepAlive}) {
        timer->stop();
    }
    TellGaps(_gaps.End(_order.time.elapsed()));
    Outcome outcome = OutcomeOf(*_session, !_gaps.Gaps().isEmpty());
    if (outcome == Outcome::Completed && _settings != _order.settings.get()) {
        outcome = Outcome::Failed; // the test that was to follow has not been run
    }
    Failure failure = FailureOf(*_session, _tester->ErrorCode());
    if (_isKeepAliveMissed && !failure.isFailure()) {
        failure = KeepAliveMissed();
    }
    if (_session->FailureReason() == MeasurementSession::Reason::FunctionLost) {
        Q_EMIT ResultsWithdrawn();
    }
    if (_session->IsStopConfirmed()) {
        Q_EMIT StopConfirmed();
    }
    Q_EMIT Finished(outcome, failure);
}

void MeasurementRun::Observe()
{
    CarryOut(_session->Observe(Picture()));
}

void MeasurementRun::AcceptResults()
{
    const MeasurementResults* const results =
        _results->Accept(_settings->GetMeasurementType(), _session->ActiveFunction());
    if (results == nullptr) {
        return;
    }
    _hasResult = _settings != _reSettings.get() || AdoptRe(*results);
    const qint64 now = _order.time.elapsed();
    TellGaps(_gaps.AcceptReading(now));
    if (_silence.isActive()) {
        _silence.start();
    }
    Q_EMIT ResultRead(ResultOf(*results, QDateTime::currentDateTime()), now);
}

/// Puts the measured Re into the settings of the measurement. False if there is no Re.
bool MeasurementRun::AdoptRe(const MeasurementResults& results)
{
    const float resistance = static_cast<const Vesmar::RCDResults&>(results)._re;
    static_cast<RCDSettings&>(*_order.settings).SetRe(resistance);
    return IsPresent(resistance);
}

void MeasurementRun::Abort()
{
    CarryOut(_session->Abort());
}

void MeasurementRun::SetKeepAliveInterval(int milliseconds)
{
    _keepAlive.setInterval(milliseconds);
    if (milliseconds > 0 && _tester != nullptr) {
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

/// A measurement that is ending already has not been aborted for this.
void MeasurementRun::MissKeepAlive()
{
    const Action action = _session->Abort();
    _isKeepAliveMissed = action != Action::None;
    CarryOut(action);
}

void MeasurementRun::CarryOut(Action action)
{
    switch (action) {
    case Action::None:
        break;
    case Action::Prepare:
        _tester->PrepareMeasurement(*_settings);
        _tester->SetIsMeasurementModeActive(true);
        break;
    case Action::PrepareAndStart:
        _tester->StartMeasurement(*_settings);
        _tester->SetIsMeasurementModeActive(true);
        break;
    case Action::Start:
        _tester->StartMeasurement();
        break;
    case Action::Abort:
        _tester->AbortMeasurement();
        Leave();
        break;
    case Action::Leave:
        Leave();
        break;
    case Action::Finish:
        EndTest();
        return;
    }
    EnterPhase();
}

void MeasurementRun::Leave()
{
    _tester->SetIsMeasurementModeActive(false);
    _tester->RetrieveDeviceInformation();
}

void MeasurementRun::EnterPhase()
{
    const SessionPhase phase = _session->CurrentPhase();
    if (phase == _phase) {
        return;
    }
    WatchGaps(phase);
    _phase = phase;
    Limit(phase);
    Q_EMIT PhaseChanged(PhaseOf(phase));
}

/// Each phase has a time limit of its own, except the measurement itself and the wait for the mains.
void MeasurementRun::Limit(SessionPhase phase)
{
    switch (phase) {
    case SessionPhase::Preparing:
    case SessionPhase::Starting:
        _limit.start(_order.limits.prepare);
        break;
    case SessionPhase::Checking:
        _limit.start(_order.limits.check);
        break;
    case SessionPhase::CleaningUp:
        _limit.start(_order.limits.cleanUp);
        break;
    case SessionPhase::AwaitingIdle:
    case SessionPhase::Stopping:
    case SessionPhase::Leaving:
        _limit.start(_order.limits.stop);
        break;
    case SessionPhase::AwaitingMains:
    case SessionPhase::Running:
    case SessionPhase::Ended:
        _limit.stop();
        break;
    }
}

/// A link that is lost leaves a gap that lasts to the end.
void MeasurementRun::WatchGaps(SessionPhase phase)
{
    const qint64 now = _order.time.elapsed();
    if (phase == SessionPhase::Running && IsContinuous(*_settings)) {
        _gaps.Begin(now);
        _silence.start();
        TellTime();
    } else if (_session->CurrentOutcome() == MeasurementSession::Outcome::LinkLost) {
        TellGaps(_gaps.LoseLink(now));
    } else {
        _silence.stop();
        TellGaps(_gaps.End(now));
    }
}

void MeasurementRun::TellGaps(bool haveChanged)
{
    if (haveChanged) {
        Q_EMIT GapsChanged(_gaps.Gaps());
    }
}

void MeasurementRun::TellTime()
{
    if (const std::optional<int> seconds = SecondsOf(*_settings)) {
        const milliseconds total = std::chrono::seconds(*seconds) + OffsetOf(*_settings);
        Q_EMIT TimeBegan(_order.time.elapsed() + total.count());
    }
}

} // namespace VesmarClient
