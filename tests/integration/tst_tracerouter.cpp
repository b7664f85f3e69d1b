#include <Vesmar/rpesettings.h>

#include <VesmarClient/tracerouter.h>

#include "integration/bench.h"
#include "support/logcapture.h"

using Simulator::Fault;
using Simulator::FaultEntry;
using VesmarClient::LinkStatistics;
using VesmarClient::TraceRouter;

namespace
{

FaultEntry Times(int count, Fault fault)
{
    FaultEntry entry;
    entry.fault = fault;
    entry.count = count;
    return entry;
}

} // namespace

/// The router between the driver's own lines and an application.
class TestTraceRouter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DriverWritesNoOtherLines();
    void GoodLineHasExchangesOnly();
    void RequestsThatFailAreCounted_data();
    void RequestsThatFailAreCounted();
    void LostLinkIsARecovery();
};

void TestTraceRouter::DriverWritesNoOtherLines()
{
    const LogCapture log;
    const TraceRouter router;
    LineInstrument instrument;
    std::unique_ptr<Vesmar::Tester> tester(Vesmar::Tester::Instance());
    tester->Enable();
    AWAIT(router.statistics().exchanges > 10);
    Vesmar::RPESettings settings;
    settings.SetTime(1);
    tester->StartMeasurement(settings);
    tester->SetIsMeasurementModeActive(true);
    AWAIT(tester->MeasurementStatus() == Vesmar::MeasurementState::Stopped);
    tester.reset();
    QCOMPARE(log.Texts(), QStringList());
}

void TestTraceRouter::GoodLineHasExchangesOnly()
{
    const Bench bench;
    const TraceRouter router;
    bench.Connect();
    bench.tester->Disable();
    LinkStatistics expected;
    expected.exchanges = bench.instrument.Record().size();
    QCOMPARE(router.statistics(), expected);
}

void TestTraceRouter::RequestsThatFailAreCounted_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<LinkStatistics>("failures");
    QTest::newRow("silent") << Fault::Silent << LinkStatistics{0, 2, 0, 2, 0, 0};
    QTest::newRow("damaged") << Fault::BadCrc << LinkStatistics{0, 2, 2, 0, 0, 0};
    QTest::newRow("refused") << Fault::Refuse << LinkStatistics{0, 2, 0, 0, 2, 0};
}

void TestTraceRouter::RequestsThatFailAreCounted()
{
    QFETCH(const Fault, fault);
    QFETCH(const LinkStatistics, failures);
    Bench bench;
    const TraceRouter router;
    bench.Connect();
    QVERIFY(bench.instrument.AddFaults({Times(2, fault)}));
    AWAIT_EQUAL(router.statistics().retransmissions, 2);
    bench.AwaitMoreReadings();
    bench.tester->Disable();
    LinkStatistics expected = failures;
    expected.exchanges = bench.instrument.Record().size() - 2;
    QCOMPARE(router.statistics(), expected);
}

void TestTraceRouter::LostLinkIsARecovery()
{
    Bench bench;
    const TraceRouter router;
    bench.Connect();
    bench.instrument.Unplug();
    bench.AwaitErrors({"103", "100"});
    QCOMPARE(router.statistics().recoveries, 1);
    QCOMPARE(router.statistics().retransmissions, 2);
    QVERIFY(router.statistics().silent >= 3 + 11);

    bench.instrument.Plug();
    bench.AwaitMoreReadings();
    bench.tester->Disable();
    bench.tester->Enable();
    AWAIT(router.statistics().exchanges > 0);
    QCOMPARE(router.statistics().recoveries, 0);
    QCOMPARE(router.statistics().silent, 0);
}

QTEST_GUILESS_MAIN(TestTraceRouter)
#include "tst_tracerouter.moc"
