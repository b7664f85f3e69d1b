#pragma once

namespace VesmarClient
{

/// What an application and its guard say to each other, a byte each time. The application's end of the
/// channel is closed by the system when the application ends.
enum class GuardMessage : char {
    Watch = 'w',   ///< A measurement begins. The guard sends the same back once it watches.
    Release = 'r', ///< The measurement is over.
};

/// The descriptor of the guard's end: its standard input.
constexpr int GuardChannel = 0;

} // namespace VesmarClient
