#include "simulator/scenarios.h"

namespace Simulator
{

std::optional<Fault> FindFault(const QString& name)
{
    for (const NamedFault& fault : Faults) {
        if (name == QLatin1String(fault.name)) {
            return fault.fault;
        }
    }
    return std::nullopt;
}

std::optional<Scenario> FindScenario(const QString& name)
{
    for (const NamedScenario& scenario : Scenarios) {
        if (name == QLatin1String(scenario.name)) {
            return scenario.scenario;
        }
    }
    return std::nullopt;
}

} // namespace Simulator
