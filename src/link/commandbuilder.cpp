#include "link/commandbuilder.h"

#include "link/crc16.h"
#include "link/traceline.h"
#include "protocol/dates.h"
#include "protocol/frames.h"

namespace Vesmar
{

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
        CreateFrame(Command::SetCurrentDate, EncodeDate(dateTime.date()) + EncodeTime(dateTime.time()));
    Trace::Line() << "Setting current date to: " << dateTime;
    return frame;
}

QByteArray* CommandBuilder::CreateSetCalibrationDateTimeFrame(const QDateTime& dateTime) const
{
    auto* frame = CreateFrame(Command::SetCalibrationDate, EncodeDate(dateTime.date()) + QByteArray(3, '\0'));
    Trace::Line() << "Setting calibration date to: " << dateTime;
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
