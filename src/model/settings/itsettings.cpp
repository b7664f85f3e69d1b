#include <Vesmar/itsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

ITSettings::ITSettings() : ContinuousMeasurementSettings(MeasurementType::IT, nullptr) {}

ITSettings::ITSettings(ITSettings& other) = default;

ITSettings::~ITSettings() = default;

QByteArray* ITSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(),
                         _configuration == ITConfiguration::Configuration2 ? 0x04 : 0x00);
}

MeasurementSettings* ITSettings::Clone()
{
    return new ITSettings(*this);
}

} // namespace Vesmar
