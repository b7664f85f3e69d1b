#include "explorer/machine.h"

#include <algorithm>

#include <QCoreApplication>
#include <QTimer>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

#include "context/responseparser.h"
#include "explorer/members.h"
#include "explorer/privatemembers.h"
#include "link/transciever.h"
#include "states/state.h"
#include "support/wire.h"
#include "unit/facade/testeraccess.h"

using namespace Vesmar;

namespace
{

constexpr int OneSecond = 1;
constexpr int Endless = -1;

template <typename Class>
std::unique_ptr<MeasurementSettings> Create()
{
    return std::make_unique<Class>();
}

template <typename Class, int Time>
std::unique_ptr<MeasurementSettings> CreateTimed()
{
    auto settings = std::make_unique<Class>();
    settings->SetTime(Time);
    return settings;
}

template <typename Class, auto Mode>
std::unique_ptr<MeasurementSettings> CreateWithMode()
{
    auto settings = std::make_unique<Class>();
    settings->SetMode(Mode);
    return settings;
}

/// The five requests that are carried out in the configuration state, in the order of their bits.
template <typename Context>
auto ConfigurationRequests(Context& context)
{
    return std::array{&context.DeviceInformationRequested, &context.CurrentDateTimeConfigurationRequested,
                      &context.CalibrationDateTimeConfigurationRequested, &context.CurrentDateTimeRequested,
                      &context.CalibrationDateTimeRequested};
}

/// The results that a guard tells apart: those of RLN, those of IEC, and all others.
constexpr std::array<MeasurementType, 3> ResultTypes{MeasurementType::RPE, MeasurementType::RLN,
                                                     MeasurementType::IEC};

std::int16_t ResultsOf(const StateMachineContext& context)
{
    const auto* const found = std::find(ResultTypes.begin() + 1, ResultTypes.end(),
                                        context.TestResults.Get()->GetMeasurementType());
    return static_cast<std::int16_t>(found != ResultTypes.end() ? found - ResultTypes.begin() : 0);
}

template <typename Value>
std::int16_t NumberOf(const ThreadSafeProperty<Value>& cell)
{
    return static_cast<std::int16_t>(cell.Get());
}

template <typename Value>
void SetNumber(ThreadSafeProperty<Value>& cell, std::int16_t number)
{
    cell.Set(static_cast<Value>(number));
}

bool IsWithin(const State* state, const State* outer)
{
    return state != nullptr && (state == outer || IsWithin(state->GetParentState(), outer));
}

/// Whether a row leads from a state, or from one around it, to another. No two rows do for the same pair.
bool Leads(const Transition& row, const State* from, const State* to,
           const std::vector<std::unique_ptr<State>>& states)
{
    const auto stateOf = [&states](StateId id) { return states.at(static_cast<std::size_t>(id)).get(); };
    const bool leaves =
        row.kind == TransitionKind::External ? IsWithin(from, stateOf(row.from)) : from == stateOf(row.from);
    return leaves && to == stateOf(row.to);
}

int RowBetween(const State* from, const State* to, const std::vector<std::unique_ptr<State>>& states)
{
    const auto* const found =
        std::find_if(TransitionMap.begin(), TransitionMap.end(),
                     [&](const Transition& row) { return Leads(row, from, to, states); });
    return static_cast<int>(found - TransitionMap.begin());
}

/// Whether the initialization comes before anything else looks at the requests of a measurement, which it
/// withdraws.
bool IsBeforeInitialization(StateId state, bool isEntryPending)
{
    switch (state) {
    case StateId::TesterOperations:
    case StateId::RestartingTester:
    case StateId::CommunicationRecovery:
        return true;
    case StateId::Initialization:
        return isEntryPending;
    default:
        return false;
    }
}

bool IsContinuous(StateId state)
{
    return state == StateId::ContinuousMeasurementRunning ||
           state == StateId::HVTestContinuousMeasurementRunning;
}

/// Clears what is always cleared before anything looks at it.
void ForgetWhatIsCleared(Configuration& configuration)
{
    const auto state = static_cast<StateId>(configuration.state);
    if (IsBeforeInitialization(state, configuration.isEntryPending != 0)) {
        configuration.isPrepareRequested = 0;
        configuration.isStartRequested = 0;
        configuration.isAbortRequested = 0;
        configuration.isModeActive = 0;
    }
    if (!IsContinuous(state) || configuration.isEntryPending != 0) {
        configuration.isTimeElapsed = 0;
    }
}

bool IsRcdRun(std::size_t state)
{
    return state >= static_cast<std::size_t>(StateId::RCDUbReMeasurementRunning);
}

} // namespace

