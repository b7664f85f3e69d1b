#include "integration/updating.h"

using Simulator::Scenario;
using Vesmar::OperationState;

/// Firmware updates of an enabled tester, and of a disabled one, where they are over when the call returns.
class TestUpdating : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ImageArrivesByteForByte();
    void InstrumentInUpdateModeWaitsToBeUpdated();
    void InstrumentThatStaysInUpdateModeWaitsForTheNextUpdate();
    void InstrumentThatComesBackInMode2IsRestarted();
    void CallDuringAnUpdateIsForgottenWithIt();
    void RefusedUpdateModeIsTriedUntilItIsAccepted();
    void RefusalEndsTheUpdateInUpdateMode_data();
    void RefusalEndsTheUpdateInUpdateMode();
    void UnusableDataEndTheUpdateInUpdateMode_data();
    void UnusableDataEndTheUpdateInUpdateMode();
    void UpdateCanBeAskedForAgain();
    void DisableInTheMiddleLeavesTheMachineUsable();
    void LostSectorEndsTheUpdateOfAnEnabledTester();
    void LostSectorEndsTheUpdateOfADisabledTester();
    void DisabledTesterSendsTheImageByteForByte();
    void RefusalEndsTheUpdateOfADisabledTester_data();
    void RefusalEndsTheUpdateOfADisabledTester();
    void FailedUpdateCanBeRepeatedAfterEnabling();
    void InstrumentThatStaysInUpdateModeCanBeUpdatedAgain();
    void InstrumentThatComesBackInMode2IsRestartedAfterEnabling();
};

void TestUpdating::ImageArrivesByteForByte()
{
    UpdateBench bench;
    bench.Connect();
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.05"));
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("OperationStatus", 4);

    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation));
    QVERIFY(bench.tester.HasSignalled("OperationProgress", {"33", "66", "100"}));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
    const QByteArrayList expected = QByteArrayList{Wire::ChangeToUpdateMode, Wire::ReadStatus} +
                                    UpdateRequests(image) + QByteArrayList{Wire::ReadStatus} +
                                    Wire::FirstRequests;
    AWAIT_EQUAL(bench.SentSince(Wire::ChangeToUpdateMode).mid(0, expected.size()), expected);

    bench.AwaitSignal("DeviceInformation", 2);
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.06"));
    AWAIT_EQUAL(bench.tester.EnteredStates(),
                (QByteArrayList{Trace::Monitoring, Trace::Awaiting, Trace::Updating, Trace::Monitoring}));
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QVERIFY(bench.tester.HasStayedOnItsThread());
}

void TestUpdating::InstrumentInUpdateModeWaitsToBeUpdated()
{
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    AWAIT(bench.CountSent(Wire::ReadStatus) >= 6);
    QCOMPARE(bench.tester.EnteredStates(), QByteArrayList{Trace::Awaiting});
    QCOMPARE(bench.tester.Signalled("OperationStatus"), QByteArrayList());

    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation));
    QCOMPARE(bench.tester.Signalled("OperationProgress"), QByteArrayList{"100"});
    QCOMPARE(bench.CountSent(Wire::ChangeToUpdateMode), 0);
}

void TestUpdating::InstrumentThatStaysInUpdateModeWaitsForTheNextUpdate()
{
    UpdateBench bench(Scenario::StaysInUpdateMode);
    bench.ConnectInUpdateMode();
    const QByteArray first = ImageOf(1);
    QVERIFY(bench.Update(first));
    bench.AwaitSignal("OperationStatus", 4);
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.instrument.Firmware(), first);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation));
    bench.AwaitMoreRequests(Wire::ReadStatus, 4);
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);

    bench.instrument.SetScenario(Scenario::None);
    const QByteArray second = ImageOf(2, 1);
    QVERIFY(bench.Update(second));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), second);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation, 4));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestUpdating::InstrumentThatComesBackInMode2IsRestarted()
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
        QByteArrayList{Wire::ReadStatus, Wire::ChangeToNormalMode, Wire::ReadStatus} + Wire::FirstRequests;
    const QByteArrayList expected = UpdateRequests(image) + afterwards;
    QCOMPARE(bench.SentSince(Wire::InitializeUpdate).mid(0, expected.size()), expected);
    QVERIFY(bench.tester.HasSignalled("TesterMode", {"3", "2", "0"}));
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestUpdating::CallDuringAnUpdateIsForgottenWithIt()
{
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("OperationProgress", 1);
    QCOMPARE(bench.tester->OperationStatus(), OperationState::InProgress);
    QVERIFY(bench.Update(ImageOf(2, 1)));
    bench.AwaitState(Trace::Monitoring);

    bench.AwaitMoreRequests(Wire::ReadStatus, 4);
    QCOMPARE(bench.instrument.Firmware(), image);
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);
    QVERIFY(bench.tester.HasSignalled("OperationProgress", {"33", "66", "100"}));
}

