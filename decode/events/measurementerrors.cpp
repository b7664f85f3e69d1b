#include "decode/events/measurementerrors.h"

#include <utility>

#include "protocol/frames.h"
#include "protocol/functionstatesets.h"

namespace Decode
{

using Vesmar::Error;
using Vesmar::FunctionState;

std::optional<FoundError> MeasurementErrors::Watch(const Event& event)
{
    switch (event.kind) {
    case Event::Kind::State:
        return EnterState(event.text);
    case Event::Kind::Exchange:
        return ReadExchange(event);
    case Event::Kind::Unasked:
        _functionState.reset(); // An RCD test has a state of its own.
        break;
    case Event::Kind::Note:
        break;
    }
    return std::nullopt;
}

/// The library aborts a measurement that has failed: this confirms the suspected error.
std::optional<FoundError> MeasurementErrors::EnterState(const QString& banner)
{
    const auto isEntered = [&banner](const char* state) { return banner.contains(QLatin1String(state)); };
    const std::optional<FoundError> suspected = std::exchange(_suspected, std::nullopt);
    _hasBeenStarting = false;
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

std::optional<FoundError> MeasurementErrors::ReadExchange(const Event& event)
{
    if (event.request.startsWith(Vesmar::Command::PrepareMeasurement)) {
        _suspected.reset();
        _isStatusOfPrepare = true;
    }
    const auto status = StatusIn(event.answer);
    const bool isStatus = event.request.startsWith(Vesmar::Command::Status) && status;
    return isStatus ? ReadStatus(*status, event.line) : std::nullopt;
}

/// A status that follows in the same state shows that the library has decided on the one before it.
std::optional<FoundError> MeasurementErrors::ReadStatus(const Vesmar::Status& status, qint64 line)
{
    const std::optional<FoundError> suspected = std::exchange(_suspected, std::nullopt);
    if (status.functionState) {
        _functionState = status.functionState;
    }
    const bool isStatusOfPrepare = std::exchange(_isStatusOfPrepare, false);
    const bool isDecided = _functionState.has_value() && !isStatusOfPrepare;
    const Error error = isDecided ? ErrorOf(*_functionState, status.hasNewMeasurement) : Error::NoErrors;
    if (error != Error::NoErrors && status.error == Error::NoErrors) { // Of two errors the first is reported.
        _suspected = FoundError{error, line};
    }
    return suspected;
}

Error MeasurementErrors::ErrorOf(FunctionState state, bool hasNewMeasurement)
{
    namespace Sets = Vesmar::FunctionStateSets;
    switch (_stage) {
    case Stage::Preparing:
        return state == FunctionState::PrepareError ? Error::PrepareFailed : Error::NoErrors;
    case Stage::Starting:
        _hasBeenStarting = _hasBeenStarting || state == FunctionState::Starting;
        return Sets::ErrorWhenStarting(state, _hasBeenStarting);
    case Stage::Running:
        return Sets::Contains(Sets::EndedWithoutResult, state) && !hasNewMeasurement
                   ? Error::MeasurementFailed
                   : Error::NoErrors;
    case Stage::Elsewhere:
        break;
    }
    return Error::NoErrors;
}

} // namespace Decode
