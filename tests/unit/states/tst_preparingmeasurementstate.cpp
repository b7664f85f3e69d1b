#include <QTest>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/rpesettings.h>

#include "states/measurement/preparingmeasurementstate.h"
#include "unit/states/measurementengine.h"

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::PreparingMeasurementState;

static const QByteArray PrepareRpe = Wire::Bytes("5002050000ffffffffe963");
static const QByteArray PrepareNothing = Wire::Bytes("50f55a");

static const char* const RefusedOutcome = "ErrorCode=200 AbortMeasurementRequested=1";

class TestPreparingMeasurementState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryStepWritesItsBannerFirst()
    {
        MeasurementEngine engine;
        engine.Report(0);
        PreparingMeasurementState state(&engine.context, nullptr);
        const QString banner = Banner("RUNNING PREPARING MEASUREMENT STATE ");
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.log.Texts().constFirst(), banner);
        QCOMPARE(engine.log.Messages().constFirst().type, QtWarningMsg);
        state.OnRunning();
        QCOMPARE(Banners(engine.log), (QStringList{banner, banner}));
    }

    void FunctionStateDecides_data()
    {
        AddFunctionStateRows({{3, RefusedOutcome}, {4, "MeasurementStatus=2"}});
    }

    void FunctionStateDecides()
    {
        QFETCH(const int, functionState);
        QFETCH(const QString, outcome);
        for (const bool isNewMeasurement : {false, true}) {
            MeasurementEngine engine;
            engine.Report(functionState, isNewMeasurement);
            PreparingMeasurementState state(&engine.context, nullptr);
            state.OnEntry();
            engine.Restart();
            state.OnRunning();
            QCOMPARE(engine.Outcome(), outcome);
            QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
        }
    }

    void ReportsPreparedOnce()
    {
        MeasurementEngine engine;
        engine.Report(4);
        PreparingMeasurementState state(&engine.context, nullptr);
        state.OnEntry();
        state.OnRunning();
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(), QStringList{});
    }

    void RefusedFunctionLeavesAnEarlierError()
    {
        MeasurementEngine engine;
        engine.Report(3, false, 6);
        PreparingMeasurementState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Outcome(), QStringLiteral("ErrorCode=6 AbortMeasurementRequested=1"));
    }

    void PreparesOnceForEachRequest()
    {
        MeasurementEngine engine;
        engine.Report(1);
        engine.Settings(new Vesmar::RPESettings);
        engine.context.PrepareMeasurementRequested.Set(true);
        PreparingMeasurementState state(&engine.context, nullptr);
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, PrepareRpe, Wire::ReadStatus}));
        QCOMPARE(engine.GapAfter(1).count(), 4 + 100);
        QCOMPARE(engine.Outcome(), QStringLiteral("PrepareMeasurementRequested=0"));
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("sPss"));
    }

    void SettingsPreparedMeanwhileStayRequested()
    {
        MeasurementEngine engine;
        engine.Settings(new Vesmar::RPESettings);
        engine.context.PrepareMeasurementRequested.Set(true);
        PreparingMeasurementState state(&engine.context, nullptr);
        engine.PrepareWhilePreparing(new Vesmar::HVTestSettings);
        engine.Restart();
        state.OnRunning();
        QVERIFY(engine.context.PrepareMeasurementRequested.Get());
        state.OnRunning();
        QVERIFY(!engine.context.PrepareMeasurementRequested.Get());
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, PrepareRpe, Wire::ReadStatus, Wire::ReadStatus,
                                    Wire::PrepareHvTest, Wire::ReadStatus}));
    }

    void PrepareDecidesNothingInItsOwnStep_data() { AddFunctionStateRows({}); }

    void PrepareDecidesNothingInItsOwnStep()
    {
        QFETCH(const int, functionState);
        MeasurementEngine engine;
        engine.Report(functionState);
        engine.Settings(new Vesmar::RPESettings);
        engine.context.PrepareMeasurementRequested.Set(true);
        PreparingMeasurementState state(&engine.context, nullptr);
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.Outcome(), QStringLiteral("PrepareMeasurementRequested=0"));
        QCOMPARE(static_cast<int>(engine.context.MeasurementFunctionStatus.Get()), functionState);
        QCOMPARE(engine.Commands(), QByteArray("sPs"));
    }

    void LeavesResidualCurrentDevicesAlone_data() { AddFunctionStateRows({}); }

    void LeavesResidualCurrentDevicesAlone()
    {
        QFETCH(const int, functionState);
        for (const bool isIec : {false, true}) {
            MeasurementEngine engine;
            engine.Report(functionState);
            engine.Settings(isIec ? static_cast<MeasurementSettings*>(new Vesmar::RCDIECSettings)
                                  : new Vesmar::RCDSettings);
            engine.context.PrepareMeasurementRequested.Set(true);
            PreparingMeasurementState state(&engine.context, nullptr);
            engine.Restart();
            state.OnRunning();
            QCOMPARE(engine.Outcome(), QString());
            QVERIFY(engine.context.PrepareMeasurementRequested.Get());
            QCOMPARE(engine.Commands(), QByteArray("s"));
        }
    }

    void BareSettingsArePreparedWithoutData()
    {
        MeasurementEngine engine;
        engine.Report(0);
        engine.Settings(new MeasurementSettings(MeasurementType::RPE, nullptr));
        engine.context.PrepareMeasurementRequested.Set(true);
        PreparingMeasurementState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, PrepareNothing, Wire::ReadStatus}));
    }

    void FailedStatusEndsTheStep()
    {
        for (const auto functionState :
             {Vesmar::FunctionState::PrepareError, Vesmar::FunctionState::Prepared}) {
            for (const bool isPrepareRequested : {false, true}) {
                MeasurementEngine engine;
                engine.RefuseWhileReporting('s', 0);
                engine.Settings(new Vesmar::RPESettings);
                engine.context.MeasurementFunctionStatus.Set(functionState);
                engine.context.PrepareMeasurementRequested.Set(isPrepareRequested);
                PreparingMeasurementState state(&engine.context, nullptr);
                engine.Restart();
                state.OnRunning();
                QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("CommunicationError=1")});
                QCOMPARE(engine.Commands(), QByteArray("s"));
            }
        }
    }

    void FailedPrepareStaysRequested()
    {
        MeasurementEngine engine;
        engine.RefuseWhileReporting('P', 4);
        engine.Settings(new Vesmar::RPESettings);
        engine.context.PrepareMeasurementRequested.Set(true);
        PreparingMeasurementState state(&engine.context, nullptr);
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.Outcome(), QStringLiteral("CommunicationError=1"));
        QVERIFY(engine.context.PrepareMeasurementRequested.Get());
        QCOMPARE(engine.Commands(), QByteArray("sP"));
    }

    void FailedStatusAfterPrepareIsALostLink()
    {
        MeasurementEngine engine;
        engine.peer.AnswerInTurn({Wire::StartTest0Status, Wire::Acknowledge, Wire::Refusal});
        engine.Settings(new Vesmar::RPESettings);
        engine.context.PrepareMeasurementRequested.Set(true);
        engine.context.StartTestStatus.Set(Vesmar::StartTestResult::Status0);
        PreparingMeasurementState state(&engine.context, nullptr);
        engine.Restart();
        state.OnRunning();
        QCOMPARE(engine.Outcome(), QStringLiteral("PrepareMeasurementRequested=0 CommunicationError=1"));
        QCOMPARE(engine.Commands(), QByteArray("sPs"));
    }
};

QTEST_GUILESS_MAIN(TestPreparingMeasurementState)
#include "tst_preparingmeasurementstate.moc"
