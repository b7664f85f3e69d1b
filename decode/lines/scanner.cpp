#include "decode/lines/scanner.h"

#include <algorithm>

namespace Decode
{

namespace
{

constexpr bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

constexpr bool IsHexDigit(char letter)
{
    return IsDigit(letter) || (letter >= 'a' && letter <= 'f') || (letter >= 'A' && letter <= 'F');
}

constexpr std::string_view TimePattern = "00:00:00.000";
constexpr std::size_t PointInTime = TimePattern.find('.');

bool HasTimeAt(std::string_view text, std::size_t place)
{
    return std::equal(TimePattern.cbegin(), TimePattern.cend(), text.substr(place).cbegin(),
                      [](char due, char letter) { return IsDigit(due) ? IsDigit(letter) : letter == due; });
}

} // namespace

std::string_view View(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray BytesOf(std::string_view text)
{
    return {text.data(), static_cast<int>(text.size())};
}

QString TextOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size())).trimmed();
}

std::size_t Scanner::FindTime(std::string_view text, std::size_t from)
{
    std::size_t point = text.find('.', from + PointInTime);
    while (point != std::string_view::npos && point - PointInTime + TimeSize <= text.size()) {
        if (HasTimeAt(text, point - PointInTime)) {
            return point - PointInTime;
        }
        point = text.find('.', point + 1);
    }
    return std::string_view::npos;
}

QTime Scanner::Time()
{
    const std::string_view time = _text.substr(0, TimeSize);
    _text.remove_prefix(TimeSize);
    const auto digit = [time](std::size_t place) { return time[place] - '0'; };
    const auto two = [digit](std::size_t place) { return digit(place) * 10 + digit(place + 1); };
    return {two(0), two(3), two(6), digit(9) * 100 + two(10)};
}

bool Scanner::Skip(std::string_view word)
{
    const bool isThere = _text.substr(0, word.size()) == word;
    _text.remove_prefix(isThere ? word.size() : 0);
    return isThere;
}

std::string_view Scanner::Blanks()
{
    return Run([](char letter) { return letter == ' '; });
}

std::string_view Scanner::Digits()
{
    return Run(IsDigit);
}

std::string_view Scanner::HexDigits()
{
    return Run(IsHexDigit);
}

template <typename Belongs>
std::string_view Scanner::Run(Belongs belongs)
{
    const auto* const end = std::find_if_not(_text.cbegin(), _text.cend(), belongs);
    const std::string_view run = _text.substr(0, static_cast<std::size_t>(end - _text.cbegin()));
    _text.remove_prefix(run.size());
    return run;
}

} // namespace Decode
