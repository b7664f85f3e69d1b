#pragma once

namespace Vesmar
{

/// The instrument's error codes (0 to 15) and the library's own (100 and above).
///
/// Every status of the instrument stores its own code, so one of the library's lasts only until the next
/// status.
enum class Error : int {
    DeviceError0 = 0, ///< 0 to 14: reported by the instrument; the meaning is the instrument's own.
    DeviceError1 = 1,
    DeviceError2 = 2,
    DeviceError3 = 3,
    DeviceError4 = 4,
    DeviceError5 = 5,
    DeviceError6 = 6,
    DeviceError7 = 7,
    DeviceError8 = 8,
    DeviceError9 = 9,
    DeviceError10 = 10,
    DeviceError11 = 11,
    DeviceError12 = 12,
    DeviceError13 = 13,
    DeviceError14 = 14,
    NoErrors = 15, ///< No error.

    NoResponse = 100,            ///< The link is lost: the instrument does not answer.
    RequestRefused = 101,        ///< The link is lost: the instrument keeps refusing, also after a restart.
    InvalidResponse = 102,       ///< The link is lost: answers keep arriving damaged, also after a restart.
    CommunicationRecovery = 103, ///< The link is being re-established.

    PrepareFailed = 200,     ///< The instrument refused the measurement while preparing it.
    StartFailed = 201,       ///< The instrument refused to start the prepared measurement.
    MeasurementFailed = 202, ///< The measurement ended on the instrument without a result.

    UpdateModeChangeFailed = 300,        ///< The instrument could not be switched to update mode.
    UpdateDataInvalid = 301,             ///< The image's size is not a multiple of 512 bytes.
    UpdateConfirmationDataInvalid = 302, ///< The confirmation data is shorter than 2 bytes.
    UpdateInitializationFailed = 303, ///< The instrument refused the update, or a sector was not transferred.
    UpdateConfirmationFailed = 304,   ///< The instrument refused the closing confirmation.

    RCDFunctionMismatch = 398,                ///< The instrument reports a function other than the RCD test.
    RCDIdleStatusAttemptsExhausted = 400,     ///< The RCD test stayed idle for too many status requests.
    RCDPreparedStatusAttemptsExhausted = 401, ///< The RCD test stayed prepared for too many status requests.

    RCDCheckObjectFailed = 500, ///< The check of the RCD failed with a code that has no error of its own.
    RCDCheckObject2 = 501,      ///< 501 to 506: check codes 2, 3, 4, 7, 8 and 9 of the instrument.
    RCDCheckObject3 = 502,
    RCDCheckObject4 = 503,
    RCDCheckObject7 = 504,
    RCDCheckObject8 = 505,
    RCDCheckObject9 = 506,
    RCDCheckObjectULNIECInvalid = 507, ///< Check code 10: the mains voltage does not suit the IEC test.

    RCDDeviceError0 = 520, ///< 520 to 534: the instrument's codes 0 to 14 during an RCD test.
    RCDDeviceError1 = 521, ///< Also left behind by an RCD test that was aborted without an error.
    RCDDeviceError2 = 522,
    RCDDeviceError3 = 523,
    RCDDeviceError4 = 524,
    RCDDeviceError5 = 525,
    RCDDeviceError6 = 526,
    RCDDeviceError7 = 527,
    RCDDeviceError8 = 528,
    RCDDeviceError9 = 529,
    RCDDeviceError10 = 530,
    RCDDeviceError11 = 531,
    RCDDeviceError12 = 532,
    RCDDeviceError13 = 533,
    RCDDeviceError14 = 534
};

} // namespace Vesmar
