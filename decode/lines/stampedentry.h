#pragma once

#include "decode/lines/logentry.h"

namespace Decode
{

/// Reads a line that has a time of day in it, or several. `coloured` is the line with its colours.
LogEntry StampedEntry(const QByteArray& coloured, const QByteArray& plain);

} // namespace Decode
