#include <Vesmar/rcdiecsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RCDIECSettings::RCDIECSettings() : MeasurementSettings(MeasurementType::RCDIEC, nullptr) {}

RCDIECSettings::RCDIECSettings(RCDIECSettings& other) = default;

RCDIECSettings::~RCDIECSettings() = default;

QByteArray* RCDIECSettings::CreateMeasurementFrame()
{
    RCDOptions options = RCDOptionsOf(*this);
    options.isLNSwapped = _isLNSwapped;
    return CreateRCDPayload(GetMeasurementType(), options, QByteArray(4, '\x00'));
}

MeasurementSettings* RCDIECSettings::Clone()
{
    return new RCDIECSettings(*this);
}

} // namespace Vesmar
