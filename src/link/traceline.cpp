#include "link/traceline.h"

#include <array>
#include <charconv>

#include <QDateTime>
#include <QLoggingCategory>

#include "protocol/dates.h"

namespace Vesmar::Trace
{

namespace
{

constexpr int UsualSize = 128; // Only that of a firmware sector is longer.

/// There is no category any more while a program ends.
bool IsWanted()
{
    const QLoggingCategory* category = QLoggingCategory::defaultCategory();
    return category == nullptr || category->isWarningEnabled();
}

} // namespace

Line::Line() : _isWanted(IsWanted())
{
    if (_isWanted) {
        _text.reserve(UsualSize);
    }
}

Line::~Line()
{
    if (_isWanted) {
        const QMessageLogContext context(QT_MESSAGELOG_FILE, QT_MESSAGELOG_LINE, QT_MESSAGELOG_FUNC,
                                         "default");
        qt_message_output(QtWarningMsg, context, _text); // As Qt's own streams end.
    }
}

Line& Line::Now()
{
    if (_isWanted) {
        constexpr int SecondMs = 1000;
        constexpr int MinuteMs = 60 * SecondMs;
        constexpr int HourMs = 60 * MinuteMs;
        constexpr int DayMs = 24 * HourMs; // UTC has days of one length, and no clock is before 1970.
        const auto time = static_cast<int>(QDateTime::currentMSecsSinceEpoch() % DayMs);
        AppendDigits(time / HourMs, 2);
        Append(":", 1);
        AppendDigits(time % HourMs / MinuteMs, 2);
        Append(":", 1);
        AppendDigits(time % MinuteMs / SecondMs, 2);
        Append(".", 1);
        AppendDigits(time % SecondMs, 3);
    }
    return *this;
}

Line& Line::operator<<(const char* latin1)
{
    Append(latin1, static_cast<int>(qstrlen(latin1)));
    return *this;
}

Line& Line::operator<<(const QString& text)
{
    if (_isWanted) {
        _text.append(text);
    }
    return *this;
}

Line& Line::operator<<(int number)
{
    if (_isWanted) {
        std::array<char, 11> digits{};
        const auto* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        Append(digits.data(), static_cast<int>(end - digits.data()));
    }
    return *this;
}

Line& Line::operator<<(float reading)
{
    return _isWanted ? *this << QString::number(static_cast<double>(reading), 'g', 6) : *this;
}

Line& Line::operator<<(const QDateTime& dateTime)
{
    return _isWanted ? *this << DateText(dateTime) : *this;
}

Line& Line::operator<<(Colour colour)
{
    if (colour == Colour::None) {
        return *this << "\033[0m";
    }
    return *this << "\033[0;" << static_cast<int>(colour) << "m";
}

Line& Line::operator<<(Hex hex)
{
    if (_isWanted) {
        constexpr const char* Digits = "0123456789abcdef";
        for (const char byte : hex.bytes) {
            const auto value = static_cast<unsigned char>(byte);
            _text.append(QLatin1Char(Digits[value >> 4U]));
            _text.append(QLatin1Char(Digits[value & 0x0FU]));
        }
    }
    return *this;
}

void Line::Append(const char* latin1, int size)
{
    if (_isWanted) {
        _text.append(QLatin1String(latin1, size));
    }
}

/// Adds the last digits of a number, with leading zeros.
void Line::AppendDigits(int number, int count)
{
    std::array<char, 3> digits{};
    for (int position = count - 1; position >= 0; --position) {
        digits.at(static_cast<size_t>(position)) = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    Append(digits.data(), count);
}

} // namespace Vesmar::Trace
