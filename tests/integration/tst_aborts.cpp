#include <Vesmar/hvtestsettings.h>

#include "integration/measuring.h"

using Simulator::InstrumentOptions;
using Vesmar::FunctionState;
using Vesmar::HVTestSettings;
using Vesmar::MeasurementState;

namespace
{

/// Longer than any test lasts: what takes so long is still going on when it is aborted.
constexpr std::chrono::hours Endless{1};
constexpr int LongTime = 600;

constexpr int StillPrepared = 4;
constexpr int Terminated = 9;

const QByteArrayList BackInPreparing{Trace::Aborting, Trace::MeasurementMode, Trace::Preparing};

/// A high-voltage test that has been asked to start, and how it is ended.
class HighVoltageRun : public Measuring
{
public:
    explicit HighVoltageRun(const InstrumentOptions& options = {}) : Measuring(options) {}

    void Start(int time = LongTime)
    {
        const auto settings = ForSeconds<HVTestSettings>(time);
        settings->SetMeasurementTimeOffset(0.0F);
        Prepare(*settings);
        tester->StartMeasurement();
    }

    /// Aborts, and waits until the library is ready for the next preparation.
    void Abort()
    {
        tester->AbortMeasurement();
        QTRY_COMPARE_WITH_TIMEOUT(QByteArrayList(States().mid(States().size() - 3)), BackInPreparing,
                                  Patience);
        QVERIFY(!tester->IsMeasurementRunning());
        QTRY_VERIFY_WITH_TIMEOUT(
            IsInState(MeasurementState::Preparing) || IsInState(MeasurementState::Prepared), Patience);
    }

    /// Leaves measurement mode and waits until the instrument has no function any more.
    void Leave()
    {
        tester->SetIsMeasurementModeActive(false);
        QTRY_VERIFY_WITH_TIMEOUT(HasNoFunction(), Patience);
        QTRY_COMPARE_WITH_TIMEOUT(static_cast<int>(tester->CurrentMeasurementType()), 0, Patience);
    }
};

} // namespace

class TestAborts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WhilePreparing();
    void WhenPrepared();
    void RightAfterTheStartWasAcknowledged();
    void StartThatShowsAfterTheAbort();
    void WhileStarting();
    void WhileRunning();
    void WhileStopping();
};

void TestAborts::WhilePreparing()
{
    InstrumentOptions options;
    options.model.functionTimings.preparing = Endless;
    HighVoltageRun run(options);
    run.Start();
    QTRY_COMPARE_WITH_TIMEOUT(run.tester->MeasurementFunctionStatus(), FunctionState::Preparing, Patience);
    run.Abort();
    QCOMPARE(run.CountSent(Frames::StopMeasurement), 0); // Not running counts as over.
    run.Leave();
    QCOMPARE(run.CountSent(Frames::StartMeasurement), 0);
}

void TestAborts::WhenPrepared()
{
    HighVoltageRun run;
    HVTestSettings settings;
    run.Prepare(settings);
    QTRY_VERIFY_WITH_TIMEOUT(run.IsInState(MeasurementState::Prepared), Patience);
    run.tester->AbortMeasurement();
    const int statusesSoFar = run.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(run.CountSent(Frames::ReadStatus) > statusesSoFar + 2, Patience);
    QVERIFY(!run.HasEntered(Trace::Aborting)); // A function that is merely prepared stays so.
    QCOMPARE(run.FunctionState(), StillPrepared);
    run.Leave();
    QCOMPARE(run.CountSent(Frames::StartMeasurement), 0);
}

void TestAborts::RightAfterTheStartWasAcknowledged()
{
    InstrumentOptions options;
    options.model.functionTimings.startDelay = Endless;
    HighVoltageRun run(options);
    run.Start();
    QTRY_COMPARE_WITH_TIMEOUT(run.CountSent(Frames::StartMeasurement), 1, Patience);
    QCOMPARE(run.FunctionState(), StillPrepared);
    run.Abort();
    QCOMPARE(run.CountSent(Frames::StopMeasurement), 0); // The start has not shown yet.
    run.Leave();
    QVERIFY(run.CountSent(Frames::StopMeasurement) > 0);
    QCOMPARE(run.CountSent(Frames::StartMeasurement), 1);
}

void TestAborts::StartThatShowsAfterTheAbort()
{
    InstrumentOptions options;
    options.model.functionTimings.startDelay = std::chrono::seconds(2);
    HighVoltageRun run(options);
    run.Start();
    QTRY_COMPARE_WITH_TIMEOUT(run.CountSent(Frames::StartMeasurement), 1, Patience);
    run.Abort();
    QTRY_VERIFY_WITH_TIMEOUT(run.FunctionState() != StillPrepared, Patience);
    run.Leave(); // It runs, though the abort is over: only leaving ends it.
    QVERIFY(run.CountSent(Frames::StopMeasurement) > 0);
    QCOMPARE(run.CountSent(Frames::StartMeasurement), 1);
}

void TestAborts::WhileStarting()
{
    InstrumentOptions options;
    options.model.functionTimings.starting = Endless;
    HighVoltageRun run(options);
    run.Start();
    QTRY_COMPARE_WITH_TIMEOUT(run.tester->MeasurementFunctionStatus(), FunctionState::Starting, Patience);
    run.Abort();
    QVERIFY(run.CountSent(Frames::StopMeasurement) > 0);
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.HasEntered(Trace::HighVoltage));
    run.Leave();
}

void TestAborts::WhileRunning()
{
    HighVoltageRun run;
    run.Start();
    QTRY_VERIFY_WITH_TIMEOUT(run.IsInState(MeasurementState::Measuring), Patience);
    QVERIFY(run.tester->IsMeasurementRunning());
    run.Abort();
    QVERIFY(run.CountSent(Frames::StopMeasurement) > 0);
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.HasEntered(Trace::Stopping));
    run.Leave();
}

void TestAborts::WhileStopping()
{
    HighVoltageRun run;
    run.instrument.SetScenario(Simulator::Scenario::RunsOnAfterStop);
    run.Start(0);
    QTRY_VERIFY_WITH_TIMEOUT(run.IsInState(MeasurementState::Stopping), Patience);
    run.tester->AbortMeasurement();
    QTRY_VERIFY_WITH_TIMEOUT(run.HasEntered(Trace::Preparing, 2), Patience);
    QVERIFY(!run.HasEntered(Trace::Aborting)); // It is being stopped anyway.
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.tester->IsMeasurementRunning());
    run.Leave();
}

QTEST_GUILESS_MAIN(TestAborts)
#include "tst_aborts.moc"
