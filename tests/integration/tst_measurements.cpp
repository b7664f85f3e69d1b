#include <array>
#include <functional>
#include <memory>

#include <QtEndian>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/ideltasettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/ipesettings.h>
#include <Vesmar/isubsettings.h>
#include <Vesmar/itsettings.h>
#include <Vesmar/powersettings.h>
#include <Vesmar/risosettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

#include "integration/measuring.h"

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

using SettingsMaker = std::function<std::unique_ptr<MeasurementSettings>()>;

Q_DECLARE_METATYPE(SettingsMaker)

namespace
{

constexpr int Completed = 2;
constexpr int Terminated = 9;

constexpr char PrepareRln[] = "5001ff0100ffffffffea32";
constexpr char PrepareRiso[] = "5003050600ffffffffdba9";

std::unique_ptr<MeasurementSettings> Rpe()
{
    auto settings = ForSeconds<Vesmar::RPESettings>(1);
    settings->SetMethod(Vesmar::RPESettings::RPEMethod::Method1);
    settings->SetCurrent(Vesmar::RPESettings::RPECurrent::Current3);
    return settings;
}

std::unique_ptr<MeasurementSettings> Riso()
{
    auto settings = ForSeconds<Vesmar::RISOSettings>(1);
    settings->SetMode(Vesmar::RISOSettings::RISOMode::Mode1);
    settings->SetVoltage(Vesmar::RISOSettings::RISOVoltage::Voltage2);
    return settings;
}

std::unique_ptr<MeasurementSettings> Ipe()
{
    auto settings = ForSeconds<Vesmar::IPESettings>(1);
    settings->SetMode(Vesmar::IPESettings::IPEMode::Mode2);
    settings->SetConfiguration(Vesmar::IPESettings::IPEConfiguration::Configuration2);
    return settings;
}

std::unique_ptr<MeasurementSettings> Idelta()
{
    auto settings = ForSeconds<Vesmar::IDELTASettings>(1);
    settings->SetMode(Vesmar::IDELTASettings::IDELTAMode::Mode2);
    return settings;
}

std::unique_ptr<MeasurementSettings> It()
{
    auto settings = ForSeconds<Vesmar::ITSettings>(1);
    settings->SetConfiguration(Vesmar::ITSettings::ITConfiguration::Configuration2);
    return settings;
}

std::unique_ptr<MeasurementSettings> Power()
{
    auto settings = ForSeconds<Vesmar::POWERSettings>(1);
    settings->SetMode(Vesmar::POWERSettings::POWERMode::Mode2);
    return settings;
}

std::unique_ptr<MeasurementSettings> HighVoltage()
{
    auto settings = ForSeconds<Vesmar::HVTestSettings>(1);
    settings->SetMode(Vesmar::HVTestSettings::HVMode::Mode2);
    settings->SetMeasurementTimeOffset(0.5F);
    return settings;
}

Simulator::InstrumentOptions WithQuickSingles()
{
    Simulator::InstrumentOptions options;
    options.model.functionTimings.singleRun = std::chrono::milliseconds(300);
    return options;
}

/// The six values of the last result that the instrument handed out.
std::array<float, 6> LastHandedOut(const LineInstrument& instrument)
{
    std::array<float, 6> values{};
    for (const Simulator::Exchange& exchange : instrument.Record()) {
        if (exchange.request.toHex() == Frames::ReadMeasurement) {
            for (std::size_t index = 0; index < values.size(); ++index) {
                values.at(index) = qFromLittleEndian<float>(exchange.answer.constData() +
                                                            static_cast<int>(index * sizeof(float)));
            }
        }
    }
    return values;
}

/// From preparing to the next preparing.
QByteArrayList WholeMeasurement(const char* runningState)
{
    return {Trace::MeasurementMode, Trace::Preparing,       Trace::Starting, runningState,
            Trace::Stopping,        Trace::MeasurementMode, Trace::Preparing};
}

void AddRow(const char* name, const SettingsMaker& settings, const char* prepare, MeasurementType type,
            const char* runningState)
{
    QTest::newRow(name) << settings << QByteArray(prepare) << static_cast<int>(type)
                        << QByteArray(runningState);
}

} // namespace

class TestMeasurements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RunsToItsResult_data();
    void RunsToItsResult();
    void OneFollowsAnotherWithoutLeavingTheMode();
};

