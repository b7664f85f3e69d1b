#pragma once

#include "simulator/scenarios.h"

#include <QByteArray>

namespace Simulator
{

/// What a fault makes of the bytes of an answer; those that do something else leave it alone. No answer stays
/// none.
QByteArray Damaged(const QByteArray& answer, Fault fault);

} // namespace Simulator
