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
/// What each of the numbered guards returns.
std::array<bool, 8> answers;

template <int Number>
bool NumberedGuard(StateMachineContext&)
{
    calls.append(QString::number(Number));
    return answers[Number];
}

/// Makes these guards hold, and no others.
void SetAnswers(const char* holding)
{
    calls.clear();
    answers.fill(false);
    for (const char number : QByteArray(holding)) {
        answers.at(static_cast<std::size_t>(number - '0')) = true;
    }
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

/// A runner without an instrument. The test makes it step, and no pause is waited for.
struct Machine {
    StateMachineContext context{nullptr, nullptr, nullptr, nullptr, nullptr};
    LogCapture log;
    PauseLog pauses;
    StateMachineRunner runner{&context, nullptr};
    RecordingState first{"first", &context};
    RecordingState second{"second", &context};

    /// Leads from the root to `first` in one step. Guard 1 leads on to `second`, guard 2 back.
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

/// Three levels. Guards 1 and 2 lead out of the leaf, 3 and 4 out of the middle and the top; 5 and 6 are
/// internal transitions of the leaf, 7 is one of the middle. Each has a target of its own.
struct Levels : Machine {
    RecordingState top{"top", &context};
    RecordingState middle{"middle", &context, &top};
    RecordingState leaf{"leaf", &context, &middle};
    std::vector<std::unique_ptr<State>> targets{1}; ///< The targets by the numbers of the guards; null for 0.

    Levels()
    {
        for (int number = 1; number <= 7; ++number) {
            targets.push_back(std::make_unique<State>(&context, nullptr, nullptr));
        }
        runner.AddExternalTransition(&leaf, &NumberedGuard<1>, targets[1].get());
        runner.AddExternalTransition(&leaf, &NumberedGuard<2>, targets[2].get());
        runner.AddExternalTransition(&middle, &NumberedGuard<3>, targets[3].get());
        runner.AddExternalTransition(&top, &NumberedGuard<4>, targets[4].get());
        runner.AddInternalTransition(&leaf, &NumberedGuard<5>, targets[5].get());
        runner.AddInternalTransition(&leaf, &NumberedGuard<6>, targets[6].get());
        runner.AddInternalTransition(&middle, &NumberedGuard<7>, targets[7].get());
    }
};

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

/// These hold in every state under the root, whatever the state's own transitions say.
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

/// These begin in measurement mode, with the settings of the continuous RPE measurement unless a row names
/// others.
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

/// These begin in measurement mode as well. Preparing hands over every function that is requested anew; RCD
/// measurement mode sends back those that are no RCD tests.
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

/// A runner with an instrument. Every step records the state to which it leads.
struct Plant : Engine {
    explicit Plant(const QByteArray& status = Wire::IdleStatus)
    {
        QMap<char, QByteArray> byCommand = Wire::UpdateAnswers(status);
        byCommand.insert('W', Wire::Version);
        byCommand.insert('R', Wire::CurrentDate);
        byCommand.insert('T', Wire::CalibrationDate);
        AnswerByCommand(byCommand);
        runner.Enable();
    }

    void Step(int count)
    {
        for (int step = 0; step < count; ++step) {
            runner.RunStateMachineWorker();
            visited.append(RunnerView::NameOf(runner.GetCurrentState()).remove(QStringLiteral("State")));
        }
    }

    StateMachineRunner runner{&context, nullptr};
    QStringList visited;
};

} // namespace

class TestStateMachineRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { SetAnswers(""); }

    void EveryStateIsUnderItsParent()
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

    void StatesAreCreatedInThisOrder()
    {
        QCOMPARE(Vesmar::StateTree.size(), ExpectedTree.size());
        for (std::size_t index = 0; index < ExpectedTree.size(); ++index) {
            QCOMPARE(QString(QLatin1String(Vesmar::StateTree.at(index).name)),
                     ClassOf(ExpectedTree.at(index).state));
        }
    }

    void TransitionsAreRegisteredInThisOrder()
    {
        const Machine machine;
        QMap<QString, QStringList> expected;
        for (const char* kind : {"external", "internal"}) {
            for (const Row& row : ExpectedMap) {
                if (qstrcmp(row.kind, kind) == 0) {
                    const QString guard = QStringLiteral("%1To%2Transition")
                                              .arg(QLatin1String(row.from), QLatin1String(row.to));
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

    void StartsAtTheRootDisabled()
    {
        Machine machine;
        QCOMPARE(RunnerView::NameOf(machine.runner.GetCurrentState()),
                 QStringLiteral("TesterOperationsState"));
        QVERIFY(!machine.runner.IsEnabled());
        QCOMPARE(machine.runner.parent(), nullptr);
    }

    void HasItsSlotsInTheMetaObject()
    {
        const QMetaObject& meta = StateMachineRunner::staticMetaObject;
        QCOMPARE(meta.className(), "Vesmar::StateMachineRunner");
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("RunStateMachineWorker()"));
        QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("onWorkerFinisched()"));
        QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
    }

    void FindsNothingForNoState()
    {
        Machine machine;
        QCOMPARE(machine.runner.FindTransition(nullptr), nullptr);
        QCOMPARE(machine.log.Texts(), QStringList{});
    }

    /// The external transitions of all levels are asked first, and the outermost that holds wins. The
    /// internal transitions of the state itself are asked when none holds.
    void FindsTheOutermostTransitionThatHolds()
    {
        struct Row {
            const char* holding;
            std::size_t target;
            const char* asked;
        };
        for (const Row& row : std::vector<Row>{{"", 0, "123456"},
                                               {"1", 1, "134"},
                                               {"2", 2, "1234"},
                                               {"12", 1, "134"},
                                               {"13", 3, "134"},
                                               {"134", 4, "134"},
                                               {"45", 4, "1234"},
                                               {"5", 5, "12345"},
                                               {"6", 6, "123456"},
                                               {"56", 5, "12345"},
                                               {"7", 0, "123456"}}) {
            Levels levels;
            SetAnswers(row.holding);
            QVERIFY2(levels.runner.FindTransition(&levels.leaf) == levels.targets[row.target].get(),
                     row.holding);
            QCOMPARE(calls.join(QString()), QString(QLatin1String(row.asked)));
            QCOMPARE(levels.log.Texts(), QStringList{});
        }
    }

    void TransitionsOfAChildDoNotCount()
    {
        Levels levels;
        SetAnswers("12567");
        QCOMPARE(levels.runner.FindTransition(&levels.middle), levels.targets[7].get());
        QCOMPARE(levels.runner.FindTransition(&levels.top), nullptr);
        QCOMPARE(calls.join(QString()), QStringLiteral("3474"));
    }

    void StateWithoutAnExternalEntryStaysAndIsWarnedOf()
    {
        Machine machine;
        machine.runner.AddInternalTransition(&machine.first, &Always, &machine.second);
        machine.runner.AddExternalTransition(machine.runner.GetCurrentState(), &Always, &machine.first);
        machine.runner.Enable();
        machine.runner.RunStateMachineWorker();
        machine.log.Clear();
        machine.runner.RunStateMachineWorker();
        machine.runner.RunStateMachineWorker();
        QCOMPARE(machine.runner.GetCurrentState(), &machine.first);
        QCOMPARE(machine.log.Texts(), (QStringList{NoEntryWarning, NoEntryWarning}));
        QCOMPARE(machine.log.Messages().constFirst().type, QtWarningMsg);
        QCOMPARE(machine.log.Messages().constFirst().category, QByteArray("default"));
    }

    void AncestorWithoutAnExternalEntryDiscardsWhatWasFoundBelow()
    {
        Levels levels;
        RecordingState between("between", &levels.context, &levels.top);
        RecordingState below("below", &levels.context, &between);
        levels.runner.AddExternalTransition(&below, &NumberedGuard<1>, &levels.first);
        SetAnswers("14");
        QCOMPARE(levels.runner.FindTransition(&below), nullptr);
        QCOMPARE(calls, QStringList{QStringLiteral("1")});
        QCOMPARE(levels.log.Texts(), QStringList{NoEntryWarning});
    }

    void SameTransitionMayBeRegisteredTwice()
    {
        Machine machine;
        machine.runner.AddExternalTransition(&machine.first, &Never, &machine.second);
        machine.runner.AddExternalTransition(&machine.first, &Never, &machine.second);
        QCOMPARE(machine.runner.GetExternalTransitions().value(&machine.first).size(), 2);
    }

    void FindsTheTargetInTheWholeMachine_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QByteArray>("conditions");
        QTest::addColumn<QString>("to");
        AddTargets({}, RootTargets);
        AddTargets({}, ConnectionTargets);
        AddTargets("IsMeasurementModeActive Settings=2", MeasurementTargets);
        AddTargets("IsMeasurementModeActive Settings=2", RCDTargets);
    }

    void FindsTheTargetInTheWholeMachine()
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

    void AbortOfAnRCDTestLeaves521_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<int>("error");
        for (const QByteArray& state : QByteArray(RCDTests).split(' ')) {
            QTest::newRow(state) << ClassOf(state) << 521;
        }
        QTest::newRow("RCDIECCleanUp") << ClassOf("RCDIECCleanUp") << 15;
    }

    /// The guard is asked even when an outer transition wins.
    void AbortOfAnRCDTestLeaves521()
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

    void DisabledRunnerDoesNothing()
    {
        Machine machine;
        machine.runner.AddExternalTransition(machine.runner.GetCurrentState(), &Always, &machine.first);
        machine.runner.RunStateMachineWorker();
        machine.RunPostedSteps();
        QCOMPARE(machine.log.Texts(), QStringList{});
        QCOMPARE(RunnerView::NameOf(machine.runner.GetCurrentState()),
                 QStringLiteral("TesterOperationsState"));
    }

    void StepsCallEntryOnceRunningAlwaysAndExitOnLeaving()
    {
        Machine machine;
        machine.EnterFirst();
        const auto step = [&machine]() {
            calls.clear();
            machine.runner.RunStateMachineWorker();
            return calls.join(QStringLiteral(", "));
        };
        QCOMPARE(step(), QStringLiteral("first entry, first running, 1"));
        QCOMPARE(step(), QStringLiteral("first running, 1"));
        SetAnswers("12");
        QCOMPARE(step(), QStringLiteral("first running, 1, first exit"));
        QCOMPARE(machine.runner.GetCurrentState(), &machine.second);
        QCOMPARE(step(), QStringLiteral("second entry, second running, 2, second exit"));
        SetAnswers("");
        QCOMPARE(step(), QStringLiteral("first entry, first running, 1")); // A new visit has a new entry.
    }

    void OnlyTheLeafsHooksRun()
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
        QCOMPARE(calls.join(QStringLiteral(", ")),
                 QStringLiteral("child entry, child running, child exit, first entry, first running"));
    }

    void StepPausesForAHundredMillisecondsAndPostsOneMore()
    {
        Machine machine;
        machine.EnterFirst();
        for (int step = 1; step <= 3; ++step) {
            machine.RunPostedSteps();
            QCOMPARE(calls.count(QStringLiteral("first running")), step);
        }
        QCOMPARE(machine.pauses.Text(),
                 QStringLiteral("100 100 100 100")); // The first pause is that of the step to `first`.
    }

    void InitializationRunsOnceAndLeadsToMonitoring()
    {
        Plant plant;
        plant.Step(3);
        QCOMPARE(plant.visited, Changes("Initialization Monitoring Monitoring"));
        QCOMPARE(
            Banners(plant.log),
            (QStringList{Banner("ENTERING TESTER OPERATIONS STATE"),
                         Banner("LEAVING TESTER OPERATIONS STATE"), Banner("ENTERING INITIALIZATION STATE"),
                         Banner("LEAVING INITIALIZATION STATE"), Banner("ENTERING MONITORING STATE ")}));
        QCOMPARE(plant.Commands(), QByteArray("sWRTs"));
    }

    void RCDTestIsAbortedAndLeft()
    {
        Plant plant;
        plant.Step(2);
        SetCells(plant.context, "RCD=1 IsMeasurementModeActive");
        plant.Step(2);
        plant.context.StartMeasurementRequested.Set(true);
        plant.Step(2);
        QVERIFY(!plant.context.StartMeasurementRequested
                     .Get()); // The entry has cleared it, so that the test runs only once.
        QVERIFY(plant.context.IsMeasurementRunning.Get());
        plant.context.AbortMeasurementRequested.Set(true);
        plant.Step(1);
        QCOMPARE(static_cast<int>(plant.context.ErrorCode.Get()), 521);
        QVERIFY(!plant.context.IsMeasurementRunning.Get());
        plant.Step(1);
        plant.context.IsMeasurementModeActive.Set(false);
        plant.Step(1);
        QCOMPARE(plant.visited, Changes("Initialization Monitoring RCDMeasurementMode RCDMonitoring "
                                        "RCDIaTaMeasurementRunning RCDIaTaMeasurementRunning RCDMonitoring "
                                        "RCDMonitoring Monitoring"));
    }

    void UpdateLeadsWhereTheInstrumentIsAfterwards_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QString>("state");
        QTest::newRow("normal mode") << Wire::IdleStatus << QStringLiteral("Initialization");
        QTest::newRow("calibration mode")
            << Wire::CalibrationModeStatus << QStringLiteral("RestartingTester");
        QTest::newRow("mode 2") << Wire::Mode2Status << QStringLiteral("RestartingTester");
        QTest::newRow("update mode") << Wire::UpdateModeStatus << QStringLiteral("AwaitUpdateAction");
    }

    void UpdateLeadsWhereTheInstrumentIsAfterwards()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const QString, state);
        Plant plant(Wire::UpdateModeStatus);
        plant.context.SetUpdate(Wire::Sector(0), Wire::Confirmation);
        plant.context.UpdateRequested.Set(true);
        plant.Step(3);
        plant.AnswerByCommand(Wire::UpdateAnswers(status));
        plant.Step(1);
        QCOMPARE(plant.visited, Changes("Initialization AwaitUpdateAction Updating") + QStringList{state});
        QCOMPARE(plant.Commands(), QByteArray("sWsVFZs"));
        QVERIFY(!plant.context.UpdateRequested.Get());
        QCOMPARE(static_cast<int>(plant.context.OperationStatus.Get()), 0);
    }

    void EnableStartsAtTheRootAgain()
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

    void EnableOfAnEnabledRunnerDoesNothing()
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

    void EnableWhileADisableIsRequestedDoesNothing()
    {
        Machine machine;
        machine.EnterFirst();
        machine.runner.Disable();
        machine.runner.Enable();
        machine.runner.RunStateMachineWorker();
        QCOMPARE(calls, QStringList{});
        QVERIFY(!machine.runner.IsEnabled());
        machine.runner.Disable(); // The request to a disabled runner stands until the next step.
        machine.runner.Enable();
        QVERIFY(!machine.runner.IsEnabled());
        machine.runner.RunStateMachineWorker();
        machine.runner.Enable();
        QVERIFY(machine.runner.IsEnabled());
    }

    void DisableLetsOneMoreStepRunThatChangesAndPostsNothing()
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
        machine.runner.Enable(); // If a step had been posted, it would run now.
        machine.RunPostedSteps();
        QCOMPARE(calls, QStringList{}); // Neither a hook nor a guard was called.
        QCOMPARE(machine.log.Texts(), QStringList{});
    }

    void DisableStopsTheMeasurementTimer()
    {
        Machine machine;
        machine.context.StartMeasurementTimer(5);
        QVERIFY(machine.context.GetMeasurementTimer()->isActive());
        const QSignalSpy stops(&machine.context, &StateMachineContext::StopMeasurementTimerRequested);
        machine.runner.Disable();
        QCOMPARE(stops.count(), 1);
        QVERIFY(!machine.context.GetMeasurementTimer()->isActive());
    }

    void DisableWaitsForTheStepUnderWay()
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
            QThread::msleep(300); // A disable that does not wait returns before this ends.
            release.release();
        });
        machine.runner.Disable();
        const bool hadLeft = hasLeft; // The switch of states is part of the step.
        releaser.join();
        worker.join();
        QVERIFY(hadLeft);
    }

    void DisableDoesNotWaitForAnEntry()
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

    void RunnerOnAThreadStepsByItselfAndGoesWithTheThread()
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
};

QTEST_GUILESS_MAIN(TestStateMachineRunner)
#include "tst_statemachinerunner.moc"