void TestUpdating::RefusedUpdateModeIsTriedUntilItIsAccepted()
{
    UpdateBench bench(Scenario::RefusesUpdateMode);
    bench.Connect();
    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    AWAIT(bench.CountSent(Wire::ChangeToUpdateMode) >= 6); // These are two requests.
    AWAIT(bench.tester.Errors().contains("300"));
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 0);
    QCOMPARE(bench.tester.Signalled("OperationStatus"), QByteArrayList());

    bench.instrument.SetScenario(Scenario::None);
    bench.AwaitSignal("OperationStatus", 4);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation));
    AWAIT_EQUAL(bench.tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestUpdating::RefusalEndsTheUpdateInUpdateMode_data()
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

void TestUpdating::RefusalEndsTheUpdateInUpdateMode()
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

    QVERIFY(bench.tester.HasSignalled("OperationStatus", status));
    QVERIFY(bench.tester.HasSignalled("OperationProgress", progress));
    QVERIFY(bench.tester.HasSignalled("ErrorCode", error));
    QCOMPARE(bench.tester.EnteredStates(),
             (QByteArrayList{Trace::Awaiting, Trace::Updating, Trace::Recovery, Trace::Awaiting}));
    const QByteArrayList requests = UpdateRequests(image);
    const QByteArray& refused = requests.at(accepted);
    const QByteArrayList expected =
        requests.mid(0, accepted) + QByteArrayList{refused, refused, refused, Wire::ReadStatus};
    QCOMPARE(bench.SentSince(Wire::InitializeUpdate).mid(0, expected.size()), expected);
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
    QCOMPARE(bench.instrument.Status().mode, 3);
}

void TestUpdating::UnusableDataEndTheUpdateInUpdateMode_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<QByteArray>("confirmation");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("image of 1000 bytes")
        << ImageOf(2).left(1000) << QByteArray("confirmation") << QByteArray("301");
    QTest::newRow("confirmation of 1 byte") << ImageOf(2) << QByteArray("c") << QByteArray("302");
}

void TestUpdating::UnusableDataEndTheUpdateInUpdateMode()
{
    QFETCH(const QByteArray, image);
    QFETCH(const QByteArray, confirmation);
    QFETCH(const QByteArray, error);
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    QVERIFY(bench.tester->UpdateTester(image, confirmation));
    bench.AwaitSignal("ErrorCode", 2);
    QVERIFY(bench.tester.HasSignalled("ErrorCode", {error, "15"}));
    QVERIFY(bench.tester.HasSignalled("OperationStatus", {"1", "0"}));
    QCOMPARE(bench.tester.EnteredStates(),
             (QByteArrayList{Trace::Awaiting, Trace::Updating, Trace::Awaiting}));
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 0);
}

void TestUpdating::UpdateCanBeAskedForAgain()
{
    UpdateBench bench(Scenario::RefusesSector, 1);
    bench.ConnectInUpdateMode();
    QVERIFY(bench.Update(ImageOf(1)));
    bench.AwaitSignal("ErrorCode", 3);
    bench.AwaitState(Trace::Awaiting);
    bench.AwaitMoreRequests(Wire::ReadStatus, 4);
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);

    bench.instrument.SetScenario(Scenario::None);
    const QByteArray image = ImageOf(2, 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
    QVERIFY(bench.tester.HasSignalled("OperationStatus", WholeOperation, 3));
}

void TestUpdating::DisableInTheMiddleLeavesTheMachineUsable()
{
    constexpr int Sectors = 60;
    UpdateBench bench;
    bench.ConnectInUpdateMode();
    QVERIFY(bench.Update(ImageOf(Sectors)));
    bench.AwaitSignal("OperationProgress", 2);
    bench.tester->Disable();
    QVERIFY(!bench.tester->IsEnabled());
    QVERIFY(bench.tester->OperationProgress() < 100);
    QVERIFY(bench.SentSince(Wire::InitializeUpdate).size() < Sectors); // The rest was given up.
    QCOMPARE(bench.tester->OperationStatus(), OperationState::Idle);
    QCOMPARE(bench.tester.ErrorCode(), QByteArray("303"));
    QCOMPARE(bench.instrument.Firmware(), QByteArray());

    bench.tester->Enable();
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);
    const QByteArray image = ImageOf(2, 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
}

/// The second of three sectors was sent three times, and nothing of the update after it.
static void CompareLoss(const UpdateBench& bench, const QByteArray& image)
{
    const QByteArrayList requests = UpdateRequests(image);
    QCOMPARE(
        bench.SentSince(Wire::InitializeUpdate).mid(0, 5),
        (QByteArrayList{requests.at(0), requests.at(1), requests.at(2), requests.at(2), requests.at(2)}));
    QCOMPARE(bench.CountSent(requests.constLast()), 0);
    QCOMPARE(bench.tester.Signalled("OperationProgress"), QByteArrayList{"33"});
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
}

