#pragma once

#include <QElapsedTimer>
#include <QTest>

#include "unit/states/rcdrun.h"

/// What the four states that run an RCD test have in common. `Test` names the state, its settings, its
/// prepare frame and the status of its function.
namespace RCDRunningSteps
{

// The phases, as `MeasurementStatus` has them.
constexpr int Unknown = -1;
constexpr int Idle = 0;
constexpr int Preparing = 1;
constexpr int Prepared = 2;
constexpr int Starting = 3;
constexpr int Running = 4;
constexpr int Measuring = 5;
constexpr int Stopping = 6;
constexpr int Stopped = 7;

inline const QString NoChange;
inline const QString Pause = QStringLiteral("400");
inline const QString NoPause;

template <typename Test>
struct Run : RCDRun<typename Test::State> {
    Run() : RCDRun<typename Test::State>(Test::Settings()) {}

    /// Steps that come to nothing, each with these requests.
    bool StepsInVain(int count, const QByteArray& commands)
    {
        for (int step = 0; step < count; ++step) {
            if (this->Step() != NoChange || this->Commands() != commands) {
                return false;
            }
        }
        return true;
    }
};

inline QStringList Sorted(QStringList list)
{
    list.sort();
    return list;
}

/// Whatever the order of the changes.
template <typename Test>
void EntryBeginsTheRun(const char* banner, const QStringList& furtherChanges)
{
    MeasurementEngine engine;
    engine.Settings(Test::Settings());
    engine.context.MeasurementStatus.Set(Vesmar::MeasurementState::Stopped);
    engine.context.PrepareMeasurementRequested.Set(true);
    engine.context.StartMeasurementRequested.Set(true);
    engine.Restart();
    typename Test::State state(&engine.context, nullptr);
    state.OnEntry();
    QCOMPARE(engine.log.Texts(), QStringList{Banner(banner)});
    QCOMPARE(Sorted(engine.cells.Changes()),
             Sorted(furtherChanges + QStringList{QStringLiteral("MeasurementStatus=0"),
                                                 QStringLiteral("PrepareMeasurementRequested=0"),
                                                 QStringLiteral("StartMeasurementRequested=0")}));
    QCOMPARE(engine.Commands(), QByteArray());
}

/// `changes` is what comes of it while a measurement runs.
template <typename Test>
void ExitWritesItsBanner(const char* banner, const QStringList& changes)
{
    MeasurementEngine engine;
    engine.Settings(Test::Settings());
    engine.context.IsMeasurementRunning.Set(true);
    typename Test::State state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, banner, changes);
}

/// Each budget is used up, and the next visit has all of it again.
template <typename Test>
void EntryResetsTheBudgets()
{
    Run<Test> run;
    for (int visit = 0; visit < 2; ++visit) {
        run.state.OnEntry();
        run.peer.AnswerAlways(RCDWire::NotReady);
        run.SetPhase(Idle);
        QVERIFY(run.StepsInVain(9, "s"));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=400 MeasurementStatus=7"));
        run.SetError(15);
        run.peer.AnswerAlways(Test::Status(2));
        run.SetPhase(Preparing);
        QVERIFY(run.StepsInVain(3, "P"));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=200 MeasurementStatus=7"));
        run.SetError(15);
        run.SetPhase(Prepared);
        QVERIFY(run.StepsInVain(5, "s"));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
        run.SetError(15);
        run.SetPhase(Starting);
        QVERIFY(run.StepsInVain(3, "S"));
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=201 MeasurementStatus=7"));
        run.SetError(15);
    }
}

/// Each request of a phase is sent once and has half a second to be answered; silence costs an attempt alone.
inline void AddRequestRows()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("idle") << Idle << QByteArray("s");
    QTest::newRow("preparing") << Preparing << QByteArray("P");
    QTest::newRow("prepared") << Prepared << QByteArray("s");
    QTest::newRow("starting") << Starting << QByteArray("S");
}

template <typename Test>
void RequestsWaitHalfASecond()
{
    QFETCH(const int, phase);
    QFETCH(const QByteArray, command);
    constexpr int OrdinaryTimeout = 4000;
    Run<Test> run;
    run.transciever.SetMaxRetransmissions(2); // Of no concern to a request that is sent once.
    QElapsedTimer time;
    time.start();
    QCOMPARE(run.StepIn(phase), NoChange);
    QVERIFY(time.elapsed() >= 500);
    QVERIFY(time.elapsed() < OrdinaryTimeout);
    QCOMPARE(run.Commands(), command);
    QCOMPARE(run.Pauses(), NoPause);
}

