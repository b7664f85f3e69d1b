#include <QTest>

#include <Vesmar/rcdresults.h>

#include "states/rcd/rcdubremeasurementrunningstate.h"
#include "unit/states/rcdrunningsteps.h"

using namespace RCDRunningSteps;

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

namespace
{

struct UbRe {
    using State = Vesmar::RCDUbReMeasurementRunningState;
    static constexpr MeasurementType Function = MeasurementType::RCD;
    static MeasurementSettings* Settings() { return RCDSettingsOfMode(0); }
    static QByteArray PrepareFrame() { return RCDWire::PrepareUbRe; }
    static QByteArray Status(int functionState, bool isNewMeasurement = false, int error = RCDWire::NoError)
    {
        return RCDWire::Status(functionState, isNewMeasurement, error);
    }
};

} // namespace

class TestRCDUbReMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryBeginsTheRun();
    void ExitEndsTheMeasurement();
    void EntryResetsTheBudgets();
    void StepsNameTheirPhase_data();
    void StepsNameTheirPhase();
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

    void PreparedFollowsTheFunction_data();
    void PreparedFollowsTheFunction();
    void PreparedChecksTheObject_data();
    void PreparedChecksTheObject();
    void PreparedForgetsARequestToPrepare();
    void PreparedGivesUpAfterFiveStatuses();
    void PreparedGivesUpWith401WhateverTheObjectHas();

    void StartsTheTest_data();
    void StartsTheTest();
    void StartingGivesUpAfterThreeRequests();
    void StartingDoesNothingWhileAnAbortIsPending();
    void StartingGivesUpEvenWhileAnAbortIsPending();

    void ResultsEndTheTest_data();
    void ResultsEndTheTest();
    void TerminationEndsTheTestWith521_data();
    void TerminationEndsTheTestWith521();
    void SilenceEndsTheTestWith520_data();
    void SilenceEndsTheTestWith520();
    void SilentTestIsNotStartedAgain();
    void RunningDoesNothingWhileAnAbortIsPending();
    void EndedPhasesClearIsMeasurementRunning();
    void PhasesThatThereAreNotDoNothing();
    void TestRunsThrough();
};

void TestRCDUbReMeasurementRunningState::EntryBeginsTheRun()
{
    RCDRunningSteps::EntryBeginsTheRun<UbRe>("ENTERING RCD UbRe MEASUREMENT STATE ", {});
}

void TestRCDUbReMeasurementRunningState::ExitEndsTheMeasurement()
{
    ExitWritesItsBanner<UbRe>("LEAVING RCD UbRe MEASUREMENT STATE ",
                              {QStringLiteral("IsMeasurementRunning=0")});
}

void TestRCDUbReMeasurementRunningState::EntryResetsTheBudgets()
{
    RCDRunningSteps::EntryResetsTheBudgets<UbRe>();
}

void TestRCDUbReMeasurementRunningState::StepsNameTheirPhase_data()
{
    QTest::addColumn<int>("phase");
    QTest::addColumn<QString>("name");
    const QStringList names = {QStringLiteral("IDLE"),     QStringLiteral("PREPARING"),
                               QStringLiteral("PREPARED"), QStringLiteral("STARTING"),
                               QStringLiteral("RUNNING"),  QStringLiteral("RUNNING"),
                               QStringLiteral("STOPING"),  QStringLiteral("STOPED")};
    for (int phase = Idle; phase <= Stopped; ++phase) {
        QTest::addRow("phase %d", phase) << phase << names.at(phase);
    }
    QTest::newRow("phase -1") << -1 << QStringLiteral("UNKNOWN");
    QTest::newRow("phase 8") << 8 << QStringLiteral("UNKNOWN");
}

