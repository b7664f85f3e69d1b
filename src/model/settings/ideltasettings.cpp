#include <Vesmar/ideltasettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

IDELTASettings::IDELTASettings() : ContinuousMeasurementSettings(MeasurementType::IDELTA, nullptr) {}

IDELTASettings::IDELTASettings(IDELTASettings& other) = default;

IDELTASettings::~IDELTASettings() = default;

QByteArray* IDELTASettings::CreateMeasurementFrame()
{
    const int code =
        EncodeMode(static_cast<int>(_mode)) | EncodeConfiguration(static_cast<int>(_configuration));
    return CreatePayload(GetMeasurementType(), TimeFlag(), code);
}

MeasurementSettings* IDELTASettings::Clone()
{
    return new IDELTASettings(*this);
}

} // namespace Vesmar
