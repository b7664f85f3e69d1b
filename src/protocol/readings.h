#pragma once

#include <array>

#include <QByteArray>

#include <Vesmar/measurementresults.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The six values of a measurement answer, in the instrument's own units.
using Readings = std::array<float, 6>;

/// What the six values of a function's answer mean.
struct ReadingsKind {
    MeasurementType function;
    std::array<const char*, 6> labels; ///< In the log. Null behind the last value of the function.
    MeasurementResults* (*create)(const Readings& readings); ///< Makes new results, which the caller owns.
};

/// Returns null for a function whose answer is not known.
const ReadingsKind* FindReadingsKind(MeasurementType function);

/// Decodes the six values of a measurement answer, which must have at least 24 bytes.
Readings DecodeReadings(const QByteArray& frame);

/// Decodes Re in the result of a Ub/Re test. Bytes that are missing count as 0.
float DecodeRe(const QByteArray& frame);

/// Ia and Ta. Each is `MeasurementResults::NoValue` if the instrument has no reading.
struct IaTa {
    float ia;
    float ta;
};

/// Decodes the readings in the result of an Ia/Ta test. Bytes that are missing count as 0.
IaTa DecodeIaTa(const QByteArray& frame);

} // namespace Vesmar
