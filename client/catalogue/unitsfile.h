#pragma once

#include "client/catalogue/units.h"

namespace VesmarClient
{

/// What a file of units says, or why it cannot be used: then there are no units.
struct UnitsFile {
    Units units;
    Failure failure;
};

/// Reads a file of units, which is JSON: {"rpe": {"resistance": {"unit": "V", "decimals": 2}}}.
UnitsFile ReadUnitsFile(const QString& path);

} // namespace VesmarClient
