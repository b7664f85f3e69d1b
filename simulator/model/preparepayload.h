#pragma once

#include <optional>

#include <QByteArray>

#include "simulator/wire/measurement.h"

namespace Simulator
{

/// Returns the measurement that the data of a prepare request asks for, or nothing when no function knows the
/// data.
std::optional<Measurement> RecognizePayload(const QByteArray& payload);

/// The kinds of RCD tests.
enum class RcdKind { UbRe, IaTa, CleanUp };

/// An RCD test as a prepare request asks for it.
struct RcdPreparation {
    int function; ///< its number in the status
    RcdKind kind;
};

/// Returns the RCD test that the data of a prepare request asks for, or nothing when the data asks for none.
std::optional<RcdPreparation> RecognizeRcdPayload(const QByteArray& payload);

} // namespace Simulator
