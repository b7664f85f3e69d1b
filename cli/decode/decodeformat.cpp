#include "cli/decode/decodeformat.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMetaProperty>
#include <QStringList>

#include <array>

#include "cli/output/event.h"
#include "cli/words/format.h"
#include "cli/words/text.h"
#include "client/words/named.h"
#include "client/words/translation.h"
#include "decode/frames/requests.h"

namespace Cli
{

namespace
{

using Decode::AnswerKind;
using Decode::Event;
using Decode::Hex;
using Kind = Event::Kind;

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
        QString rest = piece;
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

QString Head(const Event& event)
{
    const QString within = event.within ? Text::tr("within %1 ms").arg(*event.within) : QString();
    return TimeText(event.at) + QStringLiteral("  ") + within.leftJustified(WithinColumns) +
           QStringLiteral("  ") + Decode::TitleOf(event).leftJustified(NameColumns) + QStringLiteral("  ");
}

QJsonValue TimeJson(const QTime& at)
{
    return at.isValid() ? QJsonValue(at.toString(QStringLiteral("HH:mm:ss.zzz"))) : QJsonValue();
}

QJsonValue ProblemJson(const Event& event)
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

QJsonValue Json(std::monostate /*unknown*/)
{
    return {};
}

QJsonValue Json(const QString& text)
{
    return text;
}

QJsonValue Json(const VesmarClient::Identity& identity)
{
    const QMetaObject& kind = VesmarClient::Identity::staticMetaObject;
    QJsonObject json;
    for (int i = 0; i < kind.propertyCount(); ++i) {
        const QMetaProperty property = kind.property(i);
        json.insert(VesmarClient::Capitalized(QString::fromLatin1(property.name())),
                    property.readOnGadget(&identity).toString());
    }
    return json;
}

QJsonValue Json(const Decode::Readings& readings)
{
    QJsonObject values;
    for (const VesmarClient::DriverReading& reading : readings.values) {
        values.insert(QLatin1String(reading.name), ShowReading(reading.value).json);
    }
    QJsonObject json = Show(readings.function).json.toObject();
    json.insert(QStringLiteral("readings"), values);
    return json;
}

QJsonValue Json(const Decode::Settings& settings)
{
    QJsonObject json;
    for (const auto& [name, value] : settings) {
        json.insert(QLatin1String(name), value);
    }
    return json;
}

template <typename Value>
QJsonValue Json(const Value& value)
{
    return Show(value).json;
}

QJsonObject Fields(const Decode::FrameWords& frame)
{
    QJsonObject json;
    for (const Decode::Field& field : frame.fields) {
        json.insert(QLatin1String(field.name),
                    std::visit([](const auto& value) { return Json(value); }, field.value));
    }
    return json;
}

QJsonObject ExchangeFields(const Event& event)
{
    QJsonObject request = Fields(event.requestWords);
    request.insert(QStringLiteral("name"), Decode::NameOfRequest(event.request));
    request.insert(QStringLiteral("bytes"), Hex(event.request));
    QJsonObject answer = Fields(event.answerWords);
    answer.insert(QStringLiteral("kind"), VesmarClient::NameIn(AnswerKinds, event.outcome));
    answer.insert(QStringLiteral("bytes"), Hex(event.answer));
    return {{QStringLiteral("request"), request},
            {QStringLiteral("answer"), answer},
            {QStringLiteral("within"), event.within ? QJsonValue(*event.within) : QJsonValue()},
            {QStringLiteral("attempt"), event.attempt},
            {QStringLiteral("problem"), ProblemJson(event)}};
}

QJsonObject UnaskedFields(const Event& event)
{
    QJsonArray frames;
    for (const Decode::FrameWords& frame : event.frames) {
        frames.append(Fields(frame));
    }
    return {{QStringLiteral("bytes"), Hex(event.answer)},
            {QStringLiteral("frames"), frames},
            {QStringLiteral("problem"), ProblemJson(event)}};
}

} // namespace

QByteArray DecodedText(const Event& event)
{
    switch (event.kind) {
    case Kind::Exchange:
    case Kind::Unasked:
        return Block(Head(event), Decode::PiecesOf(event));
    case Kind::State:
        return Block(QStringLiteral("== "), {Decode::TitleOf(event)});
    case Kind::Note:
        break;
    }
    return Block(TimeText(event.at) + QStringLiteral("  "), Decode::PiecesOf(event));
}

QByteArray DecodedJson(const QDateTime& time, const Event& event)
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
