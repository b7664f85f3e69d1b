#pragma once

#include <memory>

#include <Vesmar/continuousmeasurementsettings.h>

#include "integration/bench.h"

/// An application that measures, at an instrument of its own.
class Measuring : public Bench
{
public:
    explicit Measuring(const Simulator::InstrumentOptions& options = {}) : Bench(options)
    {
        tester->Enable();
    }

    /// Waits for the link, then prepares and enters measurement mode.
    void Prepare(Vesmar::MeasurementSettings& settings)
    {
        AwaitReadings();
        tester->PrepareMeasurement(settings);
        tester->SetIsMeasurementModeActive(true);
    }

    /// Leaves measurement mode, and waits until the instrument has no function any more.
    void Leave()
    {
        tester->SetIsMeasurementModeActive(false);
        AWAIT(HasNoFunction());
        AWAIT_EQUAL(tester->CurrentMeasurementType(), Vesmar::MeasurementType::Monitoring);
    }

    /// The states since measurement mode was first entered.
    QByteArrayList States() const { return Since(Trace::MeasurementMode, tester.EnteredStates()); }
    bool HasEntered(const char* state, int times = 1) const { return States().count(state) >= times; }
    bool IsInState(Vesmar::MeasurementState state) const { return tester->MeasurementStatus() == state; }
    void AwaitState(Vesmar::MeasurementState state) const { AWAIT(IsInState(state)); }

    /// The state of the function at the instrument itself.
    int FunctionState() { return instrument.Status().functionState; }
    bool HasNoFunction() { return instrument.Status().function == 0; }
};

/// Settings that measure for so many seconds.
template <typename Settings>
std::unique_ptr<Settings> ForSeconds(int time)
{
    auto settings = std::make_unique<Settings>();
    settings->SetTime(time);
    return settings;
}
