#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The base of the running states: it reads results, and gives up a function that ended without one.
class MeasurementRunningState : public State
{
public:
    using State::State;

protected:
    /// The measurement time of the settings in seconds. It is 0 for settings that have none, so that the
    /// measurement ends.
    int GetMeasurementTime() const;

    /// One step of a function that delivers results until its time has elapsed: reads the result when there
    /// is a new one.
    void PollContinuousMeasurement();

    /// Reads the results as those of the function of the settings.
    void ReadResults();
    /// Reports 202 and requests an abort when the function is over.
    void FailIfEndedWithoutResult();
};

} // namespace Vesmar
