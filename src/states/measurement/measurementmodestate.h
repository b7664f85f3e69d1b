#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The parent of everything an ordinary measurement does. It only passes on.
///
/// Sends nothing. Clears `IsMeasurementRunning` and `AbortMeasurementRequested` on every entry, so also after
/// each measurement. Left at once for preparing; from here and from everything below it the machine leaves
/// for aborting when an abort is asked for and the function is not merely prepared, and for monitoring when
/// measurement mode is switched off.
class MeasurementModeState : public State
{
public:
    MeasurementModeState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
};

} // namespace Vesmar
