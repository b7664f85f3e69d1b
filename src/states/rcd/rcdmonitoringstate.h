#pragma once

#include "states/rcd/rcdubrepreparation.h"

namespace Vesmar
{

/// Waits for an RCD test to be started, and answers an abort. The Ub/Re test is prepared meanwhile.
///
/// Sends what the preparation sends, and stops a function that is in the way of a preparation or that an
/// abort finds active. Left when a start is requested, for the state of the settings' test.
class RCDMonitoringState : public RCDUbRePreparation
{
public:
    RCDMonitoringState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

private:
    bool EndsWithAbort();
    void AbortRCD();
    void AbortRCDIEC();
    bool IsToBePrepared();
};

} // namespace Vesmar
