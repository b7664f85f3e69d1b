#include <Vesmar/powersettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

POWERSettings::POWERSettings() : ContinuousMeasurementSettings(MeasurementType::POWER, nullptr) {}

POWERSettings::POWERSettings(POWERSettings& other) = default;

POWERSettings::~POWERSettings() = default;

QByteArray* POWERSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(), EncodeMode(static_cast<int>(_mode)));
}

MeasurementSettings* POWERSettings::Clone()
{
    return new POWERSettings(*this);
}

} // namespace Vesmar
