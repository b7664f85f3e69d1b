#include "integration/updating.h"

using Simulator::Scenario;
using Vesmar::OperationState;

Q_DECLARE_METATYPE(Simulator::Scenario)

constexpr char Recovery[] = "COMMUNICATION RECOVERY";

/// Firmware updates of an enabled tester that do not get to their end.
class TestFailedUpdates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RefusedUpdateModeIsTriedUntilItIsTaken();
    void RefusalEndsTheUpdateInUpdateMode_data();
    void RefusalEndsTheUpdateInUpdateMode();
    void UnusableDataEndTheUpdateInUpdateMode_data();
    void UnusableDataEndTheUpdateInUpdateMode();
    void UpdateCanBeAskedForAgain();
    void DisableInTheMiddleLeavesTheMachineUsable();
};

void TestFailedUpdates::RefusedUpdateModeIsTriedUntilItIsTaken()
{
    UpdateBench bench(Scenario::RefusesUpdateMode);
    bench.Connect();
    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    QTRY_VERIFY_WITH_TIMEOUT(bench.CountSent(Frames::ChangeToUpdateMode) >= 6, Patience); // two requests
    QTRY_VERIFY_WITH_TIMEOUT(bench.tester.Signalled("ErrorCode").contains("300"), Patience);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 0);
    QCOMPARE(bench.tester.Signalled("OperationStatus"), QByteArrayList());

    bench.instrument.SetScenario(Scenario::None);
    bench.AwaitSignal("OperationStatus", 4);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), WholeOperation));
    QTRY_COMPARE_WITH_TIMEOUT(bench.tester.LastSignalled("ErrorCode"), QByteArray("15"), Patience);
}

void TestFailedUpdates::RefusalEndsTheUpdateInUpdateMode_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<QByteArrayList>("status");
    QTest::addColumn<QByteArrayList>("progress");
    QTest::addColumn<QByteArrayList>("error");
    QTest::addColumn<int>("accepted");
    const QByteArrayList begun{"1", "2", "0"};
    QTest::newRow("initialization") << Scenario::RefusesInitialize << QByteArrayList{"1", "0"}
                                    << QByteArrayList() << QByteArrayList{"303", "103", "15"} << 0;
    QTest::newRow("second sector") << Scenario::RefusesSector << begun << QByteArrayList{"33"}
                                   << QByteArrayList{"303", "103", "15"} << 2;
    QTest::newRow("confirmation") << Scenario::RefusesConfirmation << begun
                                  << QByteArrayList{"33", "66", "100"} << QByteArrayList{"304", "103", "15"}
                                  << 4;
}

void TestFailedUpdates::RefusalEndsTheUpdateInUpdateMode()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const QByteArrayList, status);
    QFETCH(const QByteArrayList, progress);
    QFETCH(const QByteArrayList, error);
    QFETCH(const int, accepted);
    UpdateBench bench(scenario, 2);
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("ErrorCode", 3);
    bench.AwaitState(Trace::Awaiting);

    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), status));
    QVERIFY(TellOf(bench.tester.Signalled("OperationProgress"), progress));
    QVERIFY(TellOf(bench.tester.Signalled("ErrorCode"), error));
    QCOMPARE(bench.tester.EnteredStates(),
             (QByteArrayList{Trace::Awaiting, Trace::Updating, Recovery, Trace::Awaiting}));
    const QByteArrayList requests = UpdateRequests(image);
    const QByteArray& refused = requests.at(accepted);
    const QByteArrayList expected =
        requests.mid(0, accepted) + QByteArrayList{refused, refused, refused, Frames::ReadStatus};
    QCOMPARE(bench.SentSince(Frames::InitializeUpdate).mid(0, expected.size()), expected);
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
    QCOMPARE(bench.instrument.Status().mode, 3);
}

void TestFailedUpdates::UnusableDataEndTheUpdateInUpdateMode_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QByteArray>("confirmation");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("image of 1000 bytes")
        << ImageOf(2).left(1000) << QByteArray("confirmation") << QByteArray("301");
    QTest::newRow("confirmation of 1 byte") << ImageOf(2) << QByteArray("c") << QByteArray("302");
}

void TestFailedUpdates::UnusableDataEndTheUpdateInUpdateMode()
{
    QFETCH(const QByteArray, image);
    QFETCH(const QByteArray, confirmation);
    QFETCH(const QByteArray, error);
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    QVERIFY(bench.tester->UpdateTester(image, confirmation));
    bench.AwaitSignal("ErrorCode", 2);
    QVERIFY(TellOf(bench.tester.Signalled("ErrorCode"), {error, "15"}));
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), {"1", "0"}));
    QCOMPARE(bench.tester.EnteredStates(),
             (QByteArrayList{Trace::Awaiting, Trace::Updating, Trace::Awaiting}));
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 0);
}

void TestFailedUpdates::UpdateCanBeAskedForAgain()
{
    UpdateBench bench(Scenario::RefusesSector, 1);
    bench.ConnectInUpdateMode();
    QVERIFY(bench.Update(ImageOf(1)));
    bench.AwaitSignal("ErrorCode", 3);
    bench.AwaitState(Trace::Awaiting);
    const int statusesSoFar = bench.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(bench.CountSent(Frames::ReadStatus) > statusesSoFar + 3, Patience);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);

    bench.instrument.SetScenario(Scenario::None);
    const QByteArray image = ImageOf(2, 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus").mid(3), WholeOperation));
}

void TestFailedUpdates::DisableInTheMiddleLeavesTheMachineUsable()
{
    constexpr int Sectors = 60;
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    QVERIFY(bench.Update(ImageOf(Sectors)));
    bench.AwaitSignal("OperationProgress", 2);
    bench.tester->Disable();
    QVERIFY(!bench.tester->IsEnabled());
    QVERIFY(bench.tester->OperationProgress() < 100);
    QVERIFY(bench.SentSince(Frames::InitializeUpdate).size() < Sectors); // The rest was given up.
    QCOMPARE(bench.tester->OperationStatus(), OperationState::Idle);
    QCOMPARE(bench.tester.ErrorCode(), QByteArray("303"));
    QCOMPARE(bench.instrument.Firmware(), QByteArray());

    bench.tester->Enable();
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);
    const QByteArray image = ImageOf(2, 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
}

QTEST_GUILESS_MAIN(TestFailedUpdates)
#include "tst_failedupdates.moc"
