#include <Vesmar/iecsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

IECSettings::IECSettings() : MeasurementSettings(MeasurementType::IEC, nullptr) {}

IECSettings::IECSettings(IECSettings& other) = default;

IECSettings::~IECSettings() = default;

QByteArray* IECSettings::CreateMeasurementFrame()
{
    // To the instrument IEC is a variant of RLN.
    return CreatePayload(MeasurementType::RLN, TimeNotSet, IECCode);
}

MeasurementSettings* IECSettings::Clone()
{
    return new IECSettings(*this);
}

} // namespace Vesmar
