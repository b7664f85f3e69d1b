#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/rpesettings.h>

#include "integration/rcdmeasuring.h"

using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

namespace
{

constexpr char PrepareRpe[] = "5002050000ffffffffe963";
constexpr int LongTime = 600;
constexpr int Rpe = 2;
constexpr int Prepared = 4;

} // namespace

class TestRcdSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OneFollowsAnotherWithItsRe();
    void TestThatBeginsAnewTellsSo();
    void OrdinaryMeasurementGivesWayAndComesBack();
};

void TestRcdSequences::OneFollowsAnotherWithItsRe()
{
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithQuickRcd(), directory));
    rcd.Run(RcdKinds::UbRe());
    const auto* results = dynamic_cast<const Vesmar::RCDResults*>(rcd.tester->TestResults());
    QVERIFY(results != nullptr);
    const QByteArray re = rcd.instrument.SentUnasked().last().left(4);
    const RcdKind second = RcdKinds::IaTa1();
    dynamic_cast<Vesmar::RCDSettings*>(second.settings.get())->SetRe(results->_re);

    rcd.Run(second);
    const QByteArrayList both = rcd.SentSince(RcdKinds::UbRe().prepare);
    QCOMPARE(both.size(), 4);
    QCOMPARE(QByteArray::fromHex(both.at(2)).mid(5, 4), re); // Behind the letter and the options.
    QCOMPARE(both.at(3), QByteArray(Frames::StartMeasurement));
    rcd.VerifyResults(second);

    rcd.Run(RcdKinds::IecIaTa2());
    rcd.VerifyResults(RcdKinds::IecIaTa2());
    QCOMPARE(rcd.CountSent(Frames::StopMeasurement), 0);
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("IsMeasurementRunning", {"1", "0", "1", "0", "1", "0"}),
                             Patience);
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestRcdSequences::TestThatBeginsAnewTellsSo()
{
    const RcdKind kind = RcdKinds::IecIaTa1();
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithQuickRcd(), directory));
    rcd.instrument.SetScenario(Simulator::Scenario::RcdErrorOnce, 5);
    rcd.Run(kind);
    rcd.VerifyResults(kind);
    QCOMPARE(rcd.SentSince(kind.prepare), (QByteArrayList{kind.prepare, Frames::StartMeasurement,
                                                          kind.prepare, Frames::StartMeasurement}));
    // The new beginning finds the error in the status once more, before the preparation has taken it away.
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("ErrorCode", {"525", "15", "525", "15"}), Patience);
    QVERIFY(rcd.tester.HasTold("IsMeasurementRunning", {"1", "0"}));
}

void TestRcdSequences::OrdinaryMeasurementGivesWayAndComesBack()
{
    const auto ordinary = ForSeconds<Vesmar::RPESettings>(LongTime);
    const QTemporaryDir directory;
    RcdMeasuring rcd(WithLog(WithQuickRcd(), directory));
    rcd.Prepare(*ordinary);
    QTRY_VERIFY_WITH_TIMEOUT(rcd.IsInState(MeasurementState::Prepared), Patience);

    rcd.Run(RcdKinds::IaTa1());
    rcd.VerifyResults(RcdKinds::IaTa1());
    rcd.tester->PrepareMeasurement(*ordinary);
    QTRY_VERIFY_WITH_TIMEOUT(rcd.IsInState(MeasurementState::Prepared), Patience);
    QCOMPARE(rcd.instrument.Status().function, Rpe);
    QCOMPARE(rcd.FunctionState(), Prepared);
    QCOMPARE(rcd.SentSince(PrepareRpe),
             (QByteArrayList{PrepareRpe, RcdKinds::IaTa1().prepare, Frames::StartMeasurement, PrepareRpe}));

    rcd.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester->TestResults()->GetMeasurementType(), MeasurementType::RPE,
                              Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Measuring));
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    rcd.Leave();
}

QTEST_GUILESS_MAIN(TestRcdSequences)
#include "tst_rcdsequences.moc"
