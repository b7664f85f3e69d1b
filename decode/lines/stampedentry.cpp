#include "decode/lines/stampedentry.h"

#include <QRegularExpression>

#include <string>

#include "decode/frames/words.h"
#include "decode/lines/scanner.h"

namespace Decode
{

namespace
{

using std::string_view;

bool ArePairs(string_view digits)
{
    return digits.size() % 2 == 0;
}

/// What stands behind an exchange beside its word: nothing, or the function of a prepare request.
bool IsUsualRest(string_view rest)
{
    Scanner scan(rest);
    scan.Blanks();
    return rest.empty() || (scan.Skip("Function prepare: ") && !scan.Digits().empty() && scan.Rest().empty());
}

LogEntry DamagedExchange(LogEntry entry, const QString& damage)
{
    entry.damage = Words::tr("the exchange is damaged: %1").arg(damage);
    return entry;
}

/// An exchange with the digits of its frames, and the count and the rest behind the answer.
LogEntry CheckedExchange(const LogEntry& entry, bool isWhole, string_view count, string_view rest)
{
    if (!isWhole) {
        return DamagedExchange(entry, Words::tr("a hexadecimal digit is missing or too many"));
    }
    if (count != std::to_string(entry.answer.size())) {
        return DamagedExchange(entry, Words::tr("the answer has %1 bytes, and [%2b] stands behind it")
                                          .arg(entry.answer.size())
                                          .arg(TextOf(count)));
    }
    if (!IsUsualRest(rest)) {
        return DamagedExchange(entry, Words::tr("\"%1\" stands behind it").arg(TextOf(rest)));
    }
    return entry.at.isValid() ? entry : DamagedExchange(entry, Words::tr("there is no such time of day"));
}

// Each of these reads a text that begins with a time of day, and says what the library has written behind it.
// None if it is something else.

std::optional<LogEntry> ExchangeIn(Scanner scan)
{
    LogEntry entry;
    entry.kind = LogEntry::Kind::Exchange;
    entry.at = scan.Time();
    const bool isBehindBlanks = !scan.Blanks().empty();
    const string_view request = scan.HexDigits();
    const bool hasAnswer = !scan.Blanks().empty();
    const string_view answer = scan.HexDigits();
    const bool hasCount = scan.Skip("[");
    const string_view count = scan.Digits();
    if (!isBehindBlanks || request.empty() || !hasAnswer || !hasCount || count.empty() || !scan.Skip("b]")) {
        return std::nullopt;
    }
    entry.request = QByteArray::fromHex(BytesOf(request));
    entry.answer = QByteArray::fromHex(BytesOf(answer));
    scan.Blanks();
    for (const char* const word : {"ACK", "NACK", "CRC Invalid", "No response"}) {
        if (scan.Skip(word)) {
            entry.word = QString::fromLatin1(word);
            break;
        }
    }
    const QByteArray rest = BytesOf(scan.Rest()).trimmed();
    return CheckedExchange(entry, ArePairs(request) && ArePairs(answer), count, View(rest));
}

std::optional<LogEntry> UnaskedIn(Scanner scan)
{
    LogEntry entry;
    entry.kind = LogEntry::Kind::Unasked;
    entry.at = scan.Time();
    if (!scan.Skip(" ReadingBuffer:")) {
        return std::nullopt;
    }
    const QByteArray rest = BytesOf(scan.Rest()).trimmed();
    entry.answer = QByteArray::fromHex(rest);
    Scanner digits(View(rest));
    if (!ArePairs(digits.HexDigits()) || !digits.Rest().empty() || !entry.at.isValid()) {
        entry.damage = Words::tr("what was received unasked is damaged: these are no whole bytes");
    }
    return entry;
}

std::optional<LogEntry> EchoIn(Scanner scan)
{
    LogEntry entry;
    entry.kind = LogEntry::Kind::Echo;
    entry.at = scan.Time();
    const bool isEcho = scan.Skip(" Function run.") || scan.Skip(" Function prepare: ");
    return isEcho ? std::optional(entry) : std::nullopt;
}

std::optional<LogEntry> LinkNoteIn(Scanner scan)
{
    LogEntry entry;
    entry.kind = LogEntry::Kind::Note;
    entry.at = scan.Time();
    entry.text = TextOf(scan.Rest());
    const auto isAbout = [&entry](const char* what) {
        const QLatin1String word(what);
        return entry.text.startsWith(word) &&
               (entry.text.size() == word.size() || !entry.text.at(word.size()).isLetterOrNumber());
    };
    const bool isNote =
        scan.Skip(" Transciever::") && (isAbout("Transciever::Open") || isAbout("Transciever::Close"));
    return isNote ? std::optional(entry) : std::nullopt;
}

/// Whether the end of an exchange is missing. Its beginning is known by the colour, or by the code of a
/// request.
bool IsBeginningOfExchange(const QByteArray& coloured, const QByteArray& text)
{
    static const QString time = QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d{3}");
    static const QRegularExpression magenta(time + QStringLiteral(" {1,2}(?:\\x1b|#033)\\[0;35m"));
    static const QRegularExpression digits(
        time + QStringLiteral(" {2}(?:46|5[023467aA]|6[58]|7[2348])(?:[0-9a-fA-F]{4,} |[0-9a-fA-F]*$)"));
    return magenta.match(QString::fromUtf8(coloured)).hasMatch() ||
           digits.match(QString::fromUtf8(text)).hasMatch();
}

} // namespace

LogEntry StampedEntry(const QByteArray& coloured, const QByteArray& plain)
{
    const string_view text = View(plain);
    for (auto* const entryIn : {ExchangeIn, UnaskedIn, EchoIn, LinkNoteIn}) {
        for (auto at = Scanner::FindTime(text, 0); at != string_view::npos;
             at = Scanner::FindTime(text, at + 1)) {
            if (const auto entry = entryIn(Scanner(text.substr(at)))) {
                return *entry;
            }
        }
    }
    LogEntry entry;
    if (IsBeginningOfExchange(coloured, plain)) {
        entry.damage = Words::tr("the exchange is damaged: its end is missing");
    }
    return entry;
}

} // namespace Decode
