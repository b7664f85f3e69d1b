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
/// Create and use the object on one thread, the application's, which must run a Qt event loop: the signals
/// and the measurement time come through it. An operation records what is asked for and returns at once; a
/// worker thread does it, and the outcome arrives through the properties. Only `Enable`, `Disable` and an
/// update while disabled do all their work before they return.
///
/// A request waits while the link is disabled or lost. Requests to read, to set or to update also wait while
/// measurement mode is active. When the link comes up, the requests of a measurement and measurement mode are
/// dropped, and the dates that are then read replace dates that have not been sent yet.
///
/// A signal carries the value that its property has when the signal is emitted, so two quick changes may
/// signal the same value twice. A change that an operation makes itself is signalled before the operation
/// returns. Values of an enumeration that have no name are passed on unchanged. The enumerations are not
/// registered with the meta-type system: to send them to another thread, register them in the application.
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
    /// The one object of this class. The first call creates it, disabled; two threads must not do so at once.
    /// Deleting it disables it first, and the next call creates another.
    static Tester* Instance();

    /// For `Instance()` only: a second object would talk to the same serial line.
    explicit Tester(QObject* parent);
    ~Tester() override;

    /// Whether `Enable()` was called and `Disable()` was not called since. It does not tell whether the
    /// instrument answers.
    bool IsEnabled() const;
    /// Opens the serial line and starts to talk to the instrument. Does nothing when enabled, nor in a slot
    /// that is called while `UpdateTester` updates a disabled tester.
    ///
    /// `MeasurementStatus` becomes `Idle`; every other property keeps its value. Once the instrument answers,
    /// the library reads its status, its identity and, in the normal mode, both dates. When it does not
    /// answer, or when the device cannot be opened, `ErrorCode` becomes 103 (`CommunicationRecovery`) and
    /// after a while 100 (`NoResponse`). A device that appears later is opened by another `Disable()` and
    /// `Enable()`. After a `Disable()` that cut an exchange short, and after a failed update while disabled,
    /// 103 shows for a moment.
    void Enable();
    /// Ends the exchange that is under way and closes the serial line. Does nothing when disabled.
    ///
    /// A measurement that runs on the instrument goes on: abort it first. The call waits for the worker's
    /// present step, its pauses included, which may take some seconds.
    void Disable();

    /// The instrument's identity. The library owns the record and deletes it after the next version answer:
    /// copy what you need before control returns to an event loop. Until the first answer it holds default
    /// texts.
    TesterInformation* DeviceInformation() const;
    /// The mode that the instrument's last status reported. Default `Normal`.
    OperationMode TesterMode() const;
    /// The instrument's clock when it was last read, or the value last given to `ConfigureCurrentDateTime`;
    /// it does not tick by itself. The instrument knows no time zone: its date and time are put into the
    /// present value, whose time zone stays. The default, 2016-01-01 00:00:00, is local time. A date that
    /// does not exist is invalid here.
    QDateTime CurrentDateTime() const;
    /// The date of the last calibration when it was last read, or the value last given to
    /// `ConfigureCalibrationDateTime`; null until then. The time zone is as for `CurrentDateTime`.
    QDateTime CalibrationDateTime() const;
    /// The result of the instrument's start test, which a status reports while no function is active. Default
    /// `Unknown`.
    StartTestResult StartTestStatus() const;
    /// The state of the active function on the instrument; it keeps its last value while no function is
    /// active. Default `Unknown`.
    FunctionState MeasurementFunctionStatus() const;
    /// The present error, the instrument's or the library's. Default `NoErrors`. Every status stores the
    /// instrument's own, so an error of the library lasts until the next status: react to the signal.
    Error ErrorCode() const;
    /// The settings that were last given to `PrepareMeasurement`, as a clone. The library owns it and deletes
    /// it after the next `PrepareMeasurement`. Default: an object of type `None`.
    MeasurementSettings* TestSettings() const;
    /// The latest readings, those of the mains included (`MonitoringResults`). The library owns the object
    /// and deletes it after the next readings: copy what you need before control returns to an event loop.
    /// Default: an object of type `None`.
    MeasurementResults* TestResults() const;
    /// Whether the instrument has confirmed that a measurement runs. Default false.
    ///
    /// An Ia/Ta test of an RCD counts from its start request on, and the clean-up never counts. A single
    /// measurement that is over at once may never count either. When the link is lost, the instrument is
    /// restarted or measurement mode is left in the middle, the value is cleared once the instrument says
    /// that no function is active.
    bool IsMeasurementRunning() const;
    /// How far the present measurement has come. Default `Idle`.
    MeasurementState MeasurementStatus() const;
    /// The whole seconds that the present continuous measurement has run, 0 while it is being prepared. The
    /// first second of a high-voltage test is longer by its offset. The value stays after the end until
    /// `MeasurementStatus` is `Preparing` again. When the link is lost, it counts on to the end of the time,
    /// or until the instrument says that no function is active. Other functions do not count. Default 0.
    int MeasurementTime() const;
    /// The per cent of the firmware image that the instrument has acknowledged, 0 to 100. The value stays
    /// after the end. Default 0.
    int OperationProgress() const;
    /// The function that is active on the instrument, as its last status reported it; `Monitoring` when none
    /// is. Default `None`.
    MeasurementType CurrentMeasurementType() const;
    /// How far the firmware update has come. Default `Idle`.
    OperationState OperationStatus() const;

    /// Asks for a restart of the instrument into its normal mode, which takes about two seconds. A
    /// measurement that runs is given up, and identity and dates are read anew.
    void RestartTester();
    /// Asks for the instrument's identity. `DeviceInformationChanged` follows every answer.
    void RetrieveDeviceInformation();
    /// Asks for the instrument's clock. `CurrentDateTimeChanged` follows if the value differs.
    void RetrieveCurrentDateTime();
    /// Asks for the date of the last calibration. `CalibrationDateTimeChanged` follows if the value differs.
    void RetrieveCalibrationDateTime();
    /// Sets the instrument's clock to the date and the time of `CurrentDateTime`, which first becomes
    /// `value`. Use a local time in the years 2001 to 2099.
    ///
    /// No time zone is converted, neither now nor when the clock is read: with a value in UTC,
    /// `CurrentDateTime` stays in UTC. A value that is the same instant as `CurrentDateTime` in another time
    /// zone does not replace it, and the date and the time of the old one are sent. Call it when the link is
    /// up: connecting reads the clock and replaces a value that was not sent yet. `CurrentDateTimeChanged`
    /// follows at once, before the instrument has the value; an attempt that fails shows only as a lost link
    /// (`ErrorCode` 103).
    void ConfigureCurrentDateTime(const QDateTime& value);
    /// Sets the date of the last calibration to that of `CalibrationDateTime`, which first becomes `value`;
    /// the time of day is not sent. Everything said of `ConfigureCurrentDateTime` holds. The instrument goes
    /// through its calibration mode, which takes about three seconds.
    void ConfigureCalibrationDateTime(const QDateTime& value);

    /// Whether measurement mode is asked for. Default false; there is no signal. The library clears it
    /// whenever it loses the link and whenever it begins to talk to the instrument anew, as after `Enable()`,
    /// a restart or an update.
    bool GetIsMeasurementModeActive() const;
    /// Enters or leaves measurement mode, in which measurements are prepared and started. Call
    /// `PrepareMeasurement` before you enter it. Once it is left, the library stops any function that the
    /// instrument still reports.
    void SetIsMeasurementModeActive(bool active);

    /// Asks for a measurement to be prepared with a clone of `settings`, which stay the caller's.
    /// `TestSettingsChanged` follows at once.
    ///
    /// In measurement mode, `MeasurementStatus` becomes `Prepared`, or `ErrorCode` 200 (`PrepareFailed`),
    /// whereupon the library aborts the measurement by itself. The Ub/Re test of an RCD is prepared when
    /// `MeasurementStatus` becomes `Idle` after `Prepared`; its errors are 200, 398, 400, 401 and 500 to 534.
    /// The other RCD tests are prepared once they are started.
    void PrepareMeasurement(MeasurementSettings& settings);
    /// Asks for the prepared measurement to be started, as soon as it is prepared. Withdraws an abort that is
    /// still pending.
    ///
    /// `MeasurementStatus` becomes `Running` or `Measuring`, or `ErrorCode` 201 (`StartFailed`) or 202
    /// (`MeasurementFailed`), whereupon the library aborts the measurement by itself. Readings arrive in
    /// `TestResults`. A single measurement ends with its result, a continuous one after its time; then
    /// `MeasurementStatus` becomes `Stopping`, `Stopped` and, while measurement mode stays active,
    /// `Preparing` again.
    ///
    /// An RCD test runs through `Idle`, `Preparing`, `Prepared`, `Starting` and `Running`. It is over with
    /// `Stopped` and, one step later, `Unknown`; one that was aborted is over with `Unknown`. Its errors are
    /// 200, 201, 398, 400, 401 and 500 to 534.
    void StartMeasurement();
    /// Calls `PrepareMeasurement(settings)` and then `StartMeasurement()`.
    void StartMeasurement(MeasurementSettings& settings);
    /// Asks for the present measurement to be ended.
    ///
    /// While it is being prepared or started or runs, `MeasurementStatus` becomes `Stopping`, and `Stopped`
    /// once the instrument confirms the end. When nothing has begun or all is over, `MeasurementStatus`
    /// becomes `Stopped` at once, always with a signal. While it is prepared and not started, the abort
    /// changes nothing until measurement mode is left: `MeasurementStatus` stays `Prepared`, and
    /// `StartMeasurement()` withdraws the abort. While it is stopping, only requests that wait are withdrawn.
    ///
    /// An RCD test that runs ends with `ErrorCode` 521 (`RCDDeviceError1`) unless there is another error.
    /// Nothing is sent to the instrument: it stops when measurement mode is left. The clean-up cannot be
    /// aborted. Before the start of a Ub/Re test, an abort during its preparation stops the instrument and
    /// prepares it anew; without a preparation the abort waits, and `StartMeasurement()` withdraws it. Before
    /// the start of an IEC test, an abort changes nothing.
    void AbortMeasurement();

    /// Updates the instrument's firmware with the image `data`, a multiple of 512 bytes, and the last two
    /// bytes of `confirmation`. Returns false, and does nothing, when one of them is empty.
    ///
    /// The library keeps the arrays without copying their bytes: memory that was given to
    /// `QByteArray::fromRawData` must stay as it is until the update is over, also across a `Disable()`.
    ///
    /// While enabled, asks for the update and returns true at once. `OperationStatus` goes from `Started` by
    /// way of `InProgress` to `Finished`, and is `Idle` again at the end, successful or not. `ErrorCode`
    /// becomes 300 (`UpdateModeChangeFailed`), 301 (`UpdateDataInvalid`), 302
    /// (`UpdateConfirmationDataInvalid`), 303 (`UpdateInitializationFailed`, a sector's failure included) or
    /// 304 (`UpdateConfirmationFailed`). It lasts for a tenth of a second, until link recovery (103) or the
    /// next status replaces it: react to the signal. After 300 the request stays, and the change of mode is
    /// tried again; after the others the instrument waits in update mode for another call. A call while an
    /// update runs is forgotten when that one ends: wait for `Idle`.
    ///
    /// While disabled, does all of it before it returns, and returns whether `ErrorCode` is then `NoErrors`.
    /// It opens the serial line and blocks for 2 s for the change of mode, a good 100 ms for each sector and
    /// 2.5 s for the installation. `OperationStatus` never becomes `Started` and stays where the update
    /// ended. After 300 the serial line stays open. A slot that calls `UpdateTester` during such an update
    /// gets false, and nothing is done.
    bool UpdateTester(const QByteArray& data, const QByteArray& confirmation);

