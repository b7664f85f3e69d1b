#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

ContinuousMeasurementSettings::ContinuousMeasurementSettings(MeasurementType measurementType, QObject* parent)
    : MeasurementSettings(measurementType, parent)
{
}

ContinuousMeasurementSettings::ContinuousMeasurementSettings(ContinuousMeasurementSettings& other) = default;

ContinuousMeasurementSettings::~ContinuousMeasurementSettings() = default;

MeasurementSettings* ContinuousMeasurementSettings::Clone()
{
    return new ContinuousMeasurementSettings(MeasurementType::None, nullptr);
}

int ContinuousMeasurementSettings::TimeFlag() const
{
    constexpr int TimeNotSet = -1;
    return _time == TimeNotSet ? 0xFF : 0x05;
}

} // namespace Vesmar
