#pragma once

#include <optional>

#include <QByteArray>

namespace Simulator
{

/// What an RCD test finds out.
enum class RcdKind { UbRe, IaTa, CleanUp };

/// An RCD test as a prepare request asks for it.
struct RcdPreparation {
    int function; ///< as the status tells it
    RcdKind kind;
};

/// Which RCD test the data of a prepare request asks for; nothing when they ask for none.
std::optional<RcdPreparation> RecognizeRcdPayload(const QByteArray& payload);

} // namespace Simulator
