#include "machine/statetree.h"

#include "states/configuration/restartingtesterstate.h"
#include "states/configuration/testerconfigurationstate.h"
#include "states/connection/communicationrecoverystate.h"
#include "states/connection/initializationstate.h"
#include "states/connection/monitoringstate.h"
#include "states/connection/testeroperationsstate.h"
#include "states/measurement/abortingmeasurementstate.h"
#include "states/measurement/continuousmeasurementrunningstate.h"
#include "states/measurement/hvtestcontinuousmeasurementrunningstate.h"
#include "states/measurement/measurementmodestate.h"
#include "states/measurement/preparingmeasurementstate.h"
#include "states/measurement/singlemeasurementrunningstate.h"
#include "states/measurement/startingmeasurementstate.h"
#include "states/measurement/stoppingmeasurementstate.h"
#include "states/rcd/rcdiatameasurementrunningstate.h"
#include "states/rcd/rcdieccleanupstate.h"
#include "states/rcd/rcdieciatameasurementrunningstate.h"
#include "states/rcd/rcdmeasurementmodestate.h"
#include "states/rcd/rcdmonitoringstate.h"
#include "states/rcd/rcdubremeasurementrunningstate.h"
#include "states/update/awaitupdateactionstate.h"
#include "states/update/updatingstate.h"

namespace Vesmar
{

namespace
{

template <typename ConcreteState>
std::unique_ptr<State> Create(StateMachineContext* context, State* parentState)
{
    return std::make_unique<ConcreteState>(context, parentState);
}

} // namespace

// The name and the class of a row are one word, so that they cannot differ.
#define STATE(Class, parent) StateNode({#Class, Create<Class>, parent})

const std::array<StateNode, 22> StateTree = {{
    STATE(TesterOperationsState, std::nullopt),
    STATE(AwaitUpdateActionState, StateId::TesterOperations),
    STATE(CommunicationRecoveryState, std::nullopt),
    STATE(UpdatingState, StateId::TesterOperations),
    STATE(InitializationState, StateId::TesterOperations),
    STATE(RestartingTesterState, std::nullopt),
    STATE(MonitoringState, StateId::TesterOperations),
    STATE(TesterConfigurationState, StateId::TesterOperations),
    STATE(MeasurementModeState, StateId::TesterOperations),
    STATE(PreparingMeasurementState, StateId::MeasurementMode),
    STATE(StartingMeasurementState, StateId::MeasurementMode),
    STATE(SingleMeasurementRunningState, StateId::MeasurementMode),
    STATE(ContinuousMeasurementRunningState, StateId::MeasurementMode),
    STATE(StoppingMeasurementState, StateId::MeasurementMode),
    STATE(AbortingMeasurementState, StateId::TesterOperations),
    STATE(HVTestContinuousMeasurementRunningState, StateId::MeasurementMode),
    STATE(RCDMeasurementModeState, StateId::TesterOperations),
    STATE(RCDMonitoringState, StateId::RCDMeasurementMode),
    STATE(RCDUbReMeasurementRunningState, StateId::RCDMeasurementMode),
    STATE(RCDIaTaMeasurementRunningState, StateId::RCDMeasurementMode),
    STATE(RCDIECIaTaMeasurementRunningState, StateId::RCDMeasurementMode),
    STATE(RCDIECCleanUpState, StateId::RCDMeasurementMode),
}};

#undef STATE

} // namespace Vesmar
