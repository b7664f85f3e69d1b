#pragma once

#include <memory>

#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

namespace Frames
{

constexpr char StartMeasurement[] = "53966a";

} // namespace Frames

/// The states of the machine, as the trace calls them.
namespace Trace
{

constexpr char MeasurementMode[] = "MEASUREMENT MODE";
constexpr char Preparing[] = "PREPARING MEASUREMENT";
constexpr char Starting[] = "STARTING MEASUREMENT";
constexpr char Single[] = "SINGLE MEASUREMENT";
constexpr char Continuous[] = "CONTINUOUS MEASUREMENT";
constexpr char HighVoltage[] = "HVTEST CONTINUOUS MEASUREMENT";
constexpr char Stopping[] = "STOPPING MEASUREMENT";
constexpr char Aborting[] = "ABORTING MEASUREMENT";
constexpr char Recovery[] = "COMMUNICATION RECOVERY";
constexpr char RcdUbRe[] = "RCD UbRe MEASUREMENT";
constexpr char RcdIaTa[] = "RCD IaTa MEASUREMENT";
constexpr char RcdIecIaTa[] = "RCD IEC IaTa MEASUREMENT";
constexpr char RcdCleanUp[] = "RCD IEC CleanUp";

} // namespace Trace

/// An application that measures, at an instrument of its own.
class Measuring
{
public:
    explicit Measuring(const Simulator::InstrumentOptions& options = {}) : instrument(options)
    {
        tester->Enable();
    }

    /// Waits for the link, then prepares and enters measurement mode.
    void Prepare(Vesmar::MeasurementSettings& settings)
    {
        QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
        tester->PrepareMeasurement(settings);
        tester->SetIsMeasurementModeActive(true);
    }

    /// The states since measurement mode was first entered.
    QByteArrayList States() const
    {
        const QByteArrayList states = tester.EnteredStates();
        const int first = states.indexOf(Trace::MeasurementMode);
        return first < 0 ? QByteArrayList() : QByteArrayList(states.mid(first));
    }

    bool HasEntered(const char* state, int times = 1) const { return States().count(state) >= times; }

    bool IsInState(Vesmar::MeasurementState state) const { return tester->MeasurementStatus() == state; }

    /// The state of the function at the instrument itself.
    int FunctionState() { return instrument.Status().functionState; }
    bool HasNoFunction() { return instrument.Status().function == 0; }

    int CountSent(const char* frame) const { return static_cast<int>(instrument.Sent().count(frame)); }

    LineInstrument instrument; // First: the line is the instrument's.
    WatchedTester tester;
};

/// Settings that measure for so many seconds.
template <typename Settings>
std::unique_ptr<Settings> ForSeconds(int time)
{
    auto settings = std::make_unique<Settings>();
    settings->SetTime(time);
    return settings;
}
