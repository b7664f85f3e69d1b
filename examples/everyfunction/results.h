#pragma once

#include <QString>
#include <Vesmar/measurementresults.h>

/// The readings of any function as a text. The library owns the results, and replaces them by the next ones.
QString Describe(const Vesmar::MeasurementResults& results);
