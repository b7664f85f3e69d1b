#include <Vesmar/ipesettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

IPESettings::IPESettings() : ContinuousMeasurementSettings(MeasurementType::IPE, nullptr) {}

IPESettings::IPESettings(IPESettings& other) = default;

IPESettings::~IPESettings() = default;

QByteArray* IPESettings::CreateMeasurementFrame()
{
    const int code =
        EncodeMode(static_cast<int>(_mode)) | EncodeConfiguration(static_cast<int>(_configuration));
    return CreatePayload(GetMeasurementType(), TimeFlag(), code);
}

MeasurementSettings* IPESettings::Clone()
{
    return new IPESettings(*this);
}

} // namespace Vesmar
