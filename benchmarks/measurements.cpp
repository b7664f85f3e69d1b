#include "figures.h"

#include <Vesmar/rpesettings.h>
#include <Vesmar/tester.h>
#include <VesmarClient/instrument.h>

#include "baremachine.h"
#include "eventloop.h"
#include "peer.h"
#include "samples.h"
#include "support/serialdevice.h"
#include "table.h"

using VesmarClient::Instrument;

namespace
{

constexpr std::chrono::microseconds Delay{500};
constexpr int ReadingMs = 4000;

/// What an application waits for, in ms.
struct Waits {
    Samples opening;  ///< From the call that opens the link to when it is up.
    Samples readings; ///< From when the instrument has sent readings to the application's slot.
    Samples aborts;   ///< From an abort to the stop frame at the instrument.
};

double MsSince(Peer::Clock::time_point start, Peer::Clock::time_point end = Peer::Clock::now())
{
    return Microseconds(end - start).count() / 1000;
}

int Rounds()
{
    return Scaled(24);
}

/// Calls for an abort, round by round later in a step, and waits for the stop frame.
template <typename Abort>
double TimeToStop(const Peer& peer, int round, const Abort& abort)
{
    constexpr std::chrono::microseconds Step{114000};
    const int statuses = peer.Count('s');
    while (peer.Count('s') == statuses) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    std::this_thread::sleep_for(Step * round / Rounds());
    const int stops = peer.Count('h');
    const auto start = Peer::Clock::now();
    abort();
    RunUntil([&] { return peer.Count('h') > stops; });
    return MsSince(start, peer.Arrival('h'));
}

Samples MeasureBareMachine()
{
    const Peer peer(Delay);
    BareMachine machine(peer.DevicePath());
    Samples aborts;
    for (int round = 0; round < Rounds(); ++round) {
        aborts.Add(TimeToStop(peer, round, [&] { machine.Abort(); }));
    }
    return aborts;
}

void StartWithDriver(Vesmar::Tester& tester)
{
    Vesmar::RPESettings settings;
    settings.SetTime(600);
    tester.PrepareMeasurement(settings);
    tester.SetIsMeasurementModeActive(true);
    RunUntil([&] { return tester.MeasurementStatus() == Vesmar::MeasurementState::Prepared; });
    tester.StartMeasurement();
    RunUntil([&] { return tester.MeasurementStatus() == Vesmar::MeasurementState::Measuring; });
}

void EndWithDriver(Vesmar::Tester& tester)
{
    RunUntil([&] { return tester.MeasurementStatus() == Vesmar::MeasurementState::Stopped; });
    tester.SetIsMeasurementModeActive(false);
    RunUntil([&] { return tester.CurrentMeasurementType() == Vesmar::MeasurementType::Monitoring; });
}

/// The instrument's last answer of the beginning is that to the date of the calibration.
double TimeToEnable(Vesmar::Tester& tester, const Peer& peer)
{
    const int dates = peer.Count('T');
    const auto start = Peer::Clock::now();
    tester.Enable();
    RunUntil([&] { return peer.Count('T') > dates; });
    return MsSince(start, peer.Arrival('T') + Delay);
}

Waits MeasureDriver()
{
    Waits waits;
    Peer peer(Delay);
    RedirectSerialDevice(peer.DevicePath());
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    for (int round = 0; round < Rounds() / 3; ++round) {
        tester->Disable();
        waits.opening.Add(TimeToEnable(*tester, peer));
        RunFor(500); // Until the driver has left its first states, in which it forgets requests.
    }
    for (int round = 0; round < Rounds(); ++round) {
        StartWithDriver(*tester);
        waits.aborts.Add(TimeToStop(peer, round, [&] { tester->AbortMeasurement(); }));
        EndWithDriver(*tester);
    }
    peer.GiveReadings();
    StartWithDriver(*tester);
    QObject::connect(tester, &Vesmar::Tester::TestResultsChanged,
                     [&] { waits.readings.Add(MsSince(peer.ReadingsSent())); });
    RunFor(ReadingMs);
    delete tester;
    return waits;
}

/// Returns how long it took, in ms.
double Open(Instrument& instrument)
{
    double time = 0;
    QObject context;
    const auto start = Peer::Clock::now();
    QObject::connect(&instrument, &Instrument::linkStateChanged, &context, [&] { time = MsSince(start); });
    instrument.open();
    RunUntil([&] { return instrument.linkState() == VesmarClient::LinkState::Up; });
    return time;
}

void Close(Instrument& instrument)
{
    instrument.close();
    RunUntil([&] { return instrument.linkState() == VesmarClient::LinkState::Closed; });
}

VesmarClient::Measurement* StartWithClient(Instrument& instrument)
{
    VesmarClient::Measurement* measurement =
        instrument.measure(VesmarClient::Settings(QStringLiteral("rpe")).set(QStringLiteral("time"), 600));
    RunUntil([&] { return measurement->phase() == VesmarClient::Phase::Running; });
    return measurement;
}

void EndWithClient(VesmarClient::Measurement* measurement)
{
    measurement->abort();
    RunUntil([&] { return measurement->isFinished(); });
    delete measurement;
}

Waits MeasureClient()
{
    Waits waits;
    Peer peer(Delay);
    RedirectSerialDevice(peer.DevicePath());
    Instrument instrument;
    for (int round = 0; round < Rounds() / 3; ++round) {
        waits.opening.Add(Open(instrument));
        Close(instrument);
    }
    Open(instrument);
    for (int round = 0; round < Rounds(); ++round) {
        VesmarClient::Measurement* measurement = StartWithClient(instrument);
        waits.aborts.Add(TimeToStop(peer, round, [&] { measurement->abort(); }));
        EndWithClient(measurement);
    }
    peer.GiveReadings();
    VesmarClient::Measurement* measurement = StartWithClient(instrument);
    QObject::connect(measurement, &VesmarClient::Measurement::reading,
                     [&] { waits.readings.Add(MsSince(peer.ReadingsSent())); });
    RunFor(ReadingMs);
    EndWithClient(measurement);
    return waits;
}

} // namespace

void MeasureMeasurements()
{
    const Samples bare = MeasureBareMachine();
    const Waits driver = MeasureDriver();
    const Waits client = MeasureClient();
    Print({"Abort to stop frame: median", "ms", driver.aborts.Median(), bare.Median(), "bare loop"});
    Print({"Abort to stop frame: longest", "ms", driver.aborts.Largest(), bare.Largest(), "bare loop"});
    const char* const what = "driver";
    Print({"Client: `open()` to `Up`", "ms", client.opening.Median(), driver.opening.Median(), what});
    Print({"Client: a reading from the line to the slot", "ms", client.readings.Median(),
           driver.readings.Median(), what});
    Print(
        {"Client: abort to stop frame: median", "ms", client.aborts.Median(), driver.aborts.Median(), what});
    Print({"Client: abort to stop frame: longest", "ms", client.aborts.Largest(), driver.aborts.Largest(),
           what});
}
