#include "client/guard/guard.h"
#include "client/guard/guardprogram.h"
#include "integration/client/clientbench.h"

using VesmarClient::Guard;
using VesmarClient::GuardPolicy;
using VesmarClient::Outcome;
using VesmarClient::Phase;

/// Which measurements of an application the guard watches.
class TestClientGuarding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DangerousMeasurementsAreWatchedUnlessAskedOtherwise();
    void WithoutAGuardNothingIsSent(); // Before the others: once it is there, the guard stays.
    void PolicyDecides_data();
    void PolicyDecides();
};

void TestClientGuarding::DangerousMeasurementsAreWatchedUnlessAskedOtherwise()
{
    QCOMPARE(VesmarClient::Instrument().guardPolicy(), GuardPolicy::Dangerous);
}

void TestClientGuarding::WithoutAGuardNothingIsSent()
{
    const QByteArray program = qgetenv(VesmarClient::GuardVariable);
    qputenv(VesmarClient::GuardVariable, "/nowhere/vesmar-guard");
    ClientBench bench;
    bench.client.setGuardPolicy(GuardPolicy::Dangerous);
    bench.Connect();
    const Measured measured(bench, "hv --time 1");
    measured.AwaitEnd();
    qputenv(VesmarClient::GuardVariable, program);
    QCOMPARE(measured->outcome(), Outcome::Failed);
    QCOMPARE(measured->failure().name, QStringLiteral("guard-missing"));
    QVERIFY(!bench.HasPrepared());
}

void TestClientGuarding::PolicyDecides_data()
{
    QTest::addColumn<GuardPolicy>("policy");
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<bool>("isWatched");
    QTest::newRow("dangerous") << GuardPolicy::Dangerous << QByteArray("hv --time 1") << true;
    QTest::newRow("harmless") << GuardPolicy::Dangerous << QByteArray("rpe --time 1") << false;
    QTest::newRow("always") << GuardPolicy::Always << QByteArray("rpe --time 1") << true;
    QTest::newRow("off") << GuardPolicy::Off << QByteArray("hv --time 1") << false;
}

void TestClientGuarding::PolicyDecides()
{
    QFETCH(GuardPolicy, policy);
    QFETCH(QByteArray, words);
    ClientBench bench;
    bench.client.setGuardPolicy(policy);
    bench.Connect();
    const Measured measured(bench, words);
    measured.AwaitPhase(Phase::Running);
    QTEST(Guard::OfThisProcess().IsWatching(), "isWatched");
    measured.VerifyEnd(Outcome::Completed, "");
    QVERIFY(!Guard::OfThisProcess().IsWatching());
}

QTEST_GUILESS_MAIN(TestClientGuarding)
#include "tst_clientguarding.moc"
