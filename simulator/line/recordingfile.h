#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A file with a recording has at most this many bytes.
inline constexpr int LongestRecordingFile = 16 * 1024 * 1024;

/// Parses the recording in a JSON text, which docs/simulator.md describes. It has at least one entry, and the
/// first one is an exchange. Throws JsonError when anything is wrong.
std::vector<RecordedEntry> ParseRecording(const QByteArray& json);

/// Reads the recording in a file. Throws std::runtime_error, which names the file and, where it can, line and
/// key.
std::vector<RecordedEntry> LoadRecording(const QString& path);

} // namespace Simulator