template <typename Test>
void ObjectCheckWaitsHalfASecond()
{
    constexpr int OrdinaryTimeout = 4000;
    Run<Test> run;
    run.transciever.SetMaxRetransmissions(2);
    run.AnswerByCommand({{'s', Test::Status(3, true)}});
    QElapsedTimer time;
    time.start();
    QCOMPARE(run.StepIn(Prepared), NoChange);
    QVERIFY(time.elapsed() >= 500);
    QVERIFY(time.elapsed() < OrdinaryTimeout);
    QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
}

/// `waiting` is the pause after a status that does not allow the test yet.
inline void AddIdleRows(const QString& waiting)
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    const QString next = QStringLiteral("MeasurementStatus=1");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) { QTest::newRow(name) << answer << outcome << pauses; };
    for (int test = 0; test < 16; ++test) {
        const bool isPassed = test == 14 || test == 15;
        QTest::addRow("start test %d, new", test)
            << RCDWire::StartTest(test, true) << (isPassed ? next : NoChange) << waiting;
    }
    row("start test 14, not new", RCDWire::StartTest(14, false), NoChange, waiting);
    row("start test 15, not new", RCDWire::StartTest(15, false), NoChange, waiting);
    row("error 0", RCDWire::StartTest(3, false, 0), QStringLiteral("ErrorCode=0 MeasurementStatus=7"),
        waiting);
    row("error 14 with a passed start test", RCDWire::StartTest(14, true, 14),
        QStringLiteral("ErrorCode=14 MeasurementStatus=7"), waiting);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
}

template <typename Test>
void IdleAwaitsTheInstrument()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.peer.AnswerAlways(answer);
    QCOMPARE(run.StepIn(Idle), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    QCOMPARE(run.Pauses(), pauses);
}

/// Any function that is active will do, and whatever it says.
template <typename Test>
void IdleEndsWithAnActiveFunction()
{
    const QList<QPair<QByteArray, QString>> cases = {
        {RCDWire::Status(0), QStringLiteral("MeasurementStatus=1")},
        {RCDWire::Status(9, true, 3), QStringLiteral("ErrorCode=523 MeasurementStatus=1")},
        {RCDWire::IECStatus(4), QStringLiteral("MeasurementStatus=1")},
        {RCDWire::IECStatus(4, false, 0), QStringLiteral("ErrorCode=520 MeasurementStatus=1")},
        {MeasurementEngine::Status(Vesmar::MeasurementType::RPE, 7, false, 3),
         QStringLiteral("ErrorCode=3 MeasurementStatus=1")},
        {Wire::Bytes("1bf40000"), NoChange}, // Damaged.
        {WithChecksum(Wire::Bytes("1b34")), QStringLiteral("ErrorCode=3 MeasurementStatus=1")},
    };
    for (const auto& [answer, outcome] : cases) {
        Run<Test> run;
        run.peer.AnswerAlways(answer);
        QCOMPARE(run.StepIn(Idle), outcome);
    }
}

template <typename Test>
void IdleGivesUpAfterNineStatuses()
{
    Run<Test> run;
    run.peer.AnswerInTurn({RCDWire::NotReady, RCDWire::StartTest(13, true), Wire::Acknowledge, Wire::Refusal,
                           Wire::DamagedStatus, RCDWire::NotReady, Wire::Acknowledge, Wire::Acknowledge,
                           RCDWire::NotReady, RCDWire::Ready});
    QVERIFY(run.StepsInVain(9, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=400 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

/// Rows for a command that the instrument acknowledges; `outcome` is what comes of it.
inline void AddCommandRows(const char* outcome)
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    QTest::newRow("acknowledged") << Wire::Acknowledge << QString(QLatin1String(outcome)) << NoPause;
    QTest::newRow("data") << Wire::StartTest0Status << NoChange << NoPause;
    QTest::newRow("refused") << Wire::Refusal << NoChange << Pause;
    QTest::newRow("damaged") << Wire::DamagedStatus << NoChange << Pause;
}

template <typename Test>
void CommandIsSent(int phase, const QByteArray& frame)
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.peer.AnswerAlways(answer);
    QCOMPARE(run.StepIn(phase), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{frame});
    QCOMPARE(run.Pauses(), pauses);
}

template <typename Test>
void CommandIsGivenUpAfterThreeAttempts(int phase, const QByteArray& command, const char* outcome)
{
    Run<Test> run;
    run.peer.AnswerInTurn({Wire::StartTest0Status, Wire::Refusal, Wire::DamagedStatus, Wire::Acknowledge});
    run.SetPhase(phase);
    QVERIFY(run.StepsInVain(3, command));
    QCOMPARE(run.Step(), QString(QLatin1String(outcome)));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

template <typename Test>
void PreparesTheTest()
{
    CommandIsSent<Test>(Preparing, Test::PrepareFrame());
}

template <typename Test>
void PreparingGivesUpAfterThreeRequests()
{
    CommandIsGivenUpAfterThreeAttempts<Test>(Preparing, "P", "ErrorCode=200 MeasurementStatus=7");
}

template <typename Test>
void StartsTheTest()
{
    CommandIsSent<Test>(Starting, Wire::StartMeasurement);
}

template <typename Test>
void StartingGivesUpAfterThreeRequests()
{
    CommandIsGivenUpAfterThreeAttempts<Test>(Starting, "S", "ErrorCode=201 MeasurementStatus=7");
}

/// An abort ends this test by its guard alone.
template <typename Test>
void StartsEvenWhileAnAbortIsPending()
{
    Run<Test> run;
    run.context.AbortMeasurementRequested.Set(true);
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.StepIn(Starting), QStringLiteral("MeasurementStatus=4"));
    QCOMPARE(run.Commands(), QByteArray("S"));
}

/// Rows for settings: these modes of either test, and settings of another function.
inline void AddSettingsRows(const QList<int>& modes, const QList<int>& modesOfIEC)
{
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("mode");
    for (const int mode : modes) {
        QTest::addRow("RCD, mode %d", mode) << 10 << mode;
    }
    for (const int mode : modesOfIEC) {
        QTest::addRow("RCD IEC, mode %d", mode) << 11 << mode;
    }
    QTest::newRow("another function") << 1 << 0;
    QTest::newRow("no function") << -1 << 0;
}

/// While these settings stand, whatever the phase.
template <typename Test>
void OtherSettingsDoNothing()
{
    QFETCH(const int, function);
    QFETCH(const int, mode);
    Run<Test> run;
    run.Settings(SettingsOf(function, mode));
    run.peer.AnswerAlways(Wire::Acknowledge);
    for (const int phase : {Unknown, Idle, Preparing, Prepared, Starting, Running, Stopped}) {
        QCOMPARE(run.StepIn(phase), NoChange);
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Pauses(), NoPause);
    }
}

