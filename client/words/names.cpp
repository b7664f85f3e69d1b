#include "client/words/names.h"

#include <array>

#include "client/words/named.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::StartTestResult;

struct NamedError {
    Error value;
    const char* name;
    const char* meaning;
};

constexpr std::array<Named<OperationMode>, 4> OperationModes{{
    {OperationMode::Normal, "Normal"},
    {OperationMode::Calibration, "Calibration"},
    {OperationMode::Mode2, "Mode2"},
    {OperationMode::Update, "Update"},
}};

constexpr std::array<Named<MeasurementType>, 14> MeasurementTypes{{
    {MeasurementType::None, "None"},
    {MeasurementType::Monitoring, "Monitoring"},
    {MeasurementType::RLN, "RLN"},
    {MeasurementType::RPE, "RPE"},
    {MeasurementType::RISO, "RISO"},
    {MeasurementType::ISUB, "ISUB"},
    {MeasurementType::IPE, "IPE"},
    {MeasurementType::IDELTA, "IDELTA"},
    {MeasurementType::IT, "IT"},
    {MeasurementType::POWER, "POWER"},
    {MeasurementType::HVTest, "HVTest"},
    {MeasurementType::RCD, "RCD"},
    {MeasurementType::RCDIEC, "RCDIEC"},
    {MeasurementType::IEC, "IEC"},
}};

constexpr std::array<Named<FunctionState>, 11> FunctionStates{{
    {FunctionState::Unknown, "Unknown"},
    {FunctionState::Idle, "Idle"},
    {FunctionState::Preparing, "Preparing"},
    {FunctionState::Completed, "Completed"},
    {FunctionState::PrepareError, "PrepareError"},
    {FunctionState::Prepared, "Prepared"},
    {FunctionState::Starting, "Starting"},
    {FunctionState::StartError, "StartError"},
    {FunctionState::Running, "Running"},
    {FunctionState::Stopping, "Stopping"},
    {FunctionState::Terminated, "Terminated"},
}};

constexpr std::array<Named<OperationState>, 4> OperationStates{{
    {OperationState::Idle, "Idle"},
    {OperationState::Started, "Started"},
    {OperationState::InProgress, "InProgress"},
    {OperationState::Finished, "Finished"},
}};

constexpr std::array<Named<MeasurementState>, 9> MeasurementStates{{
    {MeasurementState::Unknown, "Unknown"},
    {MeasurementState::Idle, "Idle"},
    {MeasurementState::Preparing, "Preparing"},
    {MeasurementState::Prepared, "Prepared"},
    {MeasurementState::Starting, "Starting"},
    {MeasurementState::Running, "Running"},
    {MeasurementState::Measuring, "Measuring"},
    {MeasurementState::Stopping, "Stopping"},
    {MeasurementState::Stopped, "Stopped"},
}};

