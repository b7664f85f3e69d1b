#include "decode/lines/logentry.h"

#include <QRegularExpression>

namespace Decode
{

namespace
{

using Match = QRegularExpressionMatch;

/// Removes colours. The library writes the escape character as it is, a system log writes it as #033.
QString WithoutColours(QString text)
{
    static const QRegularExpression colour(QStringLiteral("(?:\\x1b|#033)\\[[0-9;]*m"));
    return text.remove(colour);
}

/// The pattern, behind a time of day that is the first capture.
QRegularExpression AfterTime(const char* pattern)
{
    return QRegularExpression(QLatin1String("(\\d\\d:\\d\\d:\\d\\d\\.\\d{3})") + QLatin1String(pattern));
}

QTime TimeOf(const Match& match)
{
    return QTime::fromString(match.captured(1), QStringLiteral("HH:mm:ss.zzz"));
}

bool IsHex(const QString& digits)
{
    static const QRegularExpression pairs(QStringLiteral("^(?:[0-9a-fA-F]{2})*$"));
    return pairs.match(digits).hasMatch();
}

QByteArray Bytes(const QString& digits)
{
    return QByteArray::fromHex(digits.toLatin1());
}

QString DamageOfExchange(const Match& match, const LogEntry& entry, const QString& rest)
{
    if (!IsHex(match.captured(2)) || !IsHex(match.captured(3))) {
        return QStringLiteral("the exchange is damaged: a hexadecimal digit is missing or too many");
    }
    if (match.captured(4) != QString::number(entry.answer.size())) {
        return QStringLiteral("the exchange is damaged: the answer has %1 bytes, and [%2b] stands behind it")
            .arg(entry.answer.size())
            .arg(match.captured(4));
    }
    static const QRegularExpression function(QStringLiteral("^(?: *Function prepare: \\d+)?$"));
    if (!function.match(rest).hasMatch()) {
        return QStringLiteral("the exchange is damaged: \"%1\" stands behind it").arg(rest.trimmed());
    }
    return entry.at.isValid() ? QString()
                              : QStringLiteral("the exchange is damaged: there is no such time of day");
}

LogEntry ExchangeIn(const Match& match)
{
    LogEntry entry;
    entry.kind = LogEntry::Kind::Exchange;
    entry.at = TimeOf(match);
    entry.request = Bytes(match.captured(2));
    entry.answer = Bytes(match.captured(3));
    QString rest = match.captured(5).trimmed();
    for (const char* word : {"ACK", "NACK", "CRC Invalid", "No response"}) {
        if (rest.startsWith(QLatin1String(word))) {
            entry.word = QString::fromLatin1(word);
            rest.remove(0, entry.word.size());
            break;
        }
    }
    entry.damage = DamageOfExchange(match, entry, rest);
    return entry;
}

LogEntry UnaskedIn(const Match& match)
{
    const QString digits = match.captured(2).trimmed();
    LogEntry entry;
    entry.kind = LogEntry::Kind::Unasked;
    entry.at = TimeOf(match);
    entry.answer = Bytes(digits);
    if (!IsHex(digits) || !entry.at.isValid()) {
        entry.damage = QStringLiteral("what was received unasked is damaged: these are no whole bytes");
    }
    return entry;
}

/// Whether the end of an exchange is missing. Its beginning is known by the colour, or by the code of a
/// request.
bool IsBeginningOfExchange(const QString& coloured, const QString& text)
{
    static const QRegularExpression magenta = AfterTime(" {1,2}(?:\\x1b|#033)\\[0;35m");
    static const QRegularExpression digits =
        AfterTime(" {2}(?:46|5[023467aA]|6[58]|7[2348])(?:[0-9a-fA-F]{4,} |[0-9a-fA-F]*$)");
    return magenta.match(coloured).hasMatch() || digits.match(text).hasMatch();
}

LogEntry TextEntry(LogEntry::Kind kind, const QTime& at, const QString& text)
{
    LogEntry entry;
    entry.kind = kind;
    entry.at = at;
    entry.text = text.trimmed();
    return entry;
}

LogEntry StampedEntry(const QString& coloured, const QString& text)
{
    static const QRegularExpression exchange =
        AfterTime(" +([0-9a-fA-F]+) +([0-9a-fA-F]*)\\[(\\d+)b\\](.*)$");
    static const QRegularExpression unasked = AfterTime(" ReadingBuffer:(.*)$");
    static const QRegularExpression echo = AfterTime(" Function (?:run\\.|prepare: )");
    static const QRegularExpression note = AfterTime(" (Transciever::(?:Open|Close)\\b.*)$");
    if (const Match match = exchange.match(text); match.hasMatch()) {
        return ExchangeIn(match);
    }
    if (const Match match = unasked.match(text); match.hasMatch()) {
        return UnaskedIn(match);
    }
    if (const Match match = echo.match(text); match.hasMatch()) {
        return TextEntry(LogEntry::Kind::Echo, TimeOf(match), QString());
    }
    if (const Match match = note.match(text); match.hasMatch()) {
        return TextEntry(LogEntry::Kind::Note, TimeOf(match), match.captured(2));
    }
    LogEntry entry;
    if (IsBeginningOfExchange(coloured, text)) {
        entry.damage = QStringLiteral("the exchange is damaged: its end is missing");
    }
    return entry;
}

LogEntry UnstampedEntry(const QString& text)
{
    static const QRegularExpression state(QStringLiteral("<<< {10,}(ENTERING .*)$"));
    static const QRegularExpression note(QStringLiteral(
        "((?:PREPARE MEASUREMENT : |QUICK START MEASUREMENT - |UPDATE ERROR - ).*|ABORT MEASUREMENT|"
        "SET MEASUREMENT MODE|Tester is in update mode\\.|Change tester mode to update\\.|"
        "Iinitialization update OK\\.|Update progress: \\d+)\\s*$"));
    if (const Match match = state.match(text); match.hasMatch()) {
        return TextEntry(LogEntry::Kind::State, QTime(), match.captured(1));
    }
    if (const Match match = note.match(text); match.hasMatch()) {
        return TextEntry(LogEntry::Kind::Note, QTime(), match.captured(1));
    }
    return {};
}

} // namespace

LogEntry ParseLogLine(const QByteArray& line)
{
    const QString coloured = QString::fromUtf8(line);
    const QString text = WithoutColours(coloured);
    const LogEntry entry = StampedEntry(coloured, text);
    return entry.kind == LogEntry::Kind::Other && entry.damage.isEmpty() ? UnstampedEntry(text) : entry;
}

std::optional<int> MillisecondsBetween(const QTime& before, const QTime& after)
{
    constexpr int Day = 24 * 60 * 60 * 1000;
    const int elapsed = (before.msecsTo(after) + Day) % Day;
    const bool isSetBack = elapsed > Day / 2;
    return before.isValid() && !isSetBack ? std::optional(elapsed) : std::nullopt;
}

} // namespace Decode
