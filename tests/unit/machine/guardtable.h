#pragma once

#include <QString>

#include "machine/transitionmap.h"

/// The name that the transition map gives to a guard; empty for any other function.
inline QString NameOfGuard(Vesmar::Guard guard)
{
    for (const Vesmar::Transition& row : Vesmar::TransitionMap) {
        if (row.guard == guard) {
            return QLatin1String(row.guardName);
        }
    }
    return {};
}
