#include <array>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include "machine/statemachinerunner.h"
#include "unit/machine/conditions.h"
#include "unit/machine/runnerview.h"
#include "unit/states/pauselog.h"
#include "unit/states/updatewire.h"

using Vesmar::State;
using Vesmar::StateMachineContext;
using Vesmar::StateMachineRunner;

namespace
{

/// Every call of a guard or of a hook of the tests, in order.
QStringList calls;
/// What each of the numbered guards answers.
std::array<bool, 8> answers;

template <int Number>
bool NumberedGuard(StateMachineContext&)
{
    calls.append(QString::number(Number));
    return answers[Number];
}

bool Always(StateMachineContext&)
{
    return true;
}

bool Never(StateMachineContext&)
{
    return false;
}

/// Records each call of a hook as "<name> entry" and so on, and does there what the test gives it to do.
class RecordingState : public State
{
public:
    RecordingState(const char* name, StateMachineContext* context, State* parentState = nullptr)
        : State(context, parentState, nullptr), _name(QLatin1String(name))
    {
    }

    void OnEntry() override { Record("entry", onEntry); }
    void OnRunning() override { Record("running", onRunning); }
    void OnExit() override { Record("exit", onExit); }

    std::function<void()> onEntry;
    std::function<void()> onRunning;
    std::function<void()> onExit;

private:
    void Record(const char* hook, const std::function<void()>& action)
    {
        calls.append(_name + QLatin1Char(' ') + QLatin1String(hook));
        if (action) {
            action();
        }
    }

    QString _name;
};

/// A runner over a context without a line; the test makes it step, and its pauses are not waited for.
struct Machine {
    StateMachineContext context{nullptr, nullptr, nullptr, nullptr, nullptr};
    LogCapture log;
    PauseLog pauses;
    StateMachineRunner runner{&context, nullptr};
    RecordingState first{"first", &context};
    RecordingState second{"second", &context};

    /// From the root to `first` in one step, and from there to `second` as guard 1 says.
    void EnterFirst()
    {
        runner.AddExternalTransition(runner.GetCurrentState(), &Always, &first);
        runner.AddExternalTransition(&first, &NumberedGuard<1>, &second);
        runner.AddExternalTransition(&second, &NumberedGuard<2>, &first);
        runner.Enable();
        runner.RunStateMachineWorker();
        calls.clear();
    }

    /// Runs the steps that have been posted, not those that they post in turn.
    void RunPostedSteps() { QCoreApplication::sendPostedEvents(&runner, QEvent::MetaCall); }
};

const QString NoEntryWarning =
    QStringLiteral("\033[0;31mNo transition map entry for a current state.\033[0m");

/// A state and its parent; the names stand without the "State" at their end.
struct Child {
    const char* state;
    const char* parent;
};

/// The states in the order of creation. This list and the next one are written independently of the machine's
/// tables.
const std::vector<Child> ExpectedTree = {
    {"TesterOperations", "none"},
    {"AwaitUpdateAction", "TesterOperations"},
    {"CommunicationRecovery", "none"},
    {"Updating", "TesterOperations"},
    {"Initialization", "TesterOperations"},
    {"RestartingTester", "none"},
    {"Monitoring", "TesterOperations"},
    {"TesterConfiguration", "TesterOperations"},
    {"MeasurementMode", "TesterOperations"},
    {"PreparingMeasurement", "MeasurementMode"},
    {"StartingMeasurement", "MeasurementMode"},
    {"SingleMeasurementRunning", "MeasurementMode"},
    {"ContinuousMeasurementRunning", "MeasurementMode"},
    {"StoppingMeasurement", "MeasurementMode"},
    {"AbortingMeasurement", "TesterOperations"},
    {"HVTestContinuousMeasurementRunning", "MeasurementMode"},
    {"RCDMeasurementMode", "TesterOperations"},
    {"RCDMonitoring", "RCDMeasurementMode"},
    {"RCDUbReMeasurementRunning", "RCDMeasurementMode"},
    {"RCDIaTaMeasurementRunning", "RCDMeasurementMode"},
    {"RCDIECIaTaMeasurementRunning", "RCDMeasurementMode"},
    {"RCDIECCleanUp", "RCDMeasurementMode"},
};

/// A row of the map. The guard's name is made of both ends where the row names no other.
struct Row {
    const char* from;
    const char* to;
    const char* kind = "external";
    const char* guard = nullptr;
};

/// The map in the order of registration.
const std::vector<Row> ExpectedMap = {
    {"TesterOperations", "CommunicationRecovery"},
    {"TesterOperations", "RestartingTester"},
    {"TesterOperations", "Initialization", "internal"},
    {"RestartingTester", "TesterOperations"},
    {"CommunicationRecovery", "TesterOperations"},
    {"Initialization", "AwaitUpdateAction"},
    {"Initialization", "Monitoring"},
    {"Monitoring", "AwaitUpdateAction"},
    {"Monitoring", "TesterConfiguration"},
    {"Monitoring", "RCDMeasurementMode"},
    {"Monitoring", "MeasurementMode"},
    {"TesterConfiguration", "Monitoring"},
    {"AwaitUpdateAction", "Updating"},
    {"Updating", "AwaitUpdateAction"},
    {"Updating", "Initialization"},
    {"MeasurementMode", "AbortingMeasurement"},
    {"MeasurementMode", "Monitoring"},
    {"MeasurementMode", "PreparingMeasurement", "internal"},
    {"AbortingMeasurement", "MeasurementMode"},
    {"PreparingMeasurement", "RCDMeasurementMode"},
    {"PreparingMeasurement", "StartingMeasurement"},
    {"StartingMeasurement", "SingleMeasurementRunning"},
    {"StartingMeasurement", "HVTestContinuousMeasurementRunning"},
    {"StartingMeasurement", "ContinuousMeasurementRunning"},
    {"SingleMeasurementRunning", "StoppingMeasurement"},
    {"ContinuousMeasurementRunning", "StoppingMeasurement"},
    {"HVTestContinuousMeasurementRunning", "StoppingMeasurement", "external",
     "ContinuousMeasurementRunningToStoppingMeasurementTransition"},
    {"StoppingMeasurement", "MeasurementMode"},
    {"RCDMeasurementMode", "MeasurementMode"},
    {"RCDMeasurementMode", "Monitoring"},
    {"RCDMeasurementMode", "RCDMonitoring", "internal"},
    {"RCDMonitoring", "RCDUbReMeasurementRunning"},
    {"RCDMonitoring", "RCDIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCDIECIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCDIECCleanUp"},
    {"RCDUbReMeasurementRunning", "RCDMonitoring"},
    {"RCDIaTaMeasurementRunning", "RCDMonitoring"},
    {"RCDIECIaTaMeasurementRunning", "RCDMonitoring"},
    {"RCDIECCleanUp", "RCDMonitoring"},
};

QString ClassOf(const char* state)
{
    return qstrcmp(state, "none") == 0 ? QStringLiteral("none")
                                       : QLatin1String(state) + QStringLiteral("State");
}

} // namespace

class TestStateMachineRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void EveryStateIsUnderItsParent();
    void StatesAreCreatedInThisOrder();
    void TransitionsAreRegisteredInThisOrder();
    void StartsAtTheRootDisabled();
    void HasItsSlotsInTheMetaObject();

    void FindsNothingForNoState();
    void FirstGuardThatHoldsWinsWithinALevel();
    void OutermostTransitionWins();
    void EveryLevelIsScannedWhenALowerOneHasMatched();
    void LowerLevelWinsWhenNoOuterOneHolds();
    void InternalTransitionsAreSearchedOnlyWhenNoExternalOneHolds();
    void InternalTransitionsOfAnAncestorDoNotCount();
    void FirstInternalGuardThatHoldsWins();
    void StateWithoutAnExternalEntryStaysAndIsWarnedOf();
    void AncestorWithoutAnExternalEntryDiscardsWhatWasFoundBelow();
    void StateWithoutAnExternalEntryIsWarnedOfOnEveryStep();
    void SameTransitionMayBeRegisteredTwice();

    void FindsTheTargetInTheWholeMachine_data();
    void FindsTheTargetInTheWholeMachine();
    void AbortOfAnRCDTestLeaves521_data();
    void AbortOfAnRCDTestLeaves521();

    void DisabledRunnerDoesNothing();
    void StepsCallEntryOnceRunningAlwaysAndExitOnLeaving();
    void NewStateRunsOnTheStepAfterTheSwitch();
    void OnlyTheLeafsHooksRun();
    void EveryStepIsFollowedByAPauseOfAHundredMilliseconds();
    void StepPostsExactlyOneMore();
    void InitializationRunsOnceAndLeadsToMonitoring();
    void RCDTestIsAbortedAndLeft();
    void UpdateLeadsWhereTheInstrumentIsAfterwards_data();
    void UpdateLeadsWhereTheInstrumentIsAfterwards();

    void EnableStartsAtTheRootAgain();
    void EnableOfAnEnabledRunnerDoesNothing();
    void EnableWhileADisableIsRequestedDoesNothing();
    void DisableLetsOneMoreStepRunThatChangesAndPostsNothing();
    void DisableStopsTheMeasurementTimer();
    void DisableWaitsForTheStepUnderWay();
    void DisableDoesNotWaitForAnEntry();
    void RunnerOnAThreadStepsByItselfAndGoesWithTheThread();
};

void TestStateMachineRunner::init()
{
    calls.clear();
    answers.fill(false);
}

void TestStateMachineRunner::EveryStateIsUnderItsParent()
{
    const Machine machine;
    QMap<QString, QString> parents;
    for (const Child& child : ExpectedTree) {
        parents.insert(ClassOf(child.state), ClassOf(child.parent));
    }
    QCOMPARE(RunnerView::TreeOf(machine.runner), parents);
    for (const State* state : RunnerView::StatesOf(machine.runner)) {
        QCOMPARE(state->GetContext(), &machine.context);
    }
}

void TestStateMachineRunner::StatesAreCreatedInThisOrder()
{
    QCOMPARE(Vesmar::StateTree.size(), ExpectedTree.size());
    for (std::size_t index = 0; index < ExpectedTree.size(); ++index) {
        QCOMPARE(QString(QLatin1String(Vesmar::StateTree.at(index).name)),
                 ClassOf(ExpectedTree.at(index).state));
    }
}

void TestStateMachineRunner::TransitionsAreRegisteredInThisOrder()
{
    const Machine machine;
    QMap<QString, QStringList> expected;
    for (const char* kind : {"external", "internal"}) {
        for (const Row& row : ExpectedMap) {
            if (qstrcmp(row.kind, kind) == 0) {
                const QString guard =
                    QStringLiteral("%1To%2Transition").arg(QLatin1String(row.from), QLatin1String(row.to));
                expected[ClassOf(row.from)] +=
                    RunnerView::TransitionText(row.guard == nullptr ? guard : QLatin1String(row.guard),
                                               ClassOf(row.to), QLatin1String(kind));
            }
        }
    }
    const QMap<QString, State*> states = RunnerView::StatesOf(machine.runner);
    QCOMPARE(expected.keys(), states.keys());
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        QCOMPARE(RunnerView::TransitionsOf(machine.runner, state.value()), expected.value(state.key()));
        QVERIFY(!machine.runner.GetExternalTransitions().value(state.value()).isEmpty());
    }
}

