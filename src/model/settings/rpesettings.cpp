#include <Vesmar/rpesettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RPESettings::RPESettings() : ContinuousMeasurementSettings(MeasurementType::RPE, nullptr) {}

RPESettings::RPESettings(RPESettings& other) = default;

RPESettings::~RPESettings() = default;

QByteArray* RPESettings::CreateMeasurementFrame()
{
    const RPEOptions options{static_cast<int>(_method), static_cast<int>(_current)};
    return CreatePayload(GetMeasurementType(), TimeFlag(), EncodeRPE(options));
}

MeasurementSettings* RPESettings::Clone()
{
    return new RPESettings(*this);
}

} // namespace Vesmar
