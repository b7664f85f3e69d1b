#include "storm/round.h"

#include <vector>

#include <QCoreApplication>
#include <QThread>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/risosettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

#include "virtualtime/virtualtime.h"

using namespace Vesmar;

namespace
{

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int OperationsOfRound = 60;
constexpr milliseconds Tick{5};
/// An exchange that is given up, the pause of the recovery, and the initialization.
constexpr seconds LongestWayBack{40};
/// The longest step has pauses of 3 s, and the exchange that is under way ends at once.
constexpr seconds LongestDisable{6};
/// An exchange with its repetitions, and eleven checks of the status.
constexpr seconds LongestSilence{60};

template <typename Settings, typename Mode>
std::unique_ptr<MeasurementSettings> WithMode(Mode mode)
{
    auto settings = std::make_unique<Settings>();
    settings->SetMode(mode);
    return settings;
}

template <typename Settings>
std::unique_ptr<MeasurementSettings> WithTime(int time)
{
    auto settings = std::make_unique<Settings>();
    settings->SetTime(time);
    return settings;
}

std::unique_ptr<MeasurementSettings> SomeSettings(Random& random)
{
    const int time = random.Between(-1, 10);
    switch (random.Below(11)) {
    case 0:
    case 1:
        return std::make_unique<RLNSettings>();
    case 2:
        return std::make_unique<IECSettings>();
    case 3:
        return WithTime<RPESettings>(time);
    case 4:
        return WithTime<RISOSettings>(time);
    case 5:
    case 6:
    case 7:
        return WithTime<HVTestSettings>(time);
    case 8:
        return WithMode<RCDSettings>(RCDSettings::RCDMode::UbRe);
    case 9:
        return WithMode<RCDSettings>(static_cast<RCDSettings::RCDMode>(random.Between(1, 2)));
    default:
        return WithMode<RCDIECSettings>(static_cast<RCDIECSettings::RCDIECMode>(random.Between(1, 3)));
    }
}

/// In these the next step sees an abort.
bool RunsMeasurement(const QByteArray& state)
{
    return state == "STARTING MEASUREMENT" || state == "SINGLE MEASUREMENT" ||
           state == "CONTINUOUS MEASUREMENT" || state == "HVTEST CONTINUOUS MEASUREMENT";
}

bool IsStopDue(MeasurementState status)
{
    return status == MeasurementState::Starting || status == MeasurementState::Running ||
           status == MeasurementState::Measuring;
}

/// An abort while a function is prepared or started, and any abort of an RCD test, leaves the requests to the
/// machine: a start that was asked for together with a preparation stays for the next function.
bool WithdrawsRequests(const Tester& tester)
{
    const MeasurementType type = tester.TestSettings()->GetMeasurementType();
    const MeasurementState status = tester.MeasurementStatus();
    return type != MeasurementType::RCD && type != MeasurementType::RCDIEC &&
           status != MeasurementState::Preparing && status != MeasurementState::Prepared &&
           status != MeasurementState::Starting;
}

} // namespace

const std::vector<QByteArray>& AllStates()
{
    static const std::vector<QByteArray> states = {"INITIALIZATION",
                                                   "MONITORING",
                                                   "COMMUNICATION RECOVERY",
                                                   "RESTARTING TESTER",
                                                   "TESTER CONFIGURATION",
                                                   "AWAIT UPDATE ACTION",
                                                   "UPDATING",
                                                   "PREPARING MEASUREMENT",
                                                   "STARTING MEASUREMENT",
                                                   "SINGLE MEASUREMENT",
                                                   "CONTINUOUS MEASUREMENT",
                                                   "HVTEST CONTINUOUS MEASUREMENT",
                                                   "STOPPING MEASUREMENT",
                                                   "ABORTING MEASUREMENT",
                                                   "RCD MONITORING",
                                                   "RCD UbRe MEASUREMENT",
                                                   "RCD IaTa MEASUREMENT",
                                                   "RCD IEC IaTa MEASUREMENT",
                                                   "RCD IEC CleanUp",
                                                   "UPDATE WHILE DISABLED"};
    return states;
}

