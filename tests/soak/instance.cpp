#include "soak/instance.h"

#include <chrono>
#include <cstdio>
#include <numeric>

#include <QCoreApplication>
#include <QTimer>

#include "soak/fairclock.h"
#include "soak/pseudoterminal.h"
#include "storm/round.h"

namespace
{

using std::chrono::milliseconds;

constexpr int ExchangesPerFault = 100;
/// An abort passes some forty bursts of computing, and seven answers that go through a pseudo-terminal.
constexpr milliseconds Tolerance{20};
constexpr milliseconds Patience{1000};
constexpr milliseconds TallyPeriod{200};

void Publish(const Counts& counts, Tally& tally)
{
    const auto lock = SerialLine::Lock();
    tally.operations = counts.operations;
    tally.starts = counts.starts;
    tally.aborts = counts.aborts;
    tally.exchanges = counts.exchanges;
    tally.faults = std::accumulate(counts.kinds.begin(), counts.kinds.end(), 0L,
                                   [](long sum, const auto& kind) { return sum + kind.second; });
    tally.heldUpMs = static_cast<long>(std::chrono::duration_cast<milliseconds>(FairClock::HeldUp()).count());
}

void RunRound(std::uint64_t seed, Counts& counts, Tally& tally)
{
    tally.seed = seed;
    Round round(seed, {nullptr, ExchangesPerFault}, {Tolerance, Patience}, counts);
    const std::string finding = round.Run();
    if (!finding.empty()) {
        ++tally.findings;
        std::printf("seed %llu: %s\n%s", static_cast<unsigned long long>(seed), finding.c_str(),
                    round.LastLines().c_str());
        std::fflush(stdout);
    }
}

} // namespace

void RunInstance(std::uint64_t firstSeed, std::uint64_t stride, Tally& tally)
{
    int argumentCount = 0;
    const QCoreApplication application(argumentCount, nullptr);
    PseudoTerminal terminal;
    SerialLine::Get().UseTerminal(terminal);
    Counts counts;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { Publish(counts, tally); });
    timer.start(TallyPeriod);
    for (std::uint64_t seed = firstSeed;; seed += stride) {
        RunRound(seed, counts, tally);
        counts.pairs.clear(); // What the bench itself holds shall not grow.
    }
}