void TestRCDUbReMeasurementRunningState::StepsNameTheirPhase()
{
    QFETCH(const int, phase);
    QFETCH(const QString, name);
    Run<UbRe> run;
    run.peer.AnswerAlways(RCDWire::NotReady);
    run.context.AbortMeasurementRequested.Set(true); // So that nobody waits for results.
    run.StepIn(phase);
    QCOMPARE(LinesOfTheState(run.log),
             (QStringList{Banner("RUNING RCD UbRe MEASUREMENT STATE IN"), Green(name),
                          Banner("RUNING RCD UbRe MEASUREMENT STATE OUT")}));
    QCOMPARE(run.log.Texts().constFirst(), Banner("RUNING RCD UbRe MEASUREMENT STATE IN"));
    QCOMPARE(run.log.Texts().constLast(), Banner("RUNING RCD UbRe MEASUREMENT STATE OUT"));
    QCOMPARE(run.log.Messages().constFirst().type, QtWarningMsg);
}

void TestRCDUbReMeasurementRunningState::OtherSettingsDoNothing_data()
{
    AddSettingsRows({-1, 1, 2, 3}, {-1, 0, 1, 2, 3});
}

void TestRCDUbReMeasurementRunningState::OtherSettingsDoNothing()
{
    RCDRunningSteps::OtherSettingsDoNothing<UbRe>();
}

void TestRCDUbReMeasurementRunningState::RequestsWaitHalfASecond_data()
{
    AddRequestRows();
}

void TestRCDUbReMeasurementRunningState::RequestsWaitHalfASecond()
{
    RCDRunningSteps::RequestsWaitHalfASecond<UbRe>();
}

void TestRCDUbReMeasurementRunningState::ObjectCheckWaitsHalfASecond()
{
    RCDRunningSteps::ObjectCheckWaitsHalfASecond<UbRe>();
}

void TestRCDUbReMeasurementRunningState::IdleAwaitsTheInstrument_data()
{
    AddIdleRows(Pause);
}

void TestRCDUbReMeasurementRunningState::IdleAwaitsTheInstrument()
{
    RCDRunningSteps::IdleAwaitsTheInstrument<UbRe>();
}

void TestRCDUbReMeasurementRunningState::IdleEndsWithAnActiveFunction()
{
    RCDRunningSteps::IdleEndsWithAnActiveFunction<UbRe>();
}

