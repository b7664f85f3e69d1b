#include <map>

#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

Q_DECLARE_METATYPE(Vesmar::MeasurementState)

namespace
{

/// Slow answers make a phase last long enough to be aborted in.
constexpr std::chrono::milliseconds SlowAnswer{300};
constexpr int MorePollsThanTheBudget = 7;
constexpr int InstrumentErrors = 15;

void AddColumns()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<RcdFailure>("failure");
}

void AddRow(const char* name, const RcdKind& kind, const RcdFailure& failure)
{
    QTest::newRow(name) << kind << failure;
}

/// The failures that end in the same way for every kind.
void AddCommonRows(const RcdKind& kind)
{
    AddColumns();
    AddRow("prepare refused", kind, {Scenario::RefusesPrepare, 1, 15, 200, 3, 0});
    AddRow("prepare error", kind, {Scenario::PrepareError, 1, 15, 401, 1, 0});
    AddRow("never prepared", kind, {Scenario::NeverPrepared, 1, 15, 401, 1, 0});
    AddRow("start refused", kind, {Scenario::StartError, 1, 15, 201, 1, 3});
    AddRow("start test failed", kind, {Scenario::StartTest, 13, 15, 400, 0, 0});
    AddRow("other function", kind, {Scenario::RcdOtherFunction, 1, 15, 398, 1, 0});
}

RcdFailure ErrorBefore(int number)
{
    return {Scenario::None, 1, number, number, 0, 0};
}

RcdFailure ErrorWhenPrepared(int number)
{
    return {Scenario::RcdError, number, 15, 520 + number, 1, 0};
}

} // namespace

/// Residual-current tests that go wrong, are aborted, or come to their result in an unusual way. Each row has
/// an instrument of its own.
class TestRcdFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { _rcd = std::make_unique<RcdMeasuring>(); }
    void cleanup() { _rcd.reset(); }
    void UbReEndsWithItsError_data();
    void UbReEndsWithItsError() { VerifyRow(); }
    void IaTaEndsWithItsError_data();
    void IaTaEndsWithItsError() { VerifyRow(); }
    void IecIaTaEndsWithItsError_data();
    void IecIaTaEndsWithItsError() { VerifyRow(); }
    void CleanUpEndsWithItsError_data();
    void CleanUpEndsWithItsError() { VerifyRow(); }
    void IecObjectCheckEndsWithItsError_data();
    void IecObjectCheckEndsWithItsError() { VerifyRow(); }
    void IaTaEndsWithTheErrorOfTheInstrument_data();
    void IaTaEndsWithTheErrorOfTheInstrument() { VerifyRow(); }
    void OtherKindsEndWithTheErrorOfTheInstrument_data();
    void OtherKindsEndWithTheErrorOfTheInstrument() { VerifyRow(); }
    void SilentRunEndsWithItsError_data();
    void SilentRunEndsWithItsError() { VerifyRow(); }
    void UnsuitableMainsIsPolledUntilItSuits();
    void CleanUpPollsAnObjectErrorUntilItIsGone_data();
    void CleanUpPollsAnObjectErrorUntilItIsGone();
    void UnusualRunBringsItsResult_data();
    void UnusualRunBringsItsResult();
    void AbortEndsThePhase_data();
    void AbortEndsThePhase();
    void ErrorOfTheInstrumentEndsTheWatch_data();
    void ErrorOfTheInstrumentEndsTheWatch();

private:
    void VerifyRow();
    void StartPolling(const RcdKind& kind, Scenario scenario, int number);

    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdFailures::VerifyRow()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(kind, failure);
}

void TestRcdFailures::UbReEndsWithItsError_data()
{
    const RcdKind kind = RcdKinds::UbRe();
    AddCommonRows(kind);
    AddRow("no result", kind, {Scenario::EndsWithoutResult, 1, 15, 521, 1, 1});
    AddRow("check finds 3", kind, {Scenario::RcdCheck, 3, 15, 401, 1, 0});
    AddRow("error 5 in the run", kind, {Scenario::RcdErrorOnce, 5, 15, 521, 1, 1});
}

