#include <array>
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

using Simulator::InstrumentOptions;
using Simulator::Scenario;
using Vesmar::FunctionState;
using Vesmar::HVTestSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

using Settings = std::shared_ptr<MeasurementSettings>;

Q_DECLARE_METATYPE(Settings)

namespace
{

constexpr int Completed = 2;
constexpr int Terminated = 9;

constexpr int StillPrepared = 4;
constexpr int LongTime = 600;

/// Longer than any test lasts: what takes so long is still going on when it is aborted.
constexpr std::chrono::hours Endless{1};

/// The library's codes last until the next status; slow answers make that long enough to be seen.
constexpr std::chrono::milliseconds SlowAnswer{400};

const QByteArray PrepareRiso = Wire::Bytes("5003050600ffffffffdba9");

/// Settings that measure for a second, with the options that `choose` sets.
template <typename FunctionSettings, typename Choose>
Settings ForASecond(const Choose& choose)
{
    auto settings = std::make_shared<FunctionSettings>();
    settings->SetTime(1);
    choose(*settings);
    return settings;
}

Settings Riso()
{
    return ForASecond<Vesmar::RISOSettings>([](auto& settings) {
        settings.SetMode(Vesmar::RISOSettings::RISOMode::Mode1);
        settings.SetVoltage(Vesmar::RISOSettings::RISOVoltage::Voltage2);
    });
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
        if (exchange.request == Wire::ReadMeasurement) {
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

void AddRow(const char* name, const Settings& settings, const QByteArray& prepare,
            const char* runningState = Trace::Continuous)
{
    QTest::newRow(name) << settings << prepare << QByteArray(runningState);
}

const QByteArrayList BackInPreparing{Trace::Aborting, Trace::MeasurementMode, Trace::Preparing};

/// A high-voltage test that has been asked to start, and how it is ended.
class HighVoltageRun : public Measuring
{
public:
    explicit HighVoltageRun(const InstrumentOptions& options = {}) : Measuring(options) {}

    void Start(int time = LongTime)
    {
        const auto settings = ForSeconds<HVTestSettings>(time);
        settings->SetMeasurementTimeOffset(0.0F);
        Prepare(*settings);
        tester->StartMeasurement();
    }

    /// Aborts, and waits until the library is ready for the next preparation.
    void Abort()
    {
        tester->AbortMeasurement();
        AWAIT_EQUAL(QByteArrayList(States().mid(States().size() - 3)), BackInPreparing);
        QVERIFY(!tester->IsMeasurementRunning());
        AWAIT(IsInState(MeasurementState::Preparing) || IsInState(MeasurementState::Prepared));
    }
};

} // namespace

/// Measurements of every function.
class TestMeasuring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void MeasurementRunsToItsResult_data();
    void MeasurementRunsToItsResult();
    void OneMeasurementFollowsAnotherInTheMode();
    void FailureIsReportedAndAborted_data();
    void FailureIsReportedAndAborted();
    void PrepareErrorGoesRound();
    void SettingsThatAreRefusedLoseTheLinkForAMoment_data();
    void SettingsThatAreRefusedLoseTheLinkForAMoment();
    void FunctionThatIsNeverPreparedWaits();
    void FunctionThatStaysStartingWaits();
    void FastSingleDeliversItsResult();
    void FunctionThatRunsOnIsStoppedAgain();
    void AbortWhilePreparing();
    void AbortWhenPrepared();
    void AbortRightAfterTheStartWasAcknowledged();
    void AbortBeforeTheStartShows();
    void AbortWhileStarting();
    void AbortWhileRunning();
    void AbortWhileStopping();
};

void TestMeasuring::MeasurementRunsToItsResult_data()
{
    using namespace Vesmar;
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<QByteArray>("prepare");
    QTest::addColumn<QByteArray>("runningState");
    AddRow("RLN", std::make_shared<RLNSettings>(), Wire::PrepareRln, Trace::Single);
    AddRow("IEC", std::make_shared<IECSettings>(), Wire::Bytes("5001ff0200ffffffff0afc"), Trace::Single);
    const auto rpe = [](RPESettings& settings) {
        settings.SetMethod(RPESettings::RPEMethod::Method1);
        settings.SetCurrent(RPESettings::RPECurrent::Current3);
    };
    AddRow("RPE", ForASecond<RPESettings>(rpe), Wire::Bytes("5002050600ffffffff08ee"));
    AddRow("RISO", Riso(), PrepareRiso);
    AddRow("ISUB", ForASecond<ISUBSettings>([](auto&) {}), Wire::Bytes("5004050000ffffffff22e3"));
    const auto ipe = [](IPESettings& settings) {
        settings.SetMode(IPESettings::IPEMode::Mode2);
        settings.SetConfiguration(IPESettings::IPEConfiguration::Configuration2);
    };
    AddRow("IPE", ForASecond<IPESettings>(ipe), Wire::Bytes("5005050500fffffffff0e7"));
    const auto idelta = [](auto& settings) { settings.SetMode(IDELTASettings::IDELTAMode::Mode2); };
    AddRow("IDELTA", ForASecond<IDELTASettings>(idelta), Wire::Bytes("5006050100ffffffff2429"));
    const auto it = [](auto& settings) {
        settings.SetConfiguration(ITSettings::ITConfiguration::Configuration2);
    };
    AddRow("IT", ForASecond<ITSettings>(it), Wire::Bytes("5007050400fffffffff62d"));
    const auto power = [](auto& settings) { settings.SetMode(POWERSettings::POWERMode::Mode2); };
    AddRow("POWER", ForASecond<POWERSettings>(power), Wire::Bytes("5008050100ffffffff35b7"));
    const auto highVoltage = [](HVTestSettings& settings) {
        settings.SetMode(HVTestSettings::HVMode::Mode2);
        settings.SetMeasurementTimeOffset(0.5F);
    };
    AddRow("HVTest", ForASecond<HVTestSettings>(highVoltage), Wire::Bytes("5009050500ffffffff47f6"),
           Trace::HighVoltage);
}

void TestMeasuring::MeasurementRunsToItsResult()
{
    QFETCH(const Settings, settings);
    QFETCH(const QByteArray, prepare);
    QFETCH(const QByteArray, runningState);
    const bool isSingle = runningState == Trace::Single;
    Measuring measuring(WithQuickSingles());
    measuring.Prepare(*settings);
    measuring.AwaitState(MeasurementState::Prepared);
    QCOMPARE(measuring.CountSent(prepare), 1);
    QCOMPARE(measuring.CountSent(Wire::StartMeasurement), 0);

    measuring.tester->StartMeasurement();
    AWAIT_EQUAL(measuring.States(), WholeMeasurement(runningState));
    QCOMPARE(measuring.CountSent(prepare), 1);
    QCOMPARE(measuring.CountSent(Wire::StartMeasurement), 1);
    QCOMPARE(measuring.CountSent(Wire::StopMeasurement) > 0, !isSingle);
    QCOMPARE(measuring.FunctionState(), isSingle ? Completed : Terminated);

    const Vesmar::MeasurementResults* results = measuring.tester->TestResults();
    QCOMPARE(results->GetMeasurementType(), settings->GetMeasurementType());
    QCOMPARE(results->_values, LastHandedOut(measuring.instrument));
    QVERIFY(results->_values.at(0) != 0.0F);
    AWAIT_EQUAL(measuring.tester.Signalled("IsMeasurementRunning"), (QByteArrayList{"1", "0"}));
    QCOMPARE(measuring.tester.Signalled("MeasurementTime").contains("1"), !isSingle);
    QCOMPARE(measuring.tester.Errors(), QByteArrayList());
    QVERIFY(measuring.tester.HasStayedOnItsThread());
}

void TestMeasuring::OneMeasurementFollowsAnotherInTheMode()
{
    Measuring measuring(WithQuickSingles());
    Vesmar::RLNSettings first;
    measuring.Prepare(first);
    measuring.tester->StartMeasurement();
    AWAIT_EQUAL(measuring.States(), WholeMeasurement(Trace::Single));

    measuring.tester->StartMeasurement(*Riso());
    const QByteArrayList both = WholeMeasurement(Trace::Single) + WholeMeasurement(Trace::Continuous).mid(2);
    AWAIT_EQUAL(measuring.States(), both);
    QCOMPARE(measuring.CountSent(Wire::PrepareRln), 1);
    QCOMPARE(measuring.CountSent(PrepareRiso), 1);
    QCOMPARE(measuring.CountSent(Wire::StartMeasurement), 2);
    QCOMPARE(measuring.tester->TestResults()->GetMeasurementType(), MeasurementType::RISO);
}

void TestMeasuring::FailureIsReportedAndAborted_data()
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

void TestMeasuring::FailureIsReportedAndAborted()
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
    const QByteArray& lastGoodRequest =
        scenario == Scenario::PrepareError ? Wire::PrepareRpe : Wire::StartMeasurement;
    AWAIT_EQUAL(measuring.CountSent(lastGoodRequest), 1);
    measuring.instrument.SetAnswerAfter(SlowAnswer);

