#pragma once

#include <QDateTime>

/// The instrument's dates have no time zone: they are what a clock on the wall shows. In the client they are
/// all in UTC, whatever zone the computer is in, so that they can be compared and no hour is missing or
/// occurs twice.
namespace VesmarClient
{

/// The same fields, as a clock on the wall shows them.
QDateTime AsWallClock(const QDateTime& value);

/// Whether the instrument can store the date: it knows the years 2001 to 2099.
bool IsKnownToTheInstrument(const QDate& date);

} // namespace VesmarClient
