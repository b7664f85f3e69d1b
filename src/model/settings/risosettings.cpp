#include <Vesmar/risosettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RISOSettings::RISOSettings() : ContinuousMeasurementSettings(MeasurementType::RISO, nullptr) {}

RISOSettings::RISOSettings(RISOSettings& other) = default;

RISOSettings::~RISOSettings() = default;

namespace
{

int ModeBit(RISOSettings::RISOMode mode)
{
    switch (mode) {
    case RISOSettings::RISOMode::Mode1:
        return 0x04;
    case RISOSettings::RISOMode::Mode2:
        return 0x08;
    case RISOSettings::RISOMode::Mode4:
        return 0x10;
    }
    return 0x00;
}

} // namespace

QByteArray* RISOSettings::CreateMeasurementFrame()
{
    // The voltage is not masked: a number above 3 reaches into the mode bits.
    return CreatePayload(GetMeasurementType(), TimeFlag(), static_cast<int>(_voltage) | ModeBit(_mode));
}

MeasurementSettings* RISOSettings::Clone()
{
    return new RISOSettings(*this);
}

} // namespace Vesmar
