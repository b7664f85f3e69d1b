#pragma once

#include <array>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "explorer/configuration.h"
#include "explorer/machine.h"

/// The part of the application's calls that one search is about.
struct Scope {
    const char* name;
    Freedom freedom; ///< What the instrument may do.
    std::vector<Operation> operations;
};

/// A rule that was broken, and an example of how: the configuration before and the words of the step.
struct Breach {
    std::size_t configuration;
    std::string story;
};

/// Every configuration that can be reached within a scope, by the shortest way first, and the ways between
/// them that a faultless instrument leaves open.
class Graph
{
public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    /// What a step does with a faultless instrument.
    struct UsualStep {
        std::size_t target = None;
        bool sendsStop = false;
    };

    struct Edge {
        std::size_t from;
        std::size_t to;
    };

    /// Searches from a machine that was just created. With `interferes` the application calls not only
    /// between two steps but in the middle of the exchanges, too.
    void Search(Machine& machine, const Scope& scope, bool interferes);

    std::size_t Size() const { return _configurations.size(); }
    const Configuration& At(std::size_t index) const { return *_configurations.at(index); }
    std::size_t CountEdges() const { return _edgeCount; }

    const UsualStep& StepFrom(std::size_t index) const { return _usualSteps.at(index); }
    /// Where an operation leads: one for each operation of the scope.
    std::size_t After(std::size_t index, std::size_t operation) const
    {
        return _afterOperation.at(index * _operationCount + operation);
    }
    std::size_t CountOperations() const { return _operationCount; }

    const std::array<std::size_t, Vesmar::TransitionMap.size()>& RowCounts() const { return _rowCounts; }
    const std::map<std::string, std::vector<Breach>>& Breaches() const { return _breaches; }

    /// The configuration in one line, for a reader of a path.
    std::string Describe(std::size_t index) const;
    /// The way from the start to a configuration, a line for each thing that happens.
    std::string PathTo(std::size_t index) const;

private:
    std::size_t Add(const Configuration& configuration, std::size_t from, const std::string& story);
    void Expand(Machine& machine, const Scope& scope, std::size_t index, bool interferes);
    void Record(const StepRecord& record, std::size_t from);

    struct Origin {
        std::size_t from;
        std::string story;
    };

    std::unordered_map<Configuration, std::size_t, ConfigurationHash> _indexes;
    std::vector<const Configuration*> _configurations;
    std::vector<Origin> _origins;
    std::vector<UsualStep> _usualSteps;
    std::vector<std::size_t> _afterOperation;
    std::size_t _operationCount = 0;
    std::size_t _edgeCount = 0;
    std::array<std::size_t, Vesmar::TransitionMap.size()> _rowCounts{};
    std::map<std::string, std::vector<Breach>> _breaches;
};
