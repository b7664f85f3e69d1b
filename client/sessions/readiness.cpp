#include "client/sessions/readiness.h"

namespace VesmarClient
{

using Vesmar::OperationMode;
using Vesmar::Tester;

ReadinessSteps::Step ReadinessSteps::IdentityRead(OperationMode mode)
{
    _hasIdentity = true;
    if (mode == OperationMode::Update) {
        return Step::FoundInUpdateMode;
    }
    if (mode != OperationMode::Normal) { // the library restarts the instrument and reads everything again
        _areClocksDue = false;
        return Step::Wait;
    }
    if (_areClocksDue) {
        return Step::Complete;
    }
    _areClocksDue = true;
    return Step::AskForIdentity;
}

ReadinessSteps::Step ReadinessSteps::ModeChanged(OperationMode mode)
{
    _areClocksDue = false;
    return _hasIdentity && mode == OperationMode::Update ? Step::FoundInUpdateMode : Step::Wait;
}

void ReadinessSteps::ErrorChanged()
{
    _areClocksDue = false;
}

Readiness::Readiness(Tester& tester) : _tester(tester)
{
    connect(&tester, &Tester::DeviceInformationChanged, this,
            [this] { CarryOut(_steps.IdentityRead(_tester.TesterMode())); });
    connect(&tester, &Tester::TesterModeChanged, this,
            [this](OperationMode mode) { CarryOut(_steps.ModeChanged(mode)); });
    connect(&tester, &Tester::ErrorCodeChanged, this, [this] { _steps.ErrorChanged(); });
}

void Readiness::Stop()
{
    _isDone = true;
    _tester.disconnect(this);
}

void Readiness::CarryOut(ReadinessSteps::Step step)
{
    if (_isDone) {
        return;
    }
    switch (step) {
    case ReadinessSteps::Step::Wait:
        break;
    case ReadinessSteps::Step::AskForIdentity:
        _tester.RetrieveDeviceInformation();
        break;
    case ReadinessSteps::Step::Complete:
        Stop();
        Q_EMIT Ready();
        break;
    case ReadinessSteps::Step::FoundInUpdateMode:
        Stop();
        Q_EMIT FoundInUpdateMode();
        break;
    }
}

} // namespace VesmarClient
