#include "figures.h"

#include <thread>

#include <Vesmar/tester.h>

#include "barelink.h"
#include "peer.h"
#include "samples.h"
#include "support/serialdevice.h"
#include "table.h"

namespace
{

constexpr int SectorSize = 512;
constexpr std::chrono::milliseconds WritingTime{40}; ///< As an instrument's flash may need it.

void SendBareSectors(BareLink& link, int sectors)
{
    for (int sector = 0; sector < sectors; ++sector) {
        link.Exchange('F' + QByteArray(SectorSize + 2, 'x'));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

} // namespace

void MeasureSectors()
{
    constexpr int Sectors = 15;
    Peer peer(WritingTime);
    RedirectSerialDevice(peer.DevicePath());
    BareLink link(peer.DevicePath());
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    Pair pair;
    const auto collectPeriods = [&peer](Samples& samples) {
        peer.Observe([&samples, last = Peer::Clock::time_point()](char code) mutable {
            if (code == 'F') {
                const auto now = Peer::Clock::now();
                if (last != Peer::Clock::time_point()) {
                    samples.Add(Microseconds(now - last).count() / 1000);
                }
                last = now;
            }
        });
    };
    for (int block = 0; block < Scaled(4); ++block) {
        collectPeriods(pair.ours);
        tester->UpdateTester(QByteArray(Sectors * SectorSize, 'x'), QByteArray(2, 'x'));
        collectPeriods(pair.beside);
        SendBareSectors(link, Sectors);
    }
    delete tester;
    Print({"Firmware sector", "ms", pair.ours.Median(), pair.beside.Median(), "bare loop"});
}
