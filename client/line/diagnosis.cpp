#include "client/line/diagnosis.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include <Vesmar/serialdevice.h>

namespace VesmarClient
{

namespace
{

using Vesmar::Error;
using Vesmar::OperationMode;

LinkFailure DiagnoseDevice(int openError)
{
    switch (openError) {
    case ENOENT:
        return LinkFailure::DeviceMissing;
    case EACCES:
    case EPERM:
        return LinkFailure::NoPermission;
    default:
        return LinkFailure::DeviceUnusable;
    }
}

LinkFailure DiagnoseAnsweringInstrument(const Situation& situation)
{
    if (situation.mode != OperationMode::Normal) {
        return LinkFailure::WrongMode;
    }
    return situation.error == Error::NoResponse ? LinkFailure::FellSilent : LinkFailure::Incomplete;
}

} // namespace

int TryToOpenSerialDevice()
{
    const int descriptor = ::open(Vesmar::SerialDevicePath, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return errno;
    }
    ::close(descriptor);
    return 0;
}

LinkFailure Diagnose(const Situation& situation)
{
    if (situation.openError != 0) {
        return DiagnoseDevice(situation.openError);
    }
    if (situation.mode == OperationMode::Update) {
        return LinkFailure::UpdateMode;
    }
    if (situation.error == Error::RequestRefused) {
        return LinkFailure::Refused;
    }
    if (situation.error == Error::InvalidResponse) {
        return LinkFailure::Damaged;
    }
    if (situation.hasAnswer) {
        return DiagnoseAnsweringInstrument(situation);
    }
    return situation.error == Error::CommunicationRecovery ? LinkFailure::NoProperAnswer
                                                           : LinkFailure::NoAnswer;
}

bool IsLinkError(Error error)
{
    return error >= Error::NoResponse && error <= Error::CommunicationRecovery;
}

Error ReasonForLoss(Error error)
{
    return error == Error::CommunicationRecovery || !IsLinkError(error) ? Error::NoErrors : error;
}

} // namespace VesmarClient
