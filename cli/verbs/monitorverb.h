#pragma once

#include <optional>

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar monitor`: shows every change of every property as it happens.
class MonitorVerb : public Verb
{
public:
    explicit MonitorVerb(CLI::App& program);

    /// How long to monitor, counted from the moment that the link is up. Without it, until a signal comes.
    const std::optional<std::chrono::milliseconds>& Duration() const { return _duration; }

    int Run() override;

private:
    std::optional<std::chrono::milliseconds> _duration;
};

} // namespace Cli
