#pragma once

#include <optional>

#include <QByteArray>
#include <QDateTime>

namespace Simulator
{

/// Returns a date as it stands on the line: year of the century, month, day, hour, minute and second, one
/// packed decimal byte each. The instrument knows no time zone; the fields are carried in a UTC value so that
/// none of them ever shifts.
QByteArray PackDate(const QDateTime& date);

/// Returns the date that stands on the line like this, or nothing when a digit is no digit or the date does
/// not exist.
std::optional<QDateTime> UnpackDate(const QByteArray& data);

} // namespace Simulator
