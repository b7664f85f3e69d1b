#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A file with a recording is not longer, in bytes.
inline constexpr int LongestRecordingFile = 16 * 1024 * 1024;

/// The recording in a JSON text, docs/simulator.md: one entry at least, and the first one is an exchange.
/// Throws JsonError when there is anything wrong with it.
std::vector<RecordedEntry> ParseRecording(const QByteArray& json);

/// The recording in a file. Throws std::runtime_error, which names the file and, where it can, line and key.
std::vector<RecordedEntry> LoadRecording(const QString& path);

} // namespace Simulator