void TestStateMachineRunner::StartsAtTheRootDisabled()
{
    Machine machine;
    QCOMPARE(RunnerView::NameOf(machine.runner.GetCurrentState()), QStringLiteral("TesterOperationsState"));
    QVERIFY(!machine.runner.IsEnabled());
    QCOMPARE(machine.runner.parent(), nullptr);
}

void TestStateMachineRunner::HasItsSlotsInTheMetaObject()
{
    const QMetaObject& meta = StateMachineRunner::staticMetaObject;
    QCOMPARE(meta.className(), "Vesmar::StateMachineRunner");
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("RunStateMachineWorker()"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("onWorkerFinisched()"));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
}

void TestStateMachineRunner::FindsNothingForNoState()
{
    Machine machine;
    QCOMPARE(machine.runner.FindTransition(nullptr), nullptr);
    QCOMPARE(machine.log.Texts(), QStringList{});
}

void TestStateMachineRunner::FirstGuardThatHoldsWinsWithinALevel()
{
    Machine machine;
    RecordingState third("third", &machine.context);
    machine.runner.AddExternalTransition(&machine.first, &NumberedGuard<1>, &machine.first);
    machine.runner.AddExternalTransition(&machine.first, &NumberedGuard<2>, &machine.second);
    machine.runner.AddExternalTransition(&machine.first, &NumberedGuard<3>, &third);
    answers[2] = true;
    answers[3] = true;
    QCOMPARE(machine.runner.FindTransition(&machine.first), &machine.second);
    QCOMPARE(calls, (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
    answers[1] = true;
    QCOMPARE(machine.runner.FindTransition(&machine.first), &machine.first);
    answers = {false, false, false, true};
    QCOMPARE(machine.runner.FindTransition(&machine.first), &third);
}

namespace
{

/// Three levels, each with an external transition of its own: guard 1 the leaf's, 3 the top's.
struct Levels : Machine {
    RecordingState top{"top", &context};
    RecordingState middle{"middle", &context, &top};
    RecordingState leaf{"leaf", &context, &middle};
    RecordingState fromTop{"from top", &context};
    RecordingState fromMiddle{"from middle", &context};
    RecordingState fromLeaf{"from leaf", &context};

    Levels()
    {
        runner.AddExternalTransition(&leaf, &NumberedGuard<1>, &fromLeaf);
        runner.AddExternalTransition(&middle, &NumberedGuard<2>, &fromMiddle);
        runner.AddExternalTransition(&top, &NumberedGuard<3>, &fromTop);
    }
};

const QStringList EveryLevel = {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")};

} // namespace

void TestStateMachineRunner::OutermostTransitionWins()
{
    Levels levels;
    answers = {false, true, true, true};
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), &levels.fromTop);
    answers[3] = false;
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), &levels.fromMiddle);
}

void TestStateMachineRunner::EveryLevelIsScannedWhenALowerOneHasMatched()
{
    Levels levels;
    answers[1] = true;
    levels.runner.FindTransition(&levels.leaf);
    QCOMPARE(calls, EveryLevel);
    calls.clear();
    answers[2] = true;
    levels.runner.FindTransition(&levels.leaf);
    QCOMPARE(calls, EveryLevel);
}

void TestStateMachineRunner::LowerLevelWinsWhenNoOuterOneHolds()
{
    Levels levels;
    answers[1] = true;
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), &levels.fromLeaf);
    QCOMPARE(levels.runner.FindTransition(&levels.middle), nullptr);
}

void TestStateMachineRunner::InternalTransitionsAreSearchedOnlyWhenNoExternalOneHolds()
{
    Levels levels;
    levels.runner.AddInternalTransition(&levels.leaf, &NumberedGuard<4>, &levels.first);
    answers[4] = true;
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), &levels.first);
    QCOMPARE(calls, EveryLevel + QStringList{QStringLiteral("4")});
    calls.clear();
    answers[3] = true;
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), &levels.fromTop);
    QCOMPARE(calls, EveryLevel);
}

void TestStateMachineRunner::InternalTransitionsOfAnAncestorDoNotCount()
{
    Levels levels;
    levels.runner.AddInternalTransition(&levels.middle, &Always, &levels.first);
    QCOMPARE(levels.runner.FindTransition(&levels.leaf), nullptr);
    QCOMPARE(levels.runner.FindTransition(&levels.middle), &levels.first);
    QCOMPARE(levels.runner.FindTransition(&levels.top), nullptr);
    QCOMPARE(levels.log.Texts(), QStringList{});
}

void TestStateMachineRunner::FirstInternalGuardThatHoldsWins()
{
    Levels levels;
    levels.runner.AddInternalTransition(&levels.top, &NumberedGuard<4>, &levels.first);
    levels.runner.AddInternalTransition(&levels.top, &NumberedGuard<5>, &levels.second);
    QCOMPARE(levels.runner.FindTransition(&levels.top), nullptr);
    answers[5] = true;
    QCOMPARE(levels.runner.FindTransition(&levels.top), &levels.second);
    answers[4] = true;
    calls.clear();
    QCOMPARE(levels.runner.FindTransition(&levels.top), &levels.first);
    QCOMPARE(calls, (QStringList{QStringLiteral("3"), QStringLiteral("4")}));
}

void TestStateMachineRunner::StateWithoutAnExternalEntryStaysAndIsWarnedOf()
{
    Machine machine;
    machine.runner.AddInternalTransition(&machine.first, &Always, &machine.second);
    QCOMPARE(machine.runner.FindTransition(&machine.first), nullptr);
    QCOMPARE(machine.log.Texts(), QStringList{NoEntryWarning});
    QCOMPARE(machine.log.Messages().constFirst().type, QtWarningMsg);
    QCOMPARE(machine.log.Messages().constFirst().category, QByteArray("default"));
}

