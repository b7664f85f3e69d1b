#include "client/driver/stoprun.h"

#include "client/driver/failures.h"
#include "client/guard/guard.h"
#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

using Vesmar::MeasurementType;
using Vesmar::Tester;

/// How long the instrument may take to stop, the way back of a link included.
constexpr std::chrono::milliseconds StopTime{20000};
/// The driver monitors meanwhile, more than once.
constexpr std::chrono::milliseconds MonitoringTime{1000};
/// After so long without an answer, the driver waits for something that does not come.
constexpr std::chrono::milliseconds AnswerTime{8000};

} // namespace

StopRun::StopRun() : LimitedRun(StopTime) {}

bool StopRun::MayBegin(LinkState state) const
{
    return state != LinkState::Closed && state != LinkState::UpdateMode;
}

void StopRun::Work()
{
    Tester& tester = Instrument();
    connect(&tester, &Tester::DeviceInformationChanged, this, &StopRun::ReceiveIdentity);
    connect(&tester, &Tester::ErrorCodeChanged, this, &StopRun::ReceiveError);
    connect(&tester, &Tester::CurrentMeasurementTypeChanged, this, &StopRun::Conclude);
    connect(&tester, &Tester::TestResultsChanged, this, [this](Vesmar::MeasurementResults* results) {
        if (results->GetMeasurementType() == MeasurementType::Monitoring) {
            Conclude();
        }
    });
    _leadingOut = new QTimer(this);
    _leadingOut->setSingleShot(true);
    connect(_leadingOut, &QTimer::timeout, this, &StopRun::LeadOut);
    _leadingOut->start(AnswerTime);
    tester.SetIsMeasurementModeActive(false);
    tester.RetrieveDeviceInformation();
    TellPhase();
}

void StopRun::Abort()
{
    _leadingOut->stop();
    End(Outcome::Aborted);
}

void StopRun::ReceiveIdentity()
{
    if (_isIdentityRead) {
        Conclude();
        return;
    }
    _isIdentityRead = true;
    QTimer::singleShot(MonitoringTime, &Instrument(), &Tester::RetrieveDeviceInformation);
}

/// What was read before the link was lost proves nothing. Once it is back, the identity is read unasked.
void StopRun::ReceiveError(Vesmar::Error error)
{
    if (IsLinkError(error)) {
        _isIdentityRead = false;
    }
}

void StopRun::Conclude()
{
    if (_isIdentityRead && IsIdle()) {
        _leadingOut->stop();
        Guard::OfThisProcess().Release();
        End(Outcome::Completed);
    } else {
        TellPhase();
    }
}

void StopRun::TellPhase()
{
    Q_EMIT PhaseChanged(IsIdle() ? Phase::Confirming : Phase::AwaitingIdle);
}

bool StopRun::IsIdle() const
{
    return Instrument().CurrentMeasurementType() == MeasurementType::Monitoring;
}

/// The function does not stop, or the driver waits for the state of one that no status reports any more, as
/// an abort can leave it. A restart of the instrument leads out of both.
void StopRun::LeadOut()
{
    if (!IsLinkError(Instrument().ErrorCode())) {
        Instrument().RestartTester();
    }
}

void StopRun::TimeOver()
{
    const Vesmar::Error error = Instrument().ErrorCode();
    End(IsLinkError(error) ? Outcome::LinkLost : Outcome::Failed, StopNotConfirmed(error));
}

} // namespace VesmarClient
