#include <QTest>

#include <Vesmar/rcdiecresults.h>

#include "states/rcd/rcdieciatameasurementrunningstate.h"
#include "unit/states/rcdiecrunningsteps.h"

using namespace RCDRunningSteps;

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

namespace
{

struct IECIaTa {
    using State = Vesmar::RCDIECIaTaMeasurementRunningState;
    static constexpr MeasurementType Function = MeasurementType::RCDIEC;
    static MeasurementSettings* SettingsOfMode(int mode) { return RCDIECSettingsOfMode(mode); }
    static MeasurementSettings* Settings() { return SettingsOfMode(1); }
    static QByteArray PrepareFrame() { return RCDWire::PrepareIECIaTa; }
    static QByteArray Status(int functionState, bool isNewMeasurement = false, int error = RCDWire::NoError)
    {
        return RCDWire::IECStatus(functionState, isNewMeasurement, error);
    }
};

const QString InvalidVoltage = Green(QStringLiteral("PREPARED raport: RCD_CheckObject_ULNIECInvalid"));

} // namespace

class TestRCDIECIaTaMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryBeginsTheRun();
    void ExitEndsTheMeasurement();
    void EntryResetsTheBudgets();
    void EntryForgetsWhatIsWrongWithTheObject();
    void StepsNameTheirPhase_data();
    void StepsNameTheirPhase();
    void OtherSettingsDoNothing_data();
    void OtherSettingsDoNothing();
    void ModeWithoutATestIsAFailedPreparation_data();
    void ModeWithoutATestIsAFailedPreparation();
    void BothModesAreServed();
    void RequestsWaitHalfASecond_data();
    void RequestsWaitHalfASecond();
    void ObjectCheckWaitsHalfASecond();

    void IdleAwaitsTheInstrument_data();
    void IdleAwaitsTheInstrument();
    void IdleEndsWithAnActiveFunction();
    void IdleGivesUpAfterNineStatuses();
    void PreparesTheTest_data();
    void PreparesTheTest();
    void PreparingGivesUpAfterThreeRequests();
    void PrepareBeginsANewBudget();
    void FailedPrepareKeepsWhatIsWrongWithTheObject();

    void PreparedFollowsTheFunction_data();
    void PreparedFollowsTheFunction();
    void PreparedChecksTheObject_data();
    void PreparedChecksTheObject();
    void Code10IsReportedAndLogged();
    void Code10LeavesAnEarlierError();
    void OtherCodesAreNotLogged();
    void PreparedGivesUpAfterFiveStatuses();
    void FailedPollsCountToo();
    void PreparedGivesUpWithTheErrorOfTheLastCheck_data();
    void PreparedGivesUpWithTheErrorOfTheLastCheck();
    void ExhaustedBudgetMayEndWithCode10();
    void PollsAfterCode10AreNotCounted();
    void FailedPollAfterCode10IsNotCountedAndForgetsIt();
    void PollsAfterOtherCodesAreCounted();
    void ErrorOfAnEarlierCheckIsForgotten();

    void StartsTheTest_data();
    void StartsTheTest();
    void StartingGivesUpAfterThreeRequests();
    void StartsEvenWhileAnAbortIsPending();

    void ResultsEndTheTest_data();
    void ResultsEndTheTest();
    void TerminationEndsTheTestWith521_data();
    void TerminationEndsTheTestWith521();
    void Error525BeginsTheTestAnew_data();
    void Error525BeginsTheTestAnew();
    void TestBegunAnewHasWhatIsLeftOfItsBudgets();
    void SilentTestIsStartedAgain_data();
    void SilentTestIsStartedAgain();
    void SilentTestIsStartedThreeTimesInAll();
    void EndedPhasesClearIsMeasurementRunning();
    void PhasesThatThereAreNotDoNothing();
    void TestRunsThrough();
};

void TestRCDIECIaTaMeasurementRunningState::EntryBeginsTheRun()
{
    RCDRunningSteps::EntryBeginsTheRun<IECIaTa>("ENTERING RCD IEC IaTa MEASUREMENT STATE ",
                                                {QStringLiteral("IsMeasurementRunning=1")});
}

void TestRCDIECIaTaMeasurementRunningState::ExitEndsTheMeasurement()
{
    ExitWritesItsBanner<IECIaTa>("LEAVING RCD IEC IaTa MEASUREMENT STATE ",
                                 {QStringLiteral("IsMeasurementRunning=0")});
}

