#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

MeasurementSettings::MeasurementSettings(MeasurementType measurementType, QObject* /*parent*/)
    : _measurementType(measurementType)
{
}

MeasurementSettings::MeasurementSettings(MeasurementSettings& other)
    : QObject(nullptr), _measurementType(other.GetMeasurementType())
{
}

MeasurementSettings::~MeasurementSettings() = default;

QByteArray* MeasurementSettings::CreateMeasurementFrame()
{
    return nullptr;
}

MeasurementSettings* MeasurementSettings::Clone()
{
    return new MeasurementSettings(MeasurementType::None, nullptr);
}

} // namespace Vesmar
