#include "decode/events/event.h"

#include <VesmarClient/functions.h>

#include "client/words/printable.h"
#include "decode/frames/requests.h"

namespace Decode
{

namespace
{

QString ShortHex(const QByteArray& bytes)
{
    constexpr int MostBytes = 26;
    return bytes.size() > MostBytes
               ? Words::tr("%1... of %2 bytes").arg(Hex(bytes.left(MostBytes))).arg(bytes.size())
               : Hex(bytes);
}

QString AnswerText(const Event& event)
{
    switch (event.outcome) {
    case AnswerKind::Refusal:
        return Words::tr("refused");
    case AnswerKind::Damaged:
        return Words::tr("damaged checksum: %1").arg(ShortHex(event.answer));
    case AnswerKind::None:
        return Words::tr("no answer");
    case AnswerKind::Cut:
        return Words::tr("no answer yet");
    case AnswerKind::Data:
    case AnswerKind::Acknowledge:
        break;
    }
    return event.answerWords.text.isEmpty() ? ShortHex(event.answer) : event.answerWords.text;
}

QString AnswerWithAttempt(const Event& event)
{
    if (event.attempt == 1) {
        return AnswerText(event);
    }
    const QString answer = AnswerText(event);
    const QString attempt = QString::number(event.attempt);
    return event.isRepeatedByLink
               ? Words::tr("attempt %1 of %2: %3").arg(attempt, QString::number(MostAttempts), answer)
               : Words::tr("attempt %1: %2").arg(attempt, answer);
}

VesmarClient::Result ResultOf(const Readings& readings)
{
    const auto function = static_cast<VesmarClient::Function>(readings.function);
    const auto known = VesmarClient::Functions::find(function).readings;
    QVector<VesmarClient::Reading> values;
    for (const VesmarClient::DriverReading& reading : readings.values) {
        const VesmarClient::ReadingInfo info = known.value(values.size());
        const bool isPresent = VesmarClient::IsPresent(reading.value);
        values.append({QString::fromLatin1(reading.name), isPresent ? static_cast<double>(reading.value) : 0,
                       isPresent, info.unit, info.decimals});
    }
    return {function, values, {}};
}

/// The banner without the words that every state has.
QString StateName(QString banner)
{
    return banner.remove(QStringLiteral("ENTERING ")).remove(QStringLiteral(" STATE"));
}

} // namespace

VesmarClient::Result ResultOf(const Event& event)
{
    QVector<FrameWords> all = event.frames;
    all.prepend(event.answerWords);
    for (const FrameWords& words : qAsConst(all)) {
        for (const Field& field : words.fields) {
            if (const auto* const readings = std::get_if<Readings>(&field.value)) {
                return ResultOf(*readings);
            }
        }
    }
    return {};
}

QString TitleOf(const Event& event)
{
    switch (event.kind) {
    case Event::Kind::Exchange:
        return NameOfRequest(event.request);
    case Event::Kind::Unasked:
        return Words::tr("sent unasked");
    case Event::Kind::State:
        return VesmarClient::Printable(StateName(event.text));
    case Event::Kind::Note:
        break;
    }
    return {};
}

QStringList PiecesOf(const Event& event)
{
    QStringList pieces;
    if (event.kind == Event::Kind::Exchange) {
        if (!event.requestWords.text.isEmpty()) {
            pieces.append(event.requestWords.text);
        }
        pieces.append(AnswerWithAttempt(event));
    } else if (event.kind == Event::Kind::Note) {
        pieces.append(VesmarClient::Printable(event.text));
    }
    for (const FrameWords& frame : event.frames) {
        pieces.append(frame.text);
    }
    if (!event.problem.isEmpty()) {
        if (event.kind == Event::Kind::Unasked) {
            pieces.append(ShortHex(event.answer));
        }
        pieces.append(QStringLiteral("! ") + VesmarClient::Printable(event.problem));
    }
    return pieces;
}

} // namespace Decode
