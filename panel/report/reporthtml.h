#pragma once

#include "panel/plan/planrecord.h"

namespace Panel
{

/// The report of a plan as one HTML text, plots included. Only on the application's thread, which draws them.
QString htmlOf(const PlanRecord& plan);

} // namespace Panel
