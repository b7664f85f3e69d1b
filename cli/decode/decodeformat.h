#pragma once

#include <QByteArray>
#include <QDateTime>

#include "cli/decode/decodedevent.h"

namespace Cli
{

/// An event of a log for people, in lines of 120 columns at most.
QByteArray DecodedText(const DecodedEvent& event);

/// The same for programs, on one line. The time is that at which the event is shown.
QByteArray DecodedJson(const QDateTime& time, const DecodedEvent& event);

} // namespace Cli
