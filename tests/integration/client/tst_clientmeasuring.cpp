#include "integration/client/clientbench.h"
#include "simulator/faults/faultentry.h"
#include "support/wire.h"
#include "virtualtime/virtualtime.h"

using namespace std::chrono_literals;
using VesmarClient::Gap;
using VesmarClient::Outcome;
using VesmarClient::Phase;

namespace
{

/// The time from the first request of one kind to the first of the other.
std::chrono::milliseconds TimeBetween(const LineInstrument& instrument, const QByteArray& first,
                                      const QByteArray& second)
{
    std::map<QByteArray, Simulator::TimePoint> times;
    for (const Simulator::Exchange& exchange : instrument.Record()) {
        times.emplace(exchange.request, exchange.receivedAt);
    }
    return std::chrono::duration_cast<std::chrono::milliseconds>(times.at(second) - times.at(first));
}

/// Swallows some requests for results, from the tenth on.
Simulator::FaultEntry LostRequests(int count)
{
    Simulator::FaultEntry fault;
    fault.fault = Simulator::Fault::Silent;
    fault.trigger.request = Wire::ReadMeasurement.front();
    fault.trigger.from = 10;
    fault.count = count;
    return fault;
}

} // namespace

/// Measurements through the client, at an instrument that does as it should.
class TestClientMeasuring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryFunctionIsMeasured_data();
    void EveryFunctionIsMeasured();
    void ReComesFromTheTestBefore();
    void RemainingTimeAndAgeAreTold();
    void FrozenApplicationDoesNotProlongTheMeasurement();
    void FrozenApplicationDoesNotHoldTheMeasurement();
    void ApplicationThatIsThereHoldsTheMeasurement();
    void AbortedMeasurementNeedsNobodyThere();
    void LostAnswersLeaveAGap_data();
    void LostAnswersLeaveAGap();
    void SlowAnswersLeaveGaps();
    void OneMeasurementRunsAtATime();
    void InvalidSettingsSendNothing();
};

void TestClientMeasuring::EveryFunctionIsMeasured_data()
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<int>("results"); // at the least
    for (const char* words :
         {"rpe", "riso", "isub", "ipe", "idelta", "it", "power", "hv --time-offset 0.5"}) {
        QTest::newRow(words) << QByteArray(words) + " --time 1" << 2;
    }
    for (const char* words :
         {"rln", "iec", "rcd --mode ub-re", "rcd --mode ia-ta-1", "rcd-iec --mode ia-ta-1"}) {
        QTest::newRow(words) << QByteArray(words) << 1;
    }
    QTest::newRow("two phases") << QByteArray("rcd --mode ia-ta-2 --with-ub-re") << 2;
    QTest::newRow("clean-up") << QByteArray("rcd-iec --mode clean-up") << 0;
}

void TestClientMeasuring::EveryFunctionIsMeasured()
{
    QFETCH(QByteArray, words);
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, words);
    measured.VerifyEnd(Outcome::Completed, "");
    QFETCH(int, results);
    QVERIFY(results < 2 ? measured.results.size() == results : measured.results.size() >= results);
    const auto function = VesmarClient::Functions::find(measured->settings().function()).function;
    for (const VesmarClient::Result& result : measured.results) {
        QCOMPARE(result.function(), function);
    }
    QCOMPARE(measured->latest().isEmpty(), results == 0);
    QVERIFY(measured->gaps().isEmpty());
}

void TestClientMeasuring::ReComesFromTheTestBefore()
{
    const QString re = QStringLiteral("Re");
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rcd --mode ia-ta-2 --with-ub-re");
    measured.VerifyEnd(Outcome::Completed, "");
    QCOMPARE(measured.results.size(), 2);
    QVERIFY(measured.results.first().reading(re).isPresent);
    QCOMPARE(measured->latest().reading(re), measured.results.first().reading(re));
    QVERIFY(measured->latest().reading(QStringLiteral("Ta")).isPresent);
}

void TestClientMeasuring::RemainingTimeAndAgeAreTold()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time 2 --time-offset 1.5");
    QCOMPARE(measured->age(), -1);
    QCOMPARE(measured->remaining(), -1);
    measured.AwaitPhase(Phase::Running);
    QVERIFY2(measured->remaining() > 3300 && measured->remaining() <= 3500,
             QByteArray::number(measured->remaining()));
    AWAIT(!measured.results.isEmpty());
    QVERIFY2(measured->age() >= 0 && measured->age() < 100, QByteArray::number(measured->age()));
    QSignalSpy remaining(measured.operator->(), &VesmarClient::Measurement::remainingChanged);
    QSignalSpy ages(measured.operator->(), &VesmarClient::Measurement::ageChanged);
    measured.VerifyEnd(Outcome::Completed, "");
    QVERIFY(remaining.size() >= 3);
    QVERIFY(ages.size() >= 3);
    QCOMPARE(measured->remaining(), 0);
}

