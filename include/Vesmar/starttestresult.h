#pragma once

namespace Vesmar
{

/// The result of the instrument's start test, reported while no measurement function is active.
///
/// The meaning of 0 to 13 is the instrument's own; the library distinguishes only 14 and 15, and only in RCD
/// tests.
enum class StartTestResult : int {
    Unknown = -1, ///< No result seen yet.
    Status0 = 0,
    Status1 = 1,
    Status2 = 2,
    Status3 = 3,
    Status4 = 4,
    Status5 = 5,
    Status6 = 6,
    Status7 = 7,
    Status8 = 8,
    Status9 = 9,
    Status10 = 10,
    Status11 = 11,
    Status12 = 12,
    Status13 = 13,
    Status14 = 14,
    Status15 = 15
};

} // namespace Vesmar
