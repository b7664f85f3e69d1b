#include "integration/updating.h"

using Simulator::Scenario;
using Vesmar::OperationState;

/// Firmware updates of an enabled tester.
class TestUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ImageArrivesByteForByte();
    void InstrumentInUpdateModeWaitsToBeUpdated();
    void InstrumentThatStaysInUpdateModeWaitsForTheNextUpdate();
    void InstrumentThatComesBackInMode2IsRestarted();
    void CallDuringAnUpdateIsForgottenWithIt();
};

void TestUpdate::ImageArrivesByteForByte()
{
    UpdateBench bench;
    bench.Connect();
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.05"));
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("OperationStatus", 4);

    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), WholeOperation));
    QVERIFY(TellOf(bench.tester.Signalled("OperationProgress"), {"33", "66", "100"}));
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList());
    const QByteArrayList expected = QByteArrayList{Frames::ChangeToUpdateMode, Frames::ReadStatus} +
                                    UpdateRequests(image) + QByteArrayList{Frames::ReadStatus} +
                                    Frames::FirstRequests();
    QTRY_COMPARE_WITH_TIMEOUT(bench.SentSince(Frames::ChangeToUpdateMode).mid(0, expected.size()), expected,
                              Patience);

    bench.AwaitSignal("DeviceInformation", 2);
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.06"));
    QTRY_COMPARE_WITH_TIMEOUT(
        bench.tester.EnteredStates(),
        (QByteArrayList{Trace::Monitoring, Trace::Awaiting, Trace::Updating, Trace::Monitoring}), Patience);
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QVERIFY(bench.tester.HasStayedOnItsThread());
}

void TestUpdate::InstrumentInUpdateModeWaitsToBeUpdated()
{
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    QTRY_VERIFY_WITH_TIMEOUT(bench.CountSent(Frames::ReadStatus) >= 6, Patience);
    QCOMPARE(bench.tester.EnteredStates(), QByteArrayList{Trace::Awaiting});
    QCOMPARE(bench.tester.Signalled("OperationStatus"), QByteArrayList());

    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), WholeOperation));
    QCOMPARE(bench.tester.Signalled("OperationProgress"), QByteArrayList{"100"});
    QCOMPARE(bench.CountSent(Frames::ChangeToUpdateMode), 0);
}

void TestUpdate::InstrumentThatStaysInUpdateModeWaitsForTheNextUpdate()
{
    UpdateBench bench(Scenario::StaysInUpdateMode);
    bench.ConnectInUpdateMode();
    const QByteArray first = ImageOf(1);
    QVERIFY(bench.Update(first));
    bench.AwaitSignal("OperationStatus", 4);
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.instrument.Firmware(), first);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), WholeOperation));
    const int statusesSoFar = bench.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(bench.CountSent(Frames::ReadStatus) > statusesSoFar + 3, Patience);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);

    bench.instrument.SetScenario(Scenario::None);
    const QByteArray second = ImageOf(2, 1);
    QVERIFY(bench.Update(second));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), second);
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus").mid(4), WholeOperation));
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestUpdate::InstrumentThatComesBackInMode2IsRestarted()
{
    UpdateBench bench(Scenario::ComesBackInMode2);
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);

    QCOMPARE(bench.instrument.Firmware(), image);
    QCOMPARE(bench.tester.EnteredStates(),
             (QByteArrayList{Trace::Awaiting, Trace::Updating, Trace::Restarting, Trace::Monitoring}));
    const QByteArrayList afterwards =
        QByteArrayList{Frames::ReadStatus, Frames::ChangeToNormalMode, Frames::ReadStatus} +
        Frames::FirstRequests();
    const QByteArrayList expected = UpdateRequests(image) + afterwards;
    QCOMPARE(bench.SentSince(Frames::InitializeUpdate).mid(0, expected.size()), expected);
    QVERIFY(TellOf(bench.tester.Signalled("TesterMode"), {"3", "2", "0"}));
    QVERIFY(TellOf(bench.tester.Signalled("OperationStatus"), WholeOperation));
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestUpdate::CallDuringAnUpdateIsForgottenWithIt()
{
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("OperationProgress", 1);
    QCOMPARE(bench.tester->OperationStatus(), OperationState::InProgress);
    QVERIFY(bench.Update(ImageOf(2, 1)));
    bench.AwaitState(Trace::Monitoring);

    const int statusesSoFar = bench.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(bench.CountSent(Frames::ReadStatus) > statusesSoFar + 3, Patience);
    QCOMPARE(bench.instrument.Firmware(), image);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);
    QVERIFY(TellOf(bench.tester.Signalled("OperationProgress"), {"33", "66", "100"}));
}

QTEST_GUILESS_MAIN(TestUpdate)
#include "tst_update.moc"
