#include "client/driver/restartrun.h"

#include "client/driver/failures.h"
#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Tester;

} // namespace

RestartRun::RestartRun(std::chrono::milliseconds limit) : LimitedRun(limit) {}

bool RestartRun::MayBegin(LinkState state) const
{
    return state == LinkState::Up || state == LinkState::UpdateMode;
}

/// An identity that was asked for earlier must not count as read after the restart. In update mode the driver
/// reads none.
void RestartRun::Work()
{
    connect(&Instrument(), &Tester::ErrorCodeChanged, this, &RestartRun::ReceiveError);
    if (Instrument().TesterMode() == Vesmar::OperationMode::Update) {
        Restart();
        return;
    }
    AwaitReadiness([this] { Restart(); });
    Instrument().RetrieveDeviceInformation();
}

void RestartRun::Restart()
{
    Q_EMIT PhaseChanged(Phase::Restarting);
    AwaitReadiness([this] { End(Outcome::Completed); });
    Instrument().RestartTester();
}

/// The driver reports no error for a restart that lasts long, but for a link that is lost.
void RestartRun::ReceiveError(Vesmar::Error error)
{
    if (IsLinkError(error)) {
        constexpr char NotKnown[] =
            QT_TRANSLATE_NOOP("VesmarClient", "It is not known whether the instrument has restarted.");
        End(Outcome::LinkLost, LinkLost(NotKnown, error));
    }
}

void RestartRun::Abort()
{
    End(Outcome::Aborted);
}

void RestartRun::TimeOver()
{
    constexpr char NotBack[] =
        QT_TRANSLATE_NOOP("VesmarClient", "The instrument has not come back from its restart in time.");
    constexpr char NextStep[] = QT_TRANSLATE_NOOP(
        "VesmarClient", "Check cable and power, or switch the instrument off and on again.");
    End(Outcome::Failed, FailureNamed("not-confirmed", NotBack, NextStep));
}

} // namespace VesmarClient
