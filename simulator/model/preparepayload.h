#pragma once

#include "simulator/wire/measurement.h"

#include <QByteArray>

#include <optional>

namespace Simulator
{

/// Which measurement the data of a prepare request asks for; nothing when no function knows them.
std::optional<Measurement> RecognizePayload(const QByteArray& payload);

} // namespace Simulator
