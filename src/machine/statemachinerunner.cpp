#include "machine/statemachinerunner.h"

#include <QDebug>
#include <QThread>

#include "context/statemachinecontext.h"
#include "machine/transitions.h"
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

constexpr unsigned long StepPeriodMs = 100;

State* FirstThatHolds(const QList<StateTransition>& transitions, StateMachineContext& context)
{
    for (const StateTransition& transition : transitions) {
        if (transition.guard(context)) {
            return transition.target;
        }
    }
    return nullptr;
}

} // namespace

StateMachineRunner::StateMachineRunner(StateMachineContext* context, QObject* parent)
    : QObject(parent), _context(context)
{
    CreateStateMachineTree();
}

StateMachineRunner::~StateMachineRunner() = default;

template <typename ConcreteState>
State* StateMachineRunner::CreateState(State* parentState)
{
    _states.push_back(std::make_unique<ConcreteState>(_context, parentState));
    return _states.back().get();
}

void StateMachineRunner::CreateStateMachineTree()
{
    State* testerOperations = CreateState<TesterOperationsState>(nullptr);
    State* awaitUpdateAction = CreateState<AwaitUpdateActionState>(testerOperations);
    State* communicationRecovery = CreateState<CommunicationRecoveryState>(nullptr);
    State* updating = CreateState<UpdatingState>(testerOperations);
    State* initialization = CreateState<InitializationState>(testerOperations);
    State* restartingTester = CreateState<RestartingTesterState>(nullptr);
    State* monitoring = CreateState<MonitoringState>(testerOperations);
    State* testerConfiguration = CreateState<TesterConfigurationState>(testerOperations);
    State* measurementMode = CreateState<MeasurementModeState>(testerOperations);
    State* preparingMeasurement = CreateState<PreparingMeasurementState>(measurementMode);
    State* startingMeasurement = CreateState<StartingMeasurementState>(measurementMode);
    State* singleMeasurementRunning = CreateState<SingleMeasurementRunningState>(measurementMode);
    State* continuousMeasurementRunning = CreateState<ContinuousMeasurementRunningState>(measurementMode);
    State* stoppingMeasurement = CreateState<StoppingMeasurementState>(measurementMode);
    State* abortingMeasurement = CreateState<AbortingMeasurementState>(testerOperations);
    State* hvTestContinuousMeasurementRunning =
        CreateState<HVTestContinuousMeasurementRunningState>(measurementMode);
    State* rcdMeasurementMode = CreateState<RCDMeasurementModeState>(testerOperations);
    State* rcdMonitoring = CreateState<RCDMonitoringState>(rcdMeasurementMode);
    State* rcdUbReMeasurementRunning = CreateState<RCDUbReMeasurementRunningState>(rcdMeasurementMode);
    State* rcdIaTaMeasurementRunning = CreateState<RCDIaTaMeasurementRunningState>(rcdMeasurementMode);
    State* rcdIECIaTaMeasurementRunning = CreateState<RCDIECIaTaMeasurementRunningState>(rcdMeasurementMode);
    State* rcdIECCleanUp = CreateState<RCDIECCleanUpState>(rcdMeasurementMode);
    _currentState = testerOperations;

    // The first row that holds wins among those of one source, so the order decides.
    // clang-format off
    AddExternalTransition(testerOperations, Transitions::TesterOperationsToCommunicationRecoveryTransition, communicationRecovery);
    AddExternalTransition(testerOperations, Transitions::TesterOperationsToRestartingTesterTransition, restartingTester);
    AddInternalTransition(testerOperations, Transitions::TesterOperationsToInitializationTransition, initialization);
    AddExternalTransition(restartingTester, Transitions::RestartingTesterToTesterOperationsTransition, testerOperations);
    AddExternalTransition(communicationRecovery, Transitions::CommunicationRecoveryToTesterOperationsTransition, testerOperations);
    AddExternalTransition(initialization, Transitions::InitializationToAwaitUpdateActionTransition, awaitUpdateAction);
    AddExternalTransition(initialization, Transitions::InitializationToMonitoringTransition, monitoring);
    AddExternalTransition(monitoring, Transitions::MonitoringToAwaitUpdateActionTransition, awaitUpdateAction);
    AddExternalTransition(monitoring, Transitions::MonitoringToTesterConfigurationTransition, testerConfiguration);
    AddExternalTransition(monitoring, Transitions::MonitoringToRCDMeasurementModeTransition, rcdMeasurementMode);
    AddExternalTransition(monitoring, Transitions::MonitoringToMeasurementModeTransition, measurementMode);
    AddExternalTransition(testerConfiguration, Transitions::TesterConfigurationToMonitoringTransition, monitoring);
    AddExternalTransition(awaitUpdateAction, Transitions::AwaitUpdateActionToUpdatingTransition, updating);
    AddExternalTransition(updating, Transitions::UpdatingToAwaitUpdateActionTransition, awaitUpdateAction);
    AddExternalTransition(updating, Transitions::UpdatingToInitializationTransition, initialization);
    AddExternalTransition(measurementMode, Transitions::MeasurementModeToAbortingMeasurementTransition, abortingMeasurement);
    AddExternalTransition(measurementMode, Transitions::MeasurementModeToMonitoringTransition, monitoring);
    AddInternalTransition(measurementMode, Transitions::MeasurementModeToPreparingMeasurementTransition, preparingMeasurement);
    AddExternalTransition(abortingMeasurement, Transitions::AbortingMeasurementToMeasurementModeTransition, measurementMode);
    AddExternalTransition(preparingMeasurement, Transitions::PreparingMeasurementToRCDMeasurementModeTransition, rcdMeasurementMode);
    AddExternalTransition(preparingMeasurement, Transitions::PreparingMeasurementToStartingMeasurementTransition, startingMeasurement);
    AddExternalTransition(startingMeasurement, Transitions::StartingMeasurementToSingleMeasurementRunningTransition, singleMeasurementRunning);
    AddExternalTransition(startingMeasurement, Transitions::StartingMeasurementToHVTestContinuousMeasurementRunningTransition, hvTestContinuousMeasurementRunning);
    AddExternalTransition(startingMeasurement, Transitions::StartingMeasurementToContinuousMeasurementRunningTransition, continuousMeasurementRunning);
    AddExternalTransition(singleMeasurementRunning, Transitions::SingleMeasurementRunningToStoppingMeasurementTransition, stoppingMeasurement);
    AddExternalTransition(continuousMeasurementRunning, Transitions::ContinuousMeasurementRunningToStoppingMeasurementTransition, stoppingMeasurement);
    AddExternalTransition(hvTestContinuousMeasurementRunning, Transitions::ContinuousMeasurementRunningToStoppingMeasurementTransition, stoppingMeasurement);
    AddExternalTransition(stoppingMeasurement, Transitions::StoppingMeasurementToMeasurementModeTransition, measurementMode);
    AddExternalTransition(rcdMeasurementMode, Transitions::RCDMeasurementModeToMeasurementModeTransition, measurementMode);
    AddExternalTransition(rcdMeasurementMode, Transitions::RCDMeasurementModeToMonitoringTransition, monitoring);
    AddInternalTransition(rcdMeasurementMode, Transitions::RCDMeasurementModeToRCDMonitoringTransition, rcdMonitoring);
    AddExternalTransition(rcdMonitoring, Transitions::RCDMonitoringToRCDUbReMeasurementRunningTransition, rcdUbReMeasurementRunning);
    AddExternalTransition(rcdMonitoring, Transitions::RCDMonitoringToRCDIaTaMeasurementRunningTransition, rcdIaTaMeasurementRunning);
    AddExternalTransition(rcdMonitoring, Transitions::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition, rcdIECIaTaMeasurementRunning);
    AddExternalTransition(rcdMonitoring, Transitions::RCDMonitoringToRCDIECCleanUpTransition, rcdIECCleanUp);
    AddExternalTransition(rcdUbReMeasurementRunning, Transitions::RCDUbReMeasurementRunningToRCDMonitoringTransition, rcdMonitoring);
    AddExternalTransition(rcdIaTaMeasurementRunning, Transitions::RCDIaTaMeasurementRunningToRCDMonitoringTransition, rcdMonitoring);
    AddExternalTransition(rcdIECIaTaMeasurementRunning, Transitions::RCDIECIaTaMeasurementRunningToRCDMonitoringTransition, rcdMonitoring);
    AddExternalTransition(rcdIECCleanUp, Transitions::RCDIECCleanUpToRCDMonitoringTransition, rcdMonitoring);
    // clang-format on
}

