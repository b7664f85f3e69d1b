#include "decode/lines/logentry.h"

#include <array>

#include "decode/lines/colours.h"
#include "decode/lines/scanner.h"
#include "decode/lines/stampedentry.h"

namespace Decode
{

namespace
{

using std::string_view;

/// A sentence of the library, and what may stand behind it.
struct Sentence {
    enum class Rest { Any, Number, None };

    string_view beginning;
    Rest rest;
};

constexpr std::array<Sentence, 9> Sentences{{
    {"PREPARE MEASUREMENT : ", Sentence::Rest::Any},
    {"QUICK START MEASUREMENT - ", Sentence::Rest::Any},
    {"UPDATE ERROR - ", Sentence::Rest::Any},
    {"ABORT MEASUREMENT", Sentence::Rest::None},
    {"SET MEASUREMENT MODE", Sentence::Rest::None},
    {"Tester is in update mode.", Sentence::Rest::None},
    {"Change tester mode to update.", Sentence::Rest::None},
    {"Iinitialization update OK.", Sentence::Rest::None},
    {"Update progress: ", Sentence::Rest::Number},
}};

bool Allows(Sentence::Rest allowed, string_view rest)
{
    Scanner scan(rest);
    const bool isNumber = !scan.Digits().empty();
    const bool isAllowed = allowed != Sentence::Rest::Number || isNumber;
    return allowed == Sentence::Rest::Any ||
           (isAllowed && TextOf(allowed == Sentence::Rest::Number ? scan.Rest() : rest).isEmpty());
}

/// The banner of a state that is entered; empty if the text has none.
string_view BannerIn(string_view text)
{
    constexpr std::size_t LeastBlanks = 10;
    constexpr string_view Arrows = "<<<";
    for (auto at = text.find(Arrows); at != string_view::npos; at = text.find(Arrows, at + 1)) {
        Scanner scan(text.substr(at + Arrows.size()));
        const bool isBanner = scan.Blanks().size() >= LeastBlanks;
        const string_view banner = scan.Rest();
        if (isBanner && scan.Skip("ENTERING ")) {
            return banner;
        }
    }
    return {};
}

LogEntry UnstampedEntry(string_view text)
{
    LogEntry entry;
    if (const string_view banner = BannerIn(text); !banner.empty()) {
        entry.kind = LogEntry::Kind::State;
        entry.text = TextOf(banner);
        return entry;
    }
    for (const Sentence& sentence : Sentences) {
        const std::size_t at = text.find(sentence.beginning);
        if (at != string_view::npos && Allows(sentence.rest, text.substr(at + sentence.beginning.size()))) {
            entry.kind = LogEntry::Kind::Note;
            entry.text = TextOf(text.substr(at));
            return entry;
        }
    }
    return entry;
}

} // namespace

LogEntry ParseLogLine(const QByteArray& line)
{
    const QByteArray plain = WithoutColours(line);
    LogEntry entry;
    if (Scanner::FindTime(View(plain), 0) != string_view::npos) {
        entry = StampedEntry(line, plain);
    }
    return entry.kind == LogEntry::Kind::Other && entry.damage.isEmpty() ? UnstampedEntry(View(plain))
                                                                         : entry;
}

std::optional<int> MillisecondsBetween(const QTime& before, const QTime& after)
{
    constexpr int Day = 24 * 60 * 60 * 1000;
    const int elapsed = (before.msecsTo(after) + Day) % Day;
    const bool isSetBack = elapsed > Day / 2;
    return before.isValid() && !isSetBack ? std::optional(elapsed) : std::nullopt;
}

} // namespace Decode