void TestRCDIECIaTaMeasurementRunningState::EntryResetsTheBudgets()
{
    RCDRunningSteps::EntryResetsTheBudgets<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::EntryForgetsWhatIsWrongWithTheObject()
{
    IECPrepared::EntryForgetsWhatIsWrongWithTheObject<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::StepsNameTheirPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<QString>("line");
    const auto black = [](const char* name) {
        return QStringLiteral("\033[0;30m       %1\033[0m").arg(QLatin1String(name));
    };
    QTest::newRow("idle") << Idle << black("IDLE");
    QTest::newRow("preparing") << Preparing << black("PREPARING");
    QTest::newRow("prepared") << Prepared << Green(QStringLiteral("PREPARED"));
    QTest::newRow("starting") << Starting << Green(QStringLiteral("STARTING"));
    QTest::newRow("running") << Running << Green(QStringLiteral("RUNNING"));
    QTest::newRow("measuring") << Measuring << Green(QStringLiteral("RUNNING"));
    QTest::newRow("stopping") << Stopping << Green(QStringLiteral("STOPING"));
    QTest::newRow("stopped") << Stopped << Green(QStringLiteral("STOPED"));
}

void TestRCDIECIaTaMeasurementRunningState::StepsNameTheirPhase()
{
    QFETCH(const int, phase);
    QFETCH(const QString, line);
    Run<IECIaTa> run;
    run.peer.AnswerAlways(RCDWire::NotReady);
    run.peer.Send(RCDWire::Result); // So that nobody waits for results.
    run.StepIn(phase);
    QCOMPARE(LinesOfTheState(run.log), (QStringList{Banner("RUNNING RCD IEC IaTa MEASUREMENT IN "), line,
                                                    Banner("RUNNING RCD IEC IaTa MEASUREMENT OUT")}));
    QCOMPARE(run.log.Texts().constFirst(), Banner("RUNNING RCD IEC IaTa MEASUREMENT IN "));
    QCOMPARE(run.log.Texts().constLast(), Banner("RUNNING RCD IEC IaTa MEASUREMENT OUT"));
    QCOMPARE(run.log.Messages().constFirst().type, QtWarningMsg);
}

void TestRCDIECIaTaMeasurementRunningState::OtherSettingsDoNothing_data()
{
    AddSettingsRows({-1, 0, 1, 2, 3}, {3});
}

void TestRCDIECIaTaMeasurementRunningState::OtherSettingsDoNothing()
{
    RCDRunningSteps::OtherSettingsDoNothing<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::ModeWithoutATestIsAFailedPreparation_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {-1, 0, 4}) {
        QTest::addRow("mode %d", mode) << mode;
    }
}

void TestRCDIECIaTaMeasurementRunningState::ModeWithoutATestIsAFailedPreparation()
{
    RCDRunningSteps::ModeWithoutATestIsAFailedPreparation<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::BothModesAreServed()
{
    for (const int mode : {1, 2}) {
        Run<IECIaTa> run;
        run.Settings(RCDIECSettingsOfMode(mode));
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(Preparing), QStringLiteral("MeasurementStatus=2"));
        QCOMPARE(
            run.peer.RequestBytes(),
            QList<QByteArray>{mode == 1 ? RCDWire::PrepareIECIaTa : Wire::Bytes("500b0000800000000058f8")});
    }
}

void TestRCDIECIaTaMeasurementRunningState::RequestsWaitHalfASecond_data()
{
    AddRequestRows();
}

