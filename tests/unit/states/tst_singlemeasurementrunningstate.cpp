#include <QTest>

#include <Vesmar/iecresults.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rlnsettings.h>

#include "states/measurement/singlemeasurementrunningstate.h"
#include "unit/states/runningsteps.h"

using Vesmar::IECResults;
using Vesmar::IECSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::RLNResults;
using Vesmar::RLNSettings;
using Vesmar::SingleMeasurementRunningState;

class TestSingleMeasurementRunningState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryRunsTheMeasurement();
    void ExitWritesItsBannerAlone();

    void FollowsAFunctionWithoutResult_data() { RunningSteps::AddRowsWithoutResult(); }
    void FollowsAFunctionWithoutResult();
    void ReadsANewResult_data() { AddFunctionStateRows({}); }
    void ReadsANewResult();
    void ReadsTheResultOfItsSettings();
    void EndLeavesAnEarlierError();
    void FailedStatusEndsTheStep();
    void FailedReadIsALostLink();
    void BareSettingsAreReadAsTheirFunction();
};

void TestSingleMeasurementRunningState::EntryRunsTheMeasurement()
{
    Engine engine;
    SingleMeasurementRunningState state(&engine.context, nullptr);
    CompareHook(engine, [&state]() { state.OnEntry(); }, "ENTERING SINGLE MEASUREMENT STATE ",
                {QStringLiteral("MeasurementStatus=4")});
    CompareHook(
        engine, [&state]() { state.OnEntry(); }, "ENTERING SINGLE MEASUREMENT STATE ");
}

void TestSingleMeasurementRunningState::ExitWritesItsBannerAlone()
{
    Engine engine;
    SingleMeasurementRunningState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, "LEAVING SINGLE MEASUREMENT STATE ");
}

void TestSingleMeasurementRunningState::FollowsAFunctionWithoutResult()
{
    RunningSteps::FollowsAFunctionWithoutResult<SingleMeasurementRunningState, RLNSettings>();
}

void TestSingleMeasurementRunningState::ReadsANewResult()
{
    RunningSteps::ReadsANewResult<SingleMeasurementRunningState, RLNSettings>(
        "TestResults MeasurementStatus=5");
}

void TestSingleMeasurementRunningState::ReadsTheResultOfItsSettings()
{
    RunningSteps::ReadsTheResultOfItsSettings<SingleMeasurementRunningState, RLNSettings, RLNResults>();
    RunningSteps::ReadsTheResultOfItsSettings<SingleMeasurementRunningState, IECSettings, IECResults>();
}

void TestSingleMeasurementRunningState::EndLeavesAnEarlierError()
{
    RunningSteps::EndLeavesAnEarlierError<SingleMeasurementRunningState, RLNSettings>();
}

void TestSingleMeasurementRunningState::FailedStatusEndsTheStep()
{
    RunningSteps::FailedStatusEndsTheStep<SingleMeasurementRunningState, RLNSettings>();
}

void TestSingleMeasurementRunningState::FailedReadIsALostLink()
{
    RunningSteps::FailedReadIsALostLink<SingleMeasurementRunningState, RLNSettings>(
        "CommunicationError=1 MeasurementStatus=5");
}

void TestSingleMeasurementRunningState::BareSettingsAreReadAsTheirFunction()
{
    RunningSteps::Run<SingleMeasurementRunningState> run(
        new MeasurementSettings(MeasurementType::RLN, nullptr));
    run.Report(2, true);
    run.state.OnRunning();
    QVERIFY(dynamic_cast<RLNResults*>(run.context.TestResults.Get()) != nullptr);
}

QTEST_GUILESS_MAIN(TestSingleMeasurementRunningState)
#include "tst_singlemeasurementrunningstate.moc"