Round::Round(std::uint64_t seed, Faults faults, Slack slack, Counts& counts)
    : _counts(counts), _faults(faults), _random(seed), _lineRandom(~seed), _checks(_instrument, slack)
{
    SerialLine::Get().Connect(_instrument, _lineRandom);
    SerialLine::Get().onRequest = [this](Exchange& exchange) { return InjectInto(exchange); };
    WatchLog([this] { _checks.Entered(); });
    if (IsSteady()) {
        _oneIn = _faults.steadyOneIn;
        _isArmed = true;
    } else {
        _oneIn = Pick<int>({1, 2, 5, 20}, _random);
        _target = !_faults.state.isEmpty() ? _faults.state
                  : _random.IsOneIn(2)     ? Pick(AllStates(), _random)
                                           : QByteArray();
        _isArmed = !_target.isEmpty();
    }
    _tester = std::make_unique<Tester>(nullptr);
}

Round::~Round()
{
    _tester.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// True as long as all holds.
bool Round::IsHeld() const
{
    const auto lock = SerialLine::Lock();
    return _checks.Finding().empty();
}

bool Round::InjectInto(Exchange& exchange)
{
    ++_counts.exchanges;
    _checks.Requested(exchange.request);
    const bool isPlace = _target.isEmpty() || _target == CurrentState();
    const Kind* const kind = _faults.kind != nullptr ? _faults.kind : &Pick(AllKinds(), _lineRandom);
    if (!_isArmed || !isPlace || !_lineRandom.IsOneIn(_oneIn) || !kind->apply(exchange)) {
        return false;
    }
    _checks.Record(std::string("<- ") + kind->name);
    _counts.Add(kind->name, CurrentState().toStdString());
    return true;
}

std::string Round::Run()
{
    Enable();
    for (int count = 0; count < OperationsOfRound && IsHeld(); ++count) {
        Operate();
        Wait(SomeTime(), _random.IsOneIn(4));
    }
    if (IsHeld()) {
        ComeToRest();
    }
    EndTrouble();
    Disable();
    Wait(seconds(2));
    return _checks.Finding();
}

/// Often hardly any, so that operations meet each other and every moment of an exchange.
Nanoseconds Round::SomeTime()
{
    switch (_random.Below(8)) {
    case 0:
        return Nanoseconds(0);
    case 1:
        return milliseconds(_random.Between(1, 20));
    case 2:
    case 3:
        return milliseconds(_random.Between(20, 300));
    case 4:
    case 5:
    case 6:
        return milliseconds(_random.Between(100, 2000));
    default:
        return milliseconds(_random.Between(2000, 9000));
    }
}

void Round::Operate()
{
    auto lock = SerialLine::Lock();
    ++_counts.operations;
    const int choice = _random.Below(100);
    if (choice < 70) {
        OperateMeasurement(choice);
    } else if (choice < 82) {
        _isArmed = IsSteady() || !_isArmed;
    } else if (choice < 86 || !SerialLine::Get().IsOpen()) {
        lock.unlock(); // It waits for the worker.
        Toggle();
    } else {
        OperateTester(choice);
    }
}

void Round::OperateMeasurement(int choice)
{
    if (choice < 12) {
        _checks.Record("enters measurement mode");
        _tester->SetIsMeasurementModeActive(true);
    } else if (choice < 15) {
        _checks.Record("leaves measurement mode");
        _checks.AbortSuperseded();
        _tester->SetIsMeasurementModeActive(false);
    } else if (choice < 27) {
        Prepare();
    } else if (choice < 45 || (choice < 50 && _tester->MeasurementStatus() == MeasurementState::Prepared)) {
        Start();
    } else if (choice < 56) {
        StartAnew();
    } else {
        Abort();
    }
}

void Round::OperateTester(int choice)
{
    switch (choice) {
    case 86:
    case 87:
        _tester->RetrieveDeviceInformation();
        break;
    case 88:
    case 89:
        _tester->RetrieveCurrentDateTime();
        break;
    case 90:
        _tester->RetrieveCalibrationDateTime();
        break;
    case 91:
    case 92:
        _tester->ConfigureCurrentDateTime(QDateTime::currentDateTime());
        break;
    case 93:
    case 94:
        _tester->ConfigureCalibrationDateTime(QDateTime::currentDateTime());
        break;
    case 95:
        _checks.Record("restarts");
        _checks.AbortSuperseded();
        _tester->RestartTester();
        break;
    case 96:
        Update();
        break;
    default:
        break; // The application does nothing for a while.
    }
}

void Round::Toggle()
{
    if (_tester->IsEnabled()) {
        Disable();
        Wait(milliseconds(_random.Below(3000)));
    }
    if (_random.IsOneIn(4)) {
        UpdateWhileDisabled();
    }
    Enable();
}

void Round::Enable()
{
    if (!_tester->IsEnabled()) {
        _enabledSince = VirtualTime::Now();
        _checks.Record("enables");
        _checks.Enabled();
        _tester->Enable();
    }
}

void Round::Disable()
{
    if (!_tester->IsEnabled()) {
        return;
    }
    const Nanoseconds begin = VirtualTime::Now();
    _checks.Record("disables");
    _checks.Disabling();
    _tester->Disable();
    if (VirtualTime::Now() - begin > LongestDisable && SerialLine::Get().LastStall() < begin) {
        _checks.Report("Disable() that takes too long");
    }
    QCoreApplication::processEvents();
    _timeWhenDisabled = _tester->MeasurementTime();
}

void Round::Prepare()
{
    const auto settings = SomeSettings(_random);
    const std::unique_ptr<QByteArray> payload(settings->CreateMeasurementFrame());
    _checks.Record("prepares " + payload->toHex().toStdString());
    _tester->PrepareMeasurement(*settings);
    WatchSettings();
    _checks.Prepared(*payload);
}

void Round::Start()
{
    ++_counts.starts;
    _checks.Record("starts");
    _checks.StartRequested();
    _tester->StartMeasurement();
}

void Round::StartAnew()
{
    ++_counts.starts;
    const auto settings = SomeSettings(_random);
    const std::unique_ptr<QByteArray> payload(settings->CreateMeasurementFrame());
    _checks.Record("prepares and starts " + payload->toHex().toStdString());
    _checks.Prepared(*payload);
    _checks.StartRequested();
    _tester->StartMeasurement(*settings);
    WatchSettings();
}

/// The settings that the library has published are objects of this thread.
void Round::WatchSettings()
{
    const QThread* const thread = QThread::currentThread();
    QObject::connect(_tester->TestSettings(), &QObject::destroyed, [this, thread] {
        if (QThread::currentThread() != thread) {
            _checks.Report("settings that are deleted on the worker's thread");
        }
    });
}

void Round::Abort()
{
    const auto lock = SerialLine::Lock();
    const bool isStopDue = _tester->IsEnabled() && _instrument.IsOutputOn() &&
                           RunsMeasurement(CurrentState()) && IsStopDue(_tester->MeasurementStatus());
    const bool withdraws = WithdrawsRequests(*_tester);
    _checks.Record("aborts while " + std::to_string(static_cast<int>(_tester->MeasurementStatus())));
    _tester->AbortMeasurement();
    // In real time, a preparation may have begun meanwhile.
    const bool isWatched = _checks.AbortRequested(withdraws && WithdrawsRequests(*_tester), isStopDue);
    _counts.aborts += isWatched ? 1 : 0;
}

void Round::Update()
{
    if (_tester->IsEnabled()) {
        _checks.Record("updates");
        _checks.AbortSuperseded();
        _tester->UpdateTester(_random.Bytes(512 * _random.Between(1, 3)), _random.Bytes(2));
    }
}

/// The application's thread carries the update out, and its slots run in the middle of it.
void Round::UpdateWhileDisabled()
{
    _checks.Record("updates while disabled");
    EnterState("UPDATE WHILE DISABLED");
    _checks.Enabled();
    const auto connection = QObject::connect(_tester.get(), &Tester::OperationStatusChanged,
                                             [this](OperationState) { ReenterUpdate(); });
    _tester->UpdateTester(_random.Bytes(512), _random.Bytes(2));
    QObject::disconnect(connection);
    _checks.Disabling();
}

void Round::ReenterUpdate()
{
    _tester->Enable();
    if (_tester->IsEnabled() || _tester->UpdateTester(_random.Bytes(512), _random.Bytes(2))) {
        _checks.Report("a second user of the line during an update");
    }
}

/// Looks at what must hold, and lets the application's event loop run, which may be blocked. While the
/// driver's thread is preempted, the application has one idea after the other.
void Round::Wait(Nanoseconds time, bool isBlocked)
{
    const Nanoseconds end = VirtualTime::Now() + time;
    do {
        if (!isBlocked) {
            QCoreApplication::processEvents();
        }
        VirtualTime::Sleep(std::min<Nanoseconds>(Tick, std::max(end - VirtualTime::Now(), Nanoseconds(1))));
        const auto lock = SerialLine::Lock();
        _checks.Poll();
        CheckWhileDisabled();
        CheckSilence();
    } while (VirtualTime::Now() < end && IsHeld() && !SerialLine::Get().IsPreempted());
}

void Round::CheckWhileDisabled()
{
    if (!_tester->IsEnabled() && _tester->MeasurementTime() != _timeWhenDisabled) {
        _checks.Report("the measurement time goes on while the library is disabled");
    }
}

/// A library that has heard nothing for long says so.
void Round::CheckSilence()
{
    const Nanoseconds since = std::max(_enabledSince, SerialLine::Get().LastByte());
    const bool isSilent = VirtualTime::Now() - since > LongestSilence;
    const Error error = _tester->ErrorCode();
    const bool isSaid = error >= Error::NoResponse && error <= Error::CommunicationRecovery;
    if (_tester->IsEnabled() && isSilent && !isSaid) {
        _checks.Report("a silent line that is not reported");
    }
}

bool Round::IsAtRest() const
{
    const auto lock = SerialLine::Lock();
    return CurrentState() == "MONITORING" && !_instrument.IsOutputOn() && !_instrument.IsFunctionActive() &&
           !_tester->IsMeasurementRunning() && SerialLine::Get().IsCalm();
}

bool Round::AwaitRest()
{
    _tester->SetIsMeasurementModeActive(false);
    const Nanoseconds end = VirtualTime::Now() + LongestWayBack;
    while (!IsAtRest() && VirtualTime::Now() < end && IsHeld()) {
        Wait(milliseconds(50));
    }
    return IsAtRest();
}

void Round::EndTrouble()
{
    const auto lock = SerialLine::Lock();
    _isArmed = false;
    SerialLine::Get().EndTrouble();
}

/// An abort waits for ever while the state of no function is known (docs/oddities.md), and an instrument
/// stays in update mode once an update has failed (docs/errors.md). A restart is the way out of both.
bool Round::IsStuckByOddity() const
{
    const auto lock = SerialLine::Lock();
    const bool isFunctionUnknown = _tester->MeasurementFunctionStatus() == FunctionState::Unknown;
    return (CurrentState() == "ABORTING MEASUREMENT" && isFunctionUnknown) ||
           CurrentState() == "AWAIT UPDATE ACTION" || CurrentState() == "UPDATING";
}

/// The faults are over, and the application wants nothing more.
void Round::ComeToRest()
{
    EndTrouble();
    if (_tester->IsEnabled() && !SerialLine::Get().IsOpen()) {
        Disable();
    }
    Enable();
    Abort();
    if (AwaitRest()) {
        return;
    }
    const bool isOddity = IsStuckByOddity();
    _checks.Record("restarts");
    _tester->RestartTester();
    if (!isOddity || !AwaitRest()) {
        _checks.Report("the machine does not come back to monitoring");
    }
}
