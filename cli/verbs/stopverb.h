#pragma once

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar stop`: ends whatever runs at the instrument, and proves it.
class StopVerb : public Verb
{
public:
    explicit StopVerb(CLI::App& program);

    int Run() override;
};

} // namespace Cli
