#include "client/measuring/sessionrunner.h"

#include <utility>

#include "client/line/serialline.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Tester;

/// Within this time the driver notices an abort, unless it looks at nothing but a running test.
constexpr std::chrono::milliseconds NoticeTime{1000};

} // namespace

SessionRunner::SessionRunner(Vesmar::MeasurementSettings& settings, const MeasurementLimits& limits,
                             Receiver receiver)
    : _settings(settings),
      _limits(limits),
      _receiver(std::move(receiver)),
      _tester(*Tester::Instance()),
      _results(_tester),
      _session(SessionFor(settings))
{
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { CarryOut(_session->TimeOver()); });
    _leadingOut.setSingleShot(true);
    connect(&_leadingOut, &QTimer::timeout, this, &SessionRunner::LeadOut);
}

void SessionRunner::Begin()
{
    WatchTester();
    Observe();
}

/// The session observes the whole picture whenever any part of it changes.
void SessionRunner::WatchTester()
{
    connect(&_tester, &Tester::DeviceInformationChanged, this, [this] {
        _leadingOut.stop();
        CarryOut(_session->IdentityRead(Picture()));
    });
    connect(&_tester, &Tester::TestResultsChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::TesterModeChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::ErrorCodeChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::MeasurementStatusChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::MeasurementFunctionStatusChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::CurrentMeasurementTypeChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::IsMeasurementRunningChanged, this, &SessionRunner::Observe);
    connect(&_tester, &Tester::MeasurementTimeChanged, this, &SessionRunner::Observe);
}

/// The function is read first: while it is another one, nothing is measured. The status is read next: the
/// driver writes it after everything that it ends.
MeasurementPicture SessionRunner::Picture()
{
    const Vesmar::MeasurementType function = _tester.CurrentMeasurementType();
    const Vesmar::MeasurementState status = _tester.MeasurementStatus();
    const auto* const results = _results.Accept(_settings.GetMeasurementType(), _session->ActiveFunction());
    _hasResult = results != nullptr ? _receiver(*results) : _hasResult;
    return {_tester.ErrorCode(),       status,     _tester.MeasurementFunctionStatus(), function,
            _tester.MeasurementTime(), _hasResult, _tester.GetIsMeasurementModeActive()};
}

void SessionRunner::Observe()
{
    CarryOut(_session->Observe(Picture()));
}

void SessionRunner::CarryOut(MeasurementSession::Action action)
{
    using Action = MeasurementSession::Action;
    switch (action) {
    case Action::None:
        break;
    case Action::Prepare:
        _tester.PrepareMeasurement(_settings);
        _tester.SetIsMeasurementModeActive(true);
        break;
    case Action::PrepareAndStart:
        _tester.StartMeasurement(_settings);
        _tester.SetIsMeasurementModeActive(true);
        break;
    case Action::Start:
        _tester.StartMeasurement();
        break;
    case Action::Abort:
        _tester.AbortMeasurement();
        Leave();
        if (IsRcd(_settings)) {
            _leadingOut.start(NoticeTime);
        }
        break;
    case Action::Leave:
        Leave();
        break;
    case Action::Finish:
        End();
        return;
    }
    EnterPhase();
}

void SessionRunner::Leave()
{
    _tester.SetIsMeasurementModeActive(false);
    _tester.RetrieveDeviceInformation();
}

/// While a test of a residual-current device goes on telling its progress, the driver looks at nothing else
/// until it is disabled. Enabled again, it reads the identity and stops what runs.
void SessionRunner::LeadOut()
{
    _tester.Disable();
    EnableDriver(_tester);
}

void SessionRunner::EnterPhase()
{
    const Phase phase = _session->CurrentPhase();
    if (phase == _phase) {
        return;
    }
    _phase = phase;
    if (const auto limit = LimitOf(phase, _limits)) {
        _limit.start(*limit);
    } else {
        _limit.stop();
    }
    Q_EMIT PhaseEntered(phase);
}

void SessionRunner::End()
{
    _tester.disconnect(this);
    _limit.stop();
    _leadingOut.stop();
    Q_EMIT Ended();
}

} // namespace VesmarClient
