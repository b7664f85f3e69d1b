#pragma once

#include <QString>

namespace Panel
{

/// Becomes the simulator that runs this program with the same arguments, but "--simulator". Returns only
/// where that fails, with the reason.
QString becomeSimulated(int argumentCount, char** arguments);

} // namespace Panel
