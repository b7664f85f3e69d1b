#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "simulator/faults/faultentry.h"

namespace Simulator
{

/// A file of faults has at most this many bytes.
inline constexpr int LongestFaultFile = 1024 * 1024;

/// Parses the faults of a JSON text, which docs/faults.md describes. Throws JsonError when anything is wrong.
std::vector<FaultEntry> ParseFaults(const QByteArray& json);

/// Parses one fault: an object like those of such a text. Throws JsonError.
FaultEntry ParseFault(const QByteArray& json);

/// Reads the faults of a file. Throws std::runtime_error, which names the file and, where it can, line and
/// key.
std::vector<FaultEntry> LoadFaults(const QString& path);

} // namespace Simulator
