#include "explorer/graph.h"

#include <algorithm>

void Graph::Search(Machine& machine, const Scope& scope, bool interferes)
{
    _operationCount = scope.operations.size();
    machine.SetFreedom(scope.freedom);
    Add(machine.Save(), None, "the machine is enabled");
    for (std::size_t index = 0; index < Size(); ++index) {
        Expand(machine, scope, index, interferes);
    }
}

void Graph::Expand(Machine& machine, const Scope& scope, std::size_t index, bool interferes)
{
    const Configuration& configuration = At(index);
    for (const Operation& operation : scope.operations) {
        machine.Restore(configuration);
        operation.perform(machine);
        _afterOperation.push_back(Add(machine.Save(), index, "the application " + operation.name));
    }
    static const std::vector<Operation> Nothing;
    Choices choices;
    do {
        machine.Restore(configuration);
        const StepRecord record = machine.Step(choices, interferes ? scope.operations : Nothing);
        const std::size_t target = Add(machine.Save(), index, "step " + record.frames + " " + record.story);
        Record(record, index);
        if (choices.AreUsual()) {
            const bool sendsStop = record.frames.find('h') != std::string::npos;
            _usualSteps.push_back({target, sendsStop});
        }
    } while (choices.Advance());
}

void Graph::Record(const StepRecord& record, std::size_t from)
{
    if (record.row >= 0) {
        ++_rowCounts.at(static_cast<std::size_t>(record.row));
    }
    for (const std::string& sin : record.sins) {
        _breaches[sin].push_back({from, "step " + record.frames + " " + record.story});
    }
}

std::size_t Graph::Add(const Configuration& configuration, std::size_t from, const std::string& story)
{
    ++_edgeCount;
    const auto [entry, isNew] = _indexes.try_emplace(configuration, Size());
    if (isNew) {
        _configurations.push_back(&entry->first);
        _origins.push_back({from, story});
    }
    return entry->second;
}

std::string Graph::PathTo(std::size_t index) const
{
    std::vector<std::string> lines;
    for (; index != None; index = _origins.at(index).from) {
        lines.push_back("    " + _origins.at(index).story + "\n        -> " + Describe(index) + "\n");
    }
    std::string path;
    std::for_each(lines.rbegin(), lines.rend(), [&path](const std::string& line) { path += line; });
    return path;
}

std::string Graph::Describe(std::size_t index) const
{
    const Configuration& configuration = At(index);
    std::string text = Vesmar::StateTree.at(static_cast<std::size_t>(configuration.state)).name;
    text += " status " + std::to_string(configuration.measurementStatus);
    const auto add = [&text](bool holds, const char* words) { text += holds ? words : ""; };
    add(configuration.isModeActive != 0, " mode");
    add(configuration.isPrepareRequested != 0, " prepare");
    add(configuration.isStartRequested != 0, " start");
    add(configuration.isAbortRequested != 0, " abort");
    add(configuration.isRestartRequested != 0, " restart");
    add(configuration.isUpdateRequested != 0, " update");
    add(configuration.configurationRequests != 0, " configure");
    add(configuration.hasCommunicationError != 0, " link error");
    add(configuration.isRunning != 0, " running");
    add(configuration.isTimerActive != 0, " timer");
    text += "; settings " + std::to_string(configuration.settings);
    add(configuration.hasError != 0, ", an error");
    text += "; instrument: function " + std::to_string(configuration.instrumentFunction);
    text += " in state " + std::to_string(configuration.instrumentState);
    text += ", flags " + std::to_string(configuration.instrumentFlags);
    return text;
}