const std::array<Settings, 10> AllSettings{{
    {"no function", [] { return std::make_unique<MeasurementSettings>(MeasurementType::None, nullptr); }},
    {"RLN", Create<RLNSettings>},
    {"IEC", Create<IECSettings>},
    {"an endless RPE measurement", CreateTimed<RPESettings, Endless>},
    {"a high-voltage test of a second", CreateTimed<HVTestSettings, OneSecond>},
    {"Ub/Re", CreateWithMode<RCDSettings, RCDSettings::RCDMode::UbRe>},
    {"Ia/Ta", CreateWithMode<RCDSettings, RCDSettings::RCDMode::IaTa1>},
    {"IEC Ia/Ta", CreateWithMode<RCDIECSettings, RCDIECSettings::RCDIECMode::IaTa1>},
    {"a clean-up", CreateWithMode<RCDIECSettings, RCDIECSettings::RCDIECMode::CleanUp>},
    {"an RPE measurement of a second", CreateTimed<RPESettings, OneSecond>},
}};

Machine::Machine() : _tester(nullptr), _context(TesterAccess::ContextOf(_tester)), _runner(&_context, nullptr)
{
    Line::Connect(&_instrument);
    QObject::connect(&_context, &StateMachineContext::StartMeasurementTimerRequested,
                     [this](int time) { _timeLimit = time; });
    PrivateMembers::IsEnabled(_tester) = true;
    for (const auto& state : PrivateMembers::States(_runner)) {
        if (auto* const rcd = dynamic_cast<RCDState*>(state.get())) {
            PrivateMembers::ShortenBudgets(*rcd);
        }
    }
    Reenable();
}

Configuration Machine::Save() const
{
    Configuration saved;
    auto& runner = const_cast<StateMachineRunner&>(_runner);
    saved.state = static_cast<std::int16_t>(CurrentState());
    saved.isEntryPending = PrivateMembers::IsEntryPending(runner);
    saved.settings = static_cast<std::int16_t>(_settings);
    saved.isRestartRequested = NumberOf(_context.RestartRequested);
    saved.isPrepareRequested = NumberOf(_context.PrepareMeasurementRequested);
    saved.isStartRequested = NumberOf(_context.StartMeasurementRequested);
    saved.isAbortRequested = NumberOf(_context.AbortMeasurementRequested);
    saved.isUpdateRequested = NumberOf(_context.UpdateRequested);
    saved.isModeActive = NumberOf(_context.IsMeasurementModeActive);
    for (const auto* cell : ConfigurationRequests(_context)) {
        saved.configurationRequests =
            static_cast<std::int16_t>(saved.configurationRequests * 2 + NumberOf(*cell));
    }
    saved.hasCommunicationError = NumberOf(_context.CommunicationError);
    saved.isTimeElapsed = NumberOf(_context.MeasurementTimeElapsed);
    saved.isRunning = NumberOf(_context.IsMeasurementRunning);
    saved.measurementStatus = NumberOf(_context.MeasurementStatus);
    saved.isTimerActive = _context.GetMeasurementTimer()->isActive();
    saved.timeLimit = static_cast<std::int16_t>(saved.isTimerActive != 0 ? _timeLimit : 0);
    saved.mode = NumberOf(_context.TesterMode);
    saved.function = NumberOf(_context.CurrentMeasurementType);
    saved.startTest = NumberOf(_context.StartTestStatus);
    saved.functionState = NumberOf(_context.MeasurementFunctionStatus);
    saved.hasError = _context.ErrorCode.Get() != Error::NoErrors;
    saved.results = ResultsOf(_context);
    const InstrumentState& instrument = _instrument.state;
    saved.instrumentFunction = instrument.function;
    saved.instrumentState = instrument.functionState;
    saved.instrumentFlags =
        static_cast<std::int16_t>(instrument.isStartPending * 1 + instrument.hasNew * 2 +
                                  instrument.hasPassedStartTest * 4 + instrument.mode * 8);
    if (saved.isEntryPending == 0) {
        saved.members = Members::Of(static_cast<StateId>(saved.state), *_runner.GetCurrentState());
    }
    ForgetWhatIsCleared(saved);
    return saved;
}

