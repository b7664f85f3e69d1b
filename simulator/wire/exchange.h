#pragma once

#include "simulator/wire/timepoint.h"

#include <QByteArray>

namespace Simulator
{

/// A request and what went back. An empty answer means silence.
struct Exchange {
    QByteArray request;
    QByteArray answer;
    TimePoint receivedAt; ///< first byte of the request
    TimePoint answeredAt; ///< the answer is on the line
};

} // namespace Simulator
