#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The parent of all states of an ordinary measurement.
///
/// Sends nothing. Clears `IsMeasurementRunning` and `AbortMeasurementRequested` on every entry, so also after
/// each measurement. Left at once for preparing. From here and from every state below it, the machine leaves
/// for aborting when an abort is requested and the function is not merely prepared, and for monitoring when
/// measurement mode is switched off.
class MeasurementModeState : public State
{
public:
    MeasurementModeState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
};

} // namespace Vesmar
