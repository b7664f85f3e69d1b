#include <Vesmar/hvtestsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

HVTestSettings::HVTestSettings() : ContinuousMeasurementSettings(MeasurementType::HVTest, nullptr) {}

HVTestSettings::HVTestSettings(HVTestSettings& other) = default;

HVTestSettings::~HVTestSettings() = default;

QByteArray* HVTestSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(), _mode == HVMode::Mode2 ? 0x05 : 0x02);
}

MeasurementSettings* HVTestSettings::Clone()
{
    return new HVTestSettings(*this);
}

} // namespace Vesmar
