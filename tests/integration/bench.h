#pragma once

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/wire.h"

Q_DECLARE_METATYPE(Simulator::Fault)
Q_DECLARE_METATYPE(Simulator::Scenario)

/// The states of the machine, as the trace calls them.
namespace Trace
{

constexpr char Monitoring[] = "MONITORING";
constexpr char Recovery[] = "COMMUNICATION RECOVERY";
constexpr char Restarting[] = "RESTARTING TESTER";
constexpr char MeasurementMode[] = "MEASUREMENT MODE";
constexpr char Preparing[] = "PREPARING MEASUREMENT";
constexpr char Starting[] = "STARTING MEASUREMENT";
constexpr char Single[] = "SINGLE MEASUREMENT";
constexpr char Continuous[] = "CONTINUOUS MEASUREMENT";
constexpr char HighVoltage[] = "HVTEST CONTINUOUS MEASUREMENT";
constexpr char Stopping[] = "STOPPING MEASUREMENT";
constexpr char Aborting[] = "ABORTING MEASUREMENT";
constexpr char RcdUbRe[] = "RCD UbRe MEASUREMENT";
constexpr char RcdIaTa[] = "RCD IaTa MEASUREMENT";
constexpr char RcdIecIaTa[] = "RCD IEC IaTa MEASUREMENT";
constexpr char RcdCleanUp[] = "RCD IEC CleanUp";
constexpr char Awaiting[] = "AWAIT UPDATE ACTION";
constexpr char Updating[] = "UPDATING";

} // namespace Trace

/// From a request of the driver until it has the answer, in virtual time.
constexpr std::chrono::milliseconds AnswerTime{3};

/// An application at a simulated instrument of its own.
class Bench
{
public:
    explicit Bench(const Simulator::InstrumentOptions& options = {}) : instrument(options) {}

    /// Waits until the instrument is being monitored.
    void AwaitReadings() const { AWAIT(!tester.Signalled("TestResults").isEmpty()); }

    /// Enables the tester, and waits until the instrument is being monitored.
    void Connect() const
    {
        tester->Enable();
        AwaitReadings();
    }

    /// Waits for the results of another round of monitoring.
    void AwaitMoreReadings() const
    {
        const int readings = tester.Signalled("TestResults").size();
        AWAIT(tester.Signalled("TestResults").size() > readings);
    }

    void AwaitErrors(const QByteArrayList& errors) const { AWAIT_EQUAL(tester.Errors(), errors); }

    /// Waits until the tester has received the instrument's identity so many times.
    void AwaitIdentity(int times) const { AWAIT_EQUAL(tester.Signalled("DeviceInformation").size(), times); }

    /// Waits until so many more requests of this kind have been sent.
    void AwaitMoreRequests(const QByteArray& request, int count) const
    {
        const int requests = CountSent(request);
        AWAIT(CountSent(request) >= requests + count);
    }

    int CountSent(const QByteArray& request) const
    {
        return static_cast<int>(instrument.Sent().count(request));
    }

    /// The requests from the first of this kind on.
    QByteArrayList SentSince(const QByteArray& request) const { return Since(request, instrument.Sent()); }

    LineInstrument instrument; // First: the line is the instrument's.
    WatchedTester tester;
};
