#pragma once

#include <chrono>
#include <optional>
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

/// How an instrument is built.
struct ModelOptions {
    quint32 seed = 1;
    std::chrono::milliseconds restartTime{500};
    QDateTime date; ///< what its clock shows at the start; an invalid date means the local time
    QDateTime calibrationDate = QDateTime(QDate(2024, 2, 15), QTime(0, 0), Qt::UTC);
    Identity identity;
    FunctionTimings functionTimings;
    RcdTimings rcdTimings;
    UpdateOptions update;
};

/// The measurement controller: takes whole requests, gives whole answers. It knows nothing of lines, threads
/// or waiting; the time is handed to it.
class InstrumentModel
{
public:
    InstrumentModel(const ModelOptions& options, TimePoint now);

    /// The answer to a request; empty while a restart keeps the instrument away from its line.
    QByteArray Answer(const QByteArray& request, TimePoint now);

    /// Lets everything happen that happens by itself until now.
    void Advance(TimePoint now);

    /// When something will next change by itself that is worth a look; nothing while that depends on a
    /// request.
    std::optional<TimePoint> NextChangeAt() const;

    /// What is to be sent unasked since the last call, in its order.
    std::vector<FramePiece> CollectFrames() { return _rcdTest.CollectFrames(); }

    /// What the measurement function, an update and the mode have gone through since the last call, in words.
    QStringList CollectChanges();

    /// The image of an update that was confirmed since the last call, if any.
    std::optional<QByteArray> CollectConfirmedFirmware();

    /// What the status would tell.
    StatusWord Status() const;

    // What a person would bring about by other means than the line; each value within its highest, the number
    // of a scenario within its own limits.
    void SetMode(int mode);
    void RestartInto(int mode, TimePoint now);
    void SetError(int error);
    void SetFunction(int function);
    void SetScenario(Scenario scenario, int number);

    QDateTime Date(TimePoint now) const;
    QDateTime CalibrationDate() const;

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
    MeasurementFunction _function; ///< not selected while _rcdTest is
    RcdTest _rcdTest;
    FirmwareUpdate _update;
    std::optional<QByteArray> _confirmedFirmware;
    std::optional<TimePoint> _backAt; ///< set while a restart keeps the instrument away from its line
    QStringList _changes;             ///< but those of the functions
};

} // namespace Simulator
