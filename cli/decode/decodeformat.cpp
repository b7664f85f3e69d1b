#include "cli/decode/decodeformat.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <array>

#include "cli/frames/frame.h"
#include "cli/output/event.h"
#include "cli/words/format.h"
#include "client/words/named.h"

namespace Cli
{

namespace
{

using Kind = DecodedEvent::Kind;

constexpr int Columns = 120;
constexpr int TimeColumns = 12;
constexpr int WithinColumns = 14;
constexpr int NameColumns = 21;

QString TimeText(const QTime& at)
{
    return at.toString(QStringLiteral("HH:mm:ss.zzz")).leftJustified(TimeColumns);
}

/// Where a line is broken that may have so many columns: at its last blank or, without one, at its end.
int BreakOf(const QString& text, int columns)
{
    const int blank = text.lastIndexOf(QLatin1Char(' '), columns);
    return blank > 0 ? blank : columns;
}

/// The head, and the pieces to the right of it. Each piece begins a line.
QByteArray Block(const QString& head, const QStringList& pieces)
{
    const int columns = Columns - head.size();
    QString margin = head;
    QString text;
    for (const QString& piece : pieces) {
        QString rest = Printable(piece);
        while (rest.size() > columns) {
            const int end = BreakOf(rest, columns);
            text += margin + rest.left(end) + QLatin1Char('\n');
            margin.fill(QLatin1Char(' '));
            rest = rest.mid(end).trimmed();
        }
        text += margin + rest + QLatin1Char('\n');
        margin.fill(QLatin1Char(' '));
    }
    return text.toUtf8();
}

QString ShortHex(const QByteArray& bytes)
{
    constexpr int MostBytes = 26;
    const QString more =
        bytes.size() > MostBytes ? QStringLiteral("... of %1 bytes").arg(bytes.size()) : QString();
    return Hex(bytes.left(MostBytes)) + more;
}

QString AnswerText(const DecodedEvent& event)
{
    switch (event.outcome) {
    case AnswerKind::Refusal:
        return QStringLiteral("refused");
    case AnswerKind::Damaged:
        return QStringLiteral("damaged checksum: ") + ShortHex(event.answer);
    case AnswerKind::None:
        return QStringLiteral("no answer");
    case AnswerKind::Cut:
        return QStringLiteral("no answer yet");
    case AnswerKind::Data:
    case AnswerKind::Acknowledge:
        break;
    }
    return event.answerWords.text.isEmpty() ? ShortHex(event.answer) : event.answerWords.text;
}

QString AttemptText(const DecodedEvent& event)
{
    if (event.attempt == 1) {
        return {};
    }
    const QString limit = event.isRepeatedByLink ? QStringLiteral(" of %1").arg(MostAttempts) : QString();
    return QStringLiteral("attempt %1%2: ").arg(event.attempt).arg(limit);
}

QString ProblemText(const QString& problem)
{
    return QStringLiteral("! ") + problem;
}

QString Head(const DecodedEvent& event, const QString& name)
{
    const QString within = event.within ? QStringLiteral("within %1 ms").arg(*event.within) : QString();
    return TimeText(event.at) + QStringLiteral("  ") + within.leftJustified(WithinColumns) +
           QStringLiteral("  ") + name.leftJustified(NameColumns) + QStringLiteral("  ");
}

QByteArray ExchangeText(const DecodedEvent& event)
{
    QStringList pieces;
    if (!event.requestWords.text.isEmpty()) {
        pieces.append(event.requestWords.text);
    }
    pieces.append(AttemptText(event) + AnswerText(event));
    if (!event.problem.isEmpty()) {
        pieces.append(ProblemText(event.problem));
    }
    return Block(Head(event, event.requestWords.fields.value(QLatin1String("name")).toString()), pieces);
}

QByteArray UnaskedText(const DecodedEvent& event)
{
    QStringList pieces;
    for (const FrameWords& frame : event.frames) {
        pieces.append(frame.text);
    }
    if (!event.problem.isEmpty()) {
        pieces.append(ShortHex(event.answer));
        pieces.append(ProblemText(event.problem));
    }
    return Block(Head(event, QStringLiteral("sent unasked")), pieces);
}

QByteArray NoteText(const DecodedEvent& event)
{
    return Block(TimeText(event.at) + QStringLiteral("  "), {event.text});
}

QByteArray StateText(const DecodedEvent& event)
{
    QString name = event.text;
    name.remove(QStringLiteral("ENTERING ")).remove(QStringLiteral(" STATE"));
    return Block(QStringLiteral("== "), {name});
}

QJsonValue TimeJson(const QTime& at)
{
    return at.isValid() ? QJsonValue(at.toString(QStringLiteral("HH:mm:ss.zzz"))) : QJsonValue();
}

QJsonValue ProblemJson(const DecodedEvent& event)
{
    return event.problem.isEmpty() ? QJsonValue() : QJsonValue(event.problem);
}

constexpr std::array<VesmarClient::Named<AnswerKind>, 6> AnswerKinds{{
    {AnswerKind::Data, "data"},
    {AnswerKind::Acknowledge, "acknowledge"},
    {AnswerKind::Refusal, "refusal"},
    {AnswerKind::Damaged, "damaged"},
    {AnswerKind::None, "none"},
    {AnswerKind::Cut, "cut"},
}};

QJsonObject ExchangeFields(const DecodedEvent& event)
{
    QJsonObject request = event.requestWords.fields;
    request.insert(QStringLiteral("bytes"), Hex(event.request));
    QJsonObject answer = event.answerWords.fields;
    answer.insert(QStringLiteral("kind"), VesmarClient::NameIn(AnswerKinds, event.outcome));
    answer.insert(QStringLiteral("bytes"), Hex(event.answer));
    return {{QStringLiteral("request"), request},
            {QStringLiteral("answer"), answer},
            {QStringLiteral("within"), event.within ? QJsonValue(*event.within) : QJsonValue()},
            {QStringLiteral("attempt"), event.attempt},
            {QStringLiteral("problem"), ProblemJson(event)}};
}

QJsonObject UnaskedFields(const DecodedEvent& event)
{
    QJsonArray frames;
    for (const FrameWords& frame : event.frames) {
        frames.append(frame.fields);
    }
    return {{QStringLiteral("bytes"), Hex(event.answer)},
            {QStringLiteral("frames"), frames},
            {QStringLiteral("problem"), ProblemJson(event)}};
}

} // namespace

QByteArray DecodedText(const DecodedEvent& event)
{
    switch (event.kind) {
    case Kind::Exchange:
        return ExchangeText(event);
    case Kind::Unasked:
        return UnaskedText(event);
    case Kind::State:
        return StateText(event);
    case Kind::Note:
        break;
    }
    return NoteText(event);
}

QByteArray DecodedJson(const QDateTime& time, const DecodedEvent& event)
{
    QString name = QStringLiteral("note");
    QJsonObject fields{{QStringLiteral("text"), event.text}};
    if (event.kind == Kind::Exchange) {
        name = QStringLiteral("exchange");
        fields = ExchangeFields(event);
    } else if (event.kind == Kind::Unasked) {
        name = QStringLiteral("unasked");
        fields = UnaskedFields(event);
    }
    fields.insert(QStringLiteral("line"), event.line);
    fields.insert(QStringLiteral("at"), TimeJson(event.at));
    return EventLine(time, name, fields);
}

} // namespace Cli
