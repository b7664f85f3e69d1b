#pragma once

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar restart`: restarts the instrument into its normal mode.
class RestartVerb : public Verb
{
public:
    explicit RestartVerb(CLI::App& program);

    std::chrono::milliseconds ConfirmTimeout() const { return _confirmTimeout; }

    int Run() override;

private:
    std::chrono::milliseconds _confirmTimeout = UsualConfirmTimeout;
};

} // namespace Cli
