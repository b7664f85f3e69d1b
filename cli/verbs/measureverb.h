#pragma once

#include "cli/kit/verb.h"
#include "cli/measure/measurefunctions.h"

namespace Cli
{

/// How long a measurement may keep one waiting.
struct MeasureLimits {
    std::chrono::milliseconds prepare{10000}; ///< For preparing, and then again for starting.
    std::chrono::milliseconds stop{15000};    ///< For stopping, and for its confirmation.
    std::chrono::milliseconds cleanUp{5000};  ///< For a clean-up, whose end nobody tells.
};

/// `vesmar measure FUNCTION`: runs one measurement.
class MeasureVerb : public Verb
{
public:
    explicit MeasureVerb(CLI::App& program);

    const MeasureFunctions& Functions() const { return _functions; }
    const MeasureLimits& Limits() const { return _limits; }

    int Run() override;

private:
    void CheckFunction() const;

    MeasureLimits _limits;
    MeasureFunctions _functions;
};

} // namespace Cli
