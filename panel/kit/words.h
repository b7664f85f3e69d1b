#pragma once

#include <QString>

#include <VesmarClient/enumerations.h>

namespace Panel
{

/// What the client's values are called here, in the language of the application.
QString words(VesmarClient::Mode mode);
QString words(VesmarClient::Phase phase);
QString words(VesmarClient::Outcome outcome);

/// "0:07", "12:30", "1:02:03".
QString duration(qint64 milliseconds);

/// The value with its unit, where there is one; with so many decimals, or as many as are worth reading where
/// the number is negative. A dash where it is not a number.
QString shownValue(double value, const QString& unit, int decimals);

} // namespace Panel
