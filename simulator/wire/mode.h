#pragma once

/// The modes of the instrument, as its status tells them and a change of mode asks for them.
namespace Simulator::Mode
{

inline constexpr int Normal = 0;
inline constexpr int Calibration = 1;
inline constexpr int Service = 2;
inline constexpr int Update = 3;
inline constexpr int Highest = Update;

} // namespace Simulator::Mode
