#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

#include "integration/measuring.h"

using Simulator::Scenario;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;

Q_DECLARE_METATYPE(Simulator::Scenario)

namespace
{

constexpr char PrepareRpe[] = "5002050000ffffffffe963";
constexpr char PrepareNothing[] = "50f55a";
constexpr int TriesOfARequest = 3;
constexpr int LongTime = 600;
constexpr int Terminated = 9;

/// The library's codes last until the next status; slow answers make that long enough to be seen.
constexpr std::chrono::milliseconds SlowAnswer{400};

} // namespace

class TestMeasurementScenarios : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FailureIsReportedAndAborted_data();
    void FailureIsReportedAndAborted();
    void PrepareErrorGoesRound();
    void SettingsThatAreRefusedLoseTheLinkForAMoment_data();
    void SettingsThatAreRefusedLoseTheLinkForAMoment();
    void FunctionThatIsNeverPreparedWaits();
    void FunctionThatStaysStartingWaits();
    void FastSingleDeliversItsResult();
    void FunctionThatRunsOnIsStoppedAgain();
};

void TestMeasurementScenarios::FailureIsReportedAndAborted_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<bool>("isSingle");
    QTest::addColumn<int>("functionState");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("prepare error") << Scenario::PrepareError << false << 3 << QByteArray("200");
    QTest::newRow("start error") << Scenario::StartError << false << 6 << QByteArray("201");
    QTest::newRow("falls back") << Scenario::FallsBack << false << 4 << QByteArray("202");
    QTest::newRow("continuous without a result")
        << Scenario::EndsWithoutResult << false << 9 << QByteArray("202");
    QTest::newRow("single without a result") << Scenario::EndsWithoutResult << true << 9 << QByteArray("202");
}

void TestMeasurementScenarios::FailureIsReportedAndAborted()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const bool, isSingle);
    QFETCH(const int, functionState);
    QFETCH(const QByteArray, error);
    Measuring measuring;
    measuring.instrument.SetScenario(scenario);
    Vesmar::RLNSettings single;
    const auto continuous = ForSeconds<Vesmar::RPESettings>(LongTime);
    measuring.Prepare(isSingle ? static_cast<Vesmar::MeasurementSettings&>(single) : *continuous);
    measuring.tester->StartMeasurement();
    const char* lastGoodRequest = scenario == Scenario::PrepareError ? PrepareRpe : Frames::StartMeasurement;
    QTRY_COMPARE_WITH_TIMEOUT(measuring.CountSent(lastGoodRequest), 1, Patience);
    measuring.instrument.SetAnswerAfter(SlowAnswer);

    QTRY_VERIFY_WITH_TIMEOUT(measuring.tester.Signalled("ErrorCode").contains(error), Patience);
    measuring.instrument.SetAnswerAfter(std::chrono::milliseconds(0));
    QTRY_VERIFY_WITH_TIMEOUT(measuring.HasEntered(Trace::Preparing, 2), Patience);
    QVERIFY(measuring.HasEntered(Trace::Aborting));
    QVERIFY(!measuring.HasEntered(Trace::Stopping));
    QVERIFY(!measuring.HasEntered(Trace::Recovery));
    QVERIFY(!measuring.tester->IsMeasurementRunning());
    QCOMPARE(measuring.FunctionState(), functionState);
    QCOMPARE(measuring.CountSent(lastGoodRequest), 1);
}

void TestMeasurementScenarios::PrepareErrorGoesRound()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::PrepareError);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    const QByteArrayList round{Trace::MeasurementMode, Trace::Preparing, Trace::Aborting};
    QTRY_VERIFY_WITH_TIMEOUT(measuring.States().size() >= 2 * round.size(), Patience);
    QCOMPARE(QByteArrayList(measuring.States().mid(0, 2 * round.size())), round + round);
    QCOMPARE(measuring.CountSent(PrepareRpe), 1);
}

void TestMeasurementScenarios::SettingsThatAreRefusedLoseTheLinkForAMoment_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<bool>("isBare");
    QTest::addColumn<QByteArray>("prepare");
    QTest::newRow("refused") << Scenario::RefusesPrepare << false << QByteArray(PrepareRpe);
    QTest::newRow("without a function") << Scenario::None << true << QByteArray(PrepareNothing);
}

