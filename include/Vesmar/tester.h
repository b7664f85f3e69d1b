#pragma once

#include <memory>

#include <QByteArray>
#include <QDateTime>
#include <QObject>

#include <Vesmar/error.h>
#include <Vesmar/export.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementresults.h>
#include <Vesmar/measurementsettings.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>
#include <Vesmar/starttestresult.h>
#include <Vesmar/testerinformation.h>

namespace Vesmar
{

class StateMachine;
class StateMachineContext;

/// The instrument, as an application sees it: properties with change signals, and operations.
///
/// Use it on one thread, the application's, which must run a Qt event loop: the signals and the measurement
/// time come through it. Operations record what is asked for and return at once; a worker thread does it, and
/// what becomes of it arrives through the properties. A request waits while the link is disabled or lost,
/// except for those of a measurement, which are forgotten when it comes up, and for dates to be set, whose
/// values the clocks then read from the instrument replace. A signal's value is the one that the property has
/// when the signal is emitted, so two quick changes may signal the same value twice. The enumerations are not
/// registered with the meta-type system.
class VESMAR_EXPORT Tester : public QObject
{
    Q_OBJECT
    Q_PROPERTY(TesterInformation* DeviceInformation READ DeviceInformation NOTIFY DeviceInformationChanged)
    Q_PROPERTY(OperationMode TesterMode READ TesterMode NOTIFY TesterModeChanged)
    Q_PROPERTY(QDateTime CurrentDateTime READ CurrentDateTime NOTIFY CurrentDateTimeChanged)
    Q_PROPERTY(QDateTime CalibrationDateTime READ CalibrationDateTime NOTIFY CalibrationDateTimeChanged)
    Q_PROPERTY(StartTestResult StartTestStatus READ StartTestStatus NOTIFY StartTestStatusChanged)
    Q_PROPERTY(FunctionState MeasurementFunctionStatus READ MeasurementFunctionStatus NOTIFY
                   MeasurementFunctionStatusChanged)
    Q_PROPERTY(Error ErrorCode READ ErrorCode NOTIFY ErrorCodeChanged)
    Q_PROPERTY(MeasurementSettings* TestSettings READ TestSettings NOTIFY TestSettingsChanged)
    Q_PROPERTY(MeasurementResults* TestResults READ TestResults NOTIFY TestResultsChanged)
    Q_PROPERTY(bool IsMeasurementRunning READ IsMeasurementRunning NOTIFY IsMeasurementRunningChanged)
    Q_PROPERTY(MeasurementState MeasurementStatus READ MeasurementStatus NOTIFY MeasurementStatusChanged)
    Q_PROPERTY(int MeasurementTime READ MeasurementTime NOTIFY MeasurementTimeChanged)
    Q_PROPERTY(int OperationProgress READ OperationProgress NOTIFY OperationProgressChanged)
    Q_PROPERTY(MeasurementType CurrentMeasurementType READ CurrentMeasurementType NOTIFY
                   CurrentMeasurementTypeChanged)
    Q_PROPERTY(OperationState OperationStatus READ OperationStatus NOTIFY OperationStatusChanged)

public:
    /// The one tester; created, disabled, by the first call, which is not guarded against a second thread.
    /// Deleting it disables it first; the next call then creates another.
    static Tester* Instance();

    /// For `Instance()`. A second object would talk to the same serial line.
    explicit Tester(QObject* parent);
    ~Tester() override;

    bool IsEnabled() const;
    /// Opens the serial line and starts to talk to the instrument. `ErrorCode` is 103
    /// (`CommunicationRecovery`) and after a while 100 (`NoResponse`) when it does not answer or the device
    /// cannot be opened; a device that appears later is taken up by `Disable()` and another `Enable()`. After
    /// a `Disable()` that cut an exchange short, 103 shows for a moment. Sets `MeasurementStatus` to `Idle`;
    /// everything else keeps its value. Does nothing when enabled.
    void Enable();
    /// Ends the exchange under way and closes the serial line. A measurement that runs on the instrument runs
    /// on: abort it first. Waits for the step under way, pauses included. Does nothing when disabled.
    void Disable();

