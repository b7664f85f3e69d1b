#include <functional>
#include <memory>

#include <QDir>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include "machine/statemachine.h"
#include "support/serialdevice.h"
#include "unit/states/enginefixture.h"

using Vesmar::Error;
using Vesmar::MeasurementState;
using Vesmar::StateMachine;
using Vesmar::StateMachineContext;

namespace
{

constexpr int Patience = 30000; ///< Milliseconds until a condition counts as not met.

const QMap<char, QByteArray> Instrument = {
    {'s', Wire::StartTest0Status},
    {'W', Wire::Bytes("50415431323334353637383931303541424344323031361fe6")},
    {'R', Wire::Bytes("2412312359586199")},
    {'T', Wire::Bytes("200229000000b2b5")},
    {'x', Wire::Acknowledge}};

const QMap<char, QByteArray> Silent;

/// The banners from the start of the machine to its idle state.
const QStringList StartBanners = {
    Banner("ENTERING TESTER OPERATIONS STATE"), Banner("LEAVING TESTER OPERATIONS STATE"),
    Banner("ENTERING INITIALIZATION STATE"), Banner("LEAVING INITIALIZATION STATE"),
    Banner("ENTERING MONITORING STATE ")};

int ThreadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/// The instrument, the log and the machine.
struct Plant {
    explicit Plant(const QMap<char, QByteArray>& answers = Instrument)
    {
        peer.Answer([answers](const QByteArray& request) { return answers.value(request.at(0)); });
    }

    StateMachineContext& Context() const { return *machine->GetContext(); }

    ScriptedPeer peer;
    LogCapture log;
    std::unique_ptr<StateMachine> machine = std::make_unique<StateMachine>(nullptr);
};

/// Waits for the banner, an event loop running meanwhile.
bool WaitForBanner(const LogCapture& log, const char* text)
{
    return QTest::qWaitFor([&]() { return log.Texts().contains(Banner(text)); }, Patience);
}

bool WaitForMonitoring(const LogCapture& log)
{
    return WaitForBanner(log, "ENTERING MONITORING STATE ");
}

bool IsPortClosed(StateMachine& machine)
{
    QByteArray* response = nullptr;
    const int result = machine.GetTransciever()->RunQuery(Wire::ReadStatus, &response);
    return result == 3 && response == nullptr;
}

/// Brings the machine into a state; tells whether it got there.
using Prepare = std::function<bool(Plant&)>;

} // namespace

Q_DECLARE_METATYPE(Prepare)

class TestStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void ConstructionBuildsTheEngineWithThePortClosed();
    void HasAMetaObjectWithoutMembers();

    void EnableStartsAtTheRootAndReachesMonitoring();
    void EnableResetsTheMeasurementStatusAlone();
    void EnableInIdleSignalsNothing();
    void EnableWithoutADeviceRunsLinkRecovery();
    void EnableAfterTheDeviceAppearedFindsIt();

    void DisableWithoutAnEnableDoesNothing();
    void DisableEndsTheWorkerAndClosesThePort();
    void DisableLeavesTheCurrentStateWithoutItsExit();
    void DisableTwiceDoesNothingTheSecondTime();
    void DisableStopsTheMeasurementTimer();
    void DisableEndsAWaitingQuery();

    void SecondEnableStartsAnewAndKeepsEverythingButTheStatus();
    void EnableAfterACutShortExchangeRecoversTheLinkFirst();
    void ValuesSurviveADisable();
    void RequestMadeWhileDisabledIsServedOnEnable();
    void ManyCyclesLeaveNothingBehind();

    void DestructionInEveryStateEndsEveryThread_data();
    void DestructionInEveryStateEndsEveryThread();

    void UnpluggedInstrumentShows103Then100AndComesBack();
    void LostMeasurementRequestsAreForgotten();
    void ConfigurationIsServedFromMonitoring();
    void InstrumentInMode2IsRestartedWithoutARequest();
    void RestartRequestInUpdateModeRestartsToo();

private:
    int _threadsAtStart = 0;
};

void TestStateMachine::initTestCase()
{
    _threadsAtStart = ThreadCount();
}

/// A thread of the test before may take a moment to be gone.
void TestStateMachine::init()
{
    QTRY_COMPARE(ThreadCount(), _threadsAtStart);
}

