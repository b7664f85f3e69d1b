#pragma once

namespace Vesmar
{

/// The result of the instrument's start test, reported in four bits while no measurement function is active.
///
/// What 0 to 13 mean is known to the instrument alone. The library looks at the value in RCD tests only: with
/// 14 or 15 it goes on, with any other value it asks again.
enum class StartTestResult : int {
    Unknown = -1,  ///< No result has arrived yet, or the preparation of a Ub/Re test failed with 400.
    Status0 = 0,   ///< Result 0; its meaning is the instrument's own.
    Status1 = 1,   ///< Result 1; its meaning is the instrument's own.
    Status2 = 2,   ///< Result 2; its meaning is the instrument's own.
    Status3 = 3,   ///< Result 3; its meaning is the instrument's own.
    Status4 = 4,   ///< Result 4; its meaning is the instrument's own.
    Status5 = 5,   ///< Result 5; its meaning is the instrument's own.
    Status6 = 6,   ///< Result 6; its meaning is the instrument's own.
    Status7 = 7,   ///< Result 7; its meaning is the instrument's own.
    Status8 = 8,   ///< Result 8; its meaning is the instrument's own.
    Status9 = 9,   ///< Result 9; its meaning is the instrument's own.
    Status10 = 10, ///< Result 10; its meaning is the instrument's own.
    Status11 = 11, ///< Result 11; its meaning is the instrument's own.
    Status12 = 12, ///< Result 12; its meaning is the instrument's own.
    Status13 = 13, ///< Result 13; its meaning is the instrument's own.
    Status14 = 14, ///< Result 14: an RCD test may be prepared.
    Status15 = 15  ///< Result 15: an RCD test may be prepared.
};

} // namespace Vesmar
