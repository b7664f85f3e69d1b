#include <utility>

#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/rpesettings.h>

#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

namespace
{

constexpr int Completed = 2;

/// What `MeasurementStatus` goes through in a test that was asked for at once.
const QByteArrayList WholeTest{"-1", "0", "1", "2", "3", "4", "7", "-1"};

constexpr int LongTime = 600;
constexpr int Rpe = 2;
constexpr int Prepared = 4;
constexpr int Running = 7;

} // namespace

/// Residual-current tests, each at an instrument of its own.
class TestRcd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TestRunsToItsResult_data();
    void TestRunsToItsResult();
    void CleansUpWithoutAResult();
    void UbReIsPreparedBeforehand();
    void OneTestFollowsAnotherWithItsRe();
    void TestThatBeginsAnewSignalsItsErrorAgain();
    void OrdinaryMeasurementGivesWayAndIsPreparedAgain();
    void ErrorEndsThePreparation_data();
    void ErrorEndsThePreparation();
    void FailedStartTestEndsThePreparation();
    void CheckObjectErrorsAreReportedAsTheyCome();
    void NextPreparationStopsWhatHasFailed();
    void NextPreparationReplacesTheWatchedOne();
    void TestThatIsNotReadyIsWatchedOn_data();
    void TestThatIsNotReadyIsWatchedOn();
    void SilenceEndsTheWatch();
    void AbortedTestStaysPrepared();
    void NextPreparationAnswersAnAbort();
    void AbortedPreparationBeginsAnew();
    void IecPreparationIsWithdrawnAfterAnError();
    void AbortOfARunCountsWhenItFallsSilent_data();
    void AbortOfARunCountsWhenItFallsSilent();
    void AbortedCleanUpGoesOn();
    void LeavingTheModeAloneStopsTheCleanUp();
    void LostLinkIsNoticedOnlyAfterTheTest();
};

void TestRcd::TestRunsToItsResult_data()
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

void TestRcd::TestRunsToItsResult()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const QByteArray, type);
    QFETCH(const QByteArray, state);
    RcdMeasuring rcd;
    rcd.Run(kind);
    QCOMPARE(rcd.tester.LeftStates().count(state), 1);
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare),
             (QByteArrayList{kind.prepare, Wire::StartMeasurement}));
    QCOMPARE(rcd.FunctionState(), Completed);
    rcd.VerifyResults(kind);

    AWAIT(rcd.tester.HasSignalled("MeasurementStatus", WholeTest));
    QVERIFY(rcd.tester.HasSignalled("IsMeasurementRunning", {"1", "0"}));
    QVERIFY(rcd.tester.HasSignalled("TestSettings", {type}));
    QVERIFY(rcd.tester.HasSignalled("CurrentMeasurementType", {"0", type}));
    QCOMPARE(rcd.tester.LastSignalled("TestResults"), type);
    QCOMPARE(rcd.tester.LastSignalled("MeasurementFunctionStatus"),
             QByteArray("7")); // The instrument does not report the end.
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    QVERIFY(rcd.tester.HasStayedOnItsThread());
    rcd.Leave();
    QVERIFY(!rcd.tester->IsMeasurementRunning());
}

void TestRcd::CleansUpWithoutAResult()
{
    const RcdKind kind = RcdKinds::CleanUp();
    RcdMeasuring rcd;
    rcd.Run(kind);
    QCOMPARE(rcd.tester.LeftStates().count(Trace::RcdCleanUp), 1);
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare),
             (QByteArrayList{kind.prepare, Wire::StartMeasurement}));
    AWAIT_EQUAL(rcd.FunctionState(), Completed); // The clean-up ends without a request.
    AWAIT(rcd.tester.HasSignalled("MeasurementStatus", WholeTest));
    QCOMPARE(rcd.tester.Signalled("IsMeasurementRunning"), QByteArrayList());
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    QCOMPARE(rcd.tester->TestResults()->GetMeasurementType(), MeasurementType::Monitoring);
    rcd.Leave();
}

void TestRcd::UbReIsPreparedBeforehand()
{
    const RcdKind kind = RcdKinds::UbRe();
    RcdMeasuring rcd;
    rcd.Prepare(*kind.settings);
    AWAIT_EQUAL(rcd.tester->MeasurementFunctionStatus(), FunctionState::Prepared);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare), QByteArrayList{kind.prepare});
    QCOMPARE(rcd.EndedRuns(), 0);
    QVERIFY(!rcd.tester->IsMeasurementRunning());

    rcd.tester->StartMeasurement();
    rcd.AwaitEnd();
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare),
             (QByteArrayList{kind.prepare, kind.prepare, Wire::StartMeasurement}));
    rcd.VerifyResults(kind);
    const QByteArrayList preparedFirst{"-1", "1", "2", "0", "1", "2", "3", "4", "7", "-1"};
    AWAIT(rcd.tester.HasSignalled("MeasurementStatus", preparedFirst));
    QVERIFY(rcd.tester.HasSignalled("IsMeasurementRunning", {"1", "0"}));
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    rcd.Leave();
}