void TestStateMachine::ConstructionBuildsTheEngineWithThePortClosed()
{
    const Plant plant;
    const StateMachineContext* context = plant.machine->GetContext();
    QVERIFY(context != nullptr);
    QVERIFY(context->GetCRC16() != nullptr);
    QVERIFY(context->GetCommandBuilder() != nullptr);
    QVERIFY(context->GetResponseParser() != nullptr);
    QVERIFY(context->GetTransciever() != nullptr);
    QCOMPARE(plant.machine->GetTransciever(), context->GetTransciever());
    QCOMPARE(context->parent(), nullptr);
    QCOMPARE(context->thread(), QThread::currentThread());
    QVERIFY(IsPortClosed(*plant.machine));
    QCOMPARE(plant.log.Texts(), QStringList{});
    QCOMPARE(plant.peer.RequestBytes(), QList<QByteArray>{});
}

void TestStateMachine::HasAMetaObjectWithoutMembers()
{
    const QMetaObject& meta = StateMachine::staticMetaObject;
    QCOMPARE(meta.className(), "Vesmar::StateMachine");
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void TestStateMachine::EnableStartsAtTheRootAndReachesMonitoring()
{
    const Plant plant;
    plant.machine->Enable();
    QVERIFY(plant.peer.WaitForRequests(7));
    QCOMPARE(Banners(plant.log), StartBanners);
    QCOMPARE(
        plant.peer.RequestBytes().mid(0, 7),
        (QList<QByteArray>{Wire::ReadStatus, Wire::ReadVersion, Wire::ReadCurrentDate,
                           Wire::ReadCalibrationDate, Wire::ReadStatus, Wire::ReadStatus, Wire::ReadStatus}));
}

void TestStateMachine::EnableResetsTheMeasurementStatusAlone()
{
    const Plant plant(Silent); // Nothing else happens to the cells for seconds.
    plant.Context().MeasurementStatus.Set(MeasurementState::Measuring);
    plant.Context().MeasurementTime.Set(7);
    plant.Context().ErrorCode.Set(Error::MeasurementFailed);
    plant.Context().IsMeasurementRunning.Set(true);
    const CellLog cells(plant.Context());
    plant.machine->Enable();
    QVERIFY(plant.peer.WaitForRequests(1));
    QCOMPARE(cells.Changes(), QStringList{QStringLiteral("MeasurementStatus=0")});
}

void TestStateMachine::EnableInIdleSignalsNothing()
{
    const Plant plant(Silent);
    const CellLog cells(plant.Context());
    plant.machine->Enable();
    QVERIFY(plant.peer.WaitForRequests(1));
    QCOMPARE(cells.Changes(), QStringList{});
}

void TestStateMachine::EnableWithoutADeviceRunsLinkRecovery()
{
    RedirectSerialDevice({});
    const LogCapture log;
    StateMachine machine(nullptr);
    const CellLog cells(*machine.GetContext());
    machine.Enable();
    QTRY_COMPARE_WITH_TIMEOUT(machine.GetContext()->ErrorCode.Get(), Error::NoResponse, Patience);
    QCOMPARE(cells.Changes(),
             (QStringList{QStringLiteral("CommunicationError=1"), QStringLiteral("ErrorCode=103"),
                          QStringLiteral("ErrorCode=100")}));
    QVERIFY(log.Contains(QStringLiteral("Transciever::Open: Serial port failed to open.")));
}

void TestStateMachine::EnableAfterTheDeviceAppearedFindsIt()
{
    Plant plant;
    RedirectSerialDevice({});
    plant.machine->Enable();
    QVERIFY(WaitForBanner(plant.log, "ENTERING COMMUNICATION RECOVERY STATE "));
    plant.machine->Disable();
    RedirectSerialDevice(plant.peer.DevicePath());
    plant.log.Clear();
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    QVERIFY(!plant.Context().CommunicationError.Get());
    QCOMPARE(plant.Context().ErrorCode.Get(), Error::NoErrors);
}

void TestStateMachine::DisableWithoutAnEnableDoesNothing()
{
    const Plant plant;
    const CellLog cells(plant.Context());
    const QSignalSpy stops(&plant.Context(), &StateMachineContext::StopMeasurementTimerRequested);
    const int threads = ThreadCount();
    plant.machine->Disable();
    QCOMPARE(plant.log.Texts(), QStringList{});
    QCOMPARE(cells.Changes(), QStringList{});
    QCOMPARE(stops.count(), 0);
    QCOMPARE(ThreadCount(), threads);
}

void TestStateMachine::DisableEndsTheWorkerAndClosesThePort()
{
    const Plant plant;
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    const QPointer<QObject> runner(plant.machine->GetSteppingRunner());
    QVERIFY(!runner.isNull());
    const int threads = ThreadCount();
    plant.machine->Disable();
    QVERIFY(runner.isNull());
    QTRY_COMPARE(ThreadCount(), threads - 1);
    QVERIFY(IsPortClosed(*plant.machine));
}

void TestStateMachine::DisableLeavesTheCurrentStateWithoutItsExit()
{
    const Plant plant;
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.machine->Disable();
    QStringList expected = StartBanners;
    if (plant.Context().CommunicationError.Get()) {
        expected += Banner(
            "LEAVING MONITORING STATE "); // The disable met an exchange, whose failure ended the state.
    }
    QCOMPARE(Banners(plant.log), expected);
}

void TestStateMachine::DisableTwiceDoesNothingTheSecondTime()
{
    Plant plant;
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.machine->Disable();
    const CellLog cells(plant.Context());
    const QSignalSpy stops(&plant.Context(), &StateMachineContext::StopMeasurementTimerRequested);
    plant.log.Clear();
    plant.machine->Disable();
    QCOMPARE(plant.log.Texts(), QStringList{});
    QCOMPARE(cells.Changes(), QStringList{});
    QCOMPARE(stops.count(), 0);
}

void TestStateMachine::DisableStopsTheMeasurementTimer()
{
    const Plant plant;
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.Context().StartMeasurementTimer(-1);
    QVERIFY(plant.Context().GetMeasurementTimer()->isActive());
    plant.machine->Disable();
    QVERIFY(!plant.Context().GetMeasurementTimer()->isActive());
}

void TestStateMachine::DisableEndsAWaitingQuery()
{
    const Plant plant(Silent);
    plant.machine->Enable();
    QVERIFY(plant.peer.WaitForRequests(1));
    QElapsedTimer time;
    time.start();
    plant.machine->Disable();
    QVERIFY(time.elapsed() < 12000); // Three time limits of 4 s, which the query would otherwise wait.
    QVERIFY(IsPortClosed(*plant.machine));
}

void TestStateMachine::SecondEnableStartsAnewAndKeepsEverythingButTheStatus()
{
    Plant plant;
    StateMachineContext& context = plant.Context();
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.machine->Disable();
    context.CommunicationError.Set(false); // An exchange that the disable cut short has raised it.
    context.MeasurementStatus.Set(MeasurementState::Prepared);
    context.MeasurementTime.Set(9);
    context.PrepareMeasurementRequested.Set(true);
    context.StartMeasurementRequested.Set(true);
    context.AbortMeasurementRequested.Set(true);
    context.IsMeasurementModeActive.Set(true);
    plant.log.Clear();
    const CellLog cells(context);
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    QCOMPARE(Banners(plant.log), StartBanners);
    QCOMPARE(
        cells.Changes(),
        (QStringList{QStringLiteral("MeasurementStatus=0"), QStringLiteral("AbortMeasurementRequested=0"),
                     QStringLiteral("PrepareMeasurementRequested=0"),
                     QStringLiteral("StartMeasurementRequested=0"),
                     QStringLiteral("IsMeasurementModeActive=0"), QStringLiteral("DeviceInformation")}));
    QCOMPARE(context.MeasurementTime.Get(), 9);
}

void TestStateMachine::EnableAfterACutShortExchangeRecoversTheLinkFirst()
{
    Plant plant(Silent);
    plant.machine->Enable();
    QVERIFY(plant.peer.WaitForRequests(1));
    plant.machine->Disable();
    QVERIFY(plant.Context().CommunicationError.Get());
    plant.peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    plant.log.Clear();
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    const QStringList recovery = {Banner("ENTERING COMMUNICATION RECOVERY STATE "),
                                  Banner("LEAVING COMMUNICATION RECOVERY STATE ")};
    QCOMPARE(Banners(plant.log), StartBanners.mid(0, 2) + recovery + StartBanners);
}

void TestStateMachine::ValuesSurviveADisable()
{
    const Plant plant;
    const StateMachineContext* context = plant.machine->GetContext();
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    const CellLog cells(plant.Context());
    plant.machine->Disable();
    QStringList changes = cells.Changes();
    changes.removeAll(QStringLiteral("CommunicationError=1")); // Of an exchange that was cut short.
    QCOMPARE(changes, QStringList{});
    QCOMPARE(plant.machine->GetContext(), context);
    QCOMPARE(context->DeviceInformation.Get()->SerialNumber, QStringLiteral("456789"));
    QCOMPARE(context->CurrentDateTime.Get(), QDateTime({2024, 12, 31}, {23, 59, 58}));
}

void TestStateMachine::RequestMadeWhileDisabledIsServedOnEnable()
{
    Plant plant;
    plant.Context().DeviceInformationRequested.Set(true);
    plant.machine->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!plant.Context().DeviceInformationRequested.Get(), Patience);
    QVERIFY(WaitForBanner(plant.log, "LEAVING TESTER CONFIGURATION STATE "));
    QCOMPARE(plant.peer.RequestBytes().count(Wire::ReadVersion), 2);
}

