#pragma once

#include <QByteArray>
#include <QObject>

#include <Vesmar/export.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The settings that a measurement is prepared with. This is the base of the settings classes, of which there
/// is one for each function.
///
/// The application fills an object of a derived class and passes it to `Tester::PrepareMeasurement`, which
/// keeps a clone; the object stays the application's. Setters store a value unchecked. The numbers of
/// currents, voltages, modes and the like are the instrument's own; what they stand for is known to the
/// instrument alone. A settings object never has a parent.
class VESMAR_EXPORT MeasurementSettings : public QObject
{
    Q_OBJECT

public:
    /// The parent is ignored.
    MeasurementSettings(MeasurementType measurementType, QObject* parent);
    /// A copy without a parent.
    MeasurementSettings(MeasurementSettings& other);
    ~MeasurementSettings() override;

    /// The function that the settings are for.
    MeasurementType GetMeasurementType() const { return _measurementType; }

    /// The data bytes of the prepare request, in a new array that the caller deletes. An object of one of the
    /// two base classes prepares no function and returns null.
    virtual QByteArray* CreateMeasurementFrame();

    /// A new copy of the object, of its own class, that the caller deletes. The two base classes do not copy:
    /// their clone has the type `MeasurementType::None` and the default time.
    virtual MeasurementSettings* Clone();

private:
    MeasurementType _measurementType;
};

} // namespace Vesmar
