#include "simulator/instrumentmodel.h"

#include "simulator/frames.h"
#include "simulator/packeddate.h"
#include "simulator/preparepayload.h"

namespace Simulator
{

namespace
{

constexpr std::chrono::milliseconds MonitoringPeriod{500};
constexpr int NormalMode = 0;
constexpr int CalibrationMode = 1;

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
      _function(options.functionTimings, options.seed),
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
    _mode = mode;
}

void InstrumentModel::SetError(int error)
{
    _error = error;
}

void InstrumentModel::SetFunction(int function)
{
    if (function == StatusWord::NoFunction) {
        _function.Deselect("ended");
    } else {
        _function.RunForeign(function);
    }
    _hasNewReadings = false;
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
    _function.Advance(now);
    if (now < _nextReadings) {
        return;
    }
    _nextReadings = now + MonitoringPeriod;
    if (_mode == NormalMode && !_function.IsSelected()) {
        _monitoring.Advance();
        _hasNewReadings = true;
    }
}

StatusWord InstrumentModel::Status() const
{
    StatusWord status;
    status.mode = _mode;
    status.error = _error;
    status.function = _function.Number();
    status.functionState = static_cast<int>(_function.State());
    status.newMeasurement = _function.IsSelected() ? _function.HasNewResult() : _hasNewReadings;
    return status;
}

QByteArray InstrumentModel::Serve(const QByteArray& request, TimePoint now)
{
    const QByteArray data = DataOf(request).mid(1);
    switch (static_cast<RequestCode>(request[0])) {
    case RequestCode::ReadStatus:
        return ReadStatus(now);
    case RequestCode::ReadVersion:
        return Sealed(_identity.Data());
    case RequestCode::ReadMeasurement:
        return ReadMeasurement();
    case RequestCode::StopMeasurement:
        return StopMeasurement(now);
    case RequestCode::PrepareMeasurement:
        return PrepareMeasurement(data, now);
    case RequestCode::StartMeasurement:
        return AcknowledgeIf(_function.Start(now));
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
    case RequestCode::InitializeUpdate:
    case RequestCode::ProgramSector:
    case RequestCode::FinishUpdate:
        break; // this instrument keeps its firmware
    }
    return Refusal();
}

QByteArray InstrumentModel::ReadStatus(TimePoint now)
{
    _function.NoteReported(now);
    return Sealed(Status().Data());
}

QByteArray InstrumentModel::ReadMeasurement()
{
    if (_function.IsSelected()) {
        return Sealed(_function.TakeResult());
    }
    _hasNewReadings = false;
    return Sealed(_monitoring.Data());
}

QByteArray InstrumentModel::PrepareMeasurement(const QByteArray& data, TimePoint now)
{
    const std::optional<Measurement> measurement = RecognizePayload(data);
    const bool accepted = measurement && _mode == NormalMode && _function.Prepare(*measurement, now);
    if (accepted) {
        _hasNewReadings = false;
    }
    return AcknowledgeIf(accepted);
}

QByteArray InstrumentModel::StopMeasurement(TimePoint now)
{
    _function.Stop(now);
    return Acknowledge();
}

/// A mode is entered by a restart, also the mode that the instrument is in.
QByteArray InstrumentModel::ChangeMode(const QByteArray& data, TimePoint now)
{
    const int mode = static_cast<unsigned char>(data[0]);
    if (mode > HighestMode) {
        return Refusal();
    }
    _mode = mode;
    _function.Deselect("ended by a restart");
    _hasNewReadings = false;
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
    const bool accepted = date && _mode == CalibrationMode;
    if (accepted) {
        _calibrationDate = *date;
    }
    return AcknowledgeIf(accepted);
}

} // namespace Simulator
