#pragma once

#include <QString>

namespace Simulator
{

/// Returns the text with a question mark for everything that a terminal, or a program that reads lines, would
/// understand as a command.
QString OneLine(const QString& text);

/// Returns what somebody wrote: in double quotes, on one line, and not too long for a message.
QString Quoted(const QString& text);

} // namespace Simulator
