#include "unit/states/rcdruns.h"

using namespace RCDRuns;

namespace
{

const QList<int> All = {UbRe, IaTa, IECIaTa, CleanUp};

QStringList Sorted(QStringList list)
{
    list.sort();
    return list;
}

QString Indented(int colour, const char* text)
{
    return QStringLiteral("\033[0;%1m       %2\033[0m").arg(colour).arg(QLatin1String(text));
}

/// The lines between which each step of a run stands on the log; none for the Ia/Ta test.
QStringList Frame(int kind)
{
    switch (kind) {
    case UbRe:
        return {Banner("RUNING RCD UbRe MEASUREMENT STATE IN"),
                Banner("RUNING RCD UbRe MEASUREMENT STATE OUT")};
    case IECIaTa:
        return {Banner("RUNNING RCD IEC IaTa MEASUREMENT IN "),
                Banner("RUNNING RCD IEC IaTa MEASUREMENT OUT")};
    case CleanUp:
        return {Banner("RUNING RCD IEC CleanUp STATE IN"), Banner("RUNING RCD IEC CleanUp STATE OUT")};
    default:
        return {};
    }
}

} // namespace

/// What the four runs do in their first phases, and in every phase.
class TestRCDRuns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryBeginsTheRun_data();
    void EntryBeginsTheRun();
    void ExitEndsTheMeasurement_data();
    void ExitEndsTheMeasurement();
    void EntryResetsTheBudgets_data() { AddRuns(All); }
    void EntryResetsTheBudgets();

    void StepsNameTheirPhase_data();
    void StepsNameTheirPhase();
    void EveryStepIsFramedOnTheLog_data() { AddPhases({UbRe, IECIaTa, CleanUp}, {Prepared, Starting, 8}); }
    void EveryStepIsFramedOnTheLog();

    void OtherSettingsDoNothing_data();
    void OtherSettingsDoNothing();
    void ARunGoesOnOnceItsSettingsAreBack();
    void ModeWithoutATestIsAFailedPreparation_data();
    void ModeWithoutATestIsAFailedPreparation();
    void BothModesArePrepared_data();
    void BothModesArePrepared();

    void RequestsWaitHalfASecond_data() { AddPhases(All, {Idle, Preparing, Prepared, Starting}); }
    void RequestsWaitHalfASecond();
    void PhasesThatDoNotExistDoNothing_data() { AddPhases(All, {Unknown, 8}); }
    void PhasesThatDoNotExistDoNothing();

    void IdleAwaitsTheInstrument_data();
    void IdleAwaitsTheInstrument() { StepWithOneRequest(); }
    void IdleGivesUpAfterNineStatuses_data() { AddRuns(All); }
    void IdleGivesUpAfterNineStatuses();
    void PreparesTheTest_data();
    void PreparesTheTest() { StepWithOneRequest(); }
    void PreparingGivesUpAfterThreeRequests_data() { AddRuns(All); }
    void PreparingGivesUpAfterThreeRequests();

    void TestRunsThrough_data();
    void TestRunsThrough();
};

void TestRCDRuns::EntryBeginsTheRun_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("furtherChanges");
    const QStringList running{QStringLiteral("IsMeasurementRunning=1")};
    QTest::newRow("Ub/Re") << int(UbRe) << QStringList();
    QTest::newRow("Ia/Ta") << int(IaTa) << running;
    QTest::newRow("IEC Ia/Ta") << int(IECIaTa) << running;
    QTest::newRow("clean-up") << int(CleanUp) << QStringList();
}