void TestRcd::OneTestFollowsAnotherWithItsRe()
{
    RcdMeasuring rcd;
    rcd.Run(RcdKinds::UbRe());
    const auto* results = dynamic_cast<const Vesmar::RCDResults*>(rcd.tester->TestResults());
    QVERIFY(results != nullptr);
    const QByteArray re = rcd.instrument.SentUnasked().last().left(4);
    const RcdKind second = RcdKinds::IaTa1();
    dynamic_cast<Vesmar::RCDSettings*>(second.settings.get())->SetRe(results->_re);

    rcd.Run(second);
    const QByteArrayList both = rcd.SentBesidesStatusSince(RcdKinds::UbRe().prepare);
    QCOMPARE(both.size(), 4);
    QCOMPARE(both.at(2).mid(5, 4), re); // Re stands behind the letter and the options.
    QCOMPARE(both.at(3), Wire::StartMeasurement);
    rcd.VerifyResults(second);

    rcd.Run(RcdKinds::IecIaTa2());
    rcd.VerifyResults(RcdKinds::IecIaTa2());
    QCOMPARE(rcd.CountSent(Wire::StopMeasurement), 0);
    AWAIT(rcd.tester.HasSignalled("IsMeasurementRunning", {"1", "0", "1", "0", "1", "0"}));
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
}

void TestRcd::TestThatBeginsAnewSignalsItsErrorAgain()
{
    const RcdKind kind = RcdKinds::IecIaTa1();
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Simulator::Scenario::RcdErrorOnce, 5);
    rcd.Run(kind);
    rcd.VerifyResults(kind);
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare),
             (QByteArrayList{kind.prepare, Wire::StartMeasurement, kind.prepare, Wire::StartMeasurement}));
    // The new beginning finds the error in the status once more, before the preparation removes it.
    AWAIT(rcd.tester.HasSignalled("ErrorCode", {"525", "15", "525", "15"}));
    QVERIFY(rcd.tester.HasSignalled("IsMeasurementRunning", {"1", "0"}));
}

void TestRcd::OrdinaryMeasurementGivesWayAndIsPreparedAgain()
{
    const auto ordinary = ForSeconds<Vesmar::RPESettings>(LongTime);
    RcdMeasuring rcd;
    rcd.Prepare(*ordinary);
    rcd.AwaitState(MeasurementState::Prepared);

    rcd.Run(RcdKinds::IaTa1());
    rcd.VerifyResults(RcdKinds::IaTa1());
    rcd.tester->PrepareMeasurement(*ordinary);
    rcd.AwaitState(MeasurementState::Prepared);
    QCOMPARE(rcd.instrument.Status().function, Rpe);
    QCOMPARE(rcd.FunctionState(), Prepared);
    QCOMPARE(rcd.SentBesidesStatusSince(Wire::PrepareRpe),
             (QByteArrayList{Wire::PrepareRpe, RcdKinds::IaTa1().prepare, Wire::StartMeasurement,
                             Wire::PrepareRpe}));

    rcd.tester->StartMeasurement();
    AWAIT_EQUAL(rcd.tester->TestResults()->GetMeasurementType(), MeasurementType::RPE);
    QVERIFY(rcd.IsInState(MeasurementState::Measuring));
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    rcd.Leave();
}

void TestRcd::ErrorEndsThePreparation_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<int>("prepares");
    QTest::newRow("refused") << Scenario::RefusesPrepare << QByteArray("200") << 3;
    QTest::newRow("other function") << Scenario::RcdOtherFunction << QByteArray("398") << 1;
}

void TestRcd::ErrorEndsThePreparation()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const QByteArray, error);
    QFETCH(const int, prepares);
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(scenario);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    AWAIT_EQUAL(rcd.tester.ErrorCode(), error);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), prepares);
}

void TestRcd::FailedStartTestEndsThePreparation()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::StartTest, 13);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    AWAIT_EQUAL(rcd.tester.ErrorCode(), QByteArray("400"));
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.tester->StartTestStatus(), Vesmar::StartTestResult::Unknown);
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), 0);
}

