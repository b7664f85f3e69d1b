#include "decode/log/summary.h"

#include <algorithm>
#include <array>

#include "protocol/frames.h"

namespace Decode
{

namespace
{

using Vesmar::Error;

/// A sentence that the library writes when an update fails, and the error that it reports.
struct UpdateSentence {
    const char* text;
    Error error;
};

constexpr std::array<UpdateSentence, 6> UpdateSentences{{
    {"UPDATE ERROR - Tester mode could not be changed.", Error::UpdateModeChangeFailed},
    {"UPDATE ERROR - Update data is invalid.", Error::UpdateDataInvalid},
    {"UPDATE ERROR - Update confirmation data is invalid.", Error::UpdateConfirmationDataInvalid},
    {"UPDATE ERROR - Update initialization error.", Error::UpdateInitializationFailed},
    {"UPDATE ERROR - Sector data transfer issues.", Error::UpdateInitializationFailed},
    {"UPDATE ERROR - Confirmation error.", Error::UpdateConfirmationFailed},
}};

/// The error that the library reports when the link has given the request up. The library may pass over a
/// change of the mode that fails.
Error ErrorOfGivenUp(const QByteArray& request)
{
    switch (request.at(0)) {
    case Vesmar::Command::InitializeUpdate:
    case Vesmar::Command::ProgramFlashSector:
        return Error::UpdateInitializationFailed;
    case Vesmar::Command::FinishUpdate:
        return Error::UpdateConfirmationFailed;
    case Vesmar::Command::ChangeTesterMode:
        return Error::NoErrors;
    default:
        return Error::CommunicationRecovery;
    }
}

} // namespace

void Summary::Add(const Event& event)
{
    switch (event.kind) {
    case Event::Kind::Exchange:
        AddExchange(event);
        break;
    case Event::Kind::Unasked:
        ++_unasked;
        for (const FrameWords& frame : event.frames) {
            AddError(frame.error.value_or(Error::NoErrors), event.line);
        }
        break;
    case Event::Kind::Note:
        AddNote(event);
        break;
    case Event::Kind::State:
        AddState(event);
        break;
    }
    if (const std::optional<FoundError> found = _measurement.Watch(event)) {
        AddError(found->error, found->line);
    }
}

void Summary::AddExchange(const Event& event)
{
    ++_exchanges;
    _links += event.isInNewLink ? 1 : 0;
    _refused += event.outcome == AnswerKind::Refusal ? 1 : 0;
    _damaged += event.outcome == AnswerKind::Damaged ? 1 : 0;
    _silent += event.outcome == AnswerKind::None ? 1 : 0;
    _cut += event.outcome == AnswerKind::Cut ? 1 : 0;
    if (event.within.value_or(0) > _longest) {
        _longest = *event.within;
        _longestLine = event.line;
    }
    AddError(event.answerWords.error.value_or(Error::NoErrors), event.line);
    FindErrorOfFailure(event);
}

/// An answer that the library does not accept is a failure too, but the library does not repeat the request.
void Summary::FindErrorOfFailure(const Event& event)
{
    if (event.IsGivenUp() || (event.isRepeatedByLink && !event.answerWords.problem.isEmpty())) {
        AddError(ErrorOfGivenUp(event.request), event.line);
    }
    if (_isRecovering && event.HasFailed() && event.request.startsWith(Vesmar::Command::Status)) {
        FindErrorOfRecovery(event);
    }
}

void Summary::FindErrorOfRecovery(const Event& event)
{
    constexpr int MostChecks = 10;
    if (event.attempt <= MostChecks) {
        return;
    }
    if (event.outcome == AnswerKind::None) {
        AddError(Error::NoResponse, event.line);
    } else if (_hasResetMode) {
        AddError(event.outcome == AnswerKind::Refusal ? Error::RequestRefused : Error::InvalidResponse,
                 event.line);
    }
    _hasResetMode = _hasResetMode || event.outcome != AnswerKind::None;
}

void Summary::AddNote(const Event& event)
{
    for (const UpdateSentence& sentence : UpdateSentences) {
        if (event.text == QLatin1String(sentence.text)) {
            AddError(sentence.error, event.line);
        }
    }
}

void Summary::AddState(const Event& event)
{
    _isRecovering = event.text.contains(QLatin1String("COMMUNICATION RECOVERY"));
    _hasResetMode = false;
    if (_isRecovering) {
        AddError(Error::CommunicationRecovery, event.line);
    }
}

/// The first line that shows an error counts.
void Summary::AddError(Error error, qint64 line)
{
    const bool isKnown = std::any_of(_errors.cbegin(), _errors.cend(),
                                     [error](const FoundError& found) { return found.error == error; });
    if (error != Error::NoErrors && !isKnown) {
        _errors.append({error, line});
    }
}

} // namespace Decode
