#pragma once

#include <QDateTime>

#include <string>

/// The instrument's dates have no time zone: they are what a clock on the wall shows. Here they are all in
/// UTC, whatever zone the computer is in, so that they can be compared and no hour is missing or there twice.
namespace Cli
{

/// What the wall clock shows at this place.
QDateTime WallClock();

/// The fields of the date, as a wall clock's.
QDateTime AsWallClock(const QDateTime& value);

/// "2026-11-21T18:00:00", or with a blank, in the years that the instrument knows. Throws
/// CLI::ValidationError.
QDateTime ParseDateTime(const std::string& text);

/// "2026-11-21", likewise.
QDate ParseDate(const std::string& text);

} // namespace Cli
