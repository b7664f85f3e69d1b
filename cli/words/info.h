#pragma once

#include <optional>

#include "cli/words/values.h"

/// What `vesmar info` shows.
namespace Cli
{

/// The instrument's clocks as they were read.
struct Clocks {
    QDateTime current;
    QDateTime calibration;
};

/// What `info` shows besides the identity.
struct Condition {
    std::optional<Clocks> clocks; ///< None where the clocks cannot be read.
    VesmarClient::Mode mode;
    VesmarClient::Error error;
};

QByteArray InfoText(const VesmarClient::Identity& identity, const Condition& condition);
QJsonObject InfoFields(const VesmarClient::Identity& identity, const Condition& condition);

} // namespace Cli
