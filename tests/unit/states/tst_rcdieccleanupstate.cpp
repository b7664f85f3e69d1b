#include <QTest>

#include "states/rcd/rcdieccleanupstate.h"
#include "unit/states/rcdiecrunningsteps.h"

using namespace RCDRunningSteps;

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

namespace
{

struct CleanUp {
    using State = Vesmar::RCDIECCleanUpState;
    static constexpr MeasurementType Function = MeasurementType::RCDIEC;
    static MeasurementSettings* Settings() { return RCDIECSettingsOfMode(3); }
    static QByteArray PrepareFrame() { return RCDWire::PrepareIECCleanUp; }
    static QByteArray Status(int functionState, bool isNewMeasurement = false, int error = RCDWire::NoError)
    {
        return RCDWire::IECStatus(functionState, isNewMeasurement, error);
    }
};

const QString StepIn = Banner("RUNING RCD IEC CleanUp STATE IN");
const QString StepOut = Banner("RUNING RCD IEC CleanUp STATE OUT");

/// What a step in the prepared phase tells of itself, with single blanks and none around the signs.
QStringList PreparedLines(const LogCapture& log)
{
    const QString beginning = QStringLiteral("<<< MeasurementState::Prepared: ");
    QStringList lines;
    for (const QString& text : log.Texts()) {
        if (text.startsWith(beginning)) {
            lines.append(
                text.mid(beginning.size()).simplified().replace(QStringLiteral("= "), QStringLiteral("=")));
        }
    }
    return lines;
}

} // namespace

class TestRCDIECCleanUpState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryBeginsTheRun();
    void ExitWritesItsBannerAlone();
    void EntryResetsTheBudgets();
    void EntryForgetsWhatIsWrongWithTheObject();
    void StepsNameTheirPhase_data();
    void StepsNameTheirPhase();
    void EveryStepIsFramedOnTheLog();
    void PreparedTellsItsCount();
    void OtherSettingsDoNothing_data();
    void OtherSettingsDoNothing();
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
    void Code10IsAnErrorOfTheObjectLikeAnyOther();
    void PreparedGivesUpAfterFiveStatuses();
    void FailedPollsCountToo();
    void PreparedGivesUpWithTheErrorOfTheLastCheck_data();
    void PreparedGivesUpWithTheErrorOfTheLastCheck();
    void PollsAfterAnErrorOfTheObjectAreNotCounted_data();
    void PollsAfterAnErrorOfTheObjectAreNotCounted();
    void FailedPollAfterAnErrorOfTheObjectForgetsIt();

    void StartsTheTest_data();
    void StartsTheTest();
    void StartingGivesUpAfterThreeRequests();
    void StartsEvenWhileAnAbortIsPending();

    void RunningEndsAtOnceWithoutResults();
    void LaterPhasesSendNothing();
    void PhasesThatThereAreNotDoNothing();
    void CleanUpRunsThrough();
};

void TestRCDIECCleanUpState::EntryBeginsTheRun()
{
    RCDRunningSteps::EntryBeginsTheRun<CleanUp>("ENTERING RCD IEC CleanUp STATE ", {});
}

void TestRCDIECCleanUpState::ExitWritesItsBannerAlone()
{
    ExitWritesItsBanner<CleanUp>("LEAVING RCD IEC CleanUp STATE ", {});
}

void TestRCDIECCleanUpState::EntryResetsTheBudgets()
{
    RCDRunningSteps::EntryResetsTheBudgets<CleanUp>();
}

void TestRCDIECCleanUpState::EntryForgetsWhatIsWrongWithTheObject()
{
    IECPrepared::EntryForgetsWhatIsWrongWithTheObject<CleanUp>();
}

void TestRCDIECCleanUpState::StepsNameTheirPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<QString>("line");
    QTest::newRow("unknown") << Unknown << QStringLiteral("<<< MeasurementState::Unknown...");
    QTest::newRow("idle") << Idle << QStringLiteral("<<< MeasurementState::Idle");
    QTest::newRow("preparing") << Preparing << QStringLiteral("<<< MeasurementState::Preparing");
    QTest::newRow("measuring") << Measuring << QStringLiteral("<<< MeasurementState::Starting...");
    QTest::newRow("stopping") << Stopping << QStringLiteral("<<< MeasurementState::Starting...");
    QTest::newRow("stopped") << Stopped << QStringLiteral("<<< MeasurementState::Stopped...");
}

void TestRCDIECCleanUpState::StepsNameTheirPhase()
{
    QFETCH(const int, phase);
    QFETCH(const QString, line);
    Run<CleanUp> run;
    run.peer.AnswerAlways(RCDWire::NotReady);
    run.StepIn(phase);
    QCOMPARE(LinesOfTheState(run.log), (QStringList{StepIn, line, StepOut}));
    QCOMPARE(run.log.Messages().constFirst().type, QtWarningMsg);
}

