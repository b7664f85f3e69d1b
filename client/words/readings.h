#pragma once

#include <QVector>

#include <Vesmar/measurementresults.h>

namespace VesmarClient
{

/// One reading of a result. Its unit is the instrument's own.
struct Reading {
    const char* name;
    float value;
};

/// Whether there is a reading at all.
bool IsPresent(float reading);

/// The names of a function's readings, in order; none for a function without named readings.
QVector<const char*> ReadingNames(Vesmar::MeasurementType function);

/// The readings that have names.
QVector<Reading> ReadingsOf(const Vesmar::MeasurementResults& results);

} // namespace VesmarClient
