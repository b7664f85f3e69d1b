#include "manual/footer.h"

#include <algorithm>
#include <cctype>
#include <regex>

#include "manual/commandtree.h"
#include "manual/scdoc.h"

namespace Manual
{

namespace
{

using Lines = std::vector<std::string>;

char Capital(char letter)
{
    return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

bool IsIndented(const std::string& line)
{
    return line.front() == ' ';
}

std::vector<Lines> Paragraphs(const std::string& text)
{
    std::vector<Lines> paragraphs(1);
    for (const std::string& line : Split(text, '\n')) {
        if (!line.empty()) {
            paragraphs.back().push_back(line);
        } else if (!paragraphs.back().empty()) {
            paragraphs.emplace_back();
        }
    }
    if (paragraphs.back().empty()) {
        paragraphs.pop_back();
    }
    return paragraphs;
}

std::string Flowing(const Lines& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : " ") + line;
    }
    return Escaped(text) + "\n";
}

/// Lists lose the indentation that all their lines have, and keep the rest.
std::string AsItStands(Lines lines)
{
    constexpr size_t Indentation = 2;
    for (std::string& line : lines) {
        line.erase(0, Indentation);
    }
    return Literal(lines);
}

std::string Rendered(const Lines& lines)
{
    std::string text;
    for (auto begin = lines.cbegin(); begin != lines.cend();) {
        const bool isList = IsIndented(*begin);
        const auto end = std::find_if(
            begin, lines.cend(), [isList](const std::string& line) { return IsIndented(line) != isList; });
        text += (text.empty() ? "" : "\n");
        text += isList ? AsItStands({begin, end}) : Flowing({begin, end});
        begin = end;
    }
    return text;
}

std::string TitleOf(const Lines& paragraph)
{
    static const std::regex form("^(?:Exit status|JSON|[A-Z][a-z]+(?=[^:]*:\n  ))");
    std::string text;
    for (const std::string& line : paragraph) {
        text += line + "\n";
    }
    std::smatch match;
    return std::regex_search(text, match, form) ? match.str() : std::string();
}

/// Leaves what follows the title in the first line, because the title stands above it.
void RemoveTitle(Lines& paragraph, const std::string& title)
{
    std::string& line = paragraph.front();
    line = std::regex_replace(line.substr(title.size()), std::regex("^[,:]? *"), "");
    if (line.empty()) {
        paragraph.erase(paragraph.begin());
    } else {
        line.front() = Capital(line.front());
    }
}

std::string InCapitals(std::string title)
{
    std::transform(title.begin(), title.end(), title.begin(), Capital);
    return title == "EXAMPLE" ? "EXAMPLES" : title;
}

} // namespace

std::vector<Section> SectionsOf(const std::string& footer)
{
    std::vector<Section> sections;
    for (Lines& paragraph : Paragraphs(footer)) {
        const std::string title = TitleOf(paragraph);
        if (!title.empty()) {
            sections.push_back({InCapitals(title), {}});
            RemoveTitle(paragraph, title);
        } else if (sections.empty()) {
            sections.push_back({"DESCRIPTION", {}});
        }
        std::string& text = sections.back().text;
        text += (text.empty() ? "" : "\n") + Rendered(paragraph);
    }
    return sections;
}

} // namespace Manual
