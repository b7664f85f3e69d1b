#pragma once

#include <QString>

class QDateTime;

namespace Vesmar::Trace
{

/// The colours of a line, by their numbers on a terminal. `None` ends the colour before it.
enum class Colour { None = 0, Black = 30, Red = 31, Green = 32, Yellow = 33, Blue = 34, Magenta = 35 };

/// Bytes that a line shows as hexadecimal digits.
struct Hex {
    const QByteArray& bytes;
};

/// A line of the log. Its pieces are composed in one buffer, which is written as one warning when the line is
/// destroyed. While the application has the warnings of the default category switched off, nothing is
/// composed.
class Line
{
public:
    Line();
    ~Line();
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    /// Adds the time in UTC.
    Line& Now();
    Line& operator<<(const char* latin1);
    Line& operator<<(const QString& text);
    Line& operator<<(int number);
    Line& operator<<(float reading);
    Line& operator<<(const QDateTime& dateTime);
    Line& operator<<(Colour colour);
    Line& operator<<(Hex hex);

private:
    void Append(const char* latin1, int size);
    void AppendDigits(int number, int count);

    const bool _isWanted;
    QString _text;
};

} // namespace Vesmar::Trace