void Machine::Restore(const Configuration& configuration)
{
    RestoreRunner(configuration);
    RestoreRequests(configuration);
    RestoreMeasurement(configuration);
    RestoreKnowledge(configuration);
    RestoreInstrument(configuration);
}

void Machine::RestoreRunner(const Configuration& configuration)
{
    const auto index = static_cast<std::size_t>(configuration.state);
    State* const state = PrivateMembers::States(_runner).at(index).get();
    PrivateMembers::CurrentState(_runner) = state;
    PrivateMembers::IsEntryPending(_runner) = configuration.isEntryPending != 0;
    if (configuration.isEntryPending == 0) {
        Members::WriteBack(configuration.members, static_cast<StateId>(index), *state);
    }
}

void Machine::RestoreRequests(const Configuration& configuration)
{
    if (static_cast<std::size_t>(configuration.settings) != _settings) {
        _settings = static_cast<std::size_t>(configuration.settings);
        const std::unique_ptr<MeasurementSettings> previous(_context.TestSettings.Get());
        _context.TestSettings.Set(AllSettings.at(_settings).create().release());
    }
    SetNumber(_context.RestartRequested, configuration.isRestartRequested);
    SetNumber(_context.PrepareMeasurementRequested, configuration.isPrepareRequested);
    SetNumber(_context.StartMeasurementRequested, configuration.isStartRequested);
    SetNumber(_context.AbortMeasurementRequested, configuration.isAbortRequested);
    SetNumber(_context.UpdateRequested, configuration.isUpdateRequested);
    SetNumber(_context.IsMeasurementModeActive, configuration.isModeActive);
    int bit = 16;
    for (auto* cell : ConfigurationRequests(_context)) {
        cell->Set((configuration.configurationRequests & bit) != 0);
        bit /= 2;
    }
}

void Machine::RestoreMeasurement(const Configuration& configuration)
{
    if (configuration.isTimerActive != 0) {
        _timeLimit = configuration.timeLimit;
        _context.OnStartMeasurementTimerRequested(_timeLimit, 0);
    } else {
        _context.OnStopMeasurementTimerRequested();
    }
    SetNumber(_context.CommunicationError, configuration.hasCommunicationError);
    SetNumber(_context.MeasurementTimeElapsed, configuration.isTimeElapsed);
    SetNumber(_context.IsMeasurementRunning, configuration.isRunning);
    SetNumber(_context.MeasurementStatus, configuration.measurementStatus);
}

void Machine::RestoreKnowledge(const Configuration& configuration)
{
    _context.NewMeasurement.Set(false);
    SetNumber(_context.TesterMode, configuration.mode);
    SetNumber(_context.CurrentMeasurementType, configuration.function);
    SetNumber(_context.StartTestStatus, configuration.startTest);
    SetNumber(_context.MeasurementFunctionStatus, configuration.functionState);
    _context.ErrorCode.Set(configuration.hasError != 0 ? Error::DeviceError2 : Error::NoErrors);
    if (ResultsOf(_context) != configuration.results) {
        _context.GetResponseParser()->ParseMeasurementResults(
            Wire::SixReadings, _context, ResultTypes.at(static_cast<std::size_t>(configuration.results)));
    }
}

