#pragma once

#include <QImage>

#include "panel/session/record.h"

namespace Panel
{

/// One reading of a measurement against time, on white paper, with gaps where there was no reading.
QImage plotImage(const Record& record, int reading);

} // namespace Panel
