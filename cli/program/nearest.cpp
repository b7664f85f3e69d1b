#include "cli/program/nearest.h"

#include <algorithm>

namespace Cli
{

namespace
{

/// How many letters have to be changed, added, left out or swapped with their neighbour.
std::size_t Distance(const std::string& from, const std::string& to)
{
    std::vector<std::vector<std::size_t>> steps(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t j = 0; j <= to.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
            }
        }
    }
    return steps.back().back();
}

} // namespace

std::string NearestTo(const std::string& word, const std::vector<std::string>& candidates)
{
    std::string nearest;
    std::size_t least = word.size() / 3 + 1; // More would be another word.
    for (const std::string& candidate : candidates) {
        const bool isBegun = word.size() > 2 && candidate.compare(0, word.size(), word) == 0;
        const std::size_t distance = isBegun ? 0 : Distance(word, candidate);
        if (distance < least || (distance == least && nearest.empty())) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace Cli
