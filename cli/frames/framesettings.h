#pragma once

#include <QByteArray>

#include <optional>

#include <Vesmar/measurementtype.h>

#include "cli/frames/framewords.h"

namespace Cli
{

constexpr int PreparePayloadSize = 8; ///< In bytes.

/// The function that a prepare payload asks for, `IEC` included; none where the library asks for no such.
std::optional<Vesmar::MeasurementType> PreparedFunction(const QByteArray& payload);

/// The function and its settings. Of several that make the same payload, all are told.
FrameWords WordsOfSettings(const QByteArray& payload);

/// The test of a residual-current device that the payload asks for: the number of its mode.
unsigned ModeOfTest(const QByteArray& payload);

/// The earth resistance that goes with the test; "no value" where it has none.
float ReOfTest(const QByteArray& payload);

} // namespace Cli
