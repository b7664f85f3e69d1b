#include "integration/rcdmeasuring.h"

#include <QtEndian>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>

using Simulator::Scenario;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::RCDIECSettings;
using Vesmar::RCDSettings;

namespace
{

constexpr int NoError = 15;

RcdKind Rcd(RCDSettings::RCDMode mode, RCDSettings::RCDType type, const char* prepare)
{
    auto settings = std::make_shared<RCDSettings>();
    settings->SetMode(mode);
    settings->SetType(type);
    settings->SetPhase(RCDSettings::RCDPhase::Phase1);
    settings->SetQuantity(RCDSettings::RCDQuantity::Quantity2);
    settings->SetCurrent(RCDSettings::RCDCurrent::Current3);
    settings->SetRe(12.5F);
    return {settings, prepare};
}

RcdKind RcdIec(RCDIECSettings::RCDIECMode mode, bool isSwapped, const char* prepare)
{
    auto settings = std::make_shared<RCDIECSettings>();
    settings->SetMode(mode);
    settings->SetType(RCDIECSettings::RCDIECType::Type1);
    settings->SetPhase(RCDIECSettings::RCDIECPhase::Phase2);
    settings->SetQuantity(RCDIECSettings::RCDIECQuantity::Quantity3);
    settings->SetCurrent(RCDIECSettings::RCDIECCurrent::Current1);
    settings->SetIsLNSwapped(isSwapped);
    return {settings, prepare};
}

float Single(const QByteArray& frame)
{
    return qFromLittleEndian<float>(frame.constData());
}

/// Ten-thousandths, low byte first.
float FixedPoint(const QByteArray& frame, int position)
{
    const auto number = qFromLittleEndian<quint16>(frame.constData() + position);
    constexpr quint16 NoReading = 0xEEEE;
    return number == NoReading ? MeasurementResults::NoValue : static_cast<float>(number) / 10000.0F;
}

void VerifyReadings(const Vesmar::RCDResults& results, const RCDSettings& settings, const QByteArray& frame)
{
    if (settings.GetMode() == RCDSettings::RCDMode::UbRe) {
        QCOMPARE(results._re, Single(frame));
        QCOMPARE(results._ia, MeasurementResults::NoValue);
        QCOMPARE(results._ta, MeasurementResults::NoValue);
        QCOMPARE(results._values.at(0), Single(frame));
    } else {
        QCOMPARE(results._re, settings.GetRe());
        QCOMPARE(results._ia, FixedPoint(frame, 4));
        QCOMPARE(results._ta, FixedPoint(frame, 6));
        QCOMPARE(results._values.at(0), FixedPoint(frame, 4));
        QCOMPARE(results._values.at(1), FixedPoint(frame, 6));
    }
}

void VerifyReadings(const Vesmar::RCDIECResults& results, const QByteArray& frame)
{
    QCOMPARE(results._ia, FixedPoint(frame, 4));
    QCOMPARE(results._ta, FixedPoint(frame, 6));
    QCOMPARE(results._values.at(0), FixedPoint(frame, 4));
    QCOMPARE(results._values.at(1), FixedPoint(frame, 6));
}

/// What comes of a test, in words that can be compared.
QByteArray OutcomeText(int error, int prepares, int starts, bool hasResults)
{
    return QStringLiteral("error %1, prepared %2 times, started %3 times, results %4")
        .arg(error)
        .arg(prepares)
        .arg(starts)
        .arg(hasResults)
        .toLatin1();
}

} // namespace

RcdKind RcdKinds::UbRe()
{
    return Rcd(RCDSettings::RCDMode::UbRe, RCDSettings::RCDType::Type1, "500a00401bffffffff2186");
}

RcdKind RcdKinds::IaTa1()
{
    return Rcd(RCDSettings::RCDMode::IaTa1, RCDSettings::RCDType::Type2, "500a00805b00004841366c");
}

RcdKind RcdKinds::IaTa2()
{
    return Rcd(RCDSettings::RCDMode::IaTa2, RCDSettings::RCDType::Type3, "500a00c09b000048419e35");
}

RcdKind RcdKinds::IecIaTa1()
{
    return RcdIec(RCDIECSettings::RCDIECMode::IaTa1, false, "500b00406d000000003e88");
}

RcdKind RcdKinds::IecIaTa2()
{
    return RcdIec(RCDIECSettings::RCDIECMode::IaTa2, true, "500b00c0ad00000000a66f");
}

RcdKind RcdKinds::CleanUp()
{
    return RcdIec(RCDIECSettings::RCDIECMode::CleanUp, false, "500b0040ed00000000eeaa");
}

void AddRcdFailures()
{
    QTest::addColumn<RcdFailure>("failure");
    QTest::newRow("prepare refused") << RcdFailure{Scenario::RefusesPrepare, 1, 15, 200, 3, 0};
    QTest::newRow("prepare error") << RcdFailure{Scenario::PrepareError, 1, 15, 401, 1, 0};
    QTest::newRow("never prepared") << RcdFailure{Scenario::NeverPrepared, 1, 15, 401, 1, 0};
    QTest::newRow("start refused") << RcdFailure{Scenario::StartError, 1, 15, 201, 1, 3};
    QTest::newRow("start test failed") << RcdFailure{Scenario::StartTest, 13, 15, 400, 0, 0};
    QTest::newRow("other function") << RcdFailure{Scenario::RcdOtherFunction, 1, 15, 398, 1, 0};
}

