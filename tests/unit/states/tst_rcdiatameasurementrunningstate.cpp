#include <QTest>

#include <Vesmar/rcdresults.h>

#include "states/rcd/rcdiatameasurementrunningstate.h"
#include "unit/states/rcdrunningsteps.h"

using namespace RCDRunningSteps;

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

namespace
{

struct IaTa {
    using State = Vesmar::RCDIaTaMeasurementRunningState;
    static constexpr MeasurementType Function = MeasurementType::RCD;
    static MeasurementSettings* SettingsOfMode(int mode)
    {
        auto* settings = RCDSettingsOfMode(mode);
        settings->SetQuantity(Vesmar::RCDSettings::RCDQuantity::Quantity2);
        settings->SetPhase(Vesmar::RCDSettings::RCDPhase::Phase0);
        settings->SetCurrent(Vesmar::RCDSettings::RCDCurrent::Current3);
        settings->SetType(Vesmar::RCDSettings::RCDType::Type1);
        settings->SetRe(100.0F);
        return settings;
    }
    static MeasurementSettings* Settings() { return SettingsOfMode(1); }
    static QByteArray PrepareFrame() { return RCDWire::PrepareIaTa; }
    static QByteArray Status(int functionState, bool isNewMeasurement = false, int error = RCDWire::NoError)
    {
        return RCDWire::Status(functionState, isNewMeasurement, error);
    }
};

} // namespace

class TestRCDIaTaMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryBeginsTheRun();
    void ExitEndsTheMeasurement();
    void EntryResetsTheBudgets();
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
    void StartsEvenWhileAnAbortIsPending();

    void ResultsEndTheTest_data();
    void ResultsEndTheTest();
    void ResultsAreTakenEvenWhileAnAbortIsPending();
    void TerminationEndsTheTestWith521_data();
    void TerminationEndsTheTestWith521();
    void SilentTestIsStartedAgain_data();
    void SilentTestIsStartedAgain();
    void SilentTestIsStartedThreeTimesInAll();
    void EndedPhasesClearIsMeasurementRunning();
    void PhasesThatThereAreNotDoNothing();
    void TestRunsThrough();
};

void TestRCDIaTaMeasurementRunningState::EntryBeginsTheRun()
{
    RCDRunningSteps::EntryBeginsTheRun<IaTa>("ENTERING RCD IaTa MEASUREMENT STATE ",
                                             {QStringLiteral("IsMeasurementRunning=1")});
}

void TestRCDIaTaMeasurementRunningState::ExitEndsTheMeasurement()
{
    ExitWritesItsBanner<IaTa>("LEAVING RCD IaTa MEASUREMENT STATE ",
                              {QStringLiteral("IsMeasurementRunning=0")});
}

void TestRCDIaTaMeasurementRunningState::EntryResetsTheBudgets()
{
    RCDRunningSteps::EntryResetsTheBudgets<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::OtherSettingsDoNothing_data()
{
    AddSettingsRows({}, {-1, 0, 1, 2, 3});
}

void TestRCDIaTaMeasurementRunningState::OtherSettingsDoNothing()
{
    RCDRunningSteps::OtherSettingsDoNothing<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::ModeWithoutATestIsAFailedPreparation_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {-1, 0, 3}) {
        QTest::addRow("mode %d", mode) << mode;
    }
}

