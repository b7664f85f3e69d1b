#pragma once

#include <cmath>
#include <limits>

namespace Vesmar
{

/// Cuts the fraction off. What an int cannot hold ends at its limits, and what is not a number is 0.
inline int Truncate(float value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= static_cast<float>(Limits::max())) {
        return Limits::max();
    }
    if (value <= static_cast<float>(Limits::min())) {
        return Limits::min();
    }
    return static_cast<int>(value);
}

} // namespace Vesmar
