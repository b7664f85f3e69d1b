#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <optional>

#include <sched.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include "storm/exchangeround.h"
#include "storm/plan.h"
#include "storm/round.h"
#include "virtualtime/virtualtime.h"

namespace
{

struct Options {
    std::optional<std::uint64_t> seed; ///< Of the only round.
    Aim aim;
    Goals goals;
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

Options ParseOptions()
{
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("seed"), QStringLiteral("Runs this round again, and no other."),
          QStringLiteral("N")},
         {QStringLiteral("kind"), QStringLiteral("Brings faults of this kind only."), QStringLiteral("NAME")},
         {QStringLiteral("state"), QStringLiteral("Brings faults in this state only."),
          QStringLiteral("NAME")},
         {QStringLiteral("injections"),
          QStringLiteral("Goes on until there were so many faults of each kind."), QStringLiteral("N"),
          QStringLiteral("1")},
         {QStringLiteral("pairs"),
          QStringLiteral("Goes on until each pair of a kind and a state was met so often."),
          QStringLiteral("N"), QStringLiteral("0")},
         {QStringLiteral("operations"), QStringLiteral("Goes on until the application did so much."),
          QStringLiteral("N"), QStringLiteral("0")}});
    parser.process(*QCoreApplication::instance());
    const auto number = [&](const char* name) { return parser.value(QLatin1String(name)).toLong(); };
    Options options;
    options.goals = {number("injections"), number("pairs"), number("operations")};
    if (parser.isSet(QStringLiteral("seed"))) {
        options.seed = parser.value(QStringLiteral("seed")).toULongLong();
    }
    if (parser.isSet(QStringLiteral("kind"))) {
        options.aim.kind = &KindNamed(parser.value(QStringLiteral("kind")).toStdString());
    }
    options.aim.state = parser.value(QStringLiteral("state")).toLatin1();
    return options;
}

/// All processors but one would only wait for their turn, and wake each other up.
void StayOnOneProcessor()
{
    cpu_set_t processors;
    CPU_ZERO(&processors);
    CPU_SET(static_cast<unsigned>(sched_getcpu()), &processors);
    sched_setaffinity(0, sizeof(processors), &processors);
}

/// Qt rounds its timers to parts of the second, so every round begins with a whole one.
void AwaitWholeSecond()
{
    constexpr std::chrono::seconds Alignment{10};
    VirtualTime::Sleep(Alignment - VirtualTime::Now() % Alignment);
}

/// Prints what did not hold, and how to see it again. True if all held.
bool IsHeld(const std::string& finding, std::uint64_t seed, const Aim& aim)
{
    if (finding.empty()) {
        return true;
    }
    std::printf("%s\n  replay: --seed %llu", finding.c_str(), static_cast<unsigned long long>(seed));
    if (aim.kind != nullptr) {
        std::printf(" --kind \"%s\"", aim.kind->name);
    }
    if (!aim.state.isEmpty()) {
        std::printf(" --state \"%s\"", aim.state.constData());
    }
    std::printf("\n");
    std::fflush(stdout);
    return false;
}

/// Where it is about no state, every fifth round has single exchanges, and the others have the whole machine.
/// True if all held.
bool RunRound(std::uint64_t seed, const Aim& aim, Counts& counts)
{
    constexpr std::uint64_t RoundsWithExchanges = 5;
    if (aim.state.isEmpty() ? seed % RoundsWithExchanges == 0 : aim.state == ExchangeRound::State) {
        return IsHeld(ExchangeRound(seed, aim.kind, counts).Run(), seed, aim);
    }
    AwaitWholeSecond();
    Round round(seed, {aim.kind, 0, aim.state}, {}, counts);
    const std::string finding = round.Run();
    return IsHeld(finding.empty() ? finding : finding + "\n" + round.LastLines(), seed, aim);
}

void PrintProgress(std::uint64_t rounds, const Plan& plan)
{
    std::printf("%llu rounds, %ld operations, %zu kinds and %zu pairs to go\n",
                static_cast<unsigned long long>(rounds), plan.counts.operations, plan.KindsNotMet().size(),
                plan.PairsNotMet().size());
    std::fflush(stdout);
}

/// Runs rounds until the goals are reached. Returns how many findings there were.
long Run(Plan& plan)
{
    constexpr std::uint64_t RoundsBetweenLines = 2000;
    long findings = 0;
    long resources = std::numeric_limits<long>::max(); // The first round brings what stays.
    std::uint64_t seed = 1;
    for (auto aim = plan.Next(seed); aim; aim = plan.Next(++seed)) {
        findings += RunRound(seed, *aim, plan.counts) ? 0 : 1;
        const long present = CountResources(resources);
        if (present > resources) {
            std::printf("seed %llu leaves a descriptor or a thread behind.\n",
                        static_cast<unsigned long long>(seed));
            ++findings;
        }
        resources = present;
        if (seed % RoundsBetweenLines == 0) {
            PrintProgress(seed, plan);
        }
    }
    return findings;
}

void PrintTable(const Plan& plan, long findings)
{
    for (const Pair& pair : plan.PairsNotMet()) {
        const auto met = plan.counts.pairs.find(pair);
        std::printf("%s: \"%s\" met %ld times, in %d rounds about it\n", pair.second.c_str(),
                    pair.first.c_str(), met != plan.counts.pairs.end() ? met->second : 0,
                    plan.AimedRounds(pair));
    }
    std::printf("%-32s %12s %8s\n", "kind", "injections", "states");
    for (const auto& [kind, count] : plan.counts.kinds) {
        const auto isOfKind = [&kind = kind](const auto& pair) { return pair.first.first == kind; };
        std::printf(
            "%-32s %12ld %8ld\n", kind.c_str(), count,
            static_cast<long>(std::count_if(plan.counts.pairs.begin(), plan.counts.pairs.end(), isOfKind)));
    }
    std::printf(
        "%zu pairs of a kind and a state, %ld operations, %ld starts, %ld watched aborts, %ld findings\n",
        plan.counts.pairs.size(), plan.counts.operations, plan.counts.starts, plan.counts.aborts, findings);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_HASH_SEED", "0");
    StayOnOneProcessor();
    const QCoreApplication application(argc, argv);
    const Options options = ParseOptions();
    Plan plan(options.goals, options.aim);
    if (options.seed) {
        return RunRound(*options.seed, options.aim, plan.counts) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const long findings = Run(plan);
    PrintTable(plan, findings);
    return findings == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
