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

void AddRow(const char* kindName, const RcdKind& kind, const char* name, const RcdFailure& failure)
{
    QTest::addRow("%s, %s", kindName, name) << kind << failure;
}

RcdFailure ErrorBefore(int number)
{
    return {Scenario::None, 1, number, number, 0, 0};
}

RcdFailure ErrorWhenPrepared(int number)
{
    return {Scenario::RcdError, number, 15, 520 + number, 1, 0};
}

void AddRowsOfEachKind()
{
    const std::pair<const char*, RcdKind> kinds[]{{"Ub/Re", RcdKinds::UbRe()},
                                                  {"Ia/Ta", RcdKinds::IaTa2()},
                                                  {"IEC Ia/Ta", RcdKinds::IecIaTa1()},
                                                  {"clean-up", RcdKinds::CleanUp()}};
    for (const auto& [name, kind] : kinds) {
        AddRow(name, kind, "prepare refused", {Scenario::RefusesPrepare, 1, 15, 200, 3, 0});
        AddRow(name, kind, "prepare error", {Scenario::PrepareError, 1, 15, 401, 1, 0});
        AddRow(name, kind, "never prepared", {Scenario::NeverPrepared, 1, 15, 401, 1, 0});
        AddRow(name, kind, "start refused", {Scenario::StartError, 1, 15, 201, 1, 3});
        AddRow(name, kind, "start test failed", {Scenario::StartTest, 13, 15, 400, 0, 0});
        AddRow(name, kind, "other function", {Scenario::RcdOtherFunction, 1, 15, 398, 1, 0});
        // Nobody waits for the end of a clean-up.
        const int error = kind.prepare == RcdKinds::CleanUp().prepare ? 15 : 521;
        AddRow(name, kind, "no result", {Scenario::EndsWithoutResult, 1, 15, error, 1, 1});
        const bool isIecIaTa = kind.prepare == RcdKinds::IecIaTa1().prepare;
        AddRow(name, kind, "error in the run", {Scenario::RcdErrorOnce, isIecIaTa ? 4 : 5, 15, error, 1, 1});
    }
}

void AddRowsOfTheCheck()
{
    AddRow("Ub/Re", RcdKinds::UbRe(), "check finds 3", {Scenario::RcdCheck, 3, 15, 401, 1, 0});
    AddRow("Ia/Ta", RcdKinds::IaTa2(), "check finds 3", {Scenario::RcdCheck, 3, 15, 401, 1, 0});
    AddRow("Ia/Ta", RcdKinds::IaTa2(), "check finds 10", {Scenario::RcdCheck, 10, 15, 401, 1, 0});
    AddRow("Ia/Ta", RcdKinds::IaTa2(), "check lost", {Scenario::RcdCheckLost, 1, 15, 401, 1, 0});
    AddRow("IEC Ia/Ta", RcdKinds::IecIaTa1(), "check lost", {Scenario::RcdCheckLost, 1, 15, 500, 1, 0});
    const std::map<int, int> errors{{1, 500}, {2, 501}, {3, 502}, {4, 503}, {7, 504}, {8, 505}, {9, 506}};
    for (const auto& [code, error] : errors) {
        QTest::addRow("IEC Ia/Ta, check finds %d", code)
            << RcdKinds::IecIaTa1() << RcdFailure{Scenario::RcdCheck, code, 15, error, 1, 0};
    }
}

void AddRowsOfTheInstrumentsErrors()
{
    for (int number = 0; number < InstrumentErrors; ++number) {
        QTest::addRow("Ia/Ta, %d before", number) << RcdKinds::IaTa1() << ErrorBefore(number);
        QTest::addRow("Ia/Ta, %d when prepared", number) << RcdKinds::IaTa1() << ErrorWhenPrepared(number);
    }
    for (const int number : {0, 6, 14}) {
        QTest::addRow("Ub/Re, %d before", number) << RcdKinds::UbRe() << ErrorBefore(number);
        QTest::addRow("Ub/Re, %d when prepared", number) << RcdKinds::UbRe() << ErrorWhenPrepared(number);
        QTest::addRow("IEC Ia/Ta, %d before", number) << RcdKinds::IecIaTa1() << ErrorBefore(number);
        QTest::addRow("clean-up, %d before", number) << RcdKinds::CleanUp() << ErrorBefore(number);
    }
    AddRow("IEC Ia/Ta", RcdKinds::IecIaTa1(), "7 when prepared", {Scenario::RcdError, 7, 15, 15, 1, 0});
    AddRow("clean-up", RcdKinds::CleanUp(), "7 when prepared", {Scenario::RcdError, 7, 15, 15, 1, 0});
}

void AddRowsOfASilentRun()
{
    AddRow("Ub/Re", RcdKinds::UbRe(), "silent", {Scenario::RcdSilent, 1, 15, 520, 1, 1});
    AddRow("Ub/Re", RcdKinds::UbRe(), "silent once", {Scenario::RcdSilentOnce, 1, 15, 520, 1, 1});
    AddRow("Ub/Re", RcdKinds::UbRe(), "garbage", {Scenario::RcdGarbage, 1, 15, 520, 1, 1});
    AddRow("Ia/Ta", RcdKinds::IaTa2(), "silent", {Scenario::RcdSilent, 1, 15, 201, 1, 3});
    AddRow("Ia/Ta", RcdKinds::IaTa2(), "garbage", {Scenario::RcdGarbage, 1, 15, 201, 1, 3});
    AddRow("IEC Ia/Ta", RcdKinds::IecIaTa2(), "silent", {Scenario::RcdSilent, 1, 15, 201, 1, 3});
    AddRow("IEC Ia/Ta", RcdKinds::IecIaTa2(), "garbage", {Scenario::RcdGarbage, 1, 15, 201, 1, 3});
    AddRow("clean-up", RcdKinds::CleanUp(), "silent", {Scenario::RcdSilent, 1, 15, 15, 1, 1});
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
    void EndsWithItsError_data();
    void EndsWithItsError();
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
    void StartPolling(const RcdKind& kind, Scenario scenario, int number);

    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdFailures::EndsWithItsError_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<RcdFailure>("failure");
    AddRowsOfEachKind();
    AddRowsOfTheCheck();
    AddRowsOfTheInstrumentsErrors();
    AddRowsOfASilentRun();
}

void TestRcdFailures::EndsWithItsError()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(kind, failure);
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
