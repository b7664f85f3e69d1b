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
/// After so long without an answer, the driver waits for something that does not come.
constexpr std::chrono::milliseconds AnswerTime{8000};

Failure NotConfirmed(Vesmar::Error error)
{
    constexpr char Name[] = "stop-not-confirmed";
    constexpr char WhatHappened[] =
        QT_TRANSLATE_NOOP("VesmarClient", "It is not confirmed that the instrument has stopped.");
    constexpr char NextStep[] = QT_TRANSLATE_NOOP(
        "VesmarClient",
        "Treat it as if it still ran: a dangerous voltage may be present. Switch the instrument off.");
    Failure failure = FailureNamed(Name, WhatHappened, NextStep);
    failure.code = static_cast<Error>(ReasonForLoss(error));
    return failure;
}

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
    connect(&tester, &Tester::CurrentMeasurementTypeChanged, this, &StopRun::Observe);
    _leadingOut = new QTimer(this);
    _leadingOut->setSingleShot(true);
    connect(_leadingOut, &QTimer::timeout, this, &StopRun::LeadOut);
    _leadingOut->start(AnswerTime);
    tester.SetIsMeasurementModeActive(false);
    tester.RetrieveDeviceInformation();
    Observe();
}

void StopRun::Abort()
{
    _leadingOut->stop();
    End(Outcome::Aborted);
}

void StopRun::ReceiveIdentity()
{
    _isIdentityRead = true;
    Observe();
}

/// What was read before the link was lost proves nothing. Once it is back, the identity is read unasked.
void StopRun::ReceiveError(Vesmar::Error error)
{
    if (IsLinkError(error)) {
        _isIdentityRead = false;
    }
}

void StopRun::Observe()
{
    const bool isIdle = Instrument().CurrentMeasurementType() == MeasurementType::Monitoring;
    if (_isIdentityRead && isIdle) {
        _leadingOut->stop();
        Guard::OfThisProcess().Release();
        End(Outcome::Completed);
    } else {
        Q_EMIT PhaseChanged(isIdle ? Phase::Confirming : Phase::AwaitingIdle);
    }
}

/// An abort can leave the driver waiting for the state of a function that no status reports. A restart of the
/// instrument leads out of that.
void StopRun::LeadOut()
{
    if (!_isIdentityRead && !IsLinkError(Instrument().ErrorCode())) {
        Instrument().RestartTester();
    }
}

void StopRun::TimeOver()
{
    const Vesmar::Error error = Instrument().ErrorCode();
    End(IsLinkError(error) ? Outcome::LinkLost : Outcome::Failed, NotConfirmed(error));
}

} // namespace VesmarClient
