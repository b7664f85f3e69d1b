#include <Vesmar/rcdsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RCDSettings::RCDSettings() : MeasurementSettings(MeasurementType::RCD, nullptr) {}

RCDSettings::RCDSettings(RCDSettings& other) = default;

RCDSettings::~RCDSettings() = default;

QByteArray* RCDSettings::CreateMeasurementFrame()
{
    const QByteArray re = _mode == RCDMode::UbRe ? QByteArray(4, '\xFF') : EncodeRe(_re);
    return CreateRCDPayload(GetMeasurementType(), RCDOptionsOf(*this), re);
}

MeasurementSettings* RCDSettings::Clone()
{
    return new RCDSettings(*this);
}

} // namespace Vesmar
