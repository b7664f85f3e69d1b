#pragma once

#include <QByteArray>
#include <QObject>

#include <Vesmar/export.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// What a measurement is to be prepared with. The base of the settings classes, one for each function.
///
/// The application fills an object of a derived class and passes it to `Tester::PrepareMeasurement`, which
/// keeps a clone; the application's object stays the application's. Setters store what they are given,
/// unchecked. Settings objects never have a parent.
class VESMAR_EXPORT MeasurementSettings : public QObject
{
    Q_OBJECT

public:
    /// The parent is ignored.
    MeasurementSettings(MeasurementType measurementType, QObject* parent);
    MeasurementSettings(MeasurementSettings& other);
    ~MeasurementSettings() override;

    MeasurementType GetMeasurementType() const { return _measurementType; }

    /// The data bytes of the prepare request in a new array that the caller deletes; null for an object of a
    /// base class, which prepares no function.
    virtual QByteArray* CreateMeasurementFrame();

    /// A new copy of the object's own class that the caller deletes. The two base classes do not copy: their
    /// clone has the type `MeasurementType::None` and the default time.
    virtual MeasurementSettings* Clone();

private:
    MeasurementType _measurementType;
};

} // namespace Vesmar
