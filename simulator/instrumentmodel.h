#pragma once

#include "simulator/deviceclock.h"
#include "simulator/identity.h"
#include "simulator/measurementfunction.h"
#include "simulator/monitoringreadings.h"
#include "simulator/statusword.h"
#include "simulator/timepoint.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

#include <chrono>
#include <optional>

namespace Simulator
{

/// How an instrument is built.
struct ModelOptions {
    quint32 seed = 1;
    std::chrono::milliseconds restartTime{500};
    QDateTime date; ///< what its clock shows at the start; an invalid date means the local time
    QDateTime calibrationDate = QDateTime(QDate(2024, 2, 15), QTime(0, 0), Qt::UTC);
    Identity identity;
    FunctionTimings functionTimings;
};

/// The measurement controller: takes whole requests, gives whole answers. It knows nothing of lines, threads
/// or waiting; the time is handed to it.
class InstrumentModel
{
public:
    static constexpr int HighestMode = 3;
    static constexpr int HighestFunction = 31;
    static constexpr int HighestError = 15;

    InstrumentModel(const ModelOptions& options, TimePoint now);

    /// The answer to a request; empty while a restart keeps the instrument away from its line.
    QByteArray Answer(const QByteArray& request, TimePoint now);

    /// Lets everything happen that happens by itself until now.
    void Advance(TimePoint now);

    /// When something will next change by itself that is worth a look; nothing while that depends on a
    /// request.
    std::optional<TimePoint> NextChangeAt() const { return _function.NextChangeAt(); }

    /// What the measurement function has gone through since the last call, in words.
    QStringList TakeChanges() { return _function.TakeChanges(); }

    /// What the status would tell.
    StatusWord Status() const;

    // What a person would bring about by other means than the line; each value within its highest.
    void SetMode(int mode);
    void SetError(int error);
    void SetFunction(int function);
    void SetScenario(Scenario scenario) { _function.SetScenario(scenario); }

    QDateTime Date(TimePoint now) const;
    QDateTime CalibrationDate() const;

private:
    QByteArray Serve(const QByteArray& request, TimePoint now);
    QByteArray ReadStatus(TimePoint now);
    QByteArray ReadMeasurement();
    QByteArray PrepareMeasurement(const QByteArray& data, TimePoint now);
    QByteArray StopMeasurement(TimePoint now);
    QByteArray ChangeMode(const QByteArray& data, TimePoint now);
    QByteArray SetCurrentDate(const QByteArray& data, TimePoint now);
    QByteArray SetCalibrationDate(const QByteArray& data);

    std::chrono::milliseconds _restartTime;
    Identity _identity;
    int _mode = 0;
    int _error = StatusWord::NoError;
    bool _hasNewReadings = false;
    DeviceClock _clock;
    QDateTime _calibrationDate;
    MonitoringReadings _monitoring;
    TimePoint _nextReadings;
    MeasurementFunction _function;
    TimePoint _awayUntil;
};

} // namespace Simulator
