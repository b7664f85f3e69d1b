#pragma once

#include <VesmarClient/linkstatistics.h>

namespace VesmarClient
{

/// What the trace has told since the line was opened last. It counts while there is a `TraceRouter`. Any
/// thread may ask.
LinkStatistics CurrentStatistics();

} // namespace VesmarClient
