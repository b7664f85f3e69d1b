#include <QSignalSpy>

#include <Vesmar/hvtestsettings.h>

#include "client/driver/host.h"
#include "client/driver/stoprun.h"
#include "client/measuring/measurementrun.h"
#include "integration/client/clientbench.h"
#include "integration/rcdmeasuring.h"
#include "support/wire.h"
#include "virtualtime/virtualtime.h"

using VesmarClient::LinkState;
using VesmarClient::Outcome;
using VesmarClient::Phase;

namespace
{

constexpr char Hv[] = "hv --time 600";

/// Aborts a measurement so many milliseconds after it was asked for.
void VerifyAbortAfter(ClientBench& bench, const char* words, int delay)
{
    const Measured measured(bench, words);
    QTest::qWait(delay);
    measured->abort();
    measured.VerifyAbort();
}

/// How long it takes until the stop is on the line, after an abort in the slot for the fifth reading.
class TimeToTheStop
{
public:
    template <typename Abort>
    void CountReading(const Abort& abort)
    {
        constexpr int Fifth = 5;
        if (++_readings == Fifth) {
            _abortedAt = Simulator::Clock::now();
            abort();
        }
    }

    Simulator::Clock::duration AwaitStop(const LineInstrument& instrument) const
    {
        [&] { AWAIT(instrument.Sent().contains(Wire::StopMeasurement)); }();
        for (const Simulator::Exchange& exchange : instrument.Record()) {
            if (exchange.request == Wire::StopMeasurement) {
                return exchange.receivedAt - _abortedAt;
            }
        }
        return Simulator::Clock::duration::max();
    }

private:
    int _readings = 0;
    Simulator::TimePoint _abortedAt;
};

Simulator::Clock::duration DriversTimeToTheStop()
{
    TimeToTheStop time;
    Measuring measuring;
    QObject::connect(measuring.tester.operator->(), &Vesmar::Tester::TestResultsChanged,
                     [&](const Vesmar::MeasurementResults* results) {
                         if (results->GetMeasurementType() == Vesmar::MeasurementType::HVTest) {
                             time.CountReading([&] { measuring.tester->AbortMeasurement(); });
                         }
                     });
    measuring.Prepare(*ForSeconds<Vesmar::HVTestSettings>(600));
    measuring.tester->StartMeasurement();
    return time.AwaitStop(measuring.instrument);
}

Simulator::Clock::duration ClientsTimeToTheStop()
{
    TimeToTheStop time;
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, Hv);
    QObject::connect(measured.operator->(), &VesmarClient::Measurement::reading,
                     [&] { time.CountReading([&] { measured->abort(); }); });
    measured.AwaitEnd();
    return time.AwaitStop(bench.simulator);
}

} // namespace

/// Aborts through the client: each is proved, and the output is off, whatever the driver makes of it.
class TestClientAborts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AbortAtAnyMoment();
    void AbortBeforeAnythingIsPrepared_data();
    void AbortBeforeAnythingIsPrepared();
    void AbortOfAForgottenPreparation();
    void AbortRightAfterAnAcknowledgedStart();
    void AbortBeforeTheStartNeverRunsATest_data();
    void AbortBeforeTheStartNeverRunsATest();
    void AbortBetweenTwoPhasesRunsNoSecond();
    void AbortOfTheNextMeasurementIsProved();
    void AbortEndsACleanUp();
    void AbortEndsAnEndlessTest_data();
    void AbortEndsAnEndlessTest();
    void StartThatAnAbortLeavesPendingIsNoTrap_data();
    void StartThatAnAbortLeavesPendingIsNoTrap();
    void AbortWhileTheLinkIsLost();
    void DeletedMeasurementIsAborted();
    void AbortIsAsFastAsTheDriversOwn();
    void FrozenApplicationDoesNotDelayAnAbort();
};

/// One measurement follows another on the same link, so that none may leave anything behind that harms the
/// next.
void TestClientAborts::AbortAtAnyMoment()
{
    constexpr int Latest = 7000; // All are over by themselves then.
    constexpr int Step = 23;
    constexpr int EndingTime = 1000; // Of one that was ending already when it was aborted.
    const std::vector<const char*> functions{"hv --time 1 --time-offset 0",
                                             "rcd --mode ub-re",
                                             "rcd --mode ia-ta-1",
                                             "rln",
                                             "rcd-iec --mode ia-ta-1",
                                             "rcd-iec --mode clean-up",
                                             "rcd --mode ia-ta-1 --with-ub-re"};
    ClientBench bench;
    bench.Connect();
    size_t next = 0;
    for (int delay = 0; delay < Latest; delay += Step) {
        const char* const words = functions.at(next++ % functions.size());
        const Measured measured(bench, words);
        QTest::qWait(delay);
        measured->abort();
        measured.AwaitEnd();
        const bool isOver =
            measured->outcome() == Outcome::Completed && measured->elapsed() < delay + EndingTime;
        const QByteArray row = QByteArray(words) + " after " + QByteArray::number(delay) + " ms";
        QVERIFY2(isOver || measured->outcome() == Outcome::Aborted, row.constData());
        QVERIFY2(!measured->failure().isFailure(), row.constData());
        QVERIFY2(measured->isStopConfirmed() && measured.wasOff, row.constData());
    }
}