template <typename Test>
void ModeWithoutATestIsAFailedPreparation()
{
    QFETCH(const int, mode);
    for (const int phase : {Idle, Preparing, Prepared, Starting, Running}) {
        Run<Test> run;
        run.Settings(Test::SettingsOfMode(mode));
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(phase), QStringLiteral("ErrorCode=200 MeasurementStatus=7"));
        QCOMPARE(run.Commands(), QByteArray());
    }
}

template <typename Test>
void EndedPhasesClearIsMeasurementRunning()
{
    for (const int phase : {Stopping, Stopped}) {
        Run<Test> run;
        run.context.IsMeasurementRunning.Set(true);
        QCOMPARE(run.StepIn(phase), QStringLiteral("IsMeasurementRunning=0"));
        QCOMPARE(run.Commands(), QByteArray());
    }
}

template <typename Test>
void PhasesThatThereAreNotDoNothing()
{
    for (const int phase : {Unknown, 8}) {
        Run<Test> run;
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(phase), NoChange);
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Pauses(), NoPause);
    }
}

/// A step in the phase of results, with these bytes on the line.
template <typename Test>
QString StepWithBytes(Run<Test>& run, int phase, const QByteArray& bytes)
{
    run.context.StartMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(Test::Function);
    run.peer.Send(bytes);
    return run.StepIn(phase);
}

inline void AddMeasuringRows()
{
    QTest::addColumn<int>("phase");
    QTest::newRow("running") << Running;
    QTest::newRow("measuring") << Measuring;
}

/// A status that says that the function was terminated, by its error.
inline void AddTerminationRows()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("outcome");
    const QString end = QStringLiteral("StartMeasurementRequested=0 ErrorCode=521 MeasurementStatus=7");
    for (const int phase : {Running, Measuring}) {
        QTest::addRow("no error, phase %d", phase) << phase << RCDWire::NoError << end;
        QTest::addRow("error 3, phase %d", phase) << phase << 3 << QStringLiteral("ErrorCode=523 ") + end;
    }
}

template <typename Test>
void SilentTestIsStartedAgain(int phase)
{
    Run<Test> run;
    QElapsedTimer time;
    time.start();
    QCOMPARE(StepWithBytes(run, phase, Test::Status(7)), QStringLiteral("MeasurementStatus=3"));
    QVERIFY(time.elapsed() >= 1000);
    QVERIFY(run.context.StartMeasurementRequested.Get());
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::StartMeasurement});
}

template <typename Test>
void SilentTestIsStartedThreeTimesInAll()
{
    Run<Test> run;
    run.peer.AnswerAlways(Wire::Acknowledge);
    run.SetPhase(Starting);
    for (int start = 0; start < 3; ++start) {
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
        QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=3"));
    }
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=201 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
}