void TestUpdating::LostSectorEndsTheUpdateOfAnEnabledTester()
{
    UpdateBench bench(Scenario::LosesSector, 2);
    bench.ConnectInUpdateMode();
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    bench.AwaitSignal("ErrorCode", 3);
    bench.AwaitState(Trace::Awaiting);
    CompareLoss(bench, image);
    QVERIFY(bench.tester.HasSignalled("ErrorCode", {"303", "103", "15"}));
    QVERIFY(bench.tester.HasSignalled("OperationStatus", {"1", "2", "0"}));
}

void TestUpdating::LostSectorEndsTheUpdateOfADisabledTester()
{
    UpdateBench bench(Scenario::LosesSector, 2);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(3);
    QVERIFY(!bench.Update(image));
    CompareLoss(bench, image);
    QCOMPARE(bench.tester.Errors(), QByteArrayList{"303"});
}

void TestUpdating::DisabledTesterSendsTheImageByteForByte()
{
    UpdateBench bench;
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    QCOMPARE(bench.instrument.Firmware(), image);
    QCOMPARE(bench.tester.Signalled("OperationStatus"), (QByteArrayList{"2", "3"}));
    QCOMPARE(bench.tester.Signalled("OperationProgress"), (QByteArrayList{"33", "66", "100"}));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
    QCOMPARE(bench.instrument.Sent(), (QByteArrayList{Wire::ReadStatus, Wire::ChangeToUpdateMode} +
                                       UpdateRequests(image) + QByteArrayList{Wire::ReadStatus}));
    QCOMPARE(bench.tester.EnteredStates(), QByteArrayList());
    QVERIFY(!bench.tester->IsEnabled());

    bench.Connect();
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.06"));
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);
}

void TestUpdating::RefusalEndsTheUpdateOfADisabledTester_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArrayList>("status");
    QTest::addColumn<QByteArrayList>("progress");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("update mode") << Scenario::RefusesUpdateMode << 0 << QByteArrayList() << QByteArrayList()
                                 << QByteArray("300");
    QTest::newRow("initialization") << Scenario::RefusesInitialize << 3 << QByteArrayList()
                                    << QByteArrayList() << QByteArray("303");
    QTest::newRow("second sector") << Scenario::RefusesSector << 3 << QByteArrayList{"2"}
                                   << QByteArrayList{"33"} << QByteArray("303");
    QTest::newRow("confirmation") << Scenario::RefusesConfirmation << 3 << QByteArrayList{"2"}
                                  << QByteArrayList{"33", "66", "100"} << QByteArray("304");
}

void TestUpdating::RefusalEndsTheUpdateOfADisabledTester()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const int, mode);
    QFETCH(const QByteArrayList, status);
    QFETCH(const QByteArrayList, progress);
    QFETCH(const QByteArray, error);
    UpdateBench bench(scenario, 2);
    bench.instrument.SetMode(mode);
    QVERIFY(!bench.Update(ImageOf(3)));
    QCOMPARE(bench.tester.Signalled("OperationStatus"), status);
    QCOMPARE(bench.tester.Signalled("OperationProgress"), progress);
    QCOMPARE(bench.tester.Errors(), QByteArrayList{error});
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
    QCOMPARE(bench.instrument.Status().mode, mode);
}

void TestUpdating::FailedUpdateCanBeRepeatedAfterEnabling()
{
    UpdateBench bench(Scenario::RefusesConfirmation);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(2);
    QVERIFY(!bench.Update(image));
    bench.instrument.SetScenario(Scenario::None);
    bench.tester->Enable();
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.CountSent(Wire::InitializeUpdate), 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
}

void TestUpdating::InstrumentThatStaysInUpdateModeCanBeUpdatedAgain()
{
    UpdateBench bench(Scenario::StaysInUpdateMode);
    bench.instrument.SetMode(3);
    const QByteArray first = ImageOf(1);
    QVERIFY(bench.Update(first));
    QCOMPARE(bench.instrument.Firmware(), first);
    QCOMPARE(static_cast<int>(bench.tester->TesterMode()), 3);

    bench.instrument.SetScenario(Scenario::None);
    const QByteArray second = ImageOf(1, 1);
    QVERIFY(bench.Update(second));
    QCOMPARE(bench.instrument.Firmware(), second);
    QCOMPARE(bench.CountSent(Wire::ChangeToUpdateMode), 0);
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QCOMPARE(bench.tester.Signalled("OperationStatus"), (QByteArrayList{"2", "3", "2", "3"}));
}

void TestUpdating::InstrumentThatComesBackInMode2IsRestartedAfterEnabling()
{
    UpdateBench bench(Scenario::ComesBackInMode2);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    QCOMPARE(static_cast<int>(bench.tester->TesterMode()), 2);
    QCOMPARE(bench.CountSent(Wire::ChangeToNormalMode), 0);
    bench.tester->Enable();
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.CountSent(Wire::ChangeToNormalMode), 1);
    QCOMPARE(static_cast<int>(bench.tester->TesterMode()), 0);
}

QTEST_GUILESS_MAIN(TestUpdating)
#include "tst_updating.moc"
