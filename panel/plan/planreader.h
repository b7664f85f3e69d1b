#pragma once

#include <VesmarClient/failure.h>

#include "panel/plan/plan.h"

namespace Panel
{

/// What a file has given: a plan, or why there is none.
struct PlanFile {
    Plan plan;
    VesmarClient::Failure failure;
};

/// Reads a test plan, as docs/plan.md describes it. A file that is not a plan in everything is refused, with
/// the line and the reason.
PlanFile readPlan(const QString& path);

} // namespace Panel
