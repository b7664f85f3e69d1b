#pragma once

#include <optional>

#include <QByteArray>

#include "simulator/wire/measurement.h"

namespace Simulator
{

/// Returns the measurement that the data of a prepare request asks for, or nothing when no function knows the
/// data.
std::optional<Measurement> RecognizePayload(const QByteArray& payload);

} // namespace Simulator