void TestRCDUbReMeasurementRunningState::IdleGivesUpAfterNineStatuses()
{
    RCDRunningSteps::IdleGivesUpAfterNineStatuses<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparesTheTest_data()
{
    AddCommandRows("MeasurementStatus=2");
}

void TestRCDUbReMeasurementRunningState::PreparesTheTest()
{
    RCDRunningSteps::PreparesTheTest<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::PreparingGivesUpAfterThreeRequests<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparedFollowsTheFunction_data()
{
    PlainPrepared::AddRows(Pause, NoPause);
}

void TestRCDUbReMeasurementRunningState::PreparedFollowsTheFunction()
{
    PlainPrepared::FollowsTheFunction<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparedChecksTheObject_data()
{
    PlainPrepared::AddCheckRows();
}

void TestRCDUbReMeasurementRunningState::PreparedChecksTheObject()
{
    PlainPrepared::ChecksTheObject<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparedForgetsARequestToPrepare()
{
    PlainPrepared::ForgetsARequestToPrepare<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparedGivesUpAfterFiveStatuses()
{
    PlainPrepared::GivesUpAfterFiveStatuses<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PreparedGivesUpWith401WhateverTheObjectHas()
{
    PlainPrepared::GivesUpWith401WhateverTheObjectHas<UbRe>();
}

void TestRCDUbReMeasurementRunningState::StartsTheTest_data()
{
    AddCommandRows("MeasurementStatus=4");
}

void TestRCDUbReMeasurementRunningState::StartsTheTest()
{
    RCDRunningSteps::StartsTheTest<UbRe>();
}

void TestRCDUbReMeasurementRunningState::StartingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::StartingGivesUpAfterThreeRequests<UbRe>();
}

void TestRCDUbReMeasurementRunningState::StartingDoesNothingWhileAnAbortIsPending()
{
    Run<UbRe> run;
    run.peer.AnswerAlways(Wire::Acknowledge);
    run.context.AbortMeasurementRequested.Set(true);
    run.SetPhase(Starting);
    QVERIFY(run.StepsInVain(5, ""));
    run.context.AbortMeasurementRequested.Set(false);
    QCOMPARE(run.Step(), QStringLiteral("MeasurementStatus=4"));
}

void TestRCDUbReMeasurementRunningState::StartingGivesUpEvenWhileAnAbortIsPending()
{
    Run<UbRe> run;
    run.peer.AnswerAlways(Wire::StartTest0Status);
    run.SetPhase(Starting);
    QVERIFY(run.StepsInVain(3, "S"));
    run.context.AbortMeasurementRequested.Set(true);
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=201 MeasurementStatus=7"));
}

void TestRCDUbReMeasurementRunningState::ResultsEndTheTest_data()
{
    AddMeasuringRows();
}

void TestRCDUbReMeasurementRunningState::ResultsEndTheTest()
{
    QFETCH(const int, phase);
    Run<UbRe> run;
    QCOMPARE(
        StepWithBytes(run, phase, RCDWire::Result),
        QStringLiteral("IsMeasurementRunning=1 TestResults StartMeasurementRequested=0 MeasurementStatus=7"));
    const auto* results = dynamic_cast<Vesmar::RCDResults*>(run.context.TestResults.Get());
    QVERIFY(results != nullptr);
    QCOMPARE(results->_re, 0.5F);
    QVERIFY(results->_ia == 3.4028235e38F);
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDUbReMeasurementRunningState::TerminationEndsTheTestWith521_data()
{
    AddTerminationRows();
}

void TestRCDUbReMeasurementRunningState::TerminationEndsTheTestWith521()
{
    QFETCH(const int, phase);
    QFETCH(const int, error);
    QFETCH(const QString, outcome);
    Run<UbRe> run;
    QCOMPARE(StepWithBytes(run, phase, UbRe::Status(9, false, error)),
             QStringLiteral("IsMeasurementRunning=1 ") + outcome);
}

void TestRCDUbReMeasurementRunningState::SilenceEndsTheTestWith520_data()
{
    AddMeasuringRows();
}

void TestRCDUbReMeasurementRunningState::SilenceEndsTheTestWith520()
{
    QFETCH(const int, phase);
    Run<UbRe> run;
    QElapsedTimer time;
    time.start();
    QCOMPARE(StepWithBytes(run, phase, UbRe::Status(7)),
             QStringLiteral("IsMeasurementRunning=1 ErrorCode=520 MeasurementStatus=7"));
    QVERIFY(time.elapsed() >= 1000);
    QVERIFY(run.context.StartMeasurementRequested.Get());
}

void TestRCDUbReMeasurementRunningState::SilentTestIsNotStartedAgain()
{
    Run<UbRe> run;
    run.peer.AnswerAlways(Wire::Acknowledge);
    run.StepIn(Running);
    QCOMPARE(run.StepIn(Starting), QStringLiteral("ErrorCode=201 MeasurementStatus=7"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDUbReMeasurementRunningState::RunningDoesNothingWhileAnAbortIsPending()
{
    for (const int phase : {Running, Measuring}) {
        Run<UbRe> run;
        run.context.AbortMeasurementRequested.Set(true);
        QCOMPARE(StepWithBytes(run, phase, RCDWire::Result), NoChange);
        run.context.AbortMeasurementRequested.Set(false);
        QVERIFY(run.Step().contains(QStringLiteral("TestResults"))); // Nobody has taken it from the line.
    }
}

void TestRCDUbReMeasurementRunningState::EndedPhasesClearIsMeasurementRunning()
{
    RCDRunningSteps::EndedPhasesClearIsMeasurementRunning<UbRe>();
}

void TestRCDUbReMeasurementRunningState::PhasesThatThereAreNotDoNothing()
{
    RCDRunningSteps::PhasesThatThereAreNotDoNothing<UbRe>();
}

void TestRCDUbReMeasurementRunningState::TestRunsThrough()
{
    RCDRunningSteps::TestRunsThrough<UbRe>(
        QStringLiteral("; MeasurementStatus=1; MeasurementStatus=2; ; MeasurementStatus=3; "
                       "MeasurementStatus=4; IsMeasurementRunning=1 TestResults "
                       "StartMeasurementRequested=0 MeasurementStatus=7"));
}

QTEST_GUILESS_MAIN(TestRCDUbReMeasurementRunningState)
#include "tst_rcdubremeasurementrunningstate.moc"
