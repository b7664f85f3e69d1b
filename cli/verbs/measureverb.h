#pragma once

#include "cli/kit/verb.h"
#include "cli/measure/measurefunctions.h"
#include "cli/measure/measurementrun.h"

namespace Cli
{

/// `vesmar measure FUNCTION`: runs one measurement.
class MeasureVerb : public Verb
{
public:
    explicit MeasureVerb(CLI::App& program);

    // What the command line asks for.
    const MeasureFunctions& Functions() const { return _functions; }
    const MeasureLimits& Limits() const { return _limits; }

    int Run() override;

private:
    void CheckFunction() const;

    MeasureLimits _limits;
    MeasureFunctions _functions;
};

} // namespace Cli
