#include "client/line/diagnosis.h"

namespace VesmarClient
{

using Vesmar::Error;

bool IsLinkError(Error error)
{
    return error >= Error::NoResponse && error <= Error::CommunicationRecovery;
}

Error ReasonForLoss(Error error)
{
    return error == Error::CommunicationRecovery || !IsLinkError(error) ? Error::NoErrors : error;
}

} // namespace VesmarClient
