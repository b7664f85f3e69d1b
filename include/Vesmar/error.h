#pragma once

namespace Vesmar
{

/// An error: the instrument's own (0 to 14), none (15), or one of the library's (100 and above).
///
/// Every status that the instrument sends stores the instrument's own code, in an RCD test 520 added to it,
/// so a code of the library lasts only until the next status. What the instrument's errors mean is known to
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

} // namespace Vesmar
