#include <Vesmar/rlnsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RLNSettings::RLNSettings() : MeasurementSettings(MeasurementType::RLN, nullptr) {}

RLNSettings::RLNSettings(RLNSettings& other) = default;

RLNSettings::~RLNSettings() = default;

QByteArray* RLNSettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeNotSet, RLNCode);
}

MeasurementSettings* RLNSettings::Clone()
{
    return new RLNSettings(*this);
}

} // namespace Vesmar
