#include "manual/scdoc.h"

namespace Manual
{

namespace
{

bool IsOneOf(const char* characters, char character)
{
    return std::string(characters).find(character) != std::string::npos;
}

/// Escapes a text that is not at the beginning of a line, where more characters are markup.
std::string EscapedInside(const std::string& text)
{
    std::string escaped;
    for (const char character : text) {
        escaped += (IsOneOf("\\_*+", character) ? "\\" : "");
        escaped += character;
    }
    return escaped;
}

} // namespace

std::string Escaped(const std::string& text)
{
    const bool isMarkup = !text.empty() && IsOneOf("-#|[]:;`", text.front());
    return (isMarkup ? "\\" : "") + EscapedInside(text);
}

std::string Literal(const std::vector<std::string>& lines)
{
    std::string text = "```\n";
    for (const std::string& line : lines) {
        for (const char character : line) {
            text += (IsOneOf("\\`", character) ? "\\" : "");
            text += character;
        }
        text += '\n';
    }
    return text + "```\n";
}

std::string Bold(const std::string& text)
{
    return "*" + EscapedInside(text) + "*";
}

std::string Underlined(const std::string& text)
{
    return "_" + EscapedInside(text) + "_";
}

} // namespace Manual
