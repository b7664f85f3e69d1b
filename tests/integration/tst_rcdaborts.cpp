#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::MeasurementState;

Q_DECLARE_METATYPE(Simulator::Scenario)
Q_DECLARE_METATYPE(Vesmar::MeasurementState)

namespace
{

/// Slow answers make a phase last long enough to be aborted in.
constexpr std::chrono::milliseconds SlowAnswer{300};

} // namespace

/// Aborts in each phase up to the start. One instrument serves for all.
class TestRcdAborts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsThePhase_data();
    void EndsThePhase();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdAborts::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdAborts::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdAborts::EndsThePhase_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("number");
    QTest::addColumn<MeasurementState>("phase");
    QTest::addColumn<int>("functionState");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("Ub/Re idle") << RcdKinds::UbRe() << Scenario::StartTest << 13 << MeasurementState::Idle
                                << 0 << QByteArray("521");
    QTest::newRow("Ub/Re starting") << RcdKinds::UbRe() << Scenario::StartError << 1
                                    << MeasurementState::Starting << 4 << QByteArray("521");
    QTest::newRow("Ia/Ta idle") << RcdKinds::IaTa1() << Scenario::StartTest << 13 << MeasurementState::Idle
                                << 0 << QByteArray("521");
    QTest::newRow("Ia/Ta preparing") << RcdKinds::IaTa1() << Scenario::RefusesPrepare << 1
                                     << MeasurementState::Preparing << 0 << QByteArray("521");
    QTest::newRow("Ia/Ta prepared") << RcdKinds::IaTa1() << Scenario::NeverPrepared << 1
                                    << MeasurementState::Prepared << 1 << QByteArray("521");
    QTest::newRow("Ia/Ta starting") << RcdKinds::IaTa1() << Scenario::StartError << 1
                                    << MeasurementState::Starting << 4 << QByteArray("521");
    QTest::newRow("IEC Ia/Ta preparing") << RcdKinds::IecIaTa1() << Scenario::RefusesPrepare << 1
                                         << MeasurementState::Preparing << 0 << QByteArray("521");
    QTest::newRow("IEC Ia/Ta starting") << RcdKinds::IecIaTa1() << Scenario::StartError << 1
                                        << MeasurementState::Starting << 4 << QByteArray("521");
    QTest::newRow("IEC Ia/Ta with an error") << RcdKinds::IecIaTa1() << Scenario::RcdCheck << 10
                                             << MeasurementState::Prepared << 3 << QByteArray("507");
}

void TestRcdAborts::EndsThePhase()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const Scenario, scenario);
    QFETCH(const int, number);
    QFETCH(const MeasurementState, phase);
    QFETCH(const int, functionState);
    QFETCH(const QByteArray, error);
    _rcd->instrument.SetScenario(scenario, number);
    _rcd->instrument.ClearRequests();
    _rcd->Start(kind);
    _rcd->instrument.SetAnswerAfter(SlowAnswer);
    QTRY_VERIFY_WITH_TIMEOUT(_rcd->StartedRuns() > _rcd->EndedRuns() && _rcd->IsInState(phase), Patience);
    if (error == "507") {
        QTRY_COMPARE_WITH_TIMEOUT(_rcd->tester.ErrorCode(), error, Patience);
    }
    _rcd->tester->AbortMeasurement();
    _rcd->AwaitEnd();
    _rcd->instrument.SetAnswerAfter(std::chrono::milliseconds(0));
    QCOMPARE(_rcd->tester.ErrorCode(), error);
    QVERIFY(!_rcd->tester->IsMeasurementRunning());
    QCOMPARE(_rcd->FunctionState(), functionState);
    QCOMPARE(_rcd->CountSent(Frames::StopMeasurement), 0); // The instrument stops when the mode is left.
    _rcd->Leave();
    QCOMPARE(_rcd->CountSent(Frames::StopMeasurement) > 0, functionState != 0);
}

QTEST_GUILESS_MAIN(TestRcdAborts)
#include "tst_rcdaborts.moc"
