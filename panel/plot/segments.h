#pragma once

#include <QVector>

namespace Panel
{

/// Indices of a curve that is drawn in one piece: from `begin` to before `end`.
struct Segment {
    int begin;
    int end;
};

/// The pieces of a curve, which is broken where there is no value, and where a second or more has passed
/// without one. The times are in seconds.
QVector<Segment> segmentsOf(const QVector<double>& times, const QVector<double>& values);

} // namespace Panel
