#include <Vesmar/rpesettings.h>

#include "protocol/payload.h"

namespace Vesmar
{

RPESettings::RPESettings() : ContinuousMeasurementSettings(MeasurementType::RPE, nullptr) {}

RPESettings::RPESettings(RPESettings& other) = default;

RPESettings::~RPESettings() = default;

namespace
{

int CodeByCurrent(RPESettings::RPECurrent current, int otherwise, int current2, int current3)
{
    switch (current) {
    case RPESettings::RPECurrent::Current2:
        return current2;
    case RPESettings::RPECurrent::Current3:
        return current3;
    default:
        return otherwise;
    }
}

int Code(RPESettings::RPEMethod method, RPESettings::RPECurrent current)
{
    switch (method) {
    case RPESettings::RPEMethod::Method0:
        return 0x00;
    case RPESettings::RPEMethod::Method2:
        return CodeByCurrent(current, 0x01, 0x05, 0x07);
    case RPESettings::RPEMethod::Method3:
        return CodeByCurrent(current, 0x08, 0x0C, 0x0E);
    default:
        return CodeByCurrent(current, 0x00, 0x04, 0x06);
    }
}

} // namespace

QByteArray* RPESettings::CreateMeasurementFrame()
{
    return CreatePayload(GetMeasurementType(), TimeFlag(), Code(_method, _current));
}

MeasurementSettings* RPESettings::Clone()
{
    return new RPESettings(*this);
}

} // namespace Vesmar
