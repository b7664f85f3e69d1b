#include <chrono>
#include <memory>

#include <benchmark/benchmark.h>

#include "barelink.h"
#include "delayedpeer.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "support/serialdevice.h"

namespace
{

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr int BlockSize = 20;

/// The mean time of an exchange in a block of them; the first, which finds the line rested, does not count.
template <typename Exchange>
double MicrosecondsPerExchange(const Exchange& exchange)
{
    exchange();
    const auto start = Clock::now();
    for (int count = 0; count < BlockSize; ++count) {
        exchange();
    }
    return Microseconds(Clock::now() - start).count() / BlockSize;
}

/// The library's exchange against a bare loop with the same waits, in turn, on one pseudo-terminal.
void StatusExchange(benchmark::State& state)
{
    const DelayedPeer peer{std::chrono::microseconds(state.range(0))};
    RedirectSerialDevice(peer.DevicePath());
    Vesmar::CRC16 crc16(nullptr);
    const Vesmar::CommandBuilder builder(&crc16, nullptr);
    Vesmar::Transciever transciever(&crc16, nullptr);
    transciever.Open();
    BareLink bareLink(peer.DevicePath());

    const auto libraryExchange = [&] {
        QByteArray* answer = nullptr;
        const int result = transciever.RunQuery(*builder.GetStatusFrame(), &answer);
        const std::unique_ptr<QByteArray> response(answer);
        if (result != Vesmar::QueryResult::Data) {
            state.SkipWithError("the peer did not answer");
        }
    };
    const auto bareExchange = [&bareLink] { bareLink.Exchange(); };

    double library = 0;
    double bare = 0;
    for (auto _ : state) {
        library += MicrosecondsPerExchange(libraryExchange);
        bare += MicrosecondsPerExchange(bareExchange);
    }
    const auto blocks = static_cast<double>(state.iterations());
    state.counters["library_us"] = library / blocks;
    state.counters["bare_us"] = bare / blocks;
    state.counters["ratio"] = library / bare;
}

} // namespace

BENCHMARK(StatusExchange)->ArgName("answer_after_us")->Arg(500)->Arg(5000)->Iterations(20)->UseRealTime();
