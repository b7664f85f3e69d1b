#include <Vesmar/ipesettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

IPESettings::IPESettings() : ContinuousMeasurementSettings(MeasurementType::IPE, nullptr) {}

IPESettings::IPESettings(IPESettings& other) = default;

IPESettings::~IPESettings() = default;

QByteArray* IPESettings::CreateMeasurementFrame()
{
    const int modeBit = _mode == IPEMode::Mode2 ? 0x01 : 0x00;
    const int configurationBit = _configuration == IPEConfiguration::Configuration2 ? 0x04 : 0x00;
    return CreatePayload(GetMeasurementType(), TimeFlag(), modeBit | configurationBit);
}

MeasurementSettings* IPESettings::Clone()
{
    return new IPESettings(*this);
}

} // namespace Vesmar
