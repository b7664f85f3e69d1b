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
                         EncodeConfiguration(static_cast<int>(_configuration)));
}

MeasurementSettings* ITSettings::Clone()
{
    return new ITSettings(*this);
}

} // namespace Vesmar
