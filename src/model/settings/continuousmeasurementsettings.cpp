#include <Vesmar/continuousmeasurementsettings.h>

#include "protocol/payload.h"

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
    constexpr int NotSet = -1;
    return _time == NotSet ? TimeNotSet : TimeSet;
}

} // namespace Vesmar
