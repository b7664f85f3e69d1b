#include "cli/decode/decodesummary.h"

#include <QJsonArray>

#include <algorithm>
#include <array>

#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using VesmarClient::Meaning;
using VesmarClient::NameAndNumber;

/// What the library writes when an update fails.
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

/// What comes of a request that the link has given up. A change of the mode that fails may be passed over.
Error ErrorOfGivenUp(const QByteArray& request)
{
    switch (request.at(0)) {
    case 'V':
    case 'F':
        return Error::UpdateInitializationFailed;
    case 'Z':
        return Error::UpdateConfirmationFailed;
    case 'x':
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

void DecodeSummary::Take(const DecodedEvent& event)
{
    switch (event.kind) {
    case DecodedEvent::Kind::Exchange:
        TakeExchange(event);
        break;
    case DecodedEvent::Kind::Unasked:
        ++_unasked;
        for (const FrameWords& frame : event.frames) {
            Find(frame.error.value_or(Error::NoErrors), event.line);
        }
        break;
    case DecodedEvent::Kind::Note:
        TakeNote(event);
        break;
    case DecodedEvent::Kind::State:
        TakeState(event);
        break;
    }
    if (const std::optional<FoundError> found = _measurement.Take(event)) {
        Find(found->error, found->line);
    }
}

void DecodeSummary::TakeExchange(const DecodedEvent& event)
{
    ++_exchanges;
    _links += event.isInNewLink ? 1 : 0;
    _refused += event.outcome == DecodedEvent::Outcome::Refusal ? 1 : 0;
    _damaged += event.outcome == DecodedEvent::Outcome::Damaged ? 1 : 0;
    _silent += event.outcome == DecodedEvent::Outcome::None ? 1 : 0;
    _cut += event.outcome == DecodedEvent::Outcome::Cut ? 1 : 0;
    if (event.within.value_or(0) > _longest) {
        _longest = *event.within;
        _longestLine = event.line;
    }
    Find(event.answerWords.error.value_or(Error::NoErrors), event.line);
    JudgeFailure(event);
}

/// An answer that the library does not take is a failure too, but one that it does not repeat.
void DecodeSummary::JudgeFailure(const DecodedEvent& event)
{
    if (IsGivenUp(event) || (event.isRepeatedByLink && !event.answerWords.problem.isEmpty())) {
        Find(ErrorOfGivenUp(event.request), event.line);
    }
    if (_isRecovering && HasFailed(event.outcome) && event.request.startsWith('s')) {
        JudgeRecovery(event);
    }
}

void DecodeSummary::JudgeRecovery(const DecodedEvent& event)
{
    constexpr int MostChecks = 10;
    if (event.attempt <= MostChecks) {
        return;
    }
    if (event.outcome == DecodedEvent::Outcome::None) {
        Find(Error::NoResponse, event.line);
    } else if (_hasResetMode) {
        Find(event.outcome == DecodedEvent::Outcome::Refusal ? Error::RequestRefused : Error::InvalidResponse,
             event.line);
    }
    _hasResetMode = _hasResetMode || event.outcome != DecodedEvent::Outcome::None;
}

void DecodeSummary::TakeNote(const DecodedEvent& event)
{
    for (const UpdateSentence& sentence : UpdateSentences) {
        if (event.text == QLatin1String(sentence.text)) {
            Find(sentence.error, event.line);
        }
    }
}

void DecodeSummary::TakeState(const DecodedEvent& event)
{
    _isRecovering = event.text.contains(QLatin1String("COMMUNICATION RECOVERY"));
    _hasResetMode = false;
    if (_isRecovering) {
        Find(Error::CommunicationRecovery, event.line);
    }
}

/// The first line of each counts.
void DecodeSummary::Find(Error error, qint64 line)
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
