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
    return {settings, Wire::Bytes(prepare)};
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
    return {settings, Wire::Bytes(prepare)};
}

float Single(const QByteArray& frame)
{
    return qFromLittleEndian<float>(frame.constData());
}

/// The two bytes count ten-thousandths, the low byte first.
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

/// The outcome of a test in words that can be compared.
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
    AWAIT(!tester.Signalled("TestResults").isEmpty());
    tester->StartMeasurement(*kind.settings);
    tester->SetIsMeasurementModeActive(true);
}

void RcdMeasuring::AwaitEnd()
{
    AWAIT(EndedRuns() > _awaitedRuns);
    AWAIT(IsInState(MeasurementState::Unknown));
    _awaitedRuns = EndedRuns();
}

void RcdMeasuring::Run(const RcdKind& kind)
{
    Start(kind);
    AwaitEnd();
}

int RcdMeasuring::CountRuns(const QByteArrayList& states)
{
    int runs = 0;
    for (const char* state : {Trace::RcdUbRe, Trace::RcdIaTa, Trace::RcdIecIaTa, Trace::RcdCleanUp}) {
        runs += states.count(state);
    }
    return runs;
}

QByteArrayList RcdMeasuring::SentBesidesStatusSince(const QByteArray& request) const
{
    QByteArrayList since = SentSince(request);
    since.removeAll(Wire::ReadStatus);
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
        static_cast<int>(tester->ErrorCode()), CountSent(kind.prepare), CountSent(Wire::StartMeasurement),
        results != resultsBefore && results->GetMeasurementType() != MeasurementType::Monitoring);
}

void RcdMeasuring::VerifyOutcome(const RcdKind& kind, const RcdFailure& test, const QByteArray& expected)
{
    QCOMPARE(OutcomeOf(kind, test), expected);
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
    AWAIT(CountSent(RcdKinds::UbRe().prepare) >= prepares);
    AWAIT(IsInState(MeasurementState::Idle));
    AWAIT_EQUAL(tester->CurrentMeasurementType(), MeasurementType::RCD);
}

void RcdMeasuring::AwaitWithdrawal()
{
    const QString idleStep = QStringLiteral("RUNING RCD MONITORING STATE 1 - status= false false -1");
    AWAIT(IsInState(MeasurementState::Unknown));
    const int requests = instrument.Sent().size();
    const int steps = tester.CountTraced(idleStep);
    AWAIT(tester.CountTraced(idleStep) > steps + 2);
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
