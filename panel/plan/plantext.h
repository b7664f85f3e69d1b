#pragma once

#include "panel/plan/plan.h"

namespace Panel
{

/// The plan in a text, or what is wrong with it first: then there is no plan.
struct PlanText {
    Plan plan;
    QString damage; ///< A sentence; empty where nothing is wrong.
    int line = 1;   ///< The line of the damage.
};

PlanText readPlanText(const QByteArray& json);

} // namespace Panel
