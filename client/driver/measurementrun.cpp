#include "client/driver/measurementrun.h"

#include <Vesmar/rcdresults.h>

#include "client/catalogue/conversions.h"
#include "client/driver/measurementend.h"
#include "client/guard/guard.h"
#include "client/words/readings.h"

namespace VesmarClient
{

namespace
{

using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::RCDSettings;
using Vesmar::Tester;

/// Within this time the driver notices an abort, unless it looks at nothing but a running test.
constexpr std::chrono::milliseconds NoticeTime{1000};

bool IsDone(const MeasurementSession& session)
{
    return session.CurrentOutcome() == MeasurementSession::Outcome::Completed && session.IsStopConfirmed();
}

} // namespace

MeasurementRun::MeasurementRun(MeasurementOrder order)
    : _order(std::move(order)),
      _reSettings(ReSettingsOf(_order)),
      _limit(this),
      _leadingOut(this),
      _gaps(_order.time, this),
      _keepAlive(this)
{
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { CarryOut(_session->TimeOver()); });
    _leadingOut.setSingleShot(true);
    connect(&_leadingOut, &QTimer::timeout, this, &MeasurementRun::LeadOut);
    connect(&_gaps, &GapMonitor::Changed, this, &MeasurementRun::GapsChanged);
    _keepAlive.setSingleShot(true);
    _keepAlive.setTimerType(Qt::PreciseTimer);
    connect(&_keepAlive, &QTimer::timeout, this, &MeasurementRun::MissKeepAlive);
}

MeasurementRun::~MeasurementRun() = default;

void MeasurementRun::Begin()
{
    if (_order.isGuarded) {
        const Failure failure = Guard::OfThisProcess().Watch();
        if (failure.isFailure()) {
            Q_EMIT Finished(Outcome::Failed, failure);
            return;
        }
    }
    _tester = Tester::Instance();
    _results.emplace(*_tester);
    WatchTester();
    SetKeepAliveInterval(_keepAlive.interval());
    BeginTest(_reSettings ? *_reSettings : *_order.settings);
}

/// The session observes the whole picture whenever any part of it changes.
void MeasurementRun::WatchTester()
{
    connect(_tester, &Tester::DeviceInformationChanged, this, [this] {
        _leadingOut.stop();
        CarryOut(_session->IdentityRead(Picture()));
    });
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
    if (_settings == _reSettings.get() && IsDone(*_session) && !_isAborted) {
        BeginTest(*_order.settings);
    } else {
        Finish();
    }
}

void MeasurementRun::Finish()
{
    _tester->disconnect(this);
    for (QTimer* timer : {&_limit, &_leadingOut, &_keepAlive}) {
        timer->stop();
    }
    _gaps.End();
    Outcome outcome = OutcomeOf(*_session, !_gaps.Gaps().isEmpty());
    if (outcome == Outcome::Completed && _settings != _order.settings.get()) {
        outcome = _isAborted ? Outcome::Aborted : Outcome::Failed; // the test that was to follow has not run
    }
    Failure failure = FailureOf(*_session, _tester->ErrorCode());
    if (_isKeepAliveMissed && outcome == Outcome::Aborted && !failure.isFailure()) {
        failure = KeepAliveMissed();
    }
    if (_session->FailureReason() == MeasurementSession::Reason::FunctionLost) {
        Q_EMIT ResultsWithdrawn();
    }
    if (_session->IsStopConfirmed()) {
        Guard::OfThisProcess().Release();
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
    _gaps.AcceptReading();
    Q_EMIT ResultRead(ResultOf(*results, QDateTime::currentDateTime()), _order.time.elapsed());
}

/// Puts the measured Re into the settings of the measurement. False if there is no Re.
bool MeasurementRun::AdoptRe(const MeasurementResults& results) const
{
    const float resistance = static_cast<const Vesmar::RCDResults&>(results)._re;
    static_cast<RCDSettings&>(*_order.settings).SetRe(resistance);
    return IsPresent(resistance);
}

/// A test that is ending already is the last one then.
void MeasurementRun::Abort()
{
    _isAborted = true;
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

void MeasurementRun::MissKeepAlive()
{
    _isKeepAliveMissed = true;
    Abort();
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
        if (IsRcd(*_settings)) {
            _leadingOut.start(NoticeTime);
        }
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

/// While a test of a residual-current device goes on telling its progress, the driver looks at nothing else
/// until it is disabled. Enabled again, it reads the identity and stops what runs.
void MeasurementRun::LeadOut()
{
    _tester->Disable();
    _tester->Enable();
}

void MeasurementRun::EnterPhase()
{
    const SessionPhase phase = _session->CurrentPhase();
    if (phase == _phase) {
        return;
    }
    if (phase == SessionPhase::Running) {
        BeginTime();
    } else if (_session->CurrentOutcome() == MeasurementSession::Outcome::LinkLost) {
        _gaps.LoseLink();
    } else {
        _gaps.End();
    }
    _phase = phase;
    if (const auto limit = LimitOf(phase, _order.limits)) {
        _limit.start(*limit);
    } else {
        _limit.stop();
    }
    Q_EMIT PhaseChanged(PhaseOf(phase));
}

void MeasurementRun::BeginTime()
{
    if (!IsContinuous(*_settings)) {
        return;
    }
    _gaps.Begin();
    if (const auto time = TimeOf(*_settings)) {
        Q_EMIT TimeBegan(_order.time.elapsed() + time->count());
    }
}

} // namespace VesmarClient