/// From the wait for the instrument to the results, in its requests and the changes of each step.
template <typename Test>
void TestRunsThrough(const QString& outcomes)
{
    Run<Test> run;
    run.peer.AnswerInTurn({RCDWire::NotReady, RCDWire::Ready, Wire::Acknowledge, Test::Status(2),
                           Test::Status(3, true), RCDWire::ObjectCheck(0), Wire::Acknowledge});
    QStringList steps;
    QByteArray commands;
    for (int step = 0; step < 6; ++step) {
        steps.append(run.Step());
        commands += run.Commands();
    }
    QCOMPARE(commands, QByteArray("ssPsseS"));
    run.context.StartMeasurementRequested.Set(true);
    run.peer.Send(Test::Status(7) + RCDWire::Result);
    steps.append(run.Step());
    QCOMPARE(steps.join(QStringLiteral("; ")), outcomes);
}

/// The prepared phase of the two tests that are not those of the IEC.
namespace PlainPrepared
{

/// The pauses once the function is prepared, and while it is not.
inline void AddRows(const QString& prepared, const QString& waiting)
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    const QString otherFunction = QStringLiteral("ErrorCode=398 MeasurementStatus=7");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) { QTest::newRow(name) << answer << outcome << pauses; };
    for (const bool isNew : {false, true}) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            if (state == 3 && isNew) {
                continue; // Asks for more.
            }
            QTest::addRow("function state %d, %s", state, isNew ? "new" : "not new")
                << RCDWire::Status(state, isNew)
                << (state == 4 ? QStringLiteral("MeasurementStatus=3") : NoChange)
                << (state == 4 ? prepared : waiting);
        }
    }
    row("error 0", RCDWire::Status(4, false, 0), QStringLiteral("ErrorCode=520 MeasurementStatus=7"),
        NoPause);
    row("error 14", RCDWire::Status(3, true, 14), QStringLiteral("ErrorCode=534 MeasurementStatus=7"),
        NoPause);
    row("RCD IEC", RCDWire::IECStatus(4), otherFunction, NoPause);
    row("RCD IEC, error 5", RCDWire::IECStatus(4, false, 5), QStringLiteral("ErrorCode=525 ") + otherFunction,
        NoPause);
    row("no function", RCDWire::Ready, otherFunction, NoPause);
    row("another function, error 4", MeasurementEngine::Status(Vesmar::MeasurementType::RPE, 4, false, 4),
        QStringLiteral("ErrorCode=4 ") + otherFunction, NoPause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
}

template <typename Test>
void FollowsTheFunction()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.peer.AnswerAlways(answer);
    QCOMPARE(run.StepIn(Prepared), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    QCOMPARE(run.Pauses(), pauses);
}

inline void AddCheckRows()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    QTest::newRow("clean") << RCDWire::ObjectCheck(0) << QStringLiteral("MeasurementStatus=3") << NoPause;
    for (const int code : {1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 255}) {
        QTest::addRow("code %d", code) << RCDWire::ObjectCheck(code) << NoChange << NoPause;
    }
    QTest::newRow("acknowledged") << Wire::Acknowledge << NoChange << NoPause;
    QTest::newRow("refused") << Wire::Refusal << NoChange << Pause;
    QTest::newRow("damaged") << Wire::DamagedStatus << NoChange << Pause;
}

/// What is found goes nowhere.
template <typename Test>
void ChecksTheObject()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run<Test> run;
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', answer}});
    QCOMPARE(run.StepIn(Prepared), outcome);
    QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
    QCOMPARE(run.Pauses(), pauses);
}

/// Even when its budget has run out.
template <typename Test>
void ForgetsARequestToPrepare()
{
    Run<Test> run;
    run.peer.AnswerAlways(Wire::Acknowledge);
    for (int poll = 0; poll < 5; ++poll) {
        run.context.PrepareMeasurementRequested.Set(true);
        QCOMPARE(run.StepIn(Prepared), QStringLiteral("PrepareMeasurementRequested=0"));
    }
    run.context.PrepareMeasurementRequested.Set(true);
    QCOMPARE(run.Step(), QStringLiteral("PrepareMeasurementRequested=0 ErrorCode=401 MeasurementStatus=7"));
}

template <typename Test>
void GivesUpAfterFiveStatuses()
{
    Run<Test> run;
    run.peer.AnswerInTurn({Test::Status(2), Wire::Refusal, Wire::Acknowledge, Wire::DamagedStatus,
                           Test::Status(3), Test::Status(4)});
    run.SetPhase(Prepared);
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

template <typename Test>
void GivesUpWith401WhateverTheObjectHas()
{
    Run<Test> run;
    run.AnswerByCommand({{'s', Test::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    run.SetPhase(Prepared);
    QVERIFY(run.StepsInVain(5, "se"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
}

} // namespace PlainPrepared

inline QString Green(const QString& text)
{
    return QStringLiteral("\033[0;32m       %1\033[0m").arg(text);
}

} // namespace RCDRunningSteps
