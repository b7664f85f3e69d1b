#pragma once

#include <array>
#include <limits>

#include <QObject>

#include <Vesmar/export.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The readings of one finished measurement or, for a continuous function, the present ones. This is the base
/// of the results classes, of which there is one for each function.
///
/// Cast the object to the class that matches `GetMeasurementType()` and read its members. A reading is the
/// value that the instrument sent, unless its comment names a scaling; it may be infinite or not a number.
/// The library never changes an object that it has published. It owns the object and deletes it once the next
/// readings are published: copy what you need in the handler of `Tester::TestResultsChanged`.
class VESMAR_EXPORT MeasurementResults : public QObject
{
    Q_OBJECT

public:
    /// The value of a reading that is absent, 3.4028235e38: the instrument has marked it so, or the test does
    /// not produce it. Only `RCDResults` and `RCDIECResults` hold it.
    static constexpr float NoValue = std::numeric_limits<float>::max();

    /// The type is kept unchecked, and the parent owns the object.
    MeasurementResults(MeasurementType measurementType, QObject* parent);
    ~MeasurementResults() override;

    /// The function that the readings belong to.
    MeasurementType GetMeasurementType() const { return _measurementType; }

    /// The six values that the instrument sent, before the scaling that a member's comment names. In RCD
    /// tests they are decoded readings: Re alone, or Ia and Ta. All others are zero.
    std::array<float, 6> _values{};

private:
    MeasurementType _measurementType;
};

} // namespace Vesmar
