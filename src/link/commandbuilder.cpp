#include "link/commandbuilder.h"

#include <QDebug>

#include "link/crc16.h"
#include "link/frames.h"
#include "link/trace.h"

namespace Vesmar
{

namespace
{

constexpr int FirstYear = 2000;

/// Two decimal digits, tens in the high nibble. A number above 99 spills over the high nibble and goes out as
/// computed.
char Bcd(int value)
{
    return static_cast<char>((static_cast<unsigned>(value / 10) << 4U) | static_cast<unsigned>(value % 10));
}

QByteArray DateBytes(QDate date)
{
    QByteArray bytes;
    bytes.append(date.year() > FirstYear ? Bcd(date.year() - FirstYear) : '\0');
    bytes.append(Bcd(date.month()));
    bytes.append(Bcd(date.day()));
    return bytes;
}

QByteArray TimeBytes(QTime time)
{
    QByteArray bytes;
    bytes.append(Bcd(time.hour()));
    bytes.append(Bcd(time.minute()));
    bytes.append(Bcd(time.second()));
    return bytes;
}

} // namespace

CommandBuilder::CommandBuilder(CRC16* crc16, QObject* parent)
    : QObject(parent),
      _crc16(crc16),
      _statusFrame(CreateFrame(Command::Status)),
      _versionFrame(CreateFrame(Command::Version)),
      _startMeasurementFrame(CreateFrame(Command::StartMeasurement)),
      _stopMeasurementFrame(CreateFrame(Command::StopMeasurement)),
      _readMeasurementFrame(CreateFrame(Command::ReadMeasurement)),
      _readCurrentDateFrame(CreateFrame(Command::ReadCurrentDate)),
      _readCalibrationDateFrame(CreateFrame(Command::ReadCalibrationDate)),
      _initializeUpdateFrame(CreateFrame(Command::InitializeUpdate))
{
}

CommandBuilder::~CommandBuilder() = default;

QByteArray* CommandBuilder::CreateProgramFlashSectorFrame(const QByteArray& sector) const
{
    return CreateFrame(Command::ProgramFlashSector, sector);
}

QByteArray* CommandBuilder::CreateFinishUpdateFrame(const QByteArray& confirmation) const
{
    return CreateFrame(Command::FinishUpdate, confirmation.right(2));
}

QByteArray* CommandBuilder::CreateChangeTesterModeFrame(OperationMode mode) const
{
    return CreateFrame(Command::ChangeTesterMode, QByteArray(1, static_cast<char>(mode)));
}

QByteArray* CommandBuilder::CreatePrepareMeasurementFrame(MeasurementSettings& settings) const
{
    const std::unique_ptr<QByteArray> payload(settings.CreateMeasurementFrame());
    return CreateFrame(Command::PrepareMeasurement, payload ? *payload : QByteArray());
}

QByteArray* CommandBuilder::CreateSetCurrentDateTimeFrame(const QDateTime& dateTime) const
{
    auto* frame =
        CreateFrame(Command::SetCurrentDate, DateBytes(dateTime.date()) + TimeBytes(dateTime.time()));
    qWarning().noquote() << QStringLiteral("Setting current date to: ") + Trace::DateText(dateTime);
    return frame;
}

QByteArray* CommandBuilder::CreateSetCalibrationDateTimeFrame(const QDateTime& dateTime) const
{
    auto* frame = CreateFrame(Command::SetCalibrationDate, DateBytes(dateTime.date()) + QByteArray(3, '\0'));
    qWarning().noquote() << QStringLiteral("Setting calibration date to: ") + Trace::DateText(dateTime);
    return frame;
}

QByteArray* CommandBuilder::CreateFrame(char command, const QByteArray& data) const
{
    auto* frame = new QByteArray(1, command);
    frame->append(data);
    _crc16->AddCRC(*frame);
    return frame;
}

} // namespace Vesmar
