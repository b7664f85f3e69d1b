#pragma once

#include <string>
#include <vector>

namespace Cli
{

/// The candidate that the word was probably meant as: the one with the fewest letters to change, add, leave
/// out or swap. Empty if none is near.
std::string NearestTo(const std::string& word, const std::vector<std::string>& candidates);

} // namespace Cli