void TestClientAborts::AbortBeforeAnythingIsPrepared_data()
{
    QTest::addColumn<QByteArray>("words");
    for (const char* words :
         {Hv, "rln", "rcd --mode ub-re", "rcd --mode ia-ta-1", "rcd-iec --mode ia-ta-1"}) {
        QTest::newRow(words) << QByteArray(words);
    }
}

void TestClientAborts::AbortBeforeAnythingIsPrepared()
{
    QFETCH(const QByteArray, words);
    constexpr int LongerThanAStep = 150;
    for (int delay = 0; delay < LongerThanAStep; delay += 5) {
        ClientBench bench;
        bench.Connect();
        VerifyAbortAfter(bench, words, delay);
        const Measured next(bench, "rpe --time 1");
        next.VerifyEnd(Outcome::Completed, "");
    }
}

/// No status has told the state of a function yet. The driver would wait for one without end.
void TestClientAborts::AbortOfAForgottenPreparation()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, Hv);
    AWAIT(bench.simulator.Log().contains("function 9 preparing"));
    bench.Execute("function 0");
    constexpr int SomeSteps = 500;
    QTest::qWait(SomeSteps);
    QCOMPARE(bench.client.activeFunction(), VesmarClient::Function::Monitoring);
    measured->abort();
    measured.VerifyAbort();
}

/// The instrument still reports that it is prepared.
void TestClientAborts::AbortRightAfterAnAcknowledgedStart()
{
    Simulator::InstrumentOptions options;
    options.model.functionTimings.startDelay = std::chrono::seconds(3);
    ClientBench bench(options);
    bench.Connect();
    const Measured measured(bench, Hv);
    AWAIT(bench.simulator.Sent().contains(Wire::StartMeasurement));
    measured->abort();
    measured.VerifyAbort();
    QVERIFY(bench.simulator.Log().contains("function 9 start cancelled by request"));
}

void TestClientAborts::AbortBeforeTheStartNeverRunsATest_data()
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<QByteArray>("moment"); // The pause before the start begins with it.
    QTest::newRow("Ub/Re") << QByteArray("rcd --mode ub-re") << QByteArray("function 10 prepared");
    QTest::newRow("Ia/Ta") << QByteArray("rcd --mode ia-ta-1") << QByteArray("function 10 prepared");
    QTest::newRow("IEC Ia/Ta") << QByteArray("rcd-iec --mode ia-ta-1") << QByteArray("function 11 prepared");
    QTest::newRow("clean-up") << QByteArray("rcd-iec --mode clean-up") << QByteArray("function 11 prepared");
    QTest::newRow("IEC Ia/Ta, before its first step") << QByteArray("rcd-iec --mode ia-ta-1") << QByteArray();
}

void TestClientAborts::AbortBeforeTheStartNeverRunsATest()
{
    QFETCH(const QByteArray, words);
    QFETCH(const QByteArray, moment);
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, words);
    AWAIT(moment.isEmpty() || bench.simulator.Log().contains(moment));
    measured->abort();
    measured.VerifyAbort();
    const QByteArray log = bench.simulator.Log().join('\n');
    QVERIFY2(!log.contains(" running"), log.constData());
}

/// The first phase is complete, and its end is being proved.
void TestClientAborts::AbortBetweenTwoPhasesRunsNoSecond()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rcd --mode ia-ta-1 --with-ub-re");
    measured.AwaitPhase(Phase::Confirming);
    measured->abort();
    measured.VerifyAbort();
    QCOMPARE(bench.simulator.Log().count("function 10 running"), 1);
}

/// It is asked for, and aborted, when the run before has ended and is still to be cleared away.
void TestClientAborts::AbortOfTheNextMeasurementIsProved()
{
    LineInstrument simulator;
    VesmarClient::Host host;
    LinkState link = LinkState::Closed;
    connect(&host, &VesmarClient::Host::LinkStateChanged, this, [&link](LinkState state) { link = state; });
    host.Open();
    AWAIT_EQUAL(link, LinkState::Up);
    VesmarClient::MeasurementOrder order;
    order.settings = std::make_unique<Vesmar::HVTestSettings>();
    auto next = std::make_unique<VesmarClient::MeasurementRun>(std::move(order));
    const QSignalSpy confirmed(next.get(), &VesmarClient::MeasurementRun::StopConfirmed);
    Outcome outcome = Outcome::None;
    connect(next.get(), &VesmarClient::Run::Finished, this,
            [&outcome](Outcome reached) { outcome = reached; });
    auto first = std::make_unique<VesmarClient::StopRun>();
    VesmarClient::Run& before = *first;
    host.Begin(std::move(first));
    connect(&before, &VesmarClient::Run::Finished, this, [&] {
        VesmarClient::Run& waiting = *next;
        host.Begin(std::move(next));
        waiting.AbortInTime();
    });
    before.AbortInTime();
    AWAIT_EQUAL(outcome, Outcome::Aborted);
    QCOMPARE(confirmed.size(), 1);
    QCOMPARE(simulator.Status().function, 0);
}

