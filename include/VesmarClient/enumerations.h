#pragma once

#include <QObject>

#include <VesmarClient/export.h>

/// Safe use of the instrument, for every application.
namespace VesmarClient
{

Q_NAMESPACE_EXPORT(VESMARCLIENT_EXPORT)
// In QML an enumerator is named with its enumeration, because some names stand in several.
Q_CLASSINFO("RegisterEnumClassesUnscoped", "false")

/// A function of the instrument. The numbers are the instrument's own.
enum class Function : int {
    None = -1,      ///< Not known yet.
    Monitoring = 0, ///< No function is active; the instrument reads the mains.
    RLN = 1,        ///< RLN, a single measurement.
    RPE = 2,        ///< Protective-earth resistance, a continuous measurement.
    RISO = 3,       ///< Insulation resistance, a continuous measurement.
    ISUB = 4,       ///< Substitute leakage current, a continuous measurement.
    IPE = 5,        ///< Protective-conductor current, a continuous measurement.
    IDELTA = 6,     ///< Differential current, a continuous measurement.
    IT = 7,         ///< Touch current, a continuous measurement.
    POWER = 8,      ///< Power, a continuous measurement.
    HVTest = 9,     ///< High-voltage test: a dangerous voltage is present while it runs.
    RCD = 10,       ///< Test of a residual-current device.
    RCDIEC = 11,    ///< Test of a residual-current device, IEC variant.
    IEC = 97        ///< IEC, a single measurement. While it runs, the instrument reports `RLN`.
};
Q_ENUM_NS(Function)

/// How a function is measured.
enum class FunctionKind : int {
    Single,      ///< It ends by itself, with one result.
    Continuous,  ///< It gives readings until its time is over or it is aborted.
    HighVoltage, ///< Continuous, with a dangerous voltage at the appliance.
    Rcd          ///< A test of a residual-current device: it ends by itself, with one result or none.
};
Q_ENUM_NS(FunctionKind)

/// The mode that the instrument is in. The numbers are the instrument's own.
enum class Mode : int {
    Normal = 0,
    Calibration = 1, ///< The driver restarts the instrument to leave it.
    Mode2 = 2,       ///< A mode of the instrument's own, which the driver leaves likewise.
    Update = 3       ///< The instrument waits for firmware, and measures nothing.
};
Q_ENUM_NS(Mode)

/// The state of the function that is active at the instrument. The numbers are the instrument's own; it may
/// report 10 to 15 as well, which have no name.
enum class FunctionState : int {
    Unknown = -1,     ///< No function is active, or not known yet.
    Idle = 0,         ///< It is idle; after a start it is over.
    Preparing = 1,    ///< It is being prepared.
    Completed = 2,    ///< It has completed.
    PrepareError = 3, ///< It could not be prepared.
    Prepared = 4,     ///< It is prepared and can be started.
    Starting = 5,     ///< It has accepted the start.
    StartError = 6,   ///< It could not be started.
    Running = 7,      ///< It runs.
    Stopping = 8,     ///< It is stopping.
    Terminated = 9    ///< It was terminated.
};
Q_ENUM_NS(FunctionState)

/// The result of the instrument's start test, which it reports while no function is active. Its meaning is
/// the instrument's own.
enum class StartTestResult : int {
    Unknown = -1,  ///< Not known yet.
    Status0 = 0,   ///< Result 0.
    Status1 = 1,   ///< Result 1.
    Status2 = 2,   ///< Result 2.
    Status3 = 3,   ///< Result 3.
    Status4 = 4,   ///< Result 4.
    Status5 = 5,   ///< Result 5.
    Status6 = 6,   ///< Result 6.
    Status7 = 7,   ///< Result 7.
    Status8 = 8,   ///< Result 8.
    Status9 = 9,   ///< Result 9.
    Status10 = 10, ///< Result 10.
    Status11 = 11, ///< Result 11.
    Status12 = 12, ///< Result 12.
    Status13 = 13, ///< Result 13.
    Status14 = 14, ///< Result 14: an RCD test may be prepared.
    Status15 = 15  ///< Result 15: an RCD test may be prepared.
};
Q_ENUM_NS(StartTestResult)

/// What the serial line to the instrument is doing.
enum class LinkState : int {
    Closed,      ///< The line is not in use.
    Opening,     ///< The line is taken, and the instrument has not given its identity and its clocks yet.
    Up,          ///< The instrument answers; it can be asked for work.
    Interrupted, ///< A request has just failed; the driver tries to get the instrument back.
    Lost,        ///< The driver has told why the instrument cannot be reached, and goes on trying.
    UpdateMode   ///< The instrument answers, and waits for firmware.
};
Q_ENUM_NS(LinkState)

/// What a job is doing. A job goes only through the phases that it has.
enum class Phase : int {
    Waiting,       ///< Nothing has been done yet.
    AwaitingIdle,  ///< Another function is active at the instrument, and is being stopped.
    Preparing,     ///< The instrument prepares the measurement.
    Checking,      ///< It is found out whether something is wrong with the object under test.
    AwaitingMains, ///< The mains voltage does not suit the test; it is checked until it does.
    Starting,      ///< The instrument has been told to start.
    Running,       ///< The function runs, and gives readings where it has any.
    Stopping,      ///< The function is being ended.
    CleaningUp,    ///< A clean-up of a residual-current device is given its time.
    Confirming,    ///< The instrument has been told to stop; the proof that it has is awaited.
    Writing,       ///< A date is being sent.
    Reading,       ///< The instrument is being asked for what it has stored.
    Restarting,    ///< The instrument restarts, or installs firmware and comes back.
    ChangingMode,  ///< The instrument is being switched to update mode.
    Initializing,  ///< An update begins. From here on to the end of `Sending` it is not aborted.
    Sending,       ///< The firmware is being sent.
    Finished       ///< The job is over.
};
Q_ENUM_NS(Phase)

/// How a job has ended.
enum class Outcome : int {
    None,       ///< It has not ended yet.
    Completed,  ///< Everything that was asked for has been done.
    Failed,     ///< `Job::failure` tells why.
    Aborted,    ///< Somebody has ended it.
    LinkLost,   ///< The link was lost in the middle, and did not come back in time to go on.
    Interrupted ///< A measurement is complete, but for a while no reading has come: see `Measurement::gaps`.
};
Q_ENUM_NS(Outcome)

/// What kind of value an option of a function has.
enum class OptionKind : int {
    Choice,  ///< One of `Option::choices`, by its identifier.
    Integer, ///< A whole number from `Option::minimum` to `Option::maximum`.
    Decimal, ///< A number from `Option::minimum` to `Option::maximum`.
    Flag     ///< True or false.
};
Q_ENUM_NS(OptionKind)

/// For which measurements the guard watches over the application: it stops the instrument when the
/// application dies.
enum class GuardPolicy : int {
    Off,       ///< For none.
    Dangerous, ///< For those with a dangerous voltage.
    Always     ///< For all.
};
Q_ENUM_NS(GuardPolicy)

/// An error: the instrument's own (0 to 14), none (15), or one of the driver's (100 and above).
///
/// Every status that the instrument sends stores the instrument's own code, in an RCD test 520 added to it,
/// so a code of the driver lasts only until the next status. What the instrument's errors mean is known to
/// the instrument alone.
enum class Error : int {
    DeviceError0 = 0,   ///< The instrument reports its error 0.
    DeviceError1 = 1,   ///< The instrument reports its error 1.
    DeviceError2 = 2,   ///< The instrument reports its error 2.
    DeviceError3 = 3,   ///< The instrument reports its error 3.
    DeviceError4 = 4,   ///< The instrument reports its error 4.
    DeviceError5 = 5,   ///< The instrument reports its error 5.
    DeviceError6 = 6,   ///< The instrument reports its error 6.
    DeviceError7 = 7,   ///< The instrument reports its error 7.
    DeviceError8 = 8,   ///< The instrument reports its error 8.
    DeviceError9 = 9,   ///< The instrument reports its error 9.
    DeviceError10 = 10, ///< The instrument reports its error 10.
    DeviceError11 = 11, ///< The instrument reports its error 11.
    DeviceError12 = 12, ///< The instrument reports its error 12.
    DeviceError13 = 13, ///< The instrument reports its error 13.
    DeviceError14 = 14, ///< The instrument reports its error 14.
    NoErrors = 15,      ///< No error.

