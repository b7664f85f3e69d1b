#pragma once

#include <QByteArray>
#include <QJsonObject>

#include "decode/log/summary.h"

namespace Cli
{

/// What a log tells as a whole: for people, and as fields for programs.
QByteArray SummaryText(const Decode::Summary& summary);
QJsonObject SummaryFields(const Decode::Summary& summary);

} // namespace Cli
