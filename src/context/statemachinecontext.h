#pragma once

#include <atomic>

#include <QByteArray>
#include <QDateTime>
#include <QMutex>
#include <QObject>
#include <QTimer>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementresults.h>
#include <Vesmar/measurementsettings.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>
#include <Vesmar/starttestresult.h>
#include <Vesmar/testerinformation.h>

#include "context/replacedobjects.h"
#include "context/threadsafeproperty.h"

namespace Vesmar
{

class CRC16;
class CommandBuilder;
class ResponseParser;
class Transciever;

/// A firmware image and the data that confirm it, shared with whoever handed them over until one side writes.
struct FirmwareUpdate {
    QByteArray image;
    QByteArray confirmation;
};

/// The one object that the application's side and the worker's side share: every cell, every request, the way
/// to the link, and the measurement timer.
///
/// It belongs to the thread that creates it, the application's, which must run an event loop for the timer to
/// tick. The cells may be used from any thread. It owns the objects that `DeviceInformation`, `TestSettings`
/// and `TestResults` publish last; the link's components stay their creator's.
class StateMachineContext : public QObject
{
    Q_OBJECT

public:
    StateMachineContext(CRC16* crc16, Transciever* transciever, CommandBuilder* commandBuilder,
                        ResponseParser* responseParser, QObject* parent);
    ~StateMachineContext() override;

    /// Sets `MeasurementStatus` back to `Idle`. Despite the name, everything else keeps its value.
    void ResetAllProperty();

    CommandBuilder* GetCommandBuilder() const { return _commandBuilder; }
    ResponseParser* GetResponseParser() const { return _responseParser; }
    Transciever* GetTransciever() const { return _transciever; }

    // No state calls these two.
    CRC16* GetCRC16() const { return _crc16; }
    QTimer* GetMeasurementTimer() const { return _measurementTimer; }

    /// Counts seconds into `MeasurementTime` and raises `MeasurementTimeElapsed` after `time` of them
    /// (negative: never). Any thread may start and stop the timer; it does so on its own thread, in the order
    /// it was told.
    void StartMeasurementTimer(int time);
    /// As above, with the first second longer by `offsetSeconds`.
    void StartMeasurementTimer(int time, float offsetSeconds);
    void StopMeasurementTimer();
    /// As above, but asks for nothing when the timer does not run.
    void StopMeasurementTimerIfRunning();

    /// Stores the next update's data. The application may do so while the worker copies the present ones.
    void SetUpdate(const QByteArray& image, const QByteArray& confirmation);
    FirmwareUpdate GetUpdate() const;

    /// What `DeviceInformation`, `TestSettings` and `TestResults` published before.
    ReplacedObjects Replaced;

    // What the instrument reports.
    ThreadSafeProperty<TesterInformation*> DeviceInformation;
    ThreadSafeProperty<QDateTime> CurrentDateTime;
    ThreadSafeProperty<QDateTime> CalibrationDateTime;
    ThreadSafeProperty<int> MeasurementTime; ///< In seconds.
    ThreadSafeProperty<bool> NewMeasurement;
    ThreadSafeProperty<OperationMode> TesterMode;
    ThreadSafeProperty<MeasurementType> CurrentMeasurementType;
    ThreadSafeProperty<StartTestResult> StartTestStatus;
    ThreadSafeProperty<FunctionState> MeasurementFunctionStatus;
    ThreadSafeProperty<Error> ErrorCode;
    ThreadSafeProperty<MeasurementResults*> TestResults;

    // What the application asks for, and what becomes of it.
    ThreadSafeProperty<MeasurementSettings*> TestSettings;
    ThreadSafeProperty<bool> CommunicationError;
    ThreadSafeProperty<bool> RestartRequested;
    ThreadSafeProperty<bool> PrepareMeasurementRequested;
    ThreadSafeProperty<bool> StartMeasurementRequested;
    ThreadSafeProperty<bool> AbortMeasurementRequested;
    ThreadSafeProperty<bool> MeasurementTimeElapsed;
    ThreadSafeProperty<bool> UpdateRequested;
    QByteArray UpdateData;             ///< Use `SetUpdate` and `GetUpdate` while the worker steps.
    QByteArray UpdateConfirmationData; ///< As above.
    ThreadSafeProperty<bool> IsMeasurementModeActive;
    ThreadSafeProperty<bool> IsMeasurementRunning;
    ThreadSafeProperty<bool> CurrentDateTimeRequested;
    ThreadSafeProperty<bool> CurrentDateTimeConfigurationRequested;
    ThreadSafeProperty<bool> CalibrationDateTimeRequested;
    ThreadSafeProperty<bool> CalibrationDateTimeConfigurationRequested;
    ThreadSafeProperty<bool> DeviceInformationRequested;
    ThreadSafeProperty<int> OperationProgress; ///< In per cent.
    ThreadSafeProperty<OperationState> OperationStatus;
    ThreadSafeProperty<MeasurementState> MeasurementStatus;

Q_SIGNALS:
    void StartMeasurementTimerRequested(int time, int msOffset);
    void StopMeasurementTimerRequested();

public Q_SLOTS:
    void OnStartMeasurementTimerRequested(int time, int msOffset);
    void OnStopMeasurementTimerRequested();
    void MeasurementTimerTick();

private:
    CRC16* _crc16;
    CommandBuilder* _commandBuilder;
    ResponseParser* _responseParser;
    Transciever* _transciever;
    mutable QMutex _updateMutex;
    QTimer* _measurementTimer;
    /// Tells every thread what only the timer's own thread may ask the timer.
    std::atomic<bool> _isMeasurementTimerRunning{false};
    int _elapsedSeconds = 0;
    int _timeLimit = 0;
};

} // namespace Vesmar
