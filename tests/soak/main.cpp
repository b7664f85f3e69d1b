#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <new>
#include <numeric>
#include <thread>
#include <vector>

#include "soak/instance.h"
#include "soak/samples.h"

namespace
{

constexpr long MostInstances = 32;
constexpr long SamplesOfRun = 60;
constexpr long LongestPeriod = 60; ///< In seconds.

struct Instance {
    pid_t process = 0;
    bool isAlive = true;
    const Tally* tally = nullptr;
    std::vector<Sample> samples;
};

Tally* SharedTallies()
{
    void* const memory = mmap(nullptr, MostInstances * sizeof(Tally), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        std::perror("no shared memory");
        std::exit(2);
    }
    return new (memory) Tally[MostInstances]();
}

/// The process ends with this one, whatever ends this one.
Instance StartInstance(std::uint64_t seed, std::uint64_t stride, Tally& tally)
{
    const pid_t parent = getpid();
    Instance instance;
    instance.tally = &tally;
    instance.process = fork();
    if (instance.process < 0) {
        std::perror("no process could be started");
        std::exit(2);
    }
    if (instance.process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            std::exit(2);
        }
        RunInstance(seed, stride, tally);
    }
    return instance;
}

/// A figure of the samples, and by how much it may differ in the end.
struct Figure {
    const char* name;
    long Sample::*value;
    long allowed;
};

/// Which pages of the heap are in use differs from moment to moment by less, and so does what a short run
/// uses for the first time in its end. A leak of 120 bytes a second comes to more in an hour.
constexpr long AllowedMemory = 200;
constexpr std::array<Figure, 3> Figures{{{"memory/kB", &Sample::memory, AllowedMemory},
                                         {"descriptors", &Sample::descriptors, 0},
                                         {"threads", &Sample::threads, 0}}};

long Sum(const std::vector<Instance>& instances, std::atomic<long> Tally::*count)
{
    return std::accumulate(instances.begin(), instances.end(), 0L, [count](long sum, const Instance& each) {
        return sum + (each.tally->*count).load();
    });
}

void PrintHead()
{
    std::printf("%8s", "minutes");
    for (const Figure& figure : Figures) {
        std::printf(" %11s %7s", figure.name, "largest");
    }
    std::printf(" %10s %8s %8s %10s %8s %7s %8s\n", "operations", "starts", "aborts", "exchanges", "faults",
                "held up", "findings");
}

/// Whatever `of` says of each.
template <typename Function>
std::vector<long> OfEach(const std::vector<Instance>& instances, Function of)
{
    std::vector<long> values;
    std::transform(instances.begin(), instances.end(), std::back_inserter(values), of);
    return values;
}

/// Of each figure the median and the largest of all instances; and what they have done together.
void PrintLine(const std::vector<Instance>& instances, double seconds)
{
    std::printf("%8.2f", seconds / 60);
    for (const Figure& figure : Figures) {
        const std::vector<long> values =
            OfEach(instances, [&](const Instance& each) { return each.samples.back().*figure.value; });
        std::printf(" %11ld %7ld", Median(values), *std::max_element(values.begin(), values.end()));
    }
    const double heldUp = static_cast<double>(Sum(instances, &Tally::heldUpMs)) / 1000;
    std::printf(" %10ld %8ld %8ld %10ld %8ld %5.1f %% %8ld\n", Sum(instances, &Tally::operations),
                Sum(instances, &Tally::starts), Sum(instances, &Tally::aborts),
                Sum(instances, &Tally::exchanges), Sum(instances, &Tally::faults),
                100 * heldUp / (seconds * static_cast<double>(instances.size())),
                Sum(instances, &Tally::findings));
    std::fflush(stdout);
}

/// Adds a sample of each. Returns how many have ended, which none should.
long TakeSamples(std::vector<Instance>& instances)
{
    long ended = 0;
    for (Instance& instance : instances) {
        int status = 0;
        if (instance.isAlive && waitpid(instance.process, &status, WNOHANG) != 0) {
            instance.isAlive = false;
            ++ended;
            std::printf("seed %llu: the process has ended, with status %d\n",
                        static_cast<unsigned long long>(instance.tally->seed.load()), status);
        }
        instance.samples.push_back(ReadSample(instance.process));
    }
    return ended;
}

/// The largest of a figure in some quarters of the time, from 0 to 4.
long Largest(const Instance& instance, const Figure& figure, std::size_t begin, std::size_t end)
{
    constexpr std::size_t Quarters = 4;
    const std::size_t count = instance.samples.size();
    long largest = 0;
    for (std::size_t place = count * begin / Quarters; place < count * end / Quarters; ++place) {
        largest = std::max(largest, instance.samples.at(place).*figure.value);
    }
    return largest;
}

/// Prints by how much each figure has grown, and returns for how many instances it is too much. The largest
/// of the last quarter of the time is held against the largest of the first half, in which everything was
/// used for the first time and often. What is in use at a moment differs: the port is open or not.
long CheckGrowth(const std::vector<Instance>& instances)
{
    long grown = 0;
    for (const Figure& figure : Figures) {
        const std::vector<long> growths = OfEach(instances, [&](const Instance& each) {
            return Largest(each, figure, 3, 4) - Largest(each, figure, 0, 2);
        });
        const auto isTooMuch = [&](long growth) { return growth > figure.allowed; };
        const long count = std::count_if(growths.begin(), growths.end(), isTooMuch);
        std::printf("%s: grown by %ld, at the most by %ld, where %ld is allowed; %ld of %zu by more\n",
                    figure.name, Median(growths), *std::max_element(growths.begin(), growths.end()),
                    figure.allowed, count, growths.size());
        grown += count;
    }
    return grown;
}

void End(const std::vector<Instance>& instances)
{
    for (const Instance& instance : instances) {
        if (instance.isAlive) {
            kill(instance.process, SIGKILL);
            waitpid(instance.process, nullptr, 0);
        }
    }
}

long Run(std::vector<Instance>& instances, long seconds)
{
    const long period = std::clamp(seconds / SamplesOfRun, 1L, LongestPeriod);
    long ended = 0;
    const auto begin = std::chrono::steady_clock::now();
    PrintHead();
    for (long elapsed = period; elapsed <= seconds; elapsed += period) {
        std::this_thread::sleep_until(begin + std::chrono::seconds(elapsed));
        ended += TakeSamples(instances);
        PrintLine(instances, static_cast<double>(elapsed));
    }
    return ended;
}

} // namespace

/// soak SECONDS [SEED]: with a seed one instance, which begins with that round.
int main(int argc, char** argv)
{
    const long seconds = argc > 1 ? std::atol(argv[1]) : 0;
    const bool isReplay = argc > 2;
    const auto firstSeed =
        isReplay ? std::strtoull(argv[2], nullptr, 10) : static_cast<unsigned long long>(std::time(nullptr));
    const long count = isReplay ? 1 : MostInstances;
    Tally* const tallies = SharedTallies();
    std::vector<Instance> instances;
    std::printf("%ld instances, seeds from %llu\n", count, firstSeed);
    std::fflush(stdout);
    for (long number = 0; number < count; ++number) {
        instances.push_back(StartInstance(firstSeed + static_cast<std::uint64_t>(number),
                                          static_cast<std::uint64_t>(count), tallies[number]));
    }
    const long ended = Run(instances, seconds);
    End(instances);
    const long grown = CheckGrowth(instances);
    const long findings = Sum(instances, &Tally::findings) + ended;
    std::printf("%ld findings\n", findings);
    return findings + grown == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
