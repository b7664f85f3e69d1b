#include "simulator/instrumentmodel.h"

#include "simulator/frames.h"
#include "simulator/packeddate.h"

namespace Simulator
{

namespace
{

constexpr std::chrono::milliseconds MonitoringPeriod{500};
constexpr int NormalMode = 0;
constexpr int CalibrationMode = 1;
constexpr int RunningFunctionState = 7;

QDateTime StartDate(const QDateTime& wanted)
{
    const QDateTime date = wanted.isValid() ? wanted : QDateTime::currentDateTime();
    return {date.date(), date.time(), Qt::UTC};
}

QByteArray AcknowledgeIf(bool accepted)
{
    return accepted ? Acknowledge() : Refusal();
}

} // namespace

InstrumentModel::InstrumentModel(const ModelOptions& options, TimePoint now)
    : _restartTime(options.restartTime),
      _identity(options.identity),
      _clock(StartDate(options.date), now),
      _calibrationDate(options.calibrationDate),
      _monitoring(options.seed),
      _nextReadings(now + MonitoringPeriod),
      _awayUntil(now)
{
}

QByteArray InstrumentModel::Answer(const QByteArray& request, TimePoint now)
{
    if (now < _awayUntil) {
        return {};
    }
    Advance(now);
    if (!IsIntact(request) || request.size() != RequestSize(request[0])) {
        return Refusal();
    }
    return Serve(request, now);
}

void InstrumentModel::SetMode(int mode)
{
    _status.mode = mode;
}

void InstrumentModel::SetError(int error)
{
    _status.error = error;
}

void InstrumentModel::SetFunction(int function)
{
    _status.function = function;
    _status.functionState = RunningFunctionState;
    _status.newMeasurement = false;
}

QDateTime InstrumentModel::Date(TimePoint now) const
{
    return _clock.Date(now);
}

QDateTime InstrumentModel::CalibrationDate() const
{
    return _calibrationDate;
}

void InstrumentModel::Advance(TimePoint now)
{
    if (now < _nextReadings) {
        return;
    }
    _nextReadings = now + MonitoringPeriod;
    if (_status.mode == NormalMode && _status.function == StatusWord::NoFunction) {
        _monitoring.Advance();
        _status.newMeasurement = true;
    }
}

QByteArray InstrumentModel::Serve(const QByteArray& request, TimePoint now)
{
    const QByteArray data = DataOf(request).mid(1);
    switch (static_cast<RequestCode>(request[0])) {
    case RequestCode::ReadStatus:
        return Sealed(_status.Data());
    case RequestCode::ReadVersion:
        return Sealed(_identity.Data());
    case RequestCode::ReadMeasurement:
        return ReadMeasurement();
    case RequestCode::StopMeasurement:
        return StopMeasurement();
    case RequestCode::ReadCurrentDate:
        return Sealed(PackDate(_clock.Date(now)));
    case RequestCode::ReadCalibrationDate:
        return Sealed(PackDate(_calibrationDate));
    case RequestCode::ChangeMode:
        return ChangeMode(data, now);
    case RequestCode::SetCurrentDate:
        return SetCurrentDate(data, now);
    case RequestCode::SetCalibrationDate:
        return SetCalibrationDate(data);
    case RequestCode::PrepareMeasurement:
    case RequestCode::StartMeasurement:
    case RequestCode::InitializeUpdate:
    case RequestCode::ProgramSector:
    case RequestCode::FinishUpdate:
        break; // this instrument has no measurement functions and keeps its firmware
    }
    return Refusal();
}

QByteArray InstrumentModel::ReadMeasurement()
{
    _status.newMeasurement = false;
    return Sealed(_monitoring.Data());
}

QByteArray InstrumentModel::StopMeasurement()
{
    _status.function = StatusWord::NoFunction;
    return Acknowledge();
}

/// A mode is entered by a restart, also the mode that the instrument is in.
QByteArray InstrumentModel::ChangeMode(const QByteArray& data, TimePoint now)
{
    const int mode = static_cast<unsigned char>(data[0]);
    if (mode > HighestMode) {
        return Refusal();
    }
    _status.mode = mode;
    _status.function = StatusWord::NoFunction;
    _status.newMeasurement = false;
    _awayUntil = now + _restartTime;
    _nextReadings = _awayUntil + MonitoringPeriod;
    return Acknowledge();
}

QByteArray InstrumentModel::SetCurrentDate(const QByteArray& data, TimePoint now)
{
    const std::optional<QDateTime> date = UnpackDate(data);
    if (date) {
        _clock.Set(*date, now);
    }
    return AcknowledgeIf(date.has_value());
}

QByteArray InstrumentModel::SetCalibrationDate(const QByteArray& data)
{
    const std::optional<QDateTime> date = UnpackDate(data);
    const bool accepted = date && _status.mode == CalibrationMode;
    if (accepted) {
        _calibrationDate = *date;
    }
    return AcknowledgeIf(accepted);
}

} // namespace Simulator
