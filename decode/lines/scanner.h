#pragma once

#include <QByteArray>
#include <QString>
#include <QTime>

#include <string_view>

namespace Decode
{

std::string_view View(const QByteArray& bytes);
QByteArray BytesOf(std::string_view text);
/// Without the blanks at both ends.
QString TextOf(std::string_view text);

/// Reads a text from its front. It runs for every line of a log, of which a day has millions: it copies
/// nothing.
class Scanner
{
public:
    static constexpr std::size_t TimeSize = 12; ///< Of a time of day, as in "20:51:40.316".

    explicit Scanner(std::string_view text) : _text(text) {}

    /// The place of the first time of day from `from` on, even if no clock shows it (25:00:00.000);
    /// `npos` if there is none.
    static std::size_t FindTime(std::string_view text, std::size_t from);

    /// The time of day at the front, of which the digits are known to be there; invalid if no clock shows it.
    QTime Time();

    /// Whether the word is at the front. If so, the reading goes on behind it.
    bool Skip(std::string_view word);

    // What is at the front, of any length; empty if nothing is.
    std::string_view Blanks();
    std::string_view Digits();
    std::string_view HexDigits();

    /// Everything that was not read yet.
    std::string_view Rest() const { return _text; }

private:
    template <typename Belongs>
    std::string_view Run(Belongs belongs);

    std::string_view _text;
};

} // namespace Decode
