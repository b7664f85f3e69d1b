#pragma once

#include "decode/events/event.h"

namespace Decode
{

/// Finds the events with which a function of the instrument begins and ends.
class MeasurementSpan
{
public:
    Event::Measurement Watch(const Event& event);

private:
    bool _isMeasuring = false; ///< As far as the log tells.
};

} // namespace Decode
