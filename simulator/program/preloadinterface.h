#pragma once

namespace Simulator
{

/// The path at which programs look for the instrument, and the environment by which the preloaded library
/// learns where it really is and where to note the line settings that a program asked for.
inline constexpr char InstrumentPath[] = "/dev/ttycommunication";
inline constexpr char DeviceVariable[] = "VESMAR_SIMULATOR_DEVICE";
inline constexpr char LineLogVariable[] = "VESMAR_SIMULATOR_LINE_LOG";

} // namespace Simulator