/// The order of the changes does not matter.
void TestRCDRuns::EntryBeginsTheRun()
{
    QFETCH(const int, kind);
    QFETCH(const QStringList, furtherChanges);
    MeasurementEngine engine;
    engine.Settings(SettingsOfRun(kind));
    engine.context.MeasurementStatus.Set(Vesmar::MeasurementState::Stopped);
    engine.context.PrepareMeasurementRequested.Set(true);
    engine.context.StartMeasurementRequested.Set(true);
    engine.Restart();
    Of(kind).create(&engine.context)->OnEntry();
    QCOMPARE(engine.log.Texts(), QStringList{Banner(QByteArray("ENTERING ").append(Of(kind).banner))});
    QCOMPARE(Sorted(engine.cells.Changes()),
             Sorted(furtherChanges + Changes("MeasurementStatus=0 PrepareMeasurementRequested=0 "
                                             "StartMeasurementRequested=0")));
    QCOMPARE(engine.Commands(), QByteArray());
}

void TestRCDRuns::ExitEndsTheMeasurement_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("changes");
    for (const int kind : {UbRe, IaTa, IECIaTa}) {
        QTest::newRow(Of(kind).name) << kind << Changes("IsMeasurementRunning=0");
    }
    QTest::newRow("clean-up") << int(CleanUp) << QStringList();
}

void TestRCDRuns::ExitEndsTheMeasurement()
{
    QFETCH(const int, kind);
    QFETCH(const QStringList, changes);
    MeasurementEngine engine;
    engine.Settings(SettingsOfRun(kind));
    engine.context.IsMeasurementRunning.Set(true);
    const auto state = Of(kind).create(&engine.context);
    CompareHook(
        engine, [&state]() { state->OnExit(); }, QByteArray("LEAVING ").append(Of(kind).banner), changes);
}

/// Each budget is used up, and the next visit has all of it again.
void TestRCDRuns::EntryResetsTheBudgets()
{
    QFETCH(const int, kind);
    Run run(kind);
    for (int visit = 0; visit < 2; ++visit) {
        run.state->OnEntry();
        const auto useUp = [&run](int phase, const QByteArray& answer, int count, const char* command) {
            run.SetError(Wire::NoError);
            run.peer.AnswerAlways(answer);
            run.SetPhase(phase);
            return run.StepsInVain(count, command) ? run.Step() : QStringLiteral("not in vain");
        };
        QCOMPARE(useUp(Idle, Wire::IdleStatus, 9, "s"), Text(Ended400));
        QCOMPARE(useUp(Preparing, run.Status(2), 3, "P"), Text(Ended200));
        QCOMPARE(useUp(Prepared, run.Status(2), 5, "s"), Text(Ended401));
        QCOMPARE(useUp(Starting, run.Status(2), 3, "S"), Text(Ended201));
        run.SetError(Wire::NoError);
    }
}

void TestRCDRuns::StepsNameTheirPhase_data()
{
    constexpr int Black = 30;
    constexpr int Green = 32;
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("phase");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](int kind, int phase, const QStringList& lines) {
        QTest::addRow("%s, phase %d", Of(kind).name, phase) << kind << phase << lines;
    };
    const QList<const char*> names = {"UNKNOWN", "IDLE",    "PREPARING", "PREPARED", "STARTING",
                                      "RUNNING", "RUNNING", "STOPING",   "STOPED",   "UNKNOWN"};
    for (int phase = Unknown; phase <= 8; ++phase) {
        const char* name = names.at(phase - Unknown);
        const bool isBlack = phase == Idle || phase == Preparing;
        row(UbRe, phase, {Indented(Green, name)});
        row(IaTa, phase, {});
        row(IECIaTa, phase, {Indented(isBlack ? Black : Green, name)});
    }
    const QMap<int, const char*> ofCleanUp = {{Unknown, "Unknown..."},   {Idle, "Idle"},
                                              {Preparing, "Preparing"},  {Measuring, "Starting..."},
                                              {Stopping, "Starting..."}, {Stopped, "Stopped..."}};
    for (const int phase : ofCleanUp.keys()) {
        row(CleanUp, phase, {QStringLiteral("<<< MeasurementState::") + Text(ofCleanUp.value(phase))});
    }
    row(CleanUp, Starting, {});
    row(CleanUp, Running, {});
    row(CleanUp, 8, {});
}