/// Every error but the two numbered rows of errors of the instrument's own. Those of the second row that the
/// library reports as well are in this table.
constexpr std::array<NamedError, 26> Errors{{
    {Error::NoErrors, "NoErrors", QT_TRANSLATE_NOOP("VesmarClient", "no error")},
    {Error::NoResponse, "NoResponse",
     QT_TRANSLATE_NOOP("VesmarClient", "the link is lost: the instrument does not answer")},
    {Error::RequestRefused, "RequestRefused",
     QT_TRANSLATE_NOOP("VesmarClient", "the link is lost: the instrument keeps refusing requests")},
    {Error::InvalidResponse, "InvalidResponse",
     QT_TRANSLATE_NOOP("VesmarClient", "the link is lost: answers keep arriving damaged")},
    {Error::CommunicationRecovery, "CommunicationRecovery",
     QT_TRANSLATE_NOOP("VesmarClient", "the link is being re-established")},
    {Error::PrepareFailed, "PrepareFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the instrument could not prepare the measurement")},
    {Error::StartFailed, "StartFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the instrument could not start the measurement")},
    {Error::MeasurementFailed, "MeasurementFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the measurement ended without a result")},
    {Error::UpdateModeChangeFailed, "UpdateModeChangeFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the instrument could not be switched to update mode")},
    {Error::UpdateDataInvalid, "UpdateDataInvalid",
     QT_TRANSLATE_NOOP("VesmarClient", "the firmware image cannot be used")},
    {Error::UpdateConfirmationDataInvalid, "UpdateConfirmationDataInvalid",
     QT_TRANSLATE_NOOP("VesmarClient", "the firmware's confirmation data is too short")},
    {Error::UpdateInitializationFailed, "UpdateInitializationFailed",
     QT_TRANSLATE_NOOP("VesmarClient",
                       "the instrument refused the update, or a part of the image was not transferred")},
    {Error::UpdateConfirmationFailed, "UpdateConfirmationFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the instrument refused the closing confirmation of the update")},
    {Error::RCDFunctionMismatch, "RCDFunctionMismatch",
     QT_TRANSLATE_NOOP("VesmarClient", "the instrument reports a function other than the RCD test")},
    {Error::RCDIdleStatusAttemptsExhausted, "RCDIdleStatusAttemptsExhausted",
     QT_TRANSLATE_NOOP("VesmarClient", "the RCD test stayed idle for too long")},
    {Error::RCDPreparedStatusAttemptsExhausted, "RCDPreparedStatusAttemptsExhausted",
     QT_TRANSLATE_NOOP("VesmarClient", "the RCD test stayed prepared for too long")},
    {Error::RCDCheckObjectFailed, "RCDCheckObjectFailed",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed")},
    {Error::RCDCheckObject2, "RCDCheckObject2",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 2")},
    {Error::RCDCheckObject3, "RCDCheckObject3",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 3")},
    {Error::RCDCheckObject4, "RCDCheckObject4",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 4")},
    {Error::RCDCheckObject7, "RCDCheckObject7",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 7")},
    {Error::RCDCheckObject8, "RCDCheckObject8",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 8")},
    {Error::RCDCheckObject9, "RCDCheckObject9",
     QT_TRANSLATE_NOOP("VesmarClient", "the check of the RCD failed with the instrument's code 9")},
    {Error::RCDCheckObjectULNIECInvalid, "RCDCheckObjectULNIECInvalid",
     QT_TRANSLATE_NOOP("VesmarClient", "the mains voltage does not suit the IEC RCD test")},
    {Error::RCDDeviceError0, "RCDDeviceError0",
     QT_TRANSLATE_NOOP("VesmarClient",
                       "the RCD test stayed silent, or the instrument reports its error 0 in it")},
    {Error::RCDDeviceError1, "RCDDeviceError1",
     QT_TRANSLATE_NOOP("VesmarClient",
                       "the RCD test ended without a result, or the instrument reports its error 1 in it")},
}};

/// The position in a row of numbered enumerators, or -1.
template <typename Enumeration>
int PositionInRow(Enumeration value, Enumeration first, Enumeration last)
{
    return value >= first && value <= last ? static_cast<int>(value) - static_cast<int>(first) : -1;
}

int DeviceErrorNumber(Error value)
{
    return PositionInRow(value, Error::DeviceError0, Error::DeviceError14);
}

int RCDDeviceErrorNumber(Error value)
{
    return PositionInRow(value, Error::RCDDeviceError0, Error::RCDDeviceError14);
}

} // namespace

QString Name(OperationMode value)
{
    return NameIn(OperationModes, value);
}

QString Name(MeasurementType value)
{
    return NameIn(MeasurementTypes, value);
}

QString Name(StartTestResult value)
{
    if (value == StartTestResult::Unknown) {
        return QStringLiteral("Unknown");
    }
    const int number = PositionInRow(value, StartTestResult::Status0, StartTestResult::Status15);
    return number >= 0 ? QStringLiteral("Status%1").arg(number) : QString();
}

QString Name(FunctionState value)
{
    return NameIn(FunctionStates, value);
}

QString Name(Error value)
{
    if (const int number = DeviceErrorNumber(value); number >= 0) {
        return QStringLiteral("DeviceError%1").arg(number);
    }
    if (const int number = RCDDeviceErrorNumber(value); number >= 0) {
        return QStringLiteral("RCDDeviceError%1").arg(number);
    }
    return NameIn(Errors, value);
}

QString Name(OperationState value)
{
    return NameIn(OperationStates, value);
}

QString Name(MeasurementState value)
{
    return NameIn(MeasurementStates, value);
}

QString Meaning(Error value)
{
    if (const auto* const row = FindRow(Errors, value); row != nullptr) {
        return Translated(row->meaning);
    }
    if (const int number = DeviceErrorNumber(value); number >= 0) {
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "the instrument reports its error %1"))
            .arg(number);
    }
    if (const int number = RCDDeviceErrorNumber(value); number >= 0) {
        return Translated(
                   QT_TRANSLATE_NOOP("VesmarClient", "the instrument reports its error %1 in an RCD test"))
            .arg(number);
    }
    return Translated(QT_TRANSLATE_NOOP("VesmarClient", "unknown error"));
}

} // namespace VesmarClient
