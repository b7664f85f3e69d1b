#include "explorer/instrument.h"

#include <array>
#include <utility>

#include "explorer/instrumentturns.h"
#include "support/wire.h"

namespace
{

constexpr int StartTestFailed = 0;
constexpr int StartTestPassed = 14;
constexpr int AnyError = 2;
constexpr int ErrorThatBeginsAnew = 5;

const char* CommandName(const QByteArray& request)
{
    switch (request.at(0)) {
    case 's':
        return "status";
    case 'S':
        return "start";
    case 'h':
        return "stop";
    case 'P':
        return "prepare";
    case 'e':
        return "read";
    case 'x':
        return "mode change";
    case 'W':
        return "version";
    default:
        return "request";
    }
}

bool IsReadRequest(const QByteArray& request)
{
    return QByteArray("sWReTV").contains(request.at(0));
}

} // namespace

bool InstrumentState::IsOutputOn() const
{
    using namespace Number;
    return function != 0 && (isStartPending || functionState == Starting || functionState == Running);
}

void Instrument::BeginStep(Choices& choices, Watcher watcher, std::function<void()> meanwhile)
{
    Line::BeginStep();
    _choices = &choices;
    _watcher = std::move(watcher);
    _meanwhile = std::move(meanwhile);
    _story.clear();
    _lastingFault = Fault::None;
}

QByteArray Instrument::Answer(const QByteArray& request)
{
    _watcher(request);
    if (_lastingFault != Fault::None && request == _faultyRequest) {
        return AnswerFaultily(_lastingFault, request);
    }
    return AnswerUnlessFaulty(request);
}

/// A function that runs an RCD test sends its results by itself.
QByteArray Instrument::Speak()
{
    const bool isRcd = state.function == Number::RCD || state.function == Number::RCDIEC;
    if (!isRcd || !state.IsOutputOn()) {
        return Wire::Silence;
    }
    const std::size_t choice = _choices->Choose(4);
    if (choice == 1) {
        _story.emplace_back("nothing comes");
        return Wire::Silence;
    }
    state.isStartPending = false;
    state.functionState = choice == 0 ? Number::Completed : Number::Terminated;
    state.hasNew = false;
    if (choice == 0) {
        return Wire::SixReadings;
    }
    _story.emplace_back(choice == 2 ? "the function was terminated"
                                    : "the function was terminated with error 5");
    return Wire::Status(state.function, state.functionState, false,
                        choice == 2 ? Wire::NoError : ErrorThatBeginsAnew, state.mode);
}

QByteArray Instrument::AnswerUnlessFaulty(const QByteArray& request)
{
    const std::vector<Turn> turns = TurnsAt(request, state, freedom);
    if (turns.empty()) {
        return Wire::Refusal;
    }
    const bool isStatus = request.at(0) == 's';
    const bool hasFourth = isStatus ? freedom.errors : !IsReadRequest(request);
    const std::size_t choice = Choose(turns, freedom.faults ? (hasFourth ? 4 : 3) : 0);
    _error = Wire::NoError;
    if (choice < turns.size()) {
        turns.at(choice).apply(state);
        return Execute(request);
    }
    const std::size_t fault = choice - turns.size();
    if (fault < 3) {
        _faultyRequest = request;
        _lastingFault = static_cast<Fault>(fault + 1);
        return AnswerFaultily(_lastingFault, request);
    }
    _story.push_back(std::string(CommandName(request)) +
                     (isStatus ? ": with an error" : ": executed, and the answer is lost"));
    _error = AnyError;
    turns.front().apply(state);
    const QByteArray answer = Execute(request);
    return isStatus ? answer : Wire::Silence;
}

QByteArray Instrument::AnswerFaultily(Fault fault, const QByteArray& request)
{
    const std::string name = CommandName(request);
    switch (fault) {
    case Fault::Refused:
        _story.push_back(name + ": refused");
        return Wire::Refusal;
    case Fault::Damaged:
        _story.push_back(name + ": answered with damage");
        return Wire::DamagedStatus;
    default:
        _story.push_back(name + ": not answered");
        return Wire::Silence;
    }
}

/// Chooses one of the turns or, beyond them, one of the others.
std::size_t Instrument::Choose(const std::vector<Turn>& turns, std::size_t others)
{
    const std::size_t choice = _choices->Choose(turns.size() + others);
    if (choice > 0 && choice < turns.size()) {
        _story.emplace_back(turns.at(choice).words);
    }
    return choice;
}

/// Answers a request whose turn was applied.
QByteArray Instrument::Execute(const QByteArray& request)
{
    switch (request.at(0)) {
    case 's':
    case 'W':
    case 'R':
    case 'T':
    case 'V':
    case 'e':
        return Data(request);
    case 'P':
        state.function = static_cast<std::int8_t>(request.at(1));
        break;
    case 'x':
        state = {};
        state.mode = static_cast<std::int8_t>(request.at(1));
        break;
    default:
        break;
    }
    return Wire::Acknowledge;
}

QByteArray Instrument::Data(const QByteArray& request)
{
    switch (request.at(0)) {
    case 'W':
        return Wire::Version;
    case 'R':
        return Wire::CurrentDate;
    case 'T':
        return Wire::CalibrationDate;
    case 'V':
        return Wire::UpdateInitialized;
    case 'e':
        return Readings();
    default:
        return Wire::Status(state.function,
                            state.function != 0        ? state.functionState
                            : state.hasPassedStartTest ? StartTestPassed
                                                       : StartTestFailed,
                            state.hasNew, _error, state.mode);
    }
}

/// After a prepare error, an RCD test has the outcome of its check of the object under test to be read.
QByteArray Instrument::Readings()
{
    state.hasNew = false;
    if (state.functionState != Number::PrepareError) {
        return Wire::SixReadings;
    }
    constexpr std::array<char, 3> Codes{0, 2, 10};
    const std::size_t choice = _choices->Choose(Codes.size());
    if (choice > 0) {
        _story.push_back("the object check has code " + std::to_string(Codes.at(choice)));
    }
    return WithChecksum(QByteArray(1, Codes.at(choice)) + QByteArray(23, '\0'));
}
