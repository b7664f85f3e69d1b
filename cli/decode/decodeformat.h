#pragma once

#include <QByteArray>

#include "decode/events/event.h"

namespace Cli
{

/// An event of a log for people, in lines of 120 columns at most.
QByteArray DecodedText(const Decode::Event& event);

/// The same for programs, on one line. The time is that at which the event is shown, in JSON.
QByteArray DecodedJson(const QByteArray& time, const Decode::Event& event);

} // namespace Cli
