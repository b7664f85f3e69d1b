#include "explorer/rules.h"

#include <algorithm>
#include <vector>

namespace
{

/// More steps than any end takes with a faultless instrument.
constexpr int Patience = 60;

bool IsOutputOn(const Configuration& configuration)
{
    InstrumentState instrument;
    instrument.function = static_cast<std::int8_t>(configuration.instrumentFunction);
    instrument.functionState = static_cast<std::int8_t>(configuration.instrumentState);
    instrument.isStartPending = (configuration.instrumentFlags & 1) != 0;
    return instrument.IsOutputOn();
}

bool IsCounting(const Configuration& configuration)
{
    return configuration.isTimerActive != 0 && configuration.timeLimit >= 0;
}

bool IsEndless(const Configuration& configuration)
{
    return configuration.isTimerActive != 0 && configuration.timeLimit < 0;
}

bool HasRequest(const Configuration& configuration)
{
    return configuration.isRestartRequested != 0 || configuration.isUpdateRequested != 0 ||
           configuration.configurationRequests != 0 || configuration.isPrepareRequested != 0 ||
           configuration.isStartRequested != 0 || configuration.isAbortRequested != 0;
}

/// Whether every request that is left waits for something that the application has not asked for yet.
bool MayWait(const Configuration& configuration)
{
    const bool isOfMeasurement = configuration.isRestartRequested == 0 &&
                                 configuration.isUpdateRequested == 0 &&
                                 configuration.configurationRequests == 0;
    const bool isOfNextMeasurement = isOfMeasurement && configuration.isAbortRequested == 0;
    switch (static_cast<Vesmar::StateId>(configuration.state)) {
    case Vesmar::StateId::Monitoring: // They wait for measurement mode, which also withdraws an abort.
        return isOfMeasurement && configuration.isModeActive == 0;
    case Vesmar::StateId::PreparingMeasurement: // A start waits for a preparation.
        return isOfNextMeasurement && configuration.isPrepareRequested == 0;
    case Vesmar::StateId::RCDMonitoring: // The start of the test consumes both.
        return isOfNextMeasurement && configuration.isStartRequested == 0;
    case Vesmar::StateId::AwaitUpdateAction: // The instrument does nothing else in update mode.
        return configuration.isRestartRequested == 0 && configuration.isUpdateRequested == 0;
    default: // The next preparation waits for the end of an endless measurement.
        return isOfNextMeasurement && IsEndless(configuration);
    }
}

bool IsAtRest(const Configuration& configuration)
{
    constexpr int NormalMode = 0;
    return configuration.state == static_cast<int>(Vesmar::StateId::Monitoring) &&
           !HasRequest(configuration) && configuration.isModeActive == 0 &&
           configuration.hasCommunicationError == 0 && configuration.instrumentFunction == 0 &&
           configuration.instrumentFlags / 8 == NormalMode;
}

/// What happens when nobody does anything: the time of the measurement passes, and then the machine steps.
std::size_t Next(const Graph& graph, std::size_t index)
{
    return IsCounting(graph.At(index)) ? graph.After(index, Rules::Wait) : graph.StepFrom(index).target;
}

/// Whether it starts or measures a function outside of an RCD test.
bool IsMeasuring(const Configuration& configuration)
{
    switch (static_cast<Vesmar::StateId>(configuration.state)) {
    case Vesmar::StateId::StartingMeasurement:
    case Vesmar::StateId::SingleMeasurementRunning:
    case Vesmar::StateId::ContinuousMeasurementRunning:
    case Vesmar::StateId::HVTestContinuousMeasurementRunning:
        return true;
    default:
        return false;
    }
}

/// Lets the machine alone until the condition holds, with patience. Returns the configuration that it comes
/// to.
template <typename Condition>
std::size_t PassUntil(const Graph& graph, std::size_t index, Condition condition)
{
    for (int step = 0; step < Patience && !condition(index); ++step) {
        index = Next(graph, index);
    }
    return index;
}

/// Whether from each configuration there is a way back, of operations and of a faultless instrument's steps.
std::vector<bool> FindRecoverable(const Graph& graph)
{
    std::vector<std::vector<std::size_t>> origins(graph.Size());
    std::vector<std::size_t> found;
    std::vector<bool> isRecoverable(graph.Size());
    for (std::size_t index = 0; index < graph.Size(); ++index) {
        origins.at(graph.StepFrom(index).target).push_back(index);
        for (std::size_t operation = 0; operation < graph.CountOperations(); ++operation) {
            origins.at(graph.After(index, operation)).push_back(index);
        }
        if (IsAtRest(graph.At(index))) {
            isRecoverable.at(index) = true;
            found.push_back(index);
        }
    }
    while (!found.empty()) {
        const std::size_t target = found.back();
        found.pop_back();
        for (const std::size_t origin : origins.at(target)) {
            if (!isRecoverable.at(origin)) {
                isRecoverable.at(origin) = true;
                found.push_back(origin);
            }
        }
    }
    return isRecoverable;
}

} // namespace

namespace Rules
{

void Check(const Graph& graph, const std::function<void(const Finding&)>& report)
{
    const std::vector<bool> isRecoverable = FindRecoverable(graph);
    const auto isOff = [&graph](std::size_t index) { return !IsOutputOn(graph.At(index)); };
    const auto isOffOrStops = [&](std::size_t index) {
        const Graph::UsualStep& step = graph.StepFrom(index);
        return isOff(index) || step.sendsStop || isOff(step.target);
    };
    // While a function is measured, the next step sees the abort and the one after that stops: 225 ms.
    const auto endOfAbort = [&](std::size_t index) {
        const std::size_t aborted = graph.After(index, Abort);
        return IsMeasuring(graph.At(index)) ? graph.StepFrom(aborted).target
                                            : PassUntil(graph, aborted, isOffOrStops);
    };
    const auto isDone = [&graph](std::size_t index) {
        return !HasRequest(graph.At(index)) || MayWait(graph.At(index));
    };
    for (std::size_t index = 0; index < graph.Size(); ++index) {
        if (!isRecoverable.at(index)) {
            report({"the machine cannot be brought back to monitoring", index, index, ""});
        }
        const auto endsOrMayGoOn = [&](std::size_t at) { return isOff(at) || IsEndless(graph.At(at)); };
        if (const auto end = PassUntil(graph, index, endsOrMayGoOn); !endsOrMayGoOn(end)) {
            report({"a measurement never ends", index, end, ""});
        }
        if (const auto end = endOfAbort(index); !isOffOrStops(end)) {
            report({"an abort does not stop the instrument", index, end, "the application aborts"});
        }
        if (const auto end = PassUntil(graph, index, isDone); !isDone(end)) {
            report({"a request stays pending", index, end, ""});
        }
    }
    for (const auto& [rule, breaches] : graph.Breaches()) {
        for (const Breach& breach : breaches) {
            report({rule, breach.configuration, breach.configuration, breach.story});
        }
    }
}

} // namespace Rules
