#include "protocol/status.h"

#include "protocol/frames.h"

namespace Vesmar
{

Status DecodeStatus(const QByteArray& frame, FunctionBits bits)
{
    const unsigned first = ByteAt(frame, 0);
    const unsigned second = ByteAt(frame, 1);
    const unsigned process = second & 0x0FU;
    Status status{};
    status.hasNewMeasurement = (first & 0x80U) != 0;
    status.mode = static_cast<OperationMode>((first >> 5U) & 0x03U);
    status.function = static_cast<MeasurementType>(first & (bits == FunctionBits::Five ? 0x1FU : 0x0FU));
    status.error = static_cast<Error>(second >> 4U);
    status.processStatus = static_cast<int>(process);
    if (status.function != MeasurementType::Monitoring) {
        status.functionState = static_cast<FunctionState>(process);
    } else {
        status.startTestResult = static_cast<StartTestResult>(process);
    }
    return status;
}

Error ErrorInRCDTest(Error error)
{
    return error == Error::NoErrors
               ? error
               : static_cast<Error>(static_cast<int>(Error::RCDDeviceError0) + static_cast<int>(error));
}

Error DecodeObjectCheck(const QByteArray& answer)
{
    switch (ByteAt(answer, 0)) {
    case 0:
        return Error::NoErrors;
    case 2:
        return Error::RCDCheckObject2;
    case 3:
        return Error::RCDCheckObject3;
    case 4:
        return Error::RCDCheckObject4;
    case 7:
        return Error::RCDCheckObject7;
    case 8:
        return Error::RCDCheckObject8;
    case 9:
        return Error::RCDCheckObject9;
    case 10:
        return Error::RCDCheckObjectULNIECInvalid;
    default:
        return Error::RCDCheckObjectFailed;
    }
}

} // namespace Vesmar
