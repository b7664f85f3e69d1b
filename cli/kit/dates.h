#pragma once

#include <QDateTime>

#include <string>

/// The instrument's dates have no time zone: they are what a clock on the wall shows. Here they are all in
/// UTC, whatever zone the computer is in, so that they can be compared and no hour is missing or occurs
/// twice.
namespace Cli
{

/// What a clock on the wall shows now at this place.
QDateTime WallClock();

/// The same fields, as a clock on the wall shows them.
QDateTime AsWallClock(const QDateTime& value);

/// Parses "2026-11-21T18:00:00", or the same with a blank, in the years that the instrument knows. Throws
/// CLI::ValidationError for any other text.
QDateTime ParseDateTime(const std::string& text);

/// Parses "2026-11-21" likewise.
QDate ParseDate(const std::string& text);

} // namespace Cli
