#pragma once

#include <array>

#include <QByteArray>

namespace Simulator
{

/// The six values of a result.
using Values = std::array<float, 6>;

/// Returns the values as they stand on the line: little-endian single-precision numbers.
QByteArray PackValues(const Values& values);

} // namespace Simulator
