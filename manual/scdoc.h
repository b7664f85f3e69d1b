#pragma once

#include <string>
#include <vector>

namespace Manual
{

/// The text, to be read by scdoc as it stands, on one line.
std::string Escaped(const std::string& text);

/// The lines as they stand, beneath each other.
std::string Literal(const std::vector<std::string>& lines);

std::string Bold(const std::string& text);
std::string Underlined(const std::string& text);

} // namespace Manual