void TestRcdFailures::IaTaEndsWithItsError_data()
{
    const RcdKind kind = RcdKinds::IaTa2();
    AddCommonRows(kind);
    AddRow("no result", kind, {Scenario::EndsWithoutResult, 1, 15, 521, 1, 1});
    AddRow("check finds 3", kind, {Scenario::RcdCheck, 3, 15, 401, 1, 0});
    AddRow("check finds 10", kind, {Scenario::RcdCheck, 10, 15, 401, 1, 0});
    AddRow("check lost", kind, {Scenario::RcdCheckLost, 1, 15, 401, 1, 0});
    AddRow("error 5 in the run", kind, {Scenario::RcdErrorOnce, 5, 15, 521, 1, 1});
}

void TestRcdFailures::IecIaTaEndsWithItsError_data()
{
    const RcdKind kind = RcdKinds::IecIaTa1();
    AddCommonRows(kind);
    AddRow("no result", kind, {Scenario::EndsWithoutResult, 1, 15, 521, 1, 1});
    AddRow("check lost", kind, {Scenario::RcdCheckLost, 1, 15, 500, 1, 0});
    AddRow("error when prepared", kind, {Scenario::RcdError, 7, 15, 15, 1, 0});
    AddRow("error 4 in the run", kind, {Scenario::RcdErrorOnce, 4, 15, 521, 1, 1});
}

void TestRcdFailures::CleanUpEndsWithItsError_data()
{
    const RcdKind kind = RcdKinds::CleanUp();
    AddCommonRows(kind);
    AddRow("error when prepared", kind, {Scenario::RcdError, 7, 15, 15, 1, 0});
    // Nobody waits for the end of a clean-up.
    AddRow("silent", kind, {Scenario::RcdSilent, 1, 15, 15, 1, 1});
    AddRow("no result", kind, {Scenario::EndsWithoutResult, 1, 15, 15, 1, 1});
    AddRow("error 5 in the run", kind, {Scenario::RcdErrorOnce, 5, 15, 15, 1, 1});
}

void TestRcdFailures::IecObjectCheckEndsWithItsError_data()
{
    AddColumns();
    const std::map<int, int> errors{{1, 500}, {2, 501}, {3, 502}, {4, 503}, {7, 504}, {8, 505}, {9, 506}};
    for (const auto& [code, error] : errors) {
        QTest::addRow("code %d", code)
            << RcdKinds::IecIaTa1() << RcdFailure{Scenario::RcdCheck, code, 15, error, 1, 0};
    }
}

void TestRcdFailures::IaTaEndsWithTheErrorOfTheInstrument_data()
{
    AddColumns();
    for (int number = 0; number < InstrumentErrors; ++number) {
        QTest::addRow("%d before", number) << RcdKinds::IaTa1() << ErrorBefore(number);
        QTest::addRow("%d when prepared", number) << RcdKinds::IaTa1() << ErrorWhenPrepared(number);
    }
}

void TestRcdFailures::OtherKindsEndWithTheErrorOfTheInstrument_data()
{
    AddColumns();
    for (const int number : {0, 6, 14}) {
        QTest::addRow("Ub/Re, %d before", number) << RcdKinds::UbRe() << ErrorBefore(number);
        QTest::addRow("Ub/Re, %d when prepared", number) << RcdKinds::UbRe() << ErrorWhenPrepared(number);
        QTest::addRow("IEC Ia/Ta, %d before", number) << RcdKinds::IecIaTa1() << ErrorBefore(number);
        QTest::addRow("clean-up, %d before", number) << RcdKinds::CleanUp() << ErrorBefore(number);
    }
}

void TestRcdFailures::SilentRunEndsWithItsError_data()
{
    AddColumns();
    AddRow("Ub/Re silent", RcdKinds::UbRe(), {Scenario::RcdSilent, 1, 15, 520, 1, 1});
    AddRow("Ub/Re silent once", RcdKinds::UbRe(), {Scenario::RcdSilentOnce, 1, 15, 520, 1, 1});
    AddRow("Ub/Re garbage", RcdKinds::UbRe(), {Scenario::RcdGarbage, 1, 15, 520, 1, 1});
    AddRow("Ia/Ta silent", RcdKinds::IaTa2(), {Scenario::RcdSilent, 1, 15, 201, 1, 3});
    AddRow("Ia/Ta garbage", RcdKinds::IaTa2(), {Scenario::RcdGarbage, 1, 15, 201, 1, 3});
    AddRow("IEC Ia/Ta silent", RcdKinds::IecIaTa2(), {Scenario::RcdSilent, 1, 15, 201, 1, 3});
    AddRow("IEC Ia/Ta garbage", RcdKinds::IecIaTa2(), {Scenario::RcdGarbage, 1, 15, 201, 1, 3});
}

