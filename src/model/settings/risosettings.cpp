#include <Vesmar/risosettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RISOSettings::RISOSettings() : ContinuousMeasurementSettings(MeasurementType::RISO, nullptr) {}

RISOSettings::RISOSettings(RISOSettings& other) = default;

RISOSettings::~RISOSettings() = default;

QByteArray* RISOSettings::CreateMeasurementFrame()
{
    const RISOOptions options{static_cast<int>(_voltage), static_cast<int>(_mode)};
    return CreatePayload(GetMeasurementType(), TimeFlag(), EncodeRISO(options));
}

MeasurementSettings* RISOSettings::Clone()
{
    return new RISOSettings(*this);
}

} // namespace Vesmar
