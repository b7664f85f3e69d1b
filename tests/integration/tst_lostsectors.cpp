#include "integration/updating.h"

using Simulator::Scenario;

/// A sector of a firmware update that is never answered.
class TestLostSectors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EndsTheUpdateOfAnEnabledTester();
    void EndsTheUpdateOfADisabledTester();
};

/// The second of three sectors is sent three times, and nothing of the update after it.
static void CompareLoss(const UpdateBench& bench, const QByteArray& image)
{
    const QByteArrayList requests = UpdateRequests(image);
    QCOMPARE(
        bench.SentSince(Frames::InitializeUpdate).mid(0, 5),
        (QByteArrayList{requests.at(0), requests.at(1), requests.at(2), requests.at(2), requests.at(2)}));
    QCOMPARE(bench.CountSent(requests.constLast()), 0);
    QCOMPARE(bench.tester.Signalled("OperationProgress"), QByteArrayList{"33"});
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
}

void TestLostSectors::EndsTheUpdateOfAnEnabledTester()
{
    UpdateBench bench(Scenario::LosesSector, 2);
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("ErrorCode", 3);
    bench.AwaitState(Trace::Awaiting);
    CompareLoss(bench, image);
    QVERIFY(TellOf(bench.tester.Signalled("ErrorCode"), {"303", "103", "15"}));
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), {"1", "2", "0"}));
}

void TestLostSectors::EndsTheUpdateOfADisabledTester()
{
    UpdateBench bench(Scenario::LosesSector, 2);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(3);
    QVERIFY(!bench.Update(image));
    CompareLoss(bench, image);
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList{"303"});
}

QTEST_GUILESS_MAIN(TestLostSectors)
#include "tst_lostsectors.moc"
