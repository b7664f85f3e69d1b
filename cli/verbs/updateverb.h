#pragma once

#include "cli/kit/verb.h"
#include "cli/update/updaterun.h"

namespace Cli
{

/// `vesmar update`: sends the instrument new firmware.
class UpdateVerb : public Verb
{
public:
    explicit UpdateVerb(CLI::App& program);

    /// What the command line asks for.
    const UpdateOptions& Update() const { return _update; }

    int Run() override;

private:
    UpdateOptions _update;
};

} // namespace Cli
