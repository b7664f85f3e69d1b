#include <malloc.h>
#include <unistd.h>

#include <fstream>

#include <QCoreApplication>

#include <Vesmar/tester.h>
#include <VesmarClient/instrument.h>

#include "eventloop.h"
#include "peer.h"
#include "support/serialdevice.h"
#include "table.h"

namespace
{

constexpr std::chrono::microseconds Delay{500};

/// What the process has, in kB.
struct Memory {
    double heap;
    double resident;
};

Memory Present()
{
    std::ifstream pages("/proc/self/statm");
    long size = 0;
    long resident = 0;
    pages >> size >> resident;
    return {static_cast<double>(mallinfo2().uordblks) / 1024,
            static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / 1024};
}

void PrintGrowth(const std::string& of, const Memory& before)
{
    const Memory after = Present();
    Print({of + ": growth of the heap", "kB", after.heap - before.heap, 0, "nothing"});
    Print({of + ": growth of the memory", "kB", after.resident - before.resident, 0, "nothing"});
}

/// The first steps fill what is kept.
void MeasureSteps()
{
    constexpr int First = 1000;
    const Peer peer(Delay);
    RedirectSerialDevice(peer.DevicePath());
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    tester->Enable();
    const auto runSteps = [&](int count) {
        const int end = peer.Count('s') + count;
        while (peer.Count('s') < end) {
            RunFor(10000);
        }
    };
    runSteps(First);
    const Memory before = Present();
    const int steps = Scaled(100000);
    runSteps(steps);
    PrintGrowth(std::to_string(steps) + " idle steps", before);
    delete tester;
}

void MeasureReadings()
{
    constexpr int Minute = 60 * 1000;
    Peer peer(Delay);
    RedirectSerialDevice(peer.DevicePath());
    peer.GiveReadings();
    VesmarClient::Instrument instrument;
    instrument.open();
    RunUntil([&] { return instrument.linkState() == VesmarClient::LinkState::Up; });
    auto* measurement =
        instrument.measure(VesmarClient::Settings(QStringLiteral("rpe")).set(QStringLiteral("time"), 3700));
    int readings = 0;
    QObject::connect(measurement, &VesmarClient::Measurement::reading, [&] { ++readings; });
    RunFor(Minute);
    const Memory before = Present();
    RunFor(60 * Minute);
    if (readings < 10000) {
        qFatal("The instrument has given too few readings.");
    }
    PrintGrowth("Client: an hour of readings", before);
    measurement->abort();
    RunUntil([&] { return measurement->isFinished(); });
}

} // namespace

/// What the libraries hold after hours, in virtual time.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    ReadOptions(argc, argv);
    MeasureSteps();
    MeasureReadings();
    return 0;
}
