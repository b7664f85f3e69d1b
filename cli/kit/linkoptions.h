#pragma once

#include <chrono>

namespace Cli
{

/// What every verb takes; all but the first are for those that talk to the instrument.
struct LinkOptions {
    bool isJson = false;
    bool isTraceWanted = false;
    std::chrono::milliseconds timeout{10000};
};

} // namespace Cli
