#include "cli/decode/decodemeasurement.h"

#include <utility>

namespace Cli
{

namespace
{

using Vesmar::Error;
using Vesmar::FunctionState;

bool HasEndedWithoutResult(FunctionState state)
{
    return state == FunctionState::Idle || state == FunctionState::PrepareError ||
           state == FunctionState::Prepared || state == FunctionState::StartError ||
           state == FunctionState::Terminated;
}

} // namespace

std::optional<FoundError> DecodeMeasurement::Take(const DecodedEvent& event)
{
    switch (event.kind) {
    case DecodedEvent::Kind::State:
        return TakeState(event);
    case DecodedEvent::Kind::Exchange:
        return TakeExchange(event);
    case DecodedEvent::Kind::Unasked:
        _functionState.reset(); // It is another kind of test's.
        break;
    case DecodedEvent::Kind::Note:
        break;
    }
    return std::nullopt;
}

/// The library aborts a measurement that has failed.
std::optional<FoundError> DecodeMeasurement::TakeState(const DecodedEvent& event)
{
    const auto isEntered = [&event](const char* state) { return event.text.contains(QLatin1String(state)); };
    const std::optional<FoundError> suspected = std::exchange(_suspected, std::nullopt);
    _isStarted = false;
    _isStatusOfPrepare = false;
    if (isEntered("PREPARING MEASUREMENT")) {
        _stage = Stage::Preparing;
    } else if (isEntered("STARTING MEASUREMENT")) {
        _stage = Stage::Starting;
    } else if (isEntered("SINGLE MEASUREMENT") || isEntered("CONTINUOUS MEASUREMENT")) {
        _stage = Stage::Running;
    } else {
        _stage = Stage::Elsewhere;
    }
    return isEntered("ABORTING MEASUREMENT") ? suspected : std::nullopt;
}

std::optional<FoundError> DecodeMeasurement::TakeExchange(const DecodedEvent& event)
{
    if (event.request.startsWith('P')) {
        _suspected.reset();
        _isStatusOfPrepare = true;
    }
    return event.request.startsWith('s') && IsStatus(event.answer) ? TakeStatus(event) : std::nullopt;
}

/// A status that follows in the same state shows that the one before it was judged.
std::optional<FoundError> DecodeMeasurement::TakeStatus(const DecodedEvent& event)
{
    const std::optional<FoundError> suspected = std::exchange(_suspected, std::nullopt);
    const InstrumentStatus status = StatusIn(event.answer);
    if (status.functionState) {
        _functionState = status.functionState;
    }
    const bool isStatusOfPrepare = std::exchange(_isStatusOfPrepare, false);
    const bool isJudged = _functionState.has_value() && !isStatusOfPrepare;
    const Error error = isJudged ? Judge(*_functionState, status.hasNewMeasurement) : Error::NoErrors;
    if (error != Error::NoErrors && status.error == Error::NoErrors) { // Of two errors the first is reported.
        _suspected = FoundError{error, event.line};
    }
    return suspected;
}

Error DecodeMeasurement::Judge(FunctionState state, bool hasNewMeasurement)
{
    switch (_stage) {
    case Stage::Preparing:
        return state == FunctionState::PrepareError ? Error::PrepareFailed : Error::NoErrors;
    case Stage::Starting:
        return JudgeStart(state);
    case Stage::Running:
        return HasEndedWithoutResult(state) && !hasNewMeasurement ? Error::MeasurementFailed
                                                                  : Error::NoErrors;
    case Stage::Elsewhere:
        break;
    }
    return Error::NoErrors;
}

/// A function that falls back to where it was before its start has been dropped.
Error DecodeMeasurement::JudgeStart(FunctionState state)
{
    switch (state) {
    case FunctionState::PrepareError:
    case FunctionState::StartError:
        return Error::StartFailed;
    case FunctionState::Starting:
        _isStarted = true;
        return Error::NoErrors;
    case FunctionState::Prepared:
        return _isStarted ? Error::MeasurementFailed : Error::NoErrors;
    default:
        return Error::NoErrors;
    }
}

} // namespace Cli
