#include "simulator/model/instrumentmodel.h"

#include "simulator/model/preparepayload.h"
#include "simulator/wire/frames.h"
#include "simulator/wire/packeddate.h"

namespace Simulator
{

namespace
{

constexpr std::chrono::milliseconds MonitoringPeriod{500};

QDateTime StartDate(const QDateTime& wanted)
{
    const QDateTime date = wanted.isValid() ? wanted : QDateTime::currentDateTime();
    return {date.date(), date.time(), Qt::UTC};
}

QByteArray AcknowledgeIf(bool accepted)
{
    return accepted ? Acknowledge() : Refusal();
}

/// Returns whether the code is known in a mode. In update mode only the loader of the firmware runs.
bool IsKnownIn(int mode, RequestCode code)
{
    switch (code) {
    case RequestCode::ReadStatus:
    case RequestCode::ReadVersion:
    case RequestCode::ChangeMode:
        return true;
    case RequestCode::InitializeUpdate:
    case RequestCode::ProgramSector:
    case RequestCode::FinishUpdate:
        return mode == Mode::Update;
    default:
        return mode != Mode::Update;
    }
}

/// Returns the answer to the initialization of an update: the length of a sector, low byte first.
QByteArray SectorSizeData()
{
    QByteArray data;
    data.append(static_cast<char>(SectorSize & 0xFF));
    data.append(static_cast<char>(SectorSize >> 8));
    return data;
}

} // namespace

InstrumentModel::InstrumentModel(const ModelOptions& options, TimePoint now)
    : _restartTime(options.restartTime),
      _installTime(options.update.installTime),
      _newVersion(options.update.newVersion),
      _identity(options.identity),
      _clock(StartDate(options.date), now),
      _calibrationDate(options.calibrationDate),
      _monitoring(options.seed),
      _nextReadings(now + MonitoringPeriod),
      _function(options.functionTimings, options.seed),
      _rcdTest(options.rcdTimings, options.seed),
      _update(options.update.confirmation)
{
}

QByteArray InstrumentModel::Answer(const QByteArray& request, TimePoint now)
{
    Advance(now);
    if (_backAt) {
        return {};
    }
    if (!IsIntact(request) || request.size() != RequestSize(request[0])) {
        return Refusal();
    }
    return AnswerKnown(request, now);
}

void InstrumentModel::SetMode(int mode)
{
    _mode = mode;
    _hasNewReadings = false;
    if (mode == Mode::Update) {
        _function.Deselect("ended");
    }
    if (mode != Mode::Normal) {
        _rcdTest.Deselect("ended");
    }
}

void InstrumentModel::SetFunction(int function)
{
    if (function == StatusWord::NoFunction) {
        DeselectFunction("ended");
    } else {
        _rcdTest.Deselect("ended");
        _function.RunForeign(function);
    }
    _hasNewReadings = false;
}

void InstrumentModel::SetScenario(Scenario scenario, int number)
{
    _function.SetScenario(scenario);
    _rcdTest.SetScenario(scenario, number);
    _update.SetScenario(scenario, number);
    _startTestResult = scenario == Scenario::StartTest ? number : StatusWord::UsualStartTestResult;
}

void InstrumentModel::Advance(TimePoint now)
{
    if (_backAt && *_backAt <= now) {
        FinishRestart();
    }
    _function.Advance(now);
    _rcdTest.Advance(now);
    if (now < _nextReadings) {
        return;
    }
    _nextReadings = now + MonitoringPeriod;
    if (_mode == Mode::Normal && !IsFunctionSelected()) {
        _monitoring.Advance();
        _hasNewReadings = true;
    }
}

std::optional<TimePoint> InstrumentModel::NextChangeAt() const
{
    if (_backAt) {
        return _backAt;
    }
    return _rcdTest.IsSelected() ? _rcdTest.NextChangeAt() : _function.NextChangeAt();
}

QStringList InstrumentModel::CollectChanges()
{
    QStringList changes = _function.CollectChanges() + _rcdTest.CollectChanges() + _changes;
    _changes.clear();
    return changes;
}

StatusWord InstrumentModel::Status() const
{
    if (_rcdTest.IsSelected()) {
        return _rcdTest.Status();
    }
    StatusWord status;
    status.mode = _mode;
    status.error = _error;
    status.function = _function.Number();
    status.functionState = static_cast<int>(_function.State());
    status.startTestResult = _startTestResult;
    status.newMeasurement = _function.IsSelected() ? _function.HasNewResult() : _hasNewReadings;
    return status;
}

QByteArray InstrumentModel::AnswerKnown(const QByteArray& request, TimePoint now)
{
    const QByteArray data = DataOf(request).mid(1);
    const auto code = static_cast<RequestCode>(request[0]);
    if (!IsKnownIn(_mode, code)) {
        return Refusal();
    }
    switch (code) {
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
        return StartMeasurement(now);
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
        return InitializeUpdate();
    case RequestCode::ProgramSector:
        return ProgramSector(data);
    case RequestCode::FinishUpdate:
        return FinishUpdate(data, now);
    }
    return Refusal();
}

QByteArray InstrumentModel::ReadStatus(TimePoint now)
{
    _function.MarkReported(now);
    return Sealed(Status().Data());
}

QByteArray InstrumentModel::ReadMeasurement()
{
    if (_rcdTest.IsSelected()) {
        const std::optional<QByteArray> checkObject = _rcdTest.ReadCheckObject();
        return checkObject ? Sealed(*checkObject) : QByteArray();
    }
    if (_function.IsSelected()) {
        return Sealed(_function.ReadResult());
    }
    _hasNewReadings = false;
    return Sealed(_monitoring.Data());
}

QByteArray InstrumentModel::PrepareMeasurement(const QByteArray& data, TimePoint now)
{
    const bool accepted = _mode == Mode::Normal && Prepare(data, now);
    if (accepted) {
        _hasNewReadings = false;
    }
    return AcknowledgeIf(accepted);
}

/// A prepared measurement replaces a function that is at rest.
bool InstrumentModel::Prepare(const QByteArray& payload, TimePoint now)
{
    const std::optional<Measurement> measurement = RecognizePayload(payload);
    if (measurement && !_rcdTest.IsUnderWay() && _function.Prepare(*measurement, now)) {
        _rcdTest.Deselect("deselected");
        return true;
    }
    const std::optional<RcdPreparation> rcd = RecognizeRcdPayload(payload);
    if (rcd && !_function.IsUnderWay() && _rcdTest.Prepare(*rcd, now)) {
        _function.Deselect("deselected");
        return true;
    }
    return false;
}

QByteArray InstrumentModel::StartMeasurement(TimePoint now)
{
    return AcknowledgeIf(_rcdTest.IsSelected() ? _rcdTest.Start(now) : _function.Start(now));
}

QByteArray InstrumentModel::StopMeasurement(TimePoint now)
{
    _function.Stop(now);
    _rcdTest.Stop();
    return Acknowledge();
}

/// The instrument enters a mode by a restart, even the mode that it is in.
QByteArray InstrumentModel::ChangeMode(const QByteArray& data, TimePoint now)
{
    const int mode = static_cast<unsigned char>(data[0]);
    if (mode > Mode::Highest || (mode == Mode::Update && _update.RefusesUpdateMode())) {
        return Refusal();
    }
    RestartInto(mode, now);
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
    const bool accepted = date && _mode == Mode::Calibration;
    if (accepted) {
        _calibrationDate = *date;
    }
    return AcknowledgeIf(accepted);
}

QByteArray InstrumentModel::InitializeUpdate()
{
    if (!_update.Initialize()) {
        return Refusal();
    }
    _changes.append(QStringLiteral("update initialized"));
    return Sealed(SectorSizeData());
}

QByteArray InstrumentModel::ProgramSector(const QByteArray& sector)
{
    if (_update.LosesNextSector()) {
        return {};
    }
    return AcknowledgeIf(_update.StoreSector(sector));
}

QByteArray InstrumentModel::FinishUpdate(const QByteArray& confirmation, TimePoint now)
{
    const int size = _update.Size();
    _confirmedFirmware = _update.Finish(confirmation);
    if (!_confirmedFirmware) {
        _changes.append(QStringLiteral("firmware of %1 bytes not confirmed by %2")
                            .arg(size)
                            .arg(QLatin1String(confirmation.toHex())));
        return Refusal();
    }
    const QString oldVersion = _identity.VersionText();
    if (_update.InstallsFirmware()) {
        _identity.version = _newVersion;
    }
    _changes.append(QStringLiteral("firmware of %1 bytes confirmed: version %2 -> %3")
                        .arg(QString::number(size), oldVersion, _identity.VersionText()));
    Restart(_update.ModeAfterwards(), now + _installTime + _restartTime);
    return Acknowledge();
}

void InstrumentModel::Restart(int mode, TimePoint backAt)
{
    _mode = mode;
    DeselectFunction("ended by a restart");
    _update.Close();
    _hasNewReadings = false;
    _backAt = backAt;
    _nextReadings = backAt + MonitoringPeriod;
}

void InstrumentModel::FinishRestart()
{
    _backAt.reset();
    _changes.append(QStringLiteral("restarted into mode %1").arg(_mode));
}

void InstrumentModel::DeselectFunction(const char* reason)
{
    _function.Deselect(reason);
    _rcdTest.Deselect(reason);
}

} // namespace Simulator
