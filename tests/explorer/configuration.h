#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

/// All that decides what the machine and the instrument do next. What decides nothing is not in it: the
/// readings, the dates, the identity, the progress of an update and the seconds that have passed; nor is
/// `NewMeasurement`, because whoever reads it has asked for a status in the same step.
struct Configuration {
    // The runner.
    std::int16_t state = 0;
    std::int16_t isEntryPending = 0;

    // The requests of the application.
    std::int16_t settings = 0;
    std::int16_t isRestartRequested = 0;
    std::int16_t isPrepareRequested = 0;
    std::int16_t isStartRequested = 0;
    std::int16_t isAbortRequested = 0;
    std::int16_t isUpdateRequested = 0;
    std::int16_t isModeActive = 0;
    std::int16_t configurationRequests = 0; ///< A bit for each of the five.

    // What the machine has made of them.
    std::int16_t hasCommunicationError = 0;
    std::int16_t isTimeElapsed = 0;
    std::int16_t isRunning = 0;
    std::int16_t measurementStatus = 0;
    std::int16_t isTimerActive = 0;
    std::int16_t timeLimit = 0; ///< Of the timer while it is active.

    // What the machine knows of the instrument.
    std::int16_t mode = 0;
    std::int16_t function = 0;
    std::int16_t startTest = 0;
    std::int16_t functionState = 0;
    std::int16_t hasError = 0; ///< No state remembers which one.
    std::int16_t results = 0;

    // The instrument.
    std::int16_t instrumentFunction = 0;
    std::int16_t instrumentState = 0;
    std::int16_t instrumentFlags = 0;

    /// The members of the current state, byte for byte; zeros while its entry, which resets them, is pending.
    std::array<unsigned char, 80> members{};

    std::string_view Bytes() const { return {reinterpret_cast<const char*>(this), sizeof(*this)}; }
    bool operator==(const Configuration& other) const { return Bytes() == other.Bytes(); }
};

static_assert(std::has_unique_object_representations_v<Configuration>, "equal ones are equal byte for byte");

struct ConfigurationHash {
    std::size_t operator()(const Configuration& configuration) const
    {
        return std::hash<std::string_view>()(configuration.Bytes());
    }
};
