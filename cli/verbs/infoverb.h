#pragma once

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar info`: shows the instrument's identity and clocks, and ends.
class InfoVerb : public Verb
{
public:
    explicit InfoVerb(CLI::App& program);

    int Run() override;
};

} // namespace Cli
