#include "integration/updating.h"

using Simulator::Scenario;
using Vesmar::OperationState;

Q_DECLARE_METATYPE(Simulator::Scenario)

/// Firmware updates of a disabled tester, which are over when the call returns.
class TestSynchronousUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ImageArrivesByteForByte();
    void RefusalMakesItFail_data();
    void RefusalMakesItFail();
    void FailedUpdateCanBeRepeatedByTheLink();
    void InstrumentThatStaysInUpdateModeCanBeUpdatedAgain();
    void InstrumentThatComesBackInMode2IsRestartedByTheLink();
};

void TestSynchronousUpdate::ImageArrivesByteForByte()
{
    UpdateBench bench;
    const QByteArray image = ImageOf(3);
    QVERIFY(bench.Update(image));
    QCOMPARE(bench.instrument.Firmware(), image);
    QCOMPARE(bench.tester.Signalled("OperationStatus"), (QByteArrayList{"2", "3"}));
    QCOMPARE(bench.tester.Signalled("OperationProgress"), (QByteArrayList{"33", "66", "100"}));
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList());
    QCOMPARE(bench.instrument.Sent(), (QByteArrayList{Frames::ReadStatus, Frames::ChangeToUpdateMode} +
                                       UpdateRequests(image) + QByteArrayList{Frames::ReadStatus}));
    QCOMPARE(bench.tester.EnteredStates(), QByteArrayList());
    QVERIFY(!bench.tester->IsEnabled());

    bench.Connect();
    QCOMPARE(bench.tester->DeviceInformation()->Version, QStringLiteral("1.06"));
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);
}

void TestSynchronousUpdate::RefusalMakesItFail_data()
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

void TestSynchronousUpdate::RefusalMakesItFail()
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
    QCOMPARE(bench.tester.Signalled("ErrorCode"), QByteArrayList{error});
    QCOMPARE(bench.instrument.Firmware(), QByteArray());
    QCOMPARE(bench.instrument.Status().mode, mode);
}

void TestSynchronousUpdate::FailedUpdateCanBeRepeatedByTheLink()
{
    UpdateBench bench(Scenario::RefusesConfirmation);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(2);
    QVERIFY(!bench.Update(image));
    bench.instrument.SetScenario(Scenario::None);
    bench.tester->Enable();
    bench.AwaitState(Trace::Awaiting);
    QCOMPARE(bench.CountSent(Frames::InitializeUpdate), 1);
    QVERIFY(bench.Update(image));
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.instrument.Firmware(), image);
}

void TestSynchronousUpdate::InstrumentThatStaysInUpdateModeCanBeUpdatedAgain()
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
    QCOMPARE(bench.CountSent(Frames::ChangeToUpdateMode), 0);
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QCOMPARE(bench.tester.Signalled("OperationStatus"), (QByteArrayList{"2", "3", "2", "3"}));
}

void TestSynchronousUpdate::InstrumentThatComesBackInMode2IsRestartedByTheLink()
{
    UpdateBench bench(Scenario::ComesBackInMode2);
    bench.instrument.SetMode(3);
    const QByteArray image = ImageOf(1);
    QVERIFY(bench.Update(image));
    QCOMPARE(static_cast<int>(bench.tester->TesterMode()), 2);
    QCOMPARE(bench.CountSent(Frames::ChangeToNormalMode), 0);
    bench.tester->Enable();
    bench.AwaitState(Trace::Monitoring);
    QCOMPARE(bench.CountSent(Frames::ChangeToNormalMode), 1);
    QCOMPARE(static_cast<int>(bench.tester->TesterMode()), 0);
}

QTEST_GUILESS_MAIN(TestSynchronousUpdate)
#include "tst_synchronousupdate.moc"
