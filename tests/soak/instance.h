#pragma once

#include <atomic>
#include <cstdint>

/// What an instance has done so far. It lies in memory that the processes share.
struct Tally {
    std::atomic<std::uint64_t> seed; ///< Of its present round.
    std::atomic<long> operations;
    std::atomic<long> starts;
    std::atomic<long> aborts; ///< Those whose time was watched.
    std::atomic<long> exchanges;
    std::atomic<long> faults;
    std::atomic<long> findings;
    std::atomic<long> heldUpMs; ///< How long the machine has held up the driver's worker.
};

/// Lets the library live one round after the other, without end, and prints what does not hold. The seeds are
/// the first one and every `stride` further.
[[noreturn]] void RunInstance(std::uint64_t firstSeed, std::uint64_t stride, Tally& tally);
