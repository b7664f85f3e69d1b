#pragma once

#include <QByteArray>

#include "simulator/faults/faultentry.h"

namespace Simulator
{

/// Returns the fault that its name alone stands for: it always happens and has its usual values.
FaultEntry EntryOf(Fault fault);

/// Returns what a fault makes of the bytes of an answer. Faults that do something else leave the bytes alone,
/// and silence stays silence.
QByteArray Damaged(const QByteArray& answer, const FaultEntry& fault);

} // namespace Simulator
