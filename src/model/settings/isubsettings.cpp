#include <Vesmar/isubsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

ISUBSettings::ISUBSettings() : ContinuousMeasurementSettings(MeasurementType::ISUB, nullptr) {}

ISUBSettings::ISUBSettings(ISUBSettings& other) = default;

ISUBSettings::~ISUBSettings() = default;

QByteArray* ISUBSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(), 0x00);
}

MeasurementSettings* ISUBSettings::Clone()
{
    return new ISUBSettings(*this);
}

} // namespace Vesmar