    AWAIT(measuring.tester.Errors().contains(error));
    measuring.instrument.SetAnswerAfter(std::chrono::milliseconds(0));
    AWAIT(measuring.HasEntered(Trace::Preparing, 2));
    QVERIFY(measuring.HasEntered(Trace::Aborting));
    QVERIFY(!measuring.HasEntered(Trace::Stopping));
    QVERIFY(!measuring.HasEntered(Trace::Recovery));
    QVERIFY(!measuring.tester->IsMeasurementRunning());
    QCOMPARE(measuring.FunctionState(), functionState);
    QCOMPARE(measuring.CountSent(lastGoodRequest), 1);
}

void TestMeasuring::PrepareErrorGoesRound()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::PrepareError);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    const QByteArrayList round{Trace::MeasurementMode, Trace::Preparing, Trace::Aborting};
    AWAIT(measuring.States().size() >= 2 * round.size());
    QCOMPARE(QByteArrayList(measuring.States().mid(0, 2 * round.size())), round + round);
    QCOMPARE(measuring.CountSent(Wire::PrepareRpe), 1);
}

void TestMeasuring::SettingsThatAreRefusedLoseTheLinkForAMoment_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<bool>("isBare");
    QTest::addColumn<QByteArray>("prepare");
    QTest::newRow("refused") << Scenario::RefusesPrepare << false << Wire::PrepareRpe;
    QTest::newRow("without a function") << Scenario::None << true << Wire::PrepareNothing;
}