    /// The link is lost: the instrument did not answer in eleven attempts to recover it.
    NoResponse = 100,
    /// The link is lost: the instrument keeps refusing requests, also after a restart of it, or only
    /// acknowledges them.
    RequestRefused = 101,
    /// The link is lost: answers keep arriving damaged, also after a restart of it.
    InvalidResponse = 102,
    /// A request has failed, and the link is being re-established.
    CommunicationRecovery = 103,

    /// The instrument could not prepare the measurement, or did not accept the preparation of an RCD test.
    PrepareFailed = 200,
    /// The instrument could not start the prepared measurement, or did not accept the start of an RCD test.
    StartFailed = 201,
    /// The measurement fell back to prepared after its start, or ended without a result.
    MeasurementFailed = 202,

    /// The instrument could not be switched to update mode.
    UpdateModeChangeFailed = 300,
    /// The size of the firmware image is not a multiple of 512 bytes.
    UpdateDataInvalid = 301,
    /// The confirmation data is shorter than 2 bytes.
    UpdateConfirmationDataInvalid = 302,
    /// The instrument refused the update, or a sector was not transferred.
    UpdateInitializationFailed = 303,
    /// The instrument refused the closing confirmation of the update.
    UpdateConfirmationFailed = 304,

    /// The instrument reports another function than the RCD test that was prepared.
    RCDFunctionMismatch = 398,
    /// The RCD test was not ready to be prepared within nine status requests.
    RCDIdleStatusAttemptsExhausted = 400,
    /// The instrument did not report the RCD test as prepared within the status requests that were allowed.
    RCDPreparedStatusAttemptsExhausted = 401,

