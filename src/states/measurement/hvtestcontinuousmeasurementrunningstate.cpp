#include "states/measurement/hvtestcontinuousmeasurementrunningstate.h"

#include <Vesmar/hvtestsettings.h>

#include "context/statemachinecontext.h"

namespace Vesmar
{

HVTestContinuousMeasurementRunningState::HVTestContinuousMeasurementRunningState(StateMachineContext* context,
                                                                                 State* parentState)
    : MeasurementRunningState(context, parentState, nullptr, "HVTEST CONTINUOUS MEASUREMENT STATE ")
{
}

void HVTestContinuousMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Measuring);
    // The instrument decides that this is the high-voltage test; the settings may be those of another
    // function.
    const auto* settings = dynamic_cast<HVTestSettings*>(GetContext()->TestSettings.Get());
    const float offsetSeconds = settings != nullptr ? settings->GetMeasurementTimeOffset() : 0.0F;
    GetContext()->StartMeasurementTimer(GetMeasurementTime(), offsetSeconds);
}

void HVTestContinuousMeasurementRunningState::OnRunning()
{
    PollContinuousMeasurement();
}

} // namespace Vesmar
