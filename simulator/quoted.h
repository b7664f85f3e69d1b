#pragma once

#include <QString>

namespace Simulator
{

/// What somebody wrote, in double quotes, on one line, and not longer than a message bears.
QString Quoted(const QString& text);

} // namespace Simulator
