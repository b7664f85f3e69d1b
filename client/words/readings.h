#pragma once

#include <QVector>

#include <Vesmar/measurementresults.h>

namespace VesmarClient
{

/// One reading of a result, as the driver gives it. Its unit is the instrument's own, which is not known.
struct DriverReading {
    const char* name;
    float value;
};

/// Whether the instrument has given a value for this reading.
bool IsPresent(float reading);

/// The names of a function's readings, in order; none for a function without named readings. They can be
/// translated.
QVector<const char*> ReadingNames(Vesmar::MeasurementType function);

/// The readings of a result that have names, in the order of `ReadingNames`.
QVector<DriverReading> ReadingsOf(const Vesmar::MeasurementResults& results);

} // namespace VesmarClient