void TestRCDIaTaMeasurementRunningState::ModeWithoutATestIsAFailedPreparation()
{
    RCDRunningSteps::ModeWithoutATestIsAFailedPreparation<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::BothModesAreServed()
{
    for (const int mode : {1, 2}) {
        Run<IaTa> run;
        run.Settings(RCDSettingsOfMode(mode));
        run.peer.AnswerAlways(Wire::Acknowledge);
        QCOMPARE(run.StepIn(Preparing), QStringLiteral("MeasurementStatus=2"));
        QCOMPARE(run.peer.RequestBytes(),
                 QList<QByteArray>{mode == 1 ? Wire::Bytes("500a00004000000000338c")
                                             : Wire::Bytes("500a000080000000008bbf")});
    }
}

void TestRCDIaTaMeasurementRunningState::RequestsWaitHalfASecond_data()
{
    AddRequestRows();
}

void TestRCDIaTaMeasurementRunningState::RequestsWaitHalfASecond()
{
    RCDRunningSteps::RequestsWaitHalfASecond<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::ObjectCheckWaitsHalfASecond()
{
    RCDRunningSteps::ObjectCheckWaitsHalfASecond<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::IdleAwaitsTheInstrument_data()
{
    AddIdleRows(NoPause);
}

void TestRCDIaTaMeasurementRunningState::IdleAwaitsTheInstrument()
{
    RCDRunningSteps::IdleAwaitsTheInstrument<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::IdleEndsWithAnActiveFunction()
{
    RCDRunningSteps::IdleEndsWithAnActiveFunction<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::IdleGivesUpAfterNineStatuses()
{
    RCDRunningSteps::IdleGivesUpAfterNineStatuses<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparesTheTest_data()
{
    AddCommandRows("MeasurementStatus=2");
}

void TestRCDIaTaMeasurementRunningState::PreparesTheTest()
{
    RCDRunningSteps::PreparesTheTest<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::PreparingGivesUpAfterThreeRequests<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparedFollowsTheFunction_data()
{
    PlainPrepared::AddRows(NoPause, Pause);
}

void TestRCDIaTaMeasurementRunningState::PreparedFollowsTheFunction()
{
    PlainPrepared::FollowsTheFunction<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparedChecksTheObject_data()
{
    PlainPrepared::AddCheckRows();
}

void TestRCDIaTaMeasurementRunningState::PreparedChecksTheObject()
{
    PlainPrepared::ChecksTheObject<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparedForgetsARequestToPrepare()
{
    PlainPrepared::ForgetsARequestToPrepare<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparedGivesUpAfterFiveStatuses()
{
    PlainPrepared::GivesUpAfterFiveStatuses<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PreparedGivesUpWith401WhateverTheObjectHas()
{
    PlainPrepared::GivesUpWith401WhateverTheObjectHas<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::StartsTheTest_data()
{
    AddCommandRows("MeasurementStatus=4");
}

void TestRCDIaTaMeasurementRunningState::StartsTheTest()
{
    RCDRunningSteps::StartsTheTest<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::StartingGivesUpAfterThreeRequests()
{
    RCDRunningSteps::StartingGivesUpAfterThreeRequests<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::StartsEvenWhileAnAbortIsPending()
{
    RCDRunningSteps::StartsEvenWhileAnAbortIsPending<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::ResultsEndTheTest_data()
{
    AddMeasuringRows();
}

void TestRCDIaTaMeasurementRunningState::ResultsEndTheTest()
{
    QFETCH(const int, phase);
    Run<IaTa> run;
    QCOMPARE(StepWithBytes(run, phase, RCDWire::Result),
             QStringLiteral("TestResults StartMeasurementRequested=0 MeasurementStatus=7"));
    const auto* results = dynamic_cast<Vesmar::RCDResults*>(run.context.TestResults.Get());
    QVERIFY(results != nullptr);
    QCOMPARE(results->_re, 100.0F);
    QCOMPARE(results->_ia, 1.0F);
    QCOMPARE(results->_ta, 2.5F);
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDIaTaMeasurementRunningState::ResultsAreTakenEvenWhileAnAbortIsPending()
{
    Run<IaTa> run;
    run.context.AbortMeasurementRequested.Set(true);
    QCOMPARE(StepWithBytes(run, Running, RCDWire::Result),
             QStringLiteral("TestResults StartMeasurementRequested=0 MeasurementStatus=7"));
}

void TestRCDIaTaMeasurementRunningState::TerminationEndsTheTestWith521_data()
{
    AddTerminationRows();
}

void TestRCDIaTaMeasurementRunningState::TerminationEndsTheTestWith521()
{
    QFETCH(const int, phase);
    QFETCH(const int, error);
    QFETCH(const QString, outcome);
    Run<IaTa> run;
    QCOMPARE(StepWithBytes(run, phase, IaTa::Status(9, false, error)), outcome);
}

void TestRCDIaTaMeasurementRunningState::SilentTestIsStartedAgain_data()
{
    AddMeasuringRows();
}

void TestRCDIaTaMeasurementRunningState::SilentTestIsStartedAgain()
{
    QFETCH(const int, phase);
    RCDRunningSteps::SilentTestIsStartedAgain<IaTa>(phase);
}

void TestRCDIaTaMeasurementRunningState::SilentTestIsStartedThreeTimesInAll()
{
    RCDRunningSteps::SilentTestIsStartedThreeTimesInAll<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::EndedPhasesClearIsMeasurementRunning()
{
    RCDRunningSteps::EndedPhasesClearIsMeasurementRunning<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::PhasesThatThereAreNotDoNothing()
{
    RCDRunningSteps::PhasesThatThereAreNotDoNothing<IaTa>();
}

void TestRCDIaTaMeasurementRunningState::TestRunsThrough()
{
    RCDRunningSteps::TestRunsThrough<IaTa>(
        QStringLiteral("; MeasurementStatus=1; MeasurementStatus=2; ; MeasurementStatus=3; "
                       "MeasurementStatus=4; TestResults "
                       "StartMeasurementRequested=0 MeasurementStatus=7"));
}

QTEST_GUILESS_MAIN(TestRCDIaTaMeasurementRunningState)
#include "tst_rcdiatameasurementrunningstate.moc"
