#pragma once

#include <array>

#include <QByteArray>

#include <Vesmar/measurementresults.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The six values of a measurement answer, as they come.
using Readings = std::array<float, 6>;

/// What the six values of a function's answer are.
struct ReadingsKind {
    MeasurementType function;
    std::array<const char*, 6> labels; ///< The log's, of those values that the function has; then null.
    MeasurementResults* (*create)(const Readings& readings); ///< Makes new results, which the caller owns.
};

/// Null for a function whose answer is not known.
const ReadingsKind* FindReadingsKind(MeasurementType function);

/// The six values of a measurement answer, which has at least 24 bytes.
Readings DecodeReadings(const QByteArray& frame);

/// Re in the result of a Ub/Re test; bytes that are missing count as 0.
float DecodeRe(const QByteArray& frame);

/// Ia and Ta, each `MeasurementResults::NoValue` where the instrument has no reading.
struct IaTa {
    float ia;
    float ta;
};

/// The readings in the result of an Ia/Ta test; bytes that are missing count as 0.
IaTa DecodeIaTa(const QByteArray& frame);

} // namespace Vesmar