void TestStateMachineRunner::AncestorWithoutAnExternalEntryDiscardsWhatWasFoundBelow()
{
    Machine machine;
    RecordingState top("top", &machine.context);
    RecordingState middle("middle", &machine.context, &top);
    RecordingState leaf("leaf", &machine.context, &middle);
    machine.runner.AddExternalTransition(&leaf, &NumberedGuard<1>, &machine.first);
    machine.runner.AddExternalTransition(&top, &NumberedGuard<3>, &machine.second);
    answers = {false, true, false, true};
    QCOMPARE(machine.runner.FindTransition(&leaf), nullptr);
    QCOMPARE(calls, QStringList{QStringLiteral("1")});
    QCOMPARE(machine.log.Texts(), QStringList{NoEntryWarning});
}

void TestStateMachineRunner::StateWithoutAnExternalEntryIsWarnedOfOnEveryStep()
{
    Machine machine;
    machine.runner.AddExternalTransition(machine.runner.GetCurrentState(), &Always, &machine.first);
    machine.runner.Enable();
    machine.runner.RunStateMachineWorker();
    machine.log.Clear();
    machine.runner.RunStateMachineWorker();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(machine.log.Texts(), (QStringList{NoEntryWarning, NoEntryWarning}));
    QCOMPARE(machine.runner.GetCurrentState(), &machine.first);
}

void TestStateMachineRunner::SameTransitionMayBeRegisteredTwice()
{
    Machine machine;
    machine.runner.AddExternalTransition(&machine.first, &Never, &machine.second);
    machine.runner.AddExternalTransition(&machine.first, &Never, &machine.second);
    QCOMPARE(machine.runner.GetExternalTransitions().value(&machine.first).size(), 2);
}

