#pragma once

#include <optional>

#include <QByteArray>

#include "simulator/wire/measurement.h"

namespace Simulator
{

/// Which measurement the data of a prepare request asks for; nothing when no function knows them.
std::optional<Measurement> RecognizePayload(const QByteArray& payload);

} // namespace Simulator
