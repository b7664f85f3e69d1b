#pragma once

#include <string>

namespace Panel
{

/// Has the application speak this language, "de" or "en"; that of the system where the text is empty, English
/// where there is no other.
void speak(const std::string& language);

} // namespace Panel