/// Starts a test whose object check fails, and waits until it has been polled again and again.
void TestRcdFailures::StartPolling(const RcdKind& kind, Scenario scenario, int number)
{
    _rcd->instrument.SetScenario(scenario, number);
    _rcd->Start(kind);
    AWAIT(_rcd->CountSent(Wire::ReadMeasurement) >= MorePollsThanTheBudget);
    QVERIFY(_rcd->IsInState(MeasurementState::Prepared));
}

void TestRcdFailures::UnsuitableMainsIsPolledUntilItSuits()
{
    StartPolling(RcdKinds::IecIaTa1(), Scenario::RcdCheck, 10);
    QCOMPARE(_rcd->tester->ErrorCode(), Error::RCDCheckObjectULNIECInvalid);
    _rcd->instrument.SetScenario(Scenario::RcdCheck, 0);
    _rcd->AwaitEnd();
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(_rcd->tester->TestResults()->GetMeasurementType(), MeasurementType::RCDIEC);
}

void TestRcdFailures::CleanUpPollsAnObjectErrorUntilItIsGone_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::newRow("found") << Scenario::RcdCheck;
    QTest::newRow("lost") << Scenario::RcdCheckLost;
}

void TestRcdFailures::CleanUpPollsAnObjectErrorUntilItIsGone()
{
    QFETCH(const Scenario, scenario);
    StartPolling(RcdKinds::CleanUp(), scenario, 3);
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    _rcd->instrument.SetScenario(Scenario::RcdCheck, 0);
    _rcd->AwaitEnd();
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(_rcd->CountSent(Wire::StartMeasurement), 1);
}

void TestRcdFailures::UnusualRunBringsItsResult_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("starts");
    const auto addForAll = [](const char* name, Scenario scenario, int number) {
        QTest::addRow("Ub/Re %s", name) << RcdKinds::UbRe() << scenario << number << 1;
        QTest::addRow("Ia/Ta %s", name) << RcdKinds::IaTa2() << scenario << number << 1;
        QTest::addRow("IEC Ia/Ta %s", name) << RcdKinds::IecIaTa2() << scenario << number << 1;
    };
    addForAll("glued", Scenario::RcdGlued, 1);
    addForAll("in pieces", Scenario::RcdPieces, 20000);
    addForAll("checked clean", Scenario::RcdCheck, 0);
    addForAll("clean the second time", Scenario::RcdCheckOnce, 3);
    const RcdKind iaTa = RcdKinds::IaTa1();
    const RcdKind iecIaTa = RcdKinds::IecIaTa1();
    QTest::newRow("Ia/Ta in quick pieces") << iaTa << Scenario::RcdPieces << 1 << 1;
    QTest::newRow("Ia/Ta start test 15") << iaTa << Scenario::StartTest << 15 << 1;
    QTest::newRow("Ia/Ta without Ta") << iaTa << Scenario::RcdNoTa << 1 << 1;
    QTest::newRow("IEC Ia/Ta without Ta") << iecIaTa << Scenario::RcdNoTa << 1 << 1;
    QTest::newRow("Ia/Ta silent once") << iaTa << Scenario::RcdSilentOnce << 1 << 2;
    QTest::newRow("IEC Ia/Ta silent once") << iecIaTa << Scenario::RcdSilentOnce << 1 << 2;
    QTest::newRow("IEC Ia/Ta mains unsuitable once") << iecIaTa << Scenario::RcdCheckOnce << 10 << 1;
}

void TestRcdFailures::UnusualRunBringsItsResult()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const Scenario, scenario);
    QFETCH(const int, number);
    QFETCH(const int, starts);
    _rcd->VerifySuccess(kind, scenario, number, starts);
}

