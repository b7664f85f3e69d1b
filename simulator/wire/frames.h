#pragma once

#include <QByteArray>

namespace Simulator
{

/// First byte of a request.
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

/// How much firmware one request carries, in bytes.
inline constexpr int SectorSize = 512;

/// The data with its checksum behind it.
QByteArray Sealed(const QByteArray& data);

/// True when the last two bytes are the checksum of at least one byte before them.
bool IsIntact(const QByteArray& frame);

/// The data of a frame: everything but its checksum.
QByteArray DataOf(const QByteArray& frame);

QByteArray Acknowledge();
QByteArray Refusal();

/// Total length of the request that begins with this byte, checksum included; 0 for an unknown code.
int RequestSize(char code);

} // namespace Simulator