void TestClientMeasuring::FrozenApplicationDoesNotProlongTheMeasurement()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rpe --time 3");
    measured.AwaitPhase(Phase::Running);
    VirtualTime::Sleep(10s);
    QVERIFY(bench.IsOff());
    const auto time = TimeBetween(bench.simulator, Wire::StartMeasurement, Wire::StopMeasurement);
    QVERIFY2(time >= 3s && time < 3800ms, QByteArray::number(qint64(time.count())));
    QVERIFY(!measured->isFinished()); // It has not been able to hear of it.
    measured.VerifyEnd(Outcome::Completed, "");
    QVERIFY(measured->gaps().isEmpty());
    QVERIFY(measured->age() > 6000);
}

/// A screen that hangs does not hold a button.
void TestClientMeasuring::FrozenApplicationDoesNotHoldTheMeasurement()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time 600");
    measured->setKeepAliveInterval(500);
    while (!measured.phases.contains(Phase::Running)) {
        QTest::qWait(100);
        measured->keepAlive();
    }
    VirtualTime::Sleep(1500ms);
    QVERIFY(bench.IsOff());
    measured.VerifyEnd(Outcome::Aborted, "keep-alive-missed");
}

void TestClientMeasuring::ApplicationThatIsThereHoldsTheMeasurement()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time 3");
    measured->setKeepAliveInterval(1);
    QCOMPARE(measured->keepAliveInterval(), 100);
    QTimer button;
    connect(&button, &QTimer::timeout, measured.operator->(), &VesmarClient::Measurement::keepAlive);
    button.start(50);
    measured.VerifyEnd(Outcome::Completed, "");
}

void TestClientMeasuring::AbortedMeasurementNeedsNobodyThere()
{
    ClientBench bench;
    bench.Connect();
    bench.Execute("scenario runs-on-after-stop");
    const Measured measured(bench, "hv --time 600");
    measured.AwaitPhase(Phase::Running);
    measured->setKeepAliveInterval(100);
    measured->abort();
    VirtualTime::Sleep(150ms);
    measured->setKeepAliveInterval(200);
    measured.VerifyAbort();
}

void TestClientMeasuring::LostAnswersLeaveAGap_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("duration");
    QTest::newRow("one") << 1 << 4200;
    QTest::newRow("two") << 2 << 8400;
}

/// The driver repeats the request after 4 s and a pause.
void TestClientMeasuring::LostAnswersLeaveAGap()
{
    QFETCH(const int, count);
    QFETCH(const int, duration);
    ClientBench bench;
    bench.Connect();
    bench.simulator.AddFaults({LostRequests(count)});
    const Measured measured(bench, "rpe --time 12");
    QVector<Gap> told;
    connect(measured.operator->(), &VesmarClient::Measurement::gapsChanged,
            [&] { told.append(measured->gaps().first()); });
    measured.VerifyEnd(Outcome::Interrupted, "");
    QCOMPARE(measured->gaps().size(), 1);
    const Gap gap = measured->gaps().first();
    QVERIFY2(gap.duration >= duration && gap.duration < duration + 300, QByteArray::number(gap.duration));
    QVERIFY(gap.begin > 1000 && gap.begin < 3000);
    QCOMPARE(told.size(), duration / 1000 + 1); // As it grew, and its end.
    QVERIFY(told.first().begin == gap.begin && told.first().duration < 1100);
    QVERIFY(measured->latest().when() > measured.results.first().when());
}

void TestClientMeasuring::SlowAnswersLeaveGaps()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rpe --time 10");
    measured.AwaitPhase(Phase::Running);
    bench.simulator.SetFault(Simulator::Fault::Slow, 800ms);
    measured.VerifyEnd(Outcome::Interrupted, "");
    QVERIFY(measured->gaps().size() > 2);
}

/// A preparation that came while a start was on its way would be started with the settings of before.
void TestClientMeasuring::OneMeasurementRunsAtATime()
{
    ClientBench bench;
    bench.Connect();
    const Measured first(bench, "rpe --time 1");
    first.AwaitPhase(Phase::Starting);
    const Measured second(bench, "hv");
    QVERIFY(!second->isFinished());
    second.AwaitEnd();
    QCOMPARE(second->failure().name, QStringLiteral("busy"));
    first.VerifyEnd(Outcome::Completed, "");
    QVERIFY(!bench.simulator.Log().contains("function 9 preparing"));
}

void TestClientMeasuring::InvalidSettingsSendNothing()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rpe --time 0 --method 7");
    measured.AwaitEnd();
    QCOMPARE(measured->outcome(), Outcome::Failed);
    QCOMPARE(measured->failure().name, QStringLiteral("invalid-settings"));
    QCOMPARE(measured->failure().causes.size(), 2);
    QVERIFY(!bench.client.isBusy());
    QVERIFY(measured.phases == QVector<Phase>{Phase::Finished});
    QTest::qWait(1000); // The driver works on meanwhile.
    QVERIFY(!bench.HasPrepared());
}

QTEST_GUILESS_MAIN(TestClientMeasuring)
#include "tst_clientmeasuring.moc"