    /// Who the instrument is. Owned by the library and deleted after the next version answer: copy what you
    /// need before control returns to an event loop.
    TesterInformation* DeviceInformation() const;
    /// The mode that the instrument reports. `Normal` until it has answered.
    OperationMode TesterMode() const;
    /// The instrument's clock when it was last read or set; it does not tick by itself. Local time, as the
    /// instrument has it. 2016-01-01 00:00 until then.
    QDateTime CurrentDateTime() const;
    /// The date of the last calibration; null until it has been read.
    QDateTime CalibrationDateTime() const;
    /// The result of the start test, reported while no function is active. `Unknown` until then.
    StartTestResult StartTestStatus() const;
    /// The state of the active function on the instrument. `Unknown` until one was active.
    FunctionState MeasurementFunctionStatus() const;
    /// The present error, the instrument's or the library's; `NoErrors` when there is none. Every status
    /// stores the instrument's own, so one of the library's lasts until the next status.
    Error ErrorCode() const;
    /// The settings prepared last, a clone of the application's. Owned by the library and replaced by the
    /// next preparation. Of type `None` until then.
    MeasurementSettings* TestSettings() const;
    /// The readings that came last, mains readings included. Owned by the library and deleted after the next
    /// ones: copy what you need before control returns to an event loop. Of type `None` until then.
    MeasurementResults* TestResults() const;
    /// Whether the instrument runs a measurement that was started here. Default false.
    bool IsMeasurementRunning() const;
    /// Where the present measurement stands. Default `Idle`.
    MeasurementState MeasurementStatus() const;
    /// Seconds that the present measurement has run. Default 0.
    int MeasurementTime() const;
    /// Per cent of the present operation that is done. Default 0.
    int OperationProgress() const;
    /// The function that is active on the instrument; `Monitoring` when none is, `None` until it has
    /// answered.
    MeasurementType CurrentMeasurementType() const;
    /// Where the present operation stands. Default `Idle`.
    OperationState OperationStatus() const;

    /// Asks for a restart of the instrument into its normal mode, which takes it about two seconds.
    void RestartTester();
    /// Asks for the instrument's identity; `DeviceInformationChanged` follows.
    void RetrieveDeviceInformation();
    /// Asks for the instrument's clock; `CurrentDateTimeChanged` follows if it differs.
    void RetrieveCurrentDateTime();
    /// Asks for the date of the last calibration; `CalibrationDateTimeChanged` follows if it differs.
    void RetrieveCalibrationDateTime();
    /// Sets the instrument's clock to the fields of `value`, years 2001 to 2099; no time zone is converted.
    /// Ask for it when the link is up: connecting reads the clock, and replaces a value that was not sent
    /// yet. `CurrentDateTime` takes the value at once, before the instrument has it.
    void ConfigureCurrentDateTime(const QDateTime& value);
    /// Sets the date of the last calibration, years 2001 to 2099, by way of the calibration mode; the time of
    /// day is not sent. Ask for it when the link is up, as for the clock. `CalibrationDateTime` takes the
    /// value at once, before the instrument has it.
    void ConfigureCalibrationDateTime(const QDateTime& value);

    bool GetIsMeasurementModeActive() const;
    /// Enters or leaves measurement mode, in which measurements are prepared and started. A loss of the link
    /// leaves it.
    void SetIsMeasurementModeActive(bool active);

