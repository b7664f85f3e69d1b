#pragma once

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

#include "simulator/model/deviceclock.h"
#include "simulator/model/firmwareupdate.h"
#include "simulator/model/measurementfunction.h"
#include "simulator/model/monitoringreadings.h"
#include "simulator/model/rcdtest.h"
#include "simulator/wire/identity.h"
#include "simulator/wire/statusword.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// The properties of an instrument.
struct ModelOptions {
    quint32 seed = 1;
    std::chrono::milliseconds restartTime{500};
    QDateTime date; ///< shown by the clock at the start; an invalid date stands for the local time
    QDateTime calibrationDate = QDateTime(QDate(2024, 2, 15), QTime(0, 0), Qt::UTC);
    Identity identity;
    FunctionTimings functionTimings;
    RcdTimings rcdTimings;
    UpdateOptions update;
};

/// The measurement controller, which answers whole requests. It knows nothing of lines and threads and never
/// waits: its caller tells it the time.
class InstrumentModel
{
public:
    InstrumentModel(const ModelOptions& options, TimePoint now);

    /// Returns the answer to a request; it is empty while the instrument restarts.
    QByteArray Answer(const QByteArray& request, TimePoint now);

    /// Lets everything happen that happens by itself up to this time.
    void Advance(TimePoint now);

    /// Returns when something will next change by itself, or nothing while only a request can change
    /// anything.
    std::optional<TimePoint> NextChangeAt() const;

    /// Returns what has to be sent unasked since the last call, in its order.
    std::vector<FramePiece> CollectFrames() { return _rcdTest.CollectFrames(); }

    /// Returns in words how the measurement function, an update and the mode have changed since the last
    /// call.
    QStringList CollectChanges();

    /// Returns the image of an update that was confirmed since the last call, if there is one.
    std::optional<QByteArray> CollectConfirmedFirmware()
    {
        return std::exchange(_confirmedFirmware, std::nullopt);
    }

    /// Returns the status that would be reported now.
    StatusWord Status() const;

    // These happen at the instrument itself, not over its line. Each value must be within its limits.
    void SetMode(int mode);
    void RestartInto(int mode, TimePoint now) { Restart(mode, now + _restartTime); }
    void SetError(int error) { _error = error; }
    void SetFunction(int function);
    void SetScenario(Scenario scenario, int number);

    QDateTime Date(TimePoint now) const { return _clock.Date(now); }
    QDateTime CalibrationDate() const { return _calibrationDate; }

private:
    QByteArray AnswerKnown(const QByteArray& request, TimePoint now);
    QByteArray ReadStatus(TimePoint now);
    QByteArray ReadMeasurement();
    QByteArray PrepareMeasurement(const QByteArray& data, TimePoint now);
    bool Prepare(const QByteArray& payload, TimePoint now);
    QByteArray StartMeasurement(TimePoint now);
    QByteArray StopMeasurement(TimePoint now);
    QByteArray ChangeMode(const QByteArray& data, TimePoint now);
    QByteArray SetCurrentDate(const QByteArray& data, TimePoint now);
    QByteArray SetCalibrationDate(const QByteArray& data);
    QByteArray InitializeUpdate();
    QByteArray ProgramSector(const QByteArray& sector);
    QByteArray FinishUpdate(const QByteArray& confirmation, TimePoint now);
    void Restart(int mode, TimePoint backAt);
    void FinishRestart();
    bool IsFunctionSelected() const { return _function.IsSelected() || _rcdTest.IsSelected(); }
    void DeselectFunction(const char* reason);

    std::chrono::milliseconds _restartTime;
    std::chrono::milliseconds _installTime;
    QByteArray _newVersion;
    Identity _identity;
    int _mode = Mode::Normal;
    int _error = StatusWord::NoError;
    int _startTestResult = StatusWord::UsualStartTestResult;
    bool _hasNewReadings = false;
    DeviceClock _clock;
    QDateTime _calibrationDate;
    MonitoringReadings _monitoring;
    TimePoint _nextReadings;
    MeasurementFunction _function; ///< never selected together with _rcdTest
    RcdTest _rcdTest;
    FirmwareUpdate _update;
    std::optional<QByteArray> _confirmedFirmware;
    std::optional<TimePoint> _backAt; ///< set while the instrument restarts
    QStringList _changes;             ///< the changes that are not those of the functions
};

} // namespace Simulator
