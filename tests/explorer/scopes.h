#pragma once

#include <vector>

#include "explorer/graph.h"

/// The parts that the search is divided into: each brings some of the application's calls and some of the
/// instrument's freedoms together. `isWhole` adds every fault of the line and every surprise to each of them.
std::vector<Scope> Scopes(bool isWhole);
