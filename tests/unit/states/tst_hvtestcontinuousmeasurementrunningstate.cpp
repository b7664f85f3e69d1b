#include <QTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/hvtestsettings.h>

#include "states/measurement/hvtestcontinuousmeasurementrunningstate.h"
#include "unit/states/continuoussteps.h"

using Vesmar::ContinuousMeasurementSettings;
using Vesmar::HVTestContinuousMeasurementRunningState;
using Vesmar::HVTestResults;
using Vesmar::HVTestSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

class TestHVTestContinuousMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryMeasuresAndStartsTheTimer_data() { ContinuousSteps::AddTimeRows(); }
    void EntryMeasuresAndStartsTheTimer();
    void ExitWritesItsBannerAlone();
    void TimeElapses();
    void OffsetGoesToTheTimerInMilliseconds();

    void FollowsAFunctionWithoutResult_data() { RunningSteps::AddRowsWithoutResult(); }
    void FollowsAFunctionWithoutResult();
    void ReadsANewResult_data() { AddFunctionStateRows({}); }
    void ReadsANewResult();
    void ReadsAResultOnEveryStep();
    void ReadsTheResultOfItsSettings();
    void EndLeavesAnEarlierError();
    void FailedStatusEndsTheStep();
    void FailedReadIsALostLink();
    void BareSettingsDoNotCrash();
};

void TestHVTestContinuousMeasurementRunningState::EntryMeasuresAndStartsTheTimer()
{
    ContinuousSteps::EntryMeasuresAndStartsTheTimer<HVTestContinuousMeasurementRunningState, HVTestSettings>(
        "ENTERING HVTEST CONTINUOUS MEASUREMENT STATE ", 3500);
}

void TestHVTestContinuousMeasurementRunningState::ExitWritesItsBannerAlone()
{
    ContinuousSteps::ExitWritesItsBannerAlone<HVTestContinuousMeasurementRunningState, HVTestSettings>(
        "LEAVING HVTEST CONTINUOUS MEASUREMENT STATE ");
}

void TestHVTestContinuousMeasurementRunningState::TimeElapses()
{
    auto* settings = ContinuousSteps::WithTime<HVTestSettings>(1);
    settings->SetMeasurementTimeOffset(0.5F);
    ContinuousSteps::TimeElapses<HVTestContinuousMeasurementRunningState>(settings, 500);
}

void TestHVTestContinuousMeasurementRunningState::OffsetGoesToTheTimerInMilliseconds()
{
    MeasurementEngine engine;
    auto* settings = ContinuousSteps::WithTime<HVTestSettings>(7);
    settings->SetMeasurementTimeOffset(1.25F);
    engine.Settings(settings);
    HVTestContinuousMeasurementRunningState state(&engine.context, nullptr);
    const QSignalSpy started(&engine.context, &Vesmar::StateMachineContext::StartMeasurementTimerRequested);
    state.OnEntry();
    QCOMPARE(started, (QList<QVariantList>{{7, 1250}}));
    QCOMPARE(engine.context.GetMeasurementTimer()->interval(), 2250);
}

void TestHVTestContinuousMeasurementRunningState::FollowsAFunctionWithoutResult()
{
    RunningSteps::FollowsAFunctionWithoutResult<HVTestContinuousMeasurementRunningState, HVTestSettings>();
}

void TestHVTestContinuousMeasurementRunningState::ReadsANewResult()
{
    RunningSteps::ReadsANewResult<HVTestContinuousMeasurementRunningState, HVTestSettings>("TestResults");
}

void TestHVTestContinuousMeasurementRunningState::ReadsAResultOnEveryStep()
{
    ContinuousSteps::ReadsAResultOnEveryStep<HVTestContinuousMeasurementRunningState, HVTestSettings>();
}

void TestHVTestContinuousMeasurementRunningState::ReadsTheResultOfItsSettings()
{
    RunningSteps::ReadsTheResultOfItsSettings<HVTestContinuousMeasurementRunningState, HVTestSettings,
                                              HVTestResults>();
}

void TestHVTestContinuousMeasurementRunningState::EndLeavesAnEarlierError()
{
    RunningSteps::EndLeavesAnEarlierError<HVTestContinuousMeasurementRunningState, HVTestSettings>();
}

void TestHVTestContinuousMeasurementRunningState::FailedStatusEndsTheStep()
{
    RunningSteps::FailedStatusEndsTheStep<HVTestContinuousMeasurementRunningState, HVTestSettings>();
}

void TestHVTestContinuousMeasurementRunningState::FailedReadIsALostLink()
{
    RunningSteps::FailedReadIsALostLink<HVTestContinuousMeasurementRunningState, HVTestSettings>(
        "CommunicationError=1");
}

void TestHVTestContinuousMeasurementRunningState::BareSettingsDoNotCrash()
{
    ContinuousSteps::BareSettingsDoNotCrash<HVTestContinuousMeasurementRunningState, HVTestResults>(
        new MeasurementSettings(MeasurementType::HVTest, nullptr), 0);
    ContinuousSteps::BareSettingsDoNotCrash<HVTestContinuousMeasurementRunningState, HVTestResults>(
        new ContinuousMeasurementSettings(MeasurementType::HVTest, nullptr), 5);
}

QTEST_GUILESS_MAIN(TestHVTestContinuousMeasurementRunningState)
#include "tst_hvtestcontinuousmeasurementrunningstate.moc"
