#pragma once

namespace Simulator
{

/// The measurements that the instrument offers.
enum class Measurement { Rln, Iec, Rpe, Riso, Isub, Ipe, Idelta, It, Power, HvTest };

/// Returns the number that stands for a measurement in a prepare request and in the status.
constexpr int FunctionNumber(Measurement measurement)
{
    switch (measurement) {
    case Measurement::Rln:
    case Measurement::Iec: // IEC is a variant of the same function.
        return 1;
    case Measurement::Rpe:
        return 2;
    case Measurement::Riso:
        return 3;
    case Measurement::Isub:
        return 4;
    case Measurement::Ipe:
        return 5;
    case Measurement::Idelta:
        return 6;
    case Measurement::It:
        return 7;
    case Measurement::Power:
        return 8;
    case Measurement::HvTest:
        return 9;
    }
    return 0;
}

/// Returns whether a measurement ends by itself with one result. The others run until they are stopped.
constexpr bool IsSingle(Measurement measurement)
{
    return measurement == Measurement::Rln || measurement == Measurement::Iec;
}

} // namespace Simulator