void TestRCDRuns::StepsNameTheirPhase()
{
    QFETCH(const int, kind);
    QFETCH(const int, phase);
    QFETCH(QStringList, lines);
    Run run(kind);
    run.peer.AnswerAlways(Wire::IdleStatus);
    run.peer.Send(RCDWire::Result); // So that nobody waits for results.
    run.StepIn(phase);
    const QStringList frame = Frame(kind);
    QCOMPARE(LinesOfTheState(run.log), frame.mid(0, 1) + lines + frame.mid(1));
    for (const LogCapture::Message& message : run.log.Messages()) {
        QCOMPARE(message.type, QtWarningMsg);
    }
}

void TestRCDRuns::EveryStepIsFramedOnTheLog()
{
    QFETCH(const int, kind);
    QFETCH(const int, phase);
    Run run(kind);
    run.peer.AnswerAlways(Wire::Acknowledge);
    run.StepIn(phase);
    const QStringList texts = run.log.Texts();
    QCOMPARE((QStringList{texts.constFirst(), texts.constLast()}), Frame(kind));
    QCOMPARE(texts.count(Frame(kind).constFirst()), 1);
    QCOMPARE(texts.count(Frame(kind).constLast()), 1);
}

void TestRCDRuns::OtherSettingsDoNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("mode");
    const auto rows = [](int kind, const QList<int>& modes, const QList<int>& modesOfIEC) {
        for (const int mode : modes) {
            QTest::addRow("%s with RCD, mode %d", Of(kind).name, mode) << kind << 10 << mode;
        }
        for (const int mode : modesOfIEC) {
            QTest::addRow("%s with RCD IEC, mode %d", Of(kind).name, mode) << kind << 11 << mode;
        }
        QTest::addRow("%s with another function", Of(kind).name) << kind << 1 << 0;
        QTest::addRow("%s with no function", Of(kind).name) << kind << -1 << 0;
    };
    rows(UbRe, {-1, 1, 2, 3}, {-1, 0, 1, 2, 3});
    rows(IaTa, {}, {-1, 0, 1, 2, 3});
    rows(IECIaTa, {-1, 0, 1, 2, 3}, {3});
    rows(CleanUp, {-1, 0, 1, 2, 3}, {-1, 0, 1, 2, 4});
}

/// While such settings stand, nothing is done in any phase.
void TestRCDRuns::OtherSettingsDoNothing()
{
    QFETCH(const int, kind);
    QFETCH(const int, function);
    QFETCH(const int, mode);
    Run run(kind);
    run.Settings(SettingsOf(function, mode));
    run.peer.AnswerAlways(Wire::Acknowledge);
    for (const int phase : {Unknown, Idle, Preparing, Prepared, Starting, Running, Stopped}) {
        QCOMPARE(run.StepIn(phase), NoChange);
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Pauses(), NoPause);
    }
}

void TestRCDRuns::ARunGoesOnOnceItsSettingsAreBack()
{
    Run run(UbRe);
    run.Settings(SettingsOf(1, 0));
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.StepIn(Preparing), NoChange);
    run.Settings(SettingsOf(10, 0));
    QCOMPARE(run.StepIn(Preparing), QStringLiteral("MeasurementStatus=2"));
}

void TestRCDRuns::ModeWithoutATestIsAFailedPreparation_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("mode");
    for (const auto& [kind, mode] :
         {std::pair(IaTa, -1), {IaTa, 0}, {IaTa, 3}, {IECIaTa, -1}, {IECIaTa, 0}, {IECIaTa, 4}}) {
        QTest::addRow("%s, mode %d", Of(kind).name, mode) << int(kind) << mode;
    }
}

