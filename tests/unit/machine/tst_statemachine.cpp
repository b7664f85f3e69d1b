#include <csignal>
#include <functional>
#include <memory>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <Vesmar/rpesettings.h>

#include "machine/statemachine.h"
#include "support/serialdevice.h"
#include "unit/machine/conditions.h"
#include "unit/machine/instrument.h"
#include "virtualtime/virtualtime.h"

using Vesmar::Error;
using Vesmar::MeasurementState;
using Vesmar::StateMachine;
using Vesmar::StateMachineContext;
using VirtualTime::ThreadCount;

namespace
{

QByteArray NoAnswer(const QByteArray& /*request*/)
{
    return {};
}

/// The banners from the start of the machine to its idle state.
const QStringList StartBanners = {
    Banner("ENTERING TESTER OPERATIONS STATE"), Banner("LEAVING TESTER OPERATIONS STATE"),
    Banner("ENTERING INITIALIZATION STATE"), Banner("LEAVING INITIALIZATION STATE"),
    Banner("ENTERING MONITORING STATE ")};

/// The instrument, the log and the machine.
struct Plant {
    explicit Plant(const ScriptedPeer::Responder& responder = &AnswerInNormalMode) { peer.Answer(responder); }

    /// Enables the machine and lets it reach its idle state.
    bool Connect() const
    {
        machine->Enable();
        return WaitForMonitoring();
    }

    /// Waits for the banner, while an event loop runs.
    bool WaitForBanner(const char* text) const
    {
        return QTest::qWaitFor([this, text]() { return log.Texts().contains(Banner(text)); }, Patience);
    }

    bool WaitForMonitoring() const { return WaitForBanner("ENTERING MONITORING STATE "); }

    bool IsPortClosed() const
    {
        QByteArray* response = nullptr;
        const int result = machine->GetTransciever()->RunQuery(Wire::ReadStatus, &response);
        return result == 3 && response == nullptr;
    }

    StateMachineContext& Context() const { return *machine->GetContext(); }

    ScriptedPeer peer;
    LogCapture log;
    std::unique_ptr<StateMachine> machine = std::make_unique<StateMachine>(nullptr);
};

/// Brings the machine into a state, and returns whether it is in it.
using Prepare = std::function<bool(Plant&)>;

/// An instrument that prepares and runs whatever it is told.
ScriptedPeer::Responder Measuring()
{
    const auto state = std::make_shared<int>(0); // Only the peer's thread uses it.
    return [state](const QByteArray& request) {
        constexpr int Prepared = 4;
        constexpr int Running = 7;
        *state = request.startsWith('P') ? Prepared : request == Wire::StartMeasurement ? Running : *state;
        return Wire::AnswerTo(request, Wire::Status(*state == 0 ? 0 : 2, *state));
    };
}

/// Connects and asks for a measurement without a time limit.
bool StartMeasuring(Plant& plant)
{
    auto* settings = new Vesmar::RPESettings;
    settings->SetTime(-1);
    Vesmar::ReplaceOwned<Vesmar::MeasurementSettings>(plant.Context().TestSettings, settings);
    const bool isMonitoring = plant.Connect();
    SetCells(plant.Context(),
             "IsMeasurementModeActive PrepareMeasurementRequested StartMeasurementRequested");
    return isMonitoring;
}

/// The answers of an instrument in another mode, which a mode change brings back into the normal mode.
ScriptedPeer::Responder InMode(const QByteArray& status)
{
    const auto isNormal = std::make_shared<bool>(false); // Only the peer's thread uses it.
    return [status, isNormal](const QByteArray& request) {
        *isNormal = *isNormal || request == Wire::ChangeToNormalMode;
        const bool isOddStatus = request == Wire::ReadStatus && !*isNormal;
        return isOddStatus ? status : Wire::AnswerTo(request);
    };
}

} // namespace

Q_DECLARE_METATYPE(Prepare)

class TestStateMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { _threadsAtStart = ThreadCount(); }

    /// A thread of the previous test may need a moment to end.
    void init() { QTRY_COMPARE(ThreadCount(), _threadsAtStart); }

    void ConstructionBuildsTheEngineWithThePortClosed()
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
        QVERIFY(plant.IsPortClosed());
        QCOMPARE(plant.log.Texts(), QStringList{});
        QCOMPARE(plant.peer.RequestBytes(), QList<QByteArray>{});
    }

    void HasAMetaObjectWithoutMembers()
    {
        const QMetaObject& meta = StateMachine::staticMetaObject;
        QCOMPARE(meta.className(), "Vesmar::StateMachine");
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void EnableStartsAtTheRootAndReachesMonitoring()
    {
        const Plant plant;
        plant.machine->Enable();
        QVERIFY(plant.peer.WaitForRequests(7));
        QCOMPARE(Banners(plant.log), StartBanners);
        QCOMPARE(plant.peer.RequestBytes().mid(0, 7),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ReadVersion, Wire::ReadCurrentDate,
                                    Wire::ReadCalibrationDate, Wire::ReadStatus, Wire::ReadStatus,
                                    Wire::ReadStatus}));
    }

    void EnableResetsTheMeasurementStatusAlone()
    {
        const Plant plant(&NoAnswer); // No other cell changes for seconds.
        SetCells(plant.Context(), "MeasurementStatus=5 MeasurementTime=7 ErrorCode=202 IsMeasurementRunning");
        const CellLog cells(plant.Context());
        plant.machine->Enable();
        QVERIFY(plant.peer.WaitForRequests(1));
        QCOMPARE(cells.Changes(), Changes("MeasurementStatus=0"));
    }

    void EnableWithoutADeviceRunsLinkRecovery()
    {
        RedirectSerialDevice({});
        const LogCapture log;
        StateMachine machine(nullptr);
        const CellLog cells(*machine.GetContext());
        machine.Enable();
        QTRY_COMPARE_WITH_TIMEOUT(machine.GetContext()->ErrorCode.Get(), Error::NoResponse, Patience);
        QCOMPARE(cells.Changes(), Changes("CommunicationError=1 ErrorCode=103 ErrorCode=100"));
        QVERIFY(log.Contains(QStringLiteral("Transciever::Open: Serial port failed to open.")));
    }

    void EnableAfterTheDeviceAppearedFindsIt()
    {
        Plant plant;
        RedirectSerialDevice({});
        plant.machine->Enable();
        QVERIFY(plant.WaitForBanner("ENTERING COMMUNICATION RECOVERY STATE "));
        plant.machine->Disable();
        RedirectSerialDevice(plant.peer.DevicePath());
        plant.log.Clear();
        QVERIFY(plant.Connect());
        QVERIFY(!plant.Context().CommunicationError.Get());
        QCOMPARE(plant.Context().ErrorCode.Get(), Error::NoErrors);
    }

    void DisableOfADisabledMachineDoesNothing_data()
    {
        QTest::addColumn<Prepare>("prepare");
        QTest::newRow("constructed") << Prepare([](Plant&) { return true; });
        QTest::newRow("disabled") << Prepare([](Plant& plant) {
            const bool isMonitoring = plant.Connect();
            plant.machine->Disable();
            return isMonitoring;
        });
    }

    void DisableOfADisabledMachineDoesNothing()
    {
        QFETCH(const Prepare, prepare);
        Plant plant;
        QVERIFY(prepare(plant));
        const CellLog cells(plant.Context());
        const QSignalSpy stops(&plant.Context(), &StateMachineContext::StopMeasurementTimerRequested);
        const int threads = ThreadCount();
        plant.log.Clear();
        plant.machine->Disable();
        QCOMPARE(plant.log.Texts(), QStringList{});
        QCOMPARE(cells.Changes(), QStringList{});
        QCOMPARE(stops.count(), 0);
        QCOMPARE(ThreadCount(), threads);
    }

    void DisableEndsTheWorkerTheTimerAndThePort()
    {
        const Plant plant;
        QVERIFY(plant.Connect());
        plant.Context().StartMeasurementTimer(-1);
        QVERIFY(plant.Context().GetMeasurementTimer()->isActive());
        const QPointer<QObject> runner(plant.machine->GetSteppingRunner());
        QVERIFY(!runner.isNull());
        const int threads = ThreadCount();
        plant.machine->Disable();
        QVERIFY(runner.isNull());
        QVERIFY(!plant.Context().GetMeasurementTimer()->isActive());
        QTRY_COMPARE(ThreadCount(), threads - 1);
        QVERIFY(plant.IsPortClosed());
    }

    /// No event loop runs here until the machine is disabled, so that the worker's start of the timer waits.
    void DisableStopsATimerWhoseStartStillWaits()
    {
        Plant plant(Measuring());
        QVERIFY(StartMeasuring(plant));
        const QDeadlineTimer deadline(Patience);
        while (plant.Context().MeasurementStatus.Get() != MeasurementState::Measuring &&
               !deadline.hasExpired()) {
            QThread::msleep(1);
        }
        QCOMPARE(plant.Context().MeasurementStatus.Get(), MeasurementState::Measuring);
        plant.machine->Disable();
        QCoreApplication::processEvents();
        QVERIFY(!plant.Context().GetMeasurementTimer()->isActive());
    }

    void DisableOfASlotThatSeesTheMeasurementStopsTheTimer()
    {
        Plant plant(Measuring());
        bool isDisabled = false;
        connect(&plant.Context().MeasurementStatus, &Vesmar::Notifible::ValueChanged, plant.machine.get(),
                [&] {
                    if (plant.Context().MeasurementStatus.Get() == MeasurementState::Measuring) {
                        plant.machine->Disable();
                        isDisabled = true;
                    }
                });
        QVERIFY(StartMeasuring(plant));
        QTRY_VERIFY_WITH_TIMEOUT(isDisabled, Patience);
        QCoreApplication::processEvents();
        QVERIFY(!plant.Context().GetMeasurementTimer()->isActive());
    }

    void DisableKeepsTheValuesAndCallsNoExit()
    {
        const Plant plant;
        const StateMachineContext* context = plant.machine->GetContext();
        QVERIFY(plant.Connect());
        const CellLog cells(plant.Context());
        plant.machine->Disable();
        // A disable during an exchange makes the exchange fail, and the failure ends the state.
        const bool isCutShort = context->CommunicationError.Get();
        QCOMPARE(cells.Changes(), isCutShort ? Changes("CommunicationError=1") : QStringList{});
        QCOMPARE(Banners(plant.log),
                 isCutShort ? StartBanners + QStringList{Banner("LEAVING MONITORING STATE ")} : StartBanners);
        QCOMPARE(plant.machine->GetContext(), context);
        QCOMPARE(context->DeviceInformation.Get()->SerialNumber, QStringLiteral("204815"));
        QCOMPARE(context->CurrentDateTime.Get(), QDateTime({2024, 3, 7}, {14, 5, 9}));
    }

    void DisableEndsAWaitingQuery()
    {
        const Plant plant(&NoAnswer);
        plant.machine->Enable();
        QVERIFY(plant.peer.WaitForRequests(1));
        QElapsedTimer time;
        time.start();
        plant.machine->Disable();
        QVERIFY(time.elapsed() <= 101); // The query ends with its next poll, and the step with its pause.
        QVERIFY(plant.IsPortClosed());
    }

    void TheWorkerLeavesSignalsToTheApplication()
    {
        Plant plant;
        sigset_t ofTheWorker{};
        const auto readSignals = [&ofTheWorker] { pthread_sigmask(SIG_BLOCK, nullptr, &ofTheWorker); };
        QObject::connect(&plant.Context().DeviceInformation, &Vesmar::Notifible::ValueChanged,
                         plant.machine.get(), readSignals, Qt::DirectConnection);
        QVERIFY(plant.Connect());
        sigset_t ofTheApplication{};
        pthread_sigmask(SIG_BLOCK, nullptr, &ofTheApplication);
        for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGALRM, SIGCHLD, SIGUSR1, SIGUSR2, SIGIO}) {
            QCOMPARE(sigismember(&ofTheWorker, signal), 1);
            QCOMPARE(sigismember(&ofTheApplication, signal), 0);
        }
        for (const int fault : {SIGBUS, SIGFPE, SIGILL, SIGSEGV}) {
            QCOMPARE(sigismember(&ofTheWorker, fault), 0);
        }
    }

    void SecondEnableStartsAnewAndKeepsEverythingButTheStatus()
    {
        Plant plant;
        StateMachineContext& context = plant.Context();
        QVERIFY(plant.Connect());
        plant.machine->Disable();
        context.CommunicationError.Set(false); // The disable may have cut an exchange short.
        SetCells(
            context,
            "MeasurementStatus=2 MeasurementTime=9 PrepareMeasurementRequested StartMeasurementRequested "
            "AbortMeasurementRequested IsMeasurementModeActive");
        plant.log.Clear();
        const CellLog cells(context);
        QVERIFY(plant.Connect());
        QCOMPARE(Banners(plant.log), StartBanners);
        QCOMPARE(cells.Changes(),
                 Changes("MeasurementStatus=0 AbortMeasurementRequested=0 PrepareMeasurementRequested=0 "
                         "StartMeasurementRequested=0 IsMeasurementModeActive=0 DeviceInformation"));
        QCOMPARE(context.MeasurementTime.Get(), 9);
    }

    void EnableAfterACutShortExchangeRecoversTheLinkFirst()
    {
        Plant plant(&NoAnswer);
        plant.machine->Enable();
        QVERIFY(plant.peer.WaitForRequests(1));
        plant.machine->Disable();
        QVERIFY(plant.Context().CommunicationError.Get());
        plant.peer.Answer(&AnswerInNormalMode);
        plant.log.Clear();
        QVERIFY(plant.Connect());
        const QStringList recovery = {Banner("ENTERING COMMUNICATION RECOVERY STATE "),
                                      Banner("LEAVING COMMUNICATION RECOVERY STATE ")};
        QCOMPARE(Banners(plant.log), StartBanners.mid(0, 2) + recovery + StartBanners);
    }

    void RequestMadeWhileDisabledIsAnsweredAfterEnable()
    {
        Plant plant;
        plant.Context().DeviceInformationRequested.Set(true);
        plant.machine->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(!plant.Context().DeviceInformationRequested.Get(), Patience);
        QVERIFY(plant.WaitForBanner("LEAVING TESTER CONFIGURATION STATE "));
        QCOMPARE(plant.peer.RequestBytes().count(Wire::ReadVersion), 2);
    }

    void ManyCyclesLeaveNothingBehind()
    {
        {
            Plant plant;
            const int threadsDisabled = _threadsAtStart + 1; // The peer has one.
            for (int cycle = 0; cycle < 5; ++cycle) {
                plant.log.Clear();
                QVERIFY(plant.Connect());
                QTRY_COMPARE(ThreadCount(), threadsDisabled + 1);
                plant.machine->Disable();
                QTRY_COMPARE(ThreadCount(), threadsDisabled);
                QVERIFY(plant.machine->GetSteppingRunner() == nullptr);
            }
        }
        QTRY_COMPARE(ThreadCount(), _threadsAtStart);
    }

    void DestructionInEveryStateEndsEveryThread_data()
    {
        QTest::addColumn<Prepare>("prepare");
        QTest::newRow("constructed") << Prepare([](Plant&) { return true; });
        QTest::newRow("just enabled") << Prepare([](Plant& plant) {
            plant.machine->Enable();
            return true;
        });
        QTest::newRow("monitoring") << Prepare([](Plant& plant) { return plant.Connect(); });
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
            return plant.WaitForBanner("ENTERING COMMUNICATION RECOVERY STATE ");
        });
        QTest::newRow("restart pause") << Prepare([](Plant& plant) {
            plant.Context().RestartRequested.Set(true);
            plant.machine->Enable();
            return plant.WaitForBanner("ENTERING RESTARTING TESTER STATE ");
        });
        QTest::newRow("line hung up") << Prepare([](Plant& plant) {
            const bool isMonitoring = plant.Connect();
            plant.peer.HangUp();
            return isMonitoring;
        });
        QTest::newRow("disabled") << Prepare([](Plant& plant) {
            const bool isMonitoring = plant.Connect();
            plant.machine->Disable();
            return isMonitoring;
        });
        QTest::newRow("enabled again") << Prepare([](Plant& plant) {
            plant.machine->Enable();
            plant.machine->Disable();
            return plant.Connect();
        });
    }

    void DestructionInEveryStateEndsEveryThread()
    {
        QFETCH(const Prepare, prepare);
        {
            Plant plant;
            QVERIFY(prepare(plant));
            plant.machine.reset();
        }
        QTRY_COMPARE(ThreadCount(), _threadsAtStart);
    }

    void UnpluggedInstrumentShows103AndComesBack()
    {
        Plant plant;
        plant.machine->GetTransciever()->SetMaxRetransmissions(0);
        QVERIFY(plant.Connect());
        plant.log.Clear();
        const CellLog cells(plant.Context());
        plant.peer.AnswerAlways(Wire::Silence);
        QTRY_COMPARE_WITH_TIMEOUT(plant.Context().ErrorCode.Get(), Error::CommunicationRecovery, Patience);
        QCOMPARE(cells.Changes(), Changes("CommunicationError=1 ErrorCode=103"));
        QCOMPARE(Banners(plant.log), (QStringList{Banner("LEAVING MONITORING STATE "),
                                                  Banner("ENTERING COMMUNICATION RECOVERY STATE ")}));
        plant.peer.Answer(&AnswerInNormalMode);
        QVERIFY(plant.WaitForMonitoring());
        QCOMPARE(Banners(plant.log).mid(2),
                 QStringList{Banner("LEAVING COMMUNICATION RECOVERY STATE ")} + StartBanners);
        QCOMPARE(plant.Context().ErrorCode.Get(), Error::NoErrors);
    }

    void LostMeasurementRequestsAreForgotten()
    {
        Plant plant;
        plant.peer.AnswerAlways(Wire::Acknowledge); // This is no status: the request fails at once.
        StateMachineContext& context = plant.Context();
        plant.machine->Enable();
        QVERIFY(plant.WaitForBanner("ENTERING COMMUNICATION RECOVERY STATE "));
        SetCells(context, "PrepareMeasurementRequested StartMeasurementRequested IsMeasurementModeActive");
        const CellLog cells(context);
        plant.peer.Answer(&AnswerInNormalMode);
        QVERIFY(plant.WaitForMonitoring());
        for (const QString& change : Changes("PrepareMeasurementRequested=0 StartMeasurementRequested=0 "
                                             "IsMeasurementModeActive=0 CommunicationError=0")) {
            QVERIFY2(cells.Changes().contains(change), qPrintable(change));
        }
    }

    void ConfigurationIsRequestedFromMonitoring()
    {
        Plant plant;
        QVERIFY(plant.Connect());
        plant.log.Clear();
        plant.Context().CurrentDateTimeRequested.Set(true);
        QVERIFY(plant.WaitForMonitoring());
        QCOMPARE(Banners(plant.log), (QStringList{Banner("LEAVING MONITORING STATE "),
                                                  Banner("ENTERING TESTER CONFIGURATION STATE "),
                                                  Banner("LEAVING TESTER CONFIGURATION STATE "),
                                                  Banner("ENTERING MONITORING STATE ")}));
        QCOMPARE(plant.peer.RequestBytes().count(Wire::ReadCurrentDate), 2);
    }

    void InstrumentInMode2IsRestartedWithoutARequest()
    {
        Plant plant;
        plant.peer.Answer(InMode(Wire::Mode2Status));
        QVERIFY(plant.Connect());
        const QStringList restart = {Banner("ENTERING RESTARTING TESTER STATE "),
                                     Banner("LEAVING RESTARTING TESTER STATE ")};
        QCOMPARE(Banners(plant.log), StartBanners.mid(0, 4) + restart + StartBanners);
        QCOMPARE(plant.peer.RequestBytes().mid(0, 8),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ReadVersion, Wire::ChangeToNormalMode,
                                    Wire::ReadStatus, Wire::ReadStatus, Wire::ReadVersion,
                                    Wire::ReadCurrentDate, Wire::ReadCalibrationDate}));
    }

    void RestartRequestInUpdateModeRestartsToo()
    {
        Plant plant;
        plant.peer.Answer(InMode(Wire::UpdateModeStatus));
        plant.machine->Enable();
        QTRY_COMPARE_WITH_TIMEOUT(plant.Context().TesterMode.Get(), Vesmar::OperationMode::Update, Patience);
        plant.Context().RestartRequested.Set(true);
        QVERIFY(plant.WaitForBanner("LEAVING RESTARTING TESTER STATE "));
        QVERIFY(!plant.Context().RestartRequested.Get());
        QCOMPARE(plant.peer.RequestBytes().count(Wire::ChangeToNormalMode), 1);
        plant.log.Clear();
        QVERIFY(plant.WaitForMonitoring());
        QCOMPARE(plant.Context().TesterMode.Get(), Vesmar::OperationMode::Normal);
    }

private:
    int _threadsAtStart = 0;
};

QTEST_GUILESS_MAIN(TestStateMachine)
#include "tst_statemachine.moc"