void TestMeasurementScenarios::SettingsThatAreRefusedLoseTheLinkForAMoment()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const bool, isBare);
    QFETCH(const QByteArray, prepare);
    Measuring measuring;
    measuring.instrument.SetScenario(scenario);
    Vesmar::RPESettings settings;
    Vesmar::MeasurementSettings bare(Vesmar::MeasurementType::RPE, nullptr);
    measuring.Prepare(isBare ? bare : settings);
    QTRY_COMPARE_WITH_TIMEOUT(measuring.tester.Signalled("DeviceInformation").size(), 2, Patience);
    QCOMPARE(measuring.CountSent(prepare), TriesOfARequest);
    QVERIFY(measuring.HasEntered(Trace::Recovery));
    QVERIFY(!measuring.tester->GetIsMeasurementModeActive());
    QTRY_COMPARE_WITH_TIMEOUT(measuring.tester.Signalled("ErrorCode").size(), 2, Patience); // lost and found
    QCOMPARE(measuring.tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestMeasurementScenarios::FunctionThatIsNeverPreparedWaits()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::NeverPrepared);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(measuring.tester->MeasurementFunctionStatus(), FunctionState::Preparing,
                              Patience);
    const int statuses = measuring.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(measuring.CountSent(Frames::ReadStatus) > statuses + 3, Patience);
    QCOMPARE(measuring.States(), (QByteArrayList{Trace::MeasurementMode, Trace::Preparing}));
    QVERIFY(measuring.IsInState(MeasurementState::Preparing));
    QCOMPARE(measuring.CountSent(Frames::StartMeasurement), 0);
    QCOMPARE(measuring.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestMeasurementScenarios::FunctionThatStaysStartingWaits()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::StaysStarting);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(measuring.tester->MeasurementFunctionStatus(), FunctionState::Starting,
                              Patience);
    const int statuses = measuring.CountSent(Frames::ReadStatus);
    QTRY_VERIFY_WITH_TIMEOUT(measuring.CountSent(Frames::ReadStatus) > statuses + 3, Patience);
    QCOMPARE(measuring.States(), (QByteArrayList{Trace::MeasurementMode, Trace::Preparing, Trace::Starting}));
    QVERIFY(measuring.IsInState(MeasurementState::Starting));
    QCOMPARE(measuring.CountSent(Frames::StartMeasurement), 1);
    QCOMPARE(measuring.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestMeasurementScenarios::FastSingleDeliversItsResult()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::FastSingle);
    Vesmar::RLNSettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(
        measuring.States(),
        (QByteArrayList{Trace::MeasurementMode, Trace::Preparing, Trace::Starting, Trace::Single,
                        Trace::Stopping, Trace::MeasurementMode, Trace::Preparing}),
        Patience);
    QCOMPARE(measuring.tester->TestResults()->GetMeasurementType(), Vesmar::MeasurementType::RLN);
    QCOMPARE(measuring.CountSent(Frames::StopMeasurement), 0);
    QCOMPARE(measuring.tester.Signalled("IsMeasurementRunning"), QByteArrayList()); // Never seen to run.
    QCOMPARE(measuring.tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestMeasurementScenarios::FunctionThatRunsOnIsStoppedAgain()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::RunsOnAfterStop);
    const auto settings = ForSeconds<Vesmar::RPESettings>(1);
    measuring.Prepare(*settings);
    measuring.tester->StartMeasurement();
    QTRY_VERIFY_WITH_TIMEOUT(measuring.HasEntered(Trace::Preparing, 2), Patience);
    QVERIFY(measuring.CountSent(Frames::StopMeasurement) > 1);
    QVERIFY(measuring.HasEntered(Trace::Stopping));
    QVERIFY(!measuring.HasEntered(Trace::Aborting));
    QCOMPARE(measuring.FunctionState(), Terminated);
    QVERIFY(!measuring.tester->IsMeasurementRunning());
}

QTEST_GUILESS_MAIN(TestMeasurementScenarios)
#include "tst_measurementscenarios.moc"
