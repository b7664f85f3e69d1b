#include <Vesmar/ideltasettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

IDELTASettings::IDELTASettings() : ContinuousMeasurementSettings(MeasurementType::IDELTA, nullptr) {}

IDELTASettings::IDELTASettings(IDELTASettings& other) = default;

IDELTASettings::~IDELTASettings() = default;

QByteArray* IDELTASettings::CreateMeasurementFrame()
{
    const int modeBit = _mode == IDELTAMode::Mode2 ? 0x01 : 0x00;
    const int configurationBit = _configuration == IDELTAConfiguration::Configuration2 ? 0x04 : 0x00;
    return CreatePayload(GetMeasurementType(), TimeFlag(), modeBit | configurationBit);
}

MeasurementSettings* IDELTASettings::Clone()
{
    return new IDELTASettings(*this);
}

} // namespace Vesmar
