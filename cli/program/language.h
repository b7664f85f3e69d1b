#pragma once

namespace Cli
{

/// Has the Qt application speak the language of the reader's locale, English where it knows no other. What
/// programs read is English everywhere: with `--json` among the arguments, nothing is translated.
void ChooseLanguage(int argumentCount, const char* const* arguments);

} // namespace Cli