void TestRcdFailures::AbortEndsThePhase_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("number");
    QTest::addColumn<MeasurementState>("phase");
    QTest::addColumn<int>("functionState");
    QTest::addColumn<QByteArray>("error");
    const auto add = [](const char* name, const RcdKind& kind, Scenario scenario, int number,
                        MeasurementState phase, int functionState, const char* error = "521") {
        QTest::newRow(name) << kind << scenario << number << phase << functionState << QByteArray(error);
    };
    const RcdKind ubRe = RcdKinds::UbRe();
    const RcdKind iaTa = RcdKinds::IaTa1();
    const RcdKind iecIaTa = RcdKinds::IecIaTa1();
    add("Ub/Re idle", ubRe, Scenario::StartTest, 13, MeasurementState::Idle, 0);
    add("Ub/Re starting", ubRe, Scenario::StartError, 1, MeasurementState::Starting, 4);
    add("Ia/Ta idle", iaTa, Scenario::StartTest, 13, MeasurementState::Idle, 0);
    add("Ia/Ta preparing", iaTa, Scenario::RefusesPrepare, 1, MeasurementState::Preparing, 0);
    add("Ia/Ta prepared", iaTa, Scenario::NeverPrepared, 1, MeasurementState::Prepared, 1);
    add("Ia/Ta starting", iaTa, Scenario::StartError, 1, MeasurementState::Starting, 4);
    add("IEC Ia/Ta preparing", iecIaTa, Scenario::RefusesPrepare, 1, MeasurementState::Preparing, 0);
    add("IEC Ia/Ta starting", iecIaTa, Scenario::StartError, 1, MeasurementState::Starting, 4);
    add("IEC Ia/Ta with an error", iecIaTa, Scenario::RcdCheck, 10, MeasurementState::Prepared, 3, "507");
}

void TestRcdFailures::AbortEndsThePhase()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const Scenario, scenario);
    QFETCH(const int, number);
    QFETCH(const MeasurementState, phase);
    QFETCH(const int, functionState);
    QFETCH(const QByteArray, error);
    _rcd->instrument.SetScenario(scenario, number);
    _rcd->Start(kind);
    _rcd->instrument.SetAnswerAfter(SlowAnswer);
    AWAIT(_rcd->StartedRuns() > _rcd->EndedRuns() && _rcd->IsInState(phase));
    if (error == "507") {
        AWAIT_EQUAL(_rcd->tester.ErrorCode(), error);
    }
    _rcd->tester->AbortMeasurement();
    _rcd->AwaitEnd();
    _rcd->instrument.SetAnswerAfter(std::chrono::milliseconds(0));
    QCOMPARE(_rcd->tester.ErrorCode(), error);
    QVERIFY(!_rcd->tester->IsMeasurementRunning());
    QCOMPARE(_rcd->FunctionState(), functionState);
    QCOMPARE(_rcd->CountSent(Wire::StopMeasurement), 0); // The instrument stops when the mode is left.
    _rcd->Leave();
    QCOMPARE(_rcd->CountSent(Wire::StopMeasurement) > 0, functionState != 0);
}

void TestRcdFailures::ErrorOfTheInstrumentEndsTheWatch_data()
{
    QTest::addColumn<int>("number");
    for (int number = 0; number < InstrumentErrors; ++number) {
        QTest::addRow("%d", number) << number;
    }
}

/// An Ub/Re test that is prepared is watched until it is started.
void TestRcdFailures::ErrorOfTheInstrumentEndsTheWatch()
{
    QFETCH(const int, number);
    const RcdKind kind = RcdKinds::UbRe();
    _rcd->instrument.SetScenario(Scenario::RcdError, number);
    _rcd->Prepare(*kind.settings);
    AWAIT_EQUAL(_rcd->tester.ErrorCode(), QByteArray::number(520 + number));
    _rcd->AwaitWithdrawal();
    QCOMPARE(_rcd->CountSent(kind.prepare), 1);
    QCOMPARE(_rcd->EndedRuns(), 0);
}

QTEST_GUILESS_MAIN(TestRcdFailures)
#include "tst_rcdfailures.moc"
