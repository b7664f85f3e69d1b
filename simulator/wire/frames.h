#pragma once

#include <QByteArray>

namespace Simulator
{

/// The first byte of a request tells what is asked for.
enum class RequestCode : char {
    ReadStatus = 's',
    ReadVersion = 'W',
    StartMeasurement = 'S',
    StopMeasurement = 'h',
    ReadMeasurement = 'e',
    ReadCurrentDate = 'R',
    ReadCalibrationDate = 'T',
    InitializeUpdate = 'V',
    ProgramSector = 'F',
    FinishUpdate = 'Z',
    ChangeMode = 'x',
    PrepareMeasurement = 'P',
    SetCurrentDate = 'r',
    SetCalibrationDate = 't',
};

/// One request carries this many bytes of firmware.
inline constexpr int SectorSize = 512;

/// Returns the data with its checksum behind it.
QByteArray Sealed(const QByteArray& data);

/// Returns whether the last two bytes are the checksum of the bytes before them, of which there is at least
/// one.
bool IsIntact(const QByteArray& frame);

/// Returns everything of a frame but its checksum.
QByteArray DataOf(const QByteArray& frame);

QByteArray Acknowledge();
QByteArray Refusal();

/// Returns the length of the request that begins with this byte, checksum included, or 0 for an unknown code.
int RequestSize(char code);

} // namespace Simulator
