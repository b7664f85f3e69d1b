#pragma once

#include <QString>

namespace Simulator
{

/// The text with a question mark for everything that a terminal or a reader of lines would take for a
/// command.
QString OneLine(const QString& text);

/// What somebody wrote, in double quotes, on one line, and not longer than a message bears.
QString Quoted(const QString& text);

} // namespace Simulator