void TestRCDIECIaTaMeasurementRunningState::RequestsWaitHalfASecond()
{
    RCDRunningSteps::RequestsWaitHalfASecond<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::ObjectCheckWaitsHalfASecond()
{
    RCDRunningSteps::ObjectCheckWaitsHalfASecond<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::IdleAwaitsTheInstrument_data()
{
    AddIdleRows(NoPause);
}

void TestRCDIECIaTaMeasurementRunningState::IdleAwaitsTheInstrument()
{
    RCDRunningSteps::IdleAwaitsTheInstrument<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::IdleEndsWithAnActiveFunction()
{
    RCDRunningSteps::IdleEndsWithAnActiveFunction<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::IdleGivesUpAfterNineStatuses()
{
    RCDRunningSteps::IdleGivesUpAfterNineStatuses<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PreparesTheTest_data()
{
    AddCommandRows("MeasurementStatus=2");
}

void TestRCDIECIaTaMeasurementRunningState::PreparesTheTest()
{
    RCDRunningSteps::PreparesTheTest<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PreparingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::PreparingGivesUpAfterThreeRequests<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PrepareBeginsANewBudget()
{
    IECPrepared::PrepareBeginsANewBudget<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::FailedPrepareKeepsWhatIsWrongWithTheObject()
{
    IECPrepared::FailedPrepareKeepsWhatIsWrongWithTheObject<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PreparedFollowsTheFunction_data()
{
    IECPrepared::AddRows("MeasurementStatus=3", NoPause, Pause);
}

void TestRCDIECIaTaMeasurementRunningState::PreparedFollowsTheFunction()
{
    IECPrepared::FollowsTheFunction<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PreparedChecksTheObject_data()
{
    IECPrepared::AddCheckRows(Pause);
}

void TestRCDIECIaTaMeasurementRunningState::PreparedChecksTheObject()
{
    IECPrepared::ChecksTheObject<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::Code10IsReportedAndLogged()
{
    Run<IECIaTa> run;
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    QCOMPARE(run.StepIn(Prepared), QStringLiteral("ErrorCode=507"));
    QCOMPARE(run.Pauses(), NoPause);
    QVERIFY(run.log.Texts().contains(InvalidVoltage));
    QCOMPARE(run.Step(), NoChange); // It is stored already.
    QVERIFY(run.log.Texts().contains(InvalidVoltage));
    run.SetError(15);
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=507"));
}

void TestRCDIECIaTaMeasurementRunningState::Code10LeavesAnEarlierError()
{
    Run<IECIaTa> run;
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    run.SetError(521);
    QCOMPARE(run.StepIn(Prepared), NoChange);
    QVERIFY(run.log.Texts().contains(InvalidVoltage));
}

void TestRCDIECIaTaMeasurementRunningState::OtherCodesAreNotLogged()
{
    Run<IECIaTa> run;
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    run.StepIn(Prepared);
    QVERIFY(!run.log.Contains(QStringLiteral("RCD_CheckObject_ULNIECInvalid")));
}

void TestRCDIECIaTaMeasurementRunningState::PreparedGivesUpAfterFiveStatuses()
{
    IECPrepared::GivesUpAfterFiveStatuses<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::FailedPollsCountToo()
{
    IECPrepared::FailedPollsCountToo<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PreparedGivesUpWithTheErrorOfTheLastCheck_data()
{
    IECPrepared::AddLastCheckRows();
}

void TestRCDIECIaTaMeasurementRunningState::PreparedGivesUpWithTheErrorOfTheLastCheck()
{
    IECPrepared::GivesUpWithTheErrorOfTheLastCheck<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::ExhaustedBudgetMayEndWithCode10()
{
    Run<IECIaTa> run;
    run.SetPhase(Prepared);
    run.peer.AnswerAlways(IECIaTa::Status(2));
    QVERIFY(run.StepsInVain(4, "s"));
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=507"));
    QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=7"));
    QCOMPARE(static_cast<int>(run.context.ErrorCode.Get()), 507);
}

void TestRCDIECIaTaMeasurementRunningState::PollsAfterCode10AreNotCounted()
{
    Run<IECIaTa> run;
    run.SetPhase(Prepared);
    run.SetError(507);
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    QVERIFY(run.StepsInVain(20, "se")); // The first one alone is counted.
    run.peer.AnswerAlways(IECIaTa::Status(2));
    QVERIFY(run.StepsInVain(5, "s")); // And the last four of these.
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

void TestRCDIECIaTaMeasurementRunningState::FailedPollAfterCode10IsNotCountedAndForgetsIt()
{
    Run<IECIaTa> run;
    run.SetPhase(Prepared);
    run.SetError(507);
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    QVERIFY(run.StepsInVain(1, "se"));
    run.peer.AnswerAlways(Wire::Acknowledge);
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

void TestRCDIECIaTaMeasurementRunningState::PollsAfterOtherCodesAreCounted()
{
    Run<IECIaTa> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    QVERIFY(run.StepsInVain(5, "se"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=502 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDIECIaTaMeasurementRunningState::ErrorOfAnEarlierCheckIsForgotten()
{
    Run<IECIaTa> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', IECIaTa::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    QVERIFY(run.StepsInVain(4, "se"));
    run.peer.AnswerAlways(IECIaTa::Status(2));
    QVERIFY(run.StepsInVain(1, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

void TestRCDIECIaTaMeasurementRunningState::StartsTheTest_data()
{
    AddCommandRows("MeasurementStatus=4");
}

void TestRCDIECIaTaMeasurementRunningState::StartsTheTest()
{
    RCDRunningSteps::StartsTheTest<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::StartingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::StartingGivesUpAfterThreeRequests<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::StartsEvenWhileAnAbortIsPending()
{
    RCDRunningSteps::StartsEvenWhileAnAbortIsPending<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::ResultsEndTheTest_data()
{
    AddMeasuringRows();
}

void TestRCDIECIaTaMeasurementRunningState::ResultsEndTheTest()
{
    QFETCH(const int, phase);
    Run<IECIaTa> run;
    QCOMPARE(StepWithBytes(run, phase, RCDWire::Result),
             QStringLiteral("TestResults StartMeasurementRequested=0 MeasurementStatus=7"));
    const auto* results = dynamic_cast<Vesmar::RCDIECResults*>(run.context.TestResults.Get());
    QVERIFY(results != nullptr);
    QCOMPARE(results->_ia, 1.0F);
    QCOMPARE(results->_ta, 2.5F);
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDIECIaTaMeasurementRunningState::TerminationEndsTheTestWith521_data()
{
    AddTerminationRows();
}

void TestRCDIECIaTaMeasurementRunningState::TerminationEndsTheTestWith521()
{
    QFETCH(const int, phase);
    QFETCH(const int, error);
    QFETCH(const QString, outcome);
    Run<IECIaTa> run;
    QCOMPARE(StepWithBytes(run, phase, IECIaTa::Status(9, false, error)), outcome);
}

void TestRCDIECIaTaMeasurementRunningState::Error525BeginsTheTestAnew_data()
{
    AddMeasuringRows();
}

void TestRCDIECIaTaMeasurementRunningState::Error525BeginsTheTestAnew()
{
    QFETCH(const int, phase);
    Run<IECIaTa> run;
    QCOMPARE(StepWithBytes(run, phase, Wire::Bytes("0b592617")),
             QStringLiteral("ErrorCode=525 ErrorCode=15 MeasurementStatus=0"));
    QVERIFY(run.context.StartMeasurementRequested.Get());
}

void TestRCDIECIaTaMeasurementRunningState::TestBegunAnewHasWhatIsLeftOfItsBudgets()
{
    Run<IECIaTa> run;
    for (int round = 0; round < 3; ++round) {
        run.peer.AnswerInTurn({RCDWire::NotReady, RCDWire::Ready, Wire::Acknowledge, IECIaTa::Status(2),
                               IECIaTa::Status(4), Wire::Acknowledge});
        for (int step = 0; step < 6; ++step) {
            run.Step();
        }
        QCOMPARE(StepWithBytes(run, Running, Wire::Bytes("0b592617")),
                 QStringLiteral("ErrorCode=525 ErrorCode=15 MeasurementStatus=0"));
    }
    run.peer.AnswerAlways(RCDWire::NotReady);
    QVERIFY(run.StepsInVain(3, "s")); // Six of nine have been asked.
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=400 MeasurementStatus=7"));
    run.SetError(15);
    run.peer.AnswerAlways(Wire::Acknowledge);
    QCOMPARE(run.StepIn(Preparing), QStringLiteral("ErrorCode=200 MeasurementStatus=7"));
    QCOMPARE(run.StepIn(Starting), QStringLiteral("ErrorCode=201 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDIECIaTaMeasurementRunningState::SilentTestIsStartedAgain_data()
{
    AddMeasuringRows();
}

void TestRCDIECIaTaMeasurementRunningState::SilentTestIsStartedAgain()
{
    QFETCH(const int, phase);
    RCDRunningSteps::SilentTestIsStartedAgain<IECIaTa>(phase);
}

void TestRCDIECIaTaMeasurementRunningState::SilentTestIsStartedThreeTimesInAll()
{
    RCDRunningSteps::SilentTestIsStartedThreeTimesInAll<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::EndedPhasesClearIsMeasurementRunning()
{
    RCDRunningSteps::EndedPhasesClearIsMeasurementRunning<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::PhasesThatThereAreNotDoNothing()
{
    RCDRunningSteps::PhasesThatThereAreNotDoNothing<IECIaTa>();
}

void TestRCDIECIaTaMeasurementRunningState::TestRunsThrough()
{
    RCDRunningSteps::TestRunsThrough<IECIaTa>(
        QStringLiteral("; MeasurementStatus=1; MeasurementStatus=2; ; MeasurementStatus=3; "
                       "MeasurementStatus=4; TestResults StartMeasurementRequested=0 MeasurementStatus=7"));
}

QTEST_GUILESS_MAIN(TestRCDIECIaTaMeasurementRunningState)
#include "tst_rcdieciatameasurementrunningstate.moc"
