#include "cli/sessions/readinesswatch.h"

namespace Cli
{

using Vesmar::OperationMode;
using Vesmar::Tester;

ReadinessWatch::ReadinessWatch(Link& link) : _link(link)
{
    const Tester* tester = &link.Instrument();
    connect(tester, &Tester::DeviceInformationChanged, this,
            [this, tester] { Follow(_readiness.IdentityRead(tester->TesterMode())); });
    connect(tester, &Tester::TesterModeChanged, this,
            [this](OperationMode mode) { Follow(_readiness.ModeChanged(mode)); });
    connect(tester, &Tester::ErrorCodeChanged, this, [this] { _readiness.ErrorChanged(); });
}

void ReadinessWatch::Follow(Readiness::Progress progress)
{
    if (_link.IsFinished()) {
        return;
    }
    switch (progress) {
    case Readiness::Progress::Waiting:
        break;
    case Readiness::Progress::AskForIdentity:
        _link.Instrument().RetrieveDeviceInformation();
        break;
    case Readiness::Progress::Complete:
        End();
        Q_EMIT Ready();
        break;
    case Readiness::Progress::InUpdateMode:
        End();
        Q_EMIT FoundInUpdateMode();
        break;
    }
}

void ReadinessWatch::End()
{
    _link.ConfirmUp();
    _link.Instrument().disconnect(this);
}

} // namespace Cli
