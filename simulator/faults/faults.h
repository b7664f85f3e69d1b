#pragma once

#include <QByteArray>

#include "simulator/faults/faultentry.h"

namespace Simulator
{

/// The fault as its name alone means it: always, with its usual values.
FaultEntry EntryOf(Fault fault);

/// What a fault makes of the bytes of an answer; those that do something else leave it alone. No answer stays
/// none.
QByteArray Damaged(const QByteArray& answer, const FaultEntry& fault);

} // namespace Simulator
