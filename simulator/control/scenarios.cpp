#include "simulator/control/scenarios.h"

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

std::optional<NamedScenario> FindScenario(const QString& name)
{
    for (const NamedScenario& scenario : Scenarios) {
        if (name == QLatin1String(scenario.name)) {
            return scenario;
        }
    }
    return std::nullopt;
}

QString Synopsis(const NamedFault& fault)
{
    return QLatin1String(fault.name);
}

QString Synopsis(const NamedScenario& scenario)
{
    return QLatin1String(scenario.name) + QLatin1String(scenario.number ? " N" : "");
}

} // namespace Simulator
