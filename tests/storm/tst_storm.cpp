#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include <sched.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "storm/exchangeround.h"
#include "storm/round.h"
#include "virtualtime/virtualtime.h"

namespace
{

struct Options {
    std::uint64_t firstSeed = 1;
    bool isReplay = false;
    const Kind* kind = nullptr;
    long injections = 0;
    long pairs = 0;
    long operations = 0;
};

long EntriesOf(const char* folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return std::distance(begin(entries), end(entries));
}

/// How many descriptors and threads the process has. A thread that has ended is gone a moment later, in real
/// time.
long CountResources(long expected)
{
    constexpr int Patience = 100000;
    long count = 0;
    for (int attempt = 0; attempt < Patience && (count == 0 || count > expected); ++attempt) {
        sched_yield();
        count = EntriesOf("/proc/self/fd") + EntriesOf("/proc/self/task");
    }
    return count;
}

const Kind* FindKind(const QString& name)
{
    for (const Kind& kind : AllKinds()) {
        if (name == QLatin1String(kind.name)) {
            return &kind;
        }
    }
    std::fprintf(stderr, "There is no kind of fault \"%s\".\n", qPrintable(name));
    std::exit(2);
}

Options ParseOptions()
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("seed"), QStringLiteral("Runs this round again, and no other."),
          QStringLiteral("N")},
         {QStringLiteral("kind"), QStringLiteral("Brings faults of this kind only."), QStringLiteral("NAME")},
         {QStringLiteral("injections"),
          QStringLiteral("Goes on until there were so many faults of each kind."), QStringLiteral("N"),
          QStringLiteral("1")},
         {QStringLiteral("pairs"),
          QStringLiteral("Goes on until each pair of a state and a kind was met so often."),
          QStringLiteral("N"), QStringLiteral("0")},
         {QStringLiteral("operations"), QStringLiteral("Goes on until the application did so much."),
          QStringLiteral("N"), QStringLiteral("0")}});
    parser.process(*QCoreApplication::instance());
    Options options;
    options.isReplay = parser.isSet(QStringLiteral("seed"));
    options.firstSeed = options.isReplay ? parser.value(QStringLiteral("seed")).toULongLong() : 1;
    options.kind =
        parser.isSet(QStringLiteral("kind")) ? FindKind(parser.value(QStringLiteral("kind"))) : nullptr;
    options.injections = parser.value(QStringLiteral("injections")).toLong();
    options.pairs = parser.value(QStringLiteral("pairs")).toLong();
    options.operations = parser.value(QStringLiteral("operations")).toLong();
    return options;
}

/// Most rounds have one kind of fault, and every fourth of a kind's turns has all of them.
const Kind* KindOf(std::uint64_t seed, const Options& options)
{
    const auto& kinds = AllKinds();
    constexpr std::uint64_t TurnsWithMixed = 4;
    const bool isMixed = seed / kinds.size() % TurnsWithMixed == TurnsWithMixed - 1;
    return options.kind != nullptr ? options.kind : isMixed ? nullptr : &kinds.at(seed % kinds.size());
}

bool AreKindsMet(const Counts& counts, const Options& options)
{
    return std::all_of(AllKinds().begin(), AllKinds().end(), [&](const Kind& kind) {
        const auto met = counts.kinds.find(kind.name);
        const bool isLeftOut = options.kind != nullptr && options.kind != &kind;
        return isLeftOut || (met != counts.kinds.end() && met->second >= options.injections);
    });
}

bool ArePairsMet(const Counts& counts, const Options& options)
{
    return std::all_of(counts.pairs.begin(), counts.pairs.end(),
                       [&](const auto& pair) { return pair.second >= options.pairs; });
}

bool IsEnough(const Counts& counts, const Options& options)
{
    return options.isReplay || (counts.operations >= options.operations && AreKindsMet(counts, options) &&
                                ArePairsMet(counts, options));
}

/// Prints what did not hold, and how to see it again. True if all held.
bool IsHeld(const std::string& finding, std::uint64_t seed, const Kind* kind, const Options& options)
{
    if (finding.empty()) {
        return true;
    }
    std::printf("seed %llu, kind %s: %s\n  replay: --seed %llu", static_cast<unsigned long long>(seed),
                kind != nullptr ? kind->name : "all", finding.c_str(), static_cast<unsigned long long>(seed));
    std::printf(options.kind != nullptr ? " --kind \"%s\"\n" : "\n", kind != nullptr ? kind->name : "");
    std::fflush(stdout);
    return false;
}

/// Qt rounds its timers to parts of the second, so every round begins with a whole one.
void AwaitWholeSecond()
{
    constexpr std::chrono::seconds Alignment{10};
    VirtualTime::Sleep(Alignment - VirtualTime::Now() % Alignment);
}

/// Every fifth round has single exchanges, the others have the whole machine. True if all held.
bool RunRound(std::uint64_t seed, const Options& options, Counts& counts)
{
    constexpr std::uint64_t RoundsWithExchanges = 5;
    const Kind* const kind = KindOf(seed, options);
    if (seed % RoundsWithExchanges == 0) {
        return IsHeld(ExchangeRound(seed, kind, counts).Run(), seed, kind, options);
    }
    AwaitWholeSecond();
    Round round(seed, {kind}, {}, counts);
    const std::string finding = round.Run();
    return IsHeld(finding.empty() ? finding : finding + "\n" + round.LastLines(), seed, kind, options);
}

void PrintTable(const Counts& counts, long findings)
{
    std::printf("%-32s %12s %8s\n", "kind", "injections", "states");
    for (const Kind& kind : AllKinds()) {
        const auto ofKind = [&](const auto& pair) { return pair.first.first == kind.name; };
        const auto met = counts.kinds.find(kind.name);
        std::printf("%-32s %12ld %8ld\n", kind.name, met != counts.kinds.end() ? met->second : 0,
                    static_cast<long>(std::count_if(counts.pairs.begin(), counts.pairs.end(), ofKind)));
    }
    std::printf(
        "%zu pairs of a kind and a state, %ld operations, %ld starts, %ld watched aborts, %ld findings\n",
        counts.pairs.size(), counts.operations, counts.starts, counts.aborts, findings);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_HASH_SEED", "0");
    const QCoreApplication application(argc, argv);
    const Options options = ParseOptions();
    Counts counts;
    long findings = 0;
    long resources = std::numeric_limits<long>::max(); // The first round brings what stays.
    for (std::uint64_t seed = options.firstSeed; seed == options.firstSeed || !IsEnough(counts, options);
         ++seed) {
        findings += RunRound(seed, options, counts) ? 0 : 1;
        const long present = CountResources(resources);
        if (present > resources) {
            std::printf("seed %llu leaves a descriptor or a thread behind.\n",
                        static_cast<unsigned long long>(seed));
            ++findings;
        }
        resources = present;
    }
    PrintTable(counts, findings);
    return findings == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
