#pragma once

#include <QStringList>

namespace Cli
{

/// The text in lines of at most so many characters. It is broken at its blanks; where a word is longer than a
/// line, at the word's no-break spaces, and only where that is not enough between its characters. In the
/// lines, no-break spaces are blanks.
QStringList Wrapped(const QString& text, int width);

/// "[=====               ]", of which so much is filled, from 0 to 1. It is one word for `Wrapped`.
QString Bar(double share);

} // namespace Cli
