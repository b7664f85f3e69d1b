#include "integration/rcdmeasuring.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;

namespace
{

constexpr int Running = 7;

} // namespace

/// Aborts, and leaving measurement mode, while a test runs at the instrument.
class TestRcdRunAborts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void IsHeededWhenTheTestFallsSilent_data();
    void IsHeededWhenTheTestFallsSilent();
    void CleanUpGoesOn();
    void LeavingTheModeAloneStopsTheCleanUp();
};

void TestRcdRunAborts::IsHeededWhenTheTestFallsSilent_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("Ub/Re") << RcdKinds::UbRe() << QByteArray("520"); // Its own error comes first.
    QTest::newRow("Ia/Ta") << RcdKinds::IaTa1() << QByteArray("521");
    QTest::newRow("IEC Ia/Ta") << RcdKinds::IecIaTa1() << QByteArray("521");
}

void TestRcdRunAborts::IsHeededWhenTheTestFallsSilent()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const QByteArray, error);
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithEndlessRcd(), directory));
    rcd.Start(kind);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester->MeasurementFunctionStatus(), FunctionState::Running, Patience);
    QVERIFY(rcd.tester->IsMeasurementRunning());
    rcd.tester->AbortMeasurement();
    const int statuses = rcd.instrument.SentUnasked().size();
    QTRY_VERIFY_WITH_TIMEOUT(rcd.instrument.SentUnasked().size() > statuses + 5, Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Running));

    rcd.instrument.Unplug(); // It runs on, unheard.
    rcd.AwaitEnd();
    rcd.instrument.Plug();
    QCOMPARE(rcd.tester.ErrorCode(), error);
    QVERIFY(!rcd.tester->IsMeasurementRunning());
    QCOMPARE(rcd.FunctionState(), Running);
    QCOMPARE(rcd.CountSent(Frames::StopMeasurement), 0);
    QCOMPARE(rcd.CountSent(Frames::StartMeasurement), 1);
    rcd.Leave();
}

void TestRcdRunAborts::CleanUpGoesOn()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Simulator::Scenario::RcdCheck, 3);
    rcd.Start(RcdKinds::CleanUp());
    QTRY_VERIFY_WITH_TIMEOUT(rcd.CountSent(Frames::ReadMeasurement) > 0, Patience);
    rcd.tester->AbortMeasurement();
    rcd.instrument.ClearRequests();
    QTRY_VERIFY_WITH_TIMEOUT(rcd.CountSent(Frames::ReadMeasurement) > 3, Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Prepared));
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    rcd.Leave();
    QCOMPARE(rcd.EndedRuns(), 1);
    QVERIFY(rcd.CountSent(Frames::StopMeasurement) > 0);
}

void TestRcdRunAborts::LeavingTheModeAloneStopsTheCleanUp()
{
    RcdMeasuring rcd(WithEndlessRcd());
    rcd.Run(RcdKinds::CleanUp());
    QCOMPARE(rcd.FunctionState(), Running);
    rcd.Leave();
    QCOMPARE(rcd.SentSince(Frames::StartMeasurement).value(1), QByteArray(Frames::StopMeasurement));
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

QTEST_GUILESS_MAIN(TestRcdRunAborts)
#include "tst_rcdrunaborts.moc"
