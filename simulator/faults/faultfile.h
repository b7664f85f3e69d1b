#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "simulator/faults/faultentry.h"

namespace Simulator
{

/// A file of faults is not longer, in bytes.
inline constexpr int LongestFaultFile = 1024 * 1024;

/// The faults of a JSON text, docs/faults.md. Throws JsonError when there is anything wrong with it.
std::vector<FaultEntry> ParseFaults(const QByteArray& json);

/// One fault: an object as they stand in the text above. Throws JsonError.
FaultEntry ParseFault(const QByteArray& json);

/// The faults of a file. Throws std::runtime_error, which names the file and, where it can, line and key.
std::vector<FaultEntry> LoadFaults(const QString& path);

} // namespace Simulator