namespace
{

/// From each of these states the machine goes to `to` when these cells are set; it stays where `to` is
/// "none".
struct Target {
    const char* from;
    const char* conditions;
    const char* to;
};

const char* const Everywhere =
    "TesterOperations AwaitUpdateAction Updating Initialization Monitoring TesterConfiguration "
    "MeasurementMode "
    "PreparingMeasurement StartingMeasurement SingleMeasurementRunning ContinuousMeasurementRunning "
    "StoppingMeasurement AbortingMeasurement HVTestContinuousMeasurementRunning RCDMeasurementMode "
    "RCDMonitoring "
    "RCDUbReMeasurementRunning RCDIaTaMeasurementRunning RCDIECIaTaMeasurementRunning RCDIECCleanUp";
const char* const Measuring =
    "PreparingMeasurement StartingMeasurement SingleMeasurementRunning ContinuousMeasurementRunning "
    "HVTestContinuousMeasurementRunning StoppingMeasurement";
const char* const Continuous = "ContinuousMeasurementRunning HVTestContinuousMeasurementRunning";
const char* const RCDTests =
    "RCDUbReMeasurementRunning RCDIaTaMeasurementRunning RCDIECIaTaMeasurementRunning";
const char* const InRCDMode = "RCDMonitoring RCDUbReMeasurementRunning RCDIaTaMeasurementRunning "
                              "RCDIECIaTaMeasurementRunning RCDIECCleanUp";

/// What holds in every state under the root, whatever the state's own transitions say.
const std::vector<Target> RootTargets = {
    {Everywhere, "CommunicationError", "CommunicationRecovery"},
    {Everywhere, "CommunicationError RestartRequested", "CommunicationRecovery"},
    {Everywhere, "CommunicationError UpdateRequested TesterMode=3", "CommunicationRecovery"},
    {Everywhere, "RestartRequested", "RestartingTester"},
    {Everywhere, "RestartRequested UpdateRequested TesterMode=3", "RestartingTester"},
    {Everywhere, "TesterMode=1", "RestartingTester"},
    {Everywhere, "TesterMode=2 UpdateRequested", "RestartingTester"},
};

const std::vector<Target> ConnectionTargets = {
    {"TesterOperations", "", "Initialization"},
    {"Initialization TesterConfiguration", "", "Monitoring"},
    {"Monitoring", "", "none"},
    {"CommunicationRecovery RestartingTester", "", "TesterOperations"},
    {"CommunicationRecovery", "CommunicationError RestartRequested", "none"},
    {"RestartingTester", "CommunicationError", "TesterOperations"},
    {"Monitoring", "DeviceInformationRequested", "TesterConfiguration"},
    {"Monitoring", "CalibrationDateTimeConfigurationRequested", "TesterConfiguration"},
    {"TesterConfiguration", "DeviceInformationRequested", "none"},
    {"Initialization Monitoring", "UpdateRequested", "AwaitUpdateAction"},
    {"Initialization Monitoring", "TesterMode=3", "AwaitUpdateAction"},
    {"Monitoring", "UpdateRequested DeviceInformationRequested", "AwaitUpdateAction"},
    {"AwaitUpdateAction", "", "none"},
    {"AwaitUpdateAction", "UpdateRequested", "none"},
    {"AwaitUpdateAction", "TesterMode=3", "none"},
    {"AwaitUpdateAction", "UpdateRequested TesterMode=3", "Updating"},
    {"Updating", "TesterMode=3", "AwaitUpdateAction"},
    {"Updating", "UpdateRequested TesterMode=3", "AwaitUpdateAction"},
    {"Updating", "", "Initialization"},
    {"Updating", "UpdateRequested", "Initialization"},
};

/// In measurement mode, with settings of the continuous RPE measurement where a row does not name others.
const std::vector<Target> MeasurementTargets = {
    {"Monitoring", "Settings=9", "MeasurementMode"},
    {"Monitoring", "RCD=0", "RCDMeasurementMode"},
    {"Monitoring", "RCDIEC=1", "RCDMeasurementMode"},
    {"MeasurementMode", "", "PreparingMeasurement"},
    {"MeasurementMode", "IsMeasurementModeActive=0", "Monitoring"},
    {"MeasurementMode", "AbortMeasurementRequested", "AbortingMeasurement"},
    {"MeasurementMode", "AbortMeasurementRequested MeasurementStatus=2", "PreparingMeasurement"},
    {Measuring, "AbortMeasurementRequested MeasurementStatus=5 MeasurementFunctionStatus=7",
     "AbortingMeasurement"},
    {Measuring, "AbortMeasurementRequested MeasurementStatus=2 MeasurementFunctionStatus=7", "none"},
    {Measuring, "IsMeasurementModeActive=0", "Monitoring"},
    {Measuring, "IsMeasurementModeActive=0 AbortMeasurementRequested", "AbortingMeasurement"},
    {"PreparingMeasurement", "Settings=1 PrepareMeasurementRequested", "RCDMeasurementMode"},
    {"PreparingMeasurement", "StartMeasurementRequested MeasurementStatus=1", "none"},
    {"PreparingMeasurement", "StartMeasurementRequested MeasurementStatus=2", "StartingMeasurement"},
    {"PreparingMeasurement", "StartMeasurementRequested AbortMeasurementRequested MeasurementStatus=2",
     "StartingMeasurement"},
    {"PreparingMeasurement", "StartMeasurementRequested AbortMeasurementRequested MeasurementStatus=3",
     "AbortingMeasurement"},
    {"PreparingMeasurement", "StartMeasurementRequested PrepareMeasurementRequested MeasurementStatus=2",
     "RCDMeasurementMode"},
    {"StartingMeasurement", "Settings=9 CurrentMeasurementType=9 MeasurementStatus=4",
     "HVTestContinuousMeasurementRunning"},
    {"StartingMeasurement", "Settings=9 CurrentMeasurementType=2 MeasurementStatus=4", "none"},
    {"StartingMeasurement", "Settings=2 CurrentMeasurementType=2 MeasurementStatus=4",
     "ContinuousMeasurementRunning"},
    {"StartingMeasurement", "Settings=97 CurrentMeasurementType=1 MeasurementStatus=4",
     "SingleMeasurementRunning"},
    {Continuous, "MeasurementStatus=5", "none"},
    {Continuous, "MeasurementStatus=5 MeasurementTimeElapsed", "StoppingMeasurement"},
    {Continuous, "MeasurementStatus=5 MeasurementTimeElapsed AbortMeasurementRequested",
     "AbortingMeasurement"},
    {"SingleMeasurementRunning", "CurrentMeasurementType=1 MeasurementStatus=5 IECResult=0.5",
     "StoppingMeasurement"},
    {"SingleMeasurementRunning", "CurrentMeasurementType=1 MeasurementStatus=5 IECResult=0", "none"},
    {"StoppingMeasurement AbortingMeasurement", "MeasurementStatus=7", "MeasurementMode"},
    {"StoppingMeasurement", "AbortMeasurementRequested MeasurementStatus=7", "AbortingMeasurement"},
    {"AbortingMeasurement", "AbortMeasurementRequested MeasurementStatus=5", "none"},
    {"AbortingMeasurement", "IsMeasurementModeActive=0 MeasurementStatus=5", "none"},
    {"AbortingMeasurement", "IsMeasurementModeActive=0 AbortMeasurementRequested MeasurementStatus=7",
     "MeasurementMode"},
};

/// In measurement mode as well. Preparing hands every function over that is requested anew; RCD measurement
/// mode sends those back that are no RCD tests.
const std::vector<Target> RCDTargets = {
    {"PreparingMeasurement", "RCD=0 PrepareMeasurementRequested", "RCDMeasurementMode"},
    {"RCDMeasurementMode RCDMonitoring", "Settings=1 PrepareMeasurementRequested", "MeasurementMode"},
    {InRCDMode, "Settings=1 PrepareMeasurementRequested IsMeasurementModeActive=0", "MeasurementMode"},
    {InRCDMode, "Settings=1 IsMeasurementModeActive=0", "Monitoring"},
    {InRCDMode, "Settings=1 MeasurementStatus=4", "none"},
    {"RCDMeasurementMode", "RCD=0 PrepareMeasurementRequested StartMeasurementRequested", "RCDMonitoring"},
    {"RCDMonitoring", "RCD=0 PrepareMeasurementRequested", "none"},
    {"RCDMonitoring", "RCDIEC=1 PrepareMeasurementRequested", "none"},
    {"RCDMonitoring", "RCD=0 StartMeasurementRequested", "RCDUbReMeasurementRunning"},
    {"RCDMonitoring", "RCD=1 StartMeasurementRequested", "RCDIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCD=2 StartMeasurementRequested", "RCDIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCDIEC=1 StartMeasurementRequested", "RCDIECIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCDIEC=2 StartMeasurementRequested", "RCDIECIaTaMeasurementRunning"},
    {"RCDMonitoring", "RCDIEC=3 StartMeasurementRequested", "RCDIECCleanUp"},
    {"RCDMonitoring", "RCD=-1 StartMeasurementRequested", "none"},
    {"RCDMonitoring", "RCD=3 StartMeasurementRequested", "none"},
    {"RCDMonitoring", "RCDIEC=0 StartMeasurementRequested", "none"},
    {RCDTests, "MeasurementStatus=7", "RCDMonitoring"},
    {RCDTests, "MeasurementStatus=7 IsMeasurementModeActive=0", "Monitoring"},
    {RCDTests, "MeasurementStatus=4 AbortMeasurementRequested", "RCDMonitoring"},
    {RCDTests, "MeasurementStatus=2 AbortMeasurementRequested", "RCDMonitoring"},
    {RCDTests, "MeasurementStatus=4 AbortMeasurementRequested IsMeasurementModeActive=0", "Monitoring"},
    {"RCDIECIaTaMeasurementRunning", "RCDIEC=3 MeasurementStatus=4", "RCDMonitoring"},
    {"RCDIECCleanUp", "RCDIEC=3 MeasurementStatus=7", "RCDMonitoring"},
    {"RCDIECCleanUp", "RCDIEC=3 MeasurementStatus=4 AbortMeasurementRequested", "none"},
};

void AddTargets(const QByteArray& conditions, const std::vector<Target>& targets)
{
    for (const Target& target : targets) {
        for (const QByteArray& from : QByteArray(target.from).split(' ')) {
            QTest::addRow("%s, %s", from.constData(), target.conditions)
                << ClassOf(from) << conditions + ' ' + target.conditions << ClassOf(target.to);
        }
    }
}

} // namespace

