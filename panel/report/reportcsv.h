#pragma once

#include "panel/plan/planrecord.h"

namespace Panel
{

/// Every reading of every step on a row of its own. Numbers have a decimal point in every language.
QByteArray csvOf(const PlanRecord& plan);

} // namespace Panel