void TestMeasuring::SettingsThatAreRefusedLoseTheLinkForAMoment()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const bool, isBare);
    QFETCH(const QByteArray, prepare);
    Measuring measuring;
    measuring.instrument.SetScenario(scenario);
    Vesmar::RPESettings settings;
    Vesmar::MeasurementSettings bare(Vesmar::MeasurementType::RPE, nullptr);
    measuring.Prepare(isBare ? bare : settings);
    measuring.AwaitIdentity(2);
    QCOMPARE(measuring.CountSent(prepare), 3); // One request is tried three times.
    QVERIFY(measuring.HasEntered(Trace::Recovery));
    QVERIFY(!measuring.tester->GetIsMeasurementModeActive());
    AWAIT_EQUAL(measuring.tester.Errors().size(), 2); // The link is lost and found again.
    QCOMPARE(measuring.tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestMeasuring::FunctionThatIsNeverPreparedWaits()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::NeverPrepared);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    AWAIT_EQUAL(measuring.tester->MeasurementFunctionStatus(), FunctionState::Preparing);
    measuring.AwaitMoreRequests(Wire::ReadStatus, 4);
    QCOMPARE(measuring.States(), (QByteArrayList{Trace::MeasurementMode, Trace::Preparing}));
    QVERIFY(measuring.IsInState(MeasurementState::Preparing));
    QCOMPARE(measuring.CountSent(Wire::StartMeasurement), 0);
    QCOMPARE(measuring.tester.Errors(), QByteArrayList());
}

void TestMeasuring::FunctionThatStaysStartingWaits()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::StaysStarting);
    Vesmar::RPESettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    AWAIT_EQUAL(measuring.tester->MeasurementFunctionStatus(), FunctionState::Starting);
    measuring.AwaitMoreRequests(Wire::ReadStatus, 4);
    QCOMPARE(measuring.States(), (QByteArrayList{Trace::MeasurementMode, Trace::Preparing, Trace::Starting}));
    QVERIFY(measuring.IsInState(MeasurementState::Starting));
    QCOMPARE(measuring.CountSent(Wire::StartMeasurement), 1);
    QCOMPARE(measuring.tester.Errors(), QByteArrayList());
}

void TestMeasuring::FastSingleDeliversItsResult()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::FastSingle);
    Vesmar::RLNSettings settings;
    measuring.Prepare(settings);
    measuring.tester->StartMeasurement();
    AWAIT_EQUAL(measuring.States(),
                (QByteArrayList{Trace::MeasurementMode, Trace::Preparing, Trace::Starting, Trace::Single,
                                Trace::Stopping, Trace::MeasurementMode, Trace::Preparing}));
    QCOMPARE(measuring.tester->TestResults()->GetMeasurementType(), Vesmar::MeasurementType::RLN);
    QCOMPARE(measuring.CountSent(Wire::StopMeasurement), 0);
    QCOMPARE(measuring.tester.Signalled("IsMeasurementRunning"),
             QByteArrayList()); // No status has shown the function running.
    QCOMPARE(measuring.tester.Errors(), QByteArrayList());
}

