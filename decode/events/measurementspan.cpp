#include "decode/events/measurementspan.h"

#include <algorithm>

#include "protocol/frames.h"
#include "protocol/functionstatesets.h"

namespace Decode
{

namespace
{

using Vesmar::FunctionState;

/// Whether the value shows that no function runs. A function that was just started may still be called
/// prepared.
bool IsEnd(const Field& field)
{
    namespace Sets = Vesmar::FunctionStateSets;
    if (const auto* const state = std::get_if<FunctionState>(&field.value)) {
        return *state != FunctionState::Preparing && *state != FunctionState::Prepared &&
               Sets::Contains(Sets::OverWhenAborting, *state);
    }
    return std::holds_alternative<Vesmar::StartTestResult>(field.value);
}

bool HasEnd(const FrameWords& frame)
{
    return std::any_of(frame.fields.cbegin(), frame.fields.cend(), IsEnd);
}

/// The result of an RCD test is sent unasked, at its end.
bool HasEndUnasked(const FrameWords& frame)
{
    const auto isResult = [](const Field& field) { return std::holds_alternative<Readings>(field.value); };
    return HasEnd(frame) || std::any_of(frame.fields.cbegin(), frame.fields.cend(), isResult);
}

} // namespace

Event::Measurement MeasurementSpan::Watch(const Event& event)
{
    if (event.request.startsWith(Vesmar::Command::StartMeasurement) &&
        event.outcome == AnswerKind::Acknowledge) {
        _isMeasuring = true;
        return Event::Measurement::Begun;
    }
    if (_isMeasuring && (HasEnd(event.answerWords) ||
                         std::any_of(event.frames.cbegin(), event.frames.cend(), HasEndUnasked))) {
        _isMeasuring = false;
        return Event::Measurement::Ended;
    }
    return Event::Measurement::Unchanged;
}

} // namespace Decode
