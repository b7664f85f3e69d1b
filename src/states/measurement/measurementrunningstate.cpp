#include "states/measurement/measurementrunningstate.h"

#include <Vesmar/continuousmeasurementsettings.h>

#include "context/statemachinecontext.h"
#include "protocol/functionstatesets.h"

namespace Vesmar
{

int MeasurementRunningState::GetMeasurementTime() const
{
    const auto* settings = dynamic_cast<ContinuousMeasurementSettings*>(GetContext()->TestSettings.Get());
    return settings != nullptr ? settings->GetTime() : 0;
}

void MeasurementRunningState::PollContinuousMeasurement()
{
    if (!RequestStatus()) {
        return;
    }
    if (GetContext()->NewMeasurement.Get()) {
        ReadResults();
    } else {
        FailIfEndedWithoutResult();
    }
}

void MeasurementRunningState::ReadResults()
{
    RequestMeasurementResults(GetContext()->TestSettings.Get()->GetMeasurementType());
}

void MeasurementRunningState::FailIfEndedWithoutResult()
{
    const FunctionState state = GetContext()->MeasurementFunctionStatus.Get();
    if (FunctionStateSets::Contains(FunctionStateSets::EndedWithoutResult, state)) {
        ReportError(Error::MeasurementFailed);
        GetContext()->AbortMeasurementRequested.Set(true);
    }
}

} // namespace Vesmar
