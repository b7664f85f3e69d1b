#pragma once

#include <QByteArray>

/// The words of the protocol: command codes, short answers and the lengths of the data answers.
namespace Vesmar
{

namespace Command
{

constexpr char Status = 's';
constexpr char Version = 'W';
constexpr char StartMeasurement = 'S';
constexpr char StopMeasurement = 'h';
constexpr char ReadMeasurement = 'e';
constexpr char ReadCurrentDate = 'R';
constexpr char ReadCalibrationDate = 'T';
constexpr char InitializeUpdate = 'V';
constexpr char ProgramFlashSector = 'F';
constexpr char FinishUpdate = 'Z';
constexpr char ChangeTesterMode = 'x';
constexpr char PrepareMeasurement = 'P';
constexpr char SetCurrentDate = 'r';
constexpr char SetCalibrationDate = 't';

} // namespace Command

/// Sizes of the data answers in bytes, checksum included.
constexpr int StatusFrameSize = 4;
constexpr int VersionFrameSize = 25;
constexpr int DateFrameSize = 8;
constexpr int MeasurementFrameSize = 26;

/// Returns the byte at the position as a number; 0 if the frame is too short to have one.
inline unsigned ByteAt(const QByteArray& frame, int position)
{
    return position < frame.size() ? static_cast<unsigned char>(frame.at(position)) : 0U;
}

/// Returns the two bytes at the position as a number, low byte first.
inline unsigned WordAt(const QByteArray& frame, int position)
{
    return ByteAt(frame, position) | (ByteAt(frame, position + 1) << 8U);
}

/// Returns whether the answer begins like the acknowledge frame; what follows does not matter.
inline bool IsAcknowledge(const QByteArray& answer)
{
    return answer.startsWith("\x06\xC6\x60");
}

/// Returns whether the answer begins like the refusal frame; what follows does not matter.
inline bool IsRefusal(const QByteArray& answer)
{
    return answer.startsWith("\x21\x43\x34");
}

} // namespace Vesmar
