#include <array>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <Vesmar/iecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "machine/statemachinerunner.h"
#include "machine/transitions.h"
#include "unit/machine/runnerview.h"
#include "unit/states/updatewire.h"

using Vesmar::Guard;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::State;
using Vesmar::StateMachineContext;
using Vesmar::StateMachineRunner;

using Setup = std::function<void(StateMachineContext&)>;

Q_DECLARE_METATYPE(Setup)

namespace
{

/// What guards and states of the tests were called for, in order.
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

/// Notes its hooks as "<name> entry" and so on, and does in each what the test says.
class RecordingState : public State
{
public:
    RecordingState(const char* name, StateMachineContext* context, State* parentState = nullptr)
        : State(context, parentState, nullptr), _name(QLatin1String(name))
    {
    }

    void OnEntry() override { Note("entry", onEntry); }
    void OnRunning() override { Note("running", onRunning); }
    void OnExit() override { Note("exit", onExit); }

    std::function<void()> onEntry;
    std::function<void()> onRunning;
    std::function<void()> onExit;

private:
    void Note(const char* hook, const std::function<void()>& action)
    {
        calls.append(_name + QLatin1Char(' ') + QLatin1String(hook));
        if (action) {
            action();
        }
    }

    QString _name;
};

/// A runner over a context without a line, whose steps the test takes one by one.
struct Machine {
    StateMachineContext context{nullptr, nullptr, nullptr, nullptr, nullptr};
    LogCapture log;
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

/// The whole machine as it is meant to be.
const QMap<QString, QString> ParentByState = {
    {QStringLiteral("TesterOperationsState"), QStringLiteral("none")},
    {QStringLiteral("AwaitUpdateActionState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("CommunicationRecoveryState"), QStringLiteral("none")},
    {QStringLiteral("UpdatingState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("InitializationState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("RestartingTesterState"), QStringLiteral("none")},
    {QStringLiteral("MonitoringState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("TesterConfigurationState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("MeasurementModeState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("PreparingMeasurementState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("StartingMeasurementState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("SingleMeasurementRunningState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("ContinuousMeasurementRunningState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("StoppingMeasurementState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("AbortingMeasurementState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("HVTestContinuousMeasurementRunningState"), QStringLiteral("MeasurementModeState")},
    {QStringLiteral("RCDMeasurementModeState"), QStringLiteral("TesterOperationsState")},
    {QStringLiteral("RCDMonitoringState"), QStringLiteral("RCDMeasurementModeState")},
    {QStringLiteral("RCDUbReMeasurementRunningState"), QStringLiteral("RCDMeasurementModeState")},
    {QStringLiteral("RCDIaTaMeasurementRunningState"), QStringLiteral("RCDMeasurementModeState")},
    {QStringLiteral("RCDIECIaTaMeasurementRunningState"), QStringLiteral("RCDMeasurementModeState")},
    {QStringLiteral("RCDIECCleanUpState"), QStringLiteral("RCDMeasurementModeState")},
};

struct MapRow {
    const char* from;
    const char* guard;
    const char* to;
    const char* kind;
};

const std::vector<MapRow> TransitionMap = {
    {"TesterOperationsState", "TesterOperationsToCommunicationRecoveryTransition",
     "CommunicationRecoveryState", "external"},
    {"TesterOperationsState", "TesterOperationsToRestartingTesterTransition", "RestartingTesterState",
     "external"},
    {"TesterOperationsState", "TesterOperationsToInitializationTransition", "InitializationState",
     "internal"},
    {"RestartingTesterState", "RestartingTesterToTesterOperationsTransition", "TesterOperationsState",
     "external"},
    {"CommunicationRecoveryState", "CommunicationRecoveryToTesterOperationsTransition",
     "TesterOperationsState", "external"},
    {"InitializationState", "InitializationToAwaitUpdateActionTransition", "AwaitUpdateActionState",
     "external"},
    {"InitializationState", "InitializationToMonitoringTransition", "MonitoringState", "external"},
    {"MonitoringState", "MonitoringToAwaitUpdateActionTransition", "AwaitUpdateActionState", "external"},
    {"MonitoringState", "MonitoringToTesterConfigurationTransition", "TesterConfigurationState", "external"},
    {"MonitoringState", "MonitoringToRCDMeasurementModeTransition", "RCDMeasurementModeState", "external"},
    {"MonitoringState", "MonitoringToMeasurementModeTransition", "MeasurementModeState", "external"},
    {"TesterConfigurationState", "TesterConfigurationToMonitoringTransition", "MonitoringState", "external"},
    {"AwaitUpdateActionState", "AwaitUpdateActionToUpdatingTransition", "UpdatingState", "external"},
    {"UpdatingState", "UpdatingToAwaitUpdateActionTransition", "AwaitUpdateActionState", "external"},
    {"UpdatingState", "UpdatingToInitializationTransition", "InitializationState", "external"},
    {"MeasurementModeState", "MeasurementModeToAbortingMeasurementTransition", "AbortingMeasurementState",
     "external"},
    {"MeasurementModeState", "MeasurementModeToMonitoringTransition", "MonitoringState", "external"},
    {"MeasurementModeState", "MeasurementModeToPreparingMeasurementTransition", "PreparingMeasurementState",
     "internal"},
    {"AbortingMeasurementState", "AbortingMeasurementToMeasurementModeTransition", "MeasurementModeState",
     "external"},
    {"PreparingMeasurementState", "PreparingMeasurementToRCDMeasurementModeTransition",
     "RCDMeasurementModeState", "external"},
    {"PreparingMeasurementState", "PreparingMeasurementToStartingMeasurementTransition",
     "StartingMeasurementState", "external"},
    {"StartingMeasurementState", "StartingMeasurementToSingleMeasurementRunningTransition",
     "SingleMeasurementRunningState", "external"},
    {"StartingMeasurementState", "StartingMeasurementToHVTestContinuousMeasurementRunningTransition",
     "HVTestContinuousMeasurementRunningState", "external"},
    {"StartingMeasurementState", "StartingMeasurementToContinuousMeasurementRunningTransition",
     "ContinuousMeasurementRunningState", "external"},
    {"SingleMeasurementRunningState", "SingleMeasurementRunningToStoppingMeasurementTransition",
     "StoppingMeasurementState", "external"},
    {"ContinuousMeasurementRunningState", "ContinuousMeasurementRunningToStoppingMeasurementTransition",
     "StoppingMeasurementState", "external"},
    {"HVTestContinuousMeasurementRunningState", "ContinuousMeasurementRunningToStoppingMeasurementTransition",
     "StoppingMeasurementState", "external"},
    {"StoppingMeasurementState", "StoppingMeasurementToMeasurementModeTransition", "MeasurementModeState",
     "external"},
    {"RCDMeasurementModeState", "RCDMeasurementModeToMeasurementModeTransition", "MeasurementModeState",
     "external"},
    {"RCDMeasurementModeState", "RCDMeasurementModeToMonitoringTransition", "MonitoringState", "external"},
    {"RCDMeasurementModeState", "RCDMeasurementModeToRCDMonitoringTransition", "RCDMonitoringState",
     "internal"},
    {"RCDMonitoringState", "RCDMonitoringToRCDUbReMeasurementRunningTransition",
     "RCDUbReMeasurementRunningState", "external"},
    {"RCDMonitoringState", "RCDMonitoringToRCDIaTaMeasurementRunningTransition",
     "RCDIaTaMeasurementRunningState", "external"},
    {"RCDMonitoringState", "RCDMonitoringToRCDIECIaTaMeasurementRunningTransition",
     "RCDIECIaTaMeasurementRunningState", "external"},
    {"RCDMonitoringState", "RCDMonitoringToRCDIECCleanUpTransition", "RCDIECCleanUpState", "external"},
    {"RCDUbReMeasurementRunningState", "RCDUbReMeasurementRunningToRCDMonitoringTransition",
     "RCDMonitoringState", "external"},
    {"RCDIaTaMeasurementRunningState", "RCDIaTaMeasurementRunningToRCDMonitoringTransition",
     "RCDMonitoringState", "external"},
    {"RCDIECIaTaMeasurementRunningState", "RCDIECIaTaMeasurementRunningToRCDMonitoringTransition",
     "RCDMonitoringState", "external"},
    {"RCDIECCleanUpState", "RCDIECCleanUpToRCDMonitoringTransition", "RCDMonitoringState", "external"},
};

void SetSettings(StateMachineContext& context, Vesmar::MeasurementSettings* settings)
{
    Vesmar::ReplaceOwned(context.TestSettings, settings, nullptr);
}

void SetSettingsType(StateMachineContext& context, MeasurementType type)
{
    SetSettings(context, new Vesmar::MeasurementSettings(type, nullptr));
}

void SetRCDMode(StateMachineContext& context, int mode)
{
    auto* settings = new Vesmar::RCDSettings;
    settings->SetMode(static_cast<Vesmar::RCDSettings::RCDMode>(mode));
    SetSettings(context, settings);
}

void SetRCDIECMode(StateMachineContext& context, int mode)
{
    auto* settings = new Vesmar::RCDIECSettings;
    settings->SetMode(static_cast<Vesmar::RCDIECSettings::RCDIECMode>(mode));
    SetSettings(context, settings);
}

/// The states that run an RCD test, each with the settings that lead to it.
struct RCDTest {
    const char* state;
    void (*setMode)(StateMachineContext& context, int mode);
    int mode;
};

const std::vector<RCDTest> RCDTests = {
    {"RCDUbReMeasurementRunningState", &SetRCDMode, 0},
    {"RCDIaTaMeasurementRunningState", &SetRCDMode, 1},
    {"RCDIaTaMeasurementRunningState", &SetRCDMode, 2},
    {"RCDIECIaTaMeasurementRunningState", &SetRCDIECMode, 1},
    {"RCDIECIaTaMeasurementRunningState", &SetRCDIECMode, 2},
    {"RCDIECCleanUpState", &SetRCDIECMode, 3},
};

/// Every function that has settings, and none.
const std::vector<int> EveryFunction = {-1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 97};

bool IsRCDFunction(int function)
{
    return function == 10 || function == 11;
}

/// A row for `FindTransition` on the whole machine; `to` is "none" where the machine stays.
void AddTargetRow(const char* from, const char* when, const char* to, const Setup& setup)
{
    QTest::addRow("%s, %s", from, when)
        << QString(QLatin1String(from)) << setup << QString(QLatin1String(to));
}

} // namespace

class TestStateMachineRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void TreeHasEveryStateUnderItsParent();
    void MapHasEveryTransitionInTheOrderThatDecides();
    void EveryStateHasAnExternalTransition();
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
    void StepTakesAtLeastAHundredMilliseconds();
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

void TestStateMachineRunner::TreeHasEveryStateUnderItsParent()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    QCOMPARE(ParentByState.size(), 22);
    QCOMPARE(RunnerView::TreeOf(runner), ParentByState);
    for (const State* state : RunnerView::StatesOf(runner)) {
        QCOMPARE(state->GetContext(), &context);
    }
}

void TestStateMachineRunner::MapHasEveryTransitionInTheOrderThatDecides()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    QMap<QString, QStringList> expected;
    for (const char* kind : {"external", "internal"}) {
        for (const MapRow& row : TransitionMap) {
            if (qstrcmp(row.kind, kind) == 0) {
                expected[QLatin1String(row.from)] += RunnerView::TransitionText(
                    QLatin1String(row.guard), QLatin1String(row.to), QLatin1String(kind));
            }
        }
    }
    const QMap<QString, State*> states = RunnerView::StatesOf(runner);
    QCOMPARE(TransitionMap.size(), 39U);
    QCOMPARE(expected.keys(), states.keys());
    for (auto state = states.cbegin(); state != states.cend(); ++state) {
        QCOMPARE(RunnerView::TransitionsOf(runner, state.value()), expected.value(state.key()));
    }
}

void TestStateMachineRunner::EveryStateHasAnExternalTransition()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    for (State* state : RunnerView::StatesOf(runner)) {
        QVERIFY2(!runner.GetExternalTransitions().value(state).isEmpty(),
                 qPrintable(RunnerView::NameOf(state)));
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

static void AddConnectionTargets()
{
    const auto nothing = [](StateMachineContext&) {};
    const auto lost = [](StateMachineContext& context) { context.CommunicationError.Set(true); };
    AddTargetRow("TesterOperationsState", "no request", "InitializationState", nothing);
    AddTargetRow("InitializationState", "no request", "MonitoringState", nothing);
    AddTargetRow("MonitoringState", "no request", "none", nothing);
    AddTargetRow("TesterConfigurationState", "no request", "MonitoringState", nothing);
    AddTargetRow("CommunicationRecoveryState", "link back", "TesterOperationsState", nothing);
    AddTargetRow("RestartingTesterState", "no request", "TesterOperationsState", nothing);
    AddTargetRow("CommunicationRecoveryState", "link lost", "none", lost);
    AddTargetRow("RestartingTesterState", "link lost", "TesterOperationsState", lost);
    AddTargetRow("CommunicationRecoveryState", "link lost and restart", "none",
                 [](StateMachineContext& context) {
                     context.CommunicationError.Set(true);
                     context.RestartRequested.Set(true);
                 });
}

/// What holds in every state under the root, whatever the state's own transitions say.
static void AddRootTargets()
{
    for (auto row = ParentByState.cbegin(); row != ParentByState.cend(); ++row) {
        const QByteArray state = row.key().toLatin1();
        const bool isOutside = row.value() == QLatin1String("none") && state != "TesterOperationsState";
        if (isOutside) {
            continue;
        }
        AddTargetRow(state, "link lost", "CommunicationRecoveryState",
                     [](StateMachineContext& context) { context.CommunicationError.Set(true); });
        AddTargetRow(state, "link lost and restart", "CommunicationRecoveryState",
                     [](StateMachineContext& context) {
                         context.CommunicationError.Set(true);
                         context.RestartRequested.Set(true);
                     });
        AddTargetRow(state, "restart", "RestartingTesterState",
                     [](StateMachineContext& context) { context.RestartRequested.Set(true); });
        AddTargetRow(state, "restart in update mode", "RestartingTesterState",
                     [](StateMachineContext& context) {
                         context.TesterMode.Set(OperationMode::Update);
                         context.RestartRequested.Set(true);
                     });
        AddTargetRow(state, "calibration mode", "RestartingTesterState", [](StateMachineContext& context) {
            context.TesterMode.Set(OperationMode::Calibration);
        });
        AddTargetRow(state, "mode 2", "RestartingTesterState",
                     [](StateMachineContext& context) { context.TesterMode.Set(OperationMode::Mode2); });
    }
}

static void RequestInformation(StateMachineContext& context)
{
    context.DeviceInformationRequested.Set(true);
}

static void AddConfigurationTargets()
{
    AddTargetRow("MonitoringState", "device information", "TesterConfigurationState", &RequestInformation);
    AddTargetRow(
        "MonitoringState", "set the calibration date", "TesterConfigurationState",
        [](StateMachineContext& context) { context.CalibrationDateTimeConfigurationRequested.Set(true); });
    AddTargetRow("TesterConfigurationState", "device information", "none", &RequestInformation);
}

/// An update asked for, at an instrument in this mode.
static Setup UpdateIn(OperationMode mode)
{
    return [mode](StateMachineContext& context) {
        context.UpdateRequested.Set(true);
        context.TesterMode.Set(mode);
    };
}

static Setup BothOf(const Setup& one, const Setup& other)
{
    return [one, other](StateMachineContext& context) {
        one(context);
        other(context);
    };
}

static void AddUpdateTargets()
{
    const auto nothing = [](StateMachineContext&) {};
    const auto stuck = [](StateMachineContext& context) { context.TesterMode.Set(OperationMode::Update); };
    const Setup update = UpdateIn(OperationMode::Normal);
    const Setup both = UpdateIn(OperationMode::Update);
    for (const char* state : {"InitializationState", "MonitoringState"}) {
        AddTargetRow(state, "update", "AwaitUpdateActionState", update);
        AddTargetRow(state, "update mode", "AwaitUpdateActionState", stuck);
    }
    AddTargetRow("MonitoringState", "update and device information", "AwaitUpdateActionState",
                 BothOf(update, &RequestInformation));
    AddTargetRow("AwaitUpdateActionState", "no request", "none", nothing);
    AddTargetRow("AwaitUpdateActionState", "update", "none", update);
    AddTargetRow("AwaitUpdateActionState", "update mode", "none", stuck);
    AddTargetRow("AwaitUpdateActionState", "update and update mode", "UpdatingState", both);
    AddTargetRow("UpdatingState", "update mode", "AwaitUpdateActionState", stuck);
    AddTargetRow("UpdatingState", "update and update mode", "AwaitUpdateActionState", both);
    AddTargetRow("UpdatingState", "normal mode", "InitializationState", nothing);
    AddTargetRow("UpdatingState", "update and normal mode", "InitializationState", update);
}

/// What wins over everything that an update leads to.
static void AddUpdateRootTargets()
{
    const Setup both = UpdateIn(OperationMode::Update);
    const auto lost = [](StateMachineContext& context) { context.CommunicationError.Set(true); };
    const auto restart = [](StateMachineContext& context) { context.RestartRequested.Set(true); };
    for (const char* state :
         {"InitializationState", "MonitoringState", "AwaitUpdateActionState", "UpdatingState"}) {
        AddTargetRow(state, "update, update mode and link lost", "CommunicationRecoveryState",
                     BothOf(both, lost));
        AddTargetRow(state, "update, update mode and restart", "RestartingTesterState",
                     BothOf(both, restart));
        AddTargetRow(state, "update and mode 2", "RestartingTesterState", UpdateIn(OperationMode::Mode2));
    }
}

static void AddMeasurementTargets()
{
    const auto active = [](MeasurementType type) {
        return [type](StateMachineContext& context) {
            SetSettingsType(context, type);
            context.IsMeasurementModeActive.Set(true);
        };
    };
    AddTargetRow("MonitoringState", "measurement mode, high voltage", "MeasurementModeState",
                 active(MeasurementType::HVTest));
    AddTargetRow("MonitoringState", "measurement mode, RCD", "RCDMeasurementModeState",
                 active(MeasurementType::RCD));
    AddTargetRow("MeasurementModeState", "active", "PreparingMeasurementState", active(MeasurementType::RLN));
    AddTargetRow("MeasurementModeState", "not active", "MonitoringState", [](StateMachineContext&) {});
    AddTargetRow("RCDMeasurementModeState", "active", "RCDMonitoringState", active(MeasurementType::RCD));
    AddTargetRow("PreparingMeasurementState", "start and abort", "AbortingMeasurementState",
                 [active](StateMachineContext& context) {
                     active(MeasurementType::RLN)(context);
                     context.StartMeasurementRequested.Set(true);
                     context.AbortMeasurementRequested.Set(true);
                     context.MeasurementStatus.Set(MeasurementState::Starting);
                 });
    const auto starting = [active](MeasurementType settings, MeasurementType current) {
        return [=](StateMachineContext& context) {
            active(settings)(context);
            context.CurrentMeasurementType.Set(current);
            context.MeasurementStatus.Set(MeasurementState::Running);
        };
    };
    AddTargetRow("StartingMeasurementState", "high voltage", "HVTestContinuousMeasurementRunningState",
                 starting(MeasurementType::HVTest, MeasurementType::HVTest));
    AddTargetRow("StartingMeasurementState", "high voltage settings alone", "none",
                 starting(MeasurementType::HVTest, MeasurementType::RPE));
    AddTargetRow("StartingMeasurementState", "continuous", "ContinuousMeasurementRunningState",
                 starting(MeasurementType::RPE, MeasurementType::RPE));
    AddTargetRow("StartingMeasurementState", "single", "SingleMeasurementRunningState",
                 starting(MeasurementType::IEC, MeasurementType::RLN));
}

/// What holds in every state of an ordinary measurement, and in aborting, which is not one of them.
static void AddMeasurementModeTargets()
{
    const auto with = [](bool isActive, bool isAborted, MeasurementState status) {
        return [=](StateMachineContext& context) {
            SetSettingsType(context, MeasurementType::RPE);
            context.IsMeasurementModeActive.Set(isActive);
            context.AbortMeasurementRequested.Set(isAborted);
            context.MeasurementStatus.Set(status);
            context.MeasurementFunctionStatus.Set(Vesmar::FunctionState::Running);
        };
    };
    const Setup aborted = with(true, true, MeasurementState::Measuring);
    const Setup left = with(false, false, MeasurementState::Measuring);
    for (const char* state : {"PreparingMeasurementState", "StartingMeasurementState",
                              "SingleMeasurementRunningState", "ContinuousMeasurementRunningState",
                              "HVTestContinuousMeasurementRunningState", "StoppingMeasurementState"}) {
        AddTargetRow(state, "abort", "AbortingMeasurementState", aborted);
        AddTargetRow(state, "left", "MonitoringState", left);
        AddTargetRow(state, "abort and left", "AbortingMeasurementState",
                     with(false, true, MeasurementState::Measuring));
        AddTargetRow(state, "abort when prepared", "none", with(true, true, MeasurementState::Prepared));
    }
    AddTargetRow("MeasurementModeState", "abort", "AbortingMeasurementState", aborted);
    AddTargetRow("MeasurementModeState", "abort when prepared", "PreparingMeasurementState",
                 with(true, true, MeasurementState::Prepared));
    AddTargetRow("AbortingMeasurementState", "not stopped", "none", aborted);
    AddTargetRow("AbortingMeasurementState", "left", "none", left);
    AddTargetRow("AbortingMeasurementState", "stopped", "MeasurementModeState",
                 with(true, true, MeasurementState::Stopped));
    AddTargetRow("AbortingMeasurementState", "stopped and left", "MeasurementModeState",
                 with(false, true, MeasurementState::Stopped));
    AddTargetRow("StoppingMeasurementState", "stopped", "MeasurementModeState",
                 with(true, false, MeasurementState::Stopped));
    AddTargetRow("StoppingMeasurementState", "stopped and abort", "AbortingMeasurementState",
                 with(true, true, MeasurementState::Stopped));
}

static void AddPreparedTargets()
{
    const auto start = [](bool isPrepareRequested, bool isAborted) {
        return [=](StateMachineContext& context) {
            SetSettingsType(context, MeasurementType::RLN);
            context.IsMeasurementModeActive.Set(true);
            context.MeasurementStatus.Set(MeasurementState::Prepared);
            context.StartMeasurementRequested.Set(true);
            context.PrepareMeasurementRequested.Set(isPrepareRequested);
            context.AbortMeasurementRequested.Set(isAborted);
        };
    };
    AddTargetRow("PreparingMeasurementState", "start", "StartingMeasurementState", start(false, false));
    AddTargetRow("PreparingMeasurementState", "start and abort when prepared", "StartingMeasurementState",
                 start(false, true));
    AddTargetRow("PreparingMeasurementState", "start and prepare", "RCDMeasurementModeState",
                 start(true, false));
    AddTargetRow("PreparingMeasurementState", "start before prepared", "none",
                 [start](StateMachineContext& context) {
                     start(false, false)(context);
                     context.MeasurementStatus.Set(MeasurementState::Preparing);
                 });
}

static void AddRunningTargets()
{
    const auto running = [](bool isTimeElapsed, bool isAborted) {
        return [=](StateMachineContext& context) {
            SetSettingsType(context, MeasurementType::RPE);
            context.IsMeasurementModeActive.Set(true);
            context.MeasurementStatus.Set(MeasurementState::Measuring);
            context.MeasurementTimeElapsed.Set(isTimeElapsed);
            context.AbortMeasurementRequested.Set(isAborted);
        };
    };
    for (const char* state :
         {"ContinuousMeasurementRunningState", "HVTestContinuousMeasurementRunningState"}) {
        AddTargetRow(state, "running", "none", running(false, false));
        AddTargetRow(state, "time elapsed", "StoppingMeasurementState", running(true, false));
        AddTargetRow(state, "time elapsed and abort", "AbortingMeasurementState", running(true, true));
    }
    const auto single = [](float firstValue) {
        return [=](StateMachineContext& context) {
            SetSettingsType(context, MeasurementType::IEC);
            context.IsMeasurementModeActive.Set(true);
            context.CurrentMeasurementType.Set(MeasurementType::RLN);
            context.MeasurementStatus.Set(MeasurementState::Measuring);
            auto* results = new Vesmar::IECResults(firstValue, 0.0F, 0.0F, 0.0F, 0.0F);
            results->_values[0] = firstValue;
            Vesmar::ReplaceOwned<Vesmar::MeasurementResults>(context.TestResults, results, nullptr);
        };
    };
    AddTargetRow("SingleMeasurementRunningState", "result", "StoppingMeasurementState", single(0.5F));
    AddTargetRow("SingleMeasurementRunningState", "result of 0", "none", single(0.0F));
}

/// Preparing hands every function over that is asked for anew; those that are not RCD tests come back.
static void AddHandOverTargets()
{
    for (const int function : EveryFunction) {
        const Setup setup = [function](StateMachineContext& context) {
            SetSettingsType(context, static_cast<MeasurementType>(function));
            context.IsMeasurementModeActive.Set(true);
            context.PrepareMeasurementRequested.Set(true);
        };
        const QByteArray when = "preparation of function " + QByteArray::number(function);
        AddTargetRow("PreparingMeasurementState", when, "RCDMeasurementModeState", setup);
        AddTargetRow("RCDMeasurementModeState", when,
                     IsRCDFunction(function) ? "RCDMonitoringState" : "MeasurementModeState", setup);
        AddTargetRow("RCDMonitoringState", when, IsRCDFunction(function) ? "none" : "MeasurementModeState",
                     setup);
        AddTargetRow("MeasurementModeState", when, "PreparingMeasurementState", setup);
        AddTargetRow("MonitoringState", when,
                     IsRCDFunction(function) ? "RCDMeasurementModeState" : "MeasurementModeState", setup);
    }
}

/// What holds in RCD measurement mode and in every state of it.
static void AddRCDModeTargets()
{
    const auto with = [](MeasurementType type, bool isActive, bool isPrepareRequested) {
        return [=](StateMachineContext& context) {
            SetSettingsType(context, type);
            context.IsMeasurementModeActive.Set(isActive);
            context.PrepareMeasurementRequested.Set(isPrepareRequested);
        };
    };
    for (auto row = ParentByState.cbegin(); row != ParentByState.cend(); ++row) {
        const bool isMode = row.key() == QLatin1String("RCDMeasurementModeState");
        if (!isMode && row.value() != QLatin1String("RCDMeasurementModeState")) {
            continue;
        }
        const QByteArray state = row.key().toLatin1();
        const char* stays = isMode ? "RCDMonitoringState" : "none";
        AddTargetRow(state, "left", "MonitoringState", with(MeasurementType::RLN, false, false));
        AddTargetRow(state, "another function to be prepared", "MeasurementModeState",
                     with(MeasurementType::RLN, true, true));
        AddTargetRow(state, "another function to be prepared, and left", "MeasurementModeState",
                     with(MeasurementType::RLN, false, true));
        AddTargetRow(state, "another function", stays, with(MeasurementType::RLN, true, false));
    }
}

static void AddRCDStartTargets()
{
    const auto start = [](void (*setMode)(StateMachineContext&, int), int mode, bool isStartRequested) {
        return [=](StateMachineContext& context) {
            setMode(context, mode);
            context.IsMeasurementModeActive.Set(true);
            context.StartMeasurementRequested.Set(isStartRequested);
        };
    };
    for (const RCDTest& test : RCDTests) {
        const QByteArray when = QByteArray(test.state) + ", mode " + QByteArray::number(test.mode);
        AddTargetRow("RCDMonitoringState", "start of " + when, test.state,
                     start(test.setMode, test.mode, true));
        AddTargetRow("RCDMonitoringState", "no start of " + when, "none",
                     start(test.setMode, test.mode, false));
        AddTargetRow("RCDMeasurementModeState", "start of " + when, "RCDMonitoringState",
                     start(test.setMode, test.mode, true));
    }
    AddTargetRow("RCDMonitoringState", "start, mode not set", "none", start(&SetRCDMode, -1, true));
    AddTargetRow("RCDMonitoringState", "start, mode 3", "none", start(&SetRCDMode, 3, true));
    AddTargetRow("RCDMonitoringState", "start, IEC mode 0", "none", start(&SetRCDIECMode, 0, true));
}

static void AddRCDRunningTargets()
{
    for (const RCDTest& test : RCDTests) {
        const auto with = [&test](MeasurementState status, bool isAborted, bool isActive) {
            return [=](StateMachineContext& context) {
                test.setMode(context, test.mode);
                context.MeasurementStatus.Set(status);
                context.AbortMeasurementRequested.Set(isAborted);
                context.IsMeasurementModeActive.Set(isActive);
            };
        };
        const QByteArray mode = "mode " + QByteArray::number(test.mode);
        const bool canBeAborted = qstrcmp(test.state, "RCDIECCleanUpState") != 0;
        AddTargetRow(test.state, mode + ", running", "none", with(MeasurementState::Running, false, true));
        AddTargetRow(test.state, mode + ", stopped", "RCDMonitoringState",
                     with(MeasurementState::Stopped, false, true));
        AddTargetRow(test.state, mode + ", stopped and left", "MonitoringState",
                     with(MeasurementState::Stopped, false, false));
        AddTargetRow(test.state, mode + ", abort", canBeAborted ? "RCDMonitoringState" : "none",
                     with(MeasurementState::Running, true, true));
        AddTargetRow(test.state, mode + ", abort when prepared", canBeAborted ? "RCDMonitoringState" : "none",
                     with(MeasurementState::Prepared, true, true));
        AddTargetRow(test.state, mode + ", abort and left", "MonitoringState",
                     with(MeasurementState::Running, true, false));
    }
    AddTargetRow("RCDIECIaTaMeasurementRunningState", "settings of the clean-up", "RCDMonitoringState",
                 [](StateMachineContext& context) {
                     SetRCDIECMode(context, 3);
                     context.IsMeasurementModeActive.Set(true);
                 });
}

void TestStateMachineRunner::FindsTheTargetInTheWholeMachine_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<QString>("to");
    AddConnectionTargets();
    AddRootTargets();
    AddConfigurationTargets();
    AddUpdateTargets();
    AddUpdateRootTargets();
    AddMeasurementTargets();
    AddMeasurementModeTargets();
    AddPreparedTargets();
    AddRunningTargets();
    AddHandOverTargets();
    AddRCDModeTargets();
    AddRCDStartTargets();
    AddRCDRunningTargets();
}

void TestStateMachineRunner::FindsTheTargetInTheWholeMachine()
{
    QFETCH(const QString, from);
    QFETCH(const Setup, setup);
    QFETCH(const QString, to);
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    State* state = RunnerView::StatesOf(runner).value(from);
    QVERIFY(state != nullptr);
    setup(context);
    QCOMPARE(RunnerView::NameOf(runner.FindTransition(state)), to);
}

void TestStateMachineRunner::AbortOfAnRCDTestLeaves521_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("isActive");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    for (const RCDTest& test : RCDTests) {
        const QString from = QLatin1String(test.state);
        const bool canBeAborted = from != QLatin1String("RCDIECCleanUpState");
        for (const bool isActive : {true, false}) { // The guard is asked even when an outer transition wins.
            const auto row = [&](int before, int after) {
                QTest::addRow("%s, mode %d, %s, error %d", test.state, test.mode,
                              isActive ? "active" : "left", before)
                    << from << isActive << before << after;
            };
            row(15, canBeAborted ? 521 : 15);
            row(401, 401);
        }
    }
}

void TestStateMachineRunner::AbortOfAnRCDTestLeaves521()
{
    QFETCH(const QString, from);
    QFETCH(const bool, isActive);
    QFETCH(const int, before);
    QFETCH(const int, after);
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    const StateMachineRunner runner(&context, nullptr);
    context.IsMeasurementModeActive.Set(isActive);
    context.MeasurementStatus.Set(MeasurementState::Running);
    context.AbortMeasurementRequested.Set(true);
    context.ErrorCode.Set(static_cast<Vesmar::Error>(before));
    runner.FindTransition(RunnerView::StatesOf(runner).value(from));
    QCOMPARE(static_cast<int>(context.ErrorCode.Get()), after);
    QVERIFY(context.AbortMeasurementRequested.Get());
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

void TestStateMachineRunner::StepTakesAtLeastAHundredMilliseconds()
{
    Machine machine;
    machine.EnterFirst();
    QElapsedTimer time;
    time.start();
    machine.runner.RunStateMachineWorker();
    QVERIFY(time.elapsed() >= 100);
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
    SetRCDMode(engine.context, 1);
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