void TestRCDIECCleanUpState::EveryStepIsFramedOnTheLog()
{
    for (const int phase : {Prepared, Starting, Running, 8}) {
        Run<CleanUp> run;
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.StepIn(phase);
        const QStringList texts = run.log.Texts();
        QCOMPARE(texts.constFirst(), StepIn);
        QCOMPARE(texts.constLast(), StepOut);
        QCOMPARE(texts.count(StepIn), 1);
        QCOMPARE(texts.count(StepOut), 1);
    }
}

void TestRCDIECCleanUpState::PreparedTellsItsCount()
{
    Run<CleanUp> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', CleanUp::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    run.Step();
    QCOMPARE(PreparedLines(run.log),
             (QStringList{QStringLiteral("_lsaapCounter=0 _lsaap=5"), QStringLiteral("operationResult=0"),
                          QStringLiteral("_savedCheckObjectError==Error::NoErrors")}));
    run.Step();
    QCOMPARE(PreparedLines(run.log),
             (QStringList{QStringLiteral("_lsaapCounter=1 _lsaap=5"), QStringLiteral("operationResult=0")}));
    run.peer.AnswerAlways(Wire::Refusal);
    run.Step();
    QCOMPARE(PreparedLines(run.log),
             (QStringList{QStringLiteral("_lsaapCounter=1 _lsaap=5"), QStringLiteral("operationResult=2")}));
    run.Step();
    QCOMPARE(PreparedLines(run.log),
             (QStringList{QStringLiteral("_lsaapCounter=1 _lsaap=5"), QStringLiteral("operationResult=2"),
                          QStringLiteral("_savedCheckObjectError==Error::NoErrors")}));
}

void TestRCDIECCleanUpState::OtherSettingsDoNothing_data()
{
    AddSettingsRows({-1, 0, 1, 2, 3}, {-1, 0, 1, 2, 4});
}

void TestRCDIECCleanUpState::OtherSettingsDoNothing()
{
    RCDRunningSteps::OtherSettingsDoNothing<CleanUp>();
}

void TestRCDIECCleanUpState::RequestsWaitHalfASecond_data()
{
    AddRequestRows();
}

void TestRCDIECCleanUpState::RequestsWaitHalfASecond()
{
    RCDRunningSteps::RequestsWaitHalfASecond<CleanUp>();
}

void TestRCDIECCleanUpState::ObjectCheckWaitsHalfASecond()
{
    RCDRunningSteps::ObjectCheckWaitsHalfASecond<CleanUp>();
}

void TestRCDIECCleanUpState::IdleAwaitsTheInstrument_data()
{
    AddIdleRows(NoPause);
}

void TestRCDIECCleanUpState::IdleAwaitsTheInstrument()
{
    RCDRunningSteps::IdleAwaitsTheInstrument<CleanUp>();
}

void TestRCDIECCleanUpState::IdleEndsWithAnActiveFunction()
{
    RCDRunningSteps::IdleEndsWithAnActiveFunction<CleanUp>();
}

void TestRCDIECCleanUpState::IdleGivesUpAfterNineStatuses()
{
    RCDRunningSteps::IdleGivesUpAfterNineStatuses<CleanUp>();
}

void TestRCDIECCleanUpState::PreparesTheTest_data()
{
    AddCommandRows("MeasurementStatus=2");
}

void TestRCDIECCleanUpState::PreparesTheTest()
{
    RCDRunningSteps::PreparesTheTest<CleanUp>();
}

void TestRCDIECCleanUpState::PreparingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::PreparingGivesUpAfterThreeRequests<CleanUp>();
}

void TestRCDIECCleanUpState::PrepareBeginsANewBudget()
{
    IECPrepared::PrepareBeginsANewBudget<CleanUp>();
}

void TestRCDIECCleanUpState::FailedPrepareKeepsWhatIsWrongWithTheObject()
{
    IECPrepared::FailedPrepareKeepsWhatIsWrongWithTheObject<CleanUp>();
}

void TestRCDIECCleanUpState::PreparedFollowsTheFunction_data()
{
    IECPrepared::AddRows("MeasurementStatus=3 ErrorCode=15", Pause, NoPause);
}

void TestRCDIECCleanUpState::PreparedFollowsTheFunction()
{
    IECPrepared::FollowsTheFunction<CleanUp>();
}

void TestRCDIECCleanUpState::PreparedChecksTheObject_data()
{
    IECPrepared::AddCheckRows(NoPause);
}

void TestRCDIECCleanUpState::PreparedChecksTheObject()
{
    IECPrepared::ChecksTheObject<CleanUp>();
}