void TestClientAborts::AbortEndsACleanUp()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rcd-iec --mode clean-up");
    measured.AwaitPhase(Phase::CleaningUp);
    measured->abort();
    measured.VerifyAbort();
    QCOMPARE(bench.simulator.Log().count("function 11 stopped by request"), 1);
}

void TestClientAborts::AbortEndsAnEndlessTest_data()
{
    QTest::addColumn<QByteArray>("words");
    for (const char* words : {"rcd --mode ub-re", "rcd --mode ia-ta-1", "rcd-iec --mode ia-ta-1"}) {
        QTest::newRow(words) << QByteArray(words);
    }
}

/// The driver looks at nothing but the progress that the test tells.
void TestClientAborts::AbortEndsAnEndlessTest()
{
    QFETCH(const QByteArray, words);
    constexpr int MostTime = 2500;
    ClientBench bench(WithEndlessRcd());
    bench.Connect();
    const Measured measured(bench, words);
    measured.AwaitPhase(Phase::Running);
    QTest::qWait(MostTime);
    const qint64 before = measured->elapsed();
    measured->abort();
    measured.VerifyAbort();
    const qint64 time = measured->elapsed() - before;
    QVERIFY2(time < MostTime, QByteArray::number(time));
    QCOMPARE(bench.client.linkState(), LinkState::Up);
}

void TestClientAborts::StartThatAnAbortLeavesPendingIsNoTrap_data()
{
    QTest::addColumn<QByteArray>("aborted");
    QTest::addColumn<QByteArray>("next");
    for (const char* aborted : {Hv, "rcd --mode ub-re", "rcd-iec --mode ia-ta-1"}) {
        for (const char* next : {"rpe --time 1", "rln", "rcd --mode ub-re", "rcd-iec --mode ia-ta-1"}) {
            QTest::addRow("%s, then %s", aborted, next) << QByteArray(aborted) << QByteArray(next);
        }
    }
}

/// The abort comes in the moment in which the driver has been asked for the start, and has not carried it
/// out.
void TestClientAborts::StartThatAnAbortLeavesPendingIsNoTrap()
{
    QFETCH(const QByteArray, aborted);
    QFETCH(const QByteArray, next);
    ClientBench bench;
    bench.Connect();
    const bool isStartedAtOnce = aborted.contains("iec");
    const Measured first(bench, aborted);
    if (!isStartedAtOnce) {
        first.AwaitPhase(aborted == Hv ? Phase::Starting : Phase::Preparing);
        AWAIT(aborted == Hv || bench.client.activeFunction() == VesmarClient::Function::RCD);
    }
    first->abort();
    first.VerifyAbort();
    QCOMPARE(bench.simulator.Sent().count(Wire::StartMeasurement), 0);
    const Measured second(bench, next);
    second.VerifyEnd(Outcome::Completed, "");
    QCOMPARE(bench.simulator.Sent().count(Wire::StartMeasurement), 1);
}

/// The outcome stays the abort's; the proof comes when the link is back.
void TestClientAborts::AbortWhileTheLinkIsLost()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, Hv);
    measured.AwaitPhase(Phase::Running);
    bench.simulator.Unplug();
    AWAIT(!measured->gaps().isEmpty());
    measured->abort();
    measured.AwaitPhase(Phase::Confirming);
    bench.simulator.Plug();
    measured.VerifyAbort();
}

void TestClientAborts::DeletedMeasurementIsAborted()
{
    ClientBench bench;
    bench.Connect();
    auto* const measurement = bench.client.measure(VesmarClient::Settings("hv"));
    AWAIT(bench.simulator.Log().contains("function 9 running"));
    delete measurement;
    AWAIT(!bench.client.isBusy());
    QVERIFY(bench.IsOff());
}

void TestClientAborts::AbortIsAsFastAsTheDriversOwn()
{
    const auto drivers = DriversTimeToTheStop();
    const auto clients = ClientsTimeToTheStop();
    QVERIFY(clients <= drivers + std::chrono::milliseconds(1));
}

void TestClientAborts::FrozenApplicationDoesNotDelayAnAbort()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, Hv);
    measured.AwaitPhase(Phase::Running);
    measured->abort();
    VirtualTime::Sleep(std::chrono::seconds(2));
    QVERIFY(bench.IsOff());
    measured.VerifyAbort();
}

QTEST_GUILESS_MAIN(TestClientAborts)
#include "tst_clientaborts.moc"
