#pragma once

#include <QByteArray>

namespace Decode
{

/// Removes colours. The library writes the escape character as it is, a system log writes it as #033.
QByteArray WithoutColours(const QByteArray& line);

} // namespace Decode
