#pragma once

#include <QString>

namespace VesmarClient
{

/// The text with every character written out that a terminal, or a reader of lines, would obey as a command.
QString Printable(const QString& text);

} // namespace VesmarClient
