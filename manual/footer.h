#pragma once

#include <string>
#include <vector>

namespace Manual
{

/// A part of a page.
struct Section {
    std::string title; ///< In capitals.
    std::string text;  ///< In the form that scdoc reads.
};

/// What a help has behind its options. A paragraph that begins with "Exit status", "JSON" or a word before an
/// indented list ("Example:") begins a section of that name; those before it are the description. Indented
/// lines stay as they stand, the others flow.
std::vector<Section> SectionsOf(const std::string& footer);

} // namespace Manual
