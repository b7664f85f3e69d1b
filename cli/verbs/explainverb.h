#pragma once

#include <optional>

#include "cli/kit/verb.h"
#include "client/words/errorguide.h"

namespace Cli
{

/// `vesmar explain`: says what an error means, what may have caused it and what to do, or lists them all. It
/// talks to no instrument.
class ExplainVerb : public Verb
{
public:
    explicit ExplainVerb(CLI::App& program);

    /// The error that is asked for; none for a list of all.
    std::optional<Vesmar::Error> Wanted() const { return _wanted; }

    int Run() override;

private:
    void ParseWanted(const std::string& numberOrName);

    std::optional<Vesmar::Error> _wanted;
};

} // namespace Cli
