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

/// The engine: owns the states, holds the transition map, and steps the machine every 100 ms.
///
/// It lives on the worker's thread, where steps, hooks and guards run. `Enable()` is called before that
/// thread starts; `Disable()` from the owner's thread: it waits for a step under way, and no step does
/// anything afterwards.
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

    /// The state to enter, or null to stay. External transitions are searched from the state up to the top of
    /// the tree, and the outermost one that holds wins; if none does, the first of the state's own internal
    /// ones that holds.
    State* FindTransition(State* state) const;

    /// Not while another thread steps.
    State* GetCurrentState() const { return _currentState; }
    const TransitionsByState& GetExternalTransitions() const { return _externalTransitions; }
    const TransitionsByState& GetInternalTransitions() const { return _internalTransitions; }

public Q_SLOTS:
    /// One step. Posts the next one while the runner is enabled.
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
    QMutex _mutex; ///< Held during a step, so that a disable waits for its end.
};

} // namespace Vesmar
