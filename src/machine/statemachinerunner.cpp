#include "machine/statemachinerunner.h"

#include <QThread>

#include "context/statemachinecontext.h"
#include "link/trace.h"
#include "machine/transitionmap.h"
#include "states/state.h"

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
    MoveTo(StateOf(InitialState));
}

StateMachineRunner::~StateMachineRunner() = default;

void StateMachineRunner::CreateStateMachineTree()
{
    for (const StateNode& node : StateTree) {
        _states.push_back(node.create(_context, node.parent ? StateOf(*node.parent) : nullptr));
    }
    for (const Transition& row : TransitionMap) {
        if (row.kind == TransitionKind::External) {
            AddExternalTransition(StateOf(row.from), row.guard, StateOf(row.to));
        } else {
            AddInternalTransition(StateOf(row.from), row.guard, StateOf(row.to));
        }
    }
}

State* StateMachineRunner::StateOf(StateId state) const
{
    return _states.at(static_cast<std::size_t>(state)).get();
}

void StateMachineRunner::MoveTo(State* state)
{
    _entryPending = true;
    _currentState = state;
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
            Trace::WriteIn(Trace::Colour::Red, "No transition map entry for a current state.");
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
    MoveTo(StateOf(InitialState));
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
    if (ConsumeDisableRequest() || !_enabled) {
        return;
    }
    _context->Replaced.ReleaseHeld();
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

/// Ends the stepping when a disable was requested. Returns whether one was.
bool StateMachineRunner::ConsumeDisableRequest()
{
    if (!_disableRequested.exchange(false)) {
        return false;
    }
    _enabled = false;
    return true;
}

/// Returns false, and does nothing, when a disable was requested: its caller may have closed the port
/// already.
bool StateMachineRunner::StepCurrentState()
{
    const QMutexLocker lock(&_mutex);
    if (ConsumeDisableRequest()) {
        return false;
    }
    _currentState->OnRunning();
    if (State* next = FindTransition(_currentState)) {
        _currentState->OnExit();
        MoveTo(next);
    }
    return true;
}

} // namespace Vesmar
