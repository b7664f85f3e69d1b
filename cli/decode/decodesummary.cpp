#include "cli/decode/decodesummary.h"

#include <QJsonArray>

#include <algorithm>
#include <array>

#include "cli/words/format.h"
#include "protocol/frames.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using VesmarClient::Meaning;
using VesmarClient::NameAndNumber;

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

QByteArray SummaryLine(const QString& label, const QString& text)
{
    constexpr int LabelWidth = 19;
    return (QStringLiteral("  ") + label.leftJustified(LabelWidth) + text + QLatin1Char('\n')).toUtf8();
}

} // namespace

void DecodeSummary::Add(const DecodedEvent& event)
{
    switch (event.kind) {
    case DecodedEvent::Kind::Exchange:
        AddExchange(event);
        break;
    case DecodedEvent::Kind::Unasked:
        ++_unasked;
        for (const FrameWords& frame : event.frames) {
            AddError(frame.error.value_or(Error::NoErrors), event.line);
        }
        break;
    case DecodedEvent::Kind::Note:
        AddNote(event);
        break;
    case DecodedEvent::Kind::State:
        AddState(event);
        break;
    }
    if (const std::optional<FoundError> found = _measurement.Watch(event)) {
        AddError(found->error, found->line);
    }
}

void DecodeSummary::AddExchange(const DecodedEvent& event)
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
void DecodeSummary::FindErrorOfFailure(const DecodedEvent& event)
{
    if (event.IsGivenUp() || (event.isRepeatedByLink && !event.answerWords.problem.isEmpty())) {
        AddError(ErrorOfGivenUp(event.request), event.line);
    }
    if (_isRecovering && event.HasFailed() && event.request.startsWith(Vesmar::Command::Status)) {
        FindErrorOfRecovery(event);
    }
}

void DecodeSummary::FindErrorOfRecovery(const DecodedEvent& event)
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

void DecodeSummary::AddNote(const DecodedEvent& event)
{
    for (const UpdateSentence& sentence : UpdateSentences) {
        if (event.text == QLatin1String(sentence.text)) {
            AddError(sentence.error, event.line);
        }
    }
}

void DecodeSummary::AddState(const DecodedEvent& event)
{
    _isRecovering = event.text.contains(QLatin1String("COMMUNICATION RECOVERY"));
    _hasResetMode = false;
    if (_isRecovering) {
        AddError(Error::CommunicationRecovery, event.line);
    }
}

/// The first line that shows an error counts.
void DecodeSummary::AddError(Error error, qint64 line)
{
    const bool isKnown = std::any_of(_errors.cbegin(), _errors.cend(),
                                     [error](const FoundError& found) { return found.error == error; });
    if (error != Error::NoErrors && !isKnown) {
        _errors.append({error, line});
    }
}

QByteArray DecodeSummary::Text() const
{
    const auto count = [](const char* label, int number) {
        return SummaryLine(QString::fromLatin1(label), QString::number(number));
    };
    QByteArray text = "\nSummary\n" + count("exchanges", _exchanges) + count("refused", _refused) +
                      count("damaged", _damaged) + count("without an answer", _silent) +
                      count("cut short", _cut) + count("sent unasked", _unasked) + count("links", _links);
    if (_longestLine != 0) {
        text += SummaryLine(QStringLiteral("longest"),
                            QStringLiteral("within %1 ms, line %2").arg(_longest).arg(_longestLine));
    }
    for (const FoundError& found : _errors) {
        text += SummaryLine(QStringLiteral("error"),
                            QStringLiteral("%1, line %2").arg(NameAndNumber(found.error)).arg(found.line));
        text += SummaryLine(QString(), Meaning(found.error));
        text += SummaryLine(
            QString(),
            QStringLiteral("vesmar explain %1 tells what to do").arg(static_cast<int>(found.error)));
    }
    return text;
}

QJsonObject DecodeSummary::Fields() const
{
    QJsonArray errors;
    for (const FoundError& found : _errors) {
        errors.append(QJsonObject{{QStringLiteral("line"), found.line},
                                  {QStringLiteral("ErrorCode"), Show(found.error).json}});
    }
    const bool hasLongest = _longestLine != 0;
    return {{QStringLiteral("exchanges"), _exchanges},
            {QStringLiteral("refused"), _refused},
            {QStringLiteral("damaged"), _damaged},
            {QStringLiteral("unanswered"), _silent},
            {QStringLiteral("cut"), _cut},
            {QStringLiteral("unasked"), _unasked},
            {QStringLiteral("links"), _links},
            {QStringLiteral("longest"), hasLongest ? QJsonValue(_longest) : QJsonValue()},
            {QStringLiteral("longestLine"), hasLongest ? QJsonValue(_longestLine) : QJsonValue()},
            {QStringLiteral("errors"), errors}};
}

} // namespace Cli
