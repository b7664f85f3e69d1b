#pragma once

#include <QByteArray>

namespace VesmarClient
{

/// Names the program itself, instead of where it is installed.
constexpr char GuardVariable[] = "VESMAR_GUARD";

/// Where vesmar-guard is: what the environment names, otherwise where it was installed together with the
/// library or the program that this code is in. In a build, the folders are the same.
QByteArray FindGuardProgram();

/// A guard that has been started.
struct GuardStart {
    int channel; ///< This process's end of the channel; negative where it could not be started.
    int error;   ///< An error number.
};

/// Starts vesmar-guard. The waiting for an answer on its channel has a limit.
GuardStart StartGuard();

} // namespace VesmarClient
