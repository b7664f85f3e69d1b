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
    VesmarClient::MeasurementTimeouts Timeouts() const;

    int Run() override;

private:
    void CheckFunction() const;
    MeasurementView::Form OutputForm() const;

    std::chrono::milliseconds _prepareTimeout{VesmarClient::MeasurementTimeouts().prepare};
    std::chrono::milliseconds _stopTimeout{VesmarClient::MeasurementTimeouts().stop};
    MeasureFunctions _functions;
};

} // namespace Cli