    /// The check of the object under test failed with a code that has no error of its own, or was not
    /// answered.
    RCDCheckObjectFailed = 500,
    RCDCheckObject2 = 501, ///< The check of the object under test failed with the instrument's code 2.
    RCDCheckObject3 = 502, ///< The check of the object under test failed with the instrument's code 3.
    RCDCheckObject4 = 503, ///< The check of the object under test failed with the instrument's code 4.
    RCDCheckObject7 = 504, ///< The check of the object under test failed with the instrument's code 7.
    RCDCheckObject8 = 505, ///< The check of the object under test failed with the instrument's code 8.
    RCDCheckObject9 = 506, ///< The check of the object under test failed with the instrument's code 9.
    /// The check of the object under test failed with the instrument's code 10: the mains voltage does not
    /// suit the IEC test.
    RCDCheckObjectULNIECInvalid = 507,

    /// The instrument reports its error 0 in an RCD test, or a Ub/Re test stayed silent after its start.
    RCDDeviceError0 = 520,
    /// The instrument reports its error 1 in an RCD test or ended the test without a result, or the
    /// application aborted the test while there was no other error.
    RCDDeviceError1 = 521,
    RCDDeviceError2 = 522, ///< The instrument reports its error 2 in an RCD test.
    RCDDeviceError3 = 523, ///< The instrument reports its error 3 in an RCD test.
    RCDDeviceError4 = 524, ///< The instrument reports its error 4 in an RCD test.
    /// The instrument reports its error 5 in an RCD test. A running IEC Ia/Ta test then begins anew by
    /// itself.
    RCDDeviceError5 = 525,
    RCDDeviceError6 = 526,  ///< The instrument reports its error 6 in an RCD test.
    RCDDeviceError7 = 527,  ///< The instrument reports its error 7 in an RCD test.
    RCDDeviceError8 = 528,  ///< The instrument reports its error 8 in an RCD test.
    RCDDeviceError9 = 529,  ///< The instrument reports its error 9 in an RCD test.
    RCDDeviceError10 = 530, ///< The instrument reports its error 10 in an RCD test.
    RCDDeviceError11 = 531, ///< The instrument reports its error 11 in an RCD test.
    RCDDeviceError12 = 532, ///< The instrument reports its error 12 in an RCD test.
    RCDDeviceError13 = 533, ///< The instrument reports its error 13 in an RCD test.
    RCDDeviceError14 = 534  ///< The instrument reports its error 14 in an RCD test.
};
Q_ENUM_NS(Error)

} // namespace VesmarClient
