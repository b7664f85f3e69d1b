#include <memory>
#include <type_traits>

#include <QTest>

#include "states/configuration/restartingtesterstate.h"
#include "states/configuration/testerconfigurationstate.h"
#include "states/connection/communicationrecoverystate.h"
#include "states/connection/initializationstate.h"
#include "states/connection/monitoringstate.h"
#include "states/connection/testeroperationsstate.h"
#include "states/measurement/abortingmeasurementstate.h"
#include "states/measurement/continuousmeasurementrunningstate.h"
#include "states/measurement/hvtestcontinuousmeasurementrunningstate.h"
#include "states/measurement/measurementmodestate.h"
#include "states/measurement/preparingmeasurementstate.h"
#include "states/measurement/singlemeasurementrunningstate.h"
#include "states/measurement/startingmeasurementstate.h"
#include "states/measurement/stoppingmeasurementstate.h"
#include "states/rcd/rcdmeasurementmodestate.h"
#include "states/rcd/rcdmonitoringstate.h"
#include "support/cells.h"
#include "unit/states/enginefixture.h"

using namespace Vesmar;

using Creator = std::unique_ptr<State> (*)(StateMachineContext*);

Q_DECLARE_METATYPE(Creator)

namespace
{

template <typename Concrete>
std::unique_ptr<State> Create(StateMachineContext* context)
{
    return std::make_unique<Concrete>(context, nullptr);
}

/// An engine in which every flag is set, so that every change of a hook shows.
struct Flagged : Engine {
    Flagged()
    {
        context.MeasurementTime.Set(7);
        context.MeasurementStatus.Set(MeasurementState::Prepared);
        ForEachCell(context, [](const char* /*name*/, auto& cell) {
            if constexpr (std::is_same_v<decltype(cell.Get()), bool>) {
                cell.Set(true);
            }
        });
    }
};

} // namespace

/// What each state writes when it is entered and left; the runs of an RCD test and the update have it in
/// their own tests.
class TestStateHooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void HooksAnnounceThePassage_data()
    {
        QTest::addColumn<Creator>("create");
        QTest::addColumn<QByteArray>("banner");
        QTest::addColumn<QString>("entryChanges");
        QTest::addColumn<QString>("exitChanges");
        const auto row = [](Creator create, const char* banner, const char* entry = "",
                            const char* exit = "") {
            QTest::newRow(banner) << create << QByteArray(banner) << QString(QLatin1String(entry))
                                  << QString(QLatin1String(exit));
        };
        const char* const requestsCleared = "AbortMeasurementRequested=0 PrepareMeasurementRequested=0 "
                                            "StartMeasurementRequested=0 IsMeasurementModeActive=0";
        row(Create<TesterOperationsState>, "TESTER OPERATIONS STATE");
        row(Create<InitializationState>, "INITIALIZATION STATE", requestsCleared);
        row(Create<MonitoringState>, "MONITORING STATE ");
        row(Create<CommunicationRecoveryState>, "COMMUNICATION RECOVERY STATE ", requestsCleared);
        row(Create<TesterConfigurationState>, "TESTER CONFIGURATION STATE ");
        row(Create<RestartingTesterState>, "RESTARTING TESTER STATE ");
        row(Create<MeasurementModeState>, "MEASUREMENT MODE STATE ",
            "IsMeasurementRunning=0 AbortMeasurementRequested=0");
        row(Create<PreparingMeasurementState>, "PREPARING MEASUREMENT STATE ",
            "MeasurementStatus=1 MeasurementTime=0");
        row(Create<StartingMeasurementState>, "STARTING MEASUREMENT STATE ", "MeasurementStatus=3");
        row(Create<SingleMeasurementRunningState>, "SINGLE MEASUREMENT STATE ", "MeasurementStatus=4");
        row(Create<ContinuousMeasurementRunningState>, "CONTINUOUS MEASUREMENT STATE ",
            "MeasurementStatus=5 MeasurementTimeElapsed=0");
        row(Create<HVTestContinuousMeasurementRunningState>, "HVTEST CONTINUOUS MEASUREMENT STATE ",
            "MeasurementStatus=5 MeasurementTimeElapsed=0");
        row(Create<StoppingMeasurementState>, "STOPPING MEASUREMENT STATE ", "MeasurementStatus=6");
        row(Create<AbortingMeasurementState>, "ABORTING MEASUREMENT STATE ",
            "MeasurementStatus=6 IsMeasurementRunning=0", "AbortMeasurementRequested=0 MeasurementStatus=7");
        row(Create<RCDMeasurementModeState>, "RCD MEASUREMENT MODE STATE ");
        row(Create<RCDMonitoringState>, "RCD MONITORING STATE", "MeasurementStatus=-1");
    }

    /// Each hook is called twice: the second time there is nothing left to change.
    void HooksAnnounceThePassage()
    {
        QFETCH(const Creator, create);
        QFETCH(const QByteArray, banner);
        QFETCH(const QString, entryChanges);
        QFETCH(const QString, exitChanges);
        const auto compare = [&](void (State::*hook)(), const char* passage, const QString& changes) {
            Flagged engine;
            const std::unique_ptr<State> state = create(&engine.context);
            const QByteArray line = passage + banner;
            CompareHook(
                engine, [&] { (state.get()->*hook)(); }, line,
                changes.split(QLatin1Char(' '), Qt::SkipEmptyParts));
            CompareHook(
                engine, [&] { (state.get()->*hook)(); }, line);
        };
        compare(&State::OnEntry, "ENTERING ", entryChanges);
        compare(&State::OnExit, "LEAVING ", exitChanges);
    }

    void ParentsDoNothingOnAStep_data()
    {
        QTest::addColumn<Creator>("create");
        QTest::newRow("tester operations") << Creator(Create<TesterOperationsState>);
        QTest::newRow("measurement mode") << Creator(Create<MeasurementModeState>);
        QTest::newRow("RCD measurement mode") << Creator(Create<RCDMeasurementModeState>);
    }

    void ParentsDoNothingOnAStep()
    {
        QFETCH(const Creator, create);
        Flagged engine;
        engine.peer.AnswerAlways(Wire::Acknowledge);
        const std::unique_ptr<State> state = create(&engine.context);
        engine.cells.Clear();
        engine.log.Clear();
        state->OnRunning();
        QCOMPARE(engine.cells.Changes(), QStringList());
        QCOMPARE(engine.log.Texts(), QStringList());
        QCOMPARE(engine.Commands(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestStateHooks)
#include "tst_statehooks.moc"