void TestStateMachine::ManyCyclesLeaveNothingBehind()
{
    {
        Plant plant;
        const int threadsDisabled = _threadsAtStart + 1; // That of the peer.
        for (int cycle = 0; cycle < 5; ++cycle) {
            plant.log.Clear();
            plant.machine->Enable();
            QVERIFY(WaitForMonitoring(plant.log));
            QTRY_COMPARE(ThreadCount(), threadsDisabled + 1);
            plant.machine->Disable();
            QTRY_COMPARE(ThreadCount(), threadsDisabled);
            QVERIFY(plant.machine->GetSteppingRunner() == nullptr);
        }
    }
    QTRY_COMPARE(ThreadCount(), _threadsAtStart);
}

void TestStateMachine::DestructionInEveryStateEndsEveryThread_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::newRow("constructed") << Prepare([](Plant&) { return true; });
    QTest::newRow("just enabled") << Prepare([](Plant& plant) {
        plant.machine->Enable();
        return true;
    });
    QTest::newRow("monitoring") << Prepare([](Plant& plant) {
        plant.machine->Enable();
        return WaitForMonitoring(plant.log);
    });
    QTest::newRow("query waiting") << Prepare([](Plant& plant) {
        plant.peer.AnswerAlways(Wire::Silence);
        plant.machine->Enable();
        return plant.peer.WaitForRequests(1);
    });
    QTest::newRow("between two attempts") << Prepare([](Plant& plant) {
        plant.peer.AnswerAlways(Wire::Refusal);
        plant.machine->Enable();
        return plant.peer.WaitForRequests(1);
    });
    QTest::newRow("link recovery") << Prepare([](Plant& plant) {
        plant.peer.AnswerAlways(Wire::Acknowledge);
        plant.machine->Enable();
        return WaitForBanner(plant.log, "ENTERING COMMUNICATION RECOVERY STATE ");
    });
    QTest::newRow("restart pause") << Prepare([](Plant& plant) {
        plant.Context().RestartRequested.Set(true);
        plant.machine->Enable();
        return WaitForBanner(plant.log, "ENTERING RESTARTING TESTER STATE ");
    });
    QTest::newRow("line hung up") << Prepare([](Plant& plant) {
        plant.machine->Enable();
        const bool isMonitoring = WaitForMonitoring(plant.log);
        plant.peer.HangUp();
        return isMonitoring;
    });
    QTest::newRow("disabled") << Prepare([](Plant& plant) {
        plant.machine->Enable();
        const bool isMonitoring = WaitForMonitoring(plant.log);
        plant.machine->Disable();
        return isMonitoring;
    });
    QTest::newRow("enabled again") << Prepare([](Plant& plant) {
        plant.machine->Enable();
        plant.machine->Disable();
        plant.machine->Enable();
        return WaitForMonitoring(plant.log);
    });
}

