#pragma once

#include "client/catalogue/units.h"

namespace VesmarClient
{

/// The units in the text of a file, or what is wrong with it first: then there are no units.
struct UnitsText {
    Units units;
    QString damage; ///< Words that can end a line; empty where nothing is wrong.
    int line = 1;   ///< The line of the damage.
};

/// Reads JSON such as {"rpe": {"voltage": {"unit": "V", "decimals": 1}}}.
UnitsText ReadUnits(const QByteArray& json);

} // namespace VesmarClient
