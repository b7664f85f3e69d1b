#pragma once

#include <chrono>

namespace Cli
{

/// The options of every verb. All but the first are for the verbs that talk to the instrument.
struct LinkOptions {
    bool isJson = false;
    bool isTraceWanted = false;
    std::chrono::milliseconds timeout{10000};
};

} // namespace Cli