void TestStateMachine::DestructionInEveryStateEndsEveryThread()
{
    QFETCH(const Prepare, prepare);
    {
        Plant plant;
        QVERIFY(prepare(plant));
        plant.machine.reset();
    }
    QTRY_COMPARE(ThreadCount(), _threadsAtStart);
}

void TestStateMachine::UnpluggedInstrumentShows103Then100AndComesBack()
{
    Plant plant;
    plant.machine->GetTransciever()->SetMaxRetransmissions(0);
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.log.Clear();
    const CellLog cells(plant.Context());
    plant.peer.AnswerAlways(Wire::Silence);
    QTRY_COMPARE_WITH_TIMEOUT(plant.Context().ErrorCode.Get(), Error::NoResponse, Patience);
    QCOMPARE(cells.Changes(),
             (QStringList{QStringLiteral("CommunicationError=1"), QStringLiteral("ErrorCode=103"),
                          QStringLiteral("ErrorCode=100")}));
    QCOMPARE(Banners(plant.log), (QStringList{Banner("LEAVING MONITORING STATE "),
                                              Banner("ENTERING COMMUNICATION RECOVERY STATE ")}));
    plant.peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    QVERIFY(WaitForMonitoring(plant.log));
    QCOMPARE(Banners(plant.log).mid(2),
             QStringList{Banner("LEAVING COMMUNICATION RECOVERY STATE ")} + StartBanners);
    QCOMPARE(plant.Context().ErrorCode.Get(), Error::NoErrors);
}

