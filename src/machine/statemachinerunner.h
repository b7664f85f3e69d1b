#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include <QList>
#include <QMap>
#include <QMutex>
#include <QObject>

#include "machine/statetree.h"
#include "machine/transitions.h"

namespace Vesmar
{

/// One transition, seen from the state that it leaves.
struct StateTransition {
    Guard guard;
    State* target;
};

/// The engine: it owns the states, holds their transitions, and steps the machine every 100 ms.
///
/// The runner lives on the worker's thread, where steps, hooks and guards run. The owner calls `Enable()`
/// before that thread starts. It calls `Disable()` on its own thread; the call waits for the step that is
/// under way, and no step does anything afterwards.
class StateMachineRunner : public QObject
{
    Q_OBJECT

public:
    using TransitionsByState = QMap<State*, QList<StateTransition>>;

    StateMachineRunner(StateMachineContext* context, QObject* parent);
    ~StateMachineRunner() override;

    void Enable();
    void Disable();
    bool IsEnabled() const { return _enabled; }

    void AddExternalTransition(State* from, Guard guard, State* to);
    void AddInternalTransition(State* from, Guard guard, State* to);

    /// Returns the state to enter, or null when the machine stays. The external transitions are searched from
    /// the state up to the top of the tree, and the outermost one that holds wins. If none holds, the first
    /// of the state's own internal transitions that holds wins.
    State* FindTransition(State* state) const;

    /// The state that runs in every step. Do not call this while another thread steps.
    State* GetCurrentState() const { return _currentState; }
    const TransitionsByState& GetExternalTransitions() const { return _externalTransitions; }
    const TransitionsByState& GetInternalTransitions() const { return _internalTransitions; }

public Q_SLOTS:
    /// Makes one step, and posts the next one while the runner is enabled.
    void RunStateMachineWorker();
    void onWorkerFinisched();

private:
    void CreateStateMachineTree();
    State* StateOf(StateId state) const;
    void MoveTo(State* state);
    bool ConsumeDisableRequest();
    bool StepCurrentState();

    TransitionsByState _externalTransitions;
    TransitionsByState _internalTransitions;
    std::vector<std::unique_ptr<State>> _states;
    State* _currentState = nullptr;
    StateMachineContext* _context;
    std::atomic<bool> _entryPending{true};
    std::atomic<bool> _enabled{false};
    std::atomic<bool> _disableRequested{false};
    QMutex _mutex; ///< A step holds it, so that a disable waits for the end of the step.
};

} // namespace Vesmar
