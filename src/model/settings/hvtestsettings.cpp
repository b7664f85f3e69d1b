#include <Vesmar/hvtestsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

HVTestSettings::HVTestSettings() : ContinuousMeasurementSettings(MeasurementType::HVTest, nullptr) {}

HVTestSettings::HVTestSettings(HVTestSettings& other) = default;

HVTestSettings::~HVTestSettings() = default;

QByteArray* HVTestSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(), EncodeHVMode(static_cast<int>(_mode)));
}

MeasurementSettings* HVTestSettings::Clone()
{
    return new HVTestSettings(*this);
}

} // namespace Vesmar
