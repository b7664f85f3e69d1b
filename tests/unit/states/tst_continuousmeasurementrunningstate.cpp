#include <QTest>

#include <Vesmar/rperesults.h>
#include <Vesmar/rpesettings.h>

#include "states/measurement/continuousmeasurementrunningstate.h"
#include "unit/states/continuoussteps.h"

using Vesmar::ContinuousMeasurementRunningState;
using Vesmar::ContinuousMeasurementSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::RPEResults;
using Vesmar::RPESettings;

class TestContinuousMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryMeasuresAndStartsTheTimer_data() { ContinuousSteps::AddTimeRows(); }
    void EntryMeasuresAndStartsTheTimer();
    void ExitWritesItsBannerAlone();
    void TimeElapses();

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

void TestContinuousMeasurementRunningState::EntryMeasuresAndStartsTheTimer()
{
    ContinuousSteps::EntryMeasuresAndStartsTheTimer<ContinuousMeasurementRunningState, RPESettings>(
        "ENTERING CONTINUOUS MEASUREMENT STATE ", 0);
}

void TestContinuousMeasurementRunningState::ExitWritesItsBannerAlone()
{
    ContinuousSteps::ExitWritesItsBannerAlone<ContinuousMeasurementRunningState, RPESettings>(
        "LEAVING CONTINUOUS MEASUREMENT STATE ");
}

void TestContinuousMeasurementRunningState::TimeElapses()
{
    ContinuousSteps::TimeElapses<ContinuousMeasurementRunningState>(ContinuousSteps::WithTime<RPESettings>(1),
                                                                    0);
}

void TestContinuousMeasurementRunningState::FollowsAFunctionWithoutResult()
{
    RunningSteps::FollowsAFunctionWithoutResult<ContinuousMeasurementRunningState, RPESettings>();
}

void TestContinuousMeasurementRunningState::ReadsANewResult()
{
    RunningSteps::ReadsANewResult<ContinuousMeasurementRunningState, RPESettings>("TestResults");
}

void TestContinuousMeasurementRunningState::ReadsAResultOnEveryStep()
{
    ContinuousSteps::ReadsAResultOnEveryStep<ContinuousMeasurementRunningState, RPESettings>();
}

void TestContinuousMeasurementRunningState::ReadsTheResultOfItsSettings()
{
    RunningSteps::ReadsTheResultOfItsSettings<ContinuousMeasurementRunningState, RPESettings, RPEResults>();
}

void TestContinuousMeasurementRunningState::EndLeavesAnEarlierError()
{
    RunningSteps::EndLeavesAnEarlierError<ContinuousMeasurementRunningState, RPESettings>();
}

void TestContinuousMeasurementRunningState::FailedStatusEndsTheStep()
{
    RunningSteps::FailedStatusEndsTheStep<ContinuousMeasurementRunningState, RPESettings>();
}

void TestContinuousMeasurementRunningState::FailedReadIsALostLink()
{
    RunningSteps::FailedReadIsALostLink<ContinuousMeasurementRunningState, RPESettings>(
        "CommunicationError=1");
}

void TestContinuousMeasurementRunningState::BareSettingsDoNotCrash()
{
    ContinuousSteps::BareSettingsDoNotCrash<ContinuousMeasurementRunningState, RPEResults>(
        new MeasurementSettings(MeasurementType::RPE, nullptr), 0);
    ContinuousSteps::BareSettingsDoNotCrash<ContinuousMeasurementRunningState, RPEResults>(
        new ContinuousMeasurementSettings(MeasurementType::RPE, nullptr), 5);
}

QTEST_GUILESS_MAIN(TestContinuousMeasurementRunningState)
#include "tst_continuousmeasurementrunningstate.moc"