void TestRCDIECCleanUpState::Code10IsAnErrorOfTheObjectLikeAnyOther()
{
    Run<CleanUp> run;
    run.AnswerByCommand({{'s', CleanUp::Status(3, true)}, {'e', RCDWire::ObjectCheck(10)}});
    QCOMPARE(run.StepIn(Prepared), NoChange);
    QCOMPARE(run.Pauses(), NoPause);
    QVERIFY(!run.log.Contains(QStringLiteral("RCD_CheckObject_ULNIECInvalid")));
}

void TestRCDIECCleanUpState::PreparedGivesUpAfterFiveStatuses()
{
    IECPrepared::GivesUpAfterFiveStatuses<CleanUp>();
}

void TestRCDIECCleanUpState::FailedPollsCountToo()
{
    IECPrepared::FailedPollsCountToo<CleanUp>();
}

void TestRCDIECCleanUpState::PreparedGivesUpWithTheErrorOfTheLastCheck_data()
{
    IECPrepared::AddLastCheckRows();
    QTest::newRow("code 10") << RCDWire::ObjectCheck(10) << 507;
}

void TestRCDIECCleanUpState::PreparedGivesUpWithTheErrorOfTheLastCheck()
{
    IECPrepared::GivesUpWithTheErrorOfTheLastCheck<CleanUp>();
}

void TestRCDIECCleanUpState::PollsAfterAnErrorOfTheObjectAreNotCounted_data()
{
    QTest::addColumn<QByteArray>("check");
    QTest::newRow("code 3") << RCDWire::ObjectCheck(3);
    QTest::newRow("code 10") << RCDWire::ObjectCheck(10);
    QTest::newRow("code 11") << RCDWire::ObjectCheck(11);
    QTest::newRow("acknowledged") << Wire::Acknowledge;
}

void TestRCDIECCleanUpState::PollsAfterAnErrorOfTheObjectAreNotCounted()
{
    QFETCH(const QByteArray, check);
    Run<CleanUp> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', CleanUp::Status(3, true)}, {'e', check}});
    QVERIFY(run.StepsInVain(20, "se")); // The first one alone is counted.
    run.peer.AnswerAlways(CleanUp::Status(2));
    QVERIFY(run.StepsInVain(5, "s")); // And the last four of these.
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

void TestRCDIECCleanUpState::FailedPollAfterAnErrorOfTheObjectForgetsIt()
{
    Run<CleanUp> run;
    run.SetPhase(Prepared);
    run.AnswerByCommand({{'s', CleanUp::Status(3, true)}, {'e', RCDWire::ObjectCheck(3)}});
    QVERIFY(run.StepsInVain(1, "se"));
    run.peer.AnswerAlways(Wire::Acknowledge);
    QVERIFY(run.StepsInVain(5, "s"));
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=7"));
}

void TestRCDIECCleanUpState::StartsTheTest_data()
{
    AddCommandRows("MeasurementStatus=4");
}

void TestRCDIECCleanUpState::StartsTheTest()
{
    RCDRunningSteps::StartsTheTest<CleanUp>();
}

void TestRCDIECCleanUpState::StartingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::StartingGivesUpAfterThreeRequests<CleanUp>();
}

void TestRCDIECCleanUpState::StartsEvenWhileAnAbortIsPending()
{
    RCDRunningSteps::StartsEvenWhileAnAbortIsPending<CleanUp>();
}

void TestRCDIECCleanUpState::RunningEndsAtOnceWithoutResults()
{
    Run<CleanUp> run;
    QCOMPARE(StepWithBytes(run, Running, RCDWire::Result), QStringLiteral("MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
    QVERIFY(!run.log.Contains(QStringLiteral("ReadingBuffer: ")));
    QVERIFY(run.context.StartMeasurementRequested.Get());
}

void TestRCDIECCleanUpState::LaterPhasesSendNothing()
{
    for (const int phase : {Measuring, Stopping, Stopped}) {
        Run<CleanUp> run;
        run.peer.AnswerAlways(Wire::Acknowledge);
        run.StepIn(phase);
        QCOMPARE(run.Commands(), QByteArray());
        QVERIFY(!run.log.Contains(QStringLiteral("ReadingBuffer: ")));
    }
}

void TestRCDIECCleanUpState::PhasesThatThereAreNotDoNothing()
{
    RCDRunningSteps::PhasesThatThereAreNotDoNothing<CleanUp>();
}

void TestRCDIECCleanUpState::CleanUpRunsThrough()
{
    RCDRunningSteps::TestRunsThrough<CleanUp>(
        QStringLiteral("; MeasurementStatus=1; MeasurementStatus=2; ; MeasurementStatus=3; "
                       "MeasurementStatus=4; MeasurementStatus=7"));
}

QTEST_GUILESS_MAIN(TestRCDIECCleanUpState)
#include "tst_rcdieccleanupstate.moc"
