#include "integration/client/clientbench.h"

using VesmarClient::Outcome;

/// Measurements through the client, at an instrument that does as it should.
class TestClientMeasuring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryFunctionIsMeasured_data();
    void EveryFunctionIsMeasured();
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

QTEST_GUILESS_MAIN(TestClientMeasuring)
#include "tst_clientmeasuring.moc"