void TestStateMachineRunner::FindsTheTargetInTheWholeMachine_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QByteArray>("conditions");
    QTest::addColumn<QString>("to");
    AddTargets({}, RootTargets);
    AddTargets({}, ConnectionTargets);
    AddTargets("IsMeasurementModeActive Settings=2", MeasurementTargets);
    AddTargets("IsMeasurementModeActive Settings=2", RCDTargets);
}

void TestStateMachineRunner::FindsTheTargetInTheWholeMachine()
{
    QFETCH(const QString, from);
    QFETCH(const QByteArray, conditions);
    QFETCH(const QString, to);
    Machine machine;
    State* state = RunnerView::StatesOf(machine.runner).value(from);
    QVERIFY(state != nullptr);
    SetCells(machine.context, conditions);
    QCOMPARE(RunnerView::NameOf(machine.runner.FindTransition(state)), to);
}

void TestStateMachineRunner::AbortOfAnRCDTestLeaves521_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("error");
    for (const QByteArray& state : QByteArray(RCDTests).split(' ')) {
        QTest::newRow(state) << ClassOf(state) << 521;
    }
    QTest::newRow("RCDIECCleanUp") << ClassOf("RCDIECCleanUp") << 15;
}

/// The guard is asked even when an outer transition wins.
void TestStateMachineRunner::AbortOfAnRCDTestLeaves521()
{
    QFETCH(const QString, from);
    QFETCH(const int, error);
    for (const char* active : {"IsMeasurementModeActive", "IsMeasurementModeActive=0"}) {
        Machine machine;
        SetCells(machine.context, QByteArray("MeasurementStatus=4 AbortMeasurementRequested ") + active);
        machine.runner.FindTransition(RunnerView::StatesOf(machine.runner).value(from));
        QCOMPARE(static_cast<int>(machine.context.ErrorCode.Get()), error);
        QVERIFY(machine.context.AbortMeasurementRequested.Get());
    }
}

void TestStateMachineRunner::DisabledRunnerDoesNothing()
{
    Machine machine;
    machine.runner.AddExternalTransition(machine.runner.GetCurrentState(), &Always, &machine.first);
    machine.runner.RunStateMachineWorker();
    machine.RunPostedSteps();
    QCOMPARE(machine.log.Texts(), QStringList{});
    QCOMPARE(RunnerView::NameOf(machine.runner.GetCurrentState()), QStringLiteral("TesterOperationsState"));
}

void TestStateMachineRunner::StepsCallEntryOnceRunningAlwaysAndExitOnLeaving()
{
    Machine machine;
    machine.EnterFirst();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("first entry"), QStringLiteral("first running"),
                                 QStringLiteral("1")}));
    calls.clear();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("first running"), QStringLiteral("1")}));
    calls.clear();
    answers[1] = true;
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("first running"), QStringLiteral("1"),
                                 QStringLiteral("first exit")}));
    calls.clear();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("second entry"), QStringLiteral("second running"),
                                 QStringLiteral("2")}));
}

void TestStateMachineRunner::NewStateRunsOnTheStepAfterTheSwitch()
{
    Machine machine;
    machine.EnterFirst();
    answers[1] = true;
    machine.runner.RunStateMachineWorker();
    QCOMPARE(machine.runner.GetCurrentState(), &machine.second);
    QVERIFY(calls.filter(QStringLiteral("second")).isEmpty());
    answers[2] = true;
    machine.runner.RunStateMachineWorker(); // Back again: a new visit has a new entry.
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls.count(QStringLiteral("first entry")), 2);
}

void TestStateMachineRunner::OnlyTheLeafsHooksRun()
{
    Machine machine;
    RecordingState parent("parent", &machine.context);
    RecordingState child("child", &machine.context, &parent);
    machine.runner.AddExternalTransition(machine.runner.GetCurrentState(), &Always, &child);
    machine.runner.AddExternalTransition(&child, &Always, &machine.first);
    machine.runner.AddExternalTransition(&parent, &Never, &machine.first);
    machine.runner.AddExternalTransition(&machine.first, &Never, &child);
    machine.runner.Enable();
    machine.runner.RunStateMachineWorker();
    machine.runner.RunStateMachineWorker();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("child entry"), QStringLiteral("child running"),
                                 QStringLiteral("child exit"), QStringLiteral("first entry"),
                                 QStringLiteral("first running")}));
}

void TestStateMachineRunner::EveryStepIsFollowedByAPauseOfAHundredMilliseconds()
{
    Machine machine;
    machine.EnterFirst();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(machine.pauses.Text(), QStringLiteral("100 100"));
}

