#pragma once

#include <map>
#include <string>

#include "explorer/graph.h"

/// What must hold of every configuration, and what does not.
namespace Rules
{

/// A finding: what does not hold, and where.
struct Finding {
    std::string rule;
    std::size_t begin; ///< The configuration that it begins in.
    std::size_t end;   ///< The configuration that it comes to; the same for a rule of a single step.
    std::string last;  ///< What happens at the beginning, in words.
};

/// Calls `report` with every finding. Each scope's operations begin with those of `Always`.
void Check(const Graph& graph, const std::function<void(const Finding&)>& report);

/// The operations that every scope begins with, by their position.
enum Always : std::size_t { Wait, Abort };

} // namespace Rules