void TestMeasurements::RunsToItsResult_data()
{
    QTest::addColumn<SettingsMaker>("settings");
    QTest::addColumn<QByteArray>("prepare");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("runningState");
    AddRow("RLN", std::make_unique<Vesmar::RLNSettings>, PrepareRln, MeasurementType::RLN, Trace::Single);
    AddRow("IEC", std::make_unique<Vesmar::IECSettings>, "5001ff0200ffffffff0afc", MeasurementType::IEC,
           Trace::Single);
    AddRow("RPE", Rpe, "5002050600ffffffff08ee", MeasurementType::RPE, Trace::Continuous);
    AddRow("RISO", Riso, PrepareRiso, MeasurementType::RISO, Trace::Continuous);
    AddRow(
        "ISUB", [] { return ForSeconds<Vesmar::ISUBSettings>(1); }, "5004050000ffffffff22e3",
        MeasurementType::ISUB, Trace::Continuous);
    AddRow("IPE", Ipe, "5005050500fffffffff0e7", MeasurementType::IPE, Trace::Continuous);
    AddRow("IDELTA", Idelta, "5006050100ffffffff2429", MeasurementType::IDELTA, Trace::Continuous);
    AddRow("IT", It, "5007050400fffffffff62d", MeasurementType::IT, Trace::Continuous);
    AddRow("POWER", Power, "5008050100ffffffff35b7", MeasurementType::POWER, Trace::Continuous);
    AddRow("HVTest", HighVoltage, "5009050500ffffffff47f6", MeasurementType::HVTest, Trace::HighVoltage);
}

void TestMeasurements::RunsToItsResult()
{
    QFETCH(const SettingsMaker, settings);
    QFETCH(const QByteArray, prepare);
    QFETCH(const int, type);
    QFETCH(const QByteArray, runningState);
    const bool isSingle = runningState == Trace::Single;
    Measuring measuring(WithQuickSingles());
    measuring.Prepare(*settings());
    QTRY_VERIFY_WITH_TIMEOUT(measuring.IsInState(MeasurementState::Prepared), Patience);
    QCOMPARE(measuring.CountSent(prepare), 1);
    QCOMPARE(measuring.CountSent(Frames::StartMeasurement), 0);

    measuring.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(measuring.States(), WholeMeasurement(runningState), Patience);
    QCOMPARE(measuring.CountSent(prepare), 1);
    QCOMPARE(measuring.CountSent(Frames::StartMeasurement), 1);
    QCOMPARE(measuring.CountSent(Frames::StopMeasurement) > 0, !isSingle);
    QCOMPARE(measuring.FunctionState(), isSingle ? Completed : Terminated);

    const Vesmar::MeasurementResults* results = measuring.tester->TestResults();
    QCOMPARE(static_cast<int>(results->GetMeasurementType()), type);
    QCOMPARE(results->_values, LastHandedOut(measuring.instrument));
    QVERIFY(results->_values.at(0) != 0.0F);
    QTRY_COMPARE_WITH_TIMEOUT(measuring.tester.Signalled("IsMeasurementRunning"), (QByteArrayList{"1", "0"}),
                              Patience);
    QCOMPARE(measuring.tester.Signalled("MeasurementTime").contains("1"), !isSingle);
    QCOMPARE(measuring.tester.Signalled("ErrorCode"), QByteArrayList());
    QVERIFY(measuring.tester.HasStayedOnItsThread());
}

void TestMeasurements::OneFollowsAnotherWithoutLeavingTheMode()
{
    Measuring measuring(WithQuickSingles());
    Vesmar::RLNSettings first;
    measuring.Prepare(first);
    measuring.tester->StartMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(measuring.States(), WholeMeasurement(Trace::Single), Patience);

    measuring.tester->StartMeasurement(*Riso());
    const QByteArrayList both = WholeMeasurement(Trace::Single) + WholeMeasurement(Trace::Continuous).mid(2);
    QTRY_COMPARE_WITH_TIMEOUT(measuring.States(), both, Patience);
    QCOMPARE(measuring.CountSent(PrepareRln), 1);
    QCOMPARE(measuring.CountSent(PrepareRiso), 1);
    QCOMPARE(measuring.CountSent(Frames::StartMeasurement), 2);
    QCOMPARE(measuring.tester->TestResults()->GetMeasurementType(), MeasurementType::RISO);
}

QTEST_GUILESS_MAIN(TestMeasurements)
#include "tst_measurements.moc"
