#include "states/measurement/preparingmeasurementstate.h"

#include <QThread>

#include "context/statemachinecontext.h"
#include "protocol/classification.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long PauseAfterPrepareMs = 100;

} // namespace

PreparingMeasurementState::PreparingMeasurementState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "PREPARING MEASUREMENT STATE ")
{
}

void PreparingMeasurementState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Preparing);
    GetContext()->MeasurementTime.Set(0);
}

void PreparingMeasurementState::OnRunning()
{
    TraceBanner("RUNNING PREPARING MEASUREMENT STATE ");
    if (!RequestStatus()) {
        return;
    }
    if (GetContext()->PrepareMeasurementRequested.Get()) {
        Prepare();
    } else {
        WatchPreparation();
    }
}

void PreparingMeasurementState::Prepare()
{
    MeasurementSettings* settings = GetContext()->TestSettings.Get();
    if (IsRCD(settings->GetMeasurementType())) {
        return; // The request stays pending and leads to RCD measurement mode.
    }
    if (!PrepareMeasurement(*settings)) {
        return;
    }
    ClearPrepareRequest(*settings);
    // The guards of this step must see how the instrument answers the settings.
    QThread::msleep(PauseAfterPrepareMs);
    RequestStatus();
}

void PreparingMeasurementState::WatchPreparation()
{
    switch (GetContext()->MeasurementFunctionStatus.Get()) {
    case FunctionState::PrepareError:
        ReportError(Error::PrepareFailed);
        GetContext()->AbortMeasurementRequested.Set(true);
        break;
    case FunctionState::Prepared:
        GetContext()->MeasurementStatus.Set(MeasurementState::Prepared);
        break;
    default:
        break;
    }
}

} // namespace Vesmar