void TestRcd::CheckObjectErrorsAreReportedAsTheyCome()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdCheck, 1);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    const std::pair<int, const char*> errors[] = {
        {1, "500"}, {2, "501"},   {3, "502"}, {4, "503"},  {5, "500"}, {7, "504"},
        {8, "505"}, {255, "500"}, {9, "506"}, {10, "507"}, {6, "500"}, {0, "15"},
    };
    for (const auto& [code, error] : errors) {
        rcd.instrument.SetScenario(Scenario::RcdCheck, code);
        AWAIT_EQUAL(rcd.tester.ErrorCode(), QByteArray(error));
        QVERIFY(rcd.IsInState(MeasurementState::Idle)); // The object under test may still become sound.
    }
    rcd.Leave();
}

void TestRcd::NextPreparationStopsWhatHasFailed()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdError, 3);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    AWAIT_EQUAL(rcd.tester.ErrorCode(), QByteArray("523"));
    rcd.AwaitWithdrawal();
    rcd.instrument.SetScenario(Scenario::None);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch(2);
    QCOMPARE(rcd.SentBesidesStatusSince(Wire::StopMeasurement),
             (QByteArrayList{Wire::StopMeasurement, RcdKinds::UbRe().prepare}));
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

void TestRcd::NextPreparationReplacesTheWatchedOne()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.tester->PrepareMeasurement(*RcdKinds::UbRe().settings);
    AWAIT(rcd.tester.HasSignalled("MeasurementStatus", {"-1", "1", "2", "0", "-1", "1", "2", "0"}));
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), 2);
    QCOMPARE(rcd.CountSent(Wire::StopMeasurement), 0);
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
}

void TestRcd::TestThatIsNotReadyIsWatchedOn_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::newRow("prepare error") << Scenario::PrepareError;
    QTest::newRow("never prepared") << Scenario::NeverPrepared;
    QTest::newRow("check lost") << Scenario::RcdCheckLost;
}

void TestRcd::TestThatIsNotReadyIsWatchedOn()
{
    QFETCH(const Scenario, scenario);
    constexpr int MoreThanTheBudget = 8;
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(scenario);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.instrument.ClearRequests();
    const QByteArray& poll = scenario == Scenario::RcdCheckLost ? Wire::ReadMeasurement : Wire::ReadStatus;
    AWAIT(rcd.CountSent(poll) > MoreThanTheBudget);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    rcd.Leave();
}

void TestRcd::SilenceEndsTheWatch()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.instrument.Unplug();
    AWAIT_EQUAL(rcd.tester.ErrorCode(), QByteArray("401"));
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.instrument.SentSinceTheFirstFailure(),
             (QByteArrayList{Wire::ReadStatus, Wire::ReadStatus, Wire::ReadStatus, Wire::ReadStatus,
                             Wire::ReadStatus, Wire::ReadStatus}));
}

void TestRcd::AbortedTestStaysPrepared()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.tester->AbortMeasurement();
    const QString step = QStringLiteral("RUNING RCD MONITORING STATE is abort");
    AWAIT(rcd.tester.CountTraced(step) > 2); // The abort stays pending.
    AWAIT_EQUAL(rcd.FunctionState(), Prepared);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.CountSent(Wire::StopMeasurement), 0);

    rcd.tester->StartMeasurement(); // The start withdraws the abort.
    rcd.AwaitEnd();
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(rcd.tester->TestResults()->GetMeasurementType(), Vesmar::MeasurementType::RCD);
    rcd.Leave();
}

void TestRcd::NextPreparationAnswersAnAbort()
{
    const RcdKind kind = RcdKinds::UbRe();
    RcdMeasuring rcd;
    rcd.Prepare(*kind.settings);
    rcd.AwaitWatch();
    rcd.tester->AbortMeasurement();
    rcd.tester->PrepareMeasurement(*kind.settings);
    rcd.AwaitWatch(2);
    QCOMPARE(rcd.SentBesidesStatusSince(kind.prepare),
             (QByteArrayList{kind.prepare, Wire::StopMeasurement, kind.prepare}));
    rcd.Leave();
}

void TestRcd::AbortedPreparationBeginsAnew()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::StartTest, 13); // The instrument is not ready for 4 s.
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitState(MeasurementState::Preparing);
    rcd.tester->AbortMeasurement();
    AWAIT(rcd.tester.HasSignalled("MeasurementStatus", {"-1", "1", "-1", "1"}));
    rcd.instrument.SetScenario(Scenario::None);
    rcd.AwaitWatch();
    QCOMPARE(rcd.tester.Errors(), QByteArrayList());
    rcd.Leave();
}