void StateMachineRunner::AddExternalTransition(State* from, Guard guard, State* to)
{
    _externalTransitions[from].append({guard, to});
}

void StateMachineRunner::AddInternalTransition(State* from, Guard guard, State* to)
{
    _internalTransitions[from].append({guard, to});
}

State* StateMachineRunner::FindTransition(State* state) const
{
    State* outermost = nullptr;
    for (State* level = state; level != nullptr; level = level->GetParentState()) {
        const auto transitions = _externalTransitions.constFind(level);
        if (transitions == _externalTransitions.constEnd()) {
            qWarning("\033[0;31mNo transition map entry for a current state.\033[0m");
            return nullptr;
        }
        if (State* target = FirstThatHolds(*transitions, *_context)) {
            outermost = target;
        }
    }
    if (outermost != nullptr) {
        return outermost;
    }
    const auto internal = _internalTransitions.constFind(state);
    return internal != _internalTransitions.constEnd() ? FirstThatHolds(*internal, *_context) : nullptr;
}

void StateMachineRunner::Enable()
{
    if (_enabled || _disableRequested) {
        return;
    }
    _entryPending = true;
    _currentState = _states.front().get();
    _enabled = true;
}

void StateMachineRunner::Disable()
{
    _disableRequested = true;
    const QMutexLocker lock(&_mutex);
    _context->StopMeasurementTimer();
}

void StateMachineRunner::RunStateMachineWorker()
{
    if (TakeDisableRequest() || !_enabled) {
        return;
    }
    if (_entryPending) {
        _currentState->OnEntry();
        _entryPending = false;
    }
    if (!StepCurrentState()) {
        return;
    }
    QThread::msleep(StepPeriodMs);
    QMetaObject::invokeMethod(this, "RunStateMachineWorker", Qt::QueuedConnection);
}

void StateMachineRunner::onWorkerFinisched()
{
    deleteLater();
}

/// A disable that was requested ends the stepping.
bool StateMachineRunner::TakeDisableRequest()
{
    if (!_disableRequested.exchange(false)) {
        return false;
    }
    _enabled = false;
    return true;
}

/// False when a disable came first: its caller may have closed the port already.
bool StateMachineRunner::StepCurrentState()
{
    const QMutexLocker lock(&_mutex);
    if (TakeDisableRequest()) {
        return false;
    }
    _currentState->OnRunning();
    if (State* next = FindTransition(_currentState)) {
        _currentState->OnExit();
        _entryPending = true;
        _currentState = next;
    }
    return true;
}

} // namespace Vesmar
