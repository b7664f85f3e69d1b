#include <Vesmar/rcdsettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RCDSettings::RCDSettings() : MeasurementSettings(MeasurementType::RCD, nullptr) {}

RCDSettings::RCDSettings(RCDSettings& other) = default;

RCDSettings::~RCDSettings() = default;

QByteArray* RCDSettings::CreateMeasurementFrame()
{
    auto* payload = new QByteArray;
    AppendByte(*payload, static_cast<int>(GetMeasurementType()));
    AppendByte(*payload, 0x00);
    AppendByte(*payload, RCDOptionBits(_type, 6));
    AppendByte(*payload, RCDOptions(_mode, _phase, _quantity, _current));
    if (_mode == RCDMode::UbRe) {
        payload->append(4, '\xFF');
    } else {
        AppendFloat(*payload, _re);
    }
    return payload;
}

MeasurementSettings* RCDSettings::Clone()
{
    return new RCDSettings(*this);
}

} // namespace Vesmar
