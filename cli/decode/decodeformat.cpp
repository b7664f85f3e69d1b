#include "cli/decode/decodeformat.h"

#include <QByteArrayList>
#include <QHash>
#include <QStringList>

#include <array>

#include "cli/decode/jsontext.h"
#include "cli/words/format.h"
#include "cli/words/text.h"
#include "cli/words/values.h"
#include "client/words/named.h"
#include "decode/frames/requests.h"

namespace Cli
{

namespace
{

using Decode::AnswerKind;
using Decode::Event;
using Kind = Event::Kind;

constexpr int Columns = 120;
constexpr int TimeColumns = 12;
constexpr int WithinColumns = 14;
constexpr int NameColumns = 21;

/// "20:51:40.316". A log has so many of them that what QTime needs to write one would show.
QByteArray Digits(const QTime& at)
{
    QByteArray text = QByteArrayLiteral("00:00:00.000");
    const auto write = [&text](int last, int number) {
        for (int place = last; number > 0; --place, number /= 10) {
            text[place] = static_cast<char>('0' + number % 10);
        }
    };
    write(1, at.hour());
    write(4, at.minute());
    write(7, at.second());
    write(11, at.msec());
    return text;
}

QString TimeText(const QTime& at)
{
    return (at.isValid() ? QString::fromLatin1(Digits(at)) : QString()).leftJustified(TimeColumns);
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

QByteArray Null()
{
    return QByteArrayLiteral("null");
}

QByteArray TimeJson(const QTime& at)
{
    return at.isValid() ? Quoted(Digits(at)) : Null();
}

QByteArray ProblemJson(const Event& event)
{
    return event.problem.isEmpty() ? Null() : JsonText(event.problem);
}

constexpr std::array<VesmarClient::Named<AnswerKind>, 6> AnswerKinds{{
    {AnswerKind::Data, "data"},
    {AnswerKind::Acknowledge, "acknowledge"},
    {AnswerKind::Refusal, "refusal"},
    {AnswerKind::Damaged, "damaged"},
    {AnswerKind::None, "none"},
    {AnswerKind::Cut, "cut"},
}};

/// Of these, a log has many and each of them often: the text of one is composed once.
template <typename Enumeration, std::enable_if_t<std::is_enum_v<Enumeration>, int> = 0>
QByteArray Json(Enumeration value)
{
    static QHash<int, QByteArray> texts;
    QByteArray& text = texts[static_cast<int>(value)];
    if (text.isEmpty()) {
        text = JsonText(Show(value).json);
    }
    return text;
}

QByteArray Json(std::monostate /*unknown*/)
{
    return Null();
}

QByteArray Json(const QString& text)
{
    return JsonText(text);
}

QByteArray Json(int number)
{
    return JsonText(number);
}

QByteArray Json(bool value)
{
    return value ? QByteArrayLiteral("true") : QByteArrayLiteral("false");
}

QByteArray Json(const QDateTime& date)
{
    return JsonText(Show(date).json);
}

QByteArray Json(const VesmarClient::Identity& identity)
{
    return JsonText(Show(identity).json);
}

/// A function, as of any other value, with its readings behind its name and its number.
QByteArray Json(const Decode::Readings& readings)
{
    JsonObjectText values;
    for (const VesmarClient::DriverReading& reading : readings.values) {
        values.Insert(reading.name, JsonText(ShowReading(reading.value).json));
    }
    return Json(readings.function).chopped(1) + ",\"readings\":" + values.Text() + '}';
}

QByteArray Json(const Decode::Settings& settings)
{
    JsonObjectText json;
    for (const auto& [name, value] : settings) {
        json.Insert(name, JsonText(value));
    }
    return json.Text();
}

JsonObjectText Fields(const Decode::FrameWords& frame)
{
    JsonObjectText json;
    for (const Decode::Field& field : frame.fields) {
        json.Insert(field.name, std::visit([](const auto& value) { return Json(value); }, field.value));
    }
    return json;
}

void InsertExchange(JsonObjectText& json, const Event& event)
{
    JsonObjectText request = Fields(event.requestWords);
    request.Insert("name", JsonText(Decode::NameOfRequest(event.request)));
    request.Insert("bytes", Quoted(event.request.toHex()));
    JsonObjectText answer = Fields(event.answerWords);
    answer.Insert("kind", Quoted(VesmarClient::FindRow(AnswerKinds, event.outcome)->name));
    answer.Insert("bytes", Quoted(event.answer.toHex()));
    json.Insert("answer", answer.Text());
    json.Insert("attempt", JsonText(event.attempt));
    json.Insert("problem", ProblemJson(event));
    json.Insert("request", request.Text());
    json.Insert("within", event.within ? JsonText(*event.within) : Null());
}

void InsertUnasked(JsonObjectText& json, const Event& event)
{
    QByteArrayList frames;
    for (const Decode::FrameWords& frame : event.frames) {
        frames.append(Fields(frame).Text());
    }
    json.Insert("bytes", Quoted(event.answer.toHex()));
    json.Insert("frames", '[' + frames.join(',') + ']');
    json.Insert("problem", ProblemJson(event));
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

QByteArray DecodedJson(const QByteArray& time, const Event& event)
{
    JsonObjectText json;
    switch (event.kind) {
    case Kind::Exchange:
        json.Insert("event", Quoted("exchange"));
        InsertExchange(json, event);
        break;
    case Kind::Unasked:
        json.Insert("event", Quoted("unasked"));
        InsertUnasked(json, event);
        break;
    case Kind::Note:
    case Kind::State:
        json.Insert("event", Quoted("note"));
        json.Insert("text", JsonText(event.text));
        break;
    }
    json.Insert("line", JsonText(event.line));
    json.Insert("at", TimeJson(event.at));
    json.Insert("time", time);
    return json.Text().append('\n');
}

} // namespace Cli