    /// Asks for a measurement to be prepared with a clone of `settings`, which stay the caller's.
    /// `MeasurementStatus` becomes `Prepared`, or `ErrorCode` 200 (`PrepareFailed`). The Ub/Re test of an RCD
    /// is prepared when it becomes `Idle` after `Prepared`; the other RCD tests prepare themselves once
    /// started.
    void PrepareMeasurement(MeasurementSettings& settings);
    /// Asks for the prepared measurement to be started. `MeasurementStatus` becomes `Running` or `Measuring`,
    /// or `ErrorCode` 201 (`StartFailed`) or 202 (`MeasurementFailed`). Withdraws an abort that is still
    /// pending.
    ///
    /// An RCD test runs through `Idle`, `Preparing`, `Prepared`, `Starting` and `Running`; it is over with
    /// `Stopped` and, one step later, `Unknown`. Its results stand in `TestResults`; what went wrong is in
    /// `ErrorCode`: 200, 201, 398, 400, 401 or 500 to 534.
    void StartMeasurement();
    /// Asks for both, one after the other.
    void StartMeasurement(MeasurementSettings& settings);
    /// Asks for the present measurement to be ended. `MeasurementStatus` becomes `Stopped` once the
    /// instrument confirms it, or at once, always with a signal, when nothing runs. An RCD test ends with
    /// `ErrorCode` 521 (`RCDDeviceError1`) unless there is another error; the instrument itself stops when
    /// measurement mode is left.
    void AbortMeasurement();

    /// Updates the instrument's firmware with the image `data` and the last two bytes of `confirmation`.
    /// False, and nothing done, when one of them is empty.
    ///
    /// While enabled, asks for the update and returns true at once. `OperationStatus` goes from `Started` by
    /// way of `InProgress` to `Finished`, `OperationProgress` counts the per cent that the instrument has
    /// acknowledged, and `OperationStatus` is `Idle` again at the end, successful or not. `ErrorCode` is 300
    /// (`UpdateModeChangeFailed`), 301 (`UpdateDataInvalid`: not a multiple of 512 bytes), 302
    /// (`UpdateConfirmationDataInvalid`: shorter than 2 bytes), 303 (`UpdateInitializationFailed`, a sector's
    /// failure included) or 304 (`UpdateConfirmationFailed`), until link recovery (103) or the next status
    /// replaces it, a tenth of a second later: take it from the signal. After 300
    /// the request stays, and the change of mode is tried again; after the others the instrument waits in
    /// update mode for another call. A call while an update runs is forgotten with it: wait for `Idle`.
    ///
    /// While disabled, does it all before it returns: it opens the serial line, blocks for 2 s for the change
    /// of mode, a good 100 ms for each sector and 2.5 s for the installation, and returns whether `ErrorCode`
    /// is then `NoErrors`. `OperationStatus` never becomes `Started` and stays where the update ended. After
    /// 300 the serial line stays open.
    bool UpdateTester(const QByteArray& data, const QByteArray& confirmation);

Q_SIGNALS:
    void DeviceInformationChanged(TesterInformation* value);
    void TesterModeChanged(OperationMode value);
    void CurrentDateTimeChanged(QDateTime value);
    void CalibrationDateTimeChanged(QDateTime value);
    void StartTestStatusChanged(StartTestResult value);
    void MeasurementFunctionStatusChanged(FunctionState value);
    void ErrorCodeChanged(Error value);
    void TestSettingsChanged(MeasurementSettings* value);
    void TestResultsChanged(MeasurementResults* value);
    void IsMeasurementRunningChanged(bool value);
    void MeasurementStatusChanged(MeasurementState value);
    void MeasurementTimeChanged(int value);
    void OperationProgressChanged(int value);
    void CurrentMeasurementTypeChanged(MeasurementType value);
    void OperationStatusChanged(OperationState value);

public Q_SLOTS:
    // Each emits its property's signal with the present value. The library calls them when a value has
    // changed.
    void UpdateDeviceInformation();
    void UpdateTesterMode();
    void UpdateCurrentDateTime();
    void UpdateCalibrationDateTime();
    void UpdateStartTestStatus();
    void UpdateMeasurementFunctionStatus();
    void UpdateErrorCode();
    void UpdateTestSettings();
    void UpdateTestResults();
    void UpdateIsMeasurementRunning();
    void UpdateMeasurementStatus();
    void UpdateMeasurementTime();
    void UpdateOperationProgress();
    void UpdateCurrentMeasurementType();
    void UpdateOperationStatus();

private:
    StateMachineContext& Context() const;
    void ConnectCells();
    bool UpdateSynchronously();
    void DropMeasurementRequests();

    static Tester* _instance;

    std::unique_ptr<StateMachine> _stateMachine;
    bool _enabled = false;
};

} // namespace Vesmar