Simulator::InstrumentOptions WithQuickRcd()
{
    Simulator::InstrumentOptions options;
    options.model.rcdTimings.preparing = std::chrono::milliseconds(20);
    options.model.rcdTimings.statusPeriod = std::chrono::milliseconds(100);
    options.model.rcdTimings.run = std::chrono::milliseconds(350);
    options.model.rcdTimings.cleanUp = std::chrono::milliseconds(350);
    return options;
}

Simulator::InstrumentOptions WithEndlessRcd()
{
    Simulator::InstrumentOptions options = WithQuickRcd();
    options.model.rcdTimings.run = std::chrono::hours(1);
    options.model.rcdTimings.cleanUp = std::chrono::hours(1);
    return options;
}

void RcdMeasuring::Start(const RcdKind& kind)
{
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    tester->StartMeasurement(*kind.settings);
    tester->SetIsMeasurementModeActive(true);
}

void RcdMeasuring::AwaitEnd()
{
    QTRY_VERIFY_WITH_TIMEOUT(EndedRuns() > _awaitedRuns, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(IsInState(MeasurementState::Unknown), Patience);
    _awaitedRuns = EndedRuns();
}

void RcdMeasuring::Run(const RcdKind& kind)
{
    Start(kind);
    AwaitEnd();
}

void RcdMeasuring::Leave()
{
    tester->SetIsMeasurementModeActive(false);
    QTRY_VERIFY_WITH_TIMEOUT(HasNoFunction(), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester->CurrentMeasurementType(), MeasurementType::Monitoring, Patience);
}

int RcdMeasuring::CountRuns(const QByteArrayList& states)
{
    int runs = 0;
    for (const char* state : {Trace::RcdUbRe, Trace::RcdIaTa, Trace::RcdIecIaTa, Trace::RcdCleanUp}) {
        runs += states.count(state);
    }
    return runs;
}

QByteArrayList RcdMeasuring::SentSince(const char* request) const
{
    const QByteArrayList sent = instrument.Sent();
    const int first = sent.indexOf(request);
    QByteArrayList since = first < 0 ? QByteArrayList() : QByteArrayList(sent.mid(first));
    since.removeAll(Frames::ReadStatus);
    return since;
}

QByteArray RcdMeasuring::OutcomeOf(const RcdKind& kind, const RcdFailure& test)
{
    instrument.SetFunction(0);
    instrument.SetError(test.deviceError);
    instrument.SetScenario(test.scenario, test.number);
    instrument.ClearRequests();
    const MeasurementResults* resultsBefore = tester->TestResults();
    Run(kind);
    const MeasurementResults* results = tester->TestResults();
    return OutcomeText(
        static_cast<int>(tester->ErrorCode()), CountSent(kind.prepare), CountSent(Frames::StartMeasurement),
        results != resultsBefore && results->GetMeasurementType() != MeasurementType::Monitoring);
}

/// A busy machine keeps an answer longer than the 500 ms that the library waits for it, and then another
/// request is due: only an outcome that stays another one counts.
void RcdMeasuring::VerifyOutcome(const RcdKind& kind, const RcdFailure& test, const QByteArray& expected)
{
    constexpr int Tries = 4;
    QByteArray outcome;
    for (int tries = 0; tries < Tries && outcome != expected; ++tries) {
        outcome = OutcomeOf(kind, test);
    }
    QCOMPARE(outcome, expected);
    QVERIFY(!tester->IsMeasurementRunning());
}

void RcdMeasuring::VerifyFailure(const RcdKind& kind, const RcdFailure& failure)
{
    VerifyOutcome(kind, failure, OutcomeText(failure.error, failure.prepares, failure.starts, false));
}

void RcdMeasuring::VerifySuccess(const RcdKind& kind, Scenario scenario, int number, int starts)
{
    VerifyOutcome(kind, {scenario, number}, OutcomeText(NoError, 1, starts, true));
    VerifyResults(kind);
}

void RcdMeasuring::AwaitWatch(int prepares)
{
    QTRY_VERIFY_WITH_TIMEOUT(CountSent(RcdKinds::UbRe().prepare) >= prepares, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(IsInState(MeasurementState::Idle), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester->CurrentMeasurementType(), MeasurementType::RCD, Patience);
}

void RcdMeasuring::AwaitWithdrawal()
{
    const QString idleStep = QStringLiteral("RUNING RCD MONITORING STATE 1 - status= false false -1");
    QTRY_VERIFY_WITH_TIMEOUT(IsInState(MeasurementState::Unknown), Patience);
    const int requests = instrument.Sent().size();
    const int steps = tester.CountTraced(idleStep);
    QTRY_VERIFY_WITH_TIMEOUT(tester.CountTraced(idleStep) > steps + 2, Patience);
    QCOMPARE(instrument.Sent().size(), requests);
}

void RcdMeasuring::VerifyResults(const RcdKind& kind) const
{
    const QByteArray frame = instrument.SentUnasked().join().right(26);
    QCOMPARE(frame.size(), 26);
    const MeasurementResults* results = tester->TestResults();
    QCOMPARE(results->GetMeasurementType(), kind.settings->GetMeasurementType());
    if (const auto* rcd = dynamic_cast<const Vesmar::RCDResults*>(results)) {
        VerifyReadings(*rcd, *dynamic_cast<const RCDSettings*>(kind.settings.get()), frame);
    } else {
        const auto* rcdIec = dynamic_cast<const Vesmar::RCDIECResults*>(results);
        QVERIFY(rcdIec != nullptr);
        VerifyReadings(*rcdIec, frame);
    }
}
