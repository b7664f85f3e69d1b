#include <Vesmar/rcdiecsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RCDIECSettings::RCDIECSettings() : MeasurementSettings(MeasurementType::RCDIEC, nullptr) {}

RCDIECSettings::RCDIECSettings(RCDIECSettings& other) = default;

RCDIECSettings::~RCDIECSettings() = default;

QByteArray* RCDIECSettings::CreateMeasurementFrame()
{
    auto* payload = new QByteArray;
    AppendByte(*payload, static_cast<int>(GetMeasurementType()));
    AppendByte(*payload, 0x00);
    AppendByte(*payload, RCDOptionBits(_type, 6) | (_isLNSwapped ? 0x80 : 0x00));
    AppendByte(*payload, RCDOptions(_mode, _phase, _quantity, _current));
    payload->append(4, '\x00');
    return payload;
}

MeasurementSettings* RCDIECSettings::Clone()
{
    return new RCDIECSettings(*this);
}

} // namespace Vesmar
