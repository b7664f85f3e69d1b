#pragma once

#include "simulator/scenarios.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Simulator
{

std::optional<Fault> FindFault(const QString& name);

/// What a fault makes of the bytes of an answer; those that do something else leave it alone. No answer stays
/// none.
QByteArray Damaged(const QByteArray& answer, Fault fault);

} // namespace Simulator