void TestStateMachineRunner::StepPostsExactlyOneMore()
{
    Machine machine;
    machine.EnterFirst();
    for (int step = 1; step <= 3; ++step) {
        machine.RunPostedSteps();
        QCOMPARE(calls.count(QStringLiteral("first running")), step);
    }
}

void TestStateMachineRunner::InitializationRunsOnceAndLeadsToMonitoring()
{
    Engine engine;
    const PauseLog pauses;
    engine.AnswerByCommand({{'s', Wire::IdleStatus},
                            {'W', Wire::Bytes("50415431323334353637383931303541424344323031361fe6")},
                            {'R', Wire::Bytes("2412312359586199")},
                            {'T', Wire::Bytes("200229000000b2b5")}});
    StateMachineRunner runner(&engine.context, nullptr);
    runner.Enable();
    runner.RunStateMachineWorker();
    QCOMPARE(RunnerView::NameOf(runner.GetCurrentState()), QStringLiteral("InitializationState"));
    QCOMPARE(Banners(engine.log), (QStringList{Banner("ENTERING TESTER OPERATIONS STATE"),
                                               Banner("LEAVING TESTER OPERATIONS STATE")}));
    engine.log.Clear();
    runner.RunStateMachineWorker();
    QCOMPARE(RunnerView::NameOf(runner.GetCurrentState()), QStringLiteral("MonitoringState"));
    QCOMPARE(Banners(engine.log),
             (QStringList{Banner("ENTERING INITIALIZATION STATE"), Banner("LEAVING INITIALIZATION STATE")}));
    QCOMPARE(engine.Commands(), QByteArray("sWRT"));
    runner.RunStateMachineWorker();
    QCOMPARE(engine.Commands(), QByteArray("sWRTs"));
}

void TestStateMachineRunner::RCDTestIsAbortedAndLeft()
{
    Engine engine;
    const PauseLog pauses;
    engine.AnswerByCommand({{'s', Wire::IdleStatus},
                            {'W', Wire::Bytes("50415431323334353637383931303541424344323031361fe6")},
                            {'R', Wire::Bytes("2412312359586199")},
                            {'T', Wire::Bytes("200229000000b2b5")}});
    StateMachineRunner runner(&engine.context, nullptr);
    runner.Enable();
    QStringList visited;
    const auto step = [&](int steps) {
        for (int taken = 0; taken < steps; ++taken) {
            runner.RunStateMachineWorker();
            visited.append(RunnerView::NameOf(runner.GetCurrentState()));
        }
    };
    step(2);
    SetCells(engine.context, "RCD=1");
    engine.context.IsMeasurementModeActive.Set(true);
    step(2);
    engine.context.StartMeasurementRequested.Set(true);
    step(2);
    QVERIFY(!engine.context.StartMeasurementRequested.Get()); // Entered, so that it goes back but once.
    QVERIFY(engine.context.IsMeasurementRunning.Get());
    engine.context.AbortMeasurementRequested.Set(true);
    step(1);
    QCOMPARE(static_cast<int>(engine.context.ErrorCode.Get()), 521);
    QVERIFY(!engine.context.IsMeasurementRunning.Get());
    step(1);
    engine.context.IsMeasurementModeActive.Set(false);
    step(1);
    QCOMPARE(
        visited,
        (QStringList{QStringLiteral("InitializationState"), QStringLiteral("MonitoringState"),
                     QStringLiteral("RCDMeasurementModeState"), QStringLiteral("RCDMonitoringState"),
                     QStringLiteral("RCDIaTaMeasurementRunningState"),
                     QStringLiteral("RCDIaTaMeasurementRunningState"), QStringLiteral("RCDMonitoringState"),
                     QStringLiteral("RCDMonitoringState"), QStringLiteral("MonitoringState")}));
}

void TestStateMachineRunner::UpdateLeadsWhereTheInstrumentIsAfterwards_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QString>("state");
    QTest::newRow("normal mode") << Wire::IdleStatus << QStringLiteral("InitializationState");
    QTest::newRow("calibration mode")
        << Wire::CalibrationModeStatus << QStringLiteral("RestartingTesterState");
    QTest::newRow("mode 2") << Wire::Mode2Status << QStringLiteral("RestartingTesterState");
    QTest::newRow("update mode") << Wire::UpdateModeStatus << QStringLiteral("AwaitUpdateActionState");
}

void TestStateMachineRunner::UpdateLeadsWhereTheInstrumentIsAfterwards()
{
    QFETCH(const QByteArray, status);
    QFETCH(const QString, state);
    Engine engine;
    const PauseLog pauses;
    QMap<char, QByteArray> answers = Wire::UpdateAnswers(Wire::UpdateModeStatus);
    answers['W'] = Wire::Bytes("50415431323334353637383931303541424344323031361fe6");
    engine.peer.Answer([&answers, status](const QByteArray& request) {
        const QByteArray answer = answers.value(request.at(0));
        if (request == Wire::Finish) {
            answers['s'] = status;
        }
        return answer;
    });
    engine.context.SetUpdate(Wire::Sector(0), Wire::Confirmation);
    engine.context.UpdateRequested.Set(true);
    StateMachineRunner runner(&engine.context, nullptr);
    runner.Enable();
    QStringList visited;
    for (int step = 1; step <= 4; ++step) {
        runner.RunStateMachineWorker();
        visited += RunnerView::NameOf(runner.GetCurrentState());
    }
    QCOMPARE(visited,
             (QStringList{QStringLiteral("InitializationState"), QStringLiteral("AwaitUpdateActionState"),
                          QStringLiteral("UpdatingState"), state}));
    QCOMPARE(engine.Commands(), QByteArray("sWsVFZs"));
    QVERIFY(!engine.context.UpdateRequested.Get());
    QCOMPARE(static_cast<int>(engine.context.OperationStatus.Get()), 0);
}

