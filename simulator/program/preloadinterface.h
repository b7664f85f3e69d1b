#pragma once

namespace Simulator
{

/// Programs open the instrument at this path. The environment tells the preloaded library where the
/// instrument really is, and in which file to log the line settings that a program asks for.
inline constexpr char InstrumentPath[] = "/dev/ttycommunication";
inline constexpr char DeviceVariable[] = "VESMAR_SIMULATOR_DEVICE";
inline constexpr char LineLogVariable[] = "VESMAR_SIMULATOR_LINE_LOG";

} // namespace Simulator