void TestStateMachine::LostMeasurementRequestsAreForgotten()
{
    Plant plant;
    plant.peer.AnswerAlways(Wire::Acknowledge); // Wrong for a status, at once.
    StateMachineContext& context = plant.Context();
    plant.machine->Enable();
    QVERIFY(WaitForBanner(plant.log, "ENTERING COMMUNICATION RECOVERY STATE "));
    context.PrepareMeasurementRequested.Set(true);
    context.StartMeasurementRequested.Set(true);
    context.IsMeasurementModeActive.Set(true);
    plant.peer.Answer([](const QByteArray& request) { return Instrument.value(request.at(0)); });
    QVERIFY(WaitForMonitoring(plant.log));
    QVERIFY(!context.CommunicationError.Get());
    QVERIFY(!context.PrepareMeasurementRequested.Get());
    QVERIFY(!context.StartMeasurementRequested.Get());
    QVERIFY(!context.IsMeasurementModeActive.Get());
}

void TestStateMachine::ConfigurationIsServedFromMonitoring()
{
    Plant plant;
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    plant.log.Clear();
    plant.Context().CurrentDateTimeRequested.Set(true);
    QVERIFY(WaitForMonitoring(plant.log));
    QCOMPARE(
        Banners(plant.log),
        (QStringList{Banner("LEAVING MONITORING STATE "), Banner("ENTERING TESTER CONFIGURATION STATE "),
                     Banner("LEAVING TESTER CONFIGURATION STATE "), Banner("ENTERING MONITORING STATE ")}));
    QCOMPARE(plant.peer.RequestBytes().count(Wire::ReadCurrentDate), 2);
}

namespace
{

/// Answers as an instrument in another mode, which a mode change brings back into the normal one.
ScriptedPeer::Responder InMode(const QByteArray& status)
{
    const auto isNormal = std::make_shared<bool>(false); // On the peer's thread alone.
    return [status, isNormal](const QByteArray& request) {
        *isNormal = *isNormal || request == Wire::ChangeToNormalMode;
        const bool isOddStatus = request == Wire::ReadStatus && !*isNormal;
        return isOddStatus ? status : Instrument.value(request.at(0));
    };
}

} // namespace

void TestStateMachine::InstrumentInMode2IsRestartedWithoutARequest()
{
    Plant plant;
    plant.peer.Answer(InMode(Wire::Bytes("40f0d3e2")));
    plant.machine->Enable();
    QVERIFY(WaitForMonitoring(plant.log));
    const QStringList restart = {Banner("ENTERING RESTARTING TESTER STATE "),
                                 Banner("LEAVING RESTARTING TESTER STATE ")};
    QCOMPARE(Banners(plant.log), StartBanners.mid(0, 4) + restart + StartBanners);
    QCOMPARE(plant.peer.RequestBytes().mid(0, 8),
             (QList<QByteArray>{Wire::ReadStatus, Wire::ReadVersion, Wire::ChangeToNormalMode,
                                Wire::ReadStatus, Wire::ReadStatus, Wire::ReadVersion, Wire::ReadCurrentDate,
                                Wire::ReadCalibrationDate}));
}

void TestStateMachine::RestartRequestInUpdateModeRestartsToo()
{
    Plant plant;
    plant.peer.Answer(InMode(Wire::Bytes("60f035e4")));
    plant.machine->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(plant.Context().TesterMode.Get(), Vesmar::OperationMode::Update, Patience);
    plant.Context().RestartRequested.Set(true);
    QVERIFY(WaitForBanner(plant.log, "LEAVING RESTARTING TESTER STATE "));
    QVERIFY(!plant.Context().RestartRequested.Get());
    QCOMPARE(plant.peer.RequestBytes().count(Wire::ChangeToNormalMode), 1);
    plant.log.Clear();
    QVERIFY(WaitForMonitoring(plant.log));
    QCOMPARE(plant.Context().TesterMode.Get(), Vesmar::OperationMode::Normal);
}

QTEST_GUILESS_MAIN(TestStateMachine)
#include "tst_statemachine.moc"