void TestRCDRuns::ModeWithoutATestIsAFailedPreparation()
{
    QFETCH(const int, kind);
    QFETCH(const int, mode);
    for (const int phase : {Idle, Preparing, Prepared, Starting, Running}) {
        Run run(kind);
        run.Settings(SettingsOf(static_cast<int>(Of(kind).function), mode));
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(phase), Text(Ended200));
        QCOMPARE(run.Commands(), QByteArray());
    }
}

void TestRCDRuns::BothModesArePrepared_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("Ia/Ta, mode 1") << int(IaTa) << 1 << Wire::Bytes("500a00004000000000338c");
    QTest::newRow("Ia/Ta, mode 2") << int(IaTa) << 2 << Wire::Bytes("500a000080000000008bbf");
    QTest::newRow("IEC Ia/Ta, mode 1") << int(IECIaTa) << 1 << Wire::Bytes("500b00004000000000e0cb");
    QTest::newRow("IEC Ia/Ta, mode 2") << int(IECIaTa) << 2 << Wire::Bytes("500b0000800000000058f8");
}

void TestRCDRuns::BothModesArePrepared()
{
    QFETCH(const int, kind);
    QFETCH(const int, mode);
    QFETCH(const QByteArray, frame);
    Run run(kind);
    run.Settings(SettingsOf(static_cast<int>(Of(kind).function), mode));
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.StepIn(Preparing), QStringLiteral("MeasurementStatus=2"));
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{frame});
}