void TestRcd::IecPreparationIsWithdrawnAfterAnError()
{
    const RcdKind kind = RcdKinds::IecIaTa1();
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdOtherFunction);
    rcd.Run(kind);
    QCOMPARE(rcd.tester->ErrorCode(), Error::RCDFunctionMismatch);
    rcd.tester->PrepareMeasurement(*kind.settings);
    const QString pending = QStringLiteral("RUNING RCD MONITORING STATE 1 - status= true false -1");
    AWAIT(rcd.tester.CountTraced(pending) > 0);
    rcd.tester->AbortMeasurement();
    AWAIT_EQUAL(rcd.tester.CountTraced(QStringLiteral("RUNING RCD MONITORING STATE rcdiec no error")), 1);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.tester->ErrorCode(), Error::RCDFunctionMismatch);
    rcd.Leave();
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

void TestRcd::AbortOfARunCountsWhenItFallsSilent_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("Ub/Re") << RcdKinds::UbRe()
                           << QByteArray("520"); // The error of the silent test comes first.
    QTest::newRow("Ia/Ta") << RcdKinds::IaTa1() << QByteArray("521");
    QTest::newRow("IEC Ia/Ta") << RcdKinds::IecIaTa1() << QByteArray("521");
}

void TestRcd::AbortOfARunCountsWhenItFallsSilent()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const QByteArray, error);
    RcdMeasuring rcd(WithEndlessRcd());
    rcd.Start(kind);
    AWAIT_EQUAL(rcd.tester->MeasurementFunctionStatus(), FunctionState::Running);
    QVERIFY(rcd.tester->IsMeasurementRunning());
    rcd.tester->AbortMeasurement();
    const int statuses = rcd.instrument.SentUnasked().size();
    AWAIT(rcd.instrument.SentUnasked().size() > statuses + 5);
    QVERIFY(rcd.IsInState(MeasurementState::Running));

    rcd.instrument.Unplug(); // The test runs on, but its frames are lost.
    rcd.AwaitEnd();
    rcd.instrument.Plug();
    QCOMPARE(rcd.tester.ErrorCode(), error);
    QVERIFY(!rcd.tester->IsMeasurementRunning());
    QCOMPARE(rcd.FunctionState(), Running);
    QCOMPARE(rcd.CountSent(Wire::StopMeasurement), 0);
    QCOMPARE(rcd.CountSent(Wire::StartMeasurement), 1);
    rcd.Leave();
}

void TestRcd::AbortedCleanUpGoesOn()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Simulator::Scenario::RcdCheck, 3);
    rcd.Start(RcdKinds::CleanUp());
    AWAIT(rcd.CountSent(Wire::ReadMeasurement) > 0);
    rcd.tester->AbortMeasurement();
    rcd.instrument.ClearRequests();
    AWAIT(rcd.CountSent(Wire::ReadMeasurement) > 3);
    QVERIFY(rcd.IsInState(MeasurementState::Prepared));
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    rcd.Leave();
    QCOMPARE(rcd.EndedRuns(), 1);
    QVERIFY(rcd.CountSent(Wire::StopMeasurement) > 0);
}

void TestRcd::LeavingTheModeAloneStopsTheCleanUp()
{
    RcdMeasuring rcd(WithEndlessRcd());
    rcd.Run(RcdKinds::CleanUp());
    QCOMPARE(rcd.FunctionState(), Running);
    rcd.Leave();
    QCOMPARE(rcd.SentBesidesStatusSince(Wire::StartMeasurement).value(1), Wire::StopMeasurement);
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

void TestRcd::LostLinkIsNoticedOnlyAfterTheTest()
{
    RcdMeasuring rcd(WithEndlessRcd());
    rcd.Start(RcdKinds::IaTa1());
    AWAIT_EQUAL(rcd.tester->MeasurementFunctionStatus(), FunctionState::Running);
    rcd.instrument.Unplug();
    rcd.AwaitEnd();
    QCOMPARE(rcd.tester->ErrorCode(), Error::StartFailed); // The test was started again, in vain.
    QCOMPARE(rcd.CountSent(Wire::StartMeasurement), 3);
    QVERIFY(!rcd.tester->IsMeasurementRunning());
    QVERIFY(!rcd.tester.EnteredStates().contains(Trace::Recovery));
    QVERIFY(rcd.tester->GetIsMeasurementModeActive());

    rcd.tester->SetIsMeasurementModeActive(false);
    AWAIT_EQUAL(rcd.tester->ErrorCode(), Error::CommunicationRecovery);
    rcd.instrument.Plug();
    rcd.Leave(); // The test still runs at the instrument; monitoring finds and stops it.
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(rcd.tester->TesterMode(), Vesmar::OperationMode::Normal);
    QVERIFY(rcd.CountSent(Wire::StopMeasurement) > 0);
}

QTEST_GUILESS_MAIN(TestRcd)
#include "tst_rcd.moc"
