#pragma once

#include <random>

#include <QByteArray>

namespace Simulator
{

/// The mains readings of an idle instrument. They wander around their usual values, differently for each
/// seed.
class MonitoringReadings
{
public:
    explicit MonitoringReadings(quint32 seed);

    /// Moves on to the next readings.
    void Advance();

    /// Returns six little-endian single-precision values: mains voltage (V), voltage of the protective earth
    /// (V), frequency (Hz), and three that are not used.
    QByteArray Data() const;

private:
    float Wandered(float value, float usual, float step);

    std::mt19937 _generator;
    float _mainsVoltage;
    float _earthVoltage;
    float _frequency;
};

} // namespace Simulator