void Machine::RestoreInstrument(const Configuration& configuration)
{
    InstrumentState& instrument = _instrument.state;
    instrument.function = static_cast<std::int8_t>(configuration.instrumentFunction);
    instrument.functionState = static_cast<std::int8_t>(configuration.instrumentState);
    instrument.isStartPending = (configuration.instrumentFlags & 1) != 0;
    instrument.hasNew = (configuration.instrumentFlags & 2) != 0;
    instrument.hasPassedStartTest = (configuration.instrumentFlags & 4) != 0;
    instrument.mode = static_cast<std::int8_t>(configuration.instrumentFlags / 8);
}

StepRecord Machine::Step(Choices& choices, const std::vector<Operation>& interference)
{
    StepRecord record;
    _instrument.BeginStep(
        choices, [&](const QByteArray& request) { Watch(request, record); },
        [&] { Interfere(choices, interference); });
    const State* const before = _runner.GetCurrentState();
    _isStepping = true;
    _runner.RunStateMachineWorker();
    _isStepping = false;
    QCoreApplication::removePostedEvents(&_runner); // The next step, which the explorer makes itself.
    ForgetNeedlessAttempts();
    if (_runner.GetCurrentState() != before) {
        record.row = RowBetween(before, _runner.GetCurrentState(), PrivateMembers::States(_runner));
    }
    if (_isDisabled) {
        Reenable();
    }
    for (const std::string& words : _instrument.Story()) {
        record.story += record.story.empty() ? words : "; " + words;
    }
    return record;
}

void Machine::Watch(const QByteArray& request, StepRecord& record)
{
    record.frames += request.at(0);
    if (_isDisabled) {
        record.sins.emplace_back("a request goes out after a disable");
    }
    if (request == Wire::StartMeasurement) {
        CheckStart(record);
    }
}

void Machine::Interfere(Choices& choices, const std::vector<Operation>& interference)
{
    const std::size_t choice = choices.Choose(interference.size() + 1);
    if (choice > 0) {
        _instrument.Tell("meanwhile the application " + interference.at(choice - 1).name);
        interference.at(choice - 1).perform(*this);
    }
}

/// Link recovery counts on without end, but looks only at whether there were more than ten attempts. The
/// first nine are alike, and so are those after the eleventh.
void Machine::ForgetNeedlessAttempts()
{
    constexpr unsigned Nine = 9;
    constexpr unsigned MoreThanTen = 11;
    if (auto* const recovery = dynamic_cast<CommunicationRecoveryState*>(_runner.GetCurrentState())) {
        unsigned& attempts = PrivateMembers::Attempts(*recovery);
        attempts = attempts == 0 ? 0 : std::clamp(attempts, Nine, MoreThanTen);
    }
}

void Machine::CheckStart(StepRecord& record) const
{
    if (_context.AbortMeasurementRequested.Get()) {
        record.sins.emplace_back("a start goes out although an abort is pending");
    }
    // Entering a run of an RCD test consumes the request.
    if (!_context.StartMeasurementRequested.Get() && !IsRcdRun(CurrentState())) {
        record.sins.emplace_back("a start goes out that nobody has requested");
    }
}

std::size_t Machine::CurrentState() const
{
    const auto& states = PrivateMembers::States(const_cast<StateMachineRunner&>(_runner));
    const auto found = std::find_if(states.begin(), states.end(), [this](const auto& state) {
        return state.get() == _runner.GetCurrentState();
    });
    return static_cast<std::size_t>(found - states.begin());
}

void Machine::Prepare(std::size_t settings)
{
    _settings = settings;
    _tester.PrepareMeasurement(*AllSettings.at(settings).create());
}

void Machine::DisableAndEnable()
{
    _context.GetTransciever()->PrepareToClose();
    _isDisabled = true;
    if (!_isStepping) {
        Reenable();
    }
}

/// Does what the machine's owner does, but for the thread.
void Machine::Reenable()
{
    _runner.Disable();
    _runner.RunStateMachineWorker();
    _context.GetTransciever()->Close();
    _isDisabled = false;
    Line::BeginStep();
    _context.ResetAllProperty();
    _context.GetTransciever()->Open();
    _runner.Enable();
}

void Machine::LetTimePass()
{
    if (_context.GetMeasurementTimer()->isActive()) {
        _context.MeasurementTimerTick();
    }
}