void TestMeasuring::FunctionThatRunsOnIsStoppedAgain()
{
    Measuring measuring;
    measuring.instrument.SetScenario(Scenario::RunsOnAfterStop);
    const auto settings = ForSeconds<Vesmar::RPESettings>(1);
    measuring.Prepare(*settings);
    measuring.tester->StartMeasurement();
    AWAIT(measuring.HasEntered(Trace::Preparing, 2));
    QVERIFY(measuring.CountSent(Wire::StopMeasurement) > 1);
    QVERIFY(measuring.HasEntered(Trace::Stopping));
    QVERIFY(!measuring.HasEntered(Trace::Aborting));
    QCOMPARE(measuring.FunctionState(), Terminated);
    QVERIFY(!measuring.tester->IsMeasurementRunning());
}

void TestMeasuring::AbortWhilePreparing()
{
    InstrumentOptions options;
    options.model.functionTimings.preparing = Endless;
    HighVoltageRun run(options);
    run.Start();
    AWAIT_EQUAL(run.tester->MeasurementFunctionStatus(), FunctionState::Preparing);
    run.Abort();
    QCOMPARE(run.CountSent(Wire::StopMeasurement), 0); // A function that does not run counts as over.
    run.Leave();
    QCOMPARE(run.CountSent(Wire::StartMeasurement), 0);
}

void TestMeasuring::AbortWhenPrepared()
{
    HighVoltageRun run;
    HVTestSettings settings;
    run.Prepare(settings);
    run.AwaitState(MeasurementState::Prepared);
    run.tester->AbortMeasurement();
    run.AwaitMoreRequests(Wire::ReadStatus, 3);
    QVERIFY(!run.HasEntered(Trace::Aborting)); // A function that is merely prepared stays so.
    QCOMPARE(run.FunctionState(), StillPrepared);
    run.Leave();
    QCOMPARE(run.CountSent(Wire::StartMeasurement), 0);
}

void TestMeasuring::AbortRightAfterTheStartWasAcknowledged()
{
    InstrumentOptions options;
    options.model.functionTimings.startDelay = Endless;
    HighVoltageRun run(options);
    run.Start();
    AWAIT_EQUAL(run.CountSent(Wire::StartMeasurement), 1);
    QCOMPARE(run.FunctionState(), StillPrepared);
    run.Abort();
    QCOMPARE(run.CountSent(Wire::StopMeasurement), 0); // The start has not shown yet.
    run.Leave();
    QVERIFY(run.CountSent(Wire::StopMeasurement) > 0);
    QCOMPARE(run.CountSent(Wire::StartMeasurement), 1);
}

void TestMeasuring::AbortBeforeTheStartShows()
{
    InstrumentOptions options;
    options.model.functionTimings.startDelay = std::chrono::seconds(2);
    HighVoltageRun run(options);
    run.Start();
    AWAIT_EQUAL(run.CountSent(Wire::StartMeasurement), 1);
    run.Abort();
    AWAIT(run.FunctionState() != StillPrepared);
    run.Leave(); // The function runs although the abort is over: only leaving the mode ends it.
    QVERIFY(run.CountSent(Wire::StopMeasurement) > 0);
    QCOMPARE(run.CountSent(Wire::StartMeasurement), 1);
}

void TestMeasuring::AbortWhileStarting()
{
    InstrumentOptions options;
    options.model.functionTimings.starting = Endless;
    HighVoltageRun run(options);
    run.Start();
    AWAIT_EQUAL(run.tester->MeasurementFunctionStatus(), FunctionState::Starting);
    run.Abort();
    QVERIFY(run.CountSent(Wire::StopMeasurement) > 0);
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.HasEntered(Trace::HighVoltage));
    run.Leave();
}

void TestMeasuring::AbortWhileRunning()
{
    HighVoltageRun run;
    run.Start();
    run.AwaitState(MeasurementState::Measuring);
    QVERIFY(run.tester->IsMeasurementRunning());
    run.Abort();
    QVERIFY(run.CountSent(Wire::StopMeasurement) > 0);
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.HasEntered(Trace::Stopping));
    run.Leave();
}

void TestMeasuring::AbortWhileStopping()
{
    HighVoltageRun run;
    run.instrument.SetScenario(Simulator::Scenario::RunsOnAfterStop);
    run.Start(0);
    run.AwaitState(MeasurementState::Stopping);
    run.tester->AbortMeasurement();
    AWAIT(run.HasEntered(Trace::Preparing, 2));
    QVERIFY(!run.HasEntered(Trace::Aborting)); // The function is being stopped anyway.
    QCOMPARE(run.FunctionState(), Terminated);
    QVERIFY(!run.tester->IsMeasurementRunning());
    run.Leave();
}

QTEST_GUILESS_MAIN(TestMeasuring)
#include "tst_measuring.moc"