Q_SIGNALS:
    /// A version answer has arrived; the record before is deleted after the handlers have run.
    void DeviceInformationChanged(TesterInformation* value);
    /// A status reports another mode.
    void TesterModeChanged(OperationMode value);
    /// The clock was read with another value, or `ConfigureCurrentDateTime` was called with one.
    void CurrentDateTimeChanged(QDateTime value);
    /// The calibration date was read with another value, or `ConfigureCalibrationDateTime` was called with
    /// one.
    void CalibrationDateTimeChanged(QDateTime value);
    /// A status reports another result of the start test.
    void StartTestStatusChanged(StartTestResult value);
    /// A status reports another state of the active function.
    void MeasurementFunctionStatusChanged(FunctionState value);
    /// There is another error, or none any more (`NoErrors`).
    void ErrorCodeChanged(Error value);
    /// `PrepareMeasurement` was called; equal settings are signalled, too.
    void TestSettingsChanged(MeasurementSettings* value);
    /// Readings have arrived, equal ones included; the object before is deleted after the handlers have run.
    void TestResultsChanged(MeasurementResults* value);
    /// A measurement has begun to run, or runs no more.
    void IsMeasurementRunningChanged(bool value);
    /// The measurement has come to another phase.
    void MeasurementStatusChanged(MeasurementState value);
    /// Another second of a continuous measurement has passed, or the next measurement is being prepared (0).
    void MeasurementTimeChanged(int value);
    /// The instrument has acknowledged more of the firmware image, or another update begins (0).
    void OperationProgressChanged(int value);
    /// A status reports another active function.
    void CurrentMeasurementTypeChanged(MeasurementType value);
    /// The firmware update has come to another phase.
    void OperationStatusChanged(OperationState value);

public Q_SLOTS:
    /// This slot and the others emit the signal of their property with its present value. The library calls
    /// them when a value has changed; an application has no need to.
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
    bool _isUpdating = false; ///< An update while disabled has not returned yet.
};

} // namespace Vesmar
