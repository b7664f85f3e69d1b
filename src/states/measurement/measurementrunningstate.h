#pragma once

#include "states/state.h"

namespace Vesmar
{

/// What the running states share: reading results, and giving up a function that ended without one.
class MeasurementRunningState : public State
{
public:
    using State::State;

protected:
    /// The measurement time of the settings in seconds; 0 for settings that have none, so that the
    /// measurement ends.
    int GetMeasurementTime() const;

    /// The step of a function that delivers results until its time is up: reads the result when there is a
    /// new one.
    void FollowContinuousMeasurement();

    /// Reads the results of the function that the settings are for.
    void ReadResults();
    /// Reports 202 and asks for an abort when the function is over.
    void FailIfEndedWithoutResult();
};

} // namespace Vesmar
