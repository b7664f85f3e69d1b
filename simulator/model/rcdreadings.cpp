#include "simulator/model/rcdreadings.h"

#include <cmath>

#include "simulator/wire/packedvalues.h"

namespace Simulator
{

namespace
{

constexpr float EarthResistance = 12.4F;
constexpr float TrippingCurrent = 0.0215F;
constexpr float TrippingTime = 0.0243F;
constexpr float Noise = 0.01F; // as a fraction of a value

constexpr int IaIndex = 4;
constexpr int TaIndex = 6;
constexpr float TenThousandths = 10000.0F;

/// Returns ten-thousandths, low byte first.
QByteArray PackFixedPoint(float value)
{
    const auto number = static_cast<unsigned int>(std::lround(value * TenThousandths));
    QByteArray bytes;
    bytes.append(static_cast<char>(number & 0xFF));
    bytes.append(static_cast<char>(number >> 8));
    return bytes;
}

QByteArray NoReading()
{
    return QByteArrayLiteral("\xEE\xEE");
}

} // namespace

RcdReadings::RcdReadings(quint32 seed) : _generator(seed) {}

QByteArray RcdReadings::UbRe()
{
    return PackValues({Near(EarthResistance), 0.0F, 0.0F, 0.0F, 0.0F, 0.0F});
}

QByteArray RcdReadings::IaTa(bool hasTa)
{
    QByteArray data = UbRe();
    const QByteArray ia = PackFixedPoint(Near(TrippingCurrent));
    const QByteArray ta = PackFixedPoint(Near(TrippingTime));
    data.replace(IaIndex, ia.size(), ia);
    data.replace(TaIndex, ta.size(), hasTa ? ta : NoReading());
    return data;
}

float RcdReadings::Near(float value)
{
    std::normal_distribution<float> noise(value, value * Noise);
    return noise(_generator);
}

} // namespace Simulator
