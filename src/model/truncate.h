#pragma once

#include <cmath>
#include <limits>

namespace Vesmar
{

/// The value without its fraction. A value that an int cannot hold becomes the limit that is nearer, and one
/// that is not a number becomes 0.
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
