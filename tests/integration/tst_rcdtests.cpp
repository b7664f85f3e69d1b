#include "integration/rcdmeasuring.h"

using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

namespace
{

constexpr int Completed = 2;

/// What `MeasurementStatus` goes through in a test that was asked for at once.
const QByteArrayList WholeTest{"-1", "0", "1", "2", "3", "4", "7", "-1"};

} // namespace

class TestRcdTests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RunsToItsResult_data();
    void RunsToItsResult();
    void CleansUpWithoutAResult();
    void UbReIsPreparedBeforehand();
};

void TestRcdTests::RunsToItsResult_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("state");
    QTest::newRow("Ub/Re") << RcdKinds::UbRe() << QByteArray("10") << QByteArray(Trace::RcdUbRe);
    QTest::newRow("Ia/Ta 1") << RcdKinds::IaTa1() << QByteArray("10") << QByteArray(Trace::RcdIaTa);
    QTest::newRow("Ia/Ta 2") << RcdKinds::IaTa2() << QByteArray("10") << QByteArray(Trace::RcdIaTa);
    QTest::newRow("IEC Ia/Ta 1") << RcdKinds::IecIaTa1() << QByteArray("11") << QByteArray(Trace::RcdIecIaTa);
    QTest::newRow("IEC Ia/Ta 2") << RcdKinds::IecIaTa2() << QByteArray("11") << QByteArray(Trace::RcdIecIaTa);
}

void TestRcdTests::RunsToItsResult()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const QByteArray, type);
    QFETCH(const QByteArray, state);
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithQuickRcd(), directory));
    rcd.Run(kind);
    QCOMPARE(rcd.tester.LeftStates().count(state), 1);
    QCOMPARE(rcd.SentSince(kind.prepare), (QByteArrayList{kind.prepare, Frames::StartMeasurement}));
    QCOMPARE(rcd.FunctionState(), Completed);
    rcd.VerifyResults(kind);

    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("MeasurementStatus", WholeTest), Patience);
    QVERIFY(rcd.tester.HasTold("IsMeasurementRunning", {"1", "0"}));
    QVERIFY(rcd.tester.HasTold("TestSettings", {type}));
    QVERIFY(rcd.tester.HasTold("CurrentMeasurementType", {"0", type}));
    QCOMPARE(rcd.tester.LastSignalled("TestResults"), type);
    QCOMPARE(rcd.tester.LastSignalled("MeasurementFunctionStatus"), QByteArray("7")); // It tells no end.
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    QVERIFY(rcd.tester.HasStayedOnItsThread());
    rcd.Leave();
    QVERIFY(!rcd.tester->IsMeasurementRunning());
}

void TestRcdTests::CleansUpWithoutAResult()
{
    const RcdKind kind = RcdKinds::CleanUp();
    RcdMeasuring rcd;
    rcd.Run(kind);
    QCOMPARE(rcd.tester.LeftStates().count(Trace::RcdCleanUp), 1);
    QCOMPARE(rcd.SentSince(kind.prepare), (QByteArrayList{kind.prepare, Frames::StartMeasurement}));
    QTRY_COMPARE_WITH_TIMEOUT(rcd.FunctionState(), Completed, Patience); // On its own.
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("MeasurementStatus", WholeTest), Patience);
    QCOMPARE(rcd.tester.Signalled("IsMeasurementRunning"), QByteArrayList());
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    QCOMPARE(rcd.tester->TestResults()->GetMeasurementType(), MeasurementType::Monitoring);
    rcd.Leave();
}

void TestRcdTests::UbReIsPreparedBeforehand()
{
    const RcdKind kind = RcdKinds::UbRe();
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithQuickRcd(), directory));
    rcd.Prepare(*kind.settings);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester->MeasurementFunctionStatus(), FunctionState::Prepared, Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.SentSince(kind.prepare), QByteArrayList{kind.prepare});
    QCOMPARE(rcd.EndedRuns(), 0);
    QVERIFY(!rcd.tester->IsMeasurementRunning());

    rcd.tester->StartMeasurement();
    rcd.AwaitEnd();
    QCOMPARE(rcd.SentSince(kind.prepare),
             (QByteArrayList{kind.prepare, kind.prepare, Frames::StartMeasurement}));
    rcd.VerifyResults(kind);
    const QByteArrayList preparedFirst{"-1", "1", "2", "0", "1", "2", "3", "4", "7", "-1"};
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("MeasurementStatus", preparedFirst), Patience);
    QVERIFY(rcd.tester.HasTold("IsMeasurementRunning", {"1", "0"}));
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    rcd.Leave();
}

QTEST_GUILESS_MAIN(TestRcdTests)
#include "tst_rcdtests.moc"