void TestStateMachineRunner::EnableStartsAtTheRootAgain()
{
    Machine machine;
    State* root = machine.runner.GetCurrentState();
    machine.EnterFirst();
    machine.runner.Disable();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(machine.runner.GetCurrentState(), &machine.first);
    machine.runner.Enable();
    QVERIFY(machine.runner.IsEnabled());
    QCOMPARE(machine.runner.GetCurrentState(), root);
    machine.log.Clear();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(Banners(machine.log).constFirst(), Banner("ENTERING TESTER OPERATIONS STATE"));
}

void TestStateMachineRunner::EnableOfAnEnabledRunnerDoesNothing()
{
    Machine machine;
    machine.EnterFirst();
    machine.runner.RunStateMachineWorker();
    machine.runner.Enable();
    QCOMPARE(machine.runner.GetCurrentState(), &machine.first);
    calls.clear();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, (QStringList{QStringLiteral("first running"), QStringLiteral("1")}));
}

void TestStateMachineRunner::EnableWhileADisableIsRequestedDoesNothing()
{
    Machine machine;
    machine.EnterFirst();
    machine.runner.Disable();
    machine.runner.Enable();
    machine.runner.RunStateMachineWorker();
    QCOMPARE(calls, QStringList{});
    QVERIFY(!machine.runner.IsEnabled());
    machine.runner.Disable(); // Of a disabled runner: the request stands until a step takes it.
    machine.runner.Enable();
    QVERIFY(!machine.runner.IsEnabled());
    machine.runner.RunStateMachineWorker();
    machine.runner.Enable();
    QVERIFY(machine.runner.IsEnabled());
}

void TestStateMachineRunner::DisableLetsOneMoreStepRunThatChangesAndPostsNothing()
{
    Machine machine;
    machine.EnterFirst();
    answers[1] = true;
    machine.runner.Disable();
    QVERIFY(machine.runner.IsEnabled());
    machine.log.Clear();
    machine.RunPostedSteps();
    QVERIFY(!machine.runner.IsEnabled());
    QCOMPARE(machine.runner.GetCurrentState(), &machine.first);
    machine.runner.Enable(); // A step that was posted would now show.
    machine.RunPostedSteps();
    QCOMPARE(calls, QStringList{}); // No exit, no entry, no guard.
    QCOMPARE(machine.log.Texts(), QStringList{});
}

void TestStateMachineRunner::DisableStopsTheMeasurementTimer()
{
    Machine machine;
    machine.context.StartMeasurementTimer(5);
    QVERIFY(machine.context.GetMeasurementTimer()->isActive());
    const QSignalSpy stops(&machine.context, &StateMachineContext::StopMeasurementTimerRequested);
    machine.runner.Disable();
    QCOMPARE(stops.count(), 1);
    QVERIFY(!machine.context.GetMeasurementTimer()->isActive());
}

void TestStateMachineRunner::DisableWaitsForTheStepUnderWay()
{
    Machine machine;
    machine.EnterFirst();
    answers[1] = true;
    QSemaphore running;
    QSemaphore release;
    std::atomic<bool> hasLeft{false};
    machine.first.onRunning = [&]() {
        running.release();
        release.acquire();
    };
    machine.first.onExit = [&hasLeft]() { hasLeft = true; };
    std::thread worker([&machine]() { machine.runner.RunStateMachineWorker(); });
    running.acquire();
    std::thread releaser([&release]() {
        QThread::msleep(300); // Long enough for a disable that does not wait to show.
        release.release();
    });
    machine.runner.Disable();
    const bool hadLeft = hasLeft; // The switch of states is part of the step.
    releaser.join();
    worker.join();
    QVERIFY(hadLeft);
}

void TestStateMachineRunner::DisableDoesNotWaitForAnEntry()
{
    Machine machine;
    machine.EnterFirst();
    QSemaphore entered;
    QSemaphore release;
    QSemaphore disabled;
    machine.first.onEntry = [&]() {
        entered.release();
        release.acquire();
    };
    std::thread worker([&machine]() { machine.runner.RunStateMachineWorker(); });
    entered.acquire();
    std::thread disabler([&]() {
        machine.runner.Disable();
        disabled.release();
    });
    const bool hasReturned = disabled.tryAcquire(1, 10000);
    release.release();
    worker.join();
    disabler.join();
    QVERIFY(hasReturned);
}

void TestStateMachineRunner::RunnerOnAThreadStepsByItselfAndGoesWithTheThread()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const LogCapture log;
    RecordingState first("first", &context);
    QSemaphore steps;
    QThread* seen = nullptr;
    first.onRunning = [&]() {
        seen = QThread::currentThread();
        steps.release();
    };
    auto* runner = new StateMachineRunner(&context, nullptr);
    const QPointer<StateMachineRunner> watch(runner);
    runner->AddExternalTransition(runner->GetCurrentState(), &Always, &first);
    runner->AddExternalTransition(&first, &Never, &first);
    runner->Enable();
    QThread thread;
    runner->moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, runner, &StateMachineRunner::RunStateMachineWorker);
    QObject::connect(&thread, &QThread::finished, runner, &StateMachineRunner::onWorkerFinisched);
    thread.start();
    const bool hasStepped = steps.tryAcquire(3, 10000);
    runner->Disable();
    thread.quit();
    thread.wait();
    QVERIFY(hasStepped);
    QCOMPARE(seen, &thread);
    QVERIFY(watch.isNull());
}

QTEST_GUILESS_MAIN(TestStateMachineRunner)
#include "tst_statemachinerunner.moc"