/// Each request of a phase is sent once and has half a second to be answered. Silence only costs an attempt.
void TestRCDRuns::RequestsWaitHalfASecond()
{
    QFETCH(const int, kind);
    QFETCH(const int, phase);
    Run run(kind);
    run.transciever.SetMaxRetransmissions(2); // A request that is sent once ignores it.
    QElapsedTimer time;
    time.start();
    QCOMPARE(run.StepIn(phase), NoChange);
    constexpr qint64 Ms = 10 + 500 + 200; // With the pauses around it.
    QCOMPARE(time.elapsed(), Ms);
    QCOMPARE(run.Commands(), QByteArray("sPsS").mid(phase, 1));
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDRuns::PhasesThatDoNotExistDoNothing()
{
    QFETCH(const int, kind);
    QFETCH(const int, phase);
    Run run(kind);
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.StepIn(phase), NoChange);
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDRuns::IdleAwaitsTheInstrument_data()
{
    StepRows::AddColumns();
    const QString next = QStringLiteral("MeasurementStatus=1");
    for (const int kind : All) {
        const StepRows rows(kind, Idle, Wire::ReadStatus);
        const QString pause = kind == UbRe ? Pause : NoPause; // After every status.
        const auto row = [&](const char* name, const QByteArray& answer, const QString& outcome) {
            rows.Add(Text(name), answer, outcome, pause);
        };
        for (int test = 0; test < 16; ++test) {
            rows.Add(QStringLiteral("start test %1, new").arg(test), RCDWire::StartTest(test, true),
                     test >= 14 ? next : NoChange, pause);
        }
        row("start test 14, not new", RCDWire::StartTest(14, false), NoChange);
        row("start test 15, not new", RCDWire::StartTest(15, false), NoChange);
        row("error 0", RCDWire::StartTest(3, false, 0), QStringLiteral("ErrorCode=0 MeasurementStatus=7"));
        row("error 14 with a passed start test", RCDWire::StartTest(14, true, 14),
            QStringLiteral("ErrorCode=14 MeasurementStatus=7"));
        // Any active function will do, whatever it reports.
        row("RCD", RCDWire::Status(0), next);
        row("RCD, error 3", RCDWire::Status(9, true, 3), QStringLiteral("ErrorCode=523 ") + next);
        row("RCD IEC", RCDWire::IECStatus(4), next);
        row("RCD IEC, error 0", RCDWire::IECStatus(4, false, 0), QStringLiteral("ErrorCode=520 ") + next);
        row("another function, error 3", MeasurementEngine::Status(Vesmar::MeasurementType::RPE, 7, false, 3),
            QStringLiteral("ErrorCode=3 ") + next);
        row("function 27", WithChecksum(Wire::Bytes("1b34")), QStringLiteral("ErrorCode=3 ") + next);
        rows.Add(QStringLiteral("acknowledged"), Wire::Acknowledge, NoChange, NoPause);
        rows.Add(QStringLiteral("damaged function 27"), Wire::Bytes("1bf40000"), NoChange, Pause);
        rows.AddFailures();
    }
}

void TestRCDRuns::IdleGivesUpAfterNineStatuses()
{
    QFETCH(const int, kind);
    Run run(kind);
    run.peer.AnswerInTurn({Wire::IdleStatus, RCDWire::StartTest(13, true), Wire::Acknowledge, Wire::Refusal,
                           Wire::DamagedStatus, Wire::IdleStatus, Wire::Acknowledge, Wire::Acknowledge,
                           Wire::IdleStatus, Wire::ReadyStatus});
    QVERIFY(run.StepsInVain(9, "s"));
    QCOMPARE(run.Step(), Text(Ended400));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDRuns::PreparesTheTest_data()
{
    StepRows::AddColumns();
    for (const int kind : All) {
        const StepRows rows(kind, Preparing, Of(kind).prepareFrame);
        rows.Add(QStringLiteral("acknowledged"), Wire::Acknowledge, QStringLiteral("MeasurementStatus=2"),
                 NoPause);
        rows.Add(QStringLiteral("data"), Wire::StartTest0Status, NoChange, NoPause);
        rows.AddFailures();
    }
}

void TestRCDRuns::PreparingGivesUpAfterThreeRequests()
{
    QFETCH(const int, kind);
    Run run(kind);
    run.peer.AnswerInTurn({Wire::StartTest0Status, Wire::Refusal, Wire::DamagedStatus, Wire::Acknowledge});
    run.SetPhase(Preparing);
    QVERIFY(run.StepsInVain(3, "P"));
    QCOMPARE(run.Step(), Text(Ended200));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDRuns::TestRunsThrough_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("end");
    const QString results = QStringLiteral("TestResults StartMeasurementRequested=0 MeasurementStatus=7");
    QTest::newRow("Ub/Re") << int(UbRe) << QStringLiteral("IsMeasurementRunning=1 ") + results;
    QTest::newRow("Ia/Ta") << int(IaTa) << results;
    QTest::newRow("IEC Ia/Ta") << int(IECIaTa) << results;
    QTest::newRow("clean-up") << int(CleanUp) << QStringLiteral("MeasurementStatus=7");
}

/// From the wait for the instrument to the results, in its requests and the changes of each step.
void TestRCDRuns::TestRunsThrough()
{
    QFETCH(const int, kind);
    QFETCH(const QString, end);
    Run run(kind);
    run.peer.AnswerInTurn({Wire::IdleStatus, Wire::ReadyStatus, Wire::Acknowledge, run.Status(2),
                           run.Status(3, true), RCDWire::ObjectCheck(0), Wire::Acknowledge});
    QStringList steps;
    QByteArray commands;
    for (int step = 0; step < 6; ++step) {
        steps.append(run.Step());
        commands += run.Commands();
    }
    QCOMPARE(commands, QByteArray("ssPsseS"));
    run.context.StartMeasurementRequested.Set(true);
    run.peer.Send(run.Status(7) + RCDWire::Result);
    steps.append(run.Step());
    QCOMPARE(steps.join(QStringLiteral("; ")),
             QStringLiteral("; MeasurementStatus=1; MeasurementStatus=2; ; MeasurementStatus=3; "
                            "MeasurementStatus=4; ") +
                 end);
}

QTEST_GUILESS_MAIN(TestRCDRuns)
#include "tst_rcdruns.moc"
