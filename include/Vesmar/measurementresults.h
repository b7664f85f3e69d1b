#pragma once

#include <array>
#include <limits>

#include <QObject>

#include <Vesmar/export.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The readings of one finished measurement or, for a continuous function, the current ones. The base of the
/// results classes, one for each function.
///
/// Cast to the class that matches `GetMeasurementType()` and read its members. All readings come as the
/// instrument sends them, in the instrument's own units, except for the scalings that a member's comment
/// names. The library owns the object and deletes it as soon as the next result is published: copy what you
/// need in the handler of `Tester::TestResultsChanged`.
class VESMAR_EXPORT MeasurementResults : public QObject
{
    Q_OBJECT

public:
    /// A reading that holds this is absent: the instrument marked it so, or the request does not produce it.
    static constexpr float NoValue = std::numeric_limits<float>::max();

    MeasurementResults(MeasurementType measurementType, QObject* parent);
    ~MeasurementResults() override;

    MeasurementType GetMeasurementType() const { return _measurementType; }

    /// The values as they came over the line, before any scaling; zero where the answer carried none.
    std::array<float, 6> _values{};

private:
    MeasurementType _measurementType;
};

} // namespace Vesmar
